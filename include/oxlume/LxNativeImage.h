/* Images and the platform's pictures: pixels that both see, without a copy.
 *
 * A native image is an image like any other, behind which a platform object stands that reads the same
 * memory. Quartz contexts draw that object. */
#ifndef OXLUME_LXNATIVEIMAGE_H
#define OXLUME_LXNATIVEIMAGE_H

#include <oxlume/LxBase.h>
#include <oxlume/LxImage.h>

LX_BEGIN_DECLS

struct CGImage;

/* What stands behind an image, and what LxImage_Delete does with it. */
typedef enum LxNativeType {
    kLxNativeNone = 0,            /* an ordinary image */
    kLxNativeCGImage = 1,         /* a CGImage: released */
    kLxNativeNSImage = 2,         /* an NSImage: left alone, though its pixels go with the image */
    kLxNativeNSBitmapImageRep = 3 /* an NSBitmapImageRep: left alone */
} LxNativeType;

LX_API int32_t LxImage_isNative(const LxImage *image);   /* 1 or 0; 0 for null */
LX_API int32_t LxImage_NativeType(const LxImage *image); /* The LxNativeType; 0 for null. */

/* The object, owned by the image; null for an image that is not native, and for null. */
LX_API void *LxImage_NativeHandle(const LxImage *image);

/* A new image of kind kLxNativeCGImage, whose pixels never come from a pool; the arguments and the nulls are
 * those of LxImage_Create, and the lowest bit of `empty` sets the mark. On purpose, the CGImage takes the
 * first byte of four as alpha. Null in a library without Quartz. */
LX_API LxImage *LxImage_NativeCGImage(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY,
                                      int32_t empty, int32_t clear, int32_t flipped);

/* The same, but the image is not marked as native, and the objects made for it are never released. For the
 * library's own start. */
LX_API LxImage *LxImage_CreateNative(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY,
                                     int32_t empty, int32_t clear, int32_t flipped);

/* A CGImage over the image's pixels, in the order of their memory, which the caller releases before the
 * image: grey for one byte per pixel, colour without alpha for three, with straight alpha for four. With
 * `mask` not 0 a mask to paint through. Null for null, for rows shorter than the width, for lack of memory,
 * and in a library without Quartz. */
LX_API struct CGImage *LxImage_CreateCGImageRef(const LxImage *image, int32_t mask);

/* Always null: reserved. */
LX_API LxImage *LxImage_CreateNativeFromCGImage(struct CGImage *image, int32_t flipped);

LX_END_DECLS

#endif
