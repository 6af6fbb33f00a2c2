// Bitmaps of the platform for tests.
#pragma once

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSGraphics.h>
#import <AppKit/NSImage.h>

#include <cstdint>
#include <cstring>

#include <oxlume/LxColor.h>

#include "tests/support/ImageHandle.h"

namespace lx::test {

// An autoreleased bitmap with memory of its own, of 1, 2, 3 or 4 bytes per pixel.
inline NSBitmapImageRep *makeBitmap(int width, int height, int bytesPerPixel, int rowBytes = 0) {
    const int samples = bytesPerPixel == 2 ? 4 : bytesPerPixel;
    return [[[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                    pixelsWide:width
                                                    pixelsHigh:height
                                                 bitsPerSample:bytesPerPixel == 2 ? 4 : 8
                                               samplesPerPixel:samples
                                                      hasAlpha:samples == 4
                                                      isPlanar:NO
                                                colorSpaceName:NSCalibratedRGBColorSpace
                                                   bytesPerRow:rowBytes
                                                  bitsPerPixel:bytesPerPixel * 8] autorelease];
}

inline uint8_t *planeOf(NSBitmapImageRep *rep) {
    unsigned char *planes[5] = {};
    [rep getBitmapDataPlanes:planes];
    return planes[0];
}

inline NSBitmapImageRep *firstRep(NSImage *image) {
    return [[image representations] objectAtIndex:0];
}

// Fills a bitmap of four bytes per pixel and sets the marker pixels of a bar of columns: one in the corner,
// one on the third row at each of `marks`, and two down the third column.
template <size_t N>
void markColumns(NSBitmapImageRep *rep, LxRGBA fill, const int (&marks)[N]) {
    constexpr LxRGBA marker = {0, 255, 255, 255};
    uint8_t *pixels = planeOf(rep);
    const auto set = [&](int x, int y, const LxRGBA &color) {
        std::memcpy(pixels + y * [rep bytesPerRow] + x * 4, &color, 4);
    };
    for (int y = 0; y < [rep pixelsHigh]; ++y)
        for (int x = 0; x < [rep pixelsWide]; ++x)
            set(x, y, fill);
    set(0, 0, marker);
    for (const int x : marks)
        set(x, 2, marker);
    set(2, 0, marker);
    set(2, static_cast<int>([rep pixelsHigh]) - 1, marker);
}

} // namespace lx::test
