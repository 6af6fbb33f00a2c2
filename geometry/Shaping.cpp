// The shaping functions: profiles over the unit interval, and the measure of arcs.

#include <cmath>
#include <numbers>

#include <oxlume/LxScalar.h>

namespace {

// The gap between 1 and the next double: what counts as nothing here.
constexpr double epsilon = 2.220446049250313e-16;

// Brings an angle into 0 to 360, both ends included: 360 stays and is not folded to 0.
double wrapDegrees(double angle) {
    if (angle >= 0.0 && angle <= 360.0)
        return angle;
    const double rest = std::fmod(angle, 360.0);
    if (angle > 360.0)
        return rest == 0.0 ? 360.0 : rest;
    return rest < 0.0 ? rest + 360.0 : rest + 0.0;
}

} // namespace

double LxScale(double v, double inMin, double inMax, double outMin, double outMax) {
    double r = (v - inMin) / (inMax - inMin);
    if (r < 0.0)
        r = 0.0;
    else if (r > 1.0)
        r = 1.0;
    return outMin + (outMax - outMin) * r;
}

double LxLinear(double a, double t) {
    if (a >= t)
        return a < epsilon ? 0.0 : t * 0.5 / a;
    const double w = 1.0 - a;
    return w < epsilon ? 1.0 : (t - a) * 0.5 / w + 0.5;
}

double LxCurved(double a, double t) {
    return std::pow(t, std::log(0.5) / std::log(a > epsilon ? a : epsilon));
}

double LxRoundTo(double v, int32_t digits) {
    const double p = std::pow(10.0, digits);
    const double y = p * v;
    // On purpose: the remainder has the sign of y, so negative values always go down.
    return (std::fmod(y, 1.0) >= 0.5 ? std::ceil(y) : std::floor(y)) / p;
}

double LxArcLength(double start, double end, int32_t clockwise, int32_t fullWhenEqual) {
    start = wrapDegrees(LxRoundTo(start, 2));
    end = wrapDegrees(LxRoundTo(end, 2));
    if (fullWhenEqual == 0 && std::fabs(start - end) <= epsilon)
        return 0.0;
    if (start == end) {
        // On purpose: what equal angles mean differs from quadrant to quadrant.
        return clockwise != 0 && start > 90.0 && start <= 270.0 ? 360.0 : 0.0;
    }
    const double sweep = clockwise != 0 ? start - end : end - start;
    if (sweep > 0.0)
        return sweep;
    return clockwise != 0 ? 360.0 + start - end : 360.0 + end - start;
}

double LxSine(double a, double t) {
    const double s = LxLinear(a, t);
    return 0.5 * (1.0 + std::sin(s * std::numbers::pi - std::numbers::pi / 2));
}

double LxSphereInc(double a, double t) {
    const double s = LxLinear(a, t);
    return std::sqrt(1.0 - (s - 1.0) * (s - 1.0));
}

double LxSphereDec(double a, double t) {
    const double s = LxLinear(a, t);
    return 1.0 - std::sqrt(1.0 - s * s);
}
