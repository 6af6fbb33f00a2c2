// The descriptor between two others.

#include <cmath>

#include "colour/Interpolation.h"
#include "foundation/Numeric.h"
#include "sheen/Descriptor.h"

namespace lx {
namespace {

constexpr double LxSheenLight::*lightFields[] = {
    &LxSheenLight::azimuth,      &LxSheenLight::elevation,          &LxSheenLight::width,
    &LxSheenLight::ambient,      &LxSheenLight::brilliance,         &LxSheenLight::shadowSoftness,
    &LxSheenLight::shadowLength, &LxSheenLight::shadowDisplacement,
};

double held(double value) {
    return value < 0.0 ? 0.0 : value > 1.0 ? 1.0 : value;
}

LxSheenLight between(double t, const LxSheenLight &a, const LxSheenLight &b) {
    LxSheenLight light = defaultLight; // on purpose the colour stays the default white
    for (double LxSheenLight::*field : lightFields)
        light.*field = a.*field + (b.*field - a.*field) * t;
    light.shadowOpacity = lerpByte(t, a.shadowOpacity, b.shadowOpacity);
    light.shadowStep = lerpByte(t, a.shadowStep, b.shadowStep);
    return light;
}

// Moves `layer` on its way to `b`. Mode and switch stay those that it has.
void approach(double t, LxSheenLayer &layer, const LxSheenLayer &b) {
    for (uint32_t i = 0; i < kSheenParameterCount; ++i) {
        const double va = layer.Value(i);
        // Also a value that stays is stored anew, and so rounded like any other.
        layer.SetValue(i, LxSheenSurface::IsInterpolated(i) ? (b.Value(i) - va) * t + va : va);
    }
    layer.opacity = held((b.opacity - layer.opacity) * t + layer.opacity);
    layer.color = LxRGBA_LerpHSV(t, layer.color, b.color);
}

} // namespace

// A layer that `b` lacks stays as it is in `a`.
LxSheenDescriptor::LxSheenDescriptor(double t, const LxSheenDescriptor &a, const LxSheenDescriptor &b)
    : LxSheenDescriptor(a) {
    t = held(t);
    light = between(t, a.light, b.light);
    for (size_t i = 0; i < layers.size() && i < b.layers.size(); ++i)
        approach(t, layers[i], b.layers[i]);
}

} // namespace lx
