#include <vector>

#include <gtest/gtest.h>

#import <oxlume/cocoa/Sheen.h>

#include "tests/cocoa/Bitmap.h"
#include "tests/support/Random.h"

using namespace lx::test;

namespace {

NSImage *makePicture(NSBitmapImageRep *rep) {
    NSImage *picture = [[[NSImage alloc] initWithSize:[rep size]] autorelease];
    [picture addRepresentation:rep];
    return picture;
}

} // namespace

TEST(NSImageSheen, PictureOverAnImageAlwaysHasAlpha) {
    for (const int32_t type : {kLxPixelRGB, kLxPixelRGBA}) {
        ImageHandle image = makeImage(type, 5, 4);
        NSImage *picture = [[NSImage alloc] initWithContentsOfLxImage:image.get()];
        ASSERT_NE(picture, nil);
        EXPECT_TRUE([firstRep(picture) hasAlpha]);
        EXPECT_EQ(planeOf(firstRep(picture)), LxImage_Data(image.get()));
        [picture release];
    }
    EXPECT_EQ([[NSImage alloc] initWithContentsOfLxImage:nullptr], nil);
    ImageHandle narrow = makeImage(kLxPixelRGBA, 1, 4);
    EXPECT_EQ([[NSImage alloc] initWithContentsOfLxImage:narrow.get()], nil);
}

TEST(NSImageSheen, NewPictureRoundsUpAndAlignsRows) {
    NSImage *picture = [[NSImage alloc] initWithSize:NSMakeSize(5.25, 3) andPixelType:kLxPixelRGB];
    ASSERT_NE(picture, nil);
    NSBitmapImageRep *rep = firstRep(picture);
    EXPECT_EQ([rep pixelsWide], 6);
    EXPECT_EQ([rep pixelsHigh], 3);
    EXPECT_EQ([rep bytesPerRow], 32); // 18 rounded up to a multiple of 16
    EXPECT_EQ([rep bitsPerPixel], 24);
    EXPECT_EQ([picture size].width, 5.25);
    EXPECT_NE(planeOf(rep), nullptr);
    [picture release];
}

TEST(NSImageSheen, SizesOfNewPicturesAreOfSinglePrecision) {
    NSImage *picture = [[NSImage alloc] initWithSize:NSMakeSize(5.0000000001, 3) andPixelType:kLxPixelRGB];
    EXPECT_EQ([firstRep(picture) pixelsWide], 5);
    [picture release];
}

TEST(NSImageSheen, NewPictureIsAboveOneByOne) {
    const NSSize refused[] = {NSMakeSize(1, 5),
                              NSMakeSize(5, 1),
                              NSMakeSize(0, 0),
                              NSMakeSize(-4, 4),
                              NSMakeSize(1.0000000001, 4),
                              NSMakeSize(1e18, 4)};
    for (const NSSize &size : refused)
        EXPECT_EQ([[NSImage alloc] initWithSize:size andPixelType:kLxPixelRGBA], nil);
    EXPECT_EQ([[NSImage alloc] initWithSize:NSMakeSize(4, 4) andPixelType:kLxPixelL], nil);
}

TEST(NSImageSheen, FillTakesRowsAsPacked) {
    const LxRGBA color = {1, 2, 3, 4};
    for (const int bytes : {4, 3}) {
        NSBitmapImageRep *rep = makeBitmap(5, 3, bytes, 32);
        uint8_t *pixels = planeOf(rep);
        std::memset(pixels, 9, 32 * 3);
        [makePicture(rep) LxFill:&color];
        for (int i = 0; i < 32 * 3; ++i)
            EXPECT_EQ(pixels[i], i < 5 * 3 * bytes ? i % bytes + 1 : 9) << bytes << " " << i;
    }
}

TEST(NSImageSheen, FillLeavesOtherDepths) {
    const LxRGBA color = {1, 2, 3, 4};
    const LxBlend blend = LxBlend_WithChannel(2, 255, 6);
    for (const int bytes : {1, 2}) {
        NSBitmapImageRep *rep = makeBitmap(5, 3, bytes);
        const auto size = static_cast<size_t>([rep bytesPerRow] * 3);
        std::memset(planeOf(rep), 9, size);
        [makePicture(rep) LxFill:&color];
        [makePicture(rep) LxFill:&color withBlender:&blend];
        EXPECT_EQ(std::vector<uint8_t>(planeOf(rep), planeOf(rep) + size), std::vector<uint8_t>(size, 9));
    }
    [makePicture(makeBitmap(5, 3, 4)) LxFill:nullptr];
    [makePicture(makeBitmap(5, 3, 4)) LxFill:&color withBlender:nullptr];
    [[[[NSImage alloc] initWithSize:NSMakeSize(4, 4)] autorelease] LxFill:&color];
}

TEST(NSImageSheen, BlendingFillIsThePixelKernel) {
    Random random(3);
    for (int round = 0; round < 60; ++round) {
        const int bytes = random.coin() ? 4 : 3;
        const LxRGBA color = {random.byte(), random.byte(), random.byte(), random.byte()};
        LxBlend blend =
            LxBlend_WithChannel(random.integer(0, 32), random.integer(0, 255), random.integer(1, 6));
        NSBitmapImageRep *rep = makeBitmap(6, 4, bytes, 32);
        uint8_t *pixels = planeOf(rep);
        for (int i = 0; i < 32 * 4; ++i)
            pixels[i] = random.byte();
        std::vector<uint8_t> expected(pixels, pixels + 32 * 4);
        const auto kernel =
            LxBlend_SelectPixelBlendFunction(bytes == 4 ? kLxPixelRGBA : kLxPixelRGB, kLxPixelRGBA);
        for (int i = 0; i < 6 * 4; ++i)
            kernel(&blend, &expected[i * bytes], &expected[i * bytes], &color);
        [makePicture(rep) LxFill:&color withBlender:&blend];
        EXPECT_EQ(std::vector<uint8_t>(pixels, pixels + 32 * 4), expected);
    }
}

TEST(NSImageSheen, ImageOverThePictureHasNoMarks) {
    NSBitmapImageRep *rep = makeBitmap(40, 12, 4);
    markColumns(rep, {10, 20, 30, 255}, {4, 12, 25, 33});
    NSImage *picture = makePicture(rep);
    [picture setFlipped:YES];
    LxImage *image = [picture LxCreateImage];
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_Data(image), planeOf(rep));
    EXPECT_EQ(LxImage_isSegmented(image), 0);
    EXPECT_EQ(LxImage_isTiled(image), 0);
    EXPECT_EQ(LxImage_isFlipped(image), 0);
    LxImage_Delete(image);
    EXPECT_EQ([makePicture(makeBitmap(4, 4, 2)) LxCreateImage], nullptr);
}

TEST(NSImageSheen, CopyIsAnotherPicture) {
    NSImage *picture = makePicture(makeBitmap(4, 5, 4));
    NSImage *copy = [picture LxCopy];
    EXPECT_NE(copy, picture);
    EXPECT_EQ([copy size].height, 5);
    [copy release];
}

TEST(NSImageSheen, ReservedOperationsChangeNothing) {
    NSBitmapImageRep *rep = makeBitmap(4, 4, 4);
    std::memset(planeOf(rep), 9, 64);
    const LxBlend blend = LxBlend_WithChannel(1, 255, 6);
    NSImage *other = makePicture(makeBitmap(4, 4, 4));
    [makePicture(rep) LxDrawTo:other withBlender:&blend];
    [makePicture(rep) trace];
    EXPECT_EQ(planeOf(rep)[0], 9);
    EXPECT_EQ(planeOf(firstRep(other))[0], 0);
}
