// The two shaders that the library has: a gradient and a solid colour.

#include "gc/Shader.h"

#include "gc/Gradient.h"

namespace lx {
namespace {

void beginGradient(LxShader *shader, const double *bounds) {
    if (shader->data != nullptr)
        rebuild(*static_cast<LxGradient *>(shader->data), bounds);
}

} // namespace

void gradientColor(LxColor *out, LxShader *shader, int32_t x, int32_t y, int32_t coverage) {
    LxGradient_Color(out, static_cast<const LxGradient *>(shader->data), x, y);
    out->content.rgba = covered(out->content.rgba, coverage);
}

void solidColor(LxColor *out, LxShader *shader, int32_t, int32_t, int32_t coverage) {
    *out = LxColor_RGBA_t(covered(*static_cast<const LxRGBA *>(shader->data), coverage));
}

LxShader solidShader(LxRGBA &rgba) {
    return {nullptr, solidColor, nullptr, &rgba, constantColour};
}

} // namespace lx

void LxCreate_GradientShader(LxShader *shader, LxGradient *gradient) {
    if (shader != nullptr)
        *shader = {lx::beginGradient, lx::gradientColor, nullptr, gradient, 0};
}
