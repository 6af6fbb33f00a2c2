#include "morph/Morph.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <new>
#include <vector>

#include "foundation/Numeric.h"
#include "foundation/VectorLevel.h"
#include "image/Image.h"
#include "morph/MorphRow.h"

namespace lx {
namespace {

constexpr MorphRow morphRows[] = LX_VECTOR_TABLE(morphRow);

int32_t between(int32_t from, int32_t to, float t) {
    return truncateToInt32(static_cast<float>(from) + static_cast<float>(wrappingSubtract(to, from)) * t);
}

LxMorphLine lineBetween(const LxMorphLine &from, const LxMorphLine &to, float t) {
    LxMorphLine line = {};
    line.x0 = between(from.x0, to.x0, t);
    line.y0 = between(from.y0, to.y0, t);
    line.x1 = between(from.x1, to.x1, t);
    line.y1 = between(from.y1, to.y1, t);
    line.dx = wrappingSubtract(line.x1, line.x0);
    line.dy = wrappingSubtract(line.y1, line.y0);
    line.lengthSquared = wrappingAdd(wrappingMultiply(line.dx, line.dx), wrappingMultiply(line.dy, line.dy));
    line.length = std::sqrt(static_cast<float>(line.lengthSquared));
    return line;
}

MorphPair pairBetween(const LxMorphLine &source, const LxMorphLine &target, float t) {
    const LxMorphLine frame = lineBetween(source, target, t);
    return {.frame = frame,
            .weightOfLength = std::pow(static_cast<double>(frame.length), 0.75),
            .lengthSquared = static_cast<float>(frame.lengthSquared),
            .sx0 = static_cast<float>(source.x0),
            .sy0 = static_cast<float>(source.y0),
            .sdx = static_cast<float>(source.dx),
            .sdy = static_cast<float>(source.dy),
            .sLength = source.length};
}

// The pixels of both images, row after row without a gap, whatever distance their rows have elsewhere.
struct Pictures {
    const uint8_t *source;
    uint8_t *destination;
    int32_t width, height;
    ptrdiff_t pixelBytes; // 0 for types that are not handled

    ptrdiff_t bytes() const { return pixelBytes * width * height; }
    bool overlap() const { return source < destination + bytes() && destination < source + bytes(); }
};

// Where along an axis the weighted sum leads, inside 0 to `length` - 1.
int32_t sourceCoordinate(float sum, float weight, int32_t at, int32_t length) {
    const float position = sum / weight + static_cast<float>(at);
    return std::clamp(truncateToInt32(position + 0.5f), 0, length - 1);
}

void copyRow(const Pictures &pictures, const MorphSums &sums, int32_t y) {
    const auto size = static_cast<size_t>(pictures.pixelBytes);
    uint8_t *to = pictures.destination + pictures.pixelBytes * y * pictures.width;
    for (int32_t x = 0; x < pictures.width; ++x, to += size) {
        const float weight = sums.weight[x];
        // Without any weight, as with no lines or lines of no length, a pixel comes from its own place.
        const bool weighs = weight != 0.0f && !std::isnan(weight);
        const int32_t fromX = weighs ? sourceCoordinate(sums.x[x], weight, x, pictures.width) : x;
        const int32_t fromY = weighs ? sourceCoordinate(sums.y[x], weight, y, pictures.height) : y;
        const ptrdiff_t index = ptrdiff_t{fromY} * pictures.width + fromX;
        const uint8_t *from = pictures.source + index * pictures.pixelBytes;
        for (size_t i = 0; i < size; ++i)
            to[i] = from[i];
    }
}

ptrdiff_t handledPixelBytes(const LxImage &image) {
    return image.type == kLxPixelA ? 1 : image.type == kLxPixelRGB ? 3 : 0;
}

Pictures picturesOf(const LxImage &source, LxImage &destination) {
    return {firstRow(source), firstRow(destination), width(source), height(source),
            handledPixelBytes(source)};
}

bool fit(const LxImage &source, const LxImage &destination) {
    const int64_t bytes = int64_t{handledPixelBytes(source)} * width(source) * height(source);
    return bytes <= LxImage_DataSize(&source) && bytes <= LxImage_DataSize(&destination);
}

// Morphs the rows of one frame after another, with room for what they need.
class Morpher {
public:
    Morpher(const Pictures &pictures, const LxMorphLine *sourceLines, const LxMorphLine *targetLines,
            size_t lineCount)
        : pictures_(pictures), sourceLines_(sourceLines), targetLines_(targetLines), pairs_(lineCount),
          store_(3 * static_cast<size_t>(pictures.width)) {}

    void startFrame(float t) {
        for (size_t i = 0; i < pairs_.size(); ++i)
            pairs_[i] = pairBetween(sourceLines_[i], targetLines_[i], t);
    }

    void morphRow(int32_t y) {
        const auto width = static_cast<size_t>(pictures_.width);
        const MorphSums sums = {store_.data(), store_.data() + width, store_.data() + 2 * width};
        morphRows[vectorLevelIndex()](sums, pairs_.data(), pairs_.size(), y, pictures_.width);
        copyRow(pictures_, sums, y);
    }

private:
    const Pictures pictures_;
    const LxMorphLine *const sourceLines_;
    const LxMorphLine *const targetLines_;
    std::vector<MorphPair> pairs_;
    std::vector<float> store_;
};

int32_t morphFrames(const Pictures &pictures, const LxMorphLine *sourceLines, const LxMorphLine *targetLines,
                    size_t lineCount, int32_t frameCount) {
    Morpher morpher(pictures, sourceLines, targetLines, lineCount);
    for (int64_t frame = 1; frame <= frameCount; ++frame) {
        // Only the last frame's pixels can be seen, unless each frame reads what the one before has written.
        const bool isSeen = pictures.pixelBytes != 0 && (frame == frameCount || pictures.overlap());
        if (isSeen)
            morpher.startFrame(static_cast<float>(frame) / static_cast<float>(frameCount));
        for (int32_t y = 0; y < pictures.height; ++y) {
            std::printf("processing frame %d: line %d of %d\n", static_cast<int32_t>(frame), y,
                        pictures.height);
            if (isSeen)
                morpher.morphRow(y);
        }
    }
    return wrappingAdd(frameCount, 1);
}

} // namespace

bool morphFrame(const LxImage &source, LxImage &destination, const LxMorphLine *sourceLines,
                const LxMorphLine *targetLines, size_t lineCount, float t) {
    const Pictures pictures = picturesOf(source, destination);
    if (pictures.pixelBytes == 0 || !fit(source, destination))
        return false;
    try {
        Morpher morpher(pictures, sourceLines, targetLines, lineCount);
        morpher.startFrame(t);
        for (int32_t y = 0; y < pictures.height; ++y)
            morpher.morphRow(y);
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

} // namespace lx

using namespace lx;

int32_t LxMorphFrames(LxImage *source, LxImage *destination, const LxMorphLine *sourceLines,
                      const LxMorphLine *targetLines, int32_t lineCount, int32_t frameCount) {
    if (source == nullptr || destination == nullptr || frameCount < 1 || !fit(*source, *destination))
        return frameCount;
    try {
        return morphFrames(picturesOf(*source, *destination), sourceLines, targetLines,
                           static_cast<size_t>(std::max(lineCount, 0)), frameCount);
    } catch (const std::bad_alloc &) {
        return frameCount;
    }
}
