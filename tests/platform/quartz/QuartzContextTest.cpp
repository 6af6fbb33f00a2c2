#include "platform/quartz/QuartzContext.h"

#include <cmath>
#include <limits>

#include <oxlume/LxMatrix.h>

#include "tests/platform/quartz/Canvas.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr LxCGRect everything = {-1000, -1000, 2000, 2000};

void expectTransform(CGContextRef context, LxCGAffineTransform expected) {
    const LxCGAffineTransform actual = CGContextGetCTM(context);
    EXPECT_EQ(actual.a, expected.a);
    EXPECT_EQ(actual.b, expected.b);
    EXPECT_EQ(actual.c, expected.c);
    EXPECT_EQ(actual.d, expected.d);
    EXPECT_EQ(actual.tx, expected.tx);
    EXPECT_EQ(actual.ty, expected.ty);
}

} // namespace

TEST(QuartzCreate, RefusesPixelsThatCannotBeDrawnOn) {
    alignas(4) uint8_t bytes[64] = {};
    EXPECT_EQ(LxQuartz_CreateWithPixels(nullptr, 2, 2, 8), nullptr);
    EXPECT_EQ(LxQuartz_CreateWithPixels(bytes, 0, 2, 8), nullptr);
    EXPECT_EQ(LxQuartz_CreateWithPixels(bytes, 2, -1, 8), nullptr);
    EXPECT_EQ(LxQuartz_CreateWithPixels(bytes, 3, 2, 8), nullptr) << "rows too short";
    EXPECT_EQ(LxQuartz_CreateWithPixels(bytes, 1, 2, 6), nullptr) << "rows of half pixels";
    EXPECT_EQ(LxQuartz_CreateWithPixels(bytes, 2, 2, -8), nullptr);
    EXPECT_EQ(LxQuartz_CreateWithPixels(bytes + 1, 2, 2, 8), nullptr) << "not aligned";
    EXPECT_EQ(LxQuartz_CreateWithPixels(bytes, 32768, 1, 4 * 32768), nullptr);
    EXPECT_NE(QuartzHandle(LxQuartz_CreateWithPixels(bytes, 2, 2, 8)), nullptr);
}

TEST(QuartzCreate, RefusesSurfacesInError) {
    EXPECT_EQ(LxQuartz_CreateWithSurface(nullptr), nullptr);
    EXPECT_EQ(LxQuartz_CreateWithSurfaceYUp(nullptr, 10), nullptr);
    const SurfaceHandle bad(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, -1, 5));
    EXPECT_EQ(LxQuartz_CreateWithSurface(bad.get()), nullptr);
    const SurfaceHandle good(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 4, 4));
    EXPECT_EQ(LxQuartz_CreateWithSurfaceYUp(good.get(), NAN), nullptr);
}

TEST(QuartzCreate, ASurfaceOutlivesItsCreatorsReference) {
    SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 4, 4));
    const QuartzHandle context(LxQuartz_CreateWithSurface(surface.get()));
    CGContextSetRGBFillColor(context.get(), 1, 0.5f, 0, 1);
    CGContextFillRect(context.get(), everything);
    CGContextFlush(context.get());
    const auto *pixel = reinterpret_cast<uint32_t *>(cairo_image_surface_get_data(surface.get()));
    EXPECT_EQ(pixel[5], 0xffff8000u); // cairo's own order: alpha, red, green, blue from the highest byte
    surface.reset();
    CGContextFillRect(context.get(), everything);
}

TEST(QuartzCreate, YGrowsUpWhereAskedFor) {
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 3, 4));
    const QuartzHandle context(LxQuartz_CreateWithSurfaceYUp(surface.get(), 4));
    expectTransform(context.get(), identityTransform);
    CGContextFillRect(context.get(), {0, 0, 2, 1});
    CGContextFlush(context.get());
    const uint8_t *data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(data[y * stride + x * 4 + 3], y == 3 && x < 2 ? 255 : 0) << x << ", " << y;
}

TEST(QuartzCreate, CountsReferences) {
    alignas(4) uint8_t bytes[16] = {};
    const CGContextRef context = LxQuartz_CreateWithPixels(bytes, 2, 2, 8);
    EXPECT_EQ(CGContextRetain(context), context);
    CGContextRelease(context);
    CGContextFillRect(context, everything); // still there
    CGContextRelease(context);
    EXPECT_EQ(bytes[3], 255);
}

TEST(QuartzContext, NullDoesNothing) {
    EXPECT_EQ(CGContextRetain(nullptr), nullptr);
    CGContextRelease(nullptr);
    CGContextSynchronize(nullptr);
    CGContextFlush(nullptr);
    CGContextSaveGState(nullptr);
    CGContextRestoreGState(nullptr);
    expectTransform(nullptr, identityTransform);
    CGContextConcatCTM(nullptr, identityTransform);
    CGContextSetRGBFillColor(nullptr, 0, 0, 0, 0);
    CGContextSetRGBStrokeColor(nullptr, 0, 0, 0, 0);
    CGContextSetAlpha(nullptr, 1);
    CGContextSetLineWidth(nullptr, 1);
    CGContextSetInterpolationQuality(nullptr, 1);
    CGContextBeginPath(nullptr);
    CGContextMoveToPoint(nullptr, 0, 0);
    CGContextAddLineToPoint(nullptr, 0, 0);
    CGContextClosePath(nullptr);
    CGContextDrawPath(nullptr, kCGPathFill);
    CGContextStrokePath(nullptr);
    CGContextFillRect(nullptr, everything);
    CGContextSelectFont(nullptr, "Helvetica", 10, kCGEncodingMacRoman);
    CGContextSetTextDrawingMode(nullptr, kCGTextFill);
    CGContextShowTextAtPoint(nullptr, 0, 0, "a", 1);
    CGContextDrawImage(nullptr, everything, nullptr);
}

TEST(QuartzState, BeginsAsTold) {
    Canvas canvas(8, 8);
    expectTransform(canvas, identityTransform);
    CGContextFillRect(canvas, {0, 0, 8, 2}); // opaque black
    CGContextMoveToPoint(canvas, 0, 4.5f);   // and so the stroke, of width 1
    CGContextAddLineToPoint(canvas, 8, 4.5f);
    CGContextStrokePath(canvas);
    for (int32_t y = 0; y < 8; ++y)
        EXPECT_EQ(canvas.at(3, y), y < 2 || y == 4 ? black : white) << y;
}

TEST(QuartzState, SaveAndRestoreKeepAllButThePath) {
    Canvas canvas(8, 4);
    CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
    CGContextSaveGState(canvas);
    CGContextSaveGState(canvas);
    CGContextConcatCTM(canvas, {3, 0, 0, 3, 5, 5});
    CGContextSetRGBFillColor(canvas, 0, 0, 1, 0.5f);
    CGContextSetAlpha(canvas, 0.25f);
    CGContextRestoreGState(canvas);
    expectTransform(canvas, identityTransform);
    CGContextMoveToPoint(canvas, 0, 0);
    CGContextAddLineToPoint(canvas, 4, 0);
    CGContextAddLineToPoint(canvas, 4, 4);
    CGContextRestoreGState(canvas);
    CGContextRestoreGState(canvas); // one too many
    CGContextAddLineToPoint(canvas, 0, 4);
    CGContextDrawPath(canvas, kCGPathFill);
    canvas.expectBox(0, 0, 4, 4, red);
}

TEST(QuartzState, AContextMayEndWithStatesOnItsStack) {
    Canvas canvas(2, 2);
    for (int i = 0; i < 3; ++i) {
        CGContextSelectFont(canvas, "Helvetica", 10, kCGEncodingMacRoman);
        CGContextSaveGState(canvas);
    }
}

TEST(QuartzTransform, PutsTheNewOneFirst) {
    Canvas canvas(2, 2);
    CGContextConcatCTM(canvas, {2, 0, 0, 3, 10, 20});
    CGContextConcatCTM(canvas, {1, 0, 0, 1, 5, 7}); // (5, 7) goes to (2 * 5 + 10, 3 * 7 + 20)
    expectTransform(canvas, {2, 0, 0, 3, 20, 41});
    CGContextConcatCTM(canvas, {0, 1, -1, 0, 0, 0}); // x takes the place of y
    expectTransform(canvas, {0, 3, -2, 0, 20, 41});
}

TEST(QuartzTransform, AgreesWithTheProductOfMatrices) {
    Random random;
    for (int round = 0; round < 200; ++round) {
        Canvas canvas(1, 1);
        LxMatrix expected = LxMatrix();
        for (int i = 0; i < 4; ++i) {
            const auto number = [&] { return static_cast<float>(random.integer(-20, 20)) / 4; };
            const LxCGAffineTransform t = {number(), number(), number(), number(), number(), number()};
            CGContextConcatCTM(canvas, t);
            const LxMatrix next = LxMatrix_WithCGAffineTransform(t);
            LxMatrix_MulMat(&expected, &next);
        }
        // Products of quarters are exact in either.
        expectTransform(canvas, LxMatrix_ToCGAffineTransform(expected));
    }
}

TEST(QuartzTransform, NothingShowsWithoutAnInverse) {
    for (const LxCGAffineTransform flat : {LxCGAffineTransform{0, 0, 0, 0, 0, 0},
                                           {1, 0, 0, 0, 0, 0},
                                           {1, 2, 2, 4, 3, 3},
                                           {0, 0, 0, 0, 5, 5}}) {
        Canvas canvas(12, 12);
        CGContextSaveGState(canvas);
        CGContextConcatCTM(canvas, flat);
        CGContextFillRect(canvas, everything);
        CGContextMoveToPoint(canvas, 0, 0);
        CGContextAddLineToPoint(canvas, 9, 9);
        CGContextAddLineToPoint(canvas, 0, 9);
        CGContextDrawPath(canvas, kCGPathFillStroke);
        CGContextSelectFont(canvas, "Helvetica", 10, kCGEncodingMacRoman);
        CGContextShowTextAtPoint(canvas, 1, 9, "H", 1);
        const uint32_t grey = 0;
        const CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, &grey, 1, nullptr);
        const CGImageHandle image(
            CGImageCreate(1, 1, 8, 8, 1, CGColorSpaceCreateDeviceGray(), 0, provider, nullptr, 0, 0));
        CGDataProviderRelease(provider);
        CGContextDrawImage(canvas, everything, image.get());
        canvas.expectAll(white);

        CGContextRestoreGState(canvas);
        CGContextDrawImage(canvas, everything, image.get());
        canvas.expectAll(black);
    }
}

TEST(QuartzTransform, OneThatIsNotFiniteGivesTheIdentity) {
    const float infinity = std::numeric_limits<float>::infinity();
    for (int element = 0; element < 6; ++element)
        for (const float bad : {NAN, infinity, -infinity}) {
            Canvas canvas(4, 4);
            CGContextConcatCTM(canvas, {2, 0, 0, 2, 1, 1});
            float elements[6] = {1, 0, 0, 1, 0, 0};
            elements[element] = bad;
            CGContextConcatCTM(
                canvas, {elements[0], elements[1], elements[2], elements[3], elements[4], elements[5]});
            expectTransform(canvas, identityTransform);
        }
}

TEST(QuartzTransform, CancellingByTheInverseWorksForAnyTransform) {
    for (const LxCGAffineTransform transform : {LxCGAffineTransform{0, 0, 0, 0, 0, 0},
                                                {0, 0, 0, 0, 3, 4},
                                                {2, 4, 1, 2, 3, 4},
                                                {4, 0, 0, 2, 8, 6},
                                                {3e38f, 0, 0, 3e38f, 3e38f, 0},
                                                {1e-30f, 0, 0, 1e-30f, 0, 0}}) {
        Canvas canvas(4, 4);
        CGContextConcatCTM(canvas, transform);
        CGContextConcatCTM(canvas, {2, 0, 0, 2, 0, 0}); // beyond the range for one of them
        LxMatrix inverse = LxMatrix_WithCGAffineTransform(CGContextGetCTM(canvas));
        LxMatrix_GetInverse(&inverse, &inverse);
        CGContextConcatCTM(canvas, LxMatrix_ToCGAffineTransform(inverse));
        const LxCGAffineTransform actual = CGContextGetCTM(canvas);
        EXPECT_NEAR(actual.a, 1, 1e-6);
        EXPECT_NEAR(actual.b, 0, 1e-6);
        EXPECT_NEAR(actual.c, 0, 1e-6);
        EXPECT_NEAR(actual.d, 1, 1e-6);
        EXPECT_NEAR(actual.tx, 0, 1e-6);
        EXPECT_NEAR(actual.ty, 0, 1e-6);
    }
}

TEST(QuartzColor, ComponentsAreCut) {
    const QuartzColor color = quartzColor(-1, 2, NAN, 0.5f);
    EXPECT_EQ(color.red, 0);
    EXPECT_EQ(color.green, 1);
    EXPECT_EQ(color.blue, 0);
    EXPECT_EQ(color.alpha, 0.5);
}
