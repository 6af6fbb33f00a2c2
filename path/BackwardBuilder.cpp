#include "path/BackwardBuilder.h"

#include <algorithm>

#include <oxlume/LxMem.h>

namespace lx {

BackwardBuilder::~BackwardBuilder() {
    LxMem_free(words_);
}

void BackwardBuilder::restart(int64_t expectedWords) {
    if (capacity_ > maxKeptWords) {
        LxMem_free(words_);
        words_ = nullptr;
        capacity_ = 0;
    }
    expectedWords_ = static_cast<int32_t>(std::min<int64_t>(expectedWords, maxWords));
    first_ = capacity_;
    failed_ = false;
}

bool BackwardBuilder::grow() {
    const int32_t capacity = capacity_ > 0 ? 2 * capacity_ : std::max(expectedWords_, blockWords);
    void *block = failed_ || capacity > maxWords
                      ? nullptr
                      : LxMem_malloc(static_cast<uint32_t>(capacity * sizeof(uint32_t)));
    if (block == nullptr) {
        failed_ = true;
        return false;
    }
    auto *grown = static_cast<uint32_t *>(block);
    const int32_t first = capacity - count();
    std::copy_n(words(), count(), grown + first);
    LxMem_free(words_);
    words_ = grown;
    first_ = first;
    capacity_ = capacity;
    return true;
}

} // namespace lx
