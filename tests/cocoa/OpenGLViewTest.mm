// A context on a real NSOpenGLView, whose OpenGL context the X server of the tests gives.

#include <gtest/gtest.h>

#import <AppKit/NSOpenGL.h>
#import <AppKit/NSOpenGLView.h>

#include <GL/gl.h>

#include <oxlume/LxGC.h>

#include "tests/cocoa/Screen.h"

using namespace lx::test;

namespace {

// A view in the window, with its context current.
NSOpenGLView *showOpenGLView() {
    const auto number = [](int value) { return static_cast<NSOpenGLPixelFormatAttribute>(value); };
    NSOpenGLPixelFormatAttribute attributes[] = {NSOpenGLPFAColorSize, number(24), number(0)};
    NSOpenGLPixelFormat *format = [[[NSOpenGLPixelFormat alloc] initWithAttributes:attributes] autorelease];
    if (format == nil)
        return nil;
    NSOpenGLView *view = [[[NSOpenGLView alloc] initWithFrame:NSMakeRect(0, 0, 240, 200)
                                                  pixelFormat:format] autorelease];
    show(view);
    [[view openGLContext] makeCurrentContext];
    return [NSOpenGLContext currentContext] != nil ? view : nil;
}

// What OpenGL has at a place, rows counted from the bottom.
LxRGBA pixelAt(int x, int y) {
    LxRGBA color = {};
    glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, &color);
    return color;
}

} // namespace

TEST(OpenGLView, IsDrawnOnByOpenGL) {
    NSOpenGLView *view = showOpenGLView();
    ASSERT_NE(view, nil) << "the X server gives no OpenGL context; is there a driver for it?";
    LxGC *gc = LxGC_CreateWithNSOpenGLView(view);
    ASSERT_NE(gc, nullptr);
    const LxRectD bounds = LxGC_BoundsRect(gc), clip = LxGC_ClipRect(gc);
    EXPECT_EQ(bounds.x0, 0);
    EXPECT_EQ(bounds.y0, 0);
    EXPECT_EQ(bounds.x1, 240);
    EXPECT_EQ(bounds.y1, 200);
    EXPECT_EQ(clip.x1, 240);
    EXPECT_EQ(clip.y1, 200);
    LxGC_Fill(gc, LxColor_RGBA(255, 255, 255, 255));
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(0, 128, 255, 255));
    LxGC_Frame(gc, 30, 40, 60, 90);
    LxGC_Sync(gc);
    EXPECT_EQ(pixelAt(31, 41).g, 128);
    EXPECT_EQ(pixelAt(58, 88).b, 255);
    EXPECT_EQ(pixelAt(58, 88).r, 0);
    EXPECT_EQ(pixelAt(28, 41).r, 255);
    EXPECT_EQ(pixelAt(31, 38).r, 255);
    EXPECT_EQ(pixelAt(62, 88).r, 255);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    LxGC_Delete(gc);
    [NSOpenGLContext clearCurrentContext];
}
