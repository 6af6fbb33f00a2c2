/* Oxlume's operations on the platform's pictures and views. */
#ifndef OXLUME_COCOA_SHEEN_H
#define OXLUME_COCOA_SHEEN_H

#import <AppKit/NSImage.h>
#import <AppKit/NSView.h>

#include <oxlume/LxBlend.h>
#include <oxlume/LxImage.h>

/* "The rep" is the picture's first representation; nothing happens, and null is answered, where that is no
 * bitmap. */
@interface NSImage (Sheen)

/* A picture over the image's pixels, as LxImage_CreateNSImage makes one, but always with alpha. */
- (id)initWithContentsOfLxImage:(LxImage *)image;

/* A picture with one rep of new pixels of an LxPixelType, each dimension rounded up to whole pixels and rows
 * a multiple of 16 bytes. Null unless width and height are above 1. The pixels go with the rep. */
- (id)initWithSize:(NSSize)size andPixelType:(int32_t)type;

/* Stores a colour in every pixel of a rep of 32 or of 24 bits per pixel, where alpha is left out. On purpose,
 * rows are taken as packed: padding at their ends is filled and as much stays unfilled at the end. */
- (void)LxFill:(const LxRGBA *)color;

/* The same, blending the colour into the pixels. */
- (void)LxFill:(const LxRGBA *)color withBlender:(const LxBlend *)blend;

/* Does nothing. */
- (void)LxDrawTo:(NSImage *)image withBlender:(const LxBlend *)blend;

/* A copy, by copyWithZone:, that the caller releases. */
- (NSImage *)LxCopy;

/* An image over the rep's pixels that the caller deletes first. No marker pixels are read, and it is not
 * flipped. */
- (LxImage *)LxCreateImage;

/* Walks the representations, for a debugger. */
- (void)trace;

@end

/* What the view shows in a rectangle of its coordinates, or in its visible rectangle: as an autoreleased
 * picture, or as an image that the caller deletes. Null for a width or height below 1 and for a view that is
 * in no window. */
@interface NSView (Sheen)

- (NSImage *)asImageFromRect:(NSRect)rect;
- (NSImage *)asImage;
- (LxImage *)asLxImageFromRect:(NSRect)rect;
- (LxImage *)asLxImage;

@end

#endif
