// Operations of the platform's classes that GNUstep does not have.

#import "platform/cocoa/Supplements.h"

#include <oxlume/LxNativeImage.h>

#include "platform/cocoa/Bitmaps.h"

// Keeps a CGImage until the autorelease pool is drained.
@interface LxCGImageKeeper : NSObject {
    CGImageRef image;
}
- (id)initWithCGImage:(CGImageRef)kept;
@end

@implementation LxCGImageKeeper

- (id)initWithCGImage:(CGImageRef)kept {
    self = [super init];
    if (self != nil)
        image = kept;
    return self;
}

- (void)dealloc {
    CGImageRelease(image);
    [super dealloc];
}

@end

@implementation NSImage (LxSupplements)

- (id)initWithImageURL:(NSURL *)url {
    if (url != nil)
        return [self initWithContentsOfURL:url];
    [self release];
    return nil;
}

@end

@implementation NSBitmapImageRep (LxSupplements)

- (CGImageRef)CGImage {
    LxImage *pixels = lx::createImageOver(self, 0);
    CGImageRef image = LxImage_CreateCGImageRef(pixels, 0);
    LxImage_Delete(pixels);
    [[[LxCGImageKeeper alloc] initWithCGImage:image] autorelease];
    return image;
}

@end
