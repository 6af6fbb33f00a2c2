#include <algorithm>

#include <gtest/gtest.h>

#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/Sheen.h>

#include <oxlume/LxNativeImage.h>

#include "tests/cocoa/Screen.h"
#include "tests/support/ImageHandle.h"

using namespace lx::test;

namespace {

void expectColor(const LxRGBA &color, int r, int g, int b) {
    EXPECT_EQ(color.r, r);
    EXPECT_EQ(color.g, g);
    EXPECT_EQ(color.b, b);
}

// Red, with blue up to (10, 10) from the origin of the view's coordinates.
void drawCorner(NSView *view) {
    [[NSColor redColor] set];
    NSRectFill([view bounds]);
    [[NSColor blueColor] set];
    NSRectFill(NSMakeRect(0, 0, 10, 10));
}

LxRGBA pixelOf(LxImage *image, int x, int y) {
    LxColor color = {};
    LxImage_PixelAt(image, x, y, &color);
    return color.content.rgba;
}

// 8 by 8 pixels, green.
ImageHandle greenImage() {
    ImageHandle image = makeImage(kLxPixelRGBA, 8, 8);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            LxImage_SetPixelAt(image.get(), x, y, LxColor_RGBA(0, 255, 0, 255));
    return image;
}

} // namespace

TEST(Focus, ViewsArePicturesAndImages) {
    NSView *view = showView(drawCorner);
    NSImage *picture = [view asImageFromRect:NSMakeRect(0, 0, 40, 30)];
    ASSERT_NE(picture, nil);
    EXPECT_EQ([picture size].width, 40);
    LxImage *image = [view asLxImageFromRect:NSMakeRect(0, 0, 40, 30)];
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_w(image), 40);
    EXPECT_EQ(LxImage_h(image), 30);
    expectColor(pixelOf(image, 0, 29), 0, 0, 255); // the platform's y grows upwards
    expectColor(pixelOf(image, 0, 0), 255, 0, 0);
    LxImage_Delete(image);
    LxImage *whole = [view asLxImage];
    EXPECT_EQ(LxImage_w(whole), 240);
    EXPECT_EQ(LxImage_h(whole), 200);
    LxImage_Delete(whole);
    EXPECT_EQ([[view asImage] size].height, 200);
}

TEST(Focus, NoPictureBelowOneByOneOrWithoutWindow) {
    NSView *view = showView(drawCorner);
    EXPECT_EQ([view asImageFromRect:NSMakeRect(0, 0, 0.5, 10)], nil);
    EXPECT_EQ([view asLxImageFromRect:NSMakeRect(0, 0, 10, 0.5)], nullptr);
    NSView *loose = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 50, 50)] autorelease];
    EXPECT_EQ([loose asImageFromRect:NSMakeRect(0, 0, 10, 10)], nil);
    EXPECT_EQ([loose asLxImage], nullptr);
    NSWindow *deferred = [[[NSWindow alloc] initWithContentRect:NSMakeRect(20, 20, 60, 60)
                                                      styleMask:NSBorderlessWindowMask
                                                        backing:NSBackingStoreBuffered
                                                          defer:YES] autorelease];
    [deferred setReleasedWhenClosed:NO];
    [deferred setContentView:loose];
    EXPECT_EQ([loose asImageFromRect:NSMakeRect(0, 0, 10, 10)], nil);
}

TEST(Focus, GrabsAreNativeImagesThatCountRowsAsTheViewDoes) {
    for (const bool flipped : {false, true}) {
        NSView *view = showView(drawCorner, flipped);
        [view lockFocus];
        LxImage *image = LxImage_CreateNativeFromNSView(view, NSMakeRect(0, 0, 40, 30));
        [view unlockFocus];
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(LxImage_NativeType(image), kLxNativeNSBitmapImageRep);
        EXPECT_EQ(LxImage_isFlipped(image), !flipped);
        // The grab's rows count from the top. An upward view's image is flipped, so that logical row 0 is the
        // view's y 0; a flipped view's rows are turned upside down.
        expectColor(pixelOf(image, 0, flipped ? 29 : 0), 0, 0, 255);
        expectColor(pixelOf(image, 0, flipped ? 0 : 29), 255, 0, 0);
        auto *rep = static_cast<NSBitmapImageRep *>(LxImage_NativeHandle(image));
        EXPECT_EQ([rep bitmapData], LxImage_Data(image));
        LxImage_Delete(image);
        [rep release];
    }
}

// The platform would be told of more bytes than such an image has, and read beyond the last pixel.
TEST(Focus, PremultipliedImagesAreNotDrawn) {
    const ImageHandle image = makeImage(kLxPixelRGBAPremultiplied, 8, 8);
    LxImage_Fill(image.get(), LxColor_RGBA(0, 255, 0, 255));
    NSView *view = showView([&](NSView *) {
        LxCocoa_BlitNSImage(20, 30, image.get());
        LxCocoa_BlitImage(100, 100, 132, 116, image.get());
    });
    EXPECT_NE(colorAt(view, 22, 32).g, 255);
    EXPECT_NE(colorAt(view, 101, 101).g, 255);
}

TEST(Focus, ImagesWithoutWholeRowsAreNotDrawn) {
    const LxRGBA green = {0, 255, 0, 255};
    LxRGBA pixels[64];
    std::fill(std::begin(pixels), std::end(pixels), green);
    const ImageHandle bare(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 8, 8, nullptr, 32, 0, 0, 0));
    const ImageHandle narrow(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 8, 8, pixels, 28, 0, 0, 0));
    NSView *view = showView([&](NSView *) {
        for (LxImage *image : {bare.get(), narrow.get()}) {
            LxCocoa_BlitNSImage(20, 30, image);
            LxCocoa_BlitImage(100, 100, 132, 116, image);
        }
    });
    EXPECT_NE(colorAt(view, 22, 32).g, 255);
    EXPECT_NE(colorAt(view, 101, 101).g, 255);
}

TEST(Focus, ImagesAndLinesAreDrawnWhereTold) {
    ImageHandle image = greenImage();
    NSView *view = showView([&](NSView *) {
        LxCocoa_BlitNSImage(20, 30, image.get());
        LxCocoa_BlitImage(100, 100, 132, 116, image.get());
        [[NSColor blueColor] set];
        LxG_HLine(50, 60, 90);
        LxG_VLine(200, 20, 80);
    });
    keepPicture(view, @"cocoa-focus");
    expectColor(colorAt(view, 20, 30), 0, 255, 0);
    expectColor(colorAt(view, 27, 37), 0, 255, 0);
    EXPECT_NE(colorAt(view, 28, 38).g, 255 - colorAt(view, 28, 38).r); // outside: grey, or nothing
    expectColor(colorAt(view, 101, 101), 0, 255, 0);
    expectColor(colorAt(view, 130, 114), 0, 255, 0);
    expectColor(colorAt(view, 50, 60), 0, 0, 255);
    expectColor(colorAt(view, 89, 60), 0, 0, 255);
    expectColor(colorAt(view, 200, 21), 0, 0, 255);
    expectColor(colorAt(view, 200, 79), 0, 0, 255);
}
