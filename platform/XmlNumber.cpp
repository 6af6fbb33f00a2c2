#include "platform/XmlNumber.h"

#include <charconv>
#include <limits>

namespace lx {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// The end of the digits from `i` on.
size_t skipDigits(std::string_view text, size_t i) {
    while (i < text.size() && isDigit(text[i]))
        ++i;
    return i;
}

// The power of ten of a number's first digit that is not 0, which tells too large from too small. The number
// is out of range, so it has such a digit.
bool isLarge(std::string_view number) {
    const size_t mark = number.find_first_of("eE");
    const std::string_view digits = number.substr(0, mark);
    const size_t point = std::min(digits.find('.'), digits.size());
    const size_t first = digits.find_first_of("123456789");
    long long exponent = 0;
    if (mark != std::string_view::npos) {
        std::string_view text = number.substr(mark + 1);
        if (text.starts_with('+'))
            text.remove_prefix(1);
        if (std::from_chars(text.data(), text.data() + text.size(), exponent).ec != std::errc())
            return !text.starts_with('-');
    }
    const auto place = static_cast<long long>(point) - static_cast<long long>(first);
    return exponent > -place; // no overflow: a place is far smaller than the largest exponent
}

} // namespace

double decimalNumber(std::string_view number) {
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc::result_out_of_range)
        return value;
    const double magnitude = isLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    return number.starts_with('-') ? -magnitude : magnitude;
}

double leadingNumber(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return 0;
    }
    const size_t start = text.starts_with('-') ? 1 : 0;
    size_t end = skipDigits(text, start);
    size_t digits = end - start;
    if (end < text.size() && text[end] == '.') {
        const size_t fraction = skipDigits(text, end + 1);
        digits += fraction - end - 1;
        end = fraction;
    }
    if (digits == 0)
        return 0;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        size_t exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-'))
            ++exponent;
        const size_t last = skipDigits(text, exponent);
        if (last > exponent)
            end = last;
    }
    return decimalNumber(text.substr(0, end));
}

} // namespace lx
