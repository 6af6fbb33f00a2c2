#include "tools/SvgStyle.h"

#include <algorithm>

#include "tools/SvgValues.h"

namespace tool {
namespace {

SvgPaintStyle paintFrom(std::string_view text, const SvgPaintStyle &inherited, LxRGBA current,
                        const SvgGradients &gradients) {
    if (text.empty() || text == "inherit")
        return inherited;
    if (text == "none" || text == "transparent")
        return {SvgPaintStyle::none, {}, {}};
    if (text.starts_with("url(")) {
        const SvgUrl url = urlFrom(text);
        if (gradients.has(url.id))
            return {SvgPaintStyle::gradient, {}, url.id};
        // Another colour may be told for want of what is named.
        const auto color = colorFrom(url.rest);
        return color ? SvgPaintStyle{SvgPaintStyle::color, *color, {}}
                     : SvgPaintStyle{SvgPaintStyle::none, {}, {}};
    }
    if (text == "currentColor")
        return {SvgPaintStyle::color, current, {}};
    const auto color = colorFrom(text);
    return color ? SvgPaintStyle{SvgPaintStyle::color, *color, {}} : inherited;
}

// Lengths in turn; an odd number of them is told twice. None for a list that makes a whole line.
std::vector<double> dashesFrom(std::string_view text, double whole) {
    constexpr size_t most = 64;
    std::vector<double> dashes;
    double sum = 0;
    while (!trimmed(text).empty() && dashes.size() < most) {
        const size_t end = std::min(text.find_first_of(", \t\r\n"), text.size());
        if (end > 0) {
            const auto length = lengthFrom(text.substr(0, end));
            if (!length || !(length->of(whole) >= 0))
                return {};
            dashes.push_back(length->of(whole));
            sum += dashes.back();
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (!(sum > 0))
        return {};
    if (dashes.size() % 2 == 1) {
        const std::vector<double> once = dashes;
        dashes.insert(dashes.end(), once.begin(), once.end());
    }
    return dashes;
}

} // namespace

void SvgStyle::inherit(const lx::XmlNode &element, double whole, const SvgGradients &gradients) {
    const auto told = [&](const char *name) {
        const std::string_view value = propertyOf(element, name);
        return value == "inherit" ? std::string_view() : value;
    };
    color = colorFrom(told("color")).value_or(color);
    fill = paintFrom(told("fill"), fill, color, gradients);
    stroke = paintFrom(told("stroke"), stroke, color, gradients);
    fillOpacity = fractionFrom(told("fill-opacity")).value_or(fillOpacity);
    strokeOpacity = fractionFrom(told("stroke-opacity")).value_or(strokeOpacity);
    opacity *= fractionFrom(told("opacity")).value_or(1);
    if (const auto rule = told("fill-rule"); !rule.empty())
        fillRule = rule == "evenodd" ? SvgFillRule::evenOdd : SvgFillRule::nonZero;
    if (const auto rule = told("clip-rule"); !rule.empty())
        clipRule = rule == "evenodd" ? SvgFillRule::evenOdd : SvgFillRule::nonZero;
    if (const auto width = lengthFrom(told("stroke-width")))
        strokeWidth = width->of(whole);
    if (const auto value = told("stroke-linejoin"); !value.empty())
        join = value == "round" ? SvgJoin::round : value == "bevel" ? SvgJoin::bevel : SvgJoin::mitre;
    if (const auto value = told("stroke-linecap"); !value.empty())
        cap = value == "round" ? SvgCap::round : value == "square" ? SvgCap::square : SvgCap::butt;
    if (const auto limit = lengthFrom(told("stroke-miterlimit")))
        mitreLimit = limit->value;
    if (const auto value = told("stroke-dasharray"); !value.empty())
        dashes = dashesFrom(value, whole);
    if (const auto offset = lengthFrom(told("stroke-dashoffset")))
        dashOffset = offset->of(whole);
    if (const auto visibility = told("visibility"); !visibility.empty())
        visible = visibility == "visible";
    if (const auto transform = attributeOf(element, "transform"); !transform.empty())
        matrix = product(matrix, transformFrom(transform));
}

} // namespace tool
