// Reading and drawing the view that has the focus.

#include "platform/cocoa/Focus.h"

#import <AppKit/NSGraphics.h>
#import <AppKit/NSGraphicsContext.h>
#import <AppKit/NSView.h>
#import <AppKit/NSWindow.h>
#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/Sheen.h>

#include "platform/cocoa/Bitmaps.h"
#include "platform/cocoa/Rects.h"

namespace lx {

bool hasFocus() {
    return [NSGraphicsContext currentContext] != nil && [NSView focusView] != nil;
}

bool canFocus(NSView *view) {
    return [[view window] windowNumber] > 0;
}

NSBitmapImageRep *newGrab(NSRect rect) {
    return hasFocus() ? [[NSBitmapImageRep alloc] initWithFocusedViewRect:rect] : nil;
}

namespace {

// The components of one type do not fit its pixel by the tables: the platform would read beyond the last
// pixel.
bool fitsItsPixel(const BitmapForm &form) {
    return form.bitsPerSample > 0 && form.bitsPerSample * form.samplesPerPixel <= form.bitsPerPixel();
}

void frame(double x, double y, double width, double height) {
    if (hasFocus())
        NSFrameRect(NSMakeRect(x, y, width, height));
}

} // namespace
} // namespace lx

using namespace lx;

void LxCocoa_BlitNSImage(double x, double y, LxImage *image) {
    if (image == nullptr || !hasFocus() || !fitsItsPixel(BitmapForm(*image)))
        return;
    NSImage *picture = [[NSImage alloc] initWithContentsOfLxImage:image];
    static_assert(NSCompositeSourceOver == 2);
    [picture compositeToPoint:NSMakePoint(x, y) operation:NSCompositeSourceOver fraction:1.0];
    [picture release];
}

void LxCocoa_BlitImage(double x1, double y1, double x2, double y2, const LxImage *image) {
    if (!hasWholeRows(image) || !hasFocus())
        return;
    const BitmapForm form(*image);
    if (!fitsItsPixel(form))
        return;
    const unsigned char *planes[5] = {firstRow(*image), nullptr, nullptr, nullptr, nullptr};
    NSDrawBitmap(NSMakeRect(x1, y1, x2 - x1, y2 - y1), form.width, form.height, form.bitsPerSample,
                 form.samplesPerPixel, form.bitsPerPixel(), form.rowBytes, NO, form.hasAlpha,
                 NSCalibratedRGBColorSpace, planes);
}

void LxG_HLine(float x1, float y, float x2) {
    frame(x1, y, narrowDifference(x2, x1), 1.0);
}

void LxG_VLine(float x, float y1, float y2) {
    frame(x, y1, 1.0, narrowDifference(y2, y1));
}
