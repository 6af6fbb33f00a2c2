// Bitmaps of the platform over memory, and images over bitmaps.

#include "platform/cocoa/Bitmaps.h"

#import <AppKit/NSGraphics.h>
#import <Foundation/NSArray.h>

#include <limits>

#include "platform/Siblings.h"

namespace lx {
namespace {

// The type of pixels of a depth, or -1.
int32_t typeForDepth(NSInteger bitsPerPixel) {
    switch (bitsPerPixel) {
    case 32:
        return kLxPixelRGBA;
    case 24:
        return kLxPixelRGB;
    case 8:
        return kLxPixelA;
    default:
        return -1;
    }
}

bool fitsInt32(NSInteger value) {
    return value >= 0 && value <= std::numeric_limits<int32_t>::max();
}

} // namespace

BitmapForm::BitmapForm(const LxImage &image)
    : BitmapForm(LxImage_Type(&image), lx::width(image), lx::height(image), image.rowBytes) {}

BitmapForm::BitmapForm(int32_t type, int32_t width, int32_t height, int32_t rowBytes)
    : width(width), height(height), rowBytes(rowBytes), bitsPerSample(LxColor_BytesPerComponent(type) * 8),
      samplesPerPixel(LxColor_BytesPerPixel(type)), hasAlpha(LxColor_HasAlpha(type) != 0) {}

bool hasWholeRows(const LxImage *image) {
    return image != nullptr && firstRow(*image) != nullptr &&
           image->rowBytes >= int64_t{lx::width(*image)} * LxImage_BytesPerPixel(image);
}

NSBitmapImageRep *newBitmap(const BitmapForm &form, uint8_t *pixels) {
    if (!form.isDrawable())
        return nil;
    // The platform reads five slots, of which only the first is used here; without the array it allocates.
    unsigned char *planes[5] = {pixels, nullptr, nullptr, nullptr, nullptr};
    return [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:(pixels != nullptr ? planes : nullptr)
                                                   pixelsWide:form.width
                                                   pixelsHigh:form.height
                                                bitsPerSample:form.bitsPerSample
                                              samplesPerPixel:form.samplesPerPixel
                                                     hasAlpha:form.hasAlpha
                                                     isPlanar:NO
                                               colorSpaceName:NSCalibratedRGBColorSpace
                                                  bytesPerRow:form.rowBytes
                                                 bitsPerPixel:form.bitsPerPixel()];
}

BitmapPixels::BitmapPixels(NSBitmapImageRep *rep) {
    if (![rep isKindOfClass:[NSBitmapImageRep class]])
        return;
    const NSInteger wide = [rep pixelsWide];
    const NSInteger high = [rep pixelsHigh];
    const NSInteger row = [rep bytesPerRow];
    type = typeForDepth([rep bitsPerPixel]);
    // A row too short for its pixels would have them read beyond the bitmap's end.
    if (type < 0 || !fitsInt32(wide) || !fitsInt32(high) || !fitsInt32(row) ||
        wide * LxColor_BytesPerPixel(type) > row)
        return;
    unsigned char *planes[5] = {};
    [rep getBitmapDataPlanes:planes];
    start = planes[0];
    width = static_cast<int32_t>(wide);
    height = static_cast<int32_t>(high);
    rowBytes = static_cast<int32_t>(row);
}

LxImage *createImageOver(NSBitmapImageRep *rep, int32_t flipped) {
    const BitmapPixels pixels(rep);
    if (pixels.start == nullptr || pixels.width < 1 || pixels.height < 1)
        return nullptr;
    return LxImage_CreateEx(pixels.type, 0, 0, pixels.width, pixels.height, pixels.start, pixels.rowBytes, 0,
                            0, flipped);
}

LxImage *createMarkedImageOver(NSBitmapImageRep *rep, int32_t flipped) {
    LxImage *image = createImageOver(rep, flipped);
    LxImage_ReadSegmentMarks(image);
    return image;
}

LxImage *copyAndDelete(LxImage *image) {
    LxImage *copy = LxImage_Copy(image);
    LxImage_Delete(image);
    return copy;
}

NSBitmapImageRep *firstBitmap(NSImage *image) {
    NSArray *representations = [image representations];
    if ([representations count] == 0)
        return nil;
    id first = [representations objectAtIndex:0];
    return [first isKindOfClass:[NSBitmapImageRep class]] ? first : nil;
}

NSImage *initPicture(NSImage *allocated, const BitmapForm &form, uint8_t *pixels, bool flipped) {
    if (!form.isDrawable()) {
        [allocated release];
        return nil;
    }
    NSImage *picture = [allocated initWithSize:form.size()];
    if (picture == nil)
        return nil;
    [picture setFlipped:flipped ? YES : NO];
    NSBitmapImageRep *rep = newBitmap(form, pixels);
    if (rep == nil) {
        [picture release];
        return nil;
    }
    [picture addRepresentation:rep];
    [rep release];
    return picture;
}

} // namespace lx
