#include <oxlume/LxMem.h>
#include <oxlume/LxNativeImage.h>
#include <oxlume/LxQuartz.h>

#include "image/Image.h"
#include "tests/platform/quartz/Canvas.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

namespace {

ImageHandle nativeImage(int32_t type, int32_t width, int32_t height) {
    return ImageHandle(LxImage_NativeCGImage(type, 0, 0, width, height, 0, 1, 0));
}

// Puts objects in an image's place of them; `released` counts how often both are gone.
void putObjects(LxImage &image, int &released) {
    static const uint8_t grey = 0;
    const CGDataProviderRef provider = CGDataProviderCreateWithData(
        &released, &grey, 1, [](void *info, const void *, size_t) { ++*static_cast<int *>(info); });
    image.dataProvider = provider;
    image.nativeHandle =
        CGImageCreate(1, 1, 8, 8, 1, CGColorSpaceCreateDeviceGray(), 0, provider, nullptr, 0, 0);
}

void releaseObjects(LxImage &image) {
    CGImageRelease(static_cast<CGImageRef>(image.nativeHandle));
    CGDataProviderRelease(static_cast<CGDataProviderRef>(image.dataProvider));
}

} // namespace

TEST(NativeImage, APlainImageIsNone) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 3, 3);
    EXPECT_EQ(LxImage_isNative(image.get()), 0);
    EXPECT_EQ(LxImage_NativeType(image.get()), kLxNativeNone);
    EXPECT_EQ(LxImage_NativeHandle(image.get()), nullptr);
}

TEST(NativeImage, NullIsNone) {
    EXPECT_EQ(LxImage_isNative(nullptr), 0);
    EXPECT_EQ(LxImage_NativeType(nullptr), 0);
    EXPECT_EQ(LxImage_NativeHandle(nullptr), nullptr);
}

TEST(NativeImage, TheHandleIsForKindsOneToThree) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 3, 3);
    int object = 0;
    image->nativeHandle = &object;
    for (uint32_t kind = 0; kind < 8; ++kind) {
        image->native = kind;
        EXPECT_EQ(LxImage_isNative(image.get()), kind != 0);
        EXPECT_EQ(LxImage_NativeType(image.get()), static_cast<int32_t>(kind));
        EXPECT_EQ(LxImage_NativeHandle(image.get()), kind >= 1 && kind <= 3 ? &object : nullptr);
    }
    image->native = 0;
}

TEST(NativeImage, OfACGImageIsReserved) {
    EXPECT_EQ(LxImage_CreateNativeFromCGImage(nullptr, 0), nullptr);
    const ImageHandle image = nativeImage(kLxPixelRGBA, 2, 2);
    const auto handle = static_cast<CGImageRef>(LxImage_NativeHandle(image.get()));
    EXPECT_EQ(LxImage_CreateNativeFromCGImage(handle, 1), nullptr);
}

TEST(LxImage_NativeCGImage, MakesAnImageWithACGImageOverItsPixels) {
    const ImageHandle image(LxImage_NativeCGImage(kLxPixelRGBA, 5, 6, 8, 8, 0, 1, 1));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_isNative(image.get()), 1);
    EXPECT_EQ(LxImage_NativeType(image.get()), kLxNativeCGImage);
    EXPECT_EQ(LxImage_x(image.get()), 5);
    EXPECT_EQ(LxImage_MaxY(image.get()), 8);
    EXPECT_EQ(LxImage_isFlipped(image.get()), 1);
    EXPECT_EQ(LxImage_isEmpty(image.get()), 0);
    const auto handle = static_cast<CGImageRef>(LxImage_NativeHandle(image.get()));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(CGImageGetWidth(handle), 3u);
    EXPECT_EQ(CGImageGetHeight(handle), 2u);
    EXPECT_EQ(CGImageGetBitsPerPixel(handle), 32u);
    EXPECT_EQ(CGImageGetBytesPerRow(handle), 12u);
    EXPECT_EQ(CGImageGetAlphaInfo(handle), 4);
    EXPECT_EQ(CGImageIsMask(handle), 0);
    EXPECT_NE(image->dataProvider, nullptr);
}

TEST(LxImage_NativeCGImage, TakesNoPooledMemory) {
    const struct {
        int32_t width, height;
        Storage storage;
        int32_t memSize;
    } cases[] = {{2, 2, Storage::inlined, 0}, {3, 2, Storage::heap, 24}, {20, 20, Storage::heap, 1600}};
    for (const auto &one : cases) {
        const ImageStatistics before = imageStatistics(one.storage);
        const ImageHandle image = nativeImage(kLxPixelRGBA, one.width, one.height);
        EXPECT_EQ(image->storage, static_cast<uint32_t>(one.storage));
        EXPECT_EQ(LxImage_MemSize(image.get()), one.memSize);
        EXPECT_EQ(imageStatistics(one.storage).images, before.images + 1);
        EXPECT_EQ(imageStatistics(one.storage).bytes, before.bytes + static_cast<uint64_t>(one.memSize));
        for (int32_t i = 0; i < LxImage_DataSize(image.get()); ++i)
            ASSERT_EQ(static_cast<const uint8_t *>(LxImage_ConstData(image.get()))[i], 0);
    }
}

TEST(LxImage_NativeCGImage, MarksFollowTheLowestBits) {
    for (const int32_t mark : {0, 1, 2, 3, -1}) {
        const ImageHandle image(LxImage_NativeCGImage(kLxPixelA, 0, 0, 9, 9, mark, 0, mark));
        EXPECT_EQ(LxImage_isEmpty(image.get()), mark & 1);
        EXPECT_EQ(LxImage_isFlipped(image.get()), mark & 1);
    }
}

TEST(LxImage_NativeCGImage, IsNullForABadRectangle) {
    for (const LxRectL bad :
         {LxRectL{0, 0, 0, 5}, {0, 0, 5, -1}, {0, 0, INT32_MAX, INT32_MAX}, {INT32_MIN, 0, INT32_MAX, 1}}) {
        EXPECT_EQ(LxImage_NativeCGImage(kLxPixelRGBA, bad.x0, bad.y0, bad.x1, bad.y1, 0, 0, 0), nullptr);
        EXPECT_EQ(LxImage_CreateNative(kLxPixelRGBA, bad.x0, bad.y0, bad.x1, bad.y1, 0, 0, 0), nullptr);
    }
}

TEST(LxImage_NativeCGImage, TakesEveryType) {
    for (int32_t type = -1; type <= 9; ++type) {
        const ImageHandle image = nativeImage(type, 3, 3);
        ASSERT_NE(image, nullptr) << type;
        const auto handle = static_cast<CGImageRef>(LxImage_NativeHandle(image.get()));
        ASSERT_NE(handle, nullptr) << type;
        const auto bytes = static_cast<size_t>(LxImage_BytesPerPixel(image.get()));
        EXPECT_EQ(CGImageGetBitsPerPixel(handle), bytes * 8);
        EXPECT_EQ(CGImageGetAlphaInfo(handle), bytes == 1 ? 0 : 4);
        Canvas canvas(3, 3);
        CGContextDrawImage(canvas, {0, 0, 3, 3}, handle);
    }
}

TEST(LxImage_NativeCGImage, TheObjectSeesTheImagesPixels) {
    for (const int32_t width : {1, 30}) {
        const ImageHandle image = nativeImage(kLxPixelRGBA, width, 2);
        LxImage_Fill(image.get(), LxColor_RGBA(255, 10, 20, 30)); // read as alpha, red, green, blue
        Canvas canvas(1, 1, nothing);
        CGContextDrawImage(canvas, {0, 0, 1, 1}, static_cast<CGImageRef>(LxImage_NativeHandle(image.get())));
        EXPECT_EQ(canvas.at(0, 0), (Pixel{10, 20, 30, 255}));
    }
}

TEST(LxImage_Delete, ReleasesTheObjectsOfKindOneAlone) {
    for (const uint32_t kind : {0u, 1u, 2u, 3u, 7u}) {
        int released = 0;
        LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 4, 4, 1, 0);
        putObjects(*image, released);
        LxImage kept = *image;
        image->native = kind;
        LxImage_Delete(image);
        EXPECT_EQ(released, kind == kLxNativeCGImage ? 1 : 0) << kind;
        if (kind != kLxNativeCGImage)
            releaseObjects(kept);
        EXPECT_EQ(released, 1);
    }
}

TEST(LxImage_Delete, TakesAnImageWhoseObjectsAreGone) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 4, 4);
    image->native = kLxNativeCGImage;
}

TEST(LxImage_Delete, LeavesAClientsReferenceToTheCGImage) {
    LxImage *image = LxImage_NativeCGImage(kLxPixelRGBA, 0, 0, 4, 4, 0, 1, 0);
    const CGImageHandle picture(CGImageRetain(static_cast<CGImageRef>(LxImage_NativeHandle(image))));
    LxImage_Delete(image);
    EXPECT_EQ(CGImageGetWidth(picture.get()), 4u);
}

TEST(LxImage_CreateNative, IsNotMarkedAsNative) {
    LxImage *image = LxImage_CreateNative(kLxPixelRGBA, 0, 0, 1, 1, 1, 1, 0);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_isNative(image), 0);
    EXPECT_EQ(LxImage_NativeType(image), 0);
    EXPECT_EQ(LxImage_NativeHandle(image), nullptr);
    EXPECT_EQ(LxImage_isEmpty(image), 1);
    EXPECT_EQ(LxImage_MemSize(image), 0);
    const LxImage kept = *image;
    ASSERT_NE(kept.nativeHandle, nullptr);
    ASSERT_NE(kept.dataProvider, nullptr);
    LxImage_Delete(image);
    EXPECT_EQ(CGImageGetAlphaInfo(static_cast<CGImageRef>(kept.nativeHandle)), 4); // still there
    CGImageRelease(static_cast<CGImageRef>(kept.nativeHandle));
    CGDataProviderRelease(static_cast<CGDataProviderRef>(kept.dataProvider));
}

TEST(LxImage_CreateCGImageRef, HasTheAlphaOfItsPixels) {
    const struct {
        int32_t type;
        size_t bits;
        int32_t alphaInfo;
    } cases[] = {{kLxPixelA, 8, 0},     {kLxPixelRGB, 24, 0},
                 {kLxPixelRGBA, 32, 3}, {kLxPixelRGBAPremultiplied, 32, 3},
                 {kLxPixelF, 32, 3},    {kLxPixelL, 8, 0}};
    for (const auto &one : cases) {
        const ImageHandle image = makeImage(one.type, 5, 3);
        const CGImageHandle picture(LxImage_CreateCGImageRef(image.get(), 0));
        ASSERT_NE(picture, nullptr) << one.type;
        EXPECT_EQ(CGImageGetBitsPerPixel(picture.get()), one.bits) << one.type;
        EXPECT_EQ(CGImageGetAlphaInfo(picture.get()), one.alphaInfo) << one.type;
        EXPECT_EQ(CGImageIsMask(picture.get()), 0);
        EXPECT_EQ(CGImageGetWidth(picture.get()), 5u);
        EXPECT_EQ(CGImageGetHeight(picture.get()), 3u);
        EXPECT_EQ(CGImageGetBytesPerRow(picture.get()),
                  static_cast<size_t>(LxImage_BytesPerRow(image.get())));
    }
}

TEST(LxImage_CreateCGImageRef, MakesAMaskOfAnyImage) {
    for (int32_t type = kLxPixelA; type <= kLxPixelL; ++type) {
        const ImageHandle image = makeImage(type, 2, 2);
        const CGImageHandle mask(LxImage_CreateCGImageRef(image.get(), 1));
        ASSERT_NE(mask, nullptr) << type;
        EXPECT_EQ(CGImageIsMask(mask.get()), 1);
    }
}

TEST(LxImage_CreateCGImageRef, IsNullWithoutPixels) {
    EXPECT_EQ(LxImage_CreateCGImageRef(nullptr, 0), nullptr);
    EXPECT_EQ(LxImage_CreateCGImageRef(nullptr, 1), nullptr);
    const ImageHandle without(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 2, 2, nullptr, 8, 0, 0, 0));
    EXPECT_EQ(LxImage_CreateCGImageRef(without.get(), 0), nullptr);
    uint8_t pixels[64] = {};
    for (const int32_t rowBytes : {4, 0, -8}) { // too short for two pixels
        const ImageHandle image(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 2, 2, pixels + 32, rowBytes, 0, 0, 0));
        EXPECT_EQ(LxImage_CreateCGImageRef(image.get(), 0), nullptr) << rowBytes;
        EXPECT_EQ(LxImage_CreateCGImageRef(image.get(), 1), nullptr) << rowBytes;
    }
}
