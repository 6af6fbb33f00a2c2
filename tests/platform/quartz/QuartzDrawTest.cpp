#include <cmath>
#include <limits>

#include "platform/quartz/QuartzContext.h"
#include "tests/platform/quartz/Canvas.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

void addRect(CGContextRef context, float x0, float y0, float x1, float y1) {
    CGContextMoveToPoint(context, x0, y0);
    CGContextAddLineToPoint(context, x1, y0);
    CGContextAddLineToPoint(context, x1, y1);
    CGContextAddLineToPoint(context, x0, y1);
    CGContextClosePath(context);
}

} // namespace

TEST(QuartzFillRect, PaintsWholePixelsExactly) {
    Canvas canvas(10, 10);
    CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
    CGContextFillRect(canvas, {2, 3, 4, 5});
    canvas.expectBox(2, 3, 6, 8, red);
}

TEST(QuartzFillRect, ANegativeSizeReachesToTheOtherSide) {
    Canvas canvas(10, 10);
    CGContextSetRGBFillColor(canvas, 0, 0, 1, 1);
    CGContextFillRect(canvas, {6, 8, -4, -5});
    canvas.expectBox(2, 3, 6, 8, blue);
}

TEST(QuartzFillRect, HalfAPixelIsHalfThere) {
    Canvas canvas(2, 1);
    CGContextFillRect(canvas, {0, 0, 0.5f, 1});
    EXPECT_TRUE(isClose(canvas.at(0, 0), {127, 127, 127, 255}, 2)) << canvas.at(0, 0);
    EXPECT_EQ(canvas.at(1, 0), white);
}

TEST(QuartzFillRect, GoesThroughTheTransform) {
    Canvas canvas(10, 10);
    CGContextConcatCTM(canvas, {2, 0, 0, 3, 1, 1});
    CGContextFillRect(canvas, {1, 1, 2, 2}); // (1, 1) to (3, 4), (3, 3) to (7, 10)
    canvas.expectBox(3, 4, 7, 10, black);

    Canvas turned(10, 10);
    CGContextConcatCTM(turned, {0, 1, -1, 0, 10, 0}); // (x, y) to (10 - y, x)
    CGContextFillRect(turned, {1, 2, 3, 4});
    turned.expectBox(4, 1, 8, 4, black);
}

TEST(QuartzFillRect, EmptiesThePath) {
    Canvas canvas(10, 10);
    addRect(canvas, 5, 5, 9, 9);
    CGContextFillRect(canvas, {0, 0, 1, 1});
    CGContextDrawPath(canvas, kCGPathFill);
    canvas.expectBox(0, 0, 1, 1, black);
}

TEST(QuartzFillRect, SizesThatAreNoNumberAreNothing) {
    const float infinity = std::numeric_limits<float>::infinity();
    Canvas canvas(4, 4);
    for (const LxCGRect rect : {LxCGRect{0, 0, 0, 4}, {0, 0, NAN, 4}, {NAN, 0, 4, 4}, {0, 0, infinity, 4}})
        CGContextFillRect(canvas, rect);
    canvas.expectAll(white);
    CGContextFillRect(canvas, {-1e30f, -1e30f, 2e30f, 2e30f});
    canvas.expectAll(black);
}

TEST(QuartzAlpha, MultipliesTheColoursOwn) {
    Canvas canvas(2, 1);
    CGContextSetRGBFillColor(canvas, 1, 0, 0, 0.5f);
    CGContextSetAlpha(canvas, 0.5f);
    CGContextFillRect(canvas, {0, 0, 1, 1}); // white times 3/4 in green and blue
    EXPECT_TRUE(isClose(canvas.at(0, 0), {255, 191, 191, 255}, 1)) << canvas.at(0, 0);

    Canvas clear(1, 1, nothing); // premultiplied: a quarter of red
    CGContextSetRGBFillColor(clear, 1, 0, 0, 0.25f);
    CGContextFillRect(clear, {0, 0, 1, 1});
    EXPECT_TRUE(isClose(clear.at(0, 0), {64, 0, 0, 64}, 1)) << clear.at(0, 0);
}

TEST(QuartzPath, TheTwoRulesDifferInTheMiddle) {
    for (const int32_t mode : {kCGPathFill, kCGPathEOFill}) {
        Canvas canvas(10, 10);
        addRect(canvas, 1, 1, 9, 9);
        addRect(canvas, 3, 3, 7, 7);
        CGContextDrawPath(canvas, mode);
        EXPECT_EQ(canvas.at(2, 2), black);
        EXPECT_EQ(canvas.at(5, 5), mode == kCGPathFill ? black : white);
        EXPECT_EQ(canvas.at(0, 0), white);
    }
}

TEST(QuartzPath, FillsAndStrokesInOneCall) {
    for (const int32_t mode : {kCGPathFill, kCGPathStroke, kCGPathFillStroke, kCGPathEOFillStroke}) {
        Canvas canvas(12, 12);
        CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
        CGContextSetRGBStrokeColor(canvas, 0, 0, 1, 1);
        CGContextSetLineWidth(canvas, 2);
        addRect(canvas, 3, 3, 9, 9);
        CGContextDrawPath(canvas, mode);
        const bool fills = mode != kCGPathStroke, strokes = mode != kCGPathFill;
        EXPECT_EQ(canvas.at(5, 5), fills ? red : white) << mode;
        EXPECT_EQ(canvas.at(2, 5), strokes ? blue : white) << mode; // outside the path, half the width
        EXPECT_EQ(canvas.at(2, 2), strokes ? blue : white) << "mitred";
        EXPECT_EQ(canvas.at(3, 5), strokes ? blue : red) << mode;
        EXPECT_EQ(canvas.at(1, 5), white);
    }
}

TEST(QuartzPath, DrawingEmptiesItAndAnUnknownModeDoesNot) {
    Canvas canvas(4, 4);
    addRect(canvas, 0, 0, 4, 4);
    for (const int32_t mode : {-1, 5, INT32_MAX, INT32_MIN})
        CGContextDrawPath(canvas, mode);
    canvas.expectAll(white);
    CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
    CGContextDrawPath(canvas, kCGPathFill);
    canvas.expectAll(red);
    CGContextSetRGBFillColor(canvas, 0, 0, 1, 1);
    CGContextDrawPath(canvas, kCGPathFill);
    canvas.expectAll(red);
}

TEST(QuartzPath, PointsKeepTheTransformThatTheyCameUnder) {
    Canvas canvas(8, 8);
    CGContextMoveToPoint(canvas, 1, 1);
    CGContextAddLineToPoint(canvas, 5, 1);
    CGContextConcatCTM(canvas, {2, 0, 0, 2, 1, 1});
    CGContextAddLineToPoint(canvas, 2, 2); // (5, 5)
    CGContextAddLineToPoint(canvas, 0, 2); // (1, 5)
    CGContextDrawPath(canvas, kCGPathFill);
    canvas.expectBox(1, 1, 5, 5, black);
}

TEST(QuartzPath, LinesWithoutACurrentPointDoNothing) {
    Canvas canvas(8, 8);
    CGContextAddLineToPoint(canvas, 1, 1);
    CGContextClosePath(canvas);
    CGContextAddLineToPoint(canvas, 7, 1);
    CGContextAddLineToPoint(canvas, 7, 7);
    CGContextDrawPath(canvas, kCGPathFillStroke);
    canvas.expectAll(white);
}

TEST(QuartzPath, ALineAfterACloseBeginsAtTheSubpathsStart) {
    Canvas canvas(8, 8);
    CGContextMoveToPoint(canvas, 1, 1.5f);
    CGContextAddLineToPoint(canvas, 1, 7);
    CGContextBeginPath(canvas);
    CGContextMoveToPoint(canvas, 1, 1.5f);
    CGContextClosePath(canvas);
    CGContextAddLineToPoint(canvas, 7, 1.5f);
    CGContextStrokePath(canvas);
    canvas.expectBox(1, 1, 7, 2, black);
}

TEST(QuartzStroke, AClosedLineIsTheLine) {
    Canvas canvas(10, 10);
    CGContextMoveToPoint(canvas, 2, 5.5f);
    CGContextAddLineToPoint(canvas, 8, 5.5f);
    CGContextClosePath(canvas);
    CGContextStrokePath(canvas);
    canvas.expectBox(2, 5, 8, 6, black);
}

TEST(QuartzStroke, WidthsAreOfUserSpace) {
    Canvas canvas(12, 12);
    CGContextConcatCTM(canvas, {1, 0, 0, 4, 0, 0}); // lines along x are four times as thick
    CGContextMoveToPoint(canvas, 1, 1.5f);
    CGContextAddLineToPoint(canvas, 9, 1.5f);
    CGContextStrokePath(canvas);
    canvas.expectBox(1, 4, 9, 8, black);
}

TEST(QuartzStroke, NoWidthNoLine) {
    Canvas canvas(6, 6);
    for (const float width : {0.0f, -3.0f, static_cast<float>(NAN)}) {
        CGContextSetLineWidth(canvas, width);
        CGContextMoveToPoint(canvas, 0, 3);
        CGContextAddLineToPoint(canvas, 6, 3);
        CGContextStrokePath(canvas);
    }
    canvas.expectAll(white);
}

TEST(QuartzPath, FarPointsAreCutAndInfiniteOnesLeftOut) {
    const float infinity = std::numeric_limits<float>::infinity();
    Canvas canvas(8, 8);
    CGContextMoveToPoint(canvas, -1e30f, -1e30f);
    CGContextAddLineToPoint(canvas, 1e30f, -1e30f);
    CGContextAddLineToPoint(canvas, NAN, 3);
    CGContextAddLineToPoint(canvas, 3, infinity);
    CGContextAddLineToPoint(canvas, 3e38f, 4);
    CGContextAddLineToPoint(canvas, -3e38f, 4);
    CGContextDrawPath(canvas, kCGPathFill);
    canvas.expectBox(0, 0, 8, 4, black);
}

TEST(QuartzPath, AnyNumbersAreSafe) {
    Random random;
    const float infinity = std::numeric_limits<float>::infinity();
    const float special[] = {0, -0.0f, NAN, infinity, -infinity, 3e38f, -3e38f, 1e-40f, 2097152, -8388608, 1};
    const auto number = [&] {
        const int32_t choice = random.integer(0, 20);
        if (choice < 11)
            return special[choice];
        return static_cast<float>(random.integer(-400, 400)) * (choice < 18 ? 0.25f : 1e5f);
    };
    Canvas canvas(16, 16);
    const uint32_t pixels[4] = {0xff000000u, 0x80808080u, 1, 2};
    const CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, pixels, sizeof pixels, nullptr);
    const CGImageHandle image(CGImageCreate(2, 2, 8, 32, 8, CGColorSpaceCreateDeviceRGB(), kCGImageAlphaLast,
                                            provider, nullptr, 0, 0));
    CGDataProviderRelease(provider);
    CGContextSelectFont(canvas, "Helvetica", 10, kCGEncodingMacRoman);
    for (int round = 0; round < 1000; ++round) {
        CGContextSaveGState(canvas);
        CGContextConcatCTM(canvas, {number(), number(), number(), number(), number(), number()});
        CGContextSetLineWidth(canvas, number());
        for (int i = random.integer(0, 6); i > 0; --i) {
            (random.integer(0, 3) == 0 ? CGContextMoveToPoint : CGContextAddLineToPoint)(canvas, number(),
                                                                                         number());
            if (random.integer(0, 4) == 0)
                CGContextClosePath(canvas);
        }
        CGContextSetInterpolationQuality(canvas, random.integer(0, 3));
        CGContextDrawImage(canvas, {number(), number(), number(), number()}, image.get());
        CGContextShowTextAtPoint(canvas, number(), number(), "Text", 4);
        CGContextDrawPath(canvas, random.integer(0, 4));
        CGContextFillRect(canvas, {number(), number(), number(), number()});
        CGContextRestoreGState(canvas);
    }
    CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
    CGContextFillRect(canvas, {0, 0, 16, 16}); // and the context still works
    canvas.expectAll(red);
}
