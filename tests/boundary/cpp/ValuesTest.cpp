#include <oxlume/cpp/Values.hpp>

#include <type_traits>

#include <gtest/gtest.h>

using namespace oxlume;

// A value is the structure of the C boundary and nothing more.
static_assert(sizeof(Point) == sizeof(LxPointD) && std::is_trivially_copyable_v<Point>);
static_assert(sizeof(IntPoint) == sizeof(LxPointL) && std::is_trivially_copyable_v<IntPoint>);
static_assert(sizeof(Rect) == sizeof(LxRectD) && std::is_trivially_copyable_v<Rect>);
static_assert(sizeof(IntRect) == sizeof(LxRectL) && std::is_trivially_copyable_v<IntRect>);
static_assert(sizeof(Matrix) == sizeof(LxMatrix) && std::is_trivially_copyable_v<Matrix>);

// They are of use at compile time.
static_assert(Point(1, 2) + Point(3, 4) == Point(4, 6));
static_assert(IntRect(5, 6, 1, 2).width() == 4);

TEST(CppPoint, HasTheOperatorsOfVectors) {
    EXPECT_EQ(Point(5, 7) - Point(1, 2), Point(4, 5));
    EXPECT_EQ(-Point(5, -7), Point(-5, 7));
    EXPECT_EQ(Point(1, 2) * 3.0, Point(3, 6));
    EXPECT_EQ(3.0 * Point(1, 2), Point(3, 6));
    EXPECT_EQ(Point(3, 6) / 3.0, Point(1, 2));
    EXPECT_NE(Point(3, 6), Point(3, 5));
    EXPECT_EQ(dot({2, 3}, {4, 5}), 23.0);
    EXPECT_EQ(Point(3, 4).length(), 5.0);
    EXPECT_EQ(distance({1, 1}, {4, 5}), 5.0);
    EXPECT_EQ(lerp(0.25, {0, 0}, {4, 8}), Point(1, 2));
}

TEST(CppPoint, GoesIntoTheBoundaryAndComesBack) {
    const LxPointD c = Point(1.5, -2.5);
    EXPECT_EQ(Point(c), Point(1.5, -2.5));
    EXPECT_EQ(IntPoint(Point(1.9, -2.9)), IntPoint(1, -2));
    EXPECT_EQ(Point(IntPoint(3, 4)), Point(3, 4));
    EXPECT_EQ(IntPoint(3, 4) + IntPoint(1, 1), IntPoint(4, 5));
    EXPECT_EQ(IntPoint(3, 4) - IntPoint(1, 1), IntPoint(2, 3));
    EXPECT_NE(IntPoint(3, 4), IntPoint(4, 4));
}

TEST(CppRect, IsSortedAndKnowsItsSize) {
    const Rect rect(30, 2, 10, 4);
    EXPECT_EQ(rect, Rect(Point(10, 2), Point(30, 4)));
    EXPECT_EQ(rect.width(), 20.0);
    EXPECT_EQ(rect.height(), 2.0);
    EXPECT_EQ(rect.center(), Point(20, 3));
    EXPECT_TRUE(rect.contains({10, 2}));
    EXPECT_FALSE(rect.contains({30, 3}));
    EXPECT_TRUE(Rect().isEmpty());
    EXPECT_EQ(rect + Point(1, 2), Rect(11, 4, 31, 6));
    EXPECT_EQ(rect - Point(1, 2), Rect(9, 0, 29, 2));
}

TEST(CppRect, IntersectionAndUnionAreThoseOfTheBoundary) {
    EXPECT_EQ(Rect(0, 0, 10, 10) & Rect(5, 6, 20, 20), Rect(5, 6, 10, 10));
    EXPECT_EQ(Rect(0, 0, 10, 10) | Rect(5, 6, 20, 20), Rect(0, 0, 20, 20));
    EXPECT_TRUE((Rect(0, 0, 1, 1) & Rect(5, 5, 6, 6)).isEmpty());
    EXPECT_EQ(IntRect(0, 0, 10, 10) & IntRect(5, 6, 20, 20), IntRect(5, 6, 10, 10));
    EXPECT_EQ(IntRect(0, 0, 10, 10) | IntRect(5, 6, 20, 20), IntRect(0, 0, 20, 20));
    EXPECT_EQ(IntRect(Rect(0.5, 0.5, 2.5, 2.5)), IntRect(0, 0, 3, 3));
    EXPECT_EQ(Rect(IntRect(1, 2, 3, 4)), Rect(1, 2, 3, 4));
    EXPECT_TRUE(IntRect(1, 2, 3, 4).contains({2, 3}));
    EXPECT_EQ(IntRect(1, 2, 3, 4) + IntPoint(1, 1), IntRect(2, 3, 4, 5));
    EXPECT_EQ(IntRect(1, 2, 3, 4) - IntPoint(1, 1), IntRect(0, 1, 2, 3));
}

TEST(CppMatrix, MultipliesPointsAndMatrices) {
    const Matrix scaled = Matrix::scaling(2, 3);
    const Matrix moved = Matrix::translation(10, 20);
    EXPECT_EQ(scaled * Point(1, 1), Point(2, 3));
    EXPECT_EQ(moved * scaled * Point(1, 1), Point(12, 23)) << "scaled first";
    EXPECT_EQ(scaled * moved * Point(1, 1), Point(22, 63)) << "moved first";
    EXPECT_EQ(scaled.inverse() * Point(2, 3), Point(1, 1));
    EXPECT_EQ(scaled * scaled.inverse(), Matrix());
    EXPECT_NE(scaled, moved);
    EXPECT_EQ((scaled + scaled).m0, 4.0);
    EXPECT_EQ((scaled - scaled).m4, 0.0);
    EXPECT_EQ((scaled * 2.0).m8, 2.0);
    const Point turned = Matrix::rotation(1.5707963267948966, {1, 1}) * Point(2, 1);
    EXPECT_NEAR(turned.x, 1, 1e-15);
    EXPECT_NEAR(turned.y, 2, 1e-15) << "from x towards y";
    EXPECT_EQ(Matrix().translate(1, 2).scale(2, 2), Matrix(2, 0, 2, 0, 2, 4));
    EXPECT_EQ(Matrix().rotate(0.0), Matrix());
}
