/* Quartz drawing contexts and pictures, for the renderer of kind kLxRendererQuartz: operations with Core
 * Graphics' names and meaning, drawn by cairo.
 *
 * A client makes a context over a cairo surface or over its own pixels, and hands it to
 * LxGC_CreateWithCGContextRef or LxGC_AddRenderer; or draws on it with the functions here. A library built
 * without cairo has none of them. oxlume.h does not include this header, which takes names of the platform's.
 *
 * Coordinates, sizes and colour components (0 to 1) are single precision. Points are transformed when they
 * enter the path, line widths when they are stroked; drawing is smoothed and goes over what is there.
 * Coordinates of the target beyond 2,097,152 are cut to that, and points that are not finite are left out.
 *
 * Every function takes null: nothing is done, and the answer is null, 0 or the identity. Objects are counted:
 * whoever creates or retains one releases it. A context belongs to one thread at a time. */
#ifndef OXLUME_LXQUARTZ_H
#define OXLUME_LXQUARTZ_H

#include <oxlume/LxBase.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxRect.h>

LX_BEGIN_DECLS

struct _cairo_surface; /* cairo_surface_t */

typedef struct CGContext *CGContextRef;           /* What is drawn on. */
typedef struct CGImage *CGImageRef;               /* A picture or a mask. */
typedef struct CGDataProvider *CGDataProviderRef; /* The memory behind a picture. */
typedef struct CGColorSpace *CGColorSpaceRef;     /* What a picture's components mean. */

/* ---- Contexts ----
 *
 * A new context has the identity as its transform, opaque black for fills and strokes, alpha 1, line width 1,
 * and no font. Its creator releases it; null for lack of memory and for a target that cannot be drawn on.
 *
 * With the identity, pictures and text stand upright, whichever way y grows. */

/* Over a cairo surface (a cairo_surface_t), which the context retains. y grows downwards from its top. */
LX_API CGContextRef LxQuartz_CreateWithSurface(struct _cairo_surface *surface);

/* The same with y growing upwards from a line `height` below the surface's top, as in the platform's views.
 */
LX_API CGContextRef LxQuartz_CreateWithSurfaceYUp(struct _cairo_surface *surface, float height);

/* Over the caller's pixels, which must outlive the context: `height` rows, top row first, `rowBytes` apart,
 * of `width` pixels with four bytes r, g, b, a, colours multiplied by alpha, as in an image of type
 * kLxPixelRGBAPremultiplied. y grows downwards. Null unless width and height are 1 to 32,767 and `pixels` and
 * `rowBytes` are multiples of 4 with room for the width. */
LX_API CGContextRef LxQuartz_CreateWithPixels(void *pixels, int32_t width, int32_t height, int32_t rowBytes);

LX_API CGContextRef CGContextRetain(CGContextRef context); /* Answers its argument. */
LX_API void CGContextRelease(CGContextRef context);        /* Gives one reference back. */

/* Both hand everything that was drawn to the surface. */
LX_API void CGContextSynchronize(CGContextRef context);
LX_API void CGContextFlush(CGContextRef context);

/* Keep the state (all but the path and the target) on a stack, and come back to it. Restoring more often than
 * saving does nothing. */
LX_API void CGContextSaveGState(CGContextRef context);
LX_API void CGContextRestoreGState(CGContextRef context);

/* ---- Transform ----
 *
 * From user space, x' = a*x + c*y + tx, y' = b*x + d*y + ty.
 *
 * Under a transform that has no inverse, as one of zeros, everything has shrunk to a line or a point: no new
 * path has an area, and strokes, pictures and text do not show. */

LX_API LxCGAffineTransform CGContextGetCTM(CGContextRef context); /* The transform as it stands. */

/* Puts `transform` before the context's own. One with an element that is not finite, which the inverse of a
 * transform without an inverse is, gives the identity: cancelling a transform by its inverse works for any.
 */
LX_API void CGContextConcatCTM(CGContextRef context, LxCGAffineTransform transform);

/* ---- Attributes ---- */

/* The colours of fills and of strokes. */
LX_API void CGContextSetRGBFillColor(CGContextRef context, float red, float green, float blue, float alpha);
LX_API void CGContextSetRGBStrokeColor(CGContextRef context, float red, float green, float blue, float alpha);

/* An opacity for all that is drawn, on top of the colours' own. */
LX_API void CGContextSetAlpha(CGContextRef context, float alpha);

/* In user space; at 0 and below strokes do not show. */
LX_API void CGContextSetLineWidth(CGContextRef context, float width);

/* How pictures are scaled. */
typedef enum CGInterpolationQuality {
    kCGInterpolationDefault = 0, /* as the picture says */
    kCGInterpolationNone = 1,    /* the nearest pixel */
    kCGInterpolationLow = 2,     /* between pixels */
    kCGInterpolationHigh = 3     /* as well as can be */
} CGInterpolationQuality;

/* Sets a CGInterpolationQuality. Other values do nothing. */
LX_API void CGContextSetInterpolationQuality(CGContextRef context, int32_t quality);

/* ---- Paths ----
 *
 * Lines and closes without a current point do nothing. */

LX_API void CGContextBeginPath(CGContextRef context); /* Empties the path. */

/* Begin a subpath at a point, draw a line to a point, and close the subpath. */
LX_API void CGContextMoveToPoint(CGContextRef context, float x, float y);
LX_API void CGContextAddLineToPoint(CGContextRef context, float x, float y);
LX_API void CGContextClosePath(CGContextRef context);

/* What drawing a path does. */
typedef enum CGPathDrawingMode {
    kCGPathFill = 0,        /* by the non-zero rule */
    kCGPathEOFill = 1,      /* by the even-odd rule */
    kCGPathStroke = 2,      /* butt ends, mitred up to ten times the width */
    kCGPathFillStroke = 3,  /* a fill by the non-zero rule, then a stroke */
    kCGPathEOFillStroke = 4 /* a fill by the even-odd rule, then a stroke */
} CGPathDrawingMode;

/* Draw the path and empty it. Another mode does neither. */
LX_API void CGContextDrawPath(CGContextRef context, int32_t mode);
LX_API void CGContextStrokePath(CGContextRef context);

/* Fills a rectangle; a negative size reaches to the other side. Empties the path. */
LX_API void CGContextFillRect(CGContextRef context, LxCGRect rect);

/* ---- Text ---- */

/* What the bytes of a text mean. */
typedef enum CGTextEncoding {
    kCGEncodingFontSpecific = 0, /* the code points 0 to 255 */
    kCGEncodingMacRoman = 1      /* the classic Roman character set */
} CGTextEncoding;

/* The font that the system offers for a name, in UTF-8, and its size in user space. */
LX_API void CGContextSelectFont(CGContextRef context, const char *name, float size, int32_t encoding);

/* What drawing text does. */
typedef enum CGTextDrawingMode {
    kCGTextFill = 0,       /* filled letters */
    kCGTextStroke = 1,     /* their outlines */
    kCGTextFillStroke = 2, /* both */
    kCGTextInvisible = 3   /* nothing */
} CGTextDrawingMode;

/* Sets a CGTextDrawingMode. Other values do nothing. */
LX_API void CGContextSetTextDrawingMode(CGContextRef context, int32_t mode);

/* Draws `length` bytes with the first glyph's baseline point at (x, y). Control characters are left out, and
 * text above 4,096 units of the target. The path stays. */
LX_API void CGContextShowTextAtPoint(CGContextRef context, float x, float y, const char *text, size_t length);

/* ---- Pictures ----
 *
 * A picture reads the memory that its provider points at whenever it is drawn, and so shows it as it is then.
 */

/* Called with what CGDataProviderCreateWithData was given, when the last reference is gone. */
typedef void (*CGDataProviderReleaseDataCallback)(void *info, const void *data, size_t size);

/* Null for null data. `release` may be null. */
LX_API CGDataProviderRef CGDataProviderCreateWithData(void *info, const void *data, size_t size,
                                                      CGDataProviderReleaseDataCallback release);
LX_API void CGDataProviderRelease(CGDataProviderRef provider);

/* Two fixed objects. */
LX_API CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void);
LX_API CGColorSpaceRef CGColorSpaceCreateDeviceGray(void);
LX_API void CGColorSpaceRelease(CGColorSpaceRef space);

/* Where a pixel's alpha stands, and whether its colours are multiplied by it. */
typedef enum CGImageAlphaInfo {
    kCGImageAlphaNone = 0,               /* no alpha */
    kCGImageAlphaPremultipliedLast = 1,  /* r, g, b, a; multiplied */
    kCGImageAlphaPremultipliedFirst = 2, /* a, r, g, b; multiplied */
    kCGImageAlphaLast = 3,               /* r, g, b, a */
    kCGImageAlphaFirst = 4,              /* a, r, g, b */
    kCGImageAlphaNoneSkipLast = 5,       /* r, g, b and a byte that does not count */
    kCGImageAlphaNoneSkipFirst = 6       /* a byte that does not count and r, g, b */
} CGImageAlphaInfo;

/* A picture over a provider's memory, which it retains: top row first, 8 bits per component, and per pixel 8
 * (grey), 24 (r, g, b) or 32 bits (with the alpha that `alphaInfo` says; smaller pixels are opaque whatever
 * it says). Rows that the provider has no bytes for are transparent. Null for other forms, for a width or
 * height of 0 or above 32,767, for rows too short for the width, for a null space or provider, and with a
 * `decode` array. `intent` is not used. */
LX_API CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                                size_t bytesPerRow, CGColorSpaceRef space, int32_t alphaInfo,
                                CGDataProviderRef provider, const float *decode, int32_t shouldInterpolate,
                                int32_t intent);

/* A picture to paint through with the fill colour: fully where a pixel's first byte is 0, not at all where it
 * is 255. Otherwise as CGImageCreate. */
LX_API CGImageRef CGImageMaskCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                                    size_t bytesPerRow, CGDataProviderRef provider, const float *decode,
                                    int32_t shouldInterpolate);

LX_API CGImageRef CGImageRetain(CGImageRef image); /* Answers its argument. */
LX_API void CGImageRelease(CGImageRef image);      /* Gives one reference back. */

/* What the picture was made with. */
LX_API size_t CGImageGetWidth(CGImageRef image);
LX_API size_t CGImageGetHeight(CGImageRef image);
LX_API size_t CGImageGetBitsPerPixel(CGImageRef image);
LX_API size_t CGImageGetBytesPerRow(CGImageRef image);
LX_API int32_t CGImageGetAlphaInfo(CGImageRef image);
LX_API int32_t CGImageIsMask(CGImageRef image);

/* Draws a picture or a mask over the rectangle, with its first row at the top; a negative size reaches to the
 * other side. Not drawn are an object of another kind, such as one of the platform's object system, a
 * rectangle that reaches beyond 2,097,152 on the target, and a picture scaled by more than 16,384. */
LX_API void CGContextDrawImage(CGContextRef context, LxCGRect rect, CGImageRef image);

LX_END_DECLS

#endif
