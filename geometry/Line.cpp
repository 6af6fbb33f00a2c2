// Line segments. Their clipping is in Clip.cpp.

#include "geometry/Line.h"

using namespace lx;

const LxLineD LxLineD_0 = {0, 0, 0, 0};

LxLineD LxLineD_Make(double x0, double y0, double x1, double y1) {
    return {x0, y0, x1, y1};
}

void LxLineD_Set(LxLineD *line, double x0, double y0, double x1, double y1) {
    *line = {x0, y0, x1, y1};
}

double LxLineD_Orientation(const LxLineD *line, double x, double y) {
    return orientation(*line, x, y);
}

LxPointD LxLineD_Intersection(const LxLineD *a, const LxLineD *b) {
    return intersection(*a, *b);
}

// On purpose: a reserved entry point, 0 also for lines that cross.
int32_t LxLineD_Intersects(LxLineD, LxLineD) {
    return 0;
}

LxPointD LxLineD_Center(const LxLineD *line) {
    return center(*line);
}

double LxLineD_Length(const LxLineD *line) {
    return length(*line);
}

LxPointD LxLineD_Split(const LxLineD *line, double t) {
    return split(*line, t);
}

LxLineD LxLineD_Head(const LxLineD *line, double d) {
    return perpendicular(*line, head(*line), d);
}

LxLineD LxLineD_Tail(const LxLineD *line, double d) {
    return perpendicular(*line, tail(*line), d);
}
