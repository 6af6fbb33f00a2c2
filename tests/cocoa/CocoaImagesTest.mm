#include <gtest/gtest.h>

#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/Sheen.h>

#include <oxlume/LxNativeImage.h>

#include "tests/cocoa/Bitmap.h"
#include "tests/support/Random.h"

using namespace lx::test;

namespace {

constexpr int32_t drawableTypes[] = {kLxPixelA, kLxPixelRGB, kLxPixelRGBA, kLxPixelRGBAPremultiplied,
                                     kLxPixelF};

ImageHandle randomImage(Random &random, int32_t type, int32_t width, int32_t height, bool flipped = false) {
    ImageHandle image = makeImage(type, width, height, flipped);
    auto *bytes = static_cast<uint8_t *>(LxImage_Data(image.get()));
    for (int32_t i = 0; i < LxImage_DataSize(image.get()); ++i)
        bytes[i] = random.byte();
    return image;
}

bool sameBytes(const void *a, const void *b, int32_t size) {
    return std::memcmp(a, b, static_cast<size_t>(size)) == 0;
}

} // namespace

TEST(CocoaImages, PictureStandsOverTheImagesPixels) {
    Random random(1);
    for (const int32_t type : drawableTypes) {
        for (const bool flipped : {false, true}) {
            const int32_t w = random.integer(2, 40);
            const int32_t h = random.integer(2, 40);
            ImageHandle image = randomImage(random, type, w, h, flipped);
            NSImage *picture = LxImage_CreateNSImage(image.get());
            ASSERT_NE(picture, nil) << "type " << type;
            NSBitmapImageRep *rep = firstRep(picture);
            EXPECT_EQ([[picture representations] count], 1u);
            EXPECT_EQ([picture size].width, w);
            EXPECT_EQ([picture size].height, h);
            EXPECT_EQ([picture isFlipped], flipped);
            EXPECT_EQ(planeOf(rep), LxImage_Data(image.get()));
            EXPECT_EQ([rep pixelsWide], w);
            EXPECT_EQ([rep pixelsHigh], h);
            EXPECT_EQ([rep bytesPerRow], LxImage_BytesPerRow(image.get()));
            EXPECT_EQ([rep bitsPerPixel], LxImage_BytesPerPixel(image.get()) * 8);
            EXPECT_EQ([rep samplesPerPixel], LxImage_BytesPerPixel(image.get()));
            EXPECT_EQ([rep bitsPerSample], LxImage_BytesPerComponent(image.get()) * 8);
            EXPECT_EQ([rep hasAlpha], LxImage_HasAlpha(image.get()));
            EXPECT_EQ(LxImage_isNative(image.get()), 0);
            [picture release];
        }
    }
}

TEST(CocoaImages, CopiedPictureHasPixelsOfItsOwn) {
    Random random(2);
    for (const int32_t type : drawableTypes) {
        ImageHandle image = randomImage(random, type, random.integer(2, 40), random.integer(2, 40));
        NSImage *picture = LxImage_CopyNSImage(image.get());
        ASSERT_NE(picture, nil);
        uint8_t *pixels = planeOf(firstRep(picture));
        EXPECT_NE(pixels, LxImage_Data(image.get()));
        EXPECT_TRUE(sameBytes(pixels, LxImage_Data(image.get()), LxImage_DataSize(image.get())));
        [picture release];
    }
}

TEST(CocoaImages, NoPictureOfOneColumnOrRow) {
    for (const auto &[w, h] : {std::pair{1, 5}, {5, 1}, {1, 1}}) {
        ImageHandle image = makeImage(kLxPixelRGBA, w, h);
        EXPECT_EQ(LxImage_CreateNSImage(image.get()), nil);
        EXPECT_EQ(LxImage_CopyNSImage(image.get()), nil);
        EXPECT_EQ(LxImage_NativeNSImage(kLxPixelRGBA, 0, 0, w, h, 0, 1, 0), nullptr);
        EXPECT_EQ(LxImage_NativeNSBitmapImageRep(kLxPixelRGBA, 0, 0, w, h, 0, 1, 0), nullptr);
    }
}

TEST(CocoaImages, NoPictureOfATypeWithoutComponents) {
    ImageHandle image = makeImage(kLxPixelL, 4, 4);
    EXPECT_EQ(LxImage_CreateNSImage(image.get()), nil);
    EXPECT_EQ(LxImage_CopyNSImage(image.get()), nil);
    EXPECT_EQ(LxImage_NativeNSImage(kLxPixelL, 0, 0, 4, 4, 0, 1, 0), nullptr);
    EXPECT_EQ(LxImage_NativeNSBitmapImageRep(kLxPixelL, 0, 0, 4, 4, 0, 1, 0), nullptr);
}

TEST(CocoaImages, NoPictureWithoutPixelsOrOfRowsTooShortForThem) {
    uint8_t pixels[128] = {};
    const struct {
        void *pixels;
        int32_t rowBytes;
    } cases[] = {{nullptr, 16}, {pixels + 64, -16}, {pixels, 0}, {pixels, 15}};
    for (const auto &[data, rowBytes] : cases) {
        const ImageHandle image(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 4, 4, data, rowBytes, 0, 0, 0));
        EXPECT_EQ(LxImage_CreateNSImage(image.get()), nil) << rowBytes;
        EXPECT_EQ(LxImage_CopyNSImage(image.get()), nil) << rowBytes;
        EXPECT_EQ([[NSImage alloc] initWithContentsOfLxImage:image.get()], nil) << rowBytes;
    }
}

TEST(CocoaImages, NativePictureReadsTheImagesMemory) {
    LxImage *image = LxImage_NativeNSImage(kLxPixelRGBA, 2, 3, 9, 8, 1, 1, 1);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_NativeType(image), kLxNativeNSImage);
    EXPECT_EQ(LxImage_isNative(image), 1);
    EXPECT_EQ(LxImage_MemSize(image), 7 * 4 * 5);
    EXPECT_EQ(LxImage_isEmpty(image), 1);
    EXPECT_EQ(LxImage_isFlipped(image), 1);
    auto *picture = static_cast<NSImage *>(LxImage_NativeHandle(image));
    ASSERT_TRUE([picture isKindOfClass:[NSImage class]]);
    EXPECT_TRUE([picture isFlipped]);
    EXPECT_EQ(planeOf(firstRep(picture)), LxImage_Data(image));
    [picture release];
    LxImage_Delete(image);
}

TEST(CocoaImages, NativeBitmapReadsTheImagesMemory) {
    // Two by two bytes of one component, in rows of four bytes: small enough to live in the record.
    LxImage *image = LxImage_NativeNSBitmapImageRep(kLxPixelA, 0, 0, 2, 2, 0, 1, 0);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_NativeType(image), kLxNativeNSBitmapImageRep);
    EXPECT_EQ(LxImage_MemSize(image), 0);
    EXPECT_EQ(LxImage_isEmpty(image), 0);
    auto *rep = static_cast<NSBitmapImageRep *>(LxImage_NativeHandle(image));
    ASSERT_TRUE([rep isKindOfClass:[NSBitmapImageRep class]]);
    EXPECT_EQ(planeOf(rep), LxImage_Data(image));
    static_cast<uint8_t *>(LxImage_Data(image))[4] = 77;
    EXPECT_EQ(planeOf(rep)[4], 77);
    [rep release];
    LxImage_Delete(image);
}

TEST(CocoaImages, DepthDecidesTheType) {
    const struct {
        int bytes;
        int32_t type;
    } cases[] = {{4, kLxPixelRGBA}, {3, kLxPixelRGB}, {1, kLxPixelA}};
    for (const auto &[bytes, type] : cases) {
        NSBitmapImageRep *rep = makeBitmap(7, 5, bytes, 32);
        LxImage *image = LxImage_CreateFromNSBitmapImageRep(rep, 1);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(LxImage_Type(image), type);
        EXPECT_EQ(LxImage_w(image), 7);
        EXPECT_EQ(LxImage_h(image), 5);
        EXPECT_EQ(LxImage_BytesPerRow(image), 32);
        EXPECT_EQ(LxImage_Data(image), planeOf(rep));
        EXPECT_EQ(LxImage_isFlipped(image), 1);
        EXPECT_EQ(LxImage_isEmpty(image), 0);
        EXPECT_EQ(LxImage_isNative(image), 0);
        LxImage_Delete(image);
    }
    EXPECT_EQ(LxImage_CreateFromNSBitmapImageRep(makeBitmap(7, 5, 2), 0), nullptr);
    EXPECT_EQ(LxImage_CreateNativeFromNSBitmapImageRep(makeBitmap(7, 5, 2), 0), nullptr);
}

TEST(CocoaImages, NullGivesNull) {
    EXPECT_EQ(LxImage_CreateFromNSBitmapImageRep(nil, 0), nullptr);
    EXPECT_EQ(LxImage_CreateNativeFromNSBitmapImageRep(nil, 0), nullptr);
    EXPECT_EQ(LxImage_CreateNativeFromNSView(nil, NSMakeRect(0, 0, 4, 4)), nullptr);
    EXPECT_EQ(LxImage_CreateFromNSImage(nil), nullptr);
    EXPECT_EQ(LxImage_CopyFromNSImage(nil), nullptr);
    EXPECT_EQ(LxImage_CopyFromNSBitmapImageRep(nil, 0), nullptr);
    EXPECT_EQ(LxImage_CreateNSImage(nullptr), nil);
    EXPECT_EQ(LxImage_CopyNSImage(nullptr), nil);
}

TEST(CocoaImages, ReservedCreatorsGiveNull) {
    NSBitmapImageRep *rep = makeBitmap(4, 4, 4);
    NSImage *picture = [[[NSImage alloc] initWithSize:NSMakeSize(4, 4)] autorelease];
    [picture addRepresentation:rep];
    EXPECT_EQ(LxImage_CreateNativeFromNSImage(picture), nullptr);
    EXPECT_EQ(LxImage_CreateFromNSCGImageRep(rep, 0), nullptr);
    EXPECT_EQ(LxImage_CopyFromNSCGImageRep(rep, 0), nullptr);
    EXPECT_EQ(LxImage_CreateFromNSCGImageRep(nil, 0), nullptr);
    EXPECT_EQ(LxImage_CopyFromNSCGImageRep(nil, 0), nullptr);
}

TEST(CocoaImages, NativeImageOverABitmapRetainsIt) {
    NSBitmapImageRep *rep = makeBitmap(4, 4, 4);
    const NSUInteger count = [rep retainCount];
    LxImage *image = LxImage_CreateNativeFromNSBitmapImageRep(rep, 0);
    EXPECT_EQ([rep retainCount], count + 1);
    EXPECT_EQ(LxImage_NativeHandle(image), rep);
    EXPECT_EQ(LxImage_NativeType(image), kLxNativeNSBitmapImageRep);
    EXPECT_EQ(LxImage_isPlanar(image), 0);
    LxImage_Delete(image);
    EXPECT_EQ([rep retainCount], count + 1);
    [rep release];
}

TEST(CocoaImages, MarksOfABitmapAreReadAndCopied) {
    NSBitmapImageRep *rep = makeBitmap(40, 12, 4);
    markColumns(rep, {10, 20, 30, 255}, {4, 12, 25, 33});
    LxImage *image = LxImage_CreateFromNSBitmapImageRep(rep, 0);
    LxImage *copy = LxImage_CopyFromNSBitmapImageRep(rep, 0);
    for (LxImage *each : {image, copy}) {
        ASSERT_NE(each, nullptr);
        EXPECT_EQ(LxImage_SegmentType(each), 2);
        // From the pixel after a mark to two before the next.
        const LxRectL second = LxImage_SegmentRectL(each, 1, 0);
        EXPECT_EQ(second.x0, 13);
        EXPECT_EQ(second.x1, 13 + 11);
    }
    EXPECT_NE(LxImage_Data(copy), planeOf(rep));
    LxImage_Delete(image);
    LxImage_Delete(copy);
}

TEST(CocoaImages, PicturesOfReadFormatsOnly) {
    for (int format = 0; format < 6; ++format) {
        NSBitmapImageRep *rep =
            [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                     pixelsWide:6
                                                     pixelsHigh:4
                                                  bitsPerSample:8
                                                samplesPerPixel:4
                                                       hasAlpha:YES
                                                       isPlanar:NO
                                                 colorSpaceName:NSCalibratedRGBColorSpace
                                                   bitmapFormat:static_cast<NSBitmapFormat>(format)
                                                    bytesPerRow:24
                                                   bitsPerPixel:32] autorelease];
        NSImage *picture = [[[NSImage alloc] initWithSize:NSMakeSize(6, 4)] autorelease];
        [picture addRepresentation:rep];
        LxImage *image = LxImage_CreateFromNSImage(picture);
        EXPECT_EQ(image != nullptr, format == 0 || format == 1 || format == 2 || format == 4) << format;
        LxImage_Delete(image);
    }
    EXPECT_EQ(LxImage_CreateFromNSImage([[[NSImage alloc] initWithSize:NSMakeSize(6, 4)] autorelease]),
              nullptr);
}

TEST(CocoaImages, ImageOverAPictureIsFlippedAsThePicture) {
    NSImage *picture = [[[NSImage alloc] initWithSize:NSMakeSize(6, 4)] autorelease];
    [picture addRepresentation:makeBitmap(6, 4, 4)];
    for (const BOOL flipped : {NO, YES}) {
        [picture setFlipped:flipped];
        LxImage *image = LxImage_CreateFromNSImage(picture);
        EXPECT_EQ(LxImage_isFlipped(image), flipped);
        EXPECT_EQ(LxImage_Data(image), planeOf(firstRep(picture)));
        LxImage_Delete(image);
    }
}

TEST(CocoaImages, DrawingWithoutFocusDoesNothing) {
    ImageHandle image = makeImage(kLxPixelRGBA, 4, 4);
    LxCocoa_BlitNSImage(0, 0, image.get());
    LxCocoa_BlitImage(0, 0, 4, 4, image.get());
    LxCocoa_BlitImage(0, 0, 4, 4, nullptr);
    LxG_HLine(0, 0, 4);
    LxG_VLine(0, 0, 4);
}
