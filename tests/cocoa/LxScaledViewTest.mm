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

} // namespace

TEST(LxScaledView, WithoutPicturesTheScreenStays) {
    WhiteScaledView *view = makeView(150);
    show(view);
    EXPECT_TRUE(isWhite(colorAt(view, 20, 10)));
    [view Refresh:nil];
    EXPECT_TRUE([view needsDisplay]);
}

TEST(LxScaledView, DrawsFourBarsOfTheSlidersWidth) {
    // Five columns between six marks. Black everywhere else, so that burning it into white shows.
    NSBitmapImageRep *rep = makeBitmap(60, 40, 4);
    markColumns(rep, {0, 0, 0, 255}, {3, 14, 22, 34, 45, 58});
    NSImage *bar = [[NSImage alloc] initWithSize:NSMakeSize(60, 40)];
    [bar addRepresentation:rep];
    [bar setName:@"Region_R__1N"];
    NSImage *other = [[NSImage alloc] initWithSize:NSMakeSize(8, 8)];
    [other setName:@"df_region_a_03"];

    WhiteScaledView *view = makeView(150);
    show(view);
    keepPicture(view, @"cocoa-scaled-view");
    // The middle of each bar stretches over its row of the view, and ends with the slider's width.
    for (const int y : {0, 44, 88, 132}) {
        EXPECT_FALSE(isWhite(colorAt(view, 75, y + 10))) << y;
        EXPECT_TRUE(isWhite(colorAt(view, 160, y + 10))) << y;
    }
    [bar setName:nil];
    [other setName:nil];
}
