#include "tools/SvgPaint.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "tools/SvgValues.h"

namespace tool {
namespace {

constexpr int mostStops = 10;

// A gradient may take what it lacks from another, which may do so too, and files name them in circles.
constexpr size_t longestChain = 8;

// No more stops of a gradient are read: every shape that it fills has to pay for them.
constexpr size_t mostStopsOfFile = 256;

std::vector<SvgStop> stopsOf(const lx::XmlNode &gradient) {
    std::vector<SvgStop> stops;
    for (lx::XmlNode node = gradient.firstChild(); node && stops.size() < mostStopsOfFile;
         node = node.next()) {
        const std::string_view name = node.type() == lx::XmlNode::element ? node.name() : "";
        if (name != "stop" && name != "svg:stop")
            continue;
        double position = fractionFrom(attributeOf(node, "offset")).value_or(0);
        if (!stops.empty())
            position = std::max(position, stops.back().position);
        LxRGBA color = colorFrom(propertyOf(node, "stop-color")).value_or(LxRGBA_Black);
        color.a =
            static_cast<uint8_t>(255 * fractionFrom(propertyOf(node, "stop-opacity")).value_or(1) + 0.5);
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

// The part from `first` to `last` of a gradient's way, laid out from 0 to 1.
std::vector<SvgStop> part(const std::vector<SvgStop> &stops, double first, double last) {
    std::vector<SvgStop> result = {{0, colorAt(stops, first)}};
    for (const SvgStop &stop : stops) {
        const double position = (stop.position - first) / (last - first);
        if (position > 0 && position < 1)
            result.push_back({position, stop.color});
    }
    if (last < first)
        std::reverse(result.begin() + 1, result.end());
    result.push_back({1, colorAt(stops, last)});
    if (result.size() <= mostStops)
        return result;
    result.clear();
    for (int i = 0; i < mostStops; ++i) {
        const double position = i / (mostStops - 1.0);
        result.push_back({position, colorAt(stops, first + (last - first) * position)});
    }
    return result;
}

GradientHandle gradientOf(int32_t type, const std::vector<SvgStop> &stops) {
    GradientHandle gradient(LxGradient_Create());
    LxGradient_SetType(gradient.get(), type, kLxGradientLinear);
    int32_t index = 0;
    for (const SvgStop &stop : stops)
        LxGradient_AddColor(gradient.get(), LxColor_RGBA_t(stop.color), index++, stop.position, 0.5);
    return gradient;
}

// A gradient's own geometry: how far along its way, 0 to 1, a pixel lies.
struct Way {
    LxMatrix fromPixels;
    bool radial;
    LxPointD from, to; // the ends of a line; the centre of a circle
    double radius;

    double at(double x, double y) const {
        LxMatrix_MulCoordD(&fromPixels, &x, &y);
        if (radial)
            return std::hypot(x - from.x, y - from.y) / radius;
        const double dx = to.x - from.x, dy = to.y - from.y;
        return ((x - from.x) * dx + (y - from.y) * dy) / (dx * dx + dy * dy);
    }
};

GradientHandle linear(const Way &way, const std::vector<SvgStop> &stops, const LxRectD &p) {
    const double origin = way.at(p.x0, p.y0);
    const double across = way.at(p.x1, p.y0) - origin, down = way.at(p.x0, p.y1) - origin;
    const double width = p.x1 - p.x0, height = p.y1 - p.y0;
    const double share = width / (width + height);
    struct Fit {
        int32_t type;
        double first, last, error; // the error at the corners between
    };
    const Fit fits[] = {
        {kLxGradientAcross, origin + down / 2, origin + down / 2 + across, std::abs(down) / 2},
        {kLxGradientDown, origin + across / 2, origin + across / 2 + down, std::abs(across) / 2},
        {kLxGradientDiagonal, origin, origin + across + down, std::abs(across - (across + down) * share)},
        {kLxGradientDiagonalUp, origin + across, origin + down, std::abs(across + (down - across) * share)}};
    const Fit &best = *std::min_element(std::begin(fits), std::end(fits),
                                        [](const Fit &a, const Fit &b) { return a.error < b.error; });
    // A line without a length has no way: its last colour is everywhere.
    if (!std::isfinite(best.first) || !std::isfinite(best.last))
        return gradientOf(kLxGradientDown, {{0, stops.back().color}});
    if (best.first == best.last)
        return gradientOf(kLxGradientDown, {{0, colorAt(stops, best.first)}});
    return gradientOf(best.type, part(stops, best.first, best.last));
}

// From the middle of the nearer sides to the middle of the shape. The library lays the stops over half the
// width, so those of a flat shape are drawn together to half the height.
GradientHandle radial(const Way &way, const std::vector<SvgStop> &stops, const LxRectD &p) {
    const double width = p.x1 - p.x0, height = p.y1 - p.y0;
    const LxPointD middle = {(p.x0 + p.x1) / 2, (p.y0 + p.y1) / 2};
    const LxPointD side = width <= height ? LxPointD{p.x0, middle.y} : LxPointD{middle.x, p.y0};
    std::vector<SvgStop> inward;
    // Not the tenth stop: unless it stands at the very end, it passes on to the first colour again.
    constexpr int stopsInward = mostStops - 1;
    for (int i = 0; i < stopsInward; ++i) {
        const double t = i / (stopsInward - 1.0);
        const double along = way.at(side.x + (middle.x - side.x) * t, side.y + (middle.y - side.y) * t);
        inward.push_back({t * std::min(1.0, height / width), colorAt(stops, std::isnan(along) ? 1 : along)});
    }
    return gradientOf(kLxGradientInward, inward);
}

} // namespace

std::string_view attributeOf(const lx::XmlNode &element, std::string_view name) {
    for (lx::XmlAttribute a = element.firstAttribute(); a; a = a.next())
        if (a.name() == name)
            return a.value();
    return {};
}

std::string_view propertyOf(const lx::XmlNode &element, std::string_view name) {
    std::string_view style = attributeOf(element, "style");
    while (!style.empty()) {
        const std::string_view declaration = style.substr(0, style.find(';'));
        style.remove_prefix(std::min(style.size(), declaration.size() + 1));
        const size_t colon = declaration.find(':');
        if (colon != std::string_view::npos && trimmed(declaration.substr(0, colon)) == name)
            return trimmed(declaration.substr(colon + 1));
    }
    return trimmed(attributeOf(element, name));
}

SvgGradients::SvgGradients(const lx::XmlNode &document, double width, double height)
    : width_(width), height_(height) {
    lx::XmlNode node = document;
    while (node) {
        const std::string_view name = node.type() == lx::XmlNode::element ? node.name() : "";
        if (name.ends_with("linearGradient") || name.ends_with("radialGradient"))
            byId_.emplace(attributeOf(node, "id"), read(node));
        lx::XmlNode next = node.firstChild();
        while (!next && node) {
            next = node.next();
            node = node.parent();
        }
        node = next;
    }
}

SvgGradients::Gradient SvgGradients::read(const lx::XmlNode &element) {
    static constexpr std::string_view names[numberCount] = {"x1", "y1", "x2", "y2", "cx", "cy", "r"};
    Gradient gradient;
    gradient.radial = std::string_view(element.name()).ends_with("radialGradient");
    for (const std::string_view name : {"xlink:href", "href"})
        if (const std::string_view base = attributeOf(element, name); base.starts_with('#'))
            gradient.base = base.substr(1);
    if (const std::string_view units = attributeOf(element, "gradientUnits"); !units.empty())
        gradient.ofBox = units != "userSpaceOnUse";
    if (const std::string_view transform = attributeOf(element, "gradientTransform"); !transform.empty())
        gradient.transform = transformFrom(transform);
    for (size_t i = 0; i < numberCount; ++i)
        gradient.numbers[i] = lengthFrom(attributeOf(element, names[i]));
    gradient.stops = stopsOf(element);
    return gradient;
}

std::vector<const SvgGradients::Gradient *> SvgGradients::chain(std::string_view id) const {
    std::vector<const Gradient *> gradients;
    for (auto found = byId_.find(id); found != byId_.end() && gradients.size() < longestChain;
         found = byId_.find(found->second.base))
        gradients.push_back(&found->second);
    return gradients;
}

GradientHandle SvgGradients::make(std::string_view id, const LxRectD &box, const LxMatrix &toPixels,
                                  const LxRectD &pixels, double opacity) const {
    // What no gradient of the chain tells stays as it is here.
    bool ofBox = true;
    LxMatrix transform = LxMatrix_0;
    SvgLength numbers[numberCount] = {{0, true},   {0, true},   {1, true},  {0, true},
                                      {0.5, true}, {0.5, true}, {0.5, true}};
    std::vector<SvgStop> stops;
    const auto gradients = chain(id);
    for (auto gradient = gradients.rbegin(); gradient != gradients.rend(); ++gradient) {
        ofBox = (*gradient)->ofBox.value_or(ofBox);
        transform = (*gradient)->transform.value_or(transform);
        for (size_t i = 0; i < numberCount; ++i)
            numbers[i] = (*gradient)->numbers[i].value_or(numbers[i]);
        if (!(*gradient)->stops.empty())
            stops = (*gradient)->stops;
    }
    if (stops.empty())
        return {};
    for (SvgStop &stop : stops)
        stop.color.a = static_cast<uint8_t>(stop.color.a * opacity + 0.5);

    LxMatrix matrix = toPixels;
    if (ofBox)
        matrix = product(matrix, {box.x1 - box.x0, 0, box.x0, 0, box.y1 - box.y0, box.y0, 0, 0, 1});
    matrix = product(matrix, transform);
    const double width = ofBox ? 1 : width_, height = ofBox ? 1 : height_;
    Way way = {};
    LxMatrix_GetInverse(&way.fromPixels, &matrix);
    way.radial = gradients.front()->radial;
    if (way.radial) {
        way.from = {numbers[centerX].of(width), numbers[centerY].of(height)};
        way.radius = numbers[radius].of(std::hypot(width, height) / std::sqrt(2.0));
        return radial(way, stops, pixels);
    }
    way.from = {numbers[x1].of(width), numbers[y1].of(height)};
    way.to = {numbers[x2].of(width), numbers[y2].of(height)};
    return linear(way, stops, pixels);
}

} // namespace tool
