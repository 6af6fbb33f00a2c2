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

// ---- The fit once more, word for word as the method goes, with curves by their weights ----

LxPointD operator+(const LxPointD &a, const LxPointD &b) {
    return {a.x + b.x, a.y + b.y};
}
LxPointD operator-(const LxPointD &a, const LxPointD &b) {
    return {a.x - b.x, a.y - b.y};
}
LxPointD operator*(double s, const LxPointD &a) {
    return {s * a.x, s * a.y};
}
double operator*(const LxPointD &a, const LxPointD &b) {
    return a.x * b.x + a.y * b.y;
}
LxPointD unit(const LxPointD &a) {
    return (1 / std::hypot(a.x, a.y)) * a;
}

struct PlainFitter {
    std::vector<LxPointD> d;
    double error;
    std::vector<Piece> result;
    int improved = 0; // runs that needed better parameters to fit

    double distance(size_t i, size_t k) const { return std::hypot(d[i].x - d[k].x, d[i].y - d[k].y); }

    Piece generate(size_t first, size_t last, const std::vector<double> &u, LxPointD t1, LxPointD t2) const {
        double c00 = 0, c01 = 0, c11 = 0, x0 = 0, x1 = 0;
        for (size_t i = 0; i < u.size(); ++i) {
            const double t = u[i];
            const LxPointD a0 = 3 * t * (1 - t) * (1 - t) * t1, a1 = 3 * t * t * (1 - t) * t2;
            const Piece ends = {{d[first], d[first], d[last], d[last]}};
            const LxPointD rest = d[first + i] - ends.at(t);
            c00 += a0 * a0;
            c01 += a0 * a1;
            c11 += a1 * a1;
            x0 += a0 * rest;
            x1 += a1 * rest;
        }
        const double det = c00 * c11 - c01 * c01;
        double left = (x0 * c11 - x1 * c01) / det, right = (c00 * x1 - c01 * x0) / det;
        if (left < 0 || right < 0)
            left = right = distance(first, last) / 3;
        return {{d[first], d[first] + left * t1, d[last] + right * t2, d[last]}};
    }

    double largest(size_t first, const std::vector<double> &u, const Piece &curve, size_t &split) const {
        double most = 0;
        for (size_t i = 1; i + 1 < u.size(); ++i) {
            const LxPointD away = curve.at(u[i]) - d[first + i];
            if (away * away >= most) {
                most = away * away;
                split = first + i;
            }
        }
        return most;
    }

    // Newton's step: the curve's derivatives by the weights of theirs.
    std::vector<double> better(size_t first, const std::vector<double> &u, const Piece &curve) const {
        std::vector<double> result;
        const auto &q = curve.p;
        for (size_t i = 0; i < u.size(); ++i) {
            const double t = u[i], s = 1 - t;
            const LxPointD away = curve.at(t) - d[first + i];
            const LxPointD q1 =
                3 * s * s * (q[1] - q[0]) + 6 * s * t * (q[2] - q[1]) + 3 * t * t * (q[3] - q[2]);
            const LxPointD q2 = 6 * s * (q[2] - 2 * q[1] + q[0]) + 6 * t * (q[3] - 2 * q[2] + q[1]);
            result.push_back(t - away * q1 / (q1 * q1 + away * q2));
        }
        return result;
    }

    void fit(size_t first, size_t last, LxPointD t1, LxPointD t2) {
        if (last - first == 1) {
            const double third = distance(first, last) / 3;
            result.push_back({{d[first], d[first] + third * t1, d[last] + third * t2, d[last]}});
            return;
        }
        std::vector<double> u = {0};
        for (size_t i = first + 1; i <= last; ++i)
            u.push_back(u.back() + distance(i, i - 1));
        for (double &t : u)
            t /= u.back();
        size_t split = 0;
        Piece curve = generate(first, last, u, t1, t2);
        double most = largest(first, u, curve, split);
        for (int round = 0; most >= error && round < 4 && (round > 0 || most < error * error); ++round) {
            u = better(first, u, curve);
            curve = generate(first, last, u, t1, t2);
            most = largest(first, u, curve, split);
            improved += most < error ? 1 : 0;
        }
        if (most < error) {
            result.push_back(curve);
            return;
        }
        const LxPointD center = unit(0.5 * ((d[split - 1] - d[split]) + (d[split] - d[split + 1])));
        fit(first, split, t1, center);
        fit(split, last, -1 * center, t2);
    }

    void run() {
        const size_t last = d.size() - 1;
        fit(0, last, unit(d[1] - d[0]), unit(d[last - 1] - d[last]));
    }
};

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

TEST(CurveFit, AgreesWithThePlainMethod) {
    Random random(18);
    size_t curves = 0;
    int improved = 0;
    for (int round = 0; round < 400; ++round) {
        PlainFitter plain = {{}, random.real(0.3, 30), {}};
        const double height = random.real(10, 80), length = random.real(15, 60), jitter = random.real(0, 4);
        for (int i = random.integer(2, 60); i >= 0; --i)
            plain.d.push_back(
                {i * 5 + random.real(0, jitter), height * std::sin(i * 5 / length) + random.real(0, jitter)});
        plain.run();
        const std::vector<Piece> curve = pieces(fitted(plain.d, plain.error));
        ASSERT_EQ(curve.size(), plain.result.size()) << round;
        for (size_t i = 0; i < curve.size(); ++i) {
            for (int k = 1; k < 4; ++k) {
                const LxPointD expected = plain.result[i].p[k];
                const double scale = 1 + std::hypot(expected.x, expected.y);
                ASSERT_NEAR(curve[i].p[k].x, expected.x, 1e-6 * scale) << round;
                ASSERT_NEAR(curve[i].p[k].y, expected.y, 1e-6 * scale) << round;
            }
        }
        curves += curve.size();
        improved += plain.improved;
    }
    EXPECT_GT(curves, 1000u);
    EXPECT_GT(improved, 50) << "runs that one more round brought below the error";
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
