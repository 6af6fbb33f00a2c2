#include "tools/SvgValues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "foundation/Numeric.h"
#include "tools/SvgColorNames.h"

namespace tool {
namespace {

constexpr std::string_view blanks = " \t\r\n\f";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

LxRGBA rgba(double r, double g, double b, double a = 255) {
    const auto byte = [](double value) {
        return static_cast<uint8_t>(lx::roundToInt32(std::clamp(value, 0.0, 255.0)));
    };
    return LxColor_RGBA(byte(r), byte(g), byte(b), byte(a)).content.rgba;
}

std::optional<LxRGBA> hexColor(std::string_view digits) {
    unsigned value = 0;
    const char *const end = digits.data() + digits.size();
    if (std::from_chars(digits.data(), end, value, 16).ptr != end)
        return {};
    switch (digits.size()) {
    case 3:
        return rgba((value >> 8) * 17, (value >> 4 & 15) * 17, (value & 15) * 17);
    case 4:
        return rgba((value >> 12) * 17, (value >> 8 & 15) * 17, (value >> 4 & 15) * 17, (value & 15) * 17);
    case 6:
        return rgba(value >> 16, value >> 8 & 255, value & 255);
    case 8:
        return rgba(value >> 24, value >> 16 & 255, value >> 8 & 255, value & 255);
    default:
        return {};
    }
}

std::optional<LxRGBA> functionColor(std::string_view arguments) {
    double parts[3];
    NumberReader reader(arguments);
    for (double &part : parts) {
        const auto number = reader.number();
        if (!number)
            return {};
        part = *number;
        if (reader.rest().starts_with('%')) {
            part *= 2.55;
            reader = NumberReader(reader.rest().substr(1));
        }
    }
    const auto alpha = fractionFrom(
        reader.rest().substr(std::min(reader.rest().find_first_not_of(", "), reader.rest().size())));
    return rgba(parts[0], parts[1], parts[2], 255 * alpha.value_or(1));
}

LxMatrix affine(double a, double b, double c, double d, double e, double f) {
    return {a, c, e, b, d, f, 0, 0, 1};
}

LxMatrix moved(double x, double y) {
    return affine(1, 0, 0, 1, x, y);
}

// One transform by its name; nothing if its arguments are not those of the name.
std::optional<LxMatrix> transform(std::string_view name, const std::vector<double> &v) {
    const size_t n = v.size();
    const auto radians = [&](size_t i) { return v[i] * std::numbers::pi / 180; };
    if (name == "matrix" && n == 6)
        return affine(v[0], v[1], v[2], v[3], v[4], v[5]);
    if (name == "translate" && (n == 1 || n == 2))
        return moved(v[0], n == 2 ? v[1] : 0);
    if (name == "scale" && (n == 1 || n == 2))
        return affine(v[0], 0, 0, v[n - 1], 0, 0);
    if (name == "skewX" && n == 1)
        return affine(1, 0, std::tan(radians(0)), 1, 0, 0);
    if (name == "skewY" && n == 1)
        return affine(1, std::tan(radians(0)), 0, 1, 0, 0);
    if (name == "rotate" && (n == 1 || n == 3)) {
        const double s = std::sin(radians(0)), c = std::cos(radians(0));
        const LxMatrix turned = affine(c, s, -s, c, 0, 0);
        return n == 1 ? turned : product(product(moved(v[1], v[2]), turned), moved(-v[1], -v[2]));
    }
    return {};
}

} // namespace

std::string_view trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

void NumberReader::skipSeparators() {
    const size_t first = rest_.find_first_not_of(" \t\r\n\f,");
    rest_.remove_prefix(std::min(first, rest_.size()));
}

std::optional<double> NumberReader::number() {
    skipSeparators();
    std::string_view text = rest_;
    if (text.starts_with('+'))
        text.remove_prefix(1);
    const size_t digits = text.starts_with('-') && text.size() == rest_.size() ? 1 : 0;
    if (digits >= text.size() || (!isDigit(text[digits]) && text[digits] != '.'))
        return {};
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument)
        return {};
    rest_.remove_prefix(static_cast<size_t>(end - rest_.data()));
    return error == std::errc() ? value : 0.0;
}

std::optional<bool> NumberReader::flag() {
    skipSeparators();
    if (rest_.empty() || (rest_[0] != '0' && rest_[0] != '1'))
        return {};
    const bool set = rest_[0] == '1';
    rest_.remove_prefix(1);
    return set;
}

char NumberReader::letter() {
    skipSeparators();
    if (rest_.empty() || ((rest_[0] < 'a' || rest_[0] > 'z') && (rest_[0] < 'A' || rest_[0] > 'Z')))
        return 0;
    const char c = rest_[0];
    rest_.remove_prefix(1);
    return c;
}

std::optional<SvgLength> lengthFrom(std::string_view text) {
    NumberReader reader(text);
    const auto number = reader.number();
    if (!number)
        return {};
    struct Unit {
        std::string_view name;
        double pixels;
    };
    // Of text, which is not drawn, the usual size counts.
    static constexpr Unit units[] = {{"pt", 96.0 / 72}, {"pc", 16}, {"in", 96}, {"mm", 96 / 25.4},
                                     {"cm", 96 / 2.54}, {"em", 16}, {"ex", 8}};
    const std::string_view unit = trimmed(reader.rest());
    if (unit == "%")
        return SvgLength{*number / 100, true};
    for (const Unit &known : units)
        if (unit == known.name)
            return SvgLength{*number * known.pixels, false};
    return SvgLength{*number, false};
}

std::optional<double> fractionFrom(std::string_view text) {
    const auto length = lengthFrom(text);
    return length ? std::optional(std::clamp(length->value, 0.0, 1.0)) : std::nullopt;
}

std::optional<LxRGBA> colorFrom(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('#'))
        return hexColor(text.substr(1));
    for (const std::string_view function : {"rgb(", "rgba("})
        if (text.starts_with(function))
            return functionColor(text.substr(function.size()));
    const auto value = namedColor(text);
    return value ? std::optional(rgba(*value >> 16, *value >> 8 & 255, *value & 255)) : std::nullopt;
}

LxMatrix transformFrom(std::string_view text) {
    LxMatrix result = LxMatrix_0;
    for (;;) {
        const size_t open = text.find('(');
        const size_t close = text.find(')');
        if (close == std::string_view::npos || open > close)
            return result;
        std::vector<double> numbers;
        NumberReader reader(text.substr(open + 1, close - open - 1));
        // No transform has more than six; a longer list is none.
        for (auto number = reader.number(); number && numbers.size() < 7; number = reader.number())
            numbers.push_back(*number);
        const size_t name = text.find_first_not_of(" \t\r\n\f,");
        const auto next = transform(trimmed(text.substr(name, open - name)), numbers);
        if (!next)
            return result;
        result = product(result, *next);
        text.remove_prefix(close + 1);
    }
}

LxMatrix product(const LxMatrix &left, const LxMatrix &right) {
    LxMatrix result = left;
    LxMatrix_MulMat(&result, &right);
    return result;
}

} // namespace tool
