#include "tests/reliability/FailingAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <pugixml.hpp>

#include "foundation/Memory.h"

namespace lx::test {
namespace {

struct Allocations {
    std::atomic<bool> counting = false;
    std::atomic<int64_t> asked = 0;
    std::atomic<int64_t> alive = 0; // of operator new and of pugixml; LxMem_* keep their own count
    int64_t failing = FailingAllocations::never;
    bool onwards = false;
};

constinit Allocations allocations;

bool failsNow() {
    if (!allocations.counting)
        return false;
    const int64_t number = allocations.asked++;
    if (allocations.failing == FailingAllocations::never)
        return false;
    return number == allocations.failing || (allocations.onwards && number > allocations.failing);
}

void *allocate(size_t size) {
    void *block = failsNow() ? nullptr : std::malloc(size > 0 ? size : 1);
    if (block != nullptr)
        ++allocations.alive;
    return block;
}

void release(void *block) {
    if (block == nullptr)
        return;
    --allocations.alive;
    std::free(block);
}

constexpr SystemAllocator failingSystem = {
    [](size_t size) { return failsNow() ? nullptr : std::malloc(size); },
    [](size_t count, size_t size) { return failsNow() ? nullptr : std::calloc(count, size); },
    [](void *block, size_t size) { return failsNow() ? nullptr : std::realloc(block, size); },
};

const bool installed = (pugi::set_memory_management_functions(allocate, release), true);

} // namespace

FailingAllocations::FailingAllocations(int64_t failing, bool onwards) {
    allocations.failing = failing;
    allocations.onwards = onwards;
    allocations.asked = 0;
    setSystemAllocator(&failingSystem);
    allocations.counting = true;
}

FailingAllocations::~FailingAllocations() {
    allocations.counting = false;
    setSystemAllocator(nullptr);
}

int64_t FailingAllocations::asked() const {
    return allocations.asked;
}

int64_t blocksAlive() {
    return allocations.alive + allocationCount();
}

} // namespace lx::test

using lx::test::allocate;
using lx::test::release;

void *operator new(size_t size) {
    void *block = allocate(size);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void *operator new[](size_t size) {
    return operator new(size);
}

void *operator new(size_t size, const std::nothrow_t &) noexcept {
    return allocate(size);
}

void *operator new[](size_t size, const std::nothrow_t &) noexcept {
    return allocate(size);
}

void operator delete(void *block) noexcept {
    release(block);
}

void operator delete[](void *block) noexcept {
    release(block);
}

void operator delete(void *block, size_t) noexcept {
    release(block);
}

void operator delete[](void *block, size_t) noexcept {
    release(block);
}

void operator delete(void *block, const std::nothrow_t &) noexcept {
    release(block);
}

void operator delete[](void *block, const std::nothrow_t &) noexcept {
    release(block);
}
