// Numbers in XML's text, read the same whatever the process's locale.
#pragma once

#include <string_view>

namespace lx {

// The value of a text that is a decimal number as a whole: an optional "-", digits with an optional point,
// an optional exponent. Too large gives infinity, too small zero.
double decimalNumber(std::string_view number);

// The number at the start of a text, after blanks, with an optional sign: what follows it, such as a unit, is
// ignored, and so is an exponent without digits. 0 if there is none.
double leadingNumber(std::string_view text);

} // namespace lx
