// Clipping of lines to rectangles: one loop behind all forms.

#include "geometry/Clip.h"

#include <cmath>

#include "foundation/Numeric.h"
#include "geometry/Rect.h"

using namespace lx;

namespace {

// The sides beyond which a point lies; top is the smaller y.
enum Outcode : unsigned { left = 1, right = 2, top = 4, bottom = 8 };

unsigned outcode(const LxRectD &sides, double x, double y) {
    return (x < sides.x0 ? left : 0u) | (x > sides.x1 ? right : 0u) | (y < sides.y0 ? top : 0u) |
           (y > sides.y1 ? bottom : 0u);
}

double yAt(const LxLineD &line, double x) {
    return (line.y1 - line.y0) * (x - line.x0) / (line.x1 - line.x0) + line.y0;
}

double xAt(const LxLineD &line, double y) {
    return (line.x1 - line.x0) * (y - line.y0) / (line.y1 - line.y0) + line.x0;
}

// The point of the line on the side that `code` names. At a corner the later of these tests wins, so that the
// horizontal sides come first, top over bottom.
LxPointD pointOnSide(const LxRectD &sides, const LxLineD &line, unsigned code) {
    LxPointD point{};
    if ((code & left) != 0)
        point = {sides.x0, yAt(line, sides.x0)};
    if ((code & right) != 0)
        point = {sides.x1, yAt(line, sides.x1)};
    if ((code & bottom) != 0)
        point = {xAt(line, sides.y1), sides.y1};
    if ((code & top) != 0)
        point = {xAt(line, sides.y0), sides.y0};
    return point;
}

// A line that settles does so within 4 rounds, very rarely 5. Near a corner rounding can throw an end from
// one side to another for ever; the loop then stops here.
constexpr int maxRounds = 16;

// Cohen-Sutherland against four inclusive sides.
bool clip(const LxRectD &sides, LxLineD &line) {
    if (!std::isfinite(line.x0) || !std::isfinite(line.y0) || !std::isfinite(line.x1) ||
        !std::isfinite(line.y1))
        return false;
    unsigned first = outcode(sides, line.x0, line.y0);
    unsigned second = outcode(sides, line.x1, line.y1);
    for (int round = 0; round < maxRounds && (first | second) != 0 && (first & second) == 0; ++round) {
        const LxPointD point = pointOnSide(sides, line, first != 0 ? first : second);
        if (first != 0) {
            line.x0 = point.x;
            line.y0 = point.y;
            first = outcode(sides, point.x, point.y);
        } else {
            line.x1 = point.x;
            line.y1 = point.y;
            second = outcode(sides, point.x, point.y);
        }
    }
    return first == 0;
}

// Clips a line kept in four doubles, which are written back whatever the answer.
template <class Clip>
int32_t clipInPlace(const LxRectD &rect, double *x0, double *y0, double *x1, double *y1, Clip clipTo) {
    LxLineD line{*x0, *y0, *x1, *y1};
    const bool inside = clipTo(rect, line);
    *x0 = line.x0;
    *y0 = line.y0;
    *x1 = line.x1;
    *y1 = line.y1;
    return inside;
}

// Clips a line kept in four integers, which are written only when it is inside.
int32_t clipRounded(const LxRectD &rect, int32_t *x0, int32_t *y0, int32_t *x1, int32_t *y1) {
    LxLineD line{static_cast<double>(*x0), static_cast<double>(*y0), static_cast<double>(*x1),
                 static_cast<double>(*y1)};
    if (!clipLine(rect, line))
        return 0;
    *x0 = roundToInt32(line.x0);
    *y0 = roundToInt32(line.y0);
    *x1 = roundToInt32(line.x1);
    *y1 = roundToInt32(line.y1);
    return 1;
}

} // namespace

bool lx::clipLine(const LxRectD &rect, LxLineD &line) {
    return !isEmpty(rect) && clip(rect, line);
}

bool lx::clipLineToPixels(const LxRectD &rect, LxLineD &line) {
    return !isEmpty(rect) && clip({rect.x0, rect.y0, rect.x1 - 1.0, rect.y1 - 1.0}, line);
}

int32_t LxRectL_clipLineL(LxRectL rect, int32_t *x0, int32_t *y0, int32_t *x1, int32_t *y1) {
    return clipRounded(widened(sorted(rect)), x0, y0, x1, y1);
}

int32_t LxRectL_clipLineD(LxRectL rect, double *x0, double *y0, double *x1, double *y1) {
    return clipInPlace(widened(sorted(rect)), x0, y0, x1, y1, clipLine);
}

int32_t LxRectD_clipLineL(LxRectD rect, int32_t *x0, int32_t *y0, int32_t *x1, int32_t *y1) {
    return clipRounded(rect, x0, y0, x1, y1);
}

int32_t LxRectD_clipLineD(LxRectD rect, double *x0, double *y0, double *x1, double *y1) {
    return clipInPlace(rect, x0, y0, x1, y1, clipLine);
}

int32_t LxClipLineD(const LxRectD *rect, double *x0, double *y0, double *x1, double *y1) {
    return rect == nullptr ? 0 : clipInPlace(*rect, x0, y0, x1, y1, clipLineToPixels);
}
