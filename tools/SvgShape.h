// The shapes of an SVG file as straight lines. Curves are cut here, to the resolution of the picture: what is
// drawn is the same whatever units a file draws in.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <oxlume/LxPoint.h>

namespace tool {

struct SvgLine {
    std::vector<LxPointD> points; // no two in a row are the same
    bool closed = false;
};

class SvgShape {
public:
    // More points than `pointsLeft`, in all shapes that count it down, are a Failure. `scale` is the number
    // of pixels to a unit.
    SvgShape(double scale, size_t &pointsLeft) : scale_(scale), pointsLeft_(pointsLeft) {}

    void moveTo(LxPointD to);
    void lineTo(LxPointD to);
    void curveTo(LxPointD control1, LxPointD control2, LxPointD to);
    void arcTo(double radiusX, double radiusY, double degrees, bool large, bool sweep, LxPointD to);
    void close();

    void rectangle(double x, double y, double width, double height, double radiusX, double radiusY);
    void ellipse(LxPointD center, double radiusX, double radiusY);
    void polygon(std::string_view points, bool closed);
    void pathData(std::string_view data); // up to the first error, as browsers draw it

    const std::vector<SvgLine> &lines() const { return lines_; }
    LxPointD current() const { return current_; }

private:
    void arc(LxPointD center, double radiusX, double radiusY, double tilt, double start, double sweep);
    void add(LxPointD point);

    double scale_;
    size_t &pointsLeft_;
    std::vector<SvgLine> lines_;
    LxPointD start_ = {}, current_ = {};
    bool open_ = false; // the last line takes points
};

} // namespace tool
