// Transforms of the plane.

#include "geometry/Matrix.h"

#include <cmath>

#include "foundation/Numeric.h"

using namespace lx;

const LxMatrix LxMatrix_0 = identityMatrix;

namespace {

using Element = double LxMatrix::*;

// The elements in row order, for what is done to each alike.
constexpr Element elements[9] = {&LxMatrix::m0, &LxMatrix::m1, &LxMatrix::m2, &LxMatrix::m3, &LxMatrix::m4,
                                 &LxMatrix::m5, &LxMatrix::m6, &LxMatrix::m7, &LxMatrix::m8};

} // namespace

LxMatrix lx::product(const LxMatrix &a, const LxMatrix &b) {
    return {a.m0 * b.m0 + a.m1 * b.m3 + a.m2 * b.m6, a.m0 * b.m1 + a.m1 * b.m4 + a.m2 * b.m7,
            a.m0 * b.m2 + a.m1 * b.m5 + a.m2 * b.m8, a.m3 * b.m0 + a.m4 * b.m3 + a.m5 * b.m6,
            a.m3 * b.m1 + a.m4 * b.m4 + a.m5 * b.m7, a.m3 * b.m2 + a.m4 * b.m5 + a.m5 * b.m8,
            a.m6 * b.m0 + a.m7 * b.m3 + a.m8 * b.m6, a.m6 * b.m1 + a.m7 * b.m4 + a.m8 * b.m7,
            a.m6 * b.m2 + a.m7 * b.m5 + a.m8 * b.m8};
}

LxMatrix lx::inverse(const LxMatrix &m) {
    const double determinant = m.m0 * (m.m4 * m.m8 - m.m5 * m.m7) - m.m1 * (m.m3 * m.m8 - m.m5 * m.m6) +
                               m.m2 * (m.m3 * m.m7 - m.m4 * m.m6);
    const double reciprocal = 1.0 / determinant;
    return {(m.m4 * m.m8 - m.m5 * m.m7) * reciprocal, (m.m2 * m.m7 - m.m1 * m.m8) * reciprocal,
            (m.m1 * m.m5 - m.m2 * m.m4) * reciprocal, (m.m5 * m.m6 - m.m3 * m.m8) * reciprocal,
            (m.m0 * m.m8 - m.m2 * m.m6) * reciprocal, (m.m2 * m.m3 - m.m0 * m.m5) * reciprocal,
            (m.m3 * m.m7 - m.m4 * m.m6) * reciprocal, (m.m1 * m.m6 - m.m0 * m.m7) * reciprocal,
            (m.m0 * m.m4 - m.m1 * m.m3) * reciprocal};
}

LxMatrix LxMatrix_Make(void) {
    return identityMatrix;
}

void LxMatrix_SetIdentity(LxMatrix *matrix) {
    *matrix = identityMatrix;
}

LxMatrix *LxMatrix_Set(LxMatrix *matrix, double m0, double m1, double m2, double m3, double m4, double m5,
                       double m6, double m7, double m8) {
    *matrix = {m0, m1, m2, m3, m4, m5, m6, m7, m8};
    return matrix;
}

LxMatrix *LxMatrix_AddMatrix(LxMatrix *a, const LxMatrix *b) {
    for (const Element element : elements)
        a->*element += b->*element;
    return a;
}

LxMatrix *LxMatrix_SubMatrix(LxMatrix *a, const LxMatrix *b) {
    for (const Element element : elements)
        a->*element -= b->*element;
    return a;
}

LxMatrix *LxMatrix_MulMat(LxMatrix *a, const LxMatrix *b) {
    *a = product(*a, *b);
    return a;
}

LxMatrix *LxMatrix_MulScalar(LxMatrix *matrix, double s) {
    for (const Element element : elements)
        matrix->*element *= s;
    return matrix;
}

int32_t LxMatrix_isEqual(const LxMatrix *a, const LxMatrix *b) {
    for (const Element element : elements) {
        if (a->*element != b->*element)
            return 0;
    }
    return 1;
}

LxPointD LxMatrix_MulPointD(const LxMatrix *matrix, const LxPointD *point) {
    return transform(*matrix, *point);
}

LxPointL LxMatrix_MulPointL(const LxMatrix *matrix, const LxPointL *point) {
    return rounded(transform(*matrix, point->x, point->y));
}

LxRectD LxMatrix_MulRectD(const LxMatrix *matrix, const LxRectD *rect) {
    return transform(*matrix, *rect);
}

LxRectL LxMatrix_MulRectL(const LxMatrix *matrix, const LxRectL *rect) {
    const LxPointL first = rounded(transform(*matrix, rect->x0, rect->y0));
    const LxPointL second = rounded(transform(*matrix, rect->x1, rect->y1));
    return {first.x, first.y, second.x, second.y};
}

void LxMatrix_MulCoordD(const LxMatrix *matrix, double *x, double *y) {
    const LxPointD point = transform(*matrix, *x, *y);
    *x = point.x;
    *y = point.y;
}

void LxMatrix_MulCoordL(const LxMatrix *matrix, int32_t *x, int32_t *y) {
    const LxPointL point = rounded(transform(*matrix, *x, *y));
    *x = point.x;
    *y = point.y;
}

// On purpose: the linear part is scaled by column and the translation by row.
void LxMatrix_Scale(LxMatrix *matrix, double sx, double sy) {
    matrix->m0 *= sx;
    matrix->m1 *= sy;
    matrix->m2 *= sx;
    matrix->m3 *= sx;
    matrix->m4 *= sy;
    matrix->m5 *= sy;
}

void LxMatrix_SetRotate(LxMatrix *matrix, double cx, double cy, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    *matrix = {c, -s, c * -cx + cy * s + cx, s, c, s * -cx - c * cy + cy, 0, 0, 1};
}

void LxMatrix_Rotate(LxMatrix *matrix, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    for (int column = 0; column < 3; ++column) {
        double &upper = matrix->*elements[column];
        double &lower = matrix->*elements[3 + column];
        const double p = upper;
        const double q = lower;
        upper = p * c - q * s;
        lower = s * p + c * q;
    }
}

void LxMatrix_Translate(LxMatrix *matrix, double dx, double dy) {
    matrix->m2 += dx;
    matrix->m5 += dy;
}

LxCGAffineTransform LxMatrix_ToCGAffineTransform(LxMatrix m) {
    return {static_cast<float>(m.m0), static_cast<float>(m.m3), static_cast<float>(m.m1),
            static_cast<float>(m.m4), static_cast<float>(m.m2), static_cast<float>(m.m5)};
}

LxMatrix LxMatrix_WithCGAffineTransform(LxCGAffineTransform t) {
    return {t.a, t.c, t.tx, t.b, t.d, t.ty, 0, 0, 1};
}

void LxMatrix_GetInverse(LxMatrix *out, const LxMatrix *matrix) {
    *out = inverse(*matrix);
}
