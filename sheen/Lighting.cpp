#include "sheen/Lighting.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <oxlume/LxRect.h>

#include "foundation/Numeric.h"
#include "foundation/VectorLevel.h"
#include "image/Image.h"
#include "sheen/SheenValues.h"

namespace lx {
namespace {

constexpr void (*lightRows[])(const LightRow &) = LX_VECTOR_TABLE(lightRow);

constexpr double degreesPerRadian = 57.29577951308232;

// The rectangle of the picture: that of the heights, with what the shadow's displacement adds.
LxRectL frameOf(const LxSheenDescriptor &descriptor) {
    const LxSheenLight &light = descriptor.light;
    const double d = (light.azimuth * degreesPerRadian + 180.0) * degree;
    const LxRectD rect = LxImage_RectD(descriptor.floatImage.get());
    LxRectD moved = rect;
    LxRectD_moveTo(&moved, light.shadowDisplacement * std::cos(d), light.shadowDisplacement * std::sin(d));
    const LxRectD frame = LxRectD_union(moved, rect);
    return {truncateToInt32(std::floor(frame.x0)), truncateToInt32(std::floor(frame.y0)),
            truncateToInt32(std::ceil(frame.x1)), truncateToInt32(std::ceil(frame.y1))};
}

LightRow lightOf(const LxSheenDescriptor &descriptor) {
    const LxSheenLight &light = descriptor.light;
    const double lx = std::cos(light.azimuth) * std::cos(light.elevation) * light.brilliance;
    const double ly = std::sin(light.azimuth) * std::cos(light.elevation) * light.brilliance;
    const double lz = std::sin(light.elevation) * light.brilliance;
    const double depth = 1530.0 / light.width;
    LightRow row = {};
    row.lx = static_cast<float>(lx);
    row.ly = static_cast<float>(ly);
    row.lz = static_cast<float>(lz);
    row.lift = static_cast<float>(depth * lz);
    row.depth2 = static_cast<float>(depth * depth);
    row.ambient = static_cast<float>(light.ambient);
    row.alphaThreshold = static_cast<float>(descriptor.alphaThreshold);
    return row;
}

const float *heightRow(const LxImage &image, int32_t y) {
    return reinterpret_cast<const float *>(rowAddress(image, y));
}

// Makes the outermost rows and columns transparent.
void clearEdges(LxImage &picture) {
    const auto rowOf = [&](int32_t y) { return reinterpret_cast<LxRGBA *>(rowAddress(picture, y)); };
    const int32_t lastX = width(picture) - 1;
    const int32_t lastY = height(picture) - 1;
    for (const int32_t y : {0, lastY})
        std::fill_n(rowOf(y), lastX + 1, LxRGBA{0, 0, 0, 0});
    for (int32_t y = 1; y < lastY; ++y)
        rowOf(y)[0] = rowOf(y)[lastX] = LxRGBA{0, 0, 0, 0};
}

} // namespace

void lightRow(const LightRow &row) {
    lightRows[vectorLevelIndex()](row);
}

OwnedImage litPicture(const LxSheenDescriptor &descriptor) {
    const LxImage &heights = *descriptor.floatImage;
    const LxImage &colors = *descriptor.colorImage;
    const int32_t side = width(heights);
    // A picture of the heights' own size is written whole below, so only others are cleared before.
    const LxRectL frame = frameOf(descriptor);
    const bool isPlain = side == height(heights) && side >= 3 && side == descriptor.width &&
                         side == descriptor.height && frame.x1 - int64_t{frame.x0} == side &&
                         frame.y1 - int64_t{frame.y0} == side;
    OwnedImage picture(createImage(kLxPixelRGBA, frame, !isPlain, false));
    if (picture == nullptr || descriptor.width < 3)
        return picture;
    LightRow row = lightOf(descriptor);
    // On purpose: rows are bounded by the width and columns by the height. The two are equal; where they were
    // not, nothing outside the images would be touched.
    const int32_t endY = std::min({descriptor.width, height(heights), height(*picture)}) - 1;
    const int32_t endX = std::min({descriptor.height, width(heights), width(*picture)}) - 1;
    row.count = endX - 1;
    for (int32_t y = 1; y < endY; ++y) {
        row.above = heightRow(heights, y - 1);
        row.middle = heightRow(heights, y);
        row.below = heightRow(heights, y + 1);
        row.colors = reinterpret_cast<const LxRGBA *>(rowAddress(colors, y)) + 1;
        row.out = reinterpret_cast<LxRGBA *>(rowAddress(*picture, y)) + 1;
        lightRow(row);
    }
    if (isPlain)
        clearEdges(*picture);
    return picture;
}

} // namespace lx
