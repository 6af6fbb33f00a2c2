#include "tools/SvgShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tools/Failure.h"
#include "tools/SvgValues.h"

namespace tool {
namespace {

constexpr double pi = std::numbers::pi;

// How far a straight piece may lie from its curve, in pixels.
constexpr double tolerance = 0.05;
constexpr double maxPieces = 500;

// Held to what is sensible; what is not a number is one piece.
int pieces(double n) {
    return n > 1 ? static_cast<int>(std::ceil(std::min(n, maxPieces))) : 1;
}

LxPointD mix(LxPointD a, LxPointD b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

// The point as far behind `center` as `point` is in front of it.
LxPointD mirrored(LxPointD point, LxPointD center) {
    return {2 * center.x - point.x, 2 * center.y - point.y};
}

double bend(LxPointD a, LxPointD b, LxPointD c) {
    return std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y);
}

// ---- Path data ----

// Plays the commands of path data onto a shape.
class PathData {
public:
    PathData(SvgShape &shape, std::string_view text) : shape_(shape), reader_(text) {}

    void play() {
        char command = reader_.letter();
        if (command != 'm' && command != 'M')
            return;
        while (command != 0) {
            relative_ = command >= 'a';
            const char kind = relative_ ? static_cast<char>(command - 'a' + 'A') : command;
            if (!item(kind))
                return;
            if (const char next = reader_.letter())
                command = next;
            else if (kind == 'Z' || reader_.rest().empty())
                return;
            else if (kind == 'M') // further points are lines
                command = relative_ ? 'l' : 'L';
        }
    }

private:
    // The next number; one that is missing ends the drawing.
    double number() {
        const auto value = reader_.number();
        good_ = good_ && value;
        return value.value_or(0);
    }
    LxPointD point() {
        const double x = number(), y = number();
        const LxPointD from = shape_.current();
        return relative_ ? LxPointD{from.x + x, from.y + y} : LxPointD{x, y};
    }

    bool item(char kind) {
        const LxPointD from = shape_.current();
        // What a smooth curve's first control point mirrors: the last one of a curve of its own kind.
        const LxPointD before =
            last_ == kind || (last_ == 'C' && kind == 'S') || (last_ == 'Q' && kind == 'T')
                ? mirrored(control_, from)
                : from;
        switch (kind) {
        case 'M':
            return draw([this, to = point()] { shape_.moveTo(to); }, kind);
        case 'L':
            return draw([this, to = point()] { shape_.lineTo(to); }, kind);
        case 'H':
            return draw([&, x = number()] { shape_.lineTo({relative_ ? from.x + x : x, from.y}); }, kind);
        case 'V':
            return draw([&, y = number()] { shape_.lineTo({from.x, relative_ ? from.y + y : y}); }, kind);
        case 'C': {
            const LxPointD first = point();
            return curve(first, kind);
        }
        case 'S':
            return curve(before, 'C');
        case 'Q': {
            const LxPointD control = point();
            return quadratic(from, control);
        }
        case 'T':
            return quadratic(from, before);
        case 'A':
            return arc();
        case 'Z':
            return draw([this] { shape_.close(); }, kind);
        default:
            return false;
        }
    }

    template <class Action>
    bool draw(Action action, char kind) {
        if (good_)
            action();
        last_ = kind;
        return good_;
    }

    bool curve(LxPointD control1, char kind) {
        control_ = point();
        const LxPointD to = point();
        return draw([&] { shape_.curveTo(control1, control_, to); }, kind);
    }

    bool quadratic(LxPointD from, LxPointD control) {
        const LxPointD to = point();
        control_ = control;
        return draw([&] { shape_.curveTo(mix(from, control, 2.0 / 3), mix(to, control, 2.0 / 3), to); }, 'Q');
    }

    bool arc() {
        const double radiusX = number(), radiusY = number(), degrees = number();
        const auto large = reader_.flag(), sweep = reader_.flag();
        const LxPointD to = point();
        good_ = good_ && large && sweep;
        return draw([&] { shape_.arcTo(radiusX, radiusY, degrees, *large, *sweep, to); }, 'A');
    }

    SvgShape &shape_;
    NumberReader reader_;
    bool relative_ = false;
    bool good_ = true;
    char last_ = 0;         // the kind of the last item: C for all cubic curves, Q for all quadratic ones
    LxPointD control_ = {}; // the last control point
};

} // namespace

void SvgShape::add(LxPointD point) {
    auto &points = lines_.back().points;
    if (!points.empty() && points.back().x == point.x && points.back().y == point.y)
        return;
    if (pointsLeft_ == 0)
        throw Failure("too many points");
    --pointsLeft_;
    points.push_back(point);
}

void SvgShape::moveTo(LxPointD to) {
    open_ = false;
    start_ = current_ = to;
}

void SvgShape::lineTo(LxPointD to) {
    if (!open_) {
        lines_.emplace_back();
        open_ = true;
        add(current_);
    }
    add(to);
    current_ = to;
}

void SvgShape::close() {
    if (open_) {
        lines_.back().closed = true;
        auto &points = lines_.back().points;
        if (points.size() > 1 && points.back().x == points.front().x && points.back().y == points.front().y)
            points.pop_back();
    }
    open_ = false;
    current_ = start_;
}

void SvgShape::curveTo(LxPointD control1, LxPointD control2, LxPointD to) {
    const LxPointD from = current_;
    const double most = std::max(bend(from, control1, control2), bend(control1, control2, to));
    const int n = pieces(std::sqrt(0.75 * most * scale_ / tolerance));
    for (int i = 1; i < n; ++i) {
        const double t = static_cast<double>(i) / n;
        const LxPointD middle = mix(control1, control2, t);
        const LxPointD a = mix(mix(from, control1, t), middle, t);
        const LxPointD b = mix(middle, mix(control2, to, t), t);
        lineTo(mix(a, b, t));
    }
    lineTo(to);
}

// Behind the current point, which is where the arc starts.
void SvgShape::arc(LxPointD center, double radiusX, double radiusY, double tilt, double start, double sweep) {
    const double step = std::sqrt(8 * tolerance / (std::max(radiusX, radiusY) * scale_));
    const int n = pieces(std::max(std::abs(sweep) / step, std::abs(sweep) * 4 / pi));
    const double s = std::sin(tilt), c = std::cos(tilt);
    for (int i = 1; i <= n; ++i) {
        const double angle = start + sweep * i / n;
        const double x = radiusX * std::cos(angle), y = radiusY * std::sin(angle);
        lineTo({center.x + c * x - s * y, center.y + s * x + c * y});
    }
}

void SvgShape::arcTo(double radiusX, double radiusY, double degrees, bool large, bool sweep, LxPointD to) {
    radiusX = std::abs(radiusX);
    radiusY = std::abs(radiusY);
    const LxPointD from = current_;
    // Half the way between the ends, in the ellipse's own axes and radii: a chord of the unit circle.
    const double tilt = degrees * pi / 180;
    const double s = std::sin(tilt), c = std::cos(tilt);
    const double dx = (from.x - to.x) / 2, dy = (from.y - to.y) / 2;
    double x = (c * dx + s * dy) / radiusX, y = (c * dy - s * dx) / radiusY;
    const double half = std::hypot(x, y);
    if (!(half > 0) || !std::isfinite(half)) { // one point, or a radius of 0
        lineTo(to);
        return;
    }
    // Radii that do not reach are stretched until they do.
    if (half > 1) {
        radiusX *= half;
        radiusY *= half;
        x /= half;
        y /= half;
    }
    const double length = std::min(half, 1.0);
    const double away = std::sqrt(1 - length * length) / length * (large == sweep ? -1 : 1);
    const double cx = away * y, cy = -away * x; // the circle's centre
    const double start = std::atan2(y - cy, x - cx);
    double turn = std::atan2(-y - cy, -x - cx) - start;
    if (sweep && turn < 0)
        turn += 2 * pi;
    else if (!sweep && turn > 0)
        turn -= 2 * pi;
    const LxPointD center = {(from.x + to.x) / 2 + c * cx * radiusX - s * cy * radiusY,
                             (from.y + to.y) / 2 + s * cx * radiusX + c * cy * radiusY};
    arc(center, radiusX, radiusY, tilt, start, turn);
    current_ = to;
}

void SvgShape::rectangle(double x, double y, double width, double height, double radiusX, double radiusY) {
    const double right = x + width, bottom = y + height;
    radiusX = std::min(radiusX, width / 2);
    radiusY = std::min(radiusY, height / 2);
    moveTo({x + radiusX, y});
    const bool round = radiusX > 0 && radiusY > 0;
    const auto corner = [&](double cx, double cy, double start) {
        if (round)
            arc({cx, cy}, radiusX, radiusY, 0, start, pi / 2);
    };
    if (!round)
        moveTo({x, y});
    lineTo({round ? right - radiusX : right, y});
    corner(right - radiusX, y + radiusY, -pi / 2);
    lineTo({right, round ? bottom - radiusY : bottom});
    corner(right - radiusX, bottom - radiusY, 0);
    lineTo({round ? x + radiusX : x, bottom});
    corner(x + radiusX, bottom - radiusY, pi / 2);
    if (round)
        lineTo({x, y + radiusY});
    corner(x + radiusX, y + radiusY, pi);
    close();
}

void SvgShape::ellipse(LxPointD center, double radiusX, double radiusY) {
    moveTo({center.x + radiusX, center.y});
    arc(center, radiusX, radiusY, 0, 0, 2 * pi);
    close();
}

void SvgShape::polygon(std::string_view points, bool closed) {
    NumberReader reader(points);
    for (bool first = true;; first = false) {
        const auto x = reader.number(), y = reader.number();
        if (!x || !y)
            break;
        if (first)
            moveTo({*x, *y});
        else
            lineTo({*x, *y});
    }
    if (closed)
        close();
}

void SvgShape::pathData(std::string_view data) {
    PathData(*this, data).play();
}

} // namespace tool
