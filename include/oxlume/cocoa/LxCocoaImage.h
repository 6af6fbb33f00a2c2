/* Images and the platform's pictures: images that lend their pixels to a platform object, images over a
 * platform object's pixels, platform objects over an image, and copies between the two.
 *
 * Nothing here guards one side's life by the other's: each declaration says which must live longer. All
 * failures answer null, and so does every null argument. Only bitmaps are read, of 32 (kLxPixelRGBA), 24
 * (kLxPixelRGB) or 8 (kLxPixelA) bits per pixel, by their first plane; other depths, other kinds of reps and
 * rows shorter than their width give null. Marker pixels are read where a function says so. */
#ifndef OXLUME_COCOA_LXCOCOAIMAGE_H
#define OXLUME_COCOA_LXCOCOAIMAGE_H

#import <Foundation/NSGeometry.h>

#include <oxlume/LxImage.h>

@class NSBitmapImageRep, NSImage, NSImageRep, NSView;

LX_BEGIN_DECLS

/* ---- Images that lend their pixels ----
 *
 * New images of the rectangle, of an LxPixelType, whose pixels never come from a pool. With `clear` not 0
 * they are zeroed; the lowest bits of `empty` and `flipped` set these marks. LxImage_NativeHandle is the
 * platform object, which LxImage_Delete leaves alone although its pixels go with the image: release the
 * object first. Null also for images of the type kLxPixelL and for a width or height of 1, which costs the
 * memory of one image, for ever. */

/* With an NSImage that holds an NSBitmapImageRep over the pixels. */
LX_API LxImage *LxImage_NativeNSImage(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY,
                                      int32_t empty, int32_t clear, int32_t flipped);

/* With an NSBitmapImageRep over the pixels. */
LX_API LxImage *LxImage_NativeNSBitmapImageRep(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY,
                                               int32_t empty, int32_t clear, int32_t flipped);

/* ---- Images over platform pixels ----
 *
 * At the origin, of the rep's size in pixels. The lowest bit of `flipped` says that rows count from the
 * bottom. Marker pixels are read. */

/* The rep must outlive the image; nothing retains it. */
LX_API LxImage *LxImage_CreateFromNSBitmapImageRep(NSBitmapImageRep *rep, int32_t flipped);

/* The same, of kind kLxNativeNSBitmapImageRep, and the rep is retained, for ever. */
LX_API LxImage *LxImage_CreateNativeFromNSBitmapImageRep(NSBitmapImageRep *rep, int32_t flipped);

/* The pixels of the focused view in a rectangle of its coordinates, of the same kind. In a view whose y grows
 * downwards rows are put upside down. `view` tells only that; it should be the view that has the focus, and
 * without focus the answer is null. */
LX_API LxImage *LxImage_CreateNativeFromNSView(NSView *view, NSRect rect);

/* Over the first representation, which must outlive the image, flipped as the NSImage is. Null for a bitmap
 * format other than 0, 1, 2 and 4. */
LX_API LxImage *LxImage_CreateFromNSImage(NSImage *image);

/* Copies that own their pixels, and keep segments and tiles. */
LX_API LxImage *LxImage_CopyFromNSImage(NSImage *image);
LX_API LxImage *LxImage_CopyFromNSBitmapImageRep(NSBitmapImageRep *rep, int32_t flipped);

/* Always null: reserved. The last two ask the rep for its CGImage first. */
LX_API LxImage *LxImage_CreateNativeFromNSImage(NSImage *image);
LX_API LxImage *LxImage_CreateFromNSCGImageRep(NSImageRep *rep, int32_t flipped);
LX_API LxImage *LxImage_CopyFromNSCGImageRep(NSImageRep *rep, int32_t flipped);

/* ---- Platform objects over an image ----
 *
 * New objects that the caller releases. Sizes are in points, one a pixel. Null for a width or height of 1,
 * for images of the type kLxPixelL, without pixels, or with rows shorter than their width. */

/* Over the image's pixels; the image must outlive it. */
LX_API NSImage *LxImage_CreateNSImage(LxImage *image);

/* With its own pixels, a copy. */
LX_API NSImage *LxImage_CopyNSImage(const LxImage *image);

/* ---- Drawing on the focused view, in its coordinates; nothing without focus ---- */

/* The image as a picture with its corner at (x, y). */
LX_API void LxCocoa_BlitNSImage(double x, double y, LxImage *image);

/* The image's pixels stretched over a rectangle. One of a type whose components do not fit its pixel
 * (kLxPixelRGBAPremultiplied) is not drawn. */
LX_API void LxCocoa_BlitImage(double x1, double y1, double x2, double y2, const LxImage *image);

/* Lines one unit thick, in the current colour. */
LX_API void LxG_HLine(float x1, float y, float x2);
LX_API void LxG_VLine(float x, float y1, float y2);

LX_END_DECLS

#endif
