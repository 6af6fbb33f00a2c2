// Words of path items that grow at the front: an array filled from its end.
#pragma once

#include "path/Path.h"

namespace lx {

class BackwardBuilder {
public:
    BackwardBuilder() = default;
    BackwardBuilder(const BackwardBuilder &) = delete;
    BackwardBuilder &operator=(const BackwardBuilder &) = delete;
    ~BackwardBuilder();

    // Empties the builder. It keeps its memory for the next words, unless that is more than most paths need;
    // else it will make room for `expectedWords` with the first one.
    void restart(int64_t expectedWords);

    template <size_t Size>
    void add(const Item<Size> &item) {
        constexpr int32_t size = Size;
        if (first_ < size && !grow()) [[unlikely]]
            return;
        first_ -= size;
        write(words_ + first_, item);
    }

    void makeEmpty() { first_ = capacity_; }
    bool failed() const { return failed_; }
    const uint32_t *words() const { return words_ + first_; }
    int32_t count() const { return capacity_ - first_; }

private:
    // Doubles the array, from what is expected; after one failure, never again.
    bool grow();

    int32_t expectedWords_ = 0;
    uint32_t *words_ = nullptr;
    int32_t first_ = 0;
    int32_t capacity_ = 0;
    bool failed_ = false;
};

} // namespace lx
