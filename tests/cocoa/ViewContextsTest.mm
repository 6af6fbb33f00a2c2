#include <gtest/gtest.h>

#include <oxlume/LxGC.h>

#include "tests/cocoa/Screen.h"

using namespace lx::test;

namespace {

void expectColor(const LxRGBA &color, int r, int g, int b) {
    EXPECT_EQ(color.r, r);
    EXPECT_EQ(color.g, g);
    EXPECT_EQ(color.b, b);
}

// Fills a rectangle with green through a path.
void fillRect(LxGC *gc, double x0, double y0, double x1, double y1) {
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(0, 255, 0, 255));
    LxGC_Frame(gc, x0, y0, x1, y1);
    LxGC_Flush(gc);
}

} // namespace

TEST(ViewContexts, DrawInTheViewsCoordinates) {
    for (const bool flipped : {false, true}) {
        NSView *view = showView(
            [](NSView *shown) {
                [[NSColor whiteColor] set];
                NSRectFill([shown bounds]);
                LxGC *gc = LxGC_CreateWithNSView(shown);
                ASSERT_NE(gc, nullptr);
                const LxRectD bounds = LxGC_BoundsRect(gc);
                EXPECT_EQ(bounds.x1, 240);
                EXPECT_EQ(bounds.y1, 200);
                fillRect(gc, 30, 40, 60, 90);
                LxGC_Delete(gc);
            },
            flipped);
        keepPicture(view, flipped ? @"cocoa-context-flipped" : @"cocoa-context");
        expectColor(colorAt(view, 32, 42), 0, 255, 0);
        expectColor(colorAt(view, 58, 88), 0, 255, 0);
        expectColor(colorAt(view, 28, 42), 255, 255, 255);
        expectColor(colorAt(view, 32, 92), 255, 255, 255);
        expectColor(colorAt(view, 62, 42), 255, 255, 255);
    }
}

TEST(ViewContexts, TheFocusComesBack) {
    NSView *view = showView([](NSView *) {});
    NSView *inner = [[[NSView alloc] initWithFrame:NSMakeRect(100, 50, 60, 40)] autorelease];
    [view addSubview:inner];
    [view lockFocus];
    LxGC *gc = LxGC_CreateWithNSView(inner);
    ASSERT_NE(gc, nullptr);
    EXPECT_EQ([NSView focusView], view);
    EXPECT_EQ(LxGC_BoundsRect(gc).x1, 60);
    fillRect(gc, 5, 5, 15, 15);
    [view unlockFocus];
    LxGC_Delete(gc);
    expectColor(colorAt(view, 110, 60), 0, 255, 0);
}

TEST(ViewContexts, NoViewNoContext) {
    EXPECT_EQ(LxGC_CreateWithNSView(nullptr), nullptr);
    NSView *loose = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 50, 50)] autorelease];
    EXPECT_EQ(LxGC_CreateWithNSView(loose), nullptr);
    EXPECT_EQ(LxGC_CreateWithNSOpenGLView(nullptr), nullptr);
}
