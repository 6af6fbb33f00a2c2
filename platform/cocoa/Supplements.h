// Operations of the platform's classes that GNUstep does not have.
#pragma once

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSImage.h>

#include <oxlume/LxQuartz.h>

@class NSURL;

@interface NSImage (LxSupplements)

// The picture at `url`; null where it cannot be read.
- (id)initWithImageURL:(NSURL *)url;

@end

@interface NSBitmapImageRep (LxSupplements)

// A CGImage over the bitmap's pixels, which the bitmap must outlive. It is released with the autorelease
// pool. Null for a bitmap that no image can be made over.
- (CGImageRef)CGImage;

@end
