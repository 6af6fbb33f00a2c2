#include "tools/SvgPaint.h"

#include <algorithm>
#include <cmath>

#include "tools/SvgValues.h"

namespace tool {
namespace {

// A gradient may take what it lacks from another, which may do so too, and files name them in circles.
constexpr size_t longestChain = 8;

// No more stops of a gradient are read: every shape that it fills has to pay for them.
constexpr size_t mostStopsOfFile = 256;

std::vector<SvgStop> stopsOf(const lx::XmlNode &gradient) {
    std::vector<SvgStop> stops;
    for (lx::XmlNode node = gradient.firstChild(); node && stops.size() < mostStopsOfFile;
         node = node.next()) {
        if (nameOf(node) != "stop")
            continue;
        double position = fractionFrom(attributeOf(node, "offset")).value_or(0);
        if (!stops.empty())
            position = std::max(position, stops.back().position);
        LxRGBA color = colorFrom(propertyOf(node, "stop-color")).value_or(LxRGBA_Black);
        const double opacity = fractionFrom(propertyOf(node, "stop-opacity")).value_or(1);
        color.a = static_cast<uint8_t>(color.a * opacity + 0.5);
        stops.push_back({position, color});
    }
    return stops;
}

LxRGBA mix(const LxRGBA &a, const LxRGBA &b, double t) {
    const auto byte = [t](uint8_t from, uint8_t to) {
        return static_cast<uint8_t>(from + (to - from) * t + 0.5);
    };
    return LxColor_RGBA(byte(a.r, b.r), byte(a.g, b.g), byte(a.b, b.b), byte(a.a, b.a)).content.rgba;
}

// The colour at `t`, the outer stops reaching on.
LxRGBA colorAt(const std::vector<SvgStop> &stops, double t) {
    if (!(t > stops.front().position))
        return stops.front().color;
    for (size_t i = 1; i < stops.size(); ++i)
        if (t < stops[i].position)
            return mix(stops[i - 1].color, stops[i].color,
                       (t - stops[i - 1].position) / (stops[i].position - stops[i - 1].position));
    return stops.back().color;
}

// A place on the way or beyond its ends, brought to 0 to 1; what is not a number is the end.
double spread(double t, SvgSpread how) {
    if (!std::isfinite(t))
        return t < 0 ? 0 : 1;
    if (how == SvgSpread::repeat)
        return t - std::floor(t);
    if (how == SvgSpread::reflect)
        return std::abs(t - 2 * std::floor(t / 2 + 0.5));
    return std::clamp(t, 0.0, 1.0);
}

} // namespace

SvgShade::SvgShade(const std::vector<SvgStop> &stops, const Way &way, SvgSpread spread, double opacity)
    : way_(way), spread_(spread) {
    for (int i = 0; i < entries; ++i) {
        LxRGBA color = colorAt(stops, i / (entries - 1.0));
        color.a = static_cast<uint8_t>(color.a * opacity + 0.5);
        table_[static_cast<size_t>(i)] = color;
    }
}

double SvgShade::along(double x, double y) const {
    LxMatrix_MulCoordD(&way_.fromPixels, &x, &y);
    const double dx = x - way_.from.x, dy = y - way_.from.y;
    const double wayX = way_.to.x - way_.from.x, wayY = way_.to.y - way_.from.y;
    const double dot = dx * wayX + dy * wayY, square = wayX * wayX + wayY * wayY;
    if (!way_.radial)
        return dot / square;
    // The circles between the focus and the rim have the centres from + t * way and the radii t * radius: the
    // t of the one through this place.
    const double rest = way_.radius * way_.radius - square;
    return (std::sqrt(dot * dot + rest * (dx * dx + dy * dy)) - dot) / rest;
}

LxRGBA SvgShade::at(double x, double y) const {
    return table_[static_cast<size_t>(spread(along(x, y), spread_) * (entries - 1) + 0.5)];
}

SvgGradients::SvgGradients(const SvgElements &elements, double width, double height)
    : width_(width), height_(height) {
    for (const auto &[id, element] : elements.all())
        if (const std::string_view name = nameOf(element);
            name == "linearGradient" || name == "radialGradient")
            byId_.emplace(id, read(element));
}

SvgGradients::Gradient SvgGradients::read(const lx::XmlNode &element) {
    static constexpr std::string_view names[numberCount] = {"x1", "y1", "x2", "y2", "cx",
                                                            "cy", "r",  "fx", "fy"};
    Gradient gradient;
    gradient.radial = nameOf(element) == "radialGradient";
    gradient.base = referenceOf(element);
    if (const std::string_view units = attributeOf(element, "gradientUnits"); !units.empty())
        gradient.ofBox = units != "userSpaceOnUse";
    if (const std::string_view spread = attributeOf(element, "spreadMethod"); !spread.empty())
        gradient.spread = spread == "reflect"  ? SvgSpread::reflect
                          : spread == "repeat" ? SvgSpread::repeat
                                               : SvgSpread::pad;
    if (const std::string_view transform = attributeOf(element, "gradientTransform"); !transform.empty())
        gradient.transform = transformFrom(transform);
    for (size_t i = 0; i < numberCount; ++i)
        gradient.numbers[i] = lengthFrom(attributeOf(element, names[i]));
    gradient.stops = stopsOf(element);
    return gradient;
}

// The gradient with what it takes from others.
SvgGradients::Gradient SvgGradients::whole(std::string_view id) const {
    Gradient result = byId_.at(id);
    size_t links = 1;
    for (auto base = byId_.find(result.base); base != byId_.end() && links < longestChain;
         base = byId_.find(base->second.base), ++links) {
        const Gradient &other = base->second;
        const auto take = [](auto &value, const auto &otherValue) {
            if (!value)
                value = otherValue;
        };
        take(result.ofBox, other.ofBox);
        take(result.spread, other.spread);
        take(result.transform, other.transform);
        for (size_t i = 0; i < numberCount; ++i)
            take(result.numbers[i], other.numbers[i]);
        if (result.stops.empty())
            result.stops = other.stops;
    }
    return result;
}

std::unique_ptr<SvgShade> SvgGradients::make(std::string_view id, const LxRectD &box,
                                             const LxMatrix &toPixels, double opacity) const {
    const Gradient gradient = whole(id);
    const bool ofBox = gradient.ofBox.value_or(true);
    if (gradient.stops.empty() || (ofBox && !(box.x0 < box.x1 && box.y0 < box.y1)))
        return nullptr;
    LxMatrix matrix = toPixels;
    if (ofBox)
        matrix = product(matrix, {box.x1 - box.x0, 0, box.x0, 0, box.y1 - box.y0, box.y0, 0, 0, 1});
    matrix = product(matrix, gradient.transform.value_or(LxMatrix_0));
    const double width = ofBox ? 1 : width_, height = ofBox ? 1 : height_;
    const auto number = [&](Number n, double whole, double share) {
        return gradient.numbers[n].value_or(SvgLength{share, true}).of(whole);
    };

    SvgShade::Way way = {};
    LxMatrix_GetInverse(&way.fromPixels, &matrix);
    way.radial = gradient.radial;
    if (way.radial) {
        way.to = {number(centerX, width, 0.5), number(centerY, height, 0.5)};
        way.from = {gradient.numbers[focusX].value_or(SvgLength{way.to.x, false}).of(width),
                    gradient.numbers[focusY].value_or(SvgLength{way.to.y, false}).of(height)};
        way.radius = number(radius, std::hypot(width, height) / std::sqrt(2.0), 0.5);
        // A focus must lie inside the circle.
        constexpr double farthestFocus = 0.99;
        const double away = std::hypot(way.from.x - way.to.x, way.from.y - way.to.y);
        if (const double most = farthestFocus * way.radius; away > most)
            way.from = {way.to.x + (way.from.x - way.to.x) * most / away,
                        way.to.y + (way.from.y - way.to.y) * most / away};
    } else {
        way.from = {number(x1, width, 0), number(y1, height, 0)};
        way.to = {number(x2, width, 1), number(y2, height, 0)};
    }
    return std::make_unique<SvgShade>(gradient.stops, way, gradient.spread.value_or(SvgSpread::pad), opacity);
}

} // namespace tool
