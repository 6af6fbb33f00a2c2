#include "morph/Morph.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <new>
#include <vector>

#include "foundation/Numeric.h"
#include "foundation/VectorLevel.h"
#include "image/Image.h"
#include "image/Pixels.h"
#include "morph/MorphRow.h"

namespace lx {
namespace {

constexpr MorphRow morphRows[] = LX_VECTOR_TABLE(morphRow);

int32_t between(int32_t from, int32_t to, float t) {
    return truncateToInt32(static_cast<float>(from) + static_cast<float>(wrappingSubtract(to, from)) * t);
}

LxMorphLine lineOf(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    const int32_t dx = wrappingSubtract(x1, x0);
    const int32_t dy = wrappingSubtract(y1, y0);
    const int32_t lengthSquared = wrappingAdd(wrappingMultiply(dx, dx), wrappingMultiply(dy, dy));
    return {x0, y0, x1, y1, dx, dy, std::sqrt(static_cast<float>(lengthSquared)), lengthSquared};
}

LxMorphLine lineBetween(const LxMorphLine &from, const LxMorphLine &to, float t) {
    return lineOf(between(from.x0, to.x0, t), between(from.y0, to.y0, t), between(from.x1, to.x1, t),
                  between(from.y1, to.y1, t));
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

// The pixels of both images: the address of the first row of each, and the way to the next.
struct Pictures {
    const uint8_t *source;
    uint8_t *destination;
    ptrdiff_t sourceStride, destinationStride;
    int32_t width, height;
    ptrdiff_t pixelBytes; // 0 for types that are not handled
};

// Where along an axis the weighted sum leads, inside 0 to `length` - 1.
int32_t sourceCoordinate(float sum, float weight, int32_t at, int32_t length) {
    const float position = sum / weight + static_cast<float>(at);
    return std::clamp(truncateToInt32(position + 0.5f), 0, length - 1);
}

void copyRow(const Pictures &pictures, const MorphSums &sums, int32_t y) {
    const auto size = static_cast<size_t>(pictures.pixelBytes);
    uint8_t *to = pictures.destination + y * pictures.destinationStride;
    for (int32_t x = 0; x < pictures.width; ++x, to += size) {
        const float weight = sums.weight[x];
        // Without any weight, as with no lines or lines of no length, a pixel comes from its own place.
        const bool weighs = weight != 0.0f && !std::isnan(weight);
        const int32_t fromX = weighs ? sourceCoordinate(sums.x[x], weight, x, pictures.width) : x;
        const int32_t fromY = weighs ? sourceCoordinate(sums.y[x], weight, y, pictures.height) : y;
        const uint8_t *from = pictures.source + fromY * pictures.sourceStride + fromX * pictures.pixelBytes;
        for (size_t i = 0; i < size; ++i)
            to[i] = from[i];
    }
}

// ---- The frames that LxMorphFrames draws over each other ----
//
// It takes the pixels of both images row after row without a gap, whatever distance their rows have
// elsewhere.

ptrdiff_t handledPixelBytes(const LxImage &image) {
    return image.type == kLxPixelA ? 1 : image.type == kLxPixelRGB ? 3 : 0;
}

int64_t packedBytes(const LxImage &image) {
    return int64_t{handledPixelBytes(image)} * width(image) * height(image);
}

Pictures packedPictures(const LxImage &source, LxImage &destination) {
    const ptrdiff_t stride = handledPixelBytes(source) * width(source);
    return {firstRow(source), firstRow(destination),    stride, stride, width(source),
            height(source),   handledPixelBytes(source)};
}

bool hasBytes(const LxImage &image, int64_t bytes) {
    return bytes == 0 || (firstRow(image) != nullptr && bytes <= LxImage_DataSize(&image));
}

bool fitPacked(const LxImage &source, const LxImage &destination) {
    const int64_t bytes = packedBytes(source);
    return hasBytes(source, bytes) && hasBytes(destination, bytes);
}

bool overlap(const uint8_t *a, int64_t aBytes, const uint8_t *b, int64_t bBytes) {
    const std::less<> before;
    return before(a, b + bBytes) && before(b, a + aBytes);
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

// No lines need no arrays.
bool areThere(const LxMorphLine *sourceLines, const LxMorphLine *targetLines, int32_t lineCount) {
    return lineCount <= 0 || (sourceLines != nullptr && targetLines != nullptr);
}

int32_t morphFrames(const LxImage &source, LxImage &destination, const LxMorphLine *sourceLines,
                    const LxMorphLine *targetLines, size_t lineCount, int32_t frameCount) {
    const Pictures pictures = packedPictures(source, destination);
    const int64_t bytes = packedBytes(source);
    const bool readsResults = overlap(pictures.source, bytes, pictures.destination, bytes);
    Morpher morpher(pictures, sourceLines, targetLines, lineCount);
    for (int64_t frame = 1; frame <= frameCount; ++frame) {
        // Only the last frame's pixels can be seen, unless each frame reads what the one before has written.
        const bool isSeen = pictures.pixelBytes != 0 && (frame == frameCount || readsResults);
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

// ---- One frame of two images as they lie ----

ptrdiff_t strideOf(const LxImage &image) {
    return image.flipped != 0 ? -ptrdiff_t{image.rowBytes} : ptrdiff_t{image.rowBytes};
}

Pictures picturesAsTheyLie(const LxImage &source, LxImage &destination) {
    return {rowAddress(source, 0),
            rowAddress(destination, 0),
            strideOf(source),
            strideOf(destination),
            width(source),
            height(source),
            static_cast<ptrdiff_t>(storedBytes(source))};
}

// Has pixels, and rows that hold them.
bool isWhole(const LxImage &image) {
    const int64_t rowBytes = int64_t{width(image)} * static_cast<int64_t>(storedBytes(image));
    return firstRow(image) != nullptr && rowBytes > 0 && rowBytes <= image.rowBytes;
}

bool match(const LxImage &source, const LxImage &destination) {
    return isWhole(source) && isWhole(destination) && source.type == destination.type &&
           width(source) == width(destination) && height(source) == height(destination) &&
           !overlap(firstRow(source), LxImage_DataSize(&source), firstRow(destination),
                    LxImage_DataSize(&destination));
}

void morphFrame(const LxImage &source, LxImage &destination, const LxMorphLine *sourceLines,
                const LxMorphLine *targetLines, size_t lineCount, float t) {
    Morpher morpher(picturesAsTheyLie(source, destination), sourceLines, targetLines, lineCount);
    morpher.startFrame(t);
    for (int32_t y = 0; y < height(source); ++y)
        morpher.morphRow(y);
}

} // namespace
} // namespace lx

using namespace lx;

LxMorphLine LxMorphLine_Make(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    return lineOf(x0, y0, x1, y1);
}

int32_t LxMorph_Frame(const LxImage *source, LxImage *destination, const LxMorphLine *sourceLines,
                      const LxMorphLine *targetLines, int32_t lineCount, double t) {
    if (source == nullptr || destination == nullptr || lineCount < 0 ||
        !areThere(sourceLines, targetLines, lineCount) || !std::isfinite(t) || !match(*source, *destination))
        return 0;
    try {
        morphFrame(*source, *destination, sourceLines, targetLines, static_cast<size_t>(lineCount),
                   static_cast<float>(t));
        return 1;
    } catch (const std::bad_alloc &) {
        return 0;
    }
}

int32_t LxMorphFrames(LxImage *source, LxImage *destination, const LxMorphLine *sourceLines,
                      const LxMorphLine *targetLines, int32_t lineCount, int32_t frameCount) {
    if (source == nullptr || destination == nullptr || frameCount < 1 ||
        !areThere(sourceLines, targetLines, lineCount) || !fitPacked(*source, *destination))
        return frameCount;
    try {
        return morphFrames(*source, *destination, sourceLines, targetLines,
                           static_cast<size_t>(std::max(lineCount, 0)), frameCount);
    } catch (const std::bad_alloc &) {
        return frameCount;
    }
}
