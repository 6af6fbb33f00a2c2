#include "sheen/Compositing.h"

#include <algorithm>

#include "foundation/VectorLevel.h"
#include "image/Image.h"

namespace lx {
namespace {

constexpr void (*compositeRows[])(const CompositeRow &) = LX_VECTOR_TABLE(compositeRow);

} // namespace

void compositeRow(const CompositeRow &row) {
    compositeRows[vectorLevelIndex()](row);
}

void compositeLayer(const LxSheenLayer &layer, LxImage &heights, LxImage &colors) {
    const int32_t rows = height(heights);
    for (int32_t y = 0; y < rows; ++y) {
        compositeRow({layer.compositeMode, static_cast<float>(layer.opacity), layer.color, width(heights),
                      reinterpret_cast<float *>(rowAddress(heights, y)),
                      reinterpret_cast<const float *>(rowAddress(*layer.image, y)),
                      reinterpret_cast<LxRGBA *>(rowAddress(colors, y))});
    }
}

double compositeHeight(uint32_t mode, double a, double b) {
    switch (mode) {
    case compositeAdd:
        return a + b;
    case compositeSubtract:
        return a - b;
    case compositeMultiply:
        return a * b;
    case compositeLarger:
        return std::max(a, b);
    case compositeSmaller:
        return std::min(a, b);
    case compositeAddInside:
        return a != 0.0 ? a + b : a;
    case compositeSubtractInside:
        return a != 0.0 ? a - b : a;
    case compositeMultiplyInside:
        return a != 0.0 ? a * b : a;
    case compositeLargerInside:
        return a != 0.0 ? std::max(a, b) : a;
    case compositeSmallerInside:
        return a != 0.0 ? std::min(a, b) : a;
    default:
        return a;
    }
}

} // namespace lx
