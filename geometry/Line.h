// Line segments, for use inside the library.
#pragma once

#include <cmath>

#include <oxlume/LxLine.h>

#include "geometry/Point.h"

namespace lx {

constexpr LxPointD head(const LxLineD &line) {
    return {line.x0, line.y0};
}

constexpr LxPointD tail(const LxLineD &line) {
    return {line.x1, line.y1};
}

// The vector from the first point to the second.
constexpr LxPointD direction(const LxLineD &line) {
    return {line.x1 - line.x0, line.y1 - line.y0};
}

inline double length(const LxLineD &line) {
    return length(direction(line));
}

// The cross product of the direction and the vector from the first point to (x, y), its terms added from the
// left.
constexpr double orientation(const LxLineD &line, double x, double y) {
    return line.x0 * line.y1 - line.y0 * line.x1 + line.y0 * x - line.x0 * y + line.x1 * y - line.y1 * x;
}

constexpr LxPointD center(const LxLineD &line) {
    return {(line.x0 + line.x1) * 0.5, (line.y0 + line.y1) * 0.5};
}

constexpr LxPointD split(const LxLineD &line, double t) {
    return {(1 - t) * line.x0 + t * line.x1, (1 - t) * line.y0 + t * line.y1};
}

// The crossing point of the two infinite lines. Parallel lines divide by zero; a determinant that is not a
// number gives the mean of the four ends.
inline LxPointD intersection(const LxLineD &a, const LxLineD &b) {
    const LxPointD d1 = direction(a);
    const LxPointD d2 = direction(b);
    const double c1 = a.x0 * d1.y - a.y0 * d1.x;
    const double c2 = b.x0 * d2.y - b.y0 * d2.x;
    const double determinant = d1.x * d2.y - d1.y * d2.x;
    if (std::isnan(determinant))
        return {(a.x0 + a.x1 + b.x0 + b.x1) * 0.25, (a.y0 + a.y1 + b.y0 + b.y1) * 0.25};
    return {-(d2.x * c1 - d1.x * c2) / determinant, -(d2.y * c1 - d1.y * c2) / determinant};
}

// The line at right angles to `line` through `point`, reaching `d` to either side. A line of no length
// divides by zero.
inline LxLineD perpendicular(const LxLineD &line, const LxPointD &point, double d) {
    const double dx = line.x1 - line.x0;
    const double n = -(line.y1 - line.y0);
    const double k = d / std::sqrt(dx * dx + n * n);
    return {point.x + n * k, point.y + dx * k, point.x - n * k, point.y - dx * k};
}

} // namespace lx
