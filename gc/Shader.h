// Shaders: where a fill gets its colours from.
#pragma once

#include <oxlume/LxGradient.h>

namespace lx {

// A flag of a shader: its colour is the same everywhere, so that a run can use one.
inline constexpr int32_t constantColour = 1;

// A shader of the colour whose four bytes r, g, b, a are at `rgba`, which must outlive it.
LxShader solidShader(LxRGBA &rgba);

// Coverage travels as alpha; at 255 the colour stays as it is.
inline void cover(LxColor &color, int32_t coverage) {
    uint8_t &alpha = color.content.rgba.a;
    alpha = static_cast<uint8_t>(((alpha + 1) * coverage) >> 8);
}

// The operations of the two kinds, by which a fill knows them.
void gradientColor(LxColor *out, LxShader *shader, int32_t x, int32_t y, int32_t coverage);
void solidColor(LxColor *out, LxShader *shader, int32_t x, int32_t y, int32_t coverage);

} // namespace lx
