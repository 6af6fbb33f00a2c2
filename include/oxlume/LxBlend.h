/* Blending: 44 modes, an opacity, a choice of channels, and the kernels that apply them to pixels.
 *
 * A blend has two sources: `a`, which is usually the destination itself, and `b`, the picture or colour laid
 * on it. All arithmetic is on 8-bit components and exact to the bit on every machine. Modes and channels out
 * of range can be stored; nothing is then drawn. Kernels hold no state but the system's rand(), which the
 * mode "Dissolve" draws from, so different images may be blended on different threads. */
#ifndef OXLUME_LXBLEND_H
#define OXLUME_LXBLEND_H

#include <oxlume/LxBase.h>
#include <oxlume/LxColor.h>
#include <oxlume/LxRect.h>

LX_BEGIN_DECLS

typedef struct _LxImage LxImage; /* See LxImage.h. */

/* How two pictures are combined. Read it through the functions below. */
typedef struct _LxBlend {
    uint32_t mode : 8;          /* 0 to 43 */
    uint32_t opacity : 8;       /* 0 transparent to 255 opaque */
    uint32_t channel : 8;       /* 1 to 6 */
    uint32_t premultiplied : 1; /* a mark that composites set during a masked call; nothing reads it */
    void *pointer;              /* the caller's; nothing here reads it */
} LxBlend;

/* LxBlend(mode, opacity) builds a blend of all channels, and the other of a chosen one. The low 8 bits of
 * each argument are kept. */
LX_API LxBlend LxBlend_Make(int32_t mode, int32_t opacity) LX_EXPORTED_AS("LxBlend");
LX_API LxBlend LxBlend_WithChannel(int32_t mode, int32_t opacity, int32_t channel);
#define LxBlend(mode, opacity) LxBlend_Make(mode, opacity)

/* Read a field of a record, which must be one, as 0 to 255. */
LX_API int32_t LxBlend_Mode(const LxBlend *blend);
LX_API int32_t LxBlend_Opacity(const LxBlend *blend);
LX_API int32_t LxBlend_Channel(const LxBlend *blend);

/* Store the low 8 bits of the value in a field. */
LX_API void LxBlend_SetMode(LxBlend *blend, int32_t mode);
LX_API void LxBlend_SetOpacity(LxBlend *blend, int32_t opacity);
LX_API void LxBlend_SetChannel(LxBlend *blend, int32_t channel);

/* Stores the caller's pointer. Answers `blend`. */
LX_API LxBlend *LxBlend_SetPointer(LxBlend *blend, void *pointer);

/* The name of a mode, -1 ("Mix") to 43, or of a channel, 1 ("red") to 6 ("rgba"); "noname" for others. */
LX_API const char *LxBlend_ModeName(int32_t mode);
LX_API const char *LxBlend_ChannelName(int32_t channel);

/* ---- Kernels ----
 *
 * Pointers are to the first byte of the first pixel, strides are in bytes and may be negative, widths and
 * heights count pixels. `out` and `a` may be the same memory; pixels are blended in order, row by row from
 * the left. A pixel for which the blend writes nothing keeps what `out` held. */

/* Blends one pixel. */
typedef void (*LxPixelBlendFunction)(const LxBlend *blend, void *out, const void *a, const void *b);

/* Blends a run of `width` pixels. */
typedef void (*LxLineBlendFunction)(const LxBlend *blend, void *out, const void *a, const void *b,
                                    uint32_t width);

/* Blends a rectangle. `mask` is null or has one byte for each pixel; nothing is drawn where that is 0. */
typedef void (*LxMapBlendFunction)(const LxBlend *blend, void *out, const void *a, const void *b,
                                   const void *mask, int32_t outStride, int32_t aStride, int32_t bStride,
                                   int32_t maskStride, uint32_t width, uint32_t height);

/* The kernel for a combination of LxPixelTypes, or null where there is none. Pixel and line kernels take `a`
 * of the type of `out`, which is kLxPixelA, RGB or RGBA, and `b` of one of these or premultiplied. Map
 * kernels take any `a` but a premultiplied one, and `out` may be premultiplied: it is treated as RGBA. Maps
 * of floats onto bytes convert, whatever the blend. */
LX_API LxPixelBlendFunction LxBlend_SelectPixelBlendFunction(int32_t outType, int32_t bType);
LX_API LxLineBlendFunction LxBlend_SelectLineBlendFunction(int32_t outType, int32_t bType);
LX_API LxMapBlendFunction LxBlend_SelectMapBlendFunction(int32_t outType, int32_t aType, int32_t bType);

/* ---- Compositing images where they lie ----
 *
 * Images meet by their rectangles in the outer coordinate system; `mask` is an image of one-byte pixels in
 * the same system, or null (a mask of another type counts as none), and `rect` limits what is drawn, or is
 * null. Nothing is drawn beyond any of them. A null blend or image, a combination without a kernel, a tiled
 * source and rectangles that do not overlap change nothing. A masked call sets and clears a bit in `blend`,
 * so two at once need a blend each. */

/* `out` becomes the blend of `a` and `b`. Where `b` is `out` or `a`, the call reads and writes `b` alone: its
 * own pixels from its corner, written from its position on.
 *
 * A segmented `b` is drawn as a frame that fills `rect`, or all of `out` from the origin on: corners as they
 * are, sides and middle repeated. During such a call `b`, and `a` where it is not `out`, are moved about. */
LX_API void LxBlend_Image_Image_Image(LxBlend *blend, LxImage *out, LxImage *a, LxImage *b,
                                      const LxImage *mask, const LxRectL *rect);

/* The same with `dst` as both `out` and `a`. */
LX_API void LxBlend_Image_Image(LxBlend *blend, LxImage *dst, LxImage *src, const LxImage *mask,
                                const LxRectL *rect);

/* `image` in all three places; a segmented one is left alone. */
LX_API void LxBlend_Image(LxBlend *blend, LxImage *image, const LxImage *mask, const LxRectL *rect);

/* Blends a colour into the pixel at (x, y), relative to the image's own corner. Images of one byte, of floats
 * and of integers, and colours of floats and of integers, change nothing. */
LX_API void LxBlend_Image_Pixel(LxImage *image, LxColor color, const LxBlend *blend, int32_t x, int32_t y);

LX_END_DECLS

#endif
