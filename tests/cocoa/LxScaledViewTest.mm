#include <gtest/gtest.h>

#import <oxlume/cocoa/LxScaledView.h>

#include "tests/cocoa/Bitmap.h"
#include "tests/cocoa/Screen.h"

using namespace lx::test;

// A view that holds white, with a slider of a told width.
@interface WhiteScaledView : LxScaledView
- (void)setWidth:(int)width;
@end

@implementation WhiteScaledView
- (void)setWidth:(int)width {
    m_XSlider = [[NSSlider alloc] initWithFrame:NSMakeRect(0, 0, 100, 20)];
    [m_XSlider setMaxValue:1000];
    [m_XSlider setIntValue:width];
}
- (void)dealloc {
    [m_XSlider release];
    [super dealloc];
}
- (void)drawRect:(NSRect)rect {
    [[NSColor whiteColor] set];
    NSRectFill([self bounds]);
    [super drawRect:rect];
}
@end

namespace {

WhiteScaledView *makeView(int width) {
    WhiteScaledView *view = [[[WhiteScaledView alloc] initWithFrame:NSMakeRect(0, 0, 240, 200)] autorelease];
    [view setWidth:width];
    return view;
}

bool isWhite(const LxRGBA &color) {
    return color.r == 255 && color.g == 255 && color.b == 255;
}

// Paints columns x0 to x1 of a bitmap, but for the rows and columns that hold marks.
void paintColumns(NSBitmapImageRep *rep, int x0, int x1, LxRGBA color) {
    for (int y = 3; y < [rep pixelsHigh]; ++y)
        for (int x = x0; x <= x1; ++x)
            std::memcpy(planeOf(rep) + y * [rep bytesPerRow] + x * 4, &color, 4);
}

void expectColor(const LxRGBA &color, const LxRGBA &expected) {
    EXPECT_EQ(color.r, expected.r);
    EXPECT_EQ(color.g, expected.g);
    EXPECT_EQ(color.b, expected.b);
}

} // namespace

TEST(LxScaledView, WithoutPicturesTheScreenStays) {
    WhiteScaledView *view = makeView(150);
    show(view);
    EXPECT_TRUE(isWhite(colorAt(view, 20, 10)));
    [view Refresh:nil];
    EXPECT_TRUE([view needsDisplay]);
}

TEST(LxScaledView, DrawsFourBarsWithTheirEndsStretchedToTheSlider) {
    // Five columns between six marks: left, middle, right, and the other left and right. In components of 0
    // and 255 burning a colour into white gives the colour.
    constexpr LxRGBA left = {255, 0, 0, 255}, middle = {0, 255, 0, 255}, right = {0, 0, 255, 255},
                     otherLeft = {255, 255, 0, 255}, otherRight = {255, 0, 255, 255};
    NSBitmapImageRep *rep = makeBitmap(64, 40, 4);
    markColumns(rep, {0, 0, 0, 255}, {3, 14, 22, 34, 45, 60});
    paintColumns(rep, 4, 13, left);
    paintColumns(rep, 15, 21, middle);
    paintColumns(rep, 23, 33, right);
    paintColumns(rep, 35, 44, otherLeft);
    paintColumns(rep, 46, 59, otherRight);
    NSImage *bar = [[NSImage alloc] initWithSize:NSMakeSize(64, 40)];
    [bar addRepresentation:rep];
    [bar setName:@"Region_R__1N"];
    NSImage *unused = [[NSImage alloc] initWithSize:NSMakeSize(8, 8)];
    [unused setName:@"df_region_a_03"];

    WhiteScaledView *view = makeView(150);
    show(view);
    keepPicture(view, @"cocoa-scaled-view");
    const struct {
        int y;
        LxRGBA left, right;
    } bars[] = {
        {0, left, right}, {44, left, otherRight}, {88, otherLeft, right}, {132, otherLeft, otherRight}};
    for (const auto &shown : bars) {
        const int y = shown.y + 20;
        expectColor(colorAt(view, 4, y), shown.left);
        expectColor(colorAt(view, 75, y), middle);
        expectColor(colorAt(view, 146, y), shown.right);
        EXPECT_TRUE(isWhite(colorAt(view, 151, y)));
        EXPECT_TRUE(isWhite(colorAt(view, 75, shown.y + 41)));
    }
    [bar setName:nil];
    [unused setName:nil];
}
