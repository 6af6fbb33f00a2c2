// How whole-image operations walk pixels: always the true addresses, also where an image lives in its record.
#pragma once

#include <cstddef>
#include <cstdint>

#include <oxlume/LxPixelType.h>

#include "image/Image.h"

namespace lx {

// Bytes from one stored pixel to the next, and bytes of a colour that are stored in one; 0 for types 6 and 7,
// whose pixels mean nothing.
constexpr size_t storedBytes(uint32_t type) {
    switch (type) {
    case kLxPixelA:
        return 1;
    case kLxPixelRGB:
        return 3;
    case kLxPixelRGBA:
    case kLxPixelRGBAPremultiplied:
    case kLxPixelF:
    case kLxPixelL:
        return 4;
    default:
        return 0;
    }
}

inline size_t storedBytes(const LxImage &image) {
    return storedBytes(image.type);
}

// Calls `row` with the address of every stored row from the first; not at all for an image without pixels.
template <class Function>
void forEachStoredRow(LxImage &image, Function row) {
    uint8_t *const first = firstRow(image);
    if (first == nullptr)
        return;
    for (int32_t y = 0; y < height(image); ++y)
        row(first + ptrdiff_t{y} * image.rowBytes);
}

} // namespace lx
