// A picture from a file whose marker pixels may cut it into tiles.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSGraphics.h>
#import <Foundation/NSArray.h>
#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/LxNSImage.h>

#include "platform/cocoa/Focus.h"

@implementation LxNSImage

- (id)initWithContentsOfTiledFile:(NSString *)path {
    self = [self initWithContentsOfFile:path];
    if (self == nil)
        return nil;
    NSArray *representations = [self representations];
    if ([representations count] == 0) {
        [self release];
        return nil;
    }
    m_pImage =
        LxImage_CreateFromNSBitmapImageRep([representations objectAtIndex:0], [self isFlipped] ? 1 : 0);
    return self;
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
