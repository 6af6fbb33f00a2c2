#include <gtest/gtest.h>
#include <oxlume/LxGC.h>

#include "gc/Context.h"
#include "tests/gc/Recorder.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

namespace {

class Draw : public testing::Test {
protected:
    // What one call, made on a context and harmlessly on none, gives to its renderer.
    template <class Function, class... Arguments>
    Calls callsOf(Function function, Arguments... arguments) {
        function(nullptr, arguments...);
        function(gc_, arguments...);
        return recorder_.take();
    }

    RecordingKinds kinds_;
    Recorder recorder_;
    ContextHandle handle_ = makeContext({0, 0, 100, 50}, recordsAll, recorder_);
    LxGC *gc_ = handle_.get();
};

} // namespace

TEST_F(Draw, ShapesComeAsTheyStand) {
    EXPECT_EQ(callsOf(LxGC_Line, 1.5, 2, -3, 4.25), (Calls{"line 1.5 2 -3 4.25"}));
    EXPECT_EQ(callsOf(LxGC_Frame, 30, 20, 10, 5), (Calls{"frame 30 20 10 5 0 0"}));
    EXPECT_EQ(callsOf(LxGC_RoundFrame, 30, 20, 10, 5, 3, 4), (Calls{"frame 30 20 10 5 3 4"}));
    EXPECT_EQ(callsOf(LxGC_Ellipse, 1, 2, 3, 4), (Calls{"ellipse 1 2 3 4"}));
    EXPECT_EQ(callsOf(LxGC_Circle, 1, 2, -3), (Calls{"ellipse 1 2 -3 -3"}));
    const LxPointD points[] = {{1, 2}, {3, 4}};
    EXPECT_EQ(callsOf(LxGC_Poly, points, 2), (Calls{"poly from 1 2 2"}));
    LxPath *path = LxPath_Create();
    LxPath_AddMoveTo(path, 5, 6);
    EXPECT_EQ(callsOf(LxGC_Path, path), (Calls{"path (M 5 6)"}));
    LxPath_Delete(path);
}

TEST_F(Draw, NothingButTheMatrixIsTransformedHere) {
    LxGC_MatrixScale(gc_, 10, 10);
    recorder_.take();
    EXPECT_EQ(callsOf(LxGC_Line, 1, 2, 3, 4), (Calls{"line 1 2 3 4"}));
    EXPECT_EQ(callsOf(LxGC_FrameL, 1, 2, 300, 400), (Calls{"frameL 1 2 300 400"}));
    EXPECT_EQ(callsOf(LxGC_EllipseL, 1, 2, 300, 400), (Calls{"ellipseL 1 2 300 400"}));
    EXPECT_EQ(callsOf(LxGC_DrawImageAt, 1, 2, nullptr),
              (Calls{"drawImage 1 2 no image no image no rect blend 2 255 6"}));
}

TEST_F(Draw, WholeTargets) {
    EXPECT_EQ(callsOf(LxGC_Fill, LxColor_RGB(1, 2, 3)), (Calls{"fill color 1: 1 2 3 0"}));
    EXPECT_EQ(callsOf(LxGC_Clear), (Calls{"fill color 5: 0 0 0 0"}));
    EXPECT_EQ(callsOf(LxGC_Sync), (Calls{"sync"}));
    EXPECT_EQ(callsOf(LxGC_Flush), (Calls{"sync", "flush"}));
}

TEST_F(Draw, ImagesComeWithTheImageBlend) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, -7, 9, 5, 30, 1, 0));
    const ImageHandle mask = makeImage(kLxPixelA, 3, 3);
    LxGC_SetImageBlend(gc_, LxBlend_WithChannel(5, 100, 1));
    const LxRectL rect = {1, 2, 3, 4};
    EXPECT_EQ(callsOf(LxGC_DrawImage, image.get()),
              (Calls{"drawImage -7 9 image of 12 columns no image no rect blend 5 100 1"}));
    EXPECT_EQ(callsOf(LxGC_DrawImageAt, 40, 50, image.get()),
              (Calls{"drawImage 40 50 image of 12 columns no image no rect blend 5 100 1"}));
    EXPECT_EQ(callsOf(LxGC_DrawImageWithMask, 40, 50, image.get(), mask.get()),
              (Calls{"drawImage 40 50 image of 12 columns image of 3 columns no rect blend 5 100 1"}));
    EXPECT_EQ(callsOf(LxGC_DrawImageClipped, 40, 50, image.get(), rect),
              (Calls{"drawImage 40 50 image of 12 columns no image rect 1 2 3 4 blend 5 100 1"}));
    EXPECT_EQ(callsOf(LxGC_DrawImageClippedWithMask, 40, 50, image.get(), mask.get(), rect),
              (Calls{"drawImage 40 50 image of 12 columns image of 3 columns rect 1 2 3 4 blend 5 100 1"}));
    EXPECT_EQ(callsOf(LxGC_DrawImage, nullptr),
              (Calls{"drawImage 0 0 no image no image no rect blend 5 100 1"}));
}

TEST_F(Draw, TextWithoutALengthHasNone) {
    EXPECT_EQ(callsOf(LxGC_DrawText, 1.5, 2, "words"), (Calls{"drawText 1.5 2 words 0"}));
    EXPECT_EQ(callsOf(LxGC_DrawTextWithLength, 1.5, 2, "words", 5), (Calls{"drawText 1.5 2 words 5"}));
}

TEST_F(Draw, ReservedEntriesReachNoRenderer) {
    const uint16_t wide[] = {'w', 0};
    LxGC_DrawTextInRectW(gc_, {0, 0, 10, 10}, wide, 1);
    EXPECT_EQ(LxGC_GetTextWidth(gc_, "words"), 0.0);
    EXPECT_EQ(LxGC_GetTextWidthWithLength(gc_, "words", 5), 0.0);
    EXPECT_EQ(LxGC_GetImage(gc_), nullptr);
    EXPECT_EQ(LxGC_GetTextWidth(nullptr, nullptr), 0.0);
    EXPECT_EQ(LxGC_GetTextWidthWithLength(nullptr, nullptr, 0), 0.0);
    EXPECT_EQ(LxGC_GetImage(nullptr), nullptr);
    LxGC_DrawTextInRectW(nullptr, {0, 0, 10, 10}, nullptr, 0);
    EXPECT_EQ(recorder_.calls, Calls());
}

TEST_F(Draw, EachRendererIsCalledInTurn) {
    // One list for both, so that it shows the order.
    LxGC_AddRenderer(gc_, recordsBasics, &recorder_, nullptr);
    LxGC_Line(gc_, 1, 2, 3, 4);
    EXPECT_EQ(recorder_.take(), (Calls{"line 1 2 3 4", "path (M 1 2, L 3 4)"}));

    gc_->renderers[1]->sync = gc_->renderers[0]->sync;
    gc_->renderers[1]->flush = gc_->renderers[0]->flush;
    LxGC_Flush(gc_);
    EXPECT_EQ(recorder_.take(), (Calls{"sync", "flush", "sync", "flush"}));
}

TEST_F(Draw, AnEmptySlotIsPassedOver) {
    LxGC_AddRenderer(gc_, recordsAll, &recorder_, nullptr);
    LxRenderer &first = *gc_->renderers[0];
    first.line = nullptr;
    first.sync = nullptr;
    first.hLine = nullptr;
    LxGC_Line(gc_, 1, 2, 3, 4);
    EXPECT_EQ(recorder_.take(), (Calls{"line 1 2 3 4"}));
    LxGC_Flush(gc_);
    EXPECT_EQ(recorder_.take(), (Calls{"flush", "sync", "flush"}));
    LxGC_HLineL(gc_, 1, 2, 3);
    EXPECT_EQ(recorder_.take(), (Calls{"hLine 1 2 3"}));
}

TEST(DrawWithoutRenderers, AcceptsAllCalls) {
    const ContextHandle gc(LxGC_CreateWithRect({0, 0, 10, 10}, {0, 0, 10, 10}));
    LxGC_Line(gc.get(), 0, 0, 1, 1);
    LxGC_Frame(gc.get(), 0, 0, 1, 1);
    LxGC_Circle(gc.get(), 0, 0, 1);
    LxGC_Poly(gc.get(), nullptr, 0);
    LxGC_Path(gc.get(), nullptr);
    LxGC_HLineL(gc.get(), 0, 5, 5);
    LxGC_VLineL(gc.get(), 5, 0, 5);
    LxGC_LineL(gc.get(), 0, 0, 5, 5);
    LxGC_FrameL(gc.get(), 0, 0, 5, 5);
    LxGC_Clear(gc.get());
    LxGC_Flush(gc.get());
    LxGC_DrawImage(gc.get(), nullptr);
    LxGC_DrawText(gc.get(), 0, 0, "words");
    EXPECT_EQ(gc->rendererCount, 0);
}
