// Objects of the Quartz layer that clients count references to.
#pragma once

#include <atomic>
#include <cstdint>

namespace lx {

// To be derived from. An object begins with one reference, its creator's.
class Counted {
public:
    void retain() { references_.fetch_add(1, std::memory_order_relaxed); }
    bool releaseIsLast() { return references_.fetch_sub(1, std::memory_order_acq_rel) == 1; }

private:
    std::atomic<int32_t> references_{1};
};

template <class Object>
Object *retain(Object *object) {
    if (object != nullptr)
        object->retain();
    return object;
}

template <class Object>
void release(Object *object) {
    if (object != nullptr && object->releaseIsLast())
        delete object;
}

} // namespace lx
