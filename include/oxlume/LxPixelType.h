/* The types of pixels, and what is known of each. */
#ifndef OXLUME_LXPIXELTYPE_H
#define OXLUME_LXPIXELTYPE_H

#include <oxlume/LxBase.h>

LX_BEGIN_DECLS

/* The type of an image's pixels, and the tag of an LxColor. In the boundary it travels as an int32_t. */
typedef enum LxPixelType {
    kLxPixelA = 0,    /* one byte: masks, alpha or grey planes */
    kLxPixelRGB = 1,  /* three bytes r, g, b */
    kLxPixelRGBA = 2, /* four bytes r, g, b, a, straight alpha: the working type */
    /* four bytes, colour multiplied by alpha; made by LxImage_PremultiplyAlpha */
    kLxPixelRGBAPremultiplied = 3,
    kLxPixelF = 4, /* one 32-bit float, nominally 0 to 1 */
    kLxPixelL = 5  /* one 32-bit integer; reserved */
} LxPixelType;

/* What a type reports of itself. The answers are settled and not always what the name says:
 *
 *   type                       bytes per pixel   bytes per component   has alpha
 *   kLxPixelA                        1                   1                 0
 *   kLxPixelRGB                      3                   1                 0
 *   kLxPixelRGBA                     4                   1                 1
 *   kLxPixelRGBAPremultiplied        4                   4                 0
 *   kLxPixelF                        4                   1                 1
 *   kLxPixelL and any other          1                   0                 0
 */
LX_API int32_t LxColor_BytesPerPixel(int32_t type);
LX_API int32_t LxColor_BytesPerComponent(int32_t type);
LX_API int32_t LxColor_HasAlpha(int32_t type);

/* For callers who allocate rows of their own: `width` times LxColor_BytesPerPixel(type), rounded up to a
 * multiple of 16; of a result beyond 32 bits the low 32 are kept. Images made by the library align their rows
 * to 4 only. */
LX_API int32_t LxColor_BytesPerRow(int32_t type, int32_t width);

LX_END_DECLS

#endif
