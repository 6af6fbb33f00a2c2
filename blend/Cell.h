// A cell is a combination of pixel layouts: of the result, of a, and of b. There are 27.
#pragma once

#include <cstdint>

#include <oxlume/LxPixelType.h>

namespace lx {

// The layouts that blend, numbered as their pixel types. A premultiplied picture counts as rgba.
enum class Layout : uint8_t { a = kLxPixelA, rgb = kLxPixelRGB, rgba = kLxPixelRGBA };
inline constexpr int layoutCount = 3;

// Bytes of a pixel.
constexpr int bytesOf(Layout layout) {
    return layout == Layout::a ? 1 : layout == Layout::rgb ? 3 : 4;
}

// Components of a pixel, alpha aside.
constexpr int coloursOf(Layout layout) {
    return layout == Layout::a ? 1 : 3;
}

struct Cell {
    Layout out, a, b;

    constexpr bool operator==(const Cell &) const = default;
};

} // namespace lx
