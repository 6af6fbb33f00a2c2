// Images and CGImages over the same pixels.

#include <oxlume/LxNativeImage.h>
#include <oxlume/LxQuartz.h>

#include "image/Image.h"

namespace lx {
namespace {

CGDataProviderRef createProvider(const LxImage &image) {
    const int32_t bytes = LxImage_DataSize(&image);
    return bytes > 0
               ? CGDataProviderCreateWithData(nullptr, firstRow(image), static_cast<size_t>(bytes), nullptr)
               : nullptr;
}

// The picture of the image's pixels that the provider lends, without scaling smoothly.
CGImageRef createPicture(const LxImage &image, CGColorSpaceRef space, CGImageAlphaInfo alphaInfo,
                         CGDataProviderRef provider) {
    const auto bits = static_cast<size_t>(LxImage_BytesPerPixel(&image)) * 8;
    return CGImageCreate(static_cast<size_t>(width(image)), static_cast<size_t>(height(image)), 8, bits,
                         static_cast<size_t>(image.rowBytes), space, alphaInfo, provider, nullptr, 0, 0);
}

CGImageRef createMask(const LxImage &image, CGDataProviderRef provider) {
    const auto bits = static_cast<size_t>(LxImage_BytesPerPixel(&image)) * 8;
    return CGImageMaskCreate(static_cast<size_t>(width(image)), static_cast<size_t>(height(image)), 8, bits,
                             static_cast<size_t>(image.rowBytes), provider, nullptr, 0);
}

CGImageRef createCGImage(const LxImage &image, bool mask) {
    const CGDataProviderRef provider = createProvider(image);
    const int32_t bytesPerPixel = LxImage_BytesPerPixel(&image);
    const CGColorSpaceRef space =
        bytesPerPixel == 1 ? CGColorSpaceCreateDeviceGray() : CGColorSpaceCreateDeviceRGB();
    const CGImageAlphaInfo alphaInfo =
        bytesPerPixel == 1 || bytesPerPixel == 3 ? kCGImageAlphaNone : kCGImageAlphaLast;
    const CGImageRef result =
        mask ? createMask(image, provider) : createPicture(image, space, alphaInfo, provider);
    CGColorSpaceRelease(space);
    CGDataProviderRelease(provider);
    return result;
}

// Gives the image its provider and its CGImage; false for lack of memory.
bool addCGImage(LxImage &image) {
    const CGDataProviderRef provider = createProvider(image);
    // On purpose: not where LxImage_CreateCGImageRef has the alpha.
    const CGImageAlphaInfo alphaInfo =
        LxImage_BytesPerPixel(&image) == 1 ? kCGImageAlphaNone : kCGImageAlphaFirst;
    const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    image.dataProvider = provider;
    image.nativeHandle = createPicture(image, space, alphaInfo, provider);
    CGColorSpaceRelease(space);
    return image.nativeHandle != nullptr;
}

void releaseCGImage(LxImage &image) {
    CGImageRelease(static_cast<CGImageRef>(image.nativeHandle));
    CGDataProviderRelease(static_cast<CGDataProviderRef>(image.dataProvider));
    image.nativeHandle = nullptr;
    image.dataProvider = nullptr;
}

LxImage *createWithCGImage(int32_t type, const LxRectL &rect, LxNativeType native, int32_t empty,
                           int32_t clear, int32_t flipped) {
    LxImage *image = createLendingImage(type, rect, (empty & 1) != 0, clear != 0, (flipped & 1) != 0);
    if (image == nullptr)
        return nullptr;
    if (addCGImage(*image)) {
        image->native = native;
        return image;
    }
    releaseCGImage(*image);
    LxImage_Delete(image);
    return nullptr;
}

const bool registered = (registerNativeRelease(releaseCGImage), true);

} // namespace
} // namespace lx

using namespace lx;

LxImage *LxImage_NativeCGImage(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY, int32_t empty,
                               int32_t clear, int32_t flipped) {
    return createWithCGImage(type, {x, y, maxX, maxY}, kLxNativeCGImage, empty, clear, flipped);
}

LxImage *LxImage_CreateNative(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY, int32_t empty,
                              int32_t clear, int32_t flipped) {
    return createWithCGImage(type, {x, y, maxX, maxY}, kLxNativeNone, empty, clear, flipped);
}

CGImage *LxImage_CreateCGImageRef(const LxImage *image, int32_t mask) {
    return image != nullptr ? createCGImage(*image, mask != 0) : nullptr;
}
