// What the attributes of an SVG file say: numbers, lengths, colours, transforms.
#pragma once

#include <optional>
#include <string_view>

#include <oxlume/LxColor.h>
#include <oxlume/LxMatrix.h>

namespace tool {

std::string_view trimmed(std::string_view text);

// Reads a list of numbers that are separated by blanks, commas or nothing but their own signs and points.
class NumberReader {
public:
    explicit NumberReader(std::string_view text) : rest_(text) {}

    std::optional<double> number(); // nothing at the end, and in front of what is no number
    std::optional<bool> flag();     // a lone 0 or 1, which need not be separated from what follows
    char letter();                  // a letter, or 0 if none comes next
    std::string_view rest() const { return rest_; }

private:
    void skipSeparators();
    std::string_view rest_;
};

// A length in pixels of 1/96 inch, or a share of a whole.
struct SvgLength {
    double value;
    bool share;

    double of(double whole) const { return share ? value * whole : value; }
};

// Nothing if the text begins with no number.
std::optional<SvgLength> lengthFrom(std::string_view text);

// A number, or a percentage of 1, held to 0 to 1.
std::optional<double> fractionFrom(std::string_view text);

// "#rgb", "#rrggbb", "rgb(r, g, b)", each with an alpha or without, or a name. Nothing for anything else.
std::optional<LxRGBA> colorFrom(std::string_view text);

// The transforms of a list, multiplied; those from the first that cannot be read on are left out.
LxMatrix transformFrom(std::string_view text);

LxMatrix product(const LxMatrix &left, const LxMatrix &right);

} // namespace tool
