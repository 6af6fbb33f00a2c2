#include "foundation/Memory.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

#include <oxlume/LxMem.h>

namespace lx {
namespace {

constexpr SystemAllocator systemAllocator = {std::malloc, std::calloc, std::realloc};

struct MemoryState {
    SystemAllocator allocator = systemAllocator;
    // Counted without a locked instruction: concurrent changes may be lost, and nothing depends on the count.
    std::atomic<int32_t> allocationCount = 0;
    std::atomic<uint32_t> failureMode = kLxMemFailReturnNull;
    std::atomic<LxMemFailHandler> failureHandler = nullptr;
    bool started = false;
};

constinit MemoryState memory;

// Blocks up to this size come from the system's malloc and are zeroed here, which is quicker: the C library's
// calloc passes by its cache of small blocks, and only for large blocks gets zeroed pages from the kernel.
constexpr size_t smallBlock = 1024;

void adjustCount(int32_t change) {
    memory.allocationCount.store(memory.allocationCount.load(std::memory_order_relaxed) + change,
                                 std::memory_order_relaxed);
}

// Decides about a failed allocation: true to try again, false to answer null.
bool shouldRetry() {
    uint32_t action = memory.failureMode.load(std::memory_order_relaxed);
    for (;;) {
        switch (action) {
        case kLxMemFailExit:
        case kLxMemFailExitToo:
            std::exit(1);
        case kLxMemFailReturnNull:
            return false;
        case kLxMemFailCallHandler: {
            const LxMemFailHandler handler = memory.failureHandler.load(std::memory_order_relaxed);
            action = handler != nullptr ? static_cast<uint32_t>(handler()) : uint32_t{kLxMemFailReturnNull};
            break;
        }
        case kLxMemFailRetry:
            return true;
        default:
            // On purpose: an undefined mode spins for ever. Reading a volatile keeps the compiler from taking
            // the loop away.
            for (const volatile bool forever = true; forever;) {
            }
        }
    }
}

// Runs `allocate` under the out-of-memory policy.
template <class Allocate>
void *allocateOrFail(Allocate allocate) {
    for (;;) {
        void *block = allocate();
        if (block != nullptr) [[likely]]
            return block;
        if (!shouldRetry())
            return nullptr;
    }
}

} // namespace

void setSystemAllocator(const SystemAllocator *allocator) {
    memory.allocator = allocator != nullptr ? *allocator : systemAllocator;
}

int32_t allocationCount() {
    return memory.allocationCount.load(std::memory_order_relaxed);
}

void startMemory() {
    if (memory.started)
        return;
    memory.allocationCount.store(0, std::memory_order_relaxed);
    memory.started = true;
}

void endMemory() {
    memory.started = false;
}

} // namespace lx

using namespace lx;

void LxMem_SetException(uint32_t mode, LxMemFailHandler handler) {
    memory.failureMode.store(mode, std::memory_order_relaxed);
    memory.failureHandler.store(mode == kLxMemFailCallHandler ? handler : nullptr, std::memory_order_relaxed);
}

void *LxMem_malloc(uint32_t size) {
    if (size == 0)
        return nullptr;
    void *block = allocateOrFail([=] { return memory.allocator.malloc(size); });
    if (block != nullptr)
        adjustCount(+1);
    return block;
}

void *LxMem_calloc(uint32_t count, uint32_t size) {
    const uint64_t bytes = uint64_t{count} * size;
    if (static_cast<uint32_t>(bytes) == 0)
        return nullptr;
    if (bytes <= smallBlock) {
        void *block = LxMem_malloc(static_cast<uint32_t>(bytes));
        return block != nullptr ? std::memset(block, 0, bytes) : nullptr;
    }
    void *block = allocateOrFail([=] { return memory.allocator.calloc(count, size); });
    if (block != nullptr)
        adjustCount(+1);
    return block;
}

void *LxMem_realloc(void *pointer, uint32_t size) {
    if (pointer == nullptr)
        return LxMem_malloc(size);
    if (size == 0) {
        LxMem_free(pointer);
        return nullptr;
    }
    return allocateOrFail([=] { return memory.allocator.realloc(pointer, size); });
}

char *LxMem_strdup(const char *string) {
    if (string == nullptr)
        return nullptr;
    const size_t length = std::strlen(string);
    if (length >= UINT32_MAX)
        return nullptr;
    const auto size = static_cast<uint32_t>(length + 1);
    void *copy = LxMem_malloc(size);
    return copy != nullptr ? static_cast<char *>(std::memcpy(copy, string, size)) : nullptr;
}

void LxMem_free(void *pointer) {
    if (pointer == nullptr)
        return;
    adjustCount(-1);
    std::free(pointer);
}
