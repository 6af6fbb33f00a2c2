#include "morph/Morph.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
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

int32_t morphFrames(const Pictures &pictures, const LxMorphLine *sourceLines, const LxMorphLine *targetLines,
                    size_t lineCount, int32_t frameCount) {
    const auto width = static_cast<size_t>(pictures.width);
    std::vector<MorphPair> pairs(lineCount);
    std::vector<float> store(3 * width);
    const MorphSums sums = {store.data(), store.data() + width, store.data() + 2 * width};
    const MorphRow morphRow = morphRows[vectorLevelIndex()];
    for (int32_t frame = 1; frame <= frameCount; ++frame) {
        // Only the last frame's pixels can be seen, unless each frame reads what the one before has written.
        const bool isSeen = pictures.pixelBytes != 0 && (frame == frameCount || pictures.overlap());
        const float t = static_cast<float>(frame) / static_cast<float>(frameCount);
        for (size_t i = 0; i < lineCount && isSeen; ++i)
            pairs[i] = pairBetween(sourceLines[i], targetLines[i], t);
        for (int32_t y = 0; y < pictures.height; ++y) {
            std::printf("processing frame %d: line %d of %d\n", frame, y, pictures.height);
            if (!isSeen)
                continue;
            morphRow(sums, pairs.data(), lineCount, y, pictures.width);
            copyRow(pictures, sums, y);
        }
    }
    return wrappingAdd(frameCount, 1);
}

} // namespace
} // namespace lx

using namespace lx;

int32_t LxMorphFrames(LxImage *source, LxImage *destination, const LxMorphLine *sourceLines,
                      const LxMorphLine *targetLines, int32_t lineCount, int32_t frameCount) {
    if (source == nullptr || destination == nullptr || frameCount < 1)
        return frameCount;
    const Pictures pictures = {firstRow(*source), firstRow(*destination), width(*source), height(*source),
                               handledPixelBytes(*source)};
    if (pictures.bytes() > LxImage_DataSize(source) || pictures.bytes() > LxImage_DataSize(destination))
        return frameCount;
    try {
        return morphFrames(pictures, sourceLines, targetLines, static_cast<size_t>(std::max(lineCount, 0)),
                           frameCount);
    } catch (const std::bad_alloc &) {
        return frameCount;
    }
}
