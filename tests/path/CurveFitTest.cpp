// Fitting cubic curves to points.
#include <oxlume/LxCubicBezier.h>

#include <cmath>

#include <gtest/gtest.h>

#include "tests/path/PathStream.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

struct Piece {
    LxPointD p[4];

    LxPointD at(double t) const {
        const double s = 1 - t;
        const double w[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
        LxPointD sum = {};
        for (int i = 0; i < 4; ++i)
            sum = {sum.x + w[i] * p[i].x, sum.y + w[i] * p[i].y};
        return sum;
    }
};

PathHandle fitted(const std::vector<LxPointD> &points, double error) {
    PathHandle path = emptyPath();
    LxCubicBezier_Fit(points.data(), static_cast<int32_t>(points.size()), error, path.get());
    return path;
}

std::vector<Piece> pieces(const PathHandle &path) {
    std::vector<Piece> result;
    LxPointD pen = pointAt(path->words + 1);
    for (int32_t i = 3; i < path->count; i += 7) {
        EXPECT_EQ(path->words[i], 4u);
        const uint32_t *w = path->words + i + 1;
        result.push_back({{pen, pointAt(w), pointAt(w + 2), pointAt(w + 4)}});
        pen = pointAt(w + 4);
    }
    return result;
}

double distanceTo(const std::vector<Piece> &curve, const LxPointD &point) {
    double nearest = INFINITY;
    for (const Piece &piece : curve) {
        for (int i = 0; i <= 2000; ++i) {
            const LxPointD p = piece.at(i / 2000.0);
            nearest = std::min(nearest, std::hypot(p.x - point.x, p.y - point.y));
        }
    }
    return nearest;
}

std::vector<LxPointD> arch(int n, double radius) {
    std::vector<LxPointD> points;
    for (int i = 0; i < n; ++i) {
        const double angle = 3.0 * i / (n - 1);
        points.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return points;
}

} // namespace

TEST(CurveFit, TwoPointsGiveAStraightCurve) {
    EXPECT_EQ(Stream(fitted({{0, 0}, {30, 0}}, 1)), Stream().move(0, 0).curve(10, 0, 20, 0, 30, 0));
    EXPECT_EQ(Stream(fitted({{1, 2}, {1, -7}}, 1)), Stream().move(1, 2).curve(1, -1, 1, -4, 1, -7));
}

TEST(CurveFit, ThreePointsOnALineGiveOneCurve) {
    const std::vector<Piece> curve = pieces(fitted({{0, 0}, {10, 0}, {20, 0}}, 1));
    ASSERT_EQ(curve.size(), 1u);
    EXPECT_EQ(curve[0].p[3].x, 20);
    EXPECT_EQ(curve[0].p[1].y, 0);
}

TEST(CurveFit, AppendsToThePath) {
    const PathHandle path = Stream().move(7, 7).close().path();
    const LxPointD points[] = {{0, 0}, {30, 0}};
    LxCubicBezier_Fit(points, 2, 1, path.get());
    EXPECT_EQ(Stream(path), Stream().move(7, 7).close().move(0, 0).curve(10, 0, 20, 0, 30, 0));
}

// A corner at index 4: with a small error the run is split there, and the tangent at the corner is the mean
// of its two chords, (1, 1) normalised.
TEST(CurveFit, CornerIsSplitWithTheMeanTangent) {
    std::vector<LxPointD> points;
    for (int i = 0; i <= 4; ++i)
        points.push_back({i * 10.0, 0});
    for (int i = 1; i <= 4; ++i)
        points.push_back({40, i * 10.0});
    const std::vector<Piece> curve = pieces(fitted(points, 0.5));
    ASSERT_GE(curve.size(), 2u);
    bool corner = false;
    for (const Piece &piece : curve) {
        if (piece.p[0].x == 40 && piece.p[0].y == 0) {
            corner = true;
            EXPECT_NEAR(piece.p[1].x - 40, piece.p[1].y, 1e-4) << "leaves along the diagonal";
        }
    }
    EXPECT_TRUE(corner);
}

TEST(CurveFit, SmoothRunStaysWithinTheError) {
    for (const double error : {0.25, 1.0, 4.0}) {
        const std::vector<LxPointD> points = arch(60, 200);
        const std::vector<Piece> curve = pieces(fitted(points, error));
        // The error bounds squared distances.
        for (const LxPointD &point : points)
            EXPECT_LT(distanceTo(curve, point), std::sqrt(error) + 0.05) << error;
        EXPECT_LE(curve.size(), 6u) << "and does not take many curves";
    }
}

TEST(CurveFit, WavesStayWithinTheError) {
    Random random(14);
    for (int round = 0; round < 10; ++round) {
        std::vector<LxPointD> points;
        const double height = random.real(10, 80);
        const double length = random.real(20, 60);
        for (int i = 0; i < 100; ++i)
            points.push_back({i * 3.0, height * std::sin(i * 3.0 / length)});
        const std::vector<Piece> curve = pieces(fitted(points, 2.0));
        for (const LxPointD &point : points)
            ASSERT_LT(distanceTo(curve, point), std::sqrt(2.0) + 0.1);
        EXPECT_LT(curve.size(), 40u);
    }
}

TEST(CurveFit, PiecesJoin) {
    const std::vector<LxPointD> points = arch(200, 500);
    const std::vector<Piece> curve = pieces(fitted(points, 0.01));
    EXPECT_GT(curve.size(), 1u);
    EXPECT_EQ(curve.front().p[0].x, 500);
    EXPECT_EQ(curve.back().p[3].y, static_cast<float>(points.back().y));
    for (size_t i = 1; i < curve.size(); ++i) {
        // The tangents at a join are opposite ends of one line.
        const LxPointD in = {curve[i].p[0].x - curve[i - 1].p[2].x, curve[i].p[0].y - curve[i - 1].p[2].y};
        const LxPointD out = {curve[i].p[1].x - curve[i].p[0].x, curve[i].p[1].y - curve[i].p[0].y};
        EXPECT_NEAR((in.x * out.y - in.y * out.x) / (std::hypot(in.x, in.y) * std::hypot(out.x, out.y)), 0,
                    1e-3);
    }
}

TEST(CurveFit, NoErrorAllowedSplitsDownToPairs) {
    const std::vector<LxPointD> points = {{0, 0}, {10, 7}, {20, -5}, {30, 9}, {40, 0}};
    for (const double error : {0.0, -1.0, std::nan("")})
        EXPECT_EQ(pieces(fitted(points, error)).size(), 4u);
}

TEST(CurveFit, LongRunsAreFitted) {
    const std::vector<LxPointD> points = arch(5000, 1000);
    const std::vector<Piece> curve = pieces(fitted(points, 1.0));
    EXPECT_LE(curve.size(), 8u);
    for (size_t i = 0; i < points.size(); i += 100)
        EXPECT_LT(distanceTo(curve, points[i]), 1.1);
}

TEST(CurveFit, PointsOnOneSpotComeToAnEnd) {
    EXPECT_EQ(pieces(fitted({{5, 5}, {5, 5}}, 1)).size(), 1u);
    fitted(std::vector<LxPointD>(10, {5, 5}), 1);
    fitted(std::vector<LxPointD>(10, {5, 5}), 0);
    fitted({{0, 0}, {0, 0}, {10, 10}, {10, 10}}, 0.5);
}

TEST(CurveFit, WildPointsComeToAnEnd) {
    Random random(15);
    for (int round = 0; round < 300; ++round) {
        std::vector<LxPointD> points;
        for (int i = random.integer(2, 30); i > 0; --i)
            points.push_back({random.anyReal(), random.anyReal()});
        const PathHandle path = fitted(points, random.anyReal());
        EXPECT_EQ((path->count - 3) % 7, 0);
    }
}

TEST(CurveFit, TooFewPointsAndNullsDoNothing) {
    const LxPointD point = {1, 2};
    const PathHandle path = emptyPath();
    for (const int32_t count : {1, 0, -1, INT32_MIN})
        LxCubicBezier_Fit(&point, count, 1, path.get());
    LxCubicBezier_Fit(nullptr, 5, 1, path.get());
    EXPECT_EQ(path->count, 0);
    LxCubicBezier_Fit(&point, 2, 1, nullptr);
}
