// What can be said of text whatever the font that the system offers.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/quartz/QuartzContext.h"
#include "tests/platform/quartz/Canvas.h"

using namespace lx;
using namespace lx::test;

// What the leak checker overlooks: cairo and fontconfig keep a pattern of each font for the process.
extern "C" const char *__lsan_default_suppressions();
const char *__lsan_default_suppressions() {
    return "leak:libfontconfig";
}

namespace {

void show(CGContextRef context, float x, float y, const char *text, float size = 20,
          int32_t encoding = kCGEncodingMacRoman) {
    CGContextSelectFont(context, "Helvetica", size, encoding);
    CGContextShowTextAtPoint(context, x, y, text, std::strlen(text));
}

} // namespace

TEST(QuartzText, StandsOnItsBaseline) {
    Canvas canvas(40, 40);
    show(canvas, 10, 30, "L");
    EXPECT_GT(canvas.ink(), 20 * 255);
    for (int32_t y = 0; y < 40; ++y) {
        if (y < 14 || y >= 31) { // capitals are about 0.7 of the size high
            EXPECT_EQ(canvas.inkInRow(y), 0) << y;
        }
    }
    EXPECT_GT(canvas.inkInRow(29), 2 * canvas.inkInRow(20)) << "the foot is at the bottom";
    for (int32_t y = 0; y < 40; ++y)
        for (int32_t x = 0; x < 9; ++x)
            EXPECT_EQ(canvas.at(x, y), white);
}

TEST(QuartzText, StandsUprightWhereYGrowsUp) {
    Canvas down(40, 40);
    show(down, 10, 30, "L");
    const SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 40, 40));
    const QuartzHandle up(LxQuartz_CreateWithSurfaceYUp(surface.get(), 40));
    CGContextSetRGBFillColor(up.get(), 1, 1, 1, 1);
    CGContextFillRect(up.get(), {0, 0, 40, 40});
    CGContextSetRGBFillColor(up.get(), 0, 0, 0, 1);
    show(up.get(), 10, 10, "L");
    CGContextFlush(up.get());
    const uint8_t *data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    for (int32_t y = 0; y < 40; ++y)
        for (int32_t x = 0; x < 40; ++x)
            EXPECT_NEAR(data[y * stride + x * 4], down.at(x, y).g, 2) << x << ", " << y;
}

TEST(QuartzText, TakesTheFillColourAndAlpha) {
    Canvas canvas(60, 60);
    CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
    show(canvas, 0, 58, "I", 100); // a stem that covers whole pixels
    bool found = false;
    for (const Pixel &pixel : canvas.pixels()) {
        EXPECT_EQ(pixel.r, 255);
        found = found || pixel == red;
    }
    EXPECT_TRUE(found);

    Canvas faint(60, 60);
    CGContextSetAlpha(faint, 0.25f);
    show(faint, 0, 58, "I", 100);
    uint8_t darkest = 255;
    for (const Pixel &pixel : faint.pixels())
        darkest = std::min(darkest, pixel.g);
    EXPECT_NEAR(darkest, 191, 2); // 255 * 3 / 4
}

TEST(QuartzText, ReadsMacRoman) {
    // The same letters by the platform's bytes and by their code points.
    const struct {
        const char *macRoman, *latin1;
    } same[] = {{"\x8e", "\xe9"}, {"\x80", "\xc4"}, {"\xa7", "\xdf"}, {"\xbf", "\xf8"},
                {"\xd8", "\xff"}, {"\xe5", "\xc2"}, {"\xf4", "\xd9"}, {"A", "A"}};
    for (const auto &pair : same) {
        Canvas one(40, 40), other(40, 40);
        show(one, 5, 30, pair.macRoman, 20, kCGEncodingMacRoman);
        show(other, 5, 30, pair.latin1, 20, kCGEncodingFontSpecific);
        EXPECT_GT(one.ink(), 0);
        EXPECT_EQ(one.pixels(), other.pixels()) << pair.latin1;
    }
}

TEST(QuartzText, ReadsMacRomanBeyondLatin1) {
    // A dash as long as the size lies half way up the small letters, in few rows, and is longer than a
    // hyphen.
    Canvas dash(60, 40), hyphen(60, 40);
    show(dash, 5, 30, "\xd1");
    show(hyphen, 5, 30, "-");
    int32_t rows = 0;
    for (int32_t y = 0; y < 40; ++y)
        rows += dash.inkInRow(y) > 0 ? 1 : 0;
    EXPECT_GE(rows, 1);
    EXPECT_LE(rows, 4);
    EXPECT_GT(dash.ink(), 2 * hyphen.ink());
    EXPECT_EQ(dash.inkInRow(30), 0) << "above its baseline";
}

TEST(QuartzText, DrawsAsManyBytesAsTold) {
    Canvas one(60, 40), two(60, 40), none(60, 40);
    show(one, 5, 30, "A");
    CGContextSelectFont(two, "Helvetica", 20, kCGEncodingMacRoman);
    CGContextShowTextAtPoint(two, 5, 30, "AB", 1);
    EXPECT_EQ(one.pixels(), two.pixels());
    CGContextSelectFont(none, "Helvetica", 20, kCGEncodingMacRoman);
    CGContextShowTextAtPoint(none, 5, 30, "AB", 0);
    CGContextShowTextAtPoint(none, 5, 30, nullptr, 3);
    none.expectAll(white);
    CGContextShowTextAtPoint(none, 5, 30, "\0\n\tA", 4);
    EXPECT_EQ(one.pixels(), none.pixels()) << "control characters are left out";
}

TEST(QuartzText, NeedsAFont) {
    Canvas canvas(20, 20);
    CGContextShowTextAtPoint(canvas, 2, 18, "A", 1);
    CGContextSelectFont(canvas, nullptr, 10, kCGEncodingMacRoman);
    CGContextSelectFont(canvas, "Helvetica", NAN, kCGEncodingMacRoman);
    CGContextSelectFont(canvas, "Helvetica\xff", 10, kCGEncodingMacRoman);
    CGContextShowTextAtPoint(canvas, 2, 18, "A", 1);
    CGContextShowTextAtPoint(canvas, NAN, 18, "A", 1);
    canvas.expectAll(white);
}

TEST(QuartzText, GoesThroughTheTransform) {
    Canvas plain(60, 60), scaled(60, 60);
    show(plain, 10, 50, "e", 40);
    CGContextConcatCTM(scaled, {2, 0, 0, 2, 0, 0});
    show(scaled, 5, 25, "e", 20);
    EXPECT_EQ(plain.pixels(), scaled.pixels());
}

TEST(QuartzText, HasModes) {
    int32_t ink[4];
    for (int32_t mode = kCGTextFill; mode <= kCGTextInvisible; ++mode) {
        Canvas canvas(60, 60);
        CGContextSetTextDrawingMode(canvas, mode);
        CGContextSetTextDrawingMode(canvas, 7);
        CGContextSetLineWidth(canvas, 3);
        show(canvas, 5, 55, "O", 60);
        ink[mode] = canvas.ink();
    }
    EXPECT_GT(ink[kCGTextFill], 0);
    EXPECT_GT(ink[kCGTextStroke], 0);
    EXPECT_GT(ink[kCGTextFillStroke], ink[kCGTextFill]);
    EXPECT_GT(ink[kCGTextFillStroke], ink[kCGTextStroke]);
    EXPECT_EQ(ink[kCGTextInvisible], 0);
}

TEST(QuartzText, KeepsThePath) {
    for (const int32_t mode : {kCGTextFill, kCGTextStroke}) {
        Canvas canvas(40, 40);
        CGContextSetTextDrawingMode(canvas, mode);
        CGContextMoveToPoint(canvas, 0, 0);
        CGContextAddLineToPoint(canvas, 5, 0);
        show(canvas, 10, 30, "A");
        CGContextAddLineToPoint(canvas, 5, 5);
        CGContextAddLineToPoint(canvas, 0, 5);
        CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
        CGContextDrawPath(canvas, kCGPathFill);
        EXPECT_EQ(canvas.at(0, 0), red);
        EXPECT_EQ(canvas.at(4, 4), red);
        EXPECT_EQ(canvas.at(6, 6), white);
    }
}
