#include "tools/SvgStroke.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <utility>

#include "tools/Failure.h"

namespace tool {
namespace {

constexpr double pi = std::numbers::pi;

// What is hidden by less than this, in pixels, is left out.
constexpr double tolerance = 0.05;

LxPointD plus(LxPointD a, LxPointD b, double factor = 1) {
    return {a.x + b.x * factor, a.y + b.y * factor};
}

// ---- Dashes ----

// Cuts lines into dashes.
class Dasher {
public:
    Dasher(const SvgStyle &style, size_t &pointsLeft) : dashes_(style.dashes), pointsLeft_(pointsLeft) {
        double period = 0;
        for (const double length : dashes_)
            period += length;
        offset_ = std::fmod(style.dashOffset, period);
        if (!(offset_ >= 0))
            offset_ = std::isfinite(offset_) ? offset_ + period : 0;
    }

    std::vector<SvgLine> cut(const SvgLine &line) {
        result_.clear();
        index_ = 0;
        left_ = dashes_[0];
        double skipped = offset_;
        while (skipped > 0 && skipped >= left_) {
            skipped -= left_;
            next();
        }
        left_ -= skipped;
        if (isDash())
            begin(line.points[0]);
        const size_t n = line.points.size();
        for (size_t i = 0; i + (line.closed ? 0 : 1) < n; ++i)
            segment(line.points[i], line.points[(i + 1) % n]);
        return std::move(result_);
    }

private:
    bool isDash() const { return index_ % 2 == 0; }

    void next() {
        index_ = (index_ + 1) % dashes_.size();
        left_ = dashes_[index_];
    }

    void begin(LxPointD point) {
        result_.emplace_back();
        add(point);
    }

    void add(LxPointD point) {
        auto &points = result_.back().points;
        if (!points.empty() && points.back().x == point.x && points.back().y == point.y)
            return;
        if (pointsLeft_ == 0)
            throw Failure("too many points");
        --pointsLeft_;
        points.push_back(point);
    }

    void segment(LxPointD from, LxPointD to) {
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        double done = 0;
        while (length - done > left_) {
            done += left_;
            const double t = done / length;
            const LxPointD point = {from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t};
            if (isDash())
                add(point);
            next();
            if (isDash())
                begin(point);
        }
        left_ -= length - done;
        if (isDash())
            add(to);
    }

    const std::vector<double> &dashes_;
    size_t &pointsLeft_;
    double offset_ = 0;
    size_t index_ = 0; // of the current dash or gap
    double left_ = 0;  // of its length
    std::vector<SvgLine> result_;
};

// ---- Joins and ends ----

// Pieces that are laid over the corners and ends of an outline. They turn as the outline does, so that the
// non-zero rule makes one shape of all.
class Pieces {
public:
    Pieces(const SvgStyle &style, LxPath *path)
        : style_(style), half_(style.strokeWidth / 2),
          scale_(std::sqrt(std::abs(style.matrix.m0 * style.matrix.m4 - style.matrix.m1 * style.matrix.m3))),
          path_(path) {}

    void corner(LxPointD a, LxPointD b, LxPointD c) {
        const LxPointD u = direction(a, b), v = direction(b, c);
        const double cosine = u.x * v.x + u.y * v.y;
        // The way from the bevel to the corner of a round join.
        const double missing = half_ * (1 - std::sqrt(std::max(0.0, (1 + cosine) / 2)));
        if (!(missing * scale_ > tolerance))
            return;
        if (style_.join == SvgJoin::round) {
            circle(b);
            return;
        }
        const double limit = style_.mitreLimit;
        if (style_.join == SvgJoin::bevel || !(limit * limit * (1 + cosine) / 2 >= 1))
            return;
        // The outer side is the one that the line turns away from.
        const double side = u.x * v.y - u.y * v.x > 0 ? -1 : 1;
        const LxPointD first = plus(b, {-u.y, u.x}, side * half_),
                       second = plus(b, {-v.y, v.x}, side * half_);
        const double reach = side * half_ / (1 + cosine);
        const LxPointD tip = {b.x + (-u.y - v.y) * reach, b.y + (u.x + v.x) * reach};
        if (side > 0)
            polygon({b, second, tip, first});
        else
            polygon({b, first, tip, second});
    }

    void end(LxPointD from, LxPointD at) {
        if (style_.cap == SvgCap::round)
            circle(at);
        if (style_.cap != SvgCap::square)
            return;
        const LxPointD u = direction(from, at), across = {-u.y, u.x};
        polygon({plus(at, across, half_), plus(at, across, -half_), plus(plus(at, across, -half_), u, half_),
                 plus(plus(at, across, half_), u, half_)});
    }

    // A line without a length shows its ends alone.
    void dot(LxPointD at) {
        end({at.x - 1, at.y}, at);
        end({at.x + 1, at.y}, at);
    }

private:
    static LxPointD direction(LxPointD from, LxPointD to) {
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        return {(to.x - from.x) / length, (to.y - from.y) / length};
    }

    void circle(LxPointD center) {
        constexpr int fewest = 8, most = 180;
        const double wanted = pi / std::acos(std::max(0.0, 1 - tolerance / (half_ * scale_)));
        const int n = wanted < most ? std::max(fewest, static_cast<int>(wanted) + 1) : most;
        for (int i = 0; i < n; ++i) {
            const double angle = 2 * pi * i / n;
            add(plus(center, {std::cos(angle), std::sin(angle)}, half_), i == 0);
        }
        LxPath_AddClose(path_);
    }

    void polygon(std::initializer_list<LxPointD> points) {
        bool first = true;
        for (const LxPointD &point : points)
            add(point, std::exchange(first, false));
        LxPath_AddClose(path_);
    }

    void add(LxPointD point, bool first) {
        (first ? LxPath_AddMoveTo : LxPath_AddLineTo)(path_, point.x, point.y);
    }

    const SvgStyle &style_;
    const double half_, scale_;
    LxPath *const path_;
};

} // namespace

PathHandle strokeOf(const SvgShape &shape, const SvgStyle &style, size_t &pointsLeft) {
    PathHandle result(LxPath_Create()), outline(LxPath_Create()), extra(LxPath_Create());
    Pieces pieces(style, extra.get());
    const auto stroke = [&](const SvgLine &line) {
        const auto &p = line.points;
        const size_t n = p.size();
        if (n == 1) {
            pieces.dot(p[0]);
            return;
        }
        // Each line by itself: the library's paths go back to their first start after an open line.
        LxPath_MakeEmpty(outline.get());
        for (size_t i = 0; i < n; ++i)
            (i == 0 ? LxPath_AddMoveTo : LxPath_AddLineTo)(outline.get(), p[i].x, p[i].y);
        if (line.closed)
            LxPath_AddClose(outline.get());
        LxPath_Outline(outline.get(), &style.matrix, nullptr, style.strokeWidth, 0);
        LxPath_Add(result.get(), outline.get());
        for (size_t i = line.closed ? 0 : 1; i + (line.closed ? 0 : 1) < n; ++i)
            pieces.corner(p[(i + n - 1) % n], p[i], p[(i + 1) % n]);
        if (!line.closed) {
            pieces.end(p[1], p[0]);
            pieces.end(p[n - 2], p[n - 1]);
        }
    };
    for (const SvgLine &line : shape.lines()) {
        if (style.dashes.empty())
            stroke(line);
        else
            for (const SvgLine &dash : Dasher(style, pointsLeft).cut(line))
                stroke(dash);
    }
    LxPath_Transform(extra.get(), &style.matrix);
    LxPath_Add(result.get(), extra.get());
    return result;
}

} // namespace tool
