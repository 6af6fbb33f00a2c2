#include "path/PathBuilder.h"

#include <algorithm>
#include <utility>

#include <oxlume/LxMem.h>

namespace lx {
namespace {

constexpr int64_t wholeBlocks(int64_t words) {
    return (words + blockWords - 1) / blockWords * blockWords;
}

} // namespace

PathBuilder::PathBuilder(int64_t expectedWords) {
    restart(expectedWords);
}

void PathBuilder::restart(int64_t expectedWords) {
    if (path_.capacity > maxKeptWords)
        clear(path_);
    path_.count = 0;
    if (path_.capacity < expectedWords)
        resize(wholeBlocks(std::min<int64_t>(expectedWords, maxWords)));
    failed_ = false;
}

void PathBuilder::add(const uint32_t *words, int32_t size) {
    if (size == 0 || (path_.capacity - path_.count < size && !grow(size)))
        return;
    std::copy_n(words, size, path_.words + path_.count);
    path_.count += size;
}

bool PathBuilder::grow(int32_t size) {
    if (failed_)
        return false;
    const int64_t needed = wholeBlocks(int64_t{path_.count} + size);
    return resize(std::max(needed, std::min<int64_t>(2 * int64_t{path_.capacity}, maxWords)));
}

bool PathBuilder::resize(int64_t capacity) {
    void *words = capacity <= maxWords
                      ? LxMem_realloc(path_.words, static_cast<uint32_t>(capacity * sizeof(uint32_t)))
                      : nullptr;
    if (words == nullptr) {
        failed_ = true;
        return false;
    }
    path_.words = static_cast<uint32_t *>(words);
    path_.capacity = static_cast<int32_t>(capacity);
    return true;
}

bool PathBuilder::moveInto(LxPath &path, int64_t room) {
    const int64_t capacity = wholeBlocks(std::max<int64_t>(path_.count, room));
    if (failed_ || (capacity > path_.capacity && !resize(capacity)))
        return false;
    if (capacity == 0)
        clear(path_);
    // The array may be larger than the path will ever know: giving the rest back costs more than it is worth.
    path_.capacity = static_cast<int32_t>(capacity);
    std::fill(path_.words + path_.count, path_.words + path_.capacity, 0u);
    clear(path);
    path = std::exchange(path_, {});
    return true;
}

LxPath *PathBuilder::moveIntoNewPath(int64_t room) {
    LxPath *path = createPath();
    if (path != nullptr && !moveInto(*path, room)) {
        LxPath_Delete(path);
        return nullptr;
    }
    return path;
}

} // namespace lx
