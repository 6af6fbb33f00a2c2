// Gradients: the stops, and the colour at a pixel.

#include "gc/Gradient.h"

#include <algorithm>
#include <iterator>

#include <oxlume/LxMem.h>
#include <oxlume/LxScalar.h>

#include "foundation/Numeric.h"

namespace lx {
namespace {

// What is not a number counts as 0.
double heldToUnit(double value) {
    return value > 0.0 ? std::min(value, 1.0) : 0.0;
}

// The distance to the nearest side, in each quadrant as it stands: measured past the middle from twice the
// halves, so that an odd side's last pixel is at distance 0 from its end.
int64_t inwardIndex(int64_t dx, int64_t dy, int64_t halfWidth, int64_t halfHeight) {
    return std::min(dx < halfWidth ? dx : 2 * halfWidth - dx, dy < halfHeight ? dy : 2 * halfHeight - dy);
}

} // namespace

int32_t rampIndex(const LxGradient &gradient, int32_t x, int32_t y) {
    const LxRectL &bounds = gradient.bounds;
    const int64_t width = distance(bounds.x1, bounds.x0);
    const int64_t height = distance(bounds.y1, bounds.y0);
    const int64_t dx = int64_t{x} - bounds.x0;
    const int64_t dy = int64_t{y} - bounds.y0;
    int64_t index = 0;
    switch (gradient.type) {
    case kLxGradientAcross:
        index = dx;
        break;
    case kLxGradientDown:
        index = dy;
        break;
    case kLxGradientInward:
        if (width == 0 || height == 0)
            return -1;
        index = inwardIndex(dx, dy, width / 2, height / 2);
        break;
    case kLxGradientDiagonal:
        index = dx + dy;
        break;
    case kLxGradientDiagonalUp:
        index = dy + (width - dx);
        break;
    default:
        return -1;
    }
    // Held to the array and not to the shape: a ramp that was longer once still shows its old end.
    const int64_t last = int64_t{gradient.rampCapacity} - 1;
    return gradient.ramp != nullptr ? static_cast<int32_t>(std::clamp(index, int64_t{0}, last)) : -1;
}

} // namespace lx

using namespace lx;

LxGradient *LxGradient_Create(void) {
    auto *gradient = static_cast<LxGradient *>(LxMem_calloc(1, sizeof(LxGradient)));
    if (gradient == nullptr)
        return nullptr;
    gradient->type = kLxGradientDown;
    gradient->curve = LxLinear;
    gradient->dirty = 1;
    std::fill(std::begin(gradient->positions), std::end(gradient->positions), noStop);
    std::fill(std::begin(gradient->mids), std::end(gradient->mids), 0.5);
    return gradient;
}

void LxGradient_Delete(LxGradient *gradient) {
    if (gradient == nullptr)
        return;
    LxMem_free(gradient->table);
    LxMem_free(gradient->ramp);
    LxMem_free(gradient);
}

void LxGradient_SetType(LxGradient *gradient, int32_t type, int32_t curve) {
    if (gradient == nullptr)
        return;
    static constexpr decltype(LxGradient::curve) curves[] = {LxLinear, LxCurved, LxSine, LxSphereInc,
                                                             LxSphereDec};
    dropTable(*gradient);
    gradient->type = type;
    gradient->curve = curves[curve > 0 && curve < static_cast<int32_t>(std::size(curves)) ? curve : 0];
}

void LxGradient_AddColor(LxGradient *gradient, LxColor color, int32_t index, double position, double mid) {
    if (gradient == nullptr || index < 0 || index >= gradientStops)
        return;
    dropTable(*gradient);
    gradient->colors[index] = color;
    gradient->positions[index] = heldToUnit(position);
    gradient->mids[index] = heldToUnit(mid);
    gradient->dirty = 1;
}

void LxGradient_Color(LxColor *out, const LxGradient *gradient, int32_t x, int32_t y) {
    const int32_t index = gradient != nullptr ? rampIndex(*gradient, x, y) : -1;
    *out = index >= 0 ? gradient->ramp[index] : LxColor_RGBA_Black;
}
