// Sequences of calls on three small images of all types, with masks, segments and tiles, and of blends
// between them.
//
// Input: for each image its type, size and place, then the calls.

#include <cstring>

#include "image/Image.h"
#include "tests/fuzz/World.h"

using namespace lx::fuzz;

namespace {

Handle<LxImage> makeImage(Input &input) {
    const int32_t type = input.below(8), flipped = input.below(2), clear = input.below(2);
    const int32_t x = input.byte() / 8, y = input.byte() / 8;
    const int32_t width = input.below(40), height = input.below(40); // also none
    Handle<LxImage> image(LxImage_Create(type, x, y, x + width, y + height, clear, flipped));
    if (clear == 0)
        LxImage_Fill(image.get(), LxColor_RGBA(input.byte(), input.byte(), input.byte(), input.byte()));
    return image;
}

// Markers at places that the input names, and then the scan.
constexpr Call readMarks = [](World &world) {
    LxImage *const image = world.images[static_cast<size_t>(world.input.below(3))].get();
    const LxColor marker = LxColor_RGBA(0, 255, 255, 255);
    LxImage_SetPixelAt(image, 0, 0, marker);
    for (int32_t i = world.input.below(10); i > 0; --i) {
        const bool isColumn = world.input.below(2) == 0;
        const int32_t place = world.input.below(40);
        LxImage_SetPixelAt(image, isColumn ? 2 : place, isColumn ? place : 2, marker);
    }
    LxImage_ReadSegmentMarks(image);
};

constexpr Call copy = [](World &world) {
    if (LxImage *const image = LxImage_Copy(world.next<LxImage *>()))
        world.images[static_cast<size_t>(world.input.below(3))].reset(image);
};

constexpr Call create = [](World &world) {
    world.images[static_cast<size_t>(world.input.below(3))] = makeImage(world.input);
};

constexpr Call calls[] = {
    create,
    copy,
    readMarks,
    callOf<LxImage_DataSize>,
    callOf<LxImage_MemSize>,
    callOf<LxImage_Center>,
    callOf<LxImage_SetEmpty>,
    callOf<LxImage_SetFlipped>,
    callOf<LxImage_MoveTo>,
    callOf<LxImage_MutableMoveTo>,
    callOf<LxImage_SegmentRectL>,
    callOf<LxImage_SegmentW>,
    callOf<LxImage_SegmentH>,
    callOf<LxImage_SegmentX>,
    callOf<LxImage_SegmentY>,
    callOf<LxImage_SegmentFlag>,
    callOf<LxImage_SetSegmentFlag>,
    callOf<LxImage_Tile>,
    callOf<LxImage_TileNum>,
    callOf<LxImage_TileSize>,
    callOf<LxImage_SetTile>,
    callOf<LxImage_TileRectL>,
    callOf<LxImage_Pointer>,
    callOf<LxImage_PointerLine>,
    callOf<LxImage_SetPixelAt>,
    callOf<LxImage_BlendPixelAt>,
    callOf<LxImage_Fill>,
    callOf<LxImage_Clear>,
    callOf<LxImage_Add>,
    callOf<LxImage_PremultiplyAlpha>,
    callOf<LxImage_BlendColor>,
    callOf<LxImage_SetSpan>,
    callOf<LxImage_Frame>,
    callOf<LxImage_GenerateChequerboard>,
    callOf<LxImage_FlipHorizontal>,
    callOf<LxImage_FlipHorizontalinRect>,
    callOf<LxImage_FlipVertical>,
    callOf<LxImage_FlipVerticalinRect>,
    callOf<LxImage_Flip>,
    callOf<LxImage_FlipinRect>,
    callOf<LxBlend_Image_Image_Image>,
    callOf<LxBlend_Image_Image>,
    callOf<LxBlend_Image>,
    callOf<LxBlend_Image_Pixel>,
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    World world(data, size);
    for (auto &image : world.images)
        image = makeImage(world.input);
    play(world, calls);
    return 0;
}
