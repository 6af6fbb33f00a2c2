// Contexts that draw into images, call by call.

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <oxlume/LxGC.h>
#include <oxlume/LxGradient.h>

#include "gc/Context.h"
#include "gc/Renderer.h"
#include "image/Image.h"
#include "tests/gc/Recorder.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

namespace {

// A clear image of 8 by 6 and its own context, which strokes in white.
class ImageDrawing : public testing::Test {
protected:
    ImageDrawing() { LxGC_SetStrokeColor(gc_, LxColor_RGBA_White); }

    uint8_t alphaAt(int32_t x, int32_t y) const {
        LxColor color = {};
        LxImage_PixelAt(image_.get(), x, y, &color);
        return color.content.rgba.a;
    }

    // The image's rows: '.' for clear, '#' for opaque, '+' for what is between. Clears the image.
    std::vector<std::string> take() {
        std::vector<std::string> rows;
        for (int32_t y = 0; y < height(*image_); ++y) {
            rows.emplace_back();
            for (int32_t x = 0; x < width(*image_); ++x)
                rows.back() += alphaAt(x, y) == 0 ? '.' : alphaAt(x, y) == 255 ? '#' : '+';
        }
        LxImage_Clear(image_.get());
        return rows;
    }

    ImageHandle image_ = makeImage(kLxPixelRGBA, 8, 6);
    LxGC *gc_ = LxImage_GC(image_.get());
};

using Picture = std::vector<std::string>;

const Picture nothing(6, "........");

} // namespace

TEST_F(ImageDrawing, ALineIsAThinQuadrilateral) {
    LxGC_Line(gc_, 2, 3, 6, 3);
    // One pixel wide around y = 3: half of the rows on both sides.
    EXPECT_EQ(take(), (Picture{"........", "........", "..++++..", "..++++..", "........", "........"}));
    LxGC_Line(gc_, 2, 3.5, 6, 3.5);
    EXPECT_EQ(take(), (Picture{"........", "........", "........", "..####..", "........", "........"}));
    LxGC_SetRenderMode(gc_, kLxRenderFill); // A line has no inside.
    LxGC_Line(gc_, 2, 3.5, 6, 3.5);
    EXPECT_EQ(take(), nothing);
}

TEST_F(ImageDrawing, ShapesGoThroughMatrixAndClip) {
    LxGC_SetRenderMode(gc_, kLxRenderFill);
    LxGC_SetFillColor(gc_, LxColor_RGBA_White);
    LxGC_MatrixTranslate(gc_, 1, 1);
    LxGC_SetClipRectL(gc_, 0, 0, 4, 6);
    LxGC_Frame(gc_, 1, 1, 9, 3);
    EXPECT_EQ(take(), (Picture{"........", "........", "..##....", "..##....", "........", "........"}));
}

TEST_F(ImageDrawing, AFrameOfPixelsIsFilledOneRowBelowItsOutline) {
    LxGC_SetRenderMode(gc_, kLxRenderFill | kLxRenderStroke);
    LxGC_FrameL(gc_, 1, 1, 5, 4);
    EXPECT_EQ(take(), (Picture{"........", ".#####..", ".#####..", ".#####..", ".#####..", "........"}));
    LxGC_SetRenderMode(gc_, kLxRenderStroke);
    LxGC_FrameL(gc_, 1, 1, 5, 4);
    EXPECT_EQ(take(), (Picture{"........", ".####...", ".#..#...", ".####...", "........", "........"}));
}

TEST_F(ImageDrawing, RowsAndLinesOfPixels) {
    LxGC_HLineL(gc_, 5, 8, 2);
    EXPECT_EQ(take(), (Picture{"........", "........", ".....###", "........", "........", "........"}));
    LxGC_HLineL(gc_, 0, 7, 6);
    EXPECT_EQ(take(), nothing);
    LxGC_HLineL(gc_, 8, 12, 2); // On purpose: turned around, it reaches the last pixel.
    EXPECT_EQ(take(), (Picture{"........", "........", ".......#", "........", "........", "........"}));
    LxGC_LineL(gc_, 1, 1, 4, 4);
    EXPECT_EQ(take(), (Picture{"........", ".#......", "..#.....", "...#....", "....#...", "........"}));
    LxGC_LineL(gc_, 3, 3, 3, 3);
    EXPECT_EQ(take(), (Picture{"........", "........", "........", "...#....", "........", "........"}));
}

TEST_F(ImageDrawing, LinesOfPixelsHaveNoGradients) {
    LxGradient *gradient = LxGradient_Create();
    LxGC_SetStrokeGradient(gc_, gradient);
    LxGC_LineL(gc_, 1, 1, 4, 4);
    EXPECT_EQ(take(), nothing);
    LxGC_HLineL(gc_, 1, 4, 1); // Rows do not look.
    EXPECT_EQ(take()[1], ".####...");
    LxGC_SetStrokeGradient(gc_, nullptr);
    LxGradient_Delete(gradient);
}

TEST_F(ImageDrawing, CallsThatNoRendererOrNoImageDraws) {
    LxGC_SetRenderMode(gc_, kLxRenderFill | kLxRenderStroke);
    LxGC_VLineL(gc_, 2, 0, 5);
    LxGC_EllipseL(gc_, 0, 0, 7, 5);
    LxGC_DrawText(gc_, 1, 5, "words");
    LxGC_DrawTextWithLength(gc_, 1, 5, "words", 5);
    LxGC_Flush(gc_);
    EXPECT_EQ(take(), nothing);
}

TEST_F(ImageDrawing, FillAndClearReachTheWholeTarget) {
    LxGC_SetClipRectL(gc_, 2, 2, 3, 3);
    LxGC_Fill(gc_, LxColor_RGBA_White);
    EXPECT_EQ(take(), Picture(6, "########"));
    LxGC_Fill(gc_, LxColor_RGBA_White);
    LxGC_Clear(gc_);
    EXPECT_EQ(take(), nothing);
}

TEST_F(ImageDrawing, ImagesAreMovedByTheMatrixAndNotScaled) {
    const ImageHandle stamp(LxImage_Create(kLxPixelRGBA, 1, 1, 3, 3, 1, 0));
    LxImage_Fill(stamp.get(), LxColor_RGBA_White);
    LxGC_MatrixScale(gc_, 2, 2);
    LxGC_DrawImage(gc_, stamp.get());
    EXPECT_EQ(take(), (Picture{"........", "........", "..##....", "..##....", "........", "........"}));
    EXPECT_EQ(LxImage_x(stamp.get()), 1);
    LxGC_DrawImageClipped(gc_, 1, 1, stamp.get(), LxRectL{3, 0, 8, 6});
    EXPECT_EQ(take(), (Picture{"........", "........", "...#....", "...#....", "........", "........"}));
}

TEST_F(ImageDrawing, ASecondRendererDrawsTheSameOnceMore) {
    const RecordingKinds kinds;
    Recorder recorder;
    ASSERT_EQ(LxGC_AddRenderer(gc_, recordsBasics, &recorder, nullptr), 1);
    LxGC_Line(gc_, 2, 3.5, 6, 3.5);
    EXPECT_EQ(take()[3], "..####..");
    EXPECT_EQ(recorder.take(), (Calls{"path (M 2 3.5, L 6 3.5)"}));
    image_.reset(); // While the kinds are there to delete their renderer.
    EXPECT_EQ(recorder.take(), (Calls{"delete 6"}));
}

TEST_F(ImageDrawing, ARenderersPixelIsBlendedIntoTheImage) {
    LxRenderer *const renderer = gc_->renderers[0];
    const LxColor color = LxColor_RGBA_White;
    const LxBlend blend = LxBlend(2, 255);
    renderer->pixel(renderer, 3, 1, &color, &blend);
    renderer->pixel(renderer, 8, 1, &color, &blend); // outside
    EXPECT_EQ(take(), (Picture{"........", "...#....", "........", "........", "........", "........"}));
}

TEST_F(ImageDrawing, ACopyOfAnImageWithAContextHasOneOfItsOwn) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, 0, 0, 4, 4, 1, 0));
    const LxGC *const gc = LxImage_GC(image.get());
    const ImageHandle copy(LxImage_Copy(image.get()));
    ASSERT_NE(copy->gc, nullptr) << "made by the copying";
    EXPECT_NE(copy->gc, gc);
    LxGC_Fill(LxImage_GC(copy.get()), LxColor_RGBA_White);
    EXPECT_EQ(static_cast<const uint8_t *>(LxImage_ConstData(image.get()))[0], 0);
    EXPECT_EQ(static_cast<const uint8_t *>(LxImage_ConstData(copy.get()))[0], 255);
}

TEST(ImageContexts, OfNoImageDrawNothing) {
    const ContextHandle gc(LxGC_CreateWithImage(nullptr, {0, 0, 10, 10}));
    LxGC_SetRenderMode(gc.get(), 3);
    LxGC_Frame(gc.get(), 0, 0, 5, 5);
    LxGC_LineL(gc.get(), 0, 0, 0, 0);
    LxGC_Clear(gc.get());
    EXPECT_EQ(LxGC_BoundsRect(gc.get()).x1, 0);
}

TEST(ImageContexts, ACopyOfAnImageHasItsOwnIfTheImageHasOne) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, 4, 5, 12, 11, 1, 0));
    EXPECT_EQ(ImageHandle(LxImage_Copy(image.get()))->gc, nullptr);
    LxGC *const gc = LxImage_GC(image.get());
    const LxRectD clip = LxGC_ClipRect(gc);
    LxGC_SetClipRectL(gc, 0, 0, 1, 1); // stays with the first
    const ImageHandle copy(LxImage_Copy(image.get()));
    ASSERT_NE(copy->gc, nullptr);
    EXPECT_NE(copy->gc, gc);
    EXPECT_EQ(LxGC_ClipRect(copy->gc).x1, clip.x1);
    EXPECT_EQ(LxGC_ClipRect(copy->gc).y1, clip.y1);
    LxGC_Fill(copy->gc, LxColor_RGBA_White);
    LxColor color = {};
    LxImage_PixelAt(copy.get(), 7, 5, &color);
    EXPECT_EQ(color.content.rgba.a, 255);
    LxImage_PixelAt(image.get(), 7, 5, &color);
    EXPECT_EQ(color.content.rgba.a, 0);
}
