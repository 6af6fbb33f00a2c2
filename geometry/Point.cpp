// Points and plane vectors.

#include "geometry/Point.h"

using namespace lx;

const LxPointL LxPointL_0 = {0, 0};
const LxPointD LxPointD_0 = {0, 0};

LxPointL LxPointL_Make(int32_t x, int32_t y) {
    return {x, y};
}

LxPointD LxPointD_Make(double x, double y) {
    return {x, y};
}

LxPointL LxPointD_ToL(LxPointD point) {
    return truncated(point);
}

LxPointD LxPointL_ToD(LxPointL point) {
    return widened(point);
}

LxPointD LxPointD_Lerp(double t, LxPointD a, LxPointD b) {
    return lerp(t, a, b);
}

double V2Dot(const LxPointD *a, const LxPointD *b) {
    return dot(*a, *b);
}

double V2DistanceBetween2Points(const LxPointD *a, const LxPointD *b) {
    return length(difference(*a, *b));
}

double V2Length(const LxPointD *v) {
    return length(*v);
}

double V2SquaredLength(const LxPointD *v) {
    return squaredLength(*v);
}

void V2Negate(LxPointD *v) {
    *v = {-v->x, -v->y};
}

LxPointD *V2Normalize(LxPointD *v) {
    if (const double l = length(*v); l != 0.0)
        *v = {v->x / l, v->y / l};
    return v;
}

LxPointD *V2Scale(LxPointD *v, double newLength) {
    if (const double l = length(*v); l != 0.0)
        *v = scaled(*v, newLength / l);
    return v;
}

void V2Add(const LxPointD *a, const LxPointD *b, LxPointD *out) {
    *out = sum(*a, *b);
}

LxPointD V2AddII(LxPointD a, LxPointD b) {
    return sum(a, b);
}

LxPointD V2Sub(LxPointD a, LxPointD b) {
    return difference(a, b);
}

LxPointD V2ScaleII(LxPointD v, double s) {
    return scaled(v, s);
}
