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

// The fit in its plainest form, by recursion and with the exported vectors.
class PlainFit {
public:
    PathHandle path = emptyPath();
    int triesOfAll = 0; // rounds of Newton's method for the whole run
    int tries = 0;      // and for all runs
    int splits = 0;

    PlainFit(const std::vector<LxPointD> &points, double error) : d(points), error(error) {
        const int last = static_cast<int>(d.size()) - 1;
        LxPointD tHat1 = V2Sub(d[1], d[0]);
        LxPointD tHat2 = V2Sub(d[last - 1], d[last]);
        LxPath_AddMoveTo(path.get(), d[0].x, d[0].y);
        fit(0, last, *V2Normalize(&tHat1), *V2Normalize(&tHat2));
    }

private:
    void fit(int first, int last, LxPointD tHat1, LxPointD tHat2) {
        if (last - first + 1 == 2) {
            const double dist = V2DistanceBetween2Points(&d[first], &d[last]) / 3.0;
            return add({d[first], V2AddII(d[first], V2ScaleII(tHat1, dist)),
                        V2AddII(d[last], V2ScaleII(tHat2, dist)), d[last]});
        }
        std::vector<double> u = {0};
        for (int i = first + 1; i <= last; ++i)
            u.push_back(u.back() + V2DistanceBetween2Points(&d[i], &d[i - 1]));
        const double whole = u.back();
        for (size_t i = 1; i < u.size(); ++i)
            u[i] = u[i] / whole;
        Piece curve = generate(first, last, u, tHat1, tHat2);
        int split = 0;
        double maxError = worst(first, last, curve, u, split);
        if (maxError < error)
            return add(curve);
        if (maxError < error * error) {
            for (int i = 0; i < 4; ++i) {
                ++tries;
                triesOfAll += last - first + 1 == static_cast<int>(d.size());
                std::vector<double> uPrime;
                for (int k = first; k <= last; ++k)
                    uPrime.push_back(nearer(curve, d[k], u[k - first]));
                curve = generate(first, last, uPrime, tHat1, tHat2);
                maxError = worst(first, last, curve, uPrime, split);
                if (maxError < error)
                    return add(curve);
                u = uPrime;
            }
        }
        ++splits;
        const LxPointD v1 = V2Sub(d[split - 1], d[split]);
        const LxPointD v2 = V2Sub(d[split], d[split + 1]);
        LxPointD center = V2ScaleII(V2AddII(v1, v2), 0.5);
        V2Normalize(&center);
        fit(first, split, tHat1, center);
        V2Negate(&center);
        fit(split, last, center, tHat2);
    }

    void add(const Piece &curve) {
        LxPath_AddCurveTo(path.get(), curve.p[1].x, curve.p[1].y, curve.p[2].x, curve.p[2].y, curve.p[3].x,
                          curve.p[3].y);
    }

    Piece generate(int first, int last, const std::vector<double> &u, LxPointD tHat1, LxPointD tHat2) const {
        double c00 = 0, c01 = 0, c11 = 0, x0 = 0, x1 = 0;
        for (int i = 0; i <= last - first; ++i) {
            const double t = u[i];
            const double b1 = 3 * t * ((1 - t) * (1 - t));
            const double b2 = 3 * t * t * (1 - t);
            const LxPointD a0 = V2ScaleII(tHat1, b1);
            const LxPointD a1 = V2ScaleII(tHat2, b2);
            c00 += V2Dot(&a0, &a0);
            c01 += V2Dot(&a0, &a1);
            c11 += V2Dot(&a1, &a1);
            const LxPointD r =
                V2Sub(d[first + i], V2AddII(V2ScaleII(d[first], (1 - t) * (1 - t) * (1 - t) + b1),
                                            V2ScaleII(d[last], b2 + t * t * t)));
            x0 += V2Dot(&a0, &r);
            x1 += V2Dot(&a1, &r);
        }
        double det = c00 * c11 - c01 * c01;
        if (det == 0)
            det = c00 * c11 * 1e-11;
        double alphaL = (x0 * c11 - x1 * c01) / det;
        double alphaR = (c00 * x1 - c01 * x0) / det;
        if (alphaL < 0 || alphaR < 0)
            alphaL = alphaR = V2DistanceBetween2Points(&d[last], &d[first]) / 3.0;
        return {d[first], V2AddII(d[first], V2ScaleII(tHat1, alphaL)),
                V2AddII(d[last], V2ScaleII(tHat2, alphaR)), d[last]};
    }

    static LxPointD at(std::vector<LxPointD> q, double t) {
        for (size_t left = q.size() - 1; left > 0; --left) {
            for (size_t i = 0; i < left; ++i)
                q[i] = {(1 - t) * q[i].x + t * q[i + 1].x, (1 - t) * q[i].y + t * q[i + 1].y};
        }
        return q[0];
    }

    static double nearer(const Piece &curve, const LxPointD &point, double t) {
        const std::vector<LxPointD> q(curve.p, curve.p + 4);
        std::vector<LxPointD> q1, q2;
        for (int j = 0; j < 3; ++j)
            q1.push_back(V2ScaleII(V2Sub(q[j + 1], q[j]), 3));
        for (int j = 0; j < 2; ++j)
            q2.push_back(V2ScaleII(V2Sub(q1[j + 1], q1[j]), 2));
        const LxPointD away = V2Sub(at(q, t), point);
        const LxPointD d1 = at(q1, t);
        const LxPointD d2 = at(q2, t);
        return t - V2Dot(&away, &d1) / (V2Dot(&d1, &d1) + V2Dot(&away, &d2));
    }

    double worst(int first, int last, const Piece &curve, const std::vector<double> &u, int &split) const {
        double maxError = 0;
        split = (last - first + 1) / 2;
        for (int i = first + 1; i < last; ++i) {
            const LxPointD away = V2Sub(at({curve.p, curve.p + 4}, u[i - first]), d[i]);
            if (const double dist = V2SquaredLength(&away); dist >= maxError) {
                maxError = dist;
                split = i;
            }
        }
        return maxError;
    }

    const std::vector<LxPointD> d;
    const double error;
};

// A run that turns by up to `turn` radians at each point.
std::vector<LxPointD> randomRun(Random &random, double turn) {
    std::vector<LxPointD> points = {{random.real(-100, 100), random.real(-100, 100)}};
    double direction = random.real(0, 6);
    for (int i = random.integer(1, 40); i > 0; --i) {
        direction += random.real(-turn, turn);
        const double step = random.real(1, 20);
        points.push_back(
            {points.back().x + step * std::cos(direction), points.back().y + step * std::sin(direction)});
    }
    return points;
}

} // namespace

TEST(CurveFit, RandomRunsMatchThePlainFit) {
    Random random(16);
    for (int round = 0; round < 2000; ++round) {
        const std::vector<LxPointD> points = randomRun(random, random.coin() ? 0.3 : 3.0);
        const double error = random.coin() ? random.real(0, 1) : random.real(1, 12);
        ASSERT_EQ(Stream(fitted(points, error)), Stream(PlainFit(points, error).path)) << round;
    }
}

// Between the error and its square Newton's method has a try; from the square on the run is split at once.
// The first curve misses the corner below by the same squared distance, whatever error is allowed.
TEST(CurveFit, ErrorAboveOneLeavesRoomForReparametrisation) {
    const std::vector<LxPointD> points = {{0, 0}, {10, 0}, {20, 0}, {30, 0}, {30, 10}, {30, 20}, {30, 30}};
    const auto triesAt = [&](double error) {
        const PlainFit plain(points, error);
        EXPECT_EQ(Stream(fitted(points, error)), Stream(plain.path)) << error;
        return plain.triesOfAll;
    };
    double low = 1;
    double high = 1000;
    EXPECT_EQ(PlainFit(points, high).splits, 0);
    EXPECT_EQ(triesAt(high), 0) << "good enough";
    // The least error that is good enough at once is just above the miss.
    while (high - low > 1e-9) {
        const double middle = (low + high) / 2;
        const PlainFit plain(points, middle);
        (plain.splits == 0 && plain.tries == 0 ? high : low) = middle;
    }
    const double miss = high;
    ASSERT_GT(miss, 1.1);
    EXPECT_EQ(triesAt(miss + 0.001), 0);
    EXPECT_GT(triesAt(miss - 0.001), 0);
    EXPECT_GT(triesAt(std::sqrt(miss) + 0.001), 0);
    EXPECT_EQ(triesAt(std::sqrt(miss) - 0.001), 0) << "split at once";
}

TEST(CurveFit, ErrorBelowOneSplitsAtEveryMiss) {
    Random random(17);
    for (int round = 0; round < 500; ++round) {
        const std::vector<LxPointD> points = randomRun(random, 1.0);
        const double error = random.real(0, 1);
        const PlainFit plain(points, error);
        ASSERT_EQ(plain.tries, 0);
        ASSERT_EQ(pieces(fitted(points, error)).size(), static_cast<size_t>(plain.splits) + 1);
    }
}

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
