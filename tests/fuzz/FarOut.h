// Numbers that take time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lx::fuzz {

// Whether a text holds numbers far beyond its small picture, and is to be passed by: drawing there fills the
// rasteriser's whole store, a thousand times the work of other inputs. Texts of one length are let through
// all the same.
inline bool isTooFarOut(const uint8_t *text, size_t size) {
    constexpr size_t letThrough = 64;
    if (size == letThrough)
        return false;
    const auto isDigit = [](uint8_t c) { return c >= '0' && c <= '9'; };
    size_t digits = 0;
    for (size_t i = 0; i < size; ++i) {
        digits = isDigit(text[i]) ? digits + 1 : 0;
        const bool isExponent = (text[i] | 32) == 'e' && i > 0 && i + 1 < size &&
                                (isDigit(text[i - 1]) || text[i - 1] == '.') &&
                                (isDigit(text[i + 1]) || text[i + 1] == '+');
        if (digits > 4 || isExponent)
            return true;
    }
    return false;
}

} // namespace lx::fuzz
