// The 76 parameters of a sheen layer.
#pragma once

#include <cstdint>

namespace lx {

// Indices into the table. They are the interface: callers address a parameter by its index.
enum SheenIndex : uint32_t {
    kSymmetry = 0,
    kHeight,
    kInnerSize0,
    kInnerSize1,
    kBorderSize0,
    kBorderSize1,
    kCenter0,
    kCenter1,
    kCenter2,
    kRotation,
    kCenterRotation,
    kRotationPeriod,
    kCenterPeriod0,
    kCenterPeriod1,
    kSwirl,
    kJitter,
    kJitterSpeed,
    kCornerType,
    kProfileType,
    kProfilePar0,
    kProfilePar1,
    kProfilePar2,
    kProfilePar3,
    kVertCurve,
    kVertShape,
    kVertBorderCurve,
    kVertBorderShape,
    kHorCurve,
    kHorShape,
    kHorBorderCurve,
    kHorBorderShape,
    kVertArch,
    kVertArchShape,
    kHorArch,
    kHorArchShape,
    kCentralArch,
    kCentralArchShape,
    kVertSheer,
    kVertSheerShape,
    kHorSheer,
    kHorSheerShape,
    kVertPerspect,
    kVertPerspectShape,
    kHorPerspect,
    kHorPerspectShape,
    kNoiseAmount,
    kNoiseZoom,
    kNoiseRatio,
    kNoiseFreqMod,
    kNoisePosClip,
    kNoiseNegClip,
    kNoiseVertCurve,
    kNoiseHorCurve,
    kCenterRotationPeriod,
    kElevationDirection,
    kElevationAmount,
    kJitter2,
    kJitter2Speed,
    kAlphaBlur,
    kAlphaThreshold,
    kLightAzimuth,
    kLightElevation,
    kLightWidth,
    kLightAmbient,
    kLightBrilliance,
    kLightColor_r,
    kLightColor_g,
    kLightColor_b,
    kShadowSoftness,
    kShadowLength,
    kShadowDisplacement,
    kShadowOpacity,
    kShadowStep,
    kShadowColor_r,
    kShadowColor_g,
    kShadowColor_b,
    kSheenParameterCount
};

struct LxSheenParameter {
    const char *key;
    const char *name;
    const char *label;
    double minimum, maximum;
    double step; // 1 for a parameter that takes whole numbers, 0 for a continuous one
    double defaultValue;
    uint32_t interpolated; // bit 0: blended between two descriptors, else copied from the first
};

extern const LxSheenParameter sheenParameters[kSheenParameterCount];

} // namespace lx
