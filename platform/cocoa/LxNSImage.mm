// A picture from a file whose marker pixels may cut it into tiles.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSGraphics.h>
#import <Foundation/NSArray.h>
#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/LxNSImage.h>

#include "platform/cocoa/Bitmaps.h"
#include "platform/cocoa/Focus.h"

@implementation LxNSImage

// An image over the first representation, with its marks; null where that is no bitmap.
- (LxImage *)newImage {
    return LxImage_CreateFromNSBitmapImageRep(lx::firstBitmap(self), [self isFlipped] ? 1 : 0);
}

- (id)initWithContentsOfTiledFile:(NSString *)path {
    self = [self initWithContentsOfFile:path];
    if (self == nil)
        return nil;
    if ([[self representations] count] == 0) {
        [self release];
        return nil;
    }
    m_pImage = [self newImage];
    return self;
}

// The platform copies the field as it stands, but each picture deletes its own image.
- (id)copyWithZone:(NSZone *)zone {
    LxNSImage *copy = [super copyWithZone:zone];
    if (copy != nil)
        copy->m_pImage = m_pImage != nullptr ? [copy newImage] : nullptr;
    return copy;
}

- (void)dealloc {
    LxImage_Delete(m_pImage);
    [super dealloc];
}

- (void)fillInRect:(NSRect)rect {
    if (m_pImage == nullptr || !lx::hasFocus())
        return;
    if (LxImage_isTiled(m_pImage) == 0) {
        [self compositeToPoint:rect.origin operation:NSCompositeSourceOver fraction:1.0];
        return;
    }
    NSBitmapImageRep *rep = lx::newGrab(rect);
    LxImage *screen = LxImage_CreateFromNSBitmapImageRep(rep, 1);
    [rep drawAtPoint:rect.origin];
    LxImage_Delete(screen);
    [rep release];
}

@end
