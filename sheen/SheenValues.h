// A sheen layer's parameters and what is derived from them.
#pragma once

#include "sheen/Parameters.h"

namespace lx {

constexpr double degree = 0.017453292519943295;
constexpr double tau = 6.283185307179586;
constexpr double inverseTau = 0.15915494309189535;
// How far full turbulence moves the point at which noise is read: 0.02 in single precision.
constexpr double turbulenceReach = 0.019999999552965164;

// One bit per active shaping parameter.
enum ShapeFlag : uint32_t {
    shapeVertCurve = 1,
    shapeVertBorderCurve = 2,
    shapeHorCurve = 4,
    shapeHorBorderCurve = 8,
    shapeVertArch = 16,
    shapeHorArch = 32,
    shapeCentralArch = 64,
    shapeVertSheer = 128,
    shapeHorSheer = 256,
    shapeVertPerspect = 512,
    shapeHorPerspect = 1024,
};

// One bit per active noise parameter.
enum NoiseFlag : uint32_t {
    noiseVertCurve = 1,
    noiseHorCurve = 4,
    noiseHeight = 64,
};

// Which mirrorings of the surface are exact, so that pixels may be copied instead of evaluated.
enum SymmetryBit : uint32_t {
    mirrorLeftRight = 1,
    mirrorTopBottom = 2,
    mirrorHalfTurn = 4,
    mirrorUnused = 8, // computed, read by nobody
};

// The parameters and what is derived from them. Plain data: the evaluation reads nothing else.
struct SheenValues {
    double values[kSheenParameterCount];
    uint32_t links[kSheenParameterCount]; // no use beyond being kept and copied
    bool prepared;                        // the derived values below are those of `values`

    uint32_t symmetryMask;
    double rotationTotal, centerRotationRadians;
    double rotationTotalCos, rotationTotalSin; // of the total: cosine, and sine of its negative
    double rotationRadians;
    double rotationCos, rotationSin; // likewise
    double symmetry;
    double sector; // the angle of one sector of the fold, radians
    double sectorsPerRadian;
    double sectorRemainder; // what whole sectors leave of a full turn
    double centerX, centerY;
    // Per axis, 0 horizontal and 1 vertical. A scale is the reciprocal, 1e10 where the value is 0.
    double inner[2], border[2], total[2];
    double innerScale[2], borderScale[2], totalScale[2];
    double cornerType;
    double swirl;
    double jitterFrequency[2], jitterAmount[2];
    double noiseScaleX, noiseScaleY, noiseAmplitude;
    // The profile of the rim.
    double flatTop, flatTopScale;     // the part of the slope that is cut off flat, the stretch of the rest
    double lowerKnee, lowerKneeScale; // where the lower rounding ends
    double upperKnee, upperKneeRaw;   // where the upper rounding starts; the raw value is not read
    double profileTop, profileScale;  // the highest raw value and its reciprocal
    double steps, stepHeight;
    double groove;
    uint32_t shapeFlags, noiseFlags;
};

} // namespace lx
