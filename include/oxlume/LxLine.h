/* Line segments with double coordinates, from the first point (head) to the second (tail). */
#ifndef OXLUME_LXLINE_H
#define OXLUME_LXLINE_H

#include <oxlume/LxBase.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>

LX_BEGIN_DECLS

/* A line segment. */
typedef struct LxLineD {
    double x0, y0; /* the first point */
    double x1, y1; /* the second point */
} LxLineD;

LX_API extern const LxLineD LxLineD_0; /* all zero */

/* LxLineD(x0, y0, x1, y1) builds a line. */
LX_API LxLineD LxLineD_Make(double x0, double y0, double x1, double y1) LX_EXPORTED_AS("LxLineD");
#define LxLineD(x0, y0, x1, y1) LxLineD_Make(x0, y0, x1, y1)

/* Sets a line in place. */
LX_API void LxLineD_Set(LxLineD *line, double x0, double y0, double x1, double y1);

/* The cross product of the line's direction and the vector from its first point to (x, y): its sign tells the
 * side on which the point lies, 0 that it lies on the line. */
LX_API double LxLineD_Orientation(const LxLineD *line, double x, double y);

/* The crossing point of the two infinite lines. Parallel lines give infinite or not-a-number coordinates.
 * Where the determinant itself is not a number, the mean of the four ends. */
LX_API LxPointD LxLineD_Intersection(const LxLineD *a, const LxLineD *b);

/* Reserved: answers 0 for any two lines. */
LX_API int32_t LxLineD_Intersects(LxLineD a, LxLineD b);

LX_API LxPointD LxLineD_Center(const LxLineD *line);          /* The middle. */
LX_API double LxLineD_Length(const LxLineD *line);            /* Euclidean. */
LX_API LxPointD LxLineD_Split(const LxLineD *line, double t); /* The point at t: head 0, tail 1. */

/* The line at right angles through the first point, or through the second, reaching `d` to either side. A
 * line of no length divides by zero. */
LX_API LxLineD LxLineD_Head(const LxLineD *line, double d);
LX_API LxLineD LxLineD_Tail(const LxLineD *line, double d);

/* Clips a line to a rectangle of pixels: as LxRectD_clipLineD, with x1 - 1 and y1 - 1 as the far sides. A
 * null or empty rectangle answers 0 at once. */
LX_API int32_t LxClipLineD(const LxRectD *rect, double *x0, double *y0, double *x1, double *y1);

LX_END_DECLS

#endif
