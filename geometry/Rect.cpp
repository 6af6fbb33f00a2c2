// Rectangles.

#include "geometry/Rect.h"

using namespace lx;

const LxRectL LxRectL_0 = {0, 0, 0, 0};
const LxRectD LxRectD_0 = {0, 0, 0, 0};

namespace {

int32_t lowWord(double value) {
    return static_cast<int32_t>(static_cast<uint32_t>(truncateToInt64(value)));
}

// The two corners of a platform rectangle. Their additions are of single precision, whatever follows.
LxRectD corners(const LxCGRect &rect) {
    const float x1 = rect.x + rect.width;
    const float y1 = rect.y + rect.height;
    return {rect.x, rect.y, x1, y1};
}

} // namespace

LxRectL lx::covering(const LxRectD &rect) {
    const LxRectD whole = integral(sorted(rect));
    return {lowWord(whole.x0), lowWord(whole.y0), lowWord(whole.x1), lowWord(whole.y1)};
}

LxRectL LxRectL_Make(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    return sorted(LxRectL{x0, y0, x1, y1});
}

LxRectD LxRectD_Make(double x0, double y0, double x1, double y1) {
    return sorted(LxRectD{x0, y0, x1, y1});
}

LxRectD LxRectD_fromL(LxRectL rect) {
    return widened(sorted(rect));
}

LxRectL LxRectL_fromD(LxRectD rect) {
    return covering(rect);
}

LxRectD LxRectD_fromCGRect(LxCGRect rect) {
    return sorted(corners(rect));
}

// On purpose: sorts after rounding, so that a negative size takes the floor of its far corner.
LxRectL LxRectL_fromCGRect(LxCGRect rect) {
    const LxRectD whole = integral(corners(rect));
    return sorted(LxRectL{truncateToInt32(whole.x0), truncateToInt32(whole.y0), truncateToInt32(whole.x1),
                          truncateToInt32(whole.y1)});
}

LxCGRect LxRectL_asCGRect(LxRectL rect) {
    const LxRectL s = sorted(rect);
    return {static_cast<float>(s.x0), static_cast<float>(s.y0), static_cast<float>(int64_t{s.x1} - s.x0),
            static_cast<float>(int64_t{s.y1} - s.y0)};
}

LxCGRect LxRectD_asCGRect(LxRectD rect) {
    const LxRectD s = sorted(rect);
    return {static_cast<float>(s.x0), static_cast<float>(s.y0), static_cast<float>(s.x1 - s.x0),
            static_cast<float>(s.y1 - s.y0)};
}

void LxRectL_setEmpty(LxRectL *rect) {
    *rect = emptyRect<LxRectL>;
}

void LxRectD_setEmpty(LxRectD *rect) {
    *rect = emptyRect<LxRectD>;
}

int32_t LxRectL_isEmpty(const LxRectL *rect) {
    return rect == nullptr || isEmpty(*rect);
}

int32_t LxRectD_isEmpty(const LxRectD *rect) {
    return rect == nullptr || isEmpty(*rect);
}

int32_t LxRectL_isIntersecting(LxRectL a, LxRectL b) {
    return isIntersecting(a, b);
}

int32_t LxRectD_isIntersecting(LxRectD a, LxRectD b) {
    return isIntersecting(a, b);
}

int32_t LxRectL_w(const LxRectL *rect) {
    return width(*rect);
}

double LxRectD_w(const LxRectD *rect) {
    return width(*rect);
}

int32_t LxRectL_h(const LxRectL *rect) {
    return height(*rect);
}

double LxRectD_h(const LxRectD *rect) {
    return height(*rect);
}

int32_t LxRectL_contains(LxRectL rect, int32_t x, int32_t y) {
    return contains(rect, x, y);
}

int32_t LxRectD_contains(LxRectD rect, double x, double y) {
    return contains(sorted(rect), x, y);
}

void LxRectD_Integral(LxRectD *rect) {
    *rect = integral(sorted(*rect));
}

void LxRectL_offset(LxRectL *rect, int32_t dx, int32_t dy) {
    *rect = moved(sorted(*rect), dx, dy);
}

void LxRectL_moveBy(LxRectL *rect, int32_t dx, int32_t dy) {
    *rect = moved(sorted(*rect), dx, dy);
}

void LxRectD_offset(LxRectD *rect, double dx, double dy) {
    *rect = moved(sorted(*rect), dx, dy);
}

void LxRectD_moveBy(LxRectD *rect, double dx, double dy) {
    *rect = moved(sorted(*rect), dx, dy);
}

// On purpose: the way is taken before sorting, from the corner that is stored first.
void LxRectL_moveTo(LxRectL *rect, int32_t x, int32_t y) {
    const int32_t dx = wrappingSubtract(x, rect->x0);
    const int32_t dy = wrappingSubtract(y, rect->y0);
    *rect = moved(sorted(*rect), dx, dy);
}

void LxRectD_moveTo(LxRectD *rect, double x, double y) {
    const double dx = x - rect->x0;
    const double dy = y - rect->y0;
    *rect = moved(sorted(*rect), dx, dy);
}

LxRectL LxRectL_intersect(LxRectL a, LxRectL b) {
    return intersect(a, b);
}

LxRectD LxRectD_intersect(LxRectD a, LxRectD b) {
    return intersect(a, b);
}

LxRectL LxRectL_union(LxRectL a, LxRectL b) {
    return unite(a, b);
}

LxRectD LxRectD_union(LxRectD a, LxRectD b) {
    return unite(a, b);
}
