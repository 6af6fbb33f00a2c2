// Building a path's words from scratch: an array that doubles, handed to the path at the end.
#pragma once

#include "path/Path.h"

namespace lx {

class PathBuilder {
public:
    PathBuilder() = default;
    // Room for `expectedWords` from the start, where there is such memory.
    explicit PathBuilder(int64_t expectedWords);
    PathBuilder(const PathBuilder &) = delete;
    PathBuilder &operator=(const PathBuilder &) = delete;
    ~PathBuilder() { clear(path_); }

    void move(const LxPointD &point) { add(moveItem(point.x, point.y)); }
    void line(const LxPointD &point) { add(lineItem(point.x, point.y)); }
    void close() { add(closeItem()); }

    // Appends `size` words, whatever they mean.
    template <size_t Size>
    void add(const Item<Size> &words) {
        constexpr int32_t size = Size;
        if (path_.capacity - path_.count < size && !grow(size)) [[unlikely]]
            return;
        write(path_.words + path_.count, words);
        path_.count += size;
    }
    void add(const uint32_t *words, int32_t size);

    // Empties the builder and makes room for `expectedWords`. It keeps its memory for the next words, unless
    // that is more than most paths need.
    void restart(int64_t expectedWords = 0);

    bool failed() const { return failed_; }

    // The words so far as a path, which lasts until the builder changes.
    LxPath &path() { return path_; }

    // The words so far; going back to an earlier count drops those behind it.
    int32_t count() const { return path_.count; }
    void goBackTo(int32_t count) { path_.count = count; }

    // Makes the words the content of `path`, with the capacity that appending them one by one to an empty
    // path would have given, or that `room` words need. Empties the builder. False, and `path` unchanged, if
    // memory ran out on the way.
    bool moveInto(LxPath &path, int64_t room = 0);

    // The same, as a new path; null without memory.
    LxPath *moveIntoNewPath(int64_t room = 0);

private:
    // Makes room for `size` more words; after one failure, never again.
    bool grow(int32_t size);
    bool resize(int64_t capacity);

    LxPath path_ = {};
    bool failed_ = false;
};

} // namespace lx
