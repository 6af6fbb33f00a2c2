// Every shape's items, worked out by hand.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <oxlume/LxScalar.h>

#include "tests/path/PathStream.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr double k = 0.5522847771644592;
constexpr double degree = 0.017453292519943295;

// A double coordinate as it is stored.
float f(double value) {
    return static_cast<float>(value);
}

Stream pieByHand(double cx, double cy, double radius, double start, double step, int points) {
    Stream stream = Stream().move(f(cx), f(cy));
    double x = degree * start;
    for (int i = 0; i < points; ++i, x += step)
        stream.line(f(cx + radius * std::cos(x)), f(cy - radius * std::sin(x)));
    return stream.line(f(cx), f(cy)).close();
}

// The points of a path's items number `first` to `last`, all of them moves or lines.
std::vector<LxPointD> pointsOf(const PathHandle &path, int first, int last) {
    std::vector<LxPointD> points;
    for (int i = first; i <= last; ++i)
        points.push_back(pointAt(path->words + 3 * i + 1));
    return points;
}

void expectNear(const LxPointD &point, double x, double y) {
    EXPECT_NEAR(point.x, x, 1e-4);
    EXPECT_NEAR(point.y, y, 1e-4);
}

} // namespace

TEST(Shapes, Line) {
    const PathHandle path = emptyPath();
    LxPath_AddLine(path.get(), 1, 2, 3, 4);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(3, 4));
}

TEST(Shapes, Poly) {
    const LxPointD points[] = {{1, 2}, {3, 4}, {5, 6}};
    const PathHandle path = emptyPath();
    LxPath_AddPoly(path.get(), points, 3);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(3, 4).line(5, 6).close());
    LxPath_SetPoly(path.get(), points, 1);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).close());
    LxPath_AddPoly(path.get(), points, 0);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).close());
    LxPath_AddPoly(path.get(), nullptr, 3);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).close());
    LxPath_AddPoly(path.get(), points, -1);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).close().move(1, 2).close());
}

TEST(Shapes, SetPolyWithoutPointsStillClears) {
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_SetPoly(path.get(), nullptr, 0);
    EXPECT_EQ(path->words, nullptr);
    EXPECT_EQ(path->capacity, 0);
}

TEST(Shapes, SquareRect) {
    const PathHandle path = emptyPath();
    const LxRectD rect = {1, 2, 30, 40};
    LxPath_AddRect(path.get(), &rect, 0, 0);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(30, 2).line(30, 40).line(1, 40).close());
    EXPECT_EQ(path->count, 13);
    LxPath_SetRect(path.get(), &rect, -0.0, 0.0);
    EXPECT_EQ(path->count, 13);
}

TEST(Shapes, RectTakesTheCornersAsTheyStand) {
    const PathHandle path = emptyPath();
    const LxRectD rect = {30, 40, 1, 2};
    LxPath_AddRect(path.get(), &rect, 0, 0);
    EXPECT_EQ(Stream(path), Stream().move(30, 40).line(1, 40).line(1, 2).line(30, 2).close());
}

// With radii of 10 and 20 the control points lie 5.522847771644592 and 11.045695543289184 from the corner.
TEST(Shapes, RoundedRect) {
    const PathHandle path = emptyPath();
    const LxRectD rect = {100, 200, 300, 500};
    LxPath_AddRect(path.get(), &rect, 10, 20);
    EXPECT_EQ(Stream(path), Stream()
                                .move(100, 220)
                                .curve(100, f(200 + k * 20), f(100 + k * 10), 200, 110, 200)
                                .line(290, 200)
                                .curve(f(300 - k * 10), 200, 300, f(200 + k * 20), 300, 220)
                                .line(300, 480)
                                .curve(300, f(500 - k * 20), f(300 - k * 10), 500, 290, 500)
                                .line(110, 500)
                                .curve(f(100 + k * 10), 500, 100, f(500 - k * 20), 100, 480)
                                .close());
    expectNear(pointAt(path->words + 4), 100, 211.0456955);
    expectNear(pointAt(path->words + 6), 105.5228478, 200);
}

TEST(Shapes, RectWithOneRadiusIsRounded) {
    const PathHandle path = emptyPath();
    const LxRectD rect = {0, 0, 100, 100};
    LxPath_AddRect(path.get(), &rect, 0, 5);
    EXPECT_EQ(path->count, 3 + 4 * 7 + 3 * 3 + 1);
    EXPECT_EQ(Stream(path), Stream()
                                .move(0, 5)
                                .curve(0, f(k * 5), 0, 0, 0, 0)
                                .line(100, 0)
                                .curve(100, 0, 100, f(k * 5), 100, 5)
                                .line(100, 95)
                                .curve(100, f(100 - k * 5), 100, 100, 100, 100)
                                .line(0, 100)
                                .curve(0, 100, 0, f(100 - k * 5), 0, 95)
                                .close());
}

TEST(Shapes, Circle) {
    const PathHandle path = emptyPath();
    LxPath_AddCircle(path.get(), 100, 200, 10);
    const double r = 10 * k;
    EXPECT_EQ(Stream(path), Stream()
                                .move(90, 200)
                                .curve(90, f(200 - r), f(100 - r), 190, 100, 190)
                                .curve(f(100 + r), 190, 110, f(200 - r), 110, 200)
                                .curve(110, f(200 + r), f(100 + r), 210, 100, 210)
                                .curve(f(100 - r), 210, 90, f(200 + r), 90, 200)
                                .close());
    EXPECT_EQ(path->count, 32);
    expectNear(pointAt(path->words + 4), 90, 194.4771522);
}

TEST(Shapes, Ellipse) {
    const PathHandle path = emptyPath();
    LxPath_AddEllipse(path.get(), 100, 200, 10, 30);
    const double kx = 10 * k;
    const double ky = 30 * k;
    EXPECT_EQ(Stream(path), Stream()
                                .move(90, 200)
                                .curve(90, f(200 - ky), f(100 - kx), 170, 100, 170)
                                .curve(f(100 + kx), 170, 110, f(200 - ky), 110, 200)
                                .curve(110, f(200 + ky), f(100 + kx), 230, 100, 230)
                                .curve(f(100 - kx), 230, 90, f(200 + ky), 90, 200)
                                .close());
}

TEST(Shapes, PolyPie) {
    const PathHandle path = emptyPath();
    LxPath_AddPolyPie(path.get(), 10, 20, 5, 0, 180, 4, 0);
    EXPECT_EQ(path->count, 3 + 5 * 3 + 3 + 1);
    EXPECT_EQ(Stream(path), pieByHand(10, 20, 5, 0, degree * 180 / 4, 5));
    // Growing angles run towards smaller y; the arc's points are at 0, 45, 90, 135 and 180 degrees.
    const std::vector<LxPointD> points = pointsOf(path, 1, 5);
    const double h = 5 * std::sqrt(0.5);
    expectNear(points[0], 15, 20);
    expectNear(points[1], 10 + h, 20 - h);
    expectNear(points[2], 10, 15);
    expectNear(points[3], 10 - h, 20 - h);
    expectNear(points[4], 5, 20);
}

TEST(Shapes, PolyPieClockwise) {
    const PathHandle path = emptyPath();
    LxPath_AddPolyPie(path.get(), 10, 20, 5, 90, 0, 2, 1);
    EXPECT_EQ(Stream(path), pieByHand(10, 20, 5, 90, -(degree * 90 / 2), 3));
    const std::vector<LxPointD> points = pointsOf(path, 1, 3);
    expectNear(points[0], 10, 15);
    expectNear(points[2], 15, 20);
}

TEST(Shapes, PolyPieWithEqualAnglesGoesByTheArcLengthRule) {
    const PathHandle path = emptyPath();
    LxPath_AddPolyPie(path.get(), 0, 0, 5, 100, 100, 4, 1);
    EXPECT_EQ(Stream(path), pieByHand(0, 0, 5, 100, -(degree * 360 / 4), 5));
    LxPath_SetPolyPie(path.get(), 0, 0, 5, 100, 100, 4, 0);
    EXPECT_EQ(Stream(path), pieByHand(0, 0, 5, 100, 0, 5));
    EXPECT_EQ(LxArcLength(100, 100, 1, 1), 360);
}

TEST(Shapes, PolyPieWithoutSteps) {
    const PathHandle path = emptyPath();
    LxPath_AddPolyPie(path.get(), 1, 2, 5, 0, 90, 0, 0);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(6, 2).line(1, 2).close());
    LxPath_SetPolyPie(path.get(), 1, 2, 5, 0, 90, -1, 0);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(1, 2).close());
    LxPath_SetPolyPie(path.get(), 1, 2, 5, 0, 90, std::numeric_limits<int32_t>::min(), 0);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(1, 2).close());
}

// From 0 to 90 degrees in 3 steps of 30: the first arc, at the outer radius, has its points at -30, 0 and 30
// degrees; the second runs from 90 back to 0.
TEST(Shapes, PolyRing) {
    const PathHandle path = emptyPath();
    LxPath_AddPolyRing(path.get(), 0, 0, 10, 20, 0, 90, 3, 0);
    EXPECT_EQ(path->count, 9 * 3 + 1) << "10 items";
    const std::vector<LxPointD> points = pointsOf(path, 0, 8);
    const double angles[] = {0, -30, 0, 30, 90, 60, 30, 0, 0};
    for (size_t i = 0; i < points.size(); ++i) {
        const double radius = i >= 4 && i <= 7 ? 10 : 20;
        expectNear(points[i], radius * std::cos(degree * angles[i]), -radius * std::sin(degree * angles[i]));
    }
    EXPECT_EQ(path->words[0], 1u);
    EXPECT_EQ(path->words[27], 15u);
}

TEST(Shapes, PolyRingWordForWord) {
    for (const int32_t clockwise : {0, 1}) {
        const PathHandle path = emptyPath();
        LxPath_AddPolyRing(path.get(), 3, 4, 10.5, 20.25, 35, 170, 5, clockwise);
        const double a = degree * 35;
        const double b = degree * 170;
        const double step = degree * (clockwise != 0 ? 225 : 135) / 5;
        const auto line = [](Stream &stream, double radius, double x) {
            stream.line(f(3 + radius * std::cos(x)), f(4 - radius * std::sin(x)));
        };
        Stream expected;
        line(expected, 20.25, a);
        expected.words[0] = 1;
        double x = clockwise != 0 ? a + step : a - step;
        for (int i = 0; i < 5; ++i) {
            line(expected, 20.25, x);
            x = clockwise != 0 ? x - step : x + step;
        }
        x = b;
        for (int i = 0; i < 6; ++i) {
            line(expected, 10.5, x);
            x = clockwise != 0 ? x + step : x - step;
        }
        line(expected, 20.25, a);
        EXPECT_EQ(Stream(path), expected.close());
    }
}

TEST(Shapes, PolyRingWithEqualAnglesStandsOnOneSpot) {
    for (const int32_t clockwise : {0, 1}) {
        const PathHandle path = emptyPath();
        LxPath_AddPolyRing(path.get(), 0, 0, 10, 20, 180, 180, 3, clockwise);
        const std::vector<LxPointD> points = pointsOf(path, 0, 8);
        for (size_t i = 0; i < points.size(); ++i)
            expectNear(points[i], i >= 4 && i <= 7 ? -10 : -20, 0);
    }
}

TEST(Shapes, PolyRingWithoutSteps) {
    const PathHandle path = emptyPath();
    LxPath_AddPolyRing(path.get(), 0, 0, 10, 20, 0, 90, 0, 0);
    EXPECT_EQ(path->count, 3 + 3 + 3 + 1) << "one point of the second arc";
    LxPath_SetPolyRing(path.get(), 0, 0, 10, 20, 0, 90, -1, 0);
    EXPECT_EQ(Stream(path), Stream().move(20, 0).line(20, 0).close());
}

TEST(Shapes, SetFormsClearFirst) {
    const LxRectD rect = {1, 2, 3, 4};
    const LxPointD points[] = {{1, 2}, {3, 4}};
    const auto check = [](auto set, auto add) {
        const PathHandle path = emptyPath();
        for (int i = 0; i < 300; ++i)
            LxPath_AddClose(path.get());
        set(path.get());
        const PathHandle fresh = emptyPath();
        add(fresh.get());
        EXPECT_EQ(Stream(path), Stream(fresh));
        EXPECT_EQ(path->capacity, 256);
    };
    check([](LxPath *p) { LxPath_SetLine(p, 1, 2, 3, 4); }, [](LxPath *p) { LxPath_AddLine(p, 1, 2, 3, 4); });
    check([&](LxPath *p) { LxPath_SetPoly(p, points, 2); }, [&](LxPath *p) { LxPath_AddPoly(p, points, 2); });
    check([&](LxPath *p) { LxPath_SetRect(p, &rect, 1, 1); },
          [&](LxPath *p) { LxPath_AddRect(p, &rect, 1, 1); });
    check([](LxPath *p) { LxPath_SetCircle(p, 1, 2, 3); }, [](LxPath *p) { LxPath_AddCircle(p, 1, 2, 3); });
    check([](LxPath *p) { LxPath_SetEllipse(p, 1, 2, 3, 4); },
          [](LxPath *p) { LxPath_AddEllipse(p, 1, 2, 3, 4); });
    check([](LxPath *p) { LxPath_SetPolyPie(p, 1, 2, 3, 4, 5, 6, 1); },
          [](LxPath *p) { LxPath_AddPolyPie(p, 1, 2, 3, 4, 5, 6, 1); });
    check([](LxPath *p) { LxPath_SetPolyRing(p, 1, 2, 3, 4, 5, 6, 7, 1); },
          [](LxPath *p) { LxPath_AddPolyRing(p, 1, 2, 3, 4, 5, 6, 7, 1); });
}

TEST(Shapes, NullPathsAreIgnored) {
    const LxRectD rect = {1, 2, 3, 4};
    const LxPointD points[] = {{1, 2}, {3, 4}};
    LxPath_SetLine(nullptr, 1, 2, 3, 4);
    LxPath_SetPoly(nullptr, points, 2);
    LxPath_SetRect(nullptr, &rect, 0, 0);
    LxPath_SetCircle(nullptr, 1, 2, 3);
    LxPath_SetEllipse(nullptr, 1, 2, 3, 4);
    LxPath_SetPolyPie(nullptr, 1, 2, 3, 4, 5, 6, 0);
    LxPath_SetPolyRing(nullptr, 1, 2, 3, 4, 5, 6, 7, 0);
    const PathHandle path = emptyPath();
    LxPath_AddRect(path.get(), nullptr, 0, 0);
    EXPECT_EQ(path->count, 0);
}
