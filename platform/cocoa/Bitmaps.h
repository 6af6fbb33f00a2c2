// Bitmaps of the platform over memory, and images over bitmaps.
#pragma once

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSImage.h>

#include <cstdint>

#include <oxlume/LxColor.h>
#include <oxlume/LxImage.h>

#include "image/Image.h"
#include "platform/cocoa/Rects.h"

namespace lx {

// What a bitmap over our pixels says of them.
struct BitmapForm {
    int32_t width, height, rowBytes;
    int32_t bitsPerSample, samplesPerPixel; // by the tables of the pixel types, as they stand
    bool hasAlpha;

    explicit BitmapForm(const LxImage &image);
    BitmapForm(int32_t type, int32_t width, int32_t height, int32_t rowBytes);

    int32_t bitsPerPixel() const { return samplesPerPixel * 8; }
    // Pictures of one column or one row are not made, nor those of a type without a size.
    bool isDrawable() const { return width > 1 && height > 1 && bitsPerSample > 0; }
    NSSize size() const { return NSMakeSize(narrowed(width), narrowed(height)); }
};

// Whether an image has pixels, and rows long enough for them: over others the platform would read past their
// end. False for null.
bool hasWholeRows(const LxImage *image);

// A new bitmap over `pixels`, or over memory of its own if that is null. Null on failure.
NSBitmapImageRep *newBitmap(const BitmapForm &form, uint8_t *pixels);

// The pixels of a bitmap by its first plane. Null `start` for a depth or a form that we do not read.
struct BitmapPixels {
    uint8_t *start = nullptr;
    int32_t type = 0; // an LxPixelType
    int32_t width = 0, height = 0, rowBytes = 0;

    explicit BitmapPixels(NSBitmapImageRep *rep);
};

// A new image over a bitmap's pixels, without looking for marks; null where they cannot be read.
LxImage *createImageOver(NSBitmapImageRep *rep, int32_t flipped);

// The same with marks.
LxImage *createMarkedImageOver(NSBitmapImageRep *rep, int32_t flipped);

// A copy of an image over a bitmap, which is deleted. Null for null.
LxImage *copyAndDelete(LxImage *image);

// A picture's first representation if that is a bitmap, else null.
NSBitmapImageRep *firstBitmap(NSImage *image);

// Turns a picture that has been allocated, and not yet initialised, into one of the form's size over
// `pixels`, or over memory of its own if that is null. Releases it and answers null on failure.
NSImage *initPicture(NSImage *allocated, const BitmapForm &form, uint8_t *pixels, bool flipped);

} // namespace lx
