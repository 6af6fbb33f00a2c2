// Parameters in, derived values out.

#include "sheen/Surface.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "foundation/Numeric.h"
#include "geometry/Noise.h"

namespace lx {
namespace {

struct Flag {
    uint32_t bit;
    SheenIndex parameter;
};

constexpr Flag shapeFlagTable[] = {
    {shapeVertCurve, kVertCurve},     {shapeVertBorderCurve, kVertBorderCurve},
    {shapeHorCurve, kHorCurve},       {shapeHorBorderCurve, kHorBorderCurve},
    {shapeVertArch, kVertArch},       {shapeHorArch, kHorArch},
    {shapeCentralArch, kCentralArch}, {shapeVertSheer, kVertSheer},
    {shapeHorSheer, kHorSheer},       {shapeVertPerspect, kVertPerspect},
    {shapeHorPerspect, kHorPerspect},
};

constexpr Flag noiseFlagTable[] = {
    {noiseVertCurve, kNoiseVertCurve},
    {noiseHorCurve, kNoiseHorCurve},
    {noiseHeight, kNoiseAmount},
};

template <size_t count>
uint32_t activeFlags(const Flag (&table)[count], const double *values) {
    uint32_t flags = 0;
    for (const Flag &flag : table) {
        if (values[flag.parameter] != 0.0)
            flags |= flag.bit;
    }
    return flags;
}

double reciprocal(double value) {
    return value == 0.0 ? 10000000000.0 : 1.0 / value;
}

void prepareSizes(SheenValues &s) {
    for (int i = 0; i < 2; ++i) {
        const double size = s.values[kInnerSize0 + i];
        const double border = s.values[kBorderSize0 + i];
        if (border < 0.0) {
            // A negative border is a fraction carved out of the inner size.
            s.border[i] = -size * border;
            s.inner[i] = size - (-size * border);
        } else {
            s.border[i] = border;
            s.inner[i] = size;
        }
        s.total[i] = s.inner[i] + s.border[i];
        s.innerScale[i] = reciprocal(s.inner[i]);
        s.borderScale[i] = reciprocal(s.border[i]);
        s.totalScale[i] = reciprocal(s.total[i]);
    }
}

void preparePlacement(SheenValues &s) {
    const double *const v = s.values;
    s.centerX = v[kCenter0];
    s.centerY = v[kCenter1];
    if (v[kRotationPeriod] == 0.0 && v[kCenterRotation] != 0.0) {
        const double a = v[kCenterRotation] * degree;
        s.centerX = std::cos(a) * (v[kCenter0] - 0.5) + 0.5 - std::sin(a) * (v[kCenter1] - 0.5);
        s.centerY = (v[kCenter0] - 0.5) * std::sin(a) + (std::cos(a) * (v[kCenter1] - 0.5) + 0.5);
    }
    s.rotationRadians = degree * v[kRotation];
    s.centerRotationRadians = v[kCenterRotation] * degree;
    s.rotationTotal = s.rotationRadians + s.centerRotationRadians;
    s.rotationTotalCos = std::cos(s.rotationTotal);
    s.rotationTotalSin = std::sin(-s.rotationTotal);
    s.rotationCos = std::cos(s.rotationRadians);
    s.rotationSin = std::sin(-s.rotationRadians);
}

void prepareFold(SheenValues &s) {
    const double *const v = s.values;
    s.symmetry = v[kSymmetry];
    s.sector = 0.0;
    s.sectorRemainder = 0.0;
    if (s.symmetry > 0.0) {
        s.sector = tau / s.symmetry;
        s.sectorRemainder = tau - s.sector * std::floor(tau / s.sector);
    }
    s.sectorsPerRadian = inverseTau * s.symmetry;
    s.swirl = v[kSwirl];
    s.jitterFrequency[0] = v[kJitterSpeed] * 200.0 + 1.0;
    s.jitterFrequency[1] = v[kJitter2Speed] * 200.0 + 1.0;
    s.jitterAmount[0] = v[kJitter] + v[kJitter];
    s.jitterAmount[1] = v[kJitter2] + v[kJitter2];
}

void prepareProfile(SheenValues &s) {
    const double p0 = s.values[kProfilePar0];
    const double p1 = s.values[kProfilePar1];
    double base, span, extra, lift;
    if (p0 < 0.0) {
        s.flatTop = -p0;
        s.flatTopScale = p0 > -0.9999999999999998 ? 1.0 / (p0 + 1.0) : 1.0;
        base = 0.0;
        span = 1.0;
        extra = 0.0;
        lift = 0.0;
    } else {
        s.flatTop = 0.0; // and flatTopScale stays: nothing is cut, so nothing reads it
        base = p0;
        span = 1.0 - p0;
        extra = p0 * 1.5;
        lift = p0 * 0.5;
    }
    s.lowerKnee = (1.0 - p1) * span * 0.5;
    s.lowerKneeScale = s.lowerKnee == 0.0 ? 1.0 : 1.0 / s.lowerKnee;
    s.upperKnee = base + s.lowerKnee;
    s.upperKneeRaw = extra + s.lowerKnee;
    s.profileTop = lift + 1.0;
    s.profileScale = s.profileTop == 0.0 ? 1.0 : 1.0 / s.profileTop;
    s.steps = s.values[kProfilePar3];
    s.stepHeight = s.steps == 0.0 ? 0.0 : 1.0 / s.steps;
    s.groove = s.values[kProfilePar2];
}

void prepareNoise(SheenValues &s) {
    const double *const v = s.values;
    s.noiseScaleX = (v[kNoiseRatio] + 1.0) * (1.0 - v[kNoiseZoom]) * 0.5;
    s.noiseScaleY = (1.0 - v[kNoiseZoom]) * (1.0 - v[kNoiseRatio]) * 0.5;
    const double a = v[kNoiseAmount];
    s.noiseAmplitude = a * std::fabs(a) * (0.4 * v[kNoiseZoom] + 0.5); // keeps the sign of the amount
}

// The bits that the fold leaves of `mask`.
uint32_t maskOfFold(const SheenValues &s, uint32_t mask) {
    const double *const v = s.values;
    if (s.rotationTotal != 0.0 || v[kJitter] != 0.0 || v[kJitter2] != 0.0 || v[kSwirl] != 0.0)
        mask &= ~(mirrorLeftRight | mirrorTopBottom);
    const int32_t whole = truncateToInt32(s.symmetry);
    if (s.symmetry != whole)
        mask = 0;
    else if ((whole & 1) != 0)
        mask &= ~(mirrorLeftRight | mirrorHalfTurn | mirrorUnused);
    if (whole == 2 && (s.inner[0] != s.inner[1] || s.border[0] != s.border[1]))
        mask &= ~mirrorUnused;
    return mask;
}

uint32_t symmetryMaskOf(const SheenValues &s) {
    if (s.noiseFlags != 0)
        return 0;
    uint32_t mask = mirrorLeftRight | mirrorTopBottom | mirrorHalfTurn | mirrorUnused;
    if (s.centerX != 0.5)
        mask = mirrorTopBottom;
    if (s.centerY != 0.5)
        mask &= mirrorLeftRight;
    if (s.symmetry != 0.0)
        mask = maskOfFold(s, mask);
    if (s.values[kCenterRotationPeriod] != 0.0)
        mask = 0;
    if ((s.shapeFlags & (shapeVertSheer | shapeHorSheer)) != 0)
        mask &= ~(mirrorLeftRight | mirrorTopBottom);
    if ((s.shapeFlags & shapeVertPerspect) != 0)
        mask &= ~(mirrorLeftRight | mirrorHalfTurn);
    if ((s.shapeFlags & shapeHorPerspect) != 0)
        mask &= ~(mirrorTopBottom | mirrorHalfTurn);
    return mask;
}

} // namespace

void LxSheenSurface::Reset() {
    LxNoise_Seed(0);
    for (uint32_t i = 0; i < kSheenParameterCount; ++i)
        values[i] = sheenParameters[i].defaultValue;
    std::fill(std::begin(links), std::end(links), 0u);
    prepared = false;
}

void LxSheenSurface::SetValue(uint32_t index, double value) {
    values[index] = Step(index) == 0.0 ? value : roundToInt32(value);
    prepared = false;
}

uint32_t LxSheenSurface::SymmetryMask() {
    if (!prepared)
        Prepare();
    return symmetryMask;
}

void LxSheenSurface::Prepare() {
    prepareSizes(*this);
    cornerType = values[kCornerType];
    preparePlacement(*this);
    prepareFold(*this);
    prepareProfile(*this);
    shapeFlags = activeFlags(shapeFlagTable, values);
    noiseFlags = activeFlags(noiseFlagTable, values);
    symmetryMask = symmetryMaskOf(*this);
    prepareNoise(*this);
    prepared = true;
}

} // namespace lx
