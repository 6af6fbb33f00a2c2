// Tests without memory.
#pragma once

#include "foundation/Memory.h"

namespace lx::test {

// While one lives, the library's allocator gives nothing.
class NoMemory {
public:
    NoMemory() {
        static constexpr SystemAllocator failing = {
            [](size_t) -> void * { return nullptr; },
            [](size_t, size_t) -> void * { return nullptr; },
            [](void *, size_t) -> void * { return nullptr; },
        };
        setSystemAllocator(&failing);
    }
    NoMemory(const NoMemory &) = delete;
    NoMemory &operator=(const NoMemory &) = delete;
    ~NoMemory() { setSystemAllocator(nullptr); }
};

} // namespace lx::test
