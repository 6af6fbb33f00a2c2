/* Transforms of the plane: 3 by 3 matrices of doubles, row by row.
 *
 * A point goes to x' = x*m0 + y*m1 + m2, y' = x*m3 + y*m4 + m5; the last row is carried along and never used
 * on points. */
#ifndef OXLUME_LXMATRIX_H
#define OXLUME_LXMATRIX_H

#include <oxlume/LxBase.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>

LX_BEGIN_DECLS

/* A transform. */
typedef struct LxMatrix {
    double m0, m1, m2; /* the row that gives x' */
    double m3, m4, m5; /* the row that gives y' */
    double m6, m7, m8; /* carried along */
} LxMatrix;

/* The platform's affine transform of single precision. CGAffineTransform is an alias of it, except in
 * Objective-C, whose headers take that name, and where OXLUME_NO_CGAFFINETRANSFORM is defined. */
typedef struct LxCGAffineTransform {
    float a, b, c, d; /* x' = a*x + c*y + tx, y' = b*x + d*y + ty */
    float tx, ty;     /* the translation */
} LxCGAffineTransform;

LX_API extern const LxMatrix LxMatrix_0; /* the identity, not the zero matrix */

/* LxMatrix() answers the identity. */
LX_API LxMatrix LxMatrix_Make(void) LX_EXPORTED_AS("LxMatrix");
#define LxMatrix() LxMatrix_Make()

LX_API void LxMatrix_SetIdentity(LxMatrix *matrix); /* Stores the identity. */

/* Stores nine elements in row order. Answers `matrix`. */
LX_API LxMatrix *LxMatrix_Set(LxMatrix *matrix, double m0, double m1, double m2, double m3, double m4,
                              double m5, double m6, double m7, double m8);

/* a = a + b, a = a - b, element by element. Answer `a`. */
LX_API LxMatrix *LxMatrix_AddMatrix(LxMatrix *a, const LxMatrix *b);
LX_API LxMatrix *LxMatrix_SubMatrix(LxMatrix *a, const LxMatrix *b);

/* a = a times b, rows of `a` against columns of `b`; they may be the same matrix. Answers `a`. */
LX_API LxMatrix *LxMatrix_MulMat(LxMatrix *a, const LxMatrix *b);

/* Multiplies all nine elements. Answers `matrix`. */
LX_API LxMatrix *LxMatrix_MulScalar(LxMatrix *matrix, double s);

/* 1 if all nine elements compare equal, exactly; an element that is not a number never does. */
LX_API int32_t LxMatrix_isEqual(const LxMatrix *a, const LxMatrix *b);

/* The transformed point; the integer form truncates each coordinate + 0.5 toward zero. */
LX_API LxPointD LxMatrix_MulPointD(const LxMatrix *matrix, const LxPointD *point);
LX_API LxPointL LxMatrix_MulPointL(const LxMatrix *matrix, const LxPointL *point);

/* The two corners transformed as points: no sorting, no bounding box of a turned rectangle. */
LX_API LxRectD LxMatrix_MulRectD(const LxMatrix *matrix, const LxRectD *rect);
LX_API LxRectL LxMatrix_MulRectL(const LxMatrix *matrix, const LxRectL *rect);

/* Transform a point in place. */
LX_API void LxMatrix_MulCoordD(const LxMatrix *matrix, double *x, double *y);
LX_API void LxMatrix_MulCoordL(const LxMatrix *matrix, int32_t *x, int32_t *y);

/* Scales the linear part by column, as if the scale came first, and the translation as if it came last: m0,
 * m2, m3 by sx, m1, m4, m5 by sy. */
LX_API void LxMatrix_Scale(LxMatrix *matrix, double sx, double sy);

/* Stores a rotation by `angle` radians around (cx, cy). */
LX_API void LxMatrix_SetRotate(LxMatrix *matrix, double cx, double cy, double angle);

/* Multiplies from the left by a rotation of `angle` radians around the origin. */
LX_API void LxMatrix_Rotate(LxMatrix *matrix, double angle);

LX_API void LxMatrix_Translate(LxMatrix *matrix, double dx, double dy); /* m2 += dx, m5 += dy. */

/* The six elements of the affine part, narrowed to single precision. */
LX_API LxCGAffineTransform LxMatrix_ToCGAffineTransform(LxMatrix matrix);

/* The matrix of a platform transform; its last row is 0, 0, 1. */
LX_API LxMatrix LxMatrix_WithCGAffineTransform(LxCGAffineTransform transform);

/* Stores the inverse in `out`, which may be `matrix` itself. A singular matrix gives infinite and
 * not-a-number elements. */
LX_API void LxMatrix_GetInverse(LxMatrix *out, const LxMatrix *matrix);

LX_END_DECLS

#if !defined(OXLUME_NO_CGAFFINETRANSFORM) && !defined(__OBJC__)
typedef LxCGAffineTransform CGAffineTransform; /* By the platform's name. */
#endif

#endif
