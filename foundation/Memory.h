// The allocator's inner side: the start and end hooks, and what tests look at and replace.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lx {

// Where LxMem_* get memory from; tests put failing functions here.
struct SystemAllocator {
    void *(*malloc)(size_t size);
    void *(*calloc)(size_t count, size_t size);
    void *(*realloc)(void *pointer, size_t size);
};

// Replaces the allocator; null puts the system's own back. Not synchronised: for tests.
void setSystemAllocator(const SystemAllocator *allocator);

// Blocks handed out by LxMem_* and not yet returned. Under threads no more than a hint.
int32_t allocationCount();

// Zeroes `allocationCount` at the first start and after each end; the out-of-memory policy stays.
void startMemory();
void endMemory();

} // namespace lx
