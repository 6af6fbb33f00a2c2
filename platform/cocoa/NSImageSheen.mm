// Oxlume's operations on the platform's pictures.

#import <AppKit/NSImageRep.h>
#import <Foundation/NSArray.h>
#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/Sheen.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "foundation/Numeric.h"
#include "platform/cocoa/Bitmaps.h"

namespace lx {
namespace {

// Runs over the pixels of a bitmap as if its rows were packed, as far as the bitmap's own bytes go.
template <class Visit>
void forEachPackedPixel(const BitmapPixels &pixels, Visit visit) {
    if (pixels.start == nullptr || pixels.type == kLxPixelA)
        return;
    const int64_t step = LxColor_BytesPerPixel(pixels.type);
    const int64_t count = int64_t{pixels.width} * pixels.height;
    for (int64_t i = 0; i < count; ++i)
        visit(pixels.start + i * step);
}

} // namespace
} // namespace lx

using namespace lx;

NSImage *LxImage_CreateNSImage(LxImage *image) {
    if (!hasWholeRows(image))
        return nil;
    return initPicture([NSImage alloc], BitmapForm(*image), firstRow(*image), image -> flipped != 0);
}

NSImage *LxImage_CopyNSImage(const LxImage *image) {
    if (!hasWholeRows(image))
        return nil;
    NSImage *picture = initPicture([NSImage alloc], BitmapForm(*image), nullptr, image->flipped != 0);
    unsigned char *planes[5] = {};
    [firstBitmap(picture) getBitmapDataPlanes:planes];
    if (planes[0] != nullptr)
        std::memcpy(planes[0], firstRow(*image), static_cast<size_t>(LxImage_DataSize(image)));
    return picture;
}

@implementation NSImage (Sheen)

- (id)initWithContentsOfLxImage:(LxImage *)image {
    if (!hasWholeRows(image)) {
        [self release];
        return nil;
    }
    BitmapForm form(*image);
    form.hasAlpha = true;
    return initPicture(self, form, firstRow(*image), image->flipped != 0);
}

- (id)initWithSize:(NSSize)size andPixelType:(int32_t)type {
    // Wider than this, the bytes of a row would not fit in 32 bits.
    constexpr double widest = 1 << 28;
    const double w = std::ceil(narrowed(size.width));
    const double h = std::ceil(narrowed(size.height));
    NSBitmapImageRep *rep = nil;
    if (w > 1.0 && h > 1.0 && w <= widest && h <= widest) {
        const int32_t width = truncateToInt32(w);
        rep =
            newBitmap(BitmapForm(type, width, truncateToInt32(h), LxColor_BytesPerRow(type, width)), nullptr);
    }
    if (rep == nil) {
        [self release];
        return nil;
    }
    self = [self initWithSize:size];
    [self addRepresentation:rep];
    [rep release];
    return self;
}

- (void)LxFill:(const LxRGBA *)color {
    if (color == nullptr)
        return;
    const BitmapPixels pixels(firstBitmap(self));
    const size_t bytes = pixels.type == kLxPixelRGB ? 3 : 4;
    forEachPackedPixel(pixels, [&](uint8_t *pixel) { std::memcpy(pixel, color, bytes); });
}

- (void)LxFill:(const LxRGBA *)color withBlender:(const LxBlend *)blend {
    if (color == nullptr || blend == nullptr)
        return;
    const BitmapPixels pixels(firstBitmap(self));
    const LxPixelBlendFunction kernel = LxBlend_SelectPixelBlendFunction(pixels.type, kLxPixelRGBA);
    if (kernel != nullptr)
        forEachPackedPixel(pixels, [&](uint8_t *pixel) { kernel(blend, pixel, pixel, color); });
}

- (void)LxDrawTo:(NSImage *)image withBlender:(const LxBlend *)blend {
    (void)image;
    (void)blend;
}

- (NSImage *)LxCopy {
    return [self copyWithZone:nullptr];
}

- (LxImage *)LxCreateImage {
    return createImageOver(firstBitmap(self), 0);
}

- (void)trace {
    NSArray *representations = [self representations];
    for (NSUInteger i = 0; i < [representations count]; ++i)
        (void)[representations objectAtIndex:i];
}

@end
