#include <cmath>
#include <memory>

#include <oxlume/LxGC.h>
#include <oxlume/LxLibrary.h>

#include "gc/Context.h"
#include "gc/RendererDefaults.h"
#include "image/Image.h"
#include "tests/gc/Recorder.h"
#include "tests/gc/renderers/QuartzSupport.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

namespace {

struct DeletePath {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using PathHandle = std::unique_ptr<LxPath, DeletePath>;

PathHandle rectangle(double x0, double y0, double x1, double y1) {
    PathHandle path(LxPath_Create());
    LxPath_AddMoveTo(path.get(), x0, y0);
    LxPath_AddLineTo(path.get(), x1, y0);
    LxPath_AddLineTo(path.get(), x1, y1);
    LxPath_AddLineTo(path.get(), x0, y1);
    LxPath_AddClose(path.get());
    return path;
}

// Fills a rectangle in red.
void fillRectangle(LxGC *gc, double x0, double y0, double x1, double y1) {
    LxGC_SetFillColor(gc, redColor);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_Path(gc, rectangle(x0, y0, x1, y1).get());
}

void expectTransform(CGContextRef context, LxCGAffineTransform expected) {
    const LxCGAffineTransform actual = CGContextGetCTM(context);
    EXPECT_FLOAT_EQ(actual.a, expected.a);
    EXPECT_FLOAT_EQ(actual.b, expected.b);
    EXPECT_FLOAT_EQ(actual.c, expected.c);
    EXPECT_FLOAT_EQ(actual.d, expected.d);
    EXPECT_FLOAT_EQ(actual.tx, expected.tx);
    EXPECT_FLOAT_EQ(actual.ty, expected.ty);
}

} // namespace

// ---- Creation and deletion ----

TEST(QuartzRendererCreate, NeedsAContext) {
    EXPECT_EQ(LxGC_CreateWithCGContextRef(nullptr, {0, 0, 5, 5}), nullptr);
    Canvas canvas(2, 2);
    const ContextHandle gc(LxGC_Create());
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), kLxRendererQuartz, nullptr, nullptr), 0);
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), kLxRendererQuartz, canvas, nullptr), 1);
}

TEST(QuartzRendererCreate, LeavesTheTransformAlone) {
    Canvas canvas(4, 4);
    CGContextConcatCTM(canvas, {2, 1, 1, 3, 4, 5});
    const ContextHandle gc = contextOn(canvas);
    expectTransform(canvas, {2, 1, 1, 3, 4, 5});
}

TEST(QuartzRendererCreate, FillsNineSlots) {
    Canvas canvas(4, 4);
    const ContextHandle gc = contextOn(canvas);
    const LxRenderer &own = *gc->renderers[0];
    const LxRenderer &other = defaultRenderer;
    EXPECT_NE(own.fill, other.fill);
    EXPECT_NE(own.line, other.line);
    EXPECT_NE(own.path, other.path);
    EXPECT_NE(own.sync, other.sync);
    EXPECT_NE(own.flush, other.flush);
    EXPECT_NE(own.spare, other.spare);
    EXPECT_NE(own.setMatrix, other.setMatrix);
    EXPECT_NE(own.drawImage, other.drawImage);
    EXPECT_NE(own.drawText, other.drawText);
    EXPECT_EQ(own.pixelColor, other.pixelColor);
    EXPECT_EQ(own.frame, other.frame);
    EXPECT_EQ(own.ellipse, other.ellipse);
    EXPECT_EQ(own.poly, other.poly);
    EXPECT_EQ(own.resize, other.resize);
    EXPECT_EQ(own.spare2, other.spare2);
    EXPECT_EQ(own.hLine, other.hLine);
    EXPECT_EQ(own.vLine, other.vLine);
    EXPECT_EQ(own.lineL, other.lineL);
    EXPECT_EQ(own.frameL, other.frameL);
    EXPECT_EQ(own.ellipseL, other.ellipseL);
    own.spare(gc->renderers[0]);
}

TEST(QuartzRendererDelete, PutsTheInitialTransformOnTheContext) {
    Canvas canvas(4, 4);
    CGContextConcatCTM(canvas, {1, 0, 0, 1, 3, 4});
    contextOn(canvas).reset();
    expectTransform(canvas, {1, 0, 0, 1, 6, 8});
}

TEST(QuartzRenderer, TheLibraryKeepsAnImageWhileItRuns) {
    Oxlume_Term();
    const uint64_t before = imageStatistics(Storage::inlined).images;
    Oxlume_Init();
    EXPECT_EQ(imageStatistics(Storage::inlined).images, before + 1);
    Oxlume_Init();
    EXPECT_EQ(imageStatistics(Storage::inlined).images, before + 1);
    Oxlume_Term();
    Oxlume_Init();
    EXPECT_EQ(imageStatistics(Storage::inlined).images, before + 2);
    Oxlume_Term();
}

// ---- Fill ----

TEST(QuartzFill, TakesTheFarCornerAsTheSize) {
    Canvas canvas(20, 20);
    const ContextHandle gc = contextOn(canvas, {2, 3, 5, 7});
    LxGC_SetClipRectD(gc.get(), 3, 3, 4, 4); // not looked at
    LxGC_Fill(gc.get(), redColor);
    canvas.expectBox(2, 3, 7, 10, red);
}

TEST(QuartzFill, PaintsColoursOfFloatsAndIntegersOpaqueBlack) {
    for (const LxColor color : {LxColor_F(0.5f), LxColor_L(0xffffff)}) {
        Canvas canvas(12, 12);
        const ContextHandle gc = contextOn(canvas);
        LxGC_Fill(gc.get(), color);
        canvas.expectAll(black);
    }
    Canvas canvas(12, 12);
    LxGC_Clear(contextOn(canvas).get());
    canvas.expectAll(black);
}

TEST(QuartzFill, GoesOverWhatIsThere) {
    Canvas canvas(12, 12);
    LxGC_Fill(contextOn(canvas).get(), rgba(0, 0, 0, 51));
    EXPECT_TRUE(isClose(canvas.at(5, 5), {204, 204, 204, 255}, 1)) << canvas.at(5, 5); // 255 - 51
}

// ---- Line ----

TEST(QuartzLine, RunsAtOpacityOver256) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_Line(gc.get(), 2, 5.5, 10, 5.5);
    // 255 * (1 - 255 / 256) = 0.996
    canvas.expectBox(2, 5, 10, 6, {1, 1, 1, 255});

    Canvas half(12, 12);
    const ContextHandle other = contextOn(half);
    LxGC_SetStrokeBlendOpacity(other.get(), 128);
    LxGC_Line(other.get(), 2, 5.5, 10, 5.5);
    EXPECT_TRUE(isClose(half.at(5, 5), {127, 127, 127, 255}, 1)) << half.at(5, 5);
}

TEST(QuartzLine, LeavesItsAlphaOnTheContext) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_SetStrokeBlendOpacity(gc.get(), 64);
    LxGC_Line(gc.get(), 0, 20, 5, 20);
    fillRectangle(gc.get(), 2, 2, 4, 4);
    // A quarter of red
    EXPECT_TRUE(isClose(canvas.at(3, 3), {255, 191, 191, 255}, 1)) << canvas.at(3, 3);
}

TEST(QuartzLine, StrokesWhateverTheRenderMode) {
    for (const uint32_t mode : {0u, 1u, 2u, 3u}) {
        Canvas canvas(12, 12);
        const ContextHandle gc = contextOn(canvas);
        LxGC_SetRenderMode(gc.get(), mode);
        LxGC_SetFillColor(gc.get(), blueColor);
        LxGC_SetStrokeColor(gc.get(), redColor);
        LxGC_SetStrokeWidth(gc.get(), 3);
        LxGC_Line(gc.get(), 5.5, 2, 5.5, 9);
        canvas.expectBox(4, 2, 7, 9, {255, 1, 1, 255});
    }
}

// ---- Path ----

TEST(QuartzPathSlot, ModeZeroDrawsNothingAndLeavesThePathOnTheContext) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_SetRenderMode(gc.get(), 0);
    LxGC_Path(gc.get(), rectangle(2, 2, 6, 6).get());
    canvas.expectAll(white);
    CGContextSetRGBFillColor(canvas, 0, 1, 0, 1);
    CGContextDrawPath(canvas, kCGPathFill);
    canvas.expectBox(2, 2, 6, 6, green);
}

TEST(QuartzPathSlot, FillsAndStrokesByTheRenderMode) {
    for (const uint32_t mode : {1u, 2u, 3u, 7u, 4u}) {
        Canvas canvas(12, 12);
        const ContextHandle gc = contextOn(canvas);
        LxGC_SetRenderMode(gc.get(), mode);
        LxGC_SetFillColor(gc.get(), redColor);
        LxGC_SetStrokeColor(gc.get(), blueColor);
        LxGC_SetStrokeWidth(gc.get(), 2);
        LxGC_SetStrokeBlendOpacity(gc.get(), 10); // not looked at, nor any other blend
        LxGC_SetFillBlendOpacity(gc.get(), 10);
        LxGC_Path(gc.get(), rectangle(3, 3, 9, 9).get());
        EXPECT_EQ(canvas.at(5, 5), (mode & 1) != 0 ? red : white) << mode;
        EXPECT_EQ(canvas.at(2, 5), (mode & 2) != 0 ? blue : white) << mode;
    }
}

TEST(QuartzPathSlot, IsNotClippedByTheContext) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_SetClipRectD(gc.get(), 0, 0, 3, 3);
    fillRectangle(gc.get(), 2, 2, 9, 9);
    canvas.expectBox(2, 2, 9, 9, red);
}

TEST(QuartzPathSlot, IgnoresGradients) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    int notAGradient = 0;
    LxGC_SetFillGradient(gc.get(), reinterpret_cast<LxGradient *>(&notAGradient));
    fillRectangle(gc.get(), 2, 2, 9, 9);
    canvas.expectBox(2, 2, 9, 9, red);
}

TEST(QuartzPathSlot, AClosingSegmentIsALine) {
    // Butt ends where a close would have been mitred: the corner of the start stays open.
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_SetStrokeWidth(gc.get(), 4);
    LxGC_Path(gc.get(), rectangle(4, 4, 9, 9).get());
    EXPECT_EQ(canvas.at(3, 3), white);
    EXPECT_EQ(canvas.at(10, 10), black);
    EXPECT_EQ(canvas.at(10, 2), black);
}

TEST(QuartzPathSlot, TakesNullAndEmptyPaths) {
    Canvas canvas(4, 4);
    const ContextHandle gc = contextOn(canvas);
    LxGC_SetRenderMode(gc.get(), 3);
    LxGC_Path(gc.get(), nullptr);
    const PathHandle empty(LxPath_Create());
    LxGC_Path(gc.get(), empty.get());
    canvas.expectAll(white);
}

TEST(QuartzPathSlot, TakesTheDefaultShapes) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_SetRenderMode(gc.get(), kLxRenderFill);
    LxGC_SetFillColor(gc.get(), redColor);
    LxGC_Frame(gc.get(), 1, 1, 5, 4);
    canvas.expectBox(1, 1, 5, 4, red);
    const LxPointD points[4] = {{6, 6}, {11, 6}, {11, 10}, {6, 10}};
    LxGC_Poly(gc.get(), points, 4);
    EXPECT_EQ(canvas.at(6, 6), red);
    EXPECT_EQ(canvas.at(10, 9), red);
    EXPECT_EQ(canvas.at(11, 10), white);
    LxGC_SetFillColor(gc.get(), blueColor);
    LxGC_Circle(gc.get(), 6, 6, 4);
    EXPECT_EQ(canvas.at(6, 6), blue);
    EXPECT_EQ(canvas.at(6, 3), blue);
    EXPECT_EQ(canvas.at(1, 2), red);
}

TEST(QuartzRenderer, WholePixelCallsDrawNothing) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_SetRenderMode(gc.get(), 3);
    LxGC_HLineL(gc.get(), 1, 9, 3);
    LxGC_VLineL(gc.get(), 1, 2, 9);
    LxGC_LineL(gc.get(), 1, 2, 9, 9);
    LxGC_FrameL(gc.get(), 1, 2, 9, 9);
    LxGC_EllipseL(gc.get(), 1, 2, 9, 9);
    canvas.expectAll(white);
}

TEST(QuartzRenderer, DrawsBesideAnImage) {
    Canvas canvas(12, 12);
    const ImageHandle image = makeImage(kLxPixelRGBA, 12, 12);
    const ContextHandle gc(LxGC_CreateWithImage(image.get(), {0, 0, 12, 12}));
    ASSERT_EQ(LxGC_AddRenderer(gc.get(), kLxRendererQuartz, canvas, nullptr), 1);
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), kLxRendererQuartz, canvas, nullptr), 0);
    fillRectangle(gc.get(), 3, 3, 9, 9);
    canvas.expectBox(3, 3, 9, 9, red);
    const auto *pixel = static_cast<const uint8_t *>(LxImage_ConstPointer(image.get(), 5, 5));
    EXPECT_EQ(pixel[0], 255);
    EXPECT_EQ(pixel[1], 0);
    EXPECT_EQ(pixel[3], 255);
}

// ---- Transform ----

TEST(QuartzMatrix, StandsOnTheInitialOrigin) {
    Canvas canvas(12, 12);
    CGContextConcatCTM(canvas, {1, 0, 0, 1, 3, 4});
    const ContextHandle gc = contextOn(canvas);
    LxGC_MatrixScale(gc.get(), 2, 3);
    expectTransform(canvas, {2, 0, 0, 3, 3, 4});
    fillRectangle(gc.get(), 1, 1, 2, 2);
    canvas.expectBox(5, 7, 7, 10, red);
    LxGC_MatrixTranslate(gc.get(), 10, 20);
    expectTransform(canvas, {2, 0, 0, 3, 13, 24});
    LxGC_MatrixIdentity(gc.get());
    expectTransform(canvas, {1, 0, 0, 1, 3, 4});
}

TEST(QuartzMatrix, ReplacesAnyTransformButItsOrigin) {
    Canvas canvas(12, 12);
    CGContextConcatCTM(canvas, {4, 0, 0, 0.5f, 3, 4});
    const ContextHandle gc = contextOn(canvas);
    LxGC_MatrixIdentity(gc.get());
    expectTransform(canvas, {1, 0, 0, 1, 3, 4});
}

TEST(QuartzMatrix, TurnsAsTheContextDoes) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_MatrixTranslate(gc.get(), 0, -12);
    LxGC_MatrixRotateDeg(gc.get(), 90); // (x, y) to (12 - y, x)
    fillRectangle(gc.get(), 1, 2, 4, 6);
    for (int32_t y = 0; y < 12; ++y)
        for (int32_t x = 0; x < 12; ++x) {
            const bool inside = x >= 6 && x < 10 && y >= 1 && y < 4;
            EXPECT_TRUE(isClose(canvas.at(x, y), inside ? red : white, 1)) << x << ", " << y;
        }
}

TEST(QuartzMatrix, AFlatOneShowsNothingUntilTheNext) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    LxGC_MatrixScale(gc.get(), 0, 0);
    fillRectangle(gc.get(), 0, 0, 12, 12);
    LxGC_Line(gc.get(), 0, 0, 12, 12);
    canvas.expectAll(white);
    LxGC_MatrixIdentity(gc.get());
    CGContextSetAlpha(canvas, 1);
    fillRectangle(gc.get(), 0, 0, 12, 12);
    canvas.expectAll(red);
}

TEST(QuartzMatrix, NumbersThatAreNoneAreSafe) {
    Canvas canvas(12, 12);
    const ContextHandle gc = contextOn(canvas);
    for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity(), 1e300}) {
        LxGC_MatrixTranslate(gc.get(), bad, bad);
        fillRectangle(gc.get(), 0, 0, 5, 5);
        LxGC_Line(gc.get(), bad, 0, 12, bad);
        LxGC_DrawTextWithLength(gc.get(), bad, bad, "abc", 3);
        LxGC_MatrixIdentity(gc.get());
        expectTransform(canvas, {1, 0, 0, 1, 0, 0});
    }
}

TEST(QuartzFlush, PutsTheInitialTransformAndThenZerosOnTheContext) {
    Canvas canvas(12, 12);
    CGContextConcatCTM(canvas, {2, 0, 0, 2, 3, 4});
    const ContextHandle gc = contextOn(canvas);
    LxGC_Flush(gc.get());
    // (0, 0) goes to (3, 4) by the initial transform, and from there to (2 * 3 + 3, 2 * 4 + 4).
    expectTransform(canvas, {0, 0, 0, 0, 9, 12});
    fillRectangle(gc.get(), 0, 0, 12, 12);
    LxGC_Fill(gc.get(), redColor);
    canvas.expectAll(white);
    LxGC_MatrixIdentity(gc.get());
    expectTransform(canvas, {1, 0, 0, 1, 3, 4});
    fillRectangle(gc.get(), 0, 0, 2, 2);
    canvas.expectBox(3, 4, 5, 6, red);
}

TEST(QuartzSync, ChangesNothing) {
    Canvas canvas(12, 12);
    CGContextConcatCTM(canvas, {1, 0, 0, 1, 3, 4});
    const ContextHandle gc = contextOn(canvas);
    LxGC_Sync(gc.get());
    expectTransform(canvas, {1, 0, 0, 1, 3, 4});
    canvas.expectAll(white);
}
