// Fitting cubic curves to a run of points, after P. J. Schneider: least squares over the whole run, a few
// rounds of Newton's method on the points' parameters, and a split at the worst point where that fails.

#include <new>
#include <vector>

#include <oxlume/LxCubicBezier.h>

#include "geometry/Point.h"
#include "path/Path.h"

namespace lx {
namespace {

// A curve and its derivatives by their control points, up to the third degree.
template <int Degree>
struct Bezier {
    LxPointD points[Degree + 1];

    // De Casteljau's construction.
    LxPointD at(double t) const {
        Bezier work = *this;
        for (int level = Degree; level > 0; --level) {
            for (int i = 0; i < level; ++i)
                work.points[i] = sum(scaled(work.points[i], 1 - t), scaled(work.points[i + 1], t));
        }
        return work.points[0];
    }

    Bezier<Degree - 1> derivative() const {
        Bezier<Degree - 1> result;
        for (int i = 0; i < Degree; ++i)
            result.points[i] = scaled(difference(points[i + 1], points[i]), Degree);
        return result;
    }
};

using Cubic = Bezier<3>;

// The run of points that one curve is to follow, with the directions in which it leaves and arrives.
struct Run {
    int32_t first, last;
    LxPointD leaving, arriving;

    int32_t size() const { return last - first + 1; }
};

struct Deviation {
    double squaredDistance;
    int32_t split; // the worst point
};

class CurveFitter {
public:
    CurveFitter(const LxPointD *points, double error, LxPath &path)
        : points_(points), error_(error), path_(path) {}

    // Fits curves to the runs in order. A split puts both halves back, the first on top.
    void fit(const Run &whole) {
        std::vector<Run> runs = {whole};
        while (!runs.empty()) {
            const Run run = runs.back();
            runs.pop_back();
            int32_t split = 0;
            if (fitOne(run, split))
                continue;
            const LxPointD center = centerTangent(split);
            runs.push_back({split, run.last, {-center.x, -center.y}, run.arriving});
            runs.push_back({run.first, split, run.leaving, center});
        }
    }

private:
    // Adds a curve that is good enough and answers true, or tells where to split.
    bool fitOne(const Run &run, int32_t &split) {
        if (run.size() == 2) {
            const double third = distance(points_[run.first], points_[run.last]) / 3.0;
            add(curveOf(run, third, third));
            return true;
        }
        constexpr int rounds = 4;
        parametrise(run);
        for (int round = 0; round <= rounds; ++round) {
            if (round > 0)
                reparametrise(run, curve_);
            curve_ = leastSquares(run);
            const Deviation worst = worstPoint(run, curve_);
            if (worst.squaredDistance < error_) {
                add(curve_);
                return true;
            }
            split = worst.split;
            // The squared distance is compared with the error as given, and here with its square: below an
            // error of 1 this leaves no room for improvement.
            if (round == 0 && !(worst.squaredDistance < error_ * error_))
                break;
        }
        return false;
    }

    static double distance(const LxPointD &a, const LxPointD &b) { return length(difference(a, b)); }

    Cubic curveOf(const Run &run, double leavingLength, double arrivingLength) const {
        const LxPointD &first = points_[run.first];
        const LxPointD &last = points_[run.last];
        return {{first, sum(first, scaled(run.leaving, leavingLength)),
                 sum(last, scaled(run.arriving, arrivingLength)), last}};
    }

    void add(const Cubic &curve) {
        const auto &[p0, p1, p2, p3] = curve.points;
        append(path_, curveItem(p1.x, p1.y, p2.x, p2.y, p3.x, p3.y));
    }

    // Parameters by the length of the chords, from 0 to 1.
    void parametrise(const Run &run) {
        parameters_.assign(static_cast<size_t>(run.size()), 0.0);
        for (int32_t i = 1; i < run.size(); ++i)
            parameters_[i] =
                parameters_[i - 1] + distance(points_[run.first + i], points_[run.first + i - 1]);
        const double whole = parameters_.back();
        for (int32_t i = 1; i < run.size(); ++i)
            parameters_[i] = parameters_[i] / whole;
    }

    // One step of Newton's method for each parameter, toward the curve's nearest point.
    void reparametrise(const Run &run, const Cubic &curve) {
        const Bezier<2> first = curve.derivative();
        const Bezier<1> second = first.derivative();
        for (int32_t i = run.first; i <= run.last; ++i) {
            double &t = parameters_[i - run.first];
            const LxPointD away = difference(curve.at(t), points_[i]);
            const LxPointD d1 = first.at(t);
            const LxPointD d2 = second.at(t);
            t -= dot(away, d1) / (dot(d1, d1) + dot(away, d2));
        }
    }

    // The curve with the run's ends and end directions whose points at the parameters are nearest.
    Cubic leastSquares(const Run &run) const {
        const LxPointD &first = points_[run.first];
        const LxPointD &last = points_[run.last];
        double c00 = 0, c01 = 0, c11 = 0, x0 = 0, x1 = 0;
        for (int32_t i = 0; i < run.size(); ++i) {
            const double t = parameters_[i];
            const double s = 1 - t;
            const double b0 = s * s * s;
            const double b1 = 3 * t * (s * s);
            const double b2 = 3 * t * t * s;
            const double b3 = t * t * t;
            const LxPointD a0 = scaled(run.leaving, b1);
            const LxPointD a1 = scaled(run.arriving, b2);
            c00 += dot(a0, a0);
            c01 += dot(a0, a1);
            c11 += dot(a1, a1);
            const LxPointD rest =
                difference(points_[run.first + i], sum(scaled(first, b0 + b1), scaled(last, b2 + b3)));
            x0 += dot(a0, rest);
            x1 += dot(a1, rest);
        }
        double determinant = c00 * c11 - c01 * c01;
        if (determinant == 0)
            determinant = c00 * c11 * 1e-11;
        const double leaving = (x0 * c11 - x1 * c01) / determinant;
        const double arriving = (c00 * x1 - c01 * x0) / determinant;
        if (leaving < 0 || arriving < 0) {
            const double third = distance(last, first) / 3.0;
            return curveOf(run, third, third);
        }
        return curveOf(run, leaving, arriving);
    }

    // Of equally bad points the last.
    Deviation worstPoint(const Run &run, const Cubic &curve) const {
        Deviation worst = {0, run.size() / 2};
        for (int32_t i = run.first + 1; i < run.last; ++i) {
            const double d = squaredLength(difference(curve.at(parameters_[i - run.first]), points_[i]));
            if (d >= worst.squaredDistance)
                worst = {d, i};
        }
        // Distances that are not numbers name no point: the middle will do.
        if (worst.split <= run.first || worst.split >= run.last)
            worst.split = run.first + run.size() / 2;
        return worst;
    }

    // The mean direction of the chords at a point, against the run.
    LxPointD centerTangent(int32_t center) const {
        const LxPointD before = difference(points_[center - 1], points_[center]);
        const LxPointD after = difference(points_[center], points_[center + 1]);
        LxPointD tangent = scaled(sum(before, after), 0.5);
        V2Normalize(&tangent);
        return tangent;
    }

    const LxPointD *points_;
    const double error_;
    LxPath &path_;
    std::vector<double> parameters_; // of the run's points, on the curve
    Cubic curve_ = {};
};

LxPointD unitVector(const LxPointD &from, const LxPointD &to) {
    LxPointD v = difference(to, from);
    V2Normalize(&v);
    return v;
}

void fitCurves(const LxPointD *points, int32_t count, double error, LxPath &path) {
    const LxPointD leaving = unitVector(points[0], points[1]);
    const LxPointD arriving = unitVector(points[count - 1], points[count - 2]);
    append(path, moveItem(points[0].x, points[0].y));
    try {
        CurveFitter(points, error, path).fit({0, count - 1, leaving, arriving});
    } catch (const std::bad_alloc &) {
        // What was fitted so far stays, as everywhere when memory runs out.
    }
}

} // namespace
} // namespace lx

void LxCubicBezier_Fit(const LxPointD *points, int32_t count, double error, LxPath *path) {
    if (points != nullptr && path != nullptr && count >= 2)
        lx::fitCurves(points, count, error, *path);
}
