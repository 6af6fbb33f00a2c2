#include <gtest/gtest.h>

#import <oxlume/cocoa/LxGContext.h>

#include "tests/support/ImageHandle.h"

using namespace lx::test;

// Shows the fields.
@interface OpenGContext : LxGContext
- (LxGC *)gc;
- (LxImage *)ownImage;
@end

@implementation OpenGContext
- (LxGC *)gc {
    return m_pGC;
}
- (LxImage *)ownImage {
    return m_pImage;
}
@end

namespace {

bool sameBlend(const LxBlend &a, const LxBlend &b) {
    return a.mode == b.mode && a.opacity == b.opacity && a.channel == b.channel;
}

bool sameColor(const LxColor &a, const LxColor &b) {
    return a.type == b.type && a.content.l == b.content.l;
}

bool isZero(const LxRectD &r) {
    return r.x0 == 0 && r.y0 == 0 && r.x1 == 0 && r.y1 == 0;
}

// That every reader answers as its function does, for the context's LxGC or for null.
void expectReadersAnswerFor(OpenGContext *context, const LxGC *gc) {
    EXPECT_TRUE(sameColor([context lineColor], LxGC_StrokeColor(gc)));
    EXPECT_EQ([context lineWidth], LxGC_StrokeWidth(gc));
    EXPECT_EQ([context lineStyle], LxGC_StrokeStyle(gc));
    EXPECT_TRUE(sameBlend([context lineBlend], LxGC_StrokeBlend(gc)));
    EXPECT_EQ([context lineBlendMode], LxGC_StrokeBlendMode(gc));
    EXPECT_EQ([context lineBlendChannel], LxGC_StrokeBlendChannel(gc));
    EXPECT_EQ([context lineBlendOpacity], LxGC_StrokeBlendOpacity(gc));
    EXPECT_EQ([context lineGradient], LxGC_StrokeGradient(gc));
    EXPECT_TRUE(sameColor([context fillColor], LxGC_FillColor(gc)));
    EXPECT_TRUE(sameBlend([context fillBlend], LxGC_FillBlend(gc)));
    EXPECT_EQ([context fillBlendMode], LxGC_FillBlendMode(gc));
    EXPECT_EQ([context fillBlendChannel], LxGC_FillBlendChannel(gc));
    EXPECT_EQ([context fillBlendOpacity], LxGC_FillBlendOpacity(gc));
    EXPECT_EQ([context fillGradient], LxGC_FillGradient(gc));
    EXPECT_TRUE(sameBlend([context imageBlend], LxGC_ImageBlend(gc)));
    EXPECT_EQ([context imageBlendMode], LxGC_ImageBlendMode(gc));
    EXPECT_EQ([context imageBlendChannel], LxGC_ImageBlendChannel(gc));
    EXPECT_EQ([context imageBlendOpacity], LxGC_ImageBlendOpacity(gc));
    EXPECT_EQ([context textSize], LxGC_TextSize(gc));
    EXPECT_EQ([context textFont], LxGC_TextFont(gc));
    EXPECT_TRUE(sameColor([context textColor], LxGC_TextColor(gc)));
    EXPECT_EQ([context textJust], LxGC_TextJust(gc));
    EXPECT_TRUE(sameBlend([context textBlend], LxGC_TextBlend(gc)));
    EXPECT_EQ([context textBlendMode], LxGC_TextBlendMode(gc));
    EXPECT_EQ([context textBlendChannel], LxGC_TextBlendChannel(gc));
    EXPECT_EQ([context textBlendOpacity], LxGC_TextBlendOpacity(gc));
    EXPECT_EQ([context textGradient], LxGC_TextGradient(gc));
}

} // namespace

TEST(LxGContext, BeginsWithAContextAndNoImage) {
    OpenGContext *context = [[[OpenGContext alloc] init] autorelease];
    EXPECT_NE([context gc], nullptr);
    EXPECT_EQ([context ownImage], nullptr);
}

TEST(LxGContext, FirstPrepareMakesAnImageAndTheSecondNothing) {
    OpenGContext *context = [[[OpenGContext alloc] init] autorelease];
    [context prepareDraw:NSMakeRect(7, 8, 10.5, 3.0)];
    LxImage *image = [context ownImage];
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_w(image), 11);
    EXPECT_EQ(LxImage_h(image), 3);
    EXPECT_EQ(LxImage_Type(image), kLxPixelRGBA);
    EXPECT_EQ(LxImage_isFlipped(image), 0);
    const LxRectD bounds = LxGC_BoundsRect([context gc]);
    EXPECT_EQ(bounds.x1, 11);
    EXPECT_EQ(bounds.y1, 3);
    const LxRectD clip = LxGC_ClipRect([context gc]);
    EXPECT_EQ(clip.x1, 11);
    EXPECT_EQ(clip.y1, 3);
    // The context draws into the image.
    LxGC_Fill([context gc], LxColor_RGBA(1, 2, 3, 4));
    LxColor color = {};
    ASSERT_EQ(LxImage_PixelAt(image, 10, 2, &color), 1);
    EXPECT_EQ(color.content.rgba.b, 3);
    [context prepareDraw:NSMakeRect(0, 0, 40, 40)];
    EXPECT_EQ([context ownImage], image);
    EXPECT_EQ(LxImage_w(image), 11);
}

TEST(LxGContext, SizesAreOfSinglePrecision) {
    OpenGContext *context = [[[OpenGContext alloc] init] autorelease];
    [context prepareDraw:NSMakeRect(0, 0, 10.0000000001, 2.5)];
    EXPECT_EQ(LxImage_w([context ownImage]), 10);
    EXPECT_EQ(LxImage_h([context ownImage]), 3);
}

TEST(LxGContext, SizeBelowOneMakesNoImage) {
    OpenGContext *context = [[[OpenGContext alloc] init] autorelease];
    [context prepareDraw:NSMakeRect(0, 0, 0, -3)];
    EXPECT_EQ([context ownImage], nullptr);
    [context prepareDraw:NSMakeRect(0, 0, 0.25, 1)];
    EXPECT_EQ(LxImage_w([context ownImage]), 1);
}

TEST(LxGContext, DrawsOnTheCallersImage) {
    ImageHandle image = makeImage(kLxPixelRGBA, 5, 4);
    OpenGContext *context = [[OpenGContext alloc] initWithImage:image.get()];
    EXPECT_EQ([context ownImage], nullptr);
    LxGC_Fill([context gc], LxColor_RGBA(9, 8, 7, 6));
    [context release];
    LxColor color = {};
    LxImage_PixelAt(image.get(), 4, 3, &color);
    EXPECT_EQ(color.content.rgba.r, 9);
}

TEST(LxGContext, ReadersAnswerAsTheFunctions) {
    OpenGContext *context = [[[OpenGContext alloc] init] autorelease];
    LxGC *gc = [context gc];
    expectReadersAnswerFor(context, gc);
    LxGC_SetStrokeColor(gc, LxColor_RGBA(1, 2, 3, 4));
    LxGC_SetFillColor(gc, LxColor_RGB(5, 6, 7));
    LxGC_SetTextColor(gc, LxColor_A(8));
    LxGC_SetStrokeWidth(gc, 2.5);
    LxGC_SetStrokeStyle(gc, 64);
    LxGC_SetStrokeBlend(gc, LxBlend_WithChannel(3, 4, 5));
    LxGC_SetFillBlend(gc, LxBlend_WithChannel(6, 7, 1));
    LxGC_SetImageBlend(gc, LxBlend_WithChannel(8, 9, 2));
    LxGC_SetTextBlend(gc, LxBlend_WithChannel(10, 11, 3));
    LxGC_SetTextSize(gc, 20.5);
    LxGC_SetTextFont(gc, 3);
    LxGC_SetTextJust(gc, 4);
    expectReadersAnswerFor(context, gc);
    EXPECT_EQ([context lineWidth], 2.5);
}

TEST(LxGContext, WithoutAnLxGCReadersAnswerForNull) {
    OpenGContext *context = [[[OpenGContext alloc] initWithCGContext:nullptr] autorelease];
    EXPECT_EQ([context gc], nullptr);
    expectReadersAnswerFor(context, nullptr);
    EXPECT_EQ([context lineStyle], 0);
    [context prepareDraw:NSMakeRect(0, 0, 4, 4)];
    EXPECT_NE([context ownImage], nullptr);
}

TEST(LxGContext, ReservedOperationsChangeNothing) {
    OpenGContext *context = [[[OpenGContext alloc] init] autorelease];
    [context prepareDraw:NSMakeRect(0, 0, 6, 6)];
    LxGC_Fill([context gc], LxColor_RGBA(0, 0, 0, 0));
    [context setStrokeWidth:7];
    [context setFillColor:LxColor_RGBA(200, 0, 0, 255)];
    [context setStrokeBlend:LxBlend_WithChannel(9, 9, 1)];
    [context setTextSize:40];
    [context setRenderMode:3];
    [context setOrigin:2:2];
    [context matrixScale:3:3];
    [context drawLine:0:0:6:6];
    [context drawRoundFrame:0:0:6:6:2:2];
    [context fillWith:LxColor_RGBA(255, 255, 255, 255)];
    [context setStrokeWidthFromControl:nil];
    EXPECT_EQ([context lineWidth], 1.0);
    EXPECT_EQ([context fillColor].content.rgba.r, 0);
    EXPECT_EQ([context lineBlendMode], 2);
    EXPECT_EQ([context textSize], 9);
    EXPECT_EQ(LxGC_RenderMode([context gc]), 2u);
    EXPECT_EQ(LxGC_Matrix([context gc])->m0, 1);
    const auto *bytes = static_cast<const uint8_t *>(LxImage_ConstData([context ownImage]));
    for (int i = 0; i < LxImage_DataSize([context ownImage]); ++i)
        EXPECT_EQ(bytes[i], 0);
}

TEST(LxGContext, ReservedReadersAnswerZero) {
    OpenGContext *context = [[[OpenGContext alloc] init] autorelease];
    [context prepareDraw:NSMakeRect(0, 0, 6, 6)];
    LxGC_SetOrigin([context gc], 3, 4);
    EXPECT_EQ([context originX], 0);
    EXPECT_EQ([context originY], 0);
    EXPECT_EQ([context matrix], nullptr);
    EXPECT_EQ([context inverseMatrix], nullptr);
    EXPECT_EQ([context renderMode], 0u);
    EXPECT_EQ([context Image:[context ownImage] with:nullptr], nullptr);
    EXPECT_TRUE(isZero([context clipRect]));
    EXPECT_TRUE(isZero([context boundsRect]));
}

TEST(LxGContext, EveryReservedOperationIsThere) {
    static const char *const selectors[] = {"drawLine::::",
                                            "drawFrame::::",
                                            "drawRoundFrame::::::",
                                            "drawEllipse::::",
                                            "drawCircle:::",
                                            "drawPoly::",
                                            "drawPath:",
                                            "drawImage:",
                                            "drawImage:at:",
                                            "drawImage:at:withMask:",
                                            "sync",
                                            "flush",
                                            "clear",
                                            "fillWith:",
                                            "setOrigin::",
                                            "matrixIdentity",
                                            "matrixMul:",
                                            "matrixScale::",
                                            "matrixTranslate::",
                                            "matrixRotate:",
                                            "matrixRotateDeg:",
                                            "setClipRect:",
                                            "setBoundsRect:",
                                            "setRenderMode:",
                                            "setStrokeColor:",
                                            "setStrokeWidth:",
                                            "setStrokeStyle:",
                                            "setStrokeBlend:",
                                            "setStrokeBlendMode:",
                                            "setStrokeBlendChannel:",
                                            "setStrokeBlendOpacity:",
                                            "setStrokeGradient:",
                                            "setFillColor:",
                                            "setFillBlend:",
                                            "setFillBlendMode:",
                                            "setFillBlendChannel:",
                                            "setFillBlendOpacity:",
                                            "setFillGradient:",
                                            "setImageBlend:",
                                            "setImageBlendMode:",
                                            "setImageBlendChannel:",
                                            "setImageBlendOpacity:",
                                            "setTextSize:",
                                            "setTextFont:",
                                            "setTextColor:",
                                            "setTextJust:",
                                            "setTextBlend:",
                                            "setTextBlendMode:",
                                            "setTextBlendChannel:",
                                            "setTextBlendOpacity:",
                                            "setTextGradient:",
                                            "setFillModeFromControl:",
                                            "setFillChannelFromControl:",
                                            "setFillOpacityFromControl:",
                                            "setStrokeModeFromControl:",
                                            "setStrokeChannelFromControl:",
                                            "setStrokeOpacityFromControl:",
                                            "setStrokeWidthFromControl:",
                                            "setTextModeFromControl:",
                                            "setTextChannelFromControl:",
                                            "setTextOpacityFromControl:",
                                            "setImageModeFromControl:",
                                            "setImageChannelFromControl:",
                                            "setImageOpacityFromControl:"};
    for (const char *name : selectors)
        EXPECT_TRUE([LxGContext instancesRespondToSelector:sel_registerName(name)]) << name;
}
