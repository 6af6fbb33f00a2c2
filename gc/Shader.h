// Shaders: where a fill gets its colours from.
#pragma once

#include <oxlume/LxGradient.h>

namespace lx {

// A flag of a shader: its colour is the same everywhere, so that a run can use one.
inline constexpr int32_t constantColour = 1;

// A shader of the colour whose four bytes r, g, b, a are at `rgba`, which must outlive it.
LxShader solidShader(LxRGBA &rgba);

// Coverage travels as alpha; at 255 the colour stays as it is. Callers of a shader may give any number.
inline LxRGBA covered(LxRGBA color, int32_t coverage) {
    color.a = static_cast<uint8_t>((color.a + 1u) * static_cast<uint32_t>(coverage) >> 8);
    return color;
}

// The operations of the two kinds, by which a fill knows them.
void gradientColor(LxColor *out, LxShader *shader, int32_t x, int32_t y, int32_t coverage);
void solidColor(LxColor *out, LxShader *shader, int32_t x, int32_t y, int32_t coverage);

} // namespace lx
