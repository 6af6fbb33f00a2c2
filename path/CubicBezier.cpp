// Measuring and hitting cubic curves, by the segments into which flattening would cut them.

#include <oxlume/LxCubicBezier.h>
#include <oxlume/LxLine.h>

#include "geometry/Point.h"
#include "path/Flatten.h"

namespace lx {
namespace {

struct Cubic {
    LxPointD p0, p1, p2, p3;
};

// Calls visit(t, from, to) for each segment, t being the parameter of its end, until the answer is false. A
// curve of no steps has no segments.
template <class Visit>
void walkSegments(const Cubic &curve, Visit visit) {
    const CubicCoefficients x(curve.p0.x, curve.p1.x, curve.p2.x, curve.p3.x);
    const CubicCoefficients y(curve.p0.y, curve.p1.y, curve.p2.y, curve.p3.y);
    const int32_t n = cubicSteps(x, y);
    if (n == 0)
        return;
    const double dt = 1.0 / n;
    double t = 0;
    LxPointD previous = curve.p0;
    for (int32_t k = 1; k < n; ++k) {
        t += dt; // accumulated, not k * dt
        const LxPointD p = {x.at(t), y.at(t)};
        if (!visit(t, previous, p))
            return;
        previous = p;
    }
    visit(1.0, previous, curve.p3);
}

bool hit(const Cubic &curve, const LxRectD &square, double *t) {
    bool found = false;
    walkSegments(curve, [&](double end, LxPointD from, LxPointD to) {
        found = LxClipLineD(&square, &from.x, &from.y, &to.x, &to.y) != 0;
        if (found && t != nullptr)
            *t = end;
        return !found;
    });
    return found;
}

double curveLength(const Cubic &curve) {
    double total = 0;
    walkSegments(curve, [&](double, const LxPointD &from, const LxPointD &to) {
        total += length(difference(from, to));
        return true;
    });
    return total;
}

} // namespace
} // namespace lx

using namespace lx;

int32_t LxCubicBezier_HitTest(LxPointD p0, LxPointD p1, LxPointD p2, LxPointD p3, double x, double y,
                              double radius, double *t) {
    return hit({p0, p1, p2, p3}, LxRectD(x - radius, y - radius, x + radius, y + radius), t);
}

double LxCubicBezier_Length(LxPointD p0, LxPointD p1, LxPointD p2, LxPointD p3) {
    return curveLength({p0, p1, p2, p3});
}
