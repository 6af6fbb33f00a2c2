// Points and plane vectors, for use inside the library.
#pragma once

#include <cmath>

#include <oxlume/LxPoint.h>

#include "foundation/Numeric.h"

namespace lx {

inline LxPointL truncated(const LxPointD &point) {
    return {truncateToInt32(point.x), truncateToInt32(point.y)};
}

// The rounding of clipping and of matrices: see roundToInt32.
inline LxPointL rounded(const LxPointD &point) {
    return {roundToInt32(point.x), roundToInt32(point.y)};
}

constexpr LxPointD widened(const LxPointL &point) {
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

constexpr LxPointD sum(const LxPointD &a, const LxPointD &b) {
    return {a.x + b.x, a.y + b.y};
}

constexpr LxPointD difference(const LxPointD &a, const LxPointD &b) {
    return {a.x - b.x, a.y - b.y};
}

constexpr LxPointD scaled(const LxPointD &v, double s) {
    return {v.x * s, v.y * s};
}

constexpr LxPointD lerp(double t, const LxPointD &a, const LxPointD &b) {
    return {(b.x - a.x) * t + a.x, a.y + t * (b.y - a.y)};
}

constexpr double dot(const LxPointD &a, const LxPointD &b) {
    return a.x * b.x + a.y * b.y;
}

constexpr double squaredLength(const LxPointD &v) {
    return v.x * v.x + v.y * v.y;
}

inline double length(const LxPointD &v) {
    return std::sqrt(squaredLength(v));
}

} // namespace lx
