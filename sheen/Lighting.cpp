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

constexpr void (*lightPixels[])(const LightPass &) = LX_VECTOR_TABLE(lightPixels);

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

LightPass lightOf(const LxSheenDescriptor &descriptor) {
    const LxSheenLight &light = descriptor.light;
    const double lx = std::cos(light.azimuth) * std::cos(light.elevation) * light.brilliance;
    const double ly = std::sin(light.azimuth) * std::cos(light.elevation) * light.brilliance;
    const double lz = std::sin(light.elevation) * light.brilliance;
    const double depth = 1530.0 / light.width;
    LightPass pass = {};
    pass.lx = static_cast<float>(lx);
    pass.ly = static_cast<float>(ly);
    pass.lz = static_cast<float>(lz);
    pass.lift = static_cast<float>(depth * lz);
    pass.depth2 = static_cast<float>(depth * depth);
    pass.ambient = static_cast<float>(light.ambient);
    pass.alphaThreshold = static_cast<float>(descriptor.alphaThreshold);
    return pass;
}

template <class Pixel>
ptrdiff_t strideOf(const LxImage &image) {
    const ptrdiff_t pixels = image.rowBytes / static_cast<int32_t>(sizeof(Pixel));
    return image.flipped != 0 ? -pixels : pixels;
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

ImageHandle litPicture(const LxSheenDescriptor &descriptor) {
    const LxImage &heights = *descriptor.floatImage;
    const LxImage &colors = *descriptor.colorImage;
    const int32_t side = width(heights);
    // A picture of the heights' own size is written whole below, so only others are cleared before.
    const LxRectL frame = frameOf(descriptor);
    const bool isPlain = side == height(heights) && side >= 3 && side == descriptor.width &&
                         side == descriptor.height && frame.x1 - int64_t{frame.x0} == side &&
                         frame.y1 - int64_t{frame.y0} == side;
    ImageHandle picture(createImage(kLxPixelRGBA, frame, !isPlain, false));
    if (picture == nullptr || descriptor.width < 3)
        return picture;
    LightPass pass = lightOf(descriptor);
    // On purpose: rows are bounded by the width and columns by the height. The two are equal; where they were
    // not, nothing outside the images would be touched.
    pass.height = std::min({descriptor.width, height(heights), height(*picture)}) - 2;
    pass.width = std::min({descriptor.height, width(heights), width(*picture)}) - 2;
    if (pass.width > 0 && pass.height > 0) {
        pass.heights = reinterpret_cast<const float *>(rowAddress(heights, 0));
        pass.colors = reinterpret_cast<const LxRGBA *>(rowAddress(colors, 1)) + 1;
        pass.out = reinterpret_cast<LxRGBA *>(rowAddress(*picture, 1)) + 1;
        pass.heightStride = strideOf<float>(heights);
        pass.colorStride = strideOf<LxRGBA>(colors);
        pass.outStride = strideOf<LxRGBA>(*picture);
        lightPixels[vectorLevelIndex()](pass);
    }
    if (isPlain)
        clearEdges(*picture);
    return picture;
}

} // namespace lx
