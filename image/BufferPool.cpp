#include "image/BufferPool.h"

#include <cstring>

#include <oxlume/LxMem.h>

namespace lx {

// Slots that a full stack grows by.
constexpr int32_t slotsPerGrowth = 32;

uint8_t *BufferPool::take(bool clear) {
    if (count_ > 0) {
        uint8_t *buffer = slots_[--count_];
        if (clear)
            std::memset(buffer, 0, bufferSize_);
        return buffer;
    }
    return static_cast<uint8_t *>(clear ? LxMem_calloc(1, bufferSize_) : LxMem_malloc(bufferSize_));
}

void BufferPool::give(uint8_t *buffer) {
    if (count_ == capacity_) {
        const auto bytes = static_cast<uint32_t>((count_ + slotsPerGrowth) * sizeof(uint8_t *));
        auto *grown = static_cast<uint8_t **>(LxMem_realloc(slots_, bytes));
        if (grown == nullptr) {
            LxMem_free(buffer);
            return;
        }
        slots_ = grown;
        capacity_ += slotsPerGrowth;
    }
    slots_[count_++] = buffer;
}

void BufferPool::drain() {
    while (count_ > 0)
        LxMem_free(slots_[--count_]);
    LxMem_free(slots_);
    slots_ = nullptr;
    capacity_ = 0;
}

} // namespace lx
