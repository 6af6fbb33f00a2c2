// The gradients of an SVG file.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <oxlume/LxColor.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxRect.h>

#include "tools/SvgElement.h"
#include "tools/SvgValues.h"

namespace tool {

struct SvgStop {
    double position; // 0 to 1, rising
    LxRGBA color;
};

// What a gradient does behind its ends.
enum class SvgSpread { pad, reflect, repeat };

// A gradient laid out for one shape: the colour at any place of the picture.
class SvgShade {
public:
    struct Way {
        LxMatrix fromPixels; // to where the numbers below count
        bool radial;
        LxPointD from, to; // the ends of a line; the focus and the centre of a circle
        double radius;
    };

    SvgShade(const std::vector<SvgStop> &stops, const Way &way, SvgSpread spread, double opacity);

    LxRGBA at(double x, double y) const;

private:
    static constexpr int entries = 1024;

    double along(double x, double y) const;

    const Way way_;
    const SvgSpread spread_;
    std::array<LxRGBA, entries> table_; // from one end of the way to the other
};

// All gradients of a document, by their names; each is read once. The document must outlive them.
class SvgGradients {
public:
    // Percentages of gradients in the drawing's own units are of `width` and `height`.
    SvgGradients(const SvgElements &elements, double width, double height);

    bool has(std::string_view id) const { return byId_.contains(id); }

    // The gradient as it fills a shape with the bounds `box` in the drawing, which `toPixels` carries to the
    // picture. Null if there is no stop, or a box that cannot be filled.
    std::unique_ptr<SvgShade> make(std::string_view id, const LxRectD &box, const LxMatrix &toPixels,
                                   double opacity) const;

private:
    // The numbers of both kinds.
    enum Number { x1, y1, x2, y2, centerX, centerY, radius, focusX, focusY, numberCount };

    // What one gradient tells itself.
    struct Gradient {
        bool radial = false;
        std::string_view base; // the name of the one that it takes the rest from
        std::optional<bool> ofBox;
        std::optional<SvgSpread> spread;
        std::optional<LxMatrix> transform;
        std::optional<SvgLength> numbers[numberCount];
        std::vector<SvgStop> stops;
    };

    static Gradient read(const lx::XmlNode &element);
    Gradient whole(std::string_view id) const;

    double width_, height_;
    std::unordered_map<std::string_view, Gradient> byId_;
};

} // namespace tool
