// Pools of pixel buffers of one size: stacks of free buffers, the one released last coming back first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lx {

class BufferPool {
public:
    constexpr explicit BufferPool(uint32_t bufferSize) : bufferSize_(bufferSize) {}

    uint32_t bufferSize() const { return bufferSize_; }

    // A buffer of the pool's size, all zero with `clear`, else as its last owner left it. Null if memory is
    // short.
    uint8_t *take(bool clear);

    // Puts a buffer back. Never fails: where the stack itself cannot grow, the buffer is released.
    void give(uint8_t *buffer);

    // Releases all free buffers; the pool is as new.
    void drain();

    int32_t freeCount() const { return count_; }
    int32_t capacity() const { return capacity_; }

private:
    uint32_t bufferSize_;
    uint8_t **slots_ = nullptr;
    int32_t count_ = 0;
    int32_t capacity_ = 0;
};

} // namespace lx
