/* Rectangles with integer (L) and double (D) coordinates, stored as two corners.
 *
 * A rectangle is empty when x0 >= x1 or y0 >= y1, so one with swapped corners is empty to the test, though
 * most operations sort it first: they put the smaller of x0, x1 in x0 and the smaller of y0, y1 in y0. In
 * pixel terms x1 and y1 are exclusive. "The empty rectangle" is a fixed value with its corners turned inside
 * out. */
#ifndef OXLUME_LXRECT_H
#define OXLUME_LXRECT_H

#include <oxlume/LxBase.h>

LX_BEGIN_DECLS

/* A rectangle of whole numbers. */
typedef struct LxRectL {
    int32_t x0, y0; /* the first corner: left and top once sorted */
    int32_t x1, y1; /* the second corner: right and bottom once sorted */
} LxRectL;

/* A rectangle. */
typedef struct LxRectD {
    double x0, y0; /* the first corner: left and top once sorted */
    double x1, y1; /* the second corner: right and bottom once sorted */
} LxRectD;

/* The platform's rectangle of single precision, by origin and size. CGRect is an alias of it, except in
 * Objective-C, whose headers take that name, and where OXLUME_NO_CGRECT is defined. */
typedef struct LxCGRect {
    float x, y;          /* the origin */
    float width, height; /* the size */
} LxCGRect;

LX_API extern const LxRectL LxRectL_0; /* all zero */
LX_API extern const LxRectD LxRectD_0; /* all zero */

/* LxRectL(x0, y0, x1, y1) and LxRectD(x0, y0, x1, y1) build a rectangle; they sort. */
LX_API LxRectL LxRectL_Make(int32_t x0, int32_t y0, int32_t x1, int32_t y1) LX_EXPORTED_AS("LxRectL");
LX_API LxRectD LxRectD_Make(double x0, double y0, double x1, double y1) LX_EXPORTED_AS("LxRectD");
#define LxRectL(x0, y0, x1, y1) LxRectL_Make(x0, y0, x1, y1)
#define LxRectD(x0, y0, x1, y1) LxRectD_Make(x0, y0, x1, y1)

/* Widens; sorts. */
LX_API LxRectD LxRectD_fromL(LxRectL rect);

/* The integer rectangle that covers `rect`: sorts, then takes the floor of the first corner and the ceiling
 * of the second. Each value is truncated to 64 bits, of which the low 32 are kept. */
LX_API LxRectL LxRectL_fromD(LxRectD rect);

/* The rectangle of a platform rectangle. Corners are added in single precision, then widened; sorts. */
LX_API LxRectD LxRectD_fromCGRect(LxCGRect rect);

/* The same corners, the floor of the first and the ceiling of the second, then sorted. One beyond 32 bits, or
 * not a number, gives INT32_MIN. */
LX_API LxRectL LxRectL_fromCGRect(LxCGRect rect);

/* Sort, then answer the first corner and the differences, narrowed to single precision. */
LX_API LxCGRect LxRectL_asCGRect(LxRectL rect);
LX_API LxCGRect LxRectD_asCGRect(LxRectD rect);

/* Store the empty rectangle. */
LX_API void LxRectL_setEmpty(LxRectL *rect);
LX_API void LxRectD_setEmpty(LxRectD *rect);

/* 1 if x0 >= x1 or y0 >= y1, or if `rect` is null. */
LX_API int32_t LxRectL_isEmpty(const LxRectL *rect);
LX_API int32_t LxRectD_isEmpty(const LxRectD *rect);

/* 1 if the insides overlap; rectangles that only touch do not. Do not sort. */
LX_API int32_t LxRectL_isIntersecting(LxRectL a, LxRectL b);
LX_API int32_t LxRectD_isIntersecting(LxRectD a, LxRectD b);

/* Width and height: the absolute difference of the two coordinates; of one beyond 32 bits the low 32 are
 * kept. */
LX_API int32_t LxRectL_w(const LxRectL *rect);
LX_API double LxRectD_w(const LxRectD *rect);
LX_API int32_t LxRectL_h(const LxRectL *rect);
LX_API double LxRectD_h(const LxRectD *rect);

/* 1 if the point lies inside or on any of the four sides. The integer form does not sort, the other does. */
LX_API int32_t LxRectL_contains(LxRectL rect, int32_t x, int32_t y);
LX_API int32_t LxRectD_contains(LxRectD rect, double x, double y);

/* Sorts in place, then takes the floor of the first corner and the ceiling of the second. */
LX_API void LxRectD_Integral(LxRectD *rect);

/* Sort in place, then add dx to both x and dy to both y; integers wrap. Two names for one operation. */
LX_API void LxRectL_offset(LxRectL *rect, int32_t dx, int32_t dy);
LX_API void LxRectL_moveBy(LxRectL *rect, int32_t dx, int32_t dy);
LX_API void LxRectD_offset(LxRectD *rect, double dx, double dy);
LX_API void LxRectD_moveBy(LxRectD *rect, double dx, double dy);

/* Sort in place and move, by the way from the corner stored first to (x, y): with swapped corners it is that
 * corner which arrives there. */
LX_API void LxRectL_moveTo(LxRectL *rect, int32_t x, int32_t y);
LX_API void LxRectD_moveTo(LxRectD *rect, double x, double y);

/* The common part. Sort both; disjoint rectangles give one with crossed corners, which the empty test
 * reports. A rectangle of no width or height, or the empty rectangle, counts as absent: the answer is then
 * the other one, and the empty rectangle when both are. */
LX_API LxRectL LxRectL_intersect(LxRectL a, LxRectL b);
LX_API LxRectD LxRectD_intersect(LxRectD a, LxRectD b);

/* The smallest rectangle around both. Sort both; absent rectangles as above. */
LX_API LxRectL LxRectL_union(LxRectL a, LxRectL b);
LX_API LxRectD LxRectD_union(LxRectD a, LxRectD b);

/* Cohen-Sutherland clipping of a line against all four sides, inclusive. Answer 1 when the line's first end
 * is inside at the end, else 0; an empty rectangle, or an end that is infinite or not a number, gives 0 at
 * once and the line untouched. After 16 rounds, which only an end thrown about a corner by rounding needs,
 * clipping stops. The forms on doubles write the coordinates back in both cases, so a rejected line may come
 * back partly clipped; those on integers write only when they answer 1, truncating each coordinate + 0.5
 * toward zero. LxRectL_... sorts its rectangle, LxRectD_... does not. */
LX_API int32_t LxRectL_clipLineL(LxRectL rect, int32_t *x0, int32_t *y0, int32_t *x1, int32_t *y1);
LX_API int32_t LxRectL_clipLineD(LxRectL rect, double *x0, double *y0, double *x1, double *y1);
LX_API int32_t LxRectD_clipLineL(LxRectD rect, int32_t *x0, int32_t *y0, int32_t *x1, int32_t *y1);
LX_API int32_t LxRectD_clipLineD(LxRectD rect, double *x0, double *y0, double *x1, double *y1);

LX_END_DECLS

#if !defined(OXLUME_NO_CGRECT) && !defined(__OBJC__)
typedef LxCGRect CGRect; /* By the platform's name. */
#endif

#endif
