// Curves cut into straight segments, and the pen that draws them: the default behaviour of every walk.
//
// The functions work on a pen, which keeps the state of the walk (PenState) and says what becomes of the
// parts: pen.subpathBegins(point), pen.segment(from, to), pen.subpathEnds(). The iterator of clients is a pen
// that calls the clients' callbacks; the pens of flattening, outlining and counting are inlined.
#pragma once

#include <algorithm>
#include <cmath>

#include <oxlume/LxPoint.h>

#include "foundation/Numeric.h"

namespace lx {

// A flag of a pen: no subpath is open, the next move starts one.
inline constexpr uint32_t noSubpath = 1;

struct PenState {
    uint32_t flags = noSubpath;
    int32_t segments = 0;
    LxPointD start = {};   // of the current subpath
    LxPointD current = {}; // where the pen stands
};

// Steps of a quadratic curve.
inline constexpr int32_t quadraticSteps = 32;
inline constexpr double quadraticStep = 1.0 / quadraticSteps;

// No curve is cut into more steps than this, so that absurd coordinates cannot hang a program.
inline constexpr int32_t maxCubicSteps = 1 << 20;

// A cubic curve by its powers, for one coordinate.
struct CubicCoefficients {
    double a, b, c, d;

    CubicCoefficients(double p0, double p1, double p2, double p3) {
        c = 3 * (p1 - p0);
        b = 3 * (p2 - p1) - c;
        a = p3 - p0 - b - c;
        d = p0;
    }

    double at(double t) const { return ((a * t + b) * t + c) * t + d; }
    double extent() const { return std::max(std::abs(3 * a + b), std::abs(b)); }
};

// The number of steps for a cubic curve: the square root of its second differences. 0 for a short or even
// curve; one step where the root is beyond the integers or not a number.
inline int32_t cubicSteps(const CubicCoefficients &x, const CubicCoefficients &y) {
    const int32_t n = roundToInt32(std::sqrt(std::max(x.extent(), y.extent())));
    return n < 0 ? 1 : std::min(n, maxCubicSteps);
}

template <class Pen>
void drawMove(Pen &pen, const LxPointD &point) {
    if ((pen.flags & noSubpath) != 0) {
        pen.flags &= ~noSubpath;
        pen.start = point;
    } else {
        // On purpose: `start` stays, so that a close in this subpath returns to the earlier one's start.
        pen.subpathEnds();
    }
    pen.current = point;
    pen.subpathBegins(point);
}

template <class Pen>
void drawLine(Pen &pen, const LxPointD &point) {
    pen.segment(pen.current, point);
    pen.segments = wrappingAdd(pen.segments, 1);
    pen.current = point;
}

// Forward differences, without a test of flatness: however short the curve, it gives all its steps.
template <class Pen>
void drawQuadratic(Pen &pen, const LxPointD &control, const LxPointD &end, int32_t steps, double step,
                   double stepSquared) {
    const LxPointD from = pen.current;
    const LxPointD dd = {(from.x - 2 * control.x + end.x) * stepSquared,
                         (from.y - 2 * control.y + end.y) * stepSquared};
    LxPointD d = {(control.x - from.x) * (2 * step) + dd.x, (control.y - from.y) * (2 * step) + dd.y};
    LxPointD p = from;
    for (int32_t i = 1; i < steps; ++i) {
        p = {p.x + d.x, p.y + d.y};
        d = {d.x + 2 * dd.x, d.y + 2 * dd.y};
        drawLine(pen, p);
    }
    drawLine(pen, end);
}

template <class Pen>
void drawCubic(Pen &pen, const LxPointD &control1, const LxPointD &control2, const LxPointD &end) {
    const CubicCoefficients x(pen.current.x, control1.x, control2.x, end.x);
    const CubicCoefficients y(pen.current.y, control1.y, control2.y, end.y);
    const int32_t n = cubicSteps(x, y);
    if (n == 0) {
        // On purpose: the pen stays where it is after so short a curve.
        pen.segment(pen.current, end);
        pen.segments = wrappingAdd(pen.segments, 1);
        return;
    }
    const double dt = 1.0 / n;
    double t = 0;
    for (int32_t k = 1; k < n; ++k) {
        t += dt; // accumulated, not k * dt
        const LxPointD p = {x.at(t), y.at(t)};
        pen.segment(pen.current, p);
        pen.current = p;
    }
    pen.segment(pen.current, end);
    pen.segments = wrappingAdd(pen.segments, n);
    pen.current = end;
}

// Draws the way back to the start unless the pen is there.
template <class Pen>
void drawWayBack(Pen &pen) {
    if (pen.start.x != pen.current.x || pen.start.y != pen.current.y) {
        pen.segment(pen.current, pen.start);
        pen.segments = wrappingAdd(pen.segments, 1);
    }
}

template <class Pen>
void drawClose(Pen &pen) {
    drawWayBack(pen);
    pen.flags |= noSubpath;
    pen.current = pen.start;
    pen.subpathEnds();
}

} // namespace lx
