/* Points of the plane with integer (L) and double (D) coordinates, and plane vectors (V2). */
#ifndef OXLUME_LXPOINT_H
#define OXLUME_LXPOINT_H

#include <oxlume/LxBase.h>

LX_BEGIN_DECLS

/* A point of whole numbers, or a size. */
typedef struct LxPointL {
    int32_t x, y; /* to the right, and downwards */
} LxPointL;

/* A point, or a vector of the plane. */
typedef struct LxPointD {
    double x, y; /* to the right, and downwards */
} LxPointD;

LX_API extern const LxPointL LxPointL_0; /* (0, 0) */
LX_API extern const LxPointD LxPointD_0; /* (0, 0) */

/* LxPointL(x, y) and LxPointD(x, y) build a point. */
LX_API LxPointL LxPointL_Make(int32_t x, int32_t y) LX_EXPORTED_AS("LxPointL");
LX_API LxPointD LxPointD_Make(double x, double y) LX_EXPORTED_AS("LxPointD");
#define LxPointL(x, y) LxPointL_Make(x, y)
#define LxPointD(x, y) LxPointD_Make(x, y)

/* Both coordinates truncated toward zero; one beyond 32 bits, or not a number, gives INT32_MIN. */
LX_API LxPointL LxPointD_ToL(LxPointD point);

/* Both coordinates widened. */
LX_API LxPointD LxPointL_ToD(LxPointL point);

/* The point at `t` on the way from `a` (0) to `b` (1); `t` may lie beyond. */
LX_API LxPointD LxPointD_Lerp(double t, LxPointD a, LxPointD b);

/* The dot product. */
LX_API double V2Dot(const LxPointD *a, const LxPointD *b);

LX_API double V2DistanceBetween2Points(const LxPointD *a, const LxPointD *b); /* Euclidean. */
LX_API double V2Length(const LxPointD *v);                                    /* Euclidean. */
LX_API double V2SquaredLength(const LxPointD *v);                             /* x*x + y*y. */

/* Negates both coordinates in place. */
LX_API void V2Negate(LxPointD *v);

/* Scale in place to unit length, or to `newLength`. A zero vector stays as it is. Answer `v`. */
LX_API LxPointD *V2Normalize(LxPointD *v);
LX_API LxPointD *V2Scale(LxPointD *v, double newLength);

/* Writes a + b to `out`, which may be one of them. */
LX_API void V2Add(const LxPointD *a, const LxPointD *b, LxPointD *out);

LX_API LxPointD V2AddII(LxPointD a, LxPointD b); /* a + b */
LX_API LxPointD V2Sub(LxPointD a, LxPointD b);   /* a - b */
LX_API LxPointD V2ScaleII(LxPointD v, double s); /* v * s */

LX_END_DECLS

#endif
