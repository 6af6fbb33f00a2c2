// Transforms of the plane, for use inside the library.
#pragma once

#include <oxlume/LxMatrix.h>

#include "geometry/Point.h"

namespace lx {

inline constexpr LxMatrix identityMatrix{1, 0, 0, 0, 1, 0, 0, 0, 1};

// The transformed point, its terms added from the left.
constexpr LxPointD transform(const LxMatrix &m, double x, double y) {
    return {x * m.m0 + y * m.m1 + m.m2, x * m.m3 + y * m.m4 + m.m5};
}

constexpr LxPointD transform(const LxMatrix &m, const LxPointD &point) {
    return transform(m, point.x, point.y);
}

// The two corners as points: neither sorted nor the bounding box of a turned rectangle.
constexpr LxRectD transform(const LxMatrix &m, const LxRectD &rect) {
    const LxPointD first = transform(m, rect.x0, rect.y0);
    const LxPointD second = transform(m, rect.x1, rect.y1);
    return {first.x, first.y, second.x, second.y};
}

// Rows of `a` against columns of `b`.
LxMatrix product(const LxMatrix &a, const LxMatrix &b);

// A singular matrix gives infinite and not-a-number elements.
LxMatrix inverse(const LxMatrix &matrix);

} // namespace lx
