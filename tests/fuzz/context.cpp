// Sequences of calls on a context with one image or two: attributes, rectangles, matrices, gradients and all
// that draws.

#include "tests/fuzz/World.h"

using namespace lx::fuzz;

namespace {

Handle<LxImage> makeImage(Input &input) {
    const int32_t type = input.below(8), flipped = input.below(2);
    const int32_t width = input.below(40) + 1, height = input.below(40) + 1;
    return Handle<LxImage>(LxImage_Create(type, 0, 0, width, height, 1, flipped));
}

// Drawing of whole pixels takes as many steps as there are pixels on the way, also outside the picture, so
// its places stay near.
template <class... Places>
void drawNear(World &world, void (*draw)(LxGC *, Places...)) {
    constexpr int32_t before = 100; // the picture
    const std::tuple<Places...> places{static_cast<Places>(world.input.byte() - before)...};
    std::apply([&](Places... place) { draw(world.gc, place...); }, places);
}

template <auto draw>
constexpr Call nearCallOf = [](World &world) { drawNear(world, draw); };

constexpr Call calls[] = {
    callOf<LxGC_SetStrokeColor>,
    callOf<LxGC_SetStrokeWidth>,
    callOf<LxGC_SetStrokeStyle>,
    callOf<LxGC_SetStrokeBlend>,
    callOf<LxGC_SetStrokeGradient>,
    callOf<LxGC_SetFillColor>,
    callOf<LxGC_SetFillBlend>,
    callOf<LxGC_SetFillGradient>,
    callOf<LxGC_SetImageBlend>,
    callOf<LxGC_SetTextSize>,
    callOf<LxGC_SetTextFont>,
    callOf<LxGC_SetTextColor>,
    callOf<LxGC_SetTextJust>,
    callOf<LxGC_SetTextBlend>,
    callOf<LxGC_SetTextGradient>,
    callOf<LxGC_SetStrokeBlendMode>,
    callOf<LxGC_SetStrokeBlendChannel>,
    callOf<LxGC_SetStrokeBlendOpacity>,
    callOf<LxGC_SetFillBlendMode>,
    callOf<LxGC_SetFillBlendChannel>,
    callOf<LxGC_SetFillBlendOpacity>,
    callOf<LxGC_SetImageBlendMode>,
    callOf<LxGC_SetImageBlendChannel>,
    callOf<LxGC_SetImageBlendOpacity>,
    callOf<LxGC_SetTextBlendMode>,
    callOf<LxGC_SetTextBlendChannel>,
    callOf<LxGC_SetTextBlendOpacity>,
    callOf<LxGC_TestAttrFlag>,
    callOf<LxGC_SetAttrFlag>,
    callOf<LxGC_SetRenderMode>,
    callOf<LxGC_SetBoundsRectD>,
    callOf<LxGC_SetBoundsRectL>,
    callOf<LxGC_SetClipRectD>,
    callOf<LxGC_SetClipRectL>,
    callOf<LxGC_SetClip>,
    callOf<LxGC_SetOrigin>,
    callOf<LxGC_MatrixIdentity>,
    callOf<LxGC_MatrixMul>,
    callOf<LxGC_MatrixScale>,
    callOf<LxGC_MatrixTranslate>,
    callOf<LxGC_MatrixRotate>,
    callOf<LxGC_MatrixRotateDeg>,
    callOf<LxGC_InverseMatrix>,
    callOf<LxGC_TransposeL>,
    callOf<LxGC_TransposeD>,
    callOf<LxGC_Line>,
    callOf<LxGC_Frame>,
    callOf<LxGC_RoundFrame>,
    callOf<LxGC_Ellipse>,
    callOf<LxGC_Circle>,
    callOf<LxGC_Poly>,
    callOf<LxGC_Path>,
    nearCallOf<LxGC_HLineL>,
    nearCallOf<LxGC_VLineL>,
    nearCallOf<LxGC_LineL>,
    nearCallOf<LxGC_ALineL>,
    nearCallOf<LxGC_FrameL>,
    nearCallOf<LxGC_EllipseL>,
    callOf<LxGC_Fill>,
    callOf<LxGC_Clear>,
    callOf<LxGC_Sync>,
    callOf<LxGC_Flush>,
    callOf<LxGC_DrawImage>,
    callOf<LxGC_DrawImageAt>,
    callOf<LxGC_DrawImageWithMask>,
    callOf<LxGC_DrawImageClipped>,
    callOf<LxGC_DrawImageClippedWithMask>,
    callOf<LxGC_GetTextWidth>,
    callOf<LxGC_GetImage>,
    callOf<LxGradient_SetType>,
    callOf<LxGradient_AddColor>,
    callOf<LxPath_AddMoveTo>,
    callOf<LxPath_AddLineTo>,
    callOf<LxPath_AddQCurveTo>,
    callOf<LxPath_AddCurveTo>,
    callOf<LxPath_AddClose>,
    callOf<LxPath_AddRect>,
    callOf<LxPath_MakeEmpty>,
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    World world(data, size);
    for (auto &image : world.images)
        image = makeImage(world.input);
    for (auto &gradient : world.gradients)
        gradient.reset(LxGradient_Create());
    const bool isOwn = world.input.below(4) == 0;
    Handle<LxGC> own(isOwn ? LxGC_CreateWithImage(world.images[0].get(), world.next<LxRectD>()) : nullptr);
    world.gc = isOwn ? own.get() : LxImage_GC(world.images[0].get());
    if (world.input.below(4) == 0)
        LxGC_AddRenderer(world.gc, world.next<int32_t>() & 1, world.images[1].get(), nullptr);
    play(world, calls);
    return 0;
}
