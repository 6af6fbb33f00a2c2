// Contexts on a canvas, and colours for them.
#pragma once

#include <oxlume/LxGC.h>

#include "tests/gc/Recorder.h"
#include "tests/platform/quartz/Canvas.h"

namespace lx::test {

constexpr LxColor rgba(uint8_t r, uint8_t g, uint8_t b, uint8_t a) {
    LxColor color = {};
    color.type = kLxPixelRGBA;
    color.content.rgba = {r, g, b, a};
    return color;
}

inline constexpr LxColor redColor = rgba(255, 0, 0, 255);
inline constexpr LxColor blueColor = rgba(0, 0, 255, 255);

inline ContextHandle contextOn(CGContextRef target, LxRectD bounds = {0, 0, 12, 12}) {
    return ContextHandle(LxGC_CreateWithCGContextRef(target, bounds));
}

} // namespace lx::test
