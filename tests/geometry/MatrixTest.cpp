#include "geometry/Matrix.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/geometry/Same.h"

using lx::test::Random;

namespace {

constexpr LxMatrix identity{1, 0, 0, 0, 1, 0, 0, 0, 1};
constexpr LxMatrix counting{1, 2, 3, 4, 5, 6, 7, 8, 9};
constexpr double pi = 3.14159265358979323846;

// The second form of all tests here: rows and columns by index.
struct Grid {
    double at[3][3];
};

Grid grid(const LxMatrix &m) {
    return {{{m.m0, m.m1, m.m2}, {m.m3, m.m4, m.m5}, {m.m6, m.m7, m.m8}}};
}

LxMatrix matrix(const Grid &g) {
    return {g.at[0][0], g.at[0][1], g.at[0][2], g.at[1][0], g.at[1][1],
            g.at[1][2], g.at[2][0], g.at[2][1], g.at[2][2]};
}

LxMatrix anyMatrix(Random &random) {
    Grid g{};
    for (auto &row : g.at)
        for (double &element : row)
            element = random.anyReal();
    return matrix(g);
}

} // namespace

TEST(Matrix, TheConstantAndTheConstructorAreTheIdentity) {
    EXPECT_EQ(LxMatrix_0, identity);
    EXPECT_EQ(LxMatrix(), identity);
    LxMatrix m = counting;
    LxMatrix_SetIdentity(&m);
    EXPECT_EQ(m, identity);
}

TEST(Matrix, SetStoresInRowOrder) {
    LxMatrix m{};
    EXPECT_EQ(LxMatrix_Set(&m, 1, 2, 3, 4, 5, 6, 7, 8, 9), &m);
    EXPECT_EQ(m, counting);
}

TEST(Matrix, AddSubtractAndScalarWorkElementByElement) {
    LxMatrix m = counting;
    EXPECT_EQ(LxMatrix_AddMatrix(&m, &counting), &m);
    EXPECT_EQ(m, (LxMatrix{2, 4, 6, 8, 10, 12, 14, 16, 18}));
    EXPECT_EQ(LxMatrix_SubMatrix(&m, &counting), &m);
    EXPECT_EQ(m, counting);
    EXPECT_EQ(LxMatrix_MulScalar(&m, -0.5), &m);
    EXPECT_EQ(m, (LxMatrix{-0.5, -1, -1.5, -2, -2.5, -3, -3.5, -4, -4.5}));
    LxMatrix_SubMatrix(&m, &m);
    EXPECT_EQ(m, (LxMatrix{0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(Matrix, MulMatTakesRowsOfAAgainstColumnsOfB) {
    LxMatrix a = counting;
    const LxMatrix b{1, 0, 2, 0, 1, 0, 3, 0, 1};
    EXPECT_EQ(LxMatrix_MulMat(&a, &b), &a);
    EXPECT_EQ(a, (LxMatrix{10, 2, 5, 22, 5, 14, 34, 8, 23}));
    LxMatrix square = counting;
    LxMatrix_MulMat(&square, &square);
    EXPECT_EQ(square, (LxMatrix{30, 36, 42, 66, 81, 96, 102, 126, 150})) << "a and b may be one matrix";
}

TEST(Matrix, MulMatSumsFromTheLeft) {
    Random random(20);
    for (int i = 0; i < 50000; ++i) {
        const LxMatrix a = anyMatrix(random), b = anyMatrix(random);
        const Grid p = grid(a), q = grid(b);
        Grid expected{};
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 3; ++column) {
                double sum = p.at[row][0] * q.at[0][column];
                for (int k = 1; k < 3; ++k)
                    sum += p.at[row][k] * q.at[k][column];
                expected.at[row][column] = sum;
            }
        }
        LxMatrix m = a;
        LxMatrix_MulMat(&m, &b);
        ASSERT_EQ(m, matrix(expected)) << a << b;
    }
}

TEST(Matrix, IsEqualIsExact) {
    for (int element = 0; element < 9; ++element) {
        Grid g = grid(counting);
        EXPECT_EQ(LxMatrix_isEqual(&counting, &counting), 1);
        double &changed = g.at[element / 3][element % 3];
        changed = std::nextafter(changed, 100);
        const LxMatrix other = matrix(g);
        EXPECT_EQ(LxMatrix_isEqual(&counting, &other), 0);
        changed = std::numeric_limits<double>::quiet_NaN();
        const LxMatrix undefined = matrix(g);
        EXPECT_EQ(LxMatrix_isEqual(&undefined, &undefined), 0) << "not even to itself";
    }
    const LxMatrix zero{}, negative{-0.0, -0.0, -0.0, -0.0, -0.0, -0.0, -0.0, -0.0, -0.0};
    EXPECT_EQ(LxMatrix_isEqual(&zero, &negative), 1);
}

TEST(Matrix, PointsTransformByTheUpperTwoRows) {
    const LxMatrix m{2, 3, 5, 7, 11, 13, 17, 19, 23};
    const LxPointD point{10, 100};
    EXPECT_EQ(LxMatrix_MulPointD(&m, &point), (LxPointD{325, 1183}));
    double x = 10, y = 100;
    LxMatrix_MulCoordD(&m, &x, &y);
    EXPECT_EQ(x, 325.0);
    EXPECT_EQ(y, 1183.0) << "x is read before it is written";
    const LxRectD rect{10, 100, 0, 1};
    EXPECT_EQ(LxMatrix_MulRectD(&m, &rect), (LxRectD{325, 1183, 8, 24}));
}

TEST(Matrix, IntegersTruncateTheValuePlusAHalf) {
    const LxPointL point{3, -2};
    EXPECT_EQ(LxMatrix_MulPointL(&identity, &point), (LxPointL{3, -1})) << "-1.5 truncates to -1";
    const LxMatrix half{0.5, 0, 0, 0, 0.5, 0, 0, 0, 1};
    const LxPointL odd{3, -3};
    EXPECT_EQ(LxMatrix_MulPointL(&half, &odd), (LxPointL{2, -1}));
    int32_t x = 3, y = -2;
    LxMatrix_MulCoordL(&identity, &x, &y);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(y, -1);
    const LxRectL rect{3, -2, -3, 7};
    EXPECT_EQ(LxMatrix_MulRectL(&identity, &rect), (LxRectL{3, -1, -2, 7}));
}

TEST(Matrix, IntegersBeyondTheirRangeGiveTheLowest) {
    constexpr int32_t lowest = std::numeric_limits<int32_t>::min();
    const LxMatrix large{1e10, 0, 0, 0, NAN, 0, 0, 0, 1};
    const LxPointL point{1, 1};
    EXPECT_EQ(LxMatrix_MulPointL(&large, &point), (LxPointL{lowest, lowest}));
}

TEST(Matrix, TransformsHoldForAnyInput) {
    Random random(21);
    const auto rounded = [](double value) {
        const double v = std::trunc(value + 0.5);
        return v >= -2147483648.0 && v <= 2147483647.0 ? static_cast<int32_t>(v)
                                                       : std::numeric_limits<int32_t>::min();
    };
    for (int i = 0; i < 100000; ++i) {
        const LxMatrix m = anyMatrix(random);
        const LxRectD r = lx::test::anyRectD(random);
        const LxRectL l = lx::test::anyRectL(random);
        const auto px = [&](double x, double y) { return x * m.m0 + y * m.m1 + m.m2; };
        const auto py = [&](double x, double y) { return x * m.m3 + y * m.m4 + m.m5; };
        ASSERT_EQ(LxMatrix_MulRectD(&m, &r),
                  (LxRectD{px(r.x0, r.y0), py(r.x0, r.y0), px(r.x1, r.y1), py(r.x1, r.y1)}))
            << m << r;
        ASSERT_EQ(LxMatrix_MulRectL(&m, &l), (LxRectL{rounded(px(l.x0, l.y0)), rounded(py(l.x0, l.y0)),
                                                      rounded(px(l.x1, l.y1)), rounded(py(l.x1, l.y1))}))
            << m << l;
        const LxPointD point{r.x0, r.y1};
        const LxPointD moved = LxMatrix_MulPointD(&m, &point);
        double x = r.x0, y = r.y1;
        LxMatrix_MulCoordD(&m, &x, &y);
        ASSERT_EQ(moved, (LxPointD{px(r.x0, r.y1), py(r.x0, r.y1)}));
        ASSERT_EQ(moved, (LxPointD{x, y}));
        const LxPointL whole{l.x0, l.y1};
        int32_t wx = l.x0, wy = l.y1;
        LxMatrix_MulCoordL(&m, &wx, &wy);
        ASSERT_EQ(LxMatrix_MulPointL(&m, &whole), (LxPointL{wx, wy}));
        ASSERT_EQ(wx, rounded(px(l.x0, l.y1)));
        ASSERT_EQ(wy, rounded(py(l.x0, l.y1)));
    }
}

TEST(Matrix, AHalfTurnSwapsARectanglesCorners) {
    LxMatrix m{};
    LxMatrix_SetRotate(&m, 0, 0, pi);
    const LxRectD rect{1, 2, 3, 4};
    const LxRectD turned = LxMatrix_MulRectD(&m, &rect);
    EXPECT_NEAR(turned.x0, -1, 1e-12);
    EXPECT_NEAR(turned.y0, -2, 1e-12);
    EXPECT_NEAR(turned.x1, -3, 1e-12);
    EXPECT_NEAR(turned.y1, -4, 1e-12);
}

TEST(Matrix, ScaleTakesTheLinearPartByColumnAndTheTranslationByRow) {
    LxMatrix m = counting;
    LxMatrix_Scale(&m, 10, 100);
    EXPECT_EQ(m, (LxMatrix{10, 200, 30, 40, 500, 600, 7, 8, 9}));
}

TEST(Matrix, SetRotateTurnsAroundItsCentre) {
    LxMatrix m = counting;
    LxMatrix_SetRotate(&m, 5, 7, pi / 2);
    const LxPointD centre{5, 7}, right{6, 7};
    const LxPointD stays = LxMatrix_MulPointD(&m, &centre), turned = LxMatrix_MulPointD(&m, &right);
    EXPECT_NEAR(stays.x, 5, 1e-12);
    EXPECT_NEAR(stays.y, 7, 1e-12);
    EXPECT_NEAR(turned.x, 5, 1e-12);
    EXPECT_NEAR(turned.y, 8, 1e-12) << "y grows downwards, so this is clockwise to the eye";
    EXPECT_EQ(m.m6, 0);
    EXPECT_EQ(m.m7, 0);
    EXPECT_EQ(m.m8, 1);
}

TEST(Matrix, SetRotateAndRotateHoldForAnyInput) {
    Random random(22);
    for (int i = 0; i < 50000; ++i) {
        const double cx = random.anyReal(), cy = random.anyReal(), angle = random.real(-10, 10);
        const double c = std::cos(angle), s = std::sin(angle);
        LxMatrix set{};
        LxMatrix_SetRotate(&set, cx, cy, angle);
        ASSERT_EQ(set, (LxMatrix{c, -s, c * -cx + cy * s + cx, s, c, s * -cx - c * cy + cy, 0, 0, 1}));
        const LxMatrix before = anyMatrix(random);
        Grid expected = grid(before);
        for (int column = 0; column < 3; ++column) {
            const double p = grid(before).at[0][column], q = grid(before).at[1][column];
            expected.at[0][column] = p * c - q * s;
            expected.at[1][column] = s * p + c * q;
        }
        LxMatrix turned = before;
        LxMatrix_Rotate(&turned, angle);
        ASSERT_EQ(turned, matrix(expected)) << before << angle;
    }
}

TEST(Matrix, RotateMultipliesFromTheLeft) {
    LxMatrix m{1, 0, 10, 0, 1, 0, 7, 8, 9};
    LxMatrix_Rotate(&m, pi / 2);
    EXPECT_NEAR(m.m2, 0, 1e-12) << "the translation turns too";
    EXPECT_NEAR(m.m5, 10, 1e-12);
    EXPECT_NEAR(m.m1, -1, 1e-12);
    EXPECT_NEAR(m.m3, 1, 1e-12);
    EXPECT_EQ(m.m6, 7);
    EXPECT_EQ(m.m7, 8);
    EXPECT_EQ(m.m8, 9);
}

TEST(Matrix, TranslateAddsToTheThirdColumn) {
    LxMatrix m = counting;
    LxMatrix_Translate(&m, 0.5, -6);
    EXPECT_EQ(m, (LxMatrix{1, 2, 3.5, 4, 5, 0, 7, 8, 9}));
}

TEST(Matrix, PlatformTransformsComeBackToSinglePrecision) {
    const LxMatrix m{0.1, 2, 1e-3, 4.7, 5, 6, 7, 8, 9};
    const LxCGAffineTransform t = LxMatrix_ToCGAffineTransform(m);
    EXPECT_EQ(t.a, 0.1f);
    EXPECT_EQ(t.b, 4.7f);
    EXPECT_EQ(t.c, 2.0f);
    EXPECT_EQ(t.d, 5.0f);
    EXPECT_EQ(t.tx, 1e-3f);
    EXPECT_EQ(t.ty, 6.0f);
    EXPECT_EQ(LxMatrix_WithCGAffineTransform(t),
              (LxMatrix{double(0.1f), 2, double(1e-3f), double(4.7f), 5, 6, 0, 0, 1}));
}

TEST(Matrix, InverseOfASimpleMatrix) {
    // Scale by 2 and 4, then move by (6, 8).
    const LxMatrix m{2, 0, 6, 0, 4, 8, 0, 0, 1};
    LxMatrix out{};
    LxMatrix_GetInverse(&out, &m);
    EXPECT_EQ(out, (LxMatrix{0.5, 0, -3, 0, 0.25, -2, 0, 0, 1}));
    // The last row counts: this one has the determinant 1 * (1 - 0) - 0 + 0.
    const LxMatrix sheared{1, 0, 0, 0, 1, 0, 5, 6, 1};
    LxMatrix_GetInverse(&out, &sheared);
    EXPECT_EQ(out, (LxMatrix{1, 0, 0, 0, 1, 0, -5, -6, 1}));
}

TEST(Matrix, InverseMayBeTakenInPlace) {
    LxMatrix m{2, 0, 6, 0, 4, 8, 0, 0, 1};
    LxMatrix_GetInverse(&m, &m);
    EXPECT_EQ(m, (LxMatrix{0.5, 0, -3, 0, 0.25, -2, 0, 0, 1}));
}

TEST(Matrix, InverseOfASingularMatrixIsNotFinite) {
    const LxMatrix zero{};
    LxMatrix out{};
    LxMatrix_GetInverse(&out, &zero);
    for (const auto &row : grid(out).at)
        for (const double element : row)
            EXPECT_FALSE(std::isfinite(element));
}

TEST(Matrix, InverseIsTheAdjugateTimesTheReciprocal) {
    Random random(23);
    for (int i = 0; i < 50000; ++i) {
        const LxMatrix m = anyMatrix(random);
        const Grid g = grid(m);
        // Cyclic indices give each cofactor its sign.
        const auto cofactor = [&](int row, int column) {
            const int r1 = (row + 1) % 3, r2 = (row + 2) % 3, c1 = (column + 1) % 3, c2 = (column + 2) % 3;
            return g.at[r1][c1] * g.at[r2][c2] - g.at[r1][c2] * g.at[r2][c1];
        };
        const double determinant = m.m0 * (m.m4 * m.m8 - m.m5 * m.m7) - m.m1 * (m.m3 * m.m8 - m.m5 * m.m6) +
                                   m.m2 * (m.m3 * m.m7 - m.m4 * m.m6);
        const double reciprocal = 1 / determinant;
        Grid expected{};
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                expected.at[row][column] = cofactor(column, row) * reciprocal;
        LxMatrix out{};
        LxMatrix_GetInverse(&out, &m);
        ASSERT_EQ(out, matrix(expected)) << m;
    }
}

TEST(Matrix, AMatrixTimesItsInverseIsTheIdentity) {
    Random random(24);
    for (int i = 0; i < 20000; ++i) {
        const auto element = [&] { return random.real(-3, 3); };
        const LxMatrix m{element(), element(), element(), element(), element(),
                         element(), element(), element(), element()};
        LxMatrix out{};
        LxMatrix_GetInverse(&out, &m);
        if (!(std::fabs(out.m0) < 100) || !(std::fabs(out.m4) < 100) || !(std::fabs(out.m8) < 100))
            continue;
        LxMatrix_MulMat(&out, &m);
        LxMatrix_SubMatrix(&out, &identity);
        for (const auto &row : grid(out).at)
            for (const double rest : row)
                ASSERT_NEAR(rest, 0, 1e-9) << m;
    }
}
