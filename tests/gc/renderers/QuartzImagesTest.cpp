// What the Quartz renderer makes of images and text.
#include <cstring>

#include <oxlume/LxImage.h>
#include <oxlume/LxNativeImage.h>

#include "image/Image.h"
#include "tests/gc/renderers/QuartzSupport.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

// ---- Images ----

TEST(QuartzDrawImage, DrawsPixelsAtTheTransposedPosition) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    const ImageHandle image(LxImage_Create(kLxPixelRGB, 4, 5, 7, 7, 1, 0));
    LxImage_Fill(image.get(), blueColor);
    LxGC_DrawImage(gc.get(), image.get());
    canvas.expectBox(4, 5, 7, 7, blue);

    Canvas moved(12, 12);
    const ContextHandle other = contextOn(moved);
    LxGC_SetOrigin(other.get(), 1, 2); // the renderer is not told: the position alone moves
    LxGC_DrawImageAt(other.get(), 3, 3, image.get());
    moved.expectBox(4, 5, 7, 7, blue);
}

TEST(QuartzDrawImage, GoesThroughTheMatrixTwice) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    const ImageHandle image = makeImage(kLxPixelRGB, 1, 1);
    LxGC_MatrixScale(gc.get(), 2, 2);
    LxGC_DrawImageAt(gc.get(), 1, 2, image.get()); // at (2, 4), which the context doubles again
    canvas.expectBox(4, 8, 6, 10, black);
}

TEST(QuartzDrawImage, TakesTheRectanglesSizeWithoutSmoothing) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    const ImageHandle image = makeImage(kLxPixelRGB, 2, 1);
    const uint8_t bytes[6] = {255, 0, 0, 0, 0, 255};
    std::memcpy(LxImage_Data(image.get()), bytes, 6);
    LxGC_DrawImageClipped(gc.get(), 1, 2, image.get(), {100, 100, 108, 103}); // 8 by 3
    for (int32_t y = 0; y < 12; ++y)
        for (int32_t x = 0; x < 12; ++x) {
            const bool inside = x >= 1 && x < 9 && y >= 2 && y < 5;
            EXPECT_EQ(canvas.at(x, y), !inside ? white : x < 5 ? red : blue) << x << ", " << y;
        }
}

TEST(QuartzDrawImage, ReadsFloatsAsFourBytes) {
    Canvas canvas(12, 12, nothing);
    const ContextHandle gc = contextOn(canvas);
    const ImageHandle image = makeImage(kLxPixelF, 2, 2);
    const uint8_t bytes[4] = {10, 20, 30, 255};
    for (int32_t pixel = 0; pixel < 4; ++pixel)
        std::memcpy(static_cast<uint8_t *>(LxImage_Data(image.get())) + 4 * pixel, bytes, 4);
    LxGC_DrawImageAt(gc.get(), 5, 5, image.get());
    canvas.expectBox(5, 5, 7, 7, {10, 20, 30, 255}, nothing);
}

TEST(QuartzDrawImage, DoesNotLookAtTheBlend) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    const ImageHandle image = makeImage(kLxPixelRGB, 3, 3);
    LxGC_SetImageBlendOpacity(gc.get(), 10);
    LxGC_SetImageBlendMode(gc.get(), 0);
    LxGC_DrawImageAt(gc.get(), 1, 1, image.get());
    canvas.expectBox(1, 1, 4, 4, black);
}

TEST(QuartzDrawImage, DrawsTheMaskFirstAndClipsNothing) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    const ImageHandle image = makeImage(kLxPixelRGBA, 4, 4);
    LxImage_Fill(image.get(), rgba(0, 0, 0, 0));
    const ImageHandle mask = makeImage(kLxPixelA, 4, 4); // paints through everywhere
    CGContextSetRGBFillColor(canvas, 0, 1, 0, 1);
    LxGC_DrawImageWithMask(gc.get(), 2, 2, image.get(), mask.get());
    canvas.expectBox(2, 2, 6, 6, green);

    LxImage_Fill(mask.get(), LxColor_A(255)); // paints nothing; the image is there all the same
    LxImage_Fill(image.get(), redColor);
    LxGC_DrawImageWithMask(gc.get(), 2, 2, image.get(), mask.get());
    canvas.expectBox(2, 2, 6, 6, red);

    LxImage_Fill(mask.get(), LxColor_A(0));
    LxGC_DrawImageClippedWithMask(gc.get(), 0, 0, image.get(), mask.get(), {0, 0, 12, 12});
    canvas.expectAll(red);
}

TEST(QuartzDrawImage, DrawsTheHandleOfANativeImage) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    const ImageHandle image(LxImage_NativeCGImage(kLxPixelRGBA, 0, 0, 3, 3, 0, 0, 0));
    LxImage_Fill(image.get(), rgba(255, 0, 0, 255)); // alpha first: blue
    LxGC_DrawImageAt(gc.get(), 1, 1, image.get());
    canvas.expectBox(1, 1, 4, 4, blue);
}

TEST(QuartzDrawImage, AForeignHandleIsNotDrawn) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    const ImageHandle image = makeImage(kLxPixelRGBA, 3, 3);
    const void *object[4] = {&object};
    image->native = kLxNativeNSImage;
    image->nativeHandle = object;
    LxGC_DrawImageAt(gc.get(), 1, 1, image.get());
    canvas.expectAll(white);
}

TEST(QuartzDrawImage, TakesNullImages) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_DrawImage(gc.get(), nullptr);
    LxGC_DrawImageWithMask(gc.get(), 1, 1, nullptr, nullptr);
    const ImageHandle mask = makeImage(kLxPixelA, 4, 4);
    LxGC_DrawImageWithMask(gc.get(), 1, 1, nullptr, mask.get());
    canvas.expectAll(white);
}

// ---- Text ----

TEST(QuartzDrawText, IsHelveticaAtTenWhateverTheContextSays) {
    Canvas plain(60, 20), set(60, 20), own(60, 20);
    LxGC_DrawTextWithLength(contextOn(plain).get(), 4, 15, "Sheen", 5);
    const ContextHandle gc = contextOn(set);
    LxGC_SetTextSize(gc.get(), 30);
    LxGC_SetTextFont(gc.get(), 7);
    LxGC_SetTextJust(gc.get(), 1);
    LxGC_SetTextBlendOpacity(gc.get(), 10);
    LxGC_DrawTextWithLength(gc.get(), 4, 15, "Sheen", 5);
    CGContextSelectFont(own, "Helvetica", 10, kCGEncodingMacRoman);
    CGContextShowTextAtPoint(own, 4, 15, "Sheen", 5);
    EXPECT_GT(own.ink(), 255 * 20);
    EXPECT_EQ(plain.pixels(), own.pixels());
    EXPECT_EQ(set.pixels(), own.pixels());
}

TEST(QuartzDrawText, TakesTheTextColourAndKeepsTheFillColour) {
    Canvas canvas(60, 20);
    const ContextHandle gc = contextOn(canvas);
    CGContextSetRGBFillColor(canvas, 0, 0, 1, 1);
    LxGC_SetTextColor(gc.get(), redColor);
    LxGC_DrawTextWithLength(gc.get(), 4, 15, "Sheen", 5);
    EXPECT_GT(canvas.ink(), 0);
    for (const Pixel &pixel : canvas.pixels())
        EXPECT_EQ(pixel.r, 255);
    CGContextFillRect(canvas, {0, 0, 60, 20});
    canvas.expectAll(blue);
}

TEST(QuartzDrawText, NeedsALength) {
    Canvas canvas(60, 20);
    const ContextHandle gc = contextOn(canvas);
    LxGC_DrawText(gc.get(), 4, 15, "Sheen");
    LxGC_DrawTextWithLength(gc.get(), 4, 15, "Sheen", -5);
    LxGC_DrawTextWithLength(gc.get(), 4, 15, nullptr, 5);
    canvas.expectAll(white);
}
