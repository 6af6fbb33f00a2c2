// What views show, as pictures and images.

#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/Sheen.h>

#include "platform/cocoa/Focus.h"

namespace lx {
namespace {

NSBitmapImageRep *newGrabOf(NSView *view, NSRect rect) {
    if (!canFocus(view))
        return nil;
    [view lockFocus];
    NSBitmapImageRep *rep = newGrab(rect);
    [view unlockFocus];
    return rep;
}

} // namespace
} // namespace lx

@implementation NSView (Sheen)

- (NSImage *)asImageFromRect:(NSRect)rect {
    const bool isLargeEnough = rect.size.width >= 1.0 && rect.size.height >= 1.0;
    NSBitmapImageRep *rep = isLargeEnough ? lx::newGrabOf(self, rect) : nil;
    if (rep == nil)
        return nil;
    NSImage *image = [[NSImage alloc] initWithSize:rect.size];
    [image addRepresentation:rep];
    [rep release];
    return [image autorelease];
}

- (NSImage *)asImage {
    return [self asImageFromRect:[self visibleRect]];
}

- (LxImage *)asLxImageFromRect:(NSRect)rect {
    return LxImage_CopyFromNSImage([self asImageFromRect:rect]);
}

- (LxImage *)asLxImage {
    return [self asLxImageFromRect:[self visibleRect]];
}

@end
