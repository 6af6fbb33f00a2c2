// Item streams written down by hand, and paths that delete themselves.
#pragma once

#include <bit>
#include <iosfwd>
#include <memory>
#include <vector>

#include "path/Path.h"

namespace lx::test {

struct PathDeleter {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using PathHandle = std::unique_ptr<LxPath, PathDeleter>;

inline PathHandle emptyPath() {
    return PathHandle(LxPath_Create());
}

// The words of a path, up to its count.
class Stream {
public:
    Stream() = default;
    explicit Stream(const PathHandle &path) : Stream(*path) {}
    explicit Stream(const LxPath &path) : words(path.words, path.words + path.count) {}

    Stream &word(uint32_t value) {
        words.push_back(value);
        return *this;
    }
    Stream &number(float value) { return word(std::bit_cast<uint32_t>(value)); }
    Stream &zeros(int n) {
        words.insert(words.end(), static_cast<size_t>(n), 0);
        return *this;
    }
    Stream &move(float x, float y) { return word(1).number(x).number(y); }
    Stream &line(float x, float y) { return word(2).number(x).number(y); }
    Stream &qcurve(float cx, float cy, float x, float y) {
        return word(3).number(cx).number(cy).number(x).number(y);
    }
    Stream &curve(float ax, float ay, float bx, float by, float x, float y) {
        return word(4).number(ax).number(ay).number(bx).number(by).number(x).number(y);
    }
    Stream &arc(float ax, float ay, float bx, float by, float radius, uint32_t word1, uint32_t word2) {
        return word(5).number(ax).number(ay).number(bx).number(by).number(radius).word(word1).word(word2);
    }
    Stream &close() { return word(15); }

    // A path of these words, as if they had been appended one by one.
    PathHandle path() const;

    bool operator==(const Stream &) const = default;

    std::vector<uint32_t> words;
};

// One item a line, for messages.
std::ostream &operator<<(std::ostream &out, const Stream &stream);

} // namespace lx::test
