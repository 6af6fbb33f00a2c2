// Figures built of path items. The items and their order are fixed: everything that reads a path sees them.

#include <cmath>

#include <oxlume/LxScalar.h>

#include "path/Path.h"

namespace lx {
namespace {

// How far the control points of a quarter circle lie along their tangents, in radii.
constexpr double circleFactor = 0x1.1ac512p-1;
static_assert(circleFactor == 0.5522847771644592);

constexpr double radiansPerDegree = 0.017453292519943295;

// Appends items to a path until memory runs out.
class Pencil {
public:
    explicit Pencil(LxPath &path) : path_(path) {}

    void move(double x, double y) { add(moveItem(x, y)); }
    void line(double x, double y) { add(lineItem(x, y)); }
    void curve(double c1x, double c1y, double c2x, double c2y, double x, double y) {
        add(curveItem(c1x, c1y, c2x, c2y, x, y));
    }
    void close() { add(closeItem()); }

    bool hasRoom() const { return hasRoom_; }

private:
    template <size_t Size>
    void add(const Item<Size> &item) {
        hasRoom_ = hasRoom_ && append(path_, item);
    }

    LxPath &path_;
    bool hasRoom_ = true;
};

void addLine(LxPath &path, double x1, double y1, double x2, double y2) {
    Pencil pencil(path);
    pencil.move(x1, y1);
    pencil.line(x2, y2);
}

void addPoly(LxPath &path, const LxPointD *points, int32_t n) {
    if (n == 0 || points == nullptr)
        return;
    Pencil pencil(path);
    pencil.move(points[0].x, points[0].y);
    for (int32_t i = 1; i < n; ++i)
        pencil.line(points[i].x, points[i].y);
    pencil.close();
}

void addRect(LxPath &path, const LxRectD &rect, double rx, double ry) {
    const auto [x1, y1, x2, y2] = rect;
    Pencil pencil(path);
    if (rx == 0 && ry == 0) {
        pencil.move(x1, y1);
        pencil.line(x2, y1);
        pencil.line(x2, y2);
        pencil.line(x1, y2);
        pencil.close();
        return;
    }
    // On purpose: the control points lie circleFactor of the radius from the corner, not from the curve's
    // ends, which makes the corners a little flatter than quarter ellipses.
    const double kx = circleFactor * rx;
    const double ky = circleFactor * ry;
    pencil.move(x1, y1 + ry);
    pencil.curve(x1, y1 + ky, x1 + kx, y1, x1 + rx, y1);
    pencil.line(x2 - rx, y1);
    pencil.curve(x2 - kx, y1, x2, y1 + ky, x2, y1 + ry);
    pencil.line(x2, y2 - ry);
    pencil.curve(x2, y2 - ky, x2 - kx, y2, x2 - rx, y2);
    pencil.line(x1 + rx, y2);
    pencil.curve(x1 + kx, y2, x1, y2 - ky, x1, y2 - ry);
    pencil.close();
}

void addEllipse(LxPath &path, double cx, double cy, double rx, double ry) {
    const double kx = rx * circleFactor;
    const double ky = ry * circleFactor;
    Pencil pencil(path);
    pencil.move(cx - rx, cy);
    pencil.curve(cx - rx, cy - ky, cx - kx, cy - ry, cx, cy - ry);
    pencil.curve(cx + kx, cy - ry, cx + rx, cy - ky, cx + rx, cy);
    pencil.curve(cx + rx, cy + ky, cx + kx, cy + ry, cx, cy + ry);
    pencil.curve(cx - kx, cy + ry, cx - rx, cy + ky, cx - rx, cy);
    pencil.close();
}

// Where an arc of straight lines stands, and how it goes on. The angle is accumulated, not multiplied.
struct ArcWalk {
    double cx, cy, radius;
    double angle;
    double step;

    LxPointD point() const { return {cx + radius * std::cos(angle), cy - radius * std::sin(angle)}; }

    void lines(Pencil &pencil, int64_t count) {
        for (; count > 0 && pencil.hasRoom(); --count) {
            const LxPointD p = point();
            pencil.line(p.x, p.y);
            angle += step;
        }
    }
};

// The angle between two neighbouring points of an arc, in radians, counted counterclockwise.
double arcStep(double startAngle, double endAngle, int32_t steps, bool clockwise, bool fullWhenEqual) {
    const double step =
        radiansPerDegree * LxArcLength(startAngle, endAngle, clockwise, fullWhenEqual) / steps;
    return clockwise ? -step : step;
}

void addPolyPie(LxPath &path, double cx, double cy, double radius, double startAngle, double endAngle,
                int32_t steps, bool clockwise) {
    const double step = arcStep(startAngle, endAngle, steps, clockwise, true);
    Pencil pencil(path);
    pencil.move(cx, cy);
    ArcWalk{cx, cy, radius, radiansPerDegree * startAngle, step}.lines(pencil, int64_t{steps} + 1);
    pencil.line(cx, cy);
    pencil.close();
}

void addPolyRing(LxPath &path, double cx, double cy, double radius1, double radius2, double startAngle,
                 double endAngle, int32_t steps, bool clockwise) {
    const double step = arcStep(startAngle, endAngle, steps, clockwise, false);
    const double a = radiansPerDegree * startAngle;
    const double b = radiansPerDegree * endAngle;
    const LxPointD first = ArcWalk{cx, cy, radius2, a, 0}.point();
    Pencil pencil(path);
    pencil.move(first.x, first.y);
    // On purpose: the first offset goes against the direction of travel, so that the second point lies a step
    // behind the start and the arc ends two steps short.
    ArcWalk{cx, cy, radius2, a - step, step}.lines(pencil, steps);
    ArcWalk{cx, cy, radius1, b, -step}.lines(pencil, int64_t{steps} + 1);
    pencil.line(first.x, first.y);
    pencil.close();
}

} // namespace
} // namespace lx

using namespace lx;

void LxPath_AddLine(LxPath *path, double x1, double y1, double x2, double y2) {
    if (path != nullptr)
        addLine(*path, x1, y1, x2, y2);
}

void LxPath_SetLine(LxPath *path, double x1, double y1, double x2, double y2) {
    LxPath_MakeEmpty(path);
    LxPath_AddLine(path, x1, y1, x2, y2);
}

void LxPath_AddPoly(LxPath *path, const LxPointD *points, int32_t n) {
    if (path != nullptr)
        addPoly(*path, points, n);
}

void LxPath_SetPoly(LxPath *path, const LxPointD *points, int32_t n) {
    LxPath_MakeEmpty(path);
    LxPath_AddPoly(path, points, n);
}

void LxPath_AddRect(LxPath *path, const LxRectD *rect, double radiusX, double radiusY) {
    if (path != nullptr && rect != nullptr)
        addRect(*path, *rect, radiusX, radiusY);
}

void LxPath_SetRect(LxPath *path, const LxRectD *rect, double radiusX, double radiusY) {
    LxPath_MakeEmpty(path);
    LxPath_AddRect(path, rect, radiusX, radiusY);
}

void LxPath_AddCircle(LxPath *path, double cx, double cy, double radius) {
    LxPath_AddEllipse(path, cx, cy, radius, radius);
}

void LxPath_SetCircle(LxPath *path, double cx, double cy, double radius) {
    LxPath_SetEllipse(path, cx, cy, radius, radius);
}

void LxPath_AddEllipse(LxPath *path, double cx, double cy, double radiusX, double radiusY) {
    if (path != nullptr)
        addEllipse(*path, cx, cy, radiusX, radiusY);
}

void LxPath_SetEllipse(LxPath *path, double cx, double cy, double radiusX, double radiusY) {
    LxPath_MakeEmpty(path);
    LxPath_AddEllipse(path, cx, cy, radiusX, radiusY);
}

void LxPath_AddPolyPie(LxPath *path, double cx, double cy, double radius, double startAngle, double endAngle,
                       int32_t steps, int32_t clockwise) {
    if (path != nullptr)
        addPolyPie(*path, cx, cy, radius, startAngle, endAngle, steps, clockwise != 0);
}

void LxPath_SetPolyPie(LxPath *path, double cx, double cy, double radius, double startAngle, double endAngle,
                       int32_t steps, int32_t clockwise) {
    LxPath_MakeEmpty(path);
    LxPath_AddPolyPie(path, cx, cy, radius, startAngle, endAngle, steps, clockwise);
}

void LxPath_AddPolyRing(LxPath *path, double cx, double cy, double radius1, double radius2, double startAngle,
                        double endAngle, int32_t steps, int32_t clockwise) {
    if (path != nullptr)
        addPolyRing(*path, cx, cy, radius1, radius2, startAngle, endAngle, steps, clockwise != 0);
}

void LxPath_SetPolyRing(LxPath *path, double cx, double cy, double radius1, double radius2, double startAngle,
                        double endAngle, int32_t steps, int32_t clockwise) {
    LxPath_MakeEmpty(path);
    LxPath_AddPolyRing(path, cx, cy, radius1, radius2, startAngle, endAngle, steps, clockwise);
}
