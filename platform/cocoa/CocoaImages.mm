// Images that lend their pixels to the platform's pictures, and images over the pixels of those.

#import <AppKit/NSView.h>
#import <oxlume/cocoa/LxCocoaImage.h>

#include <oxlume/LxNativeImage.h>

#include "platform/Siblings.h"
#include "platform/cocoa/Bitmaps.h"
#include "platform/cocoa/Focus.h"
#import "platform/cocoa/Supplements.h"

namespace lx {
namespace {

// On purpose: an image too small for a picture is found only when it has been made, and is never released.
bool isTooSmall(const LxImage &image) {
    return width(image) <= 1 || height(image) <= 1;
}

// Makes `object` the platform object of the image, or deletes the image where there is none. Answers the
// image.
LxImage *lendTo(LxImage *image, NSObject *object, LxNativeType type) {
    if (object == nil) {
        LxImage_Delete(image);
        return nullptr;
    }
    image->nativeHandle = object;
    image->native = type;
    return image;
}

LxImage *createNativeOver(NSBitmapImageRep *rep, int32_t flipped) {
    LxImage *image = createMarkedImageOver(rep, flipped);
    if (image == nullptr)
        return nullptr;
    // On purpose: nothing releases this, since the image does not own its object.
    image->nativeHandle = [rep retain];
    image->native = kLxNativeNSBitmapImageRep;
    image->planar = 0;
    return image;
}

// The formats of bitmaps that are read: alpha last or first, straight or not, or of floating point, but no
// two of these together.
bool isReadFormat(NSUInteger format) {
    return format == 0 || format == 1 || format == 2 || format == 4;
}

} // namespace
} // namespace lx

using namespace lx;

LxImage *LxImage_NativeNSImage(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY, int32_t empty,
                               int32_t clear, int32_t flipped) {
    LxImage *image = LxPrivate_CreateLendingImage(type, {x, y, maxX, maxY}, empty, clear, flipped);
    if (image == nullptr || isTooSmall(*image))
        return nullptr;
    NSImage *picture =
        initPicture([NSImage alloc], BitmapForm(*image), firstRow(*image), image -> flipped != 0);
    return lendTo(image, picture, kLxNativeNSImage);
}

LxImage *LxImage_NativeNSBitmapImageRep(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY,
                                        int32_t empty, int32_t clear, int32_t flipped) {
    LxImage *image = LxPrivate_CreateLendingImage(type, {x, y, maxX, maxY}, empty, clear, flipped);
    if (image == nullptr || isTooSmall(*image))
        return nullptr;
    return lendTo(image, newBitmap(BitmapForm(*image), firstRow(*image)), kLxNativeNSBitmapImageRep);
}

LxImage *LxImage_CreateFromNSBitmapImageRep(NSBitmapImageRep *rep, int32_t flipped) {
    return createMarkedImageOver(rep, flipped);
}

LxImage *LxImage_CreateNativeFromNSBitmapImageRep(NSBitmapImageRep *rep, int32_t flipped) {
    return createNativeOver(rep, flipped);
}

LxImage *LxImage_CreateNativeFromNSView(NSView *view, NSRect rect) {
    if (view == nil)
        return nullptr;
    NSBitmapImageRep *rep = newGrab(rect);
    const bool viewIsFlipped = [view isFlipped];
    LxImage *image = createNativeOver(rep, viewIsFlipped ? 0 : 1);
    if (image != nullptr && viewIsFlipped)
        LxImage_FlipVertical(image);
    [rep release];
    return image;
}

LxImage *LxImage_CreateFromNSImage(NSImage *image) {
    NSBitmapImageRep *rep = firstBitmap(image);
    if (rep == nil || !isReadFormat([rep bitmapFormat]))
        return nullptr;
    return createMarkedImageOver(rep, [image isFlipped] ? 1 : 0);
}

LxImage *LxImage_CopyFromNSImage(NSImage *image) {
    return copyAndDelete(LxImage_CreateFromNSImage(image));
}

LxImage *LxImage_CopyFromNSBitmapImageRep(NSBitmapImageRep *rep, int32_t flipped) {
    return copyAndDelete(LxImage_CreateFromNSBitmapImageRep(rep, flipped));
}

LxImage *LxImage_CreateNativeFromNSImage(NSImage *) {
    return nullptr;
}

LxImage *LxImage_CreateFromNSCGImageRep(NSImageRep *rep, int32_t flipped) {
    if (![rep respondsToSelector:@selector(CGImage)])
        return nullptr;
    return LxImage_CreateNativeFromCGImage([(NSBitmapImageRep *)rep CGImage], flipped);
}

LxImage *LxImage_CopyFromNSCGImageRep(NSImageRep *rep, int32_t flipped) {
    return copyAndDelete(LxImage_CreateFromNSCGImageRep(rep, flipped));
}
