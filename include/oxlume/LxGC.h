/* The graphics context: what a draw call needs to know (colours, widths, blends, gradients, rectangles, the
 * matrix), and up to two renderers that do the drawing.
 *
 * A context draws nothing by itself: it forwards each call to its renderers in the order of their attachment,
 * so that without one a call does nothing and with two it draws on both targets. Attributes count from the
 * next call on. Angles grow as x turns towards y, and y grows downwards.
 *
 * All functions take a null context: setters and draw calls do nothing, getters answer what they say. A
 * context belongs to one thread at a time, and fills on images to one thread of the process. */
#ifndef OXLUME_LXGC_H
#define OXLUME_LXGC_H

#include <oxlume/LxBase.h>
#include <oxlume/LxBlend.h>
#include <oxlume/LxColor.h>
#include <oxlume/LxImage.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxPath.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>

LX_BEGIN_DECLS

typedef struct _LxGC LxGC;             /* An opaque record. */
typedef struct _LxGradient LxGradient; /* See LxGradient.h. */

/* ---- Creation and deletion ----
 *
 * Whoever creates a context deletes it; the one of LxImage_GC belongs to its image. Every creation answers
 * null for lack of memory, and where its renderer cannot be made. */

/* A context without a renderer, both its rectangles all zero. */
LX_API LxGC *LxGC_Create(void);

/* The same with the bounds as they stand, and the clip as LxGC_SetClipRectD would derive it. */
LX_API LxGC *LxGC_CreateWithRect(LxRectD bounds, LxRectD clip);

/* Draws into `image`, which must outlive the context. The bounds are the image's rectangle moved to (0, 0);
 * the clip is derived from `clip`. */
LX_API LxGC *LxGC_CreateWithImage(LxImage *image, LxRectD clip);

/* Draw to a Quartz context (a CGContextRef), or by OpenGL to the context that is current; the rectangle is
 * the bounds and the clip. Null in a library without that renderer.
 *
 * OpenGL's y grows upwards. Its renderer needs fixed functions (no core profile) and sets OpenGL's state at
 * its creation: viewport, projection, blending. The clip limits strokes alone, in the path's own coordinates;
 * gradients, blends and masks have no effect. LxGC_Fill clears the whole buffer. */
LX_API LxGC *LxGC_CreateWithCGContextRef(void *context, LxRectD rect);
LX_API LxGC *LxGC_CreateWithOpenGLContext(void *context, LxRectD rect);

/* Draw to a view of the platform's object system, an NSOpenGLView or an NSView. Null unless the library of
 * bridges to that system is loaded. */
LX_API LxGC *LxGC_CreateWithNSOpenGLView(void *view);
LX_API LxGC *LxGC_CreateWithNSView(void *view);

/* Always null: there is no such renderer. */
LX_API LxGC *LxGC_CreateWithQuickDrawPort(void *port);

/* What draws, and what the target of LxGC_AddRenderer is. */
typedef enum LxRendererKind {
    kLxRendererSoftware = 0, /* an LxImage; 1 and 2 are the same */
    kLxRendererOpenGL = 3,   /* the current context, whatever the target; 4 and 5 are the same */
    kLxRendererQuartz = 6    /* a CGContextRef */
} LxRendererKind;

/* Attaches a renderer, which the context owns from then on; the target must outlive it. `unused` is passed on
 * and not read. Answers 1, or 0 if two renderers are attached already or the renderer cannot be made, as for
 * an unknown kind. */
LX_API int32_t LxGC_AddRenderer(LxGC *gc, int32_t kind, void *target, void *unused);

/* Releases the renderers and the context, not what attributes refer to. Null is ignored. */
LX_API void LxGC_Delete(LxGC *gc);

/* Does nothing. */
LX_API void LxGC_Reshape(LxGC *gc, int32_t width, int32_t height);

/* ---- Attributes ----
 *
 * A new context has the values told here, which the getters also answer for a null context unless a second
 * value is told for that. Gradients are not owned and must live as long as they are drawn with; null means
 * none, and a gradient goes before the colour. */

LX_API void LxGC_SetStrokeColor(LxGC *gc, LxColor color); /* opaque black */
LX_API LxColor LxGC_StrokeColor(const LxGC *gc);
LX_API void LxGC_SetStrokeWidth(LxGC *gc, double width); /* 1, in units of the path */
LX_API double LxGC_StrokeWidth(const LxGC *gc);
LX_API void LxGC_SetStrokeStyle(LxGC *gc, int32_t style); /* 16; null 0. Bits of LxStrokeStyle */
LX_API int32_t LxGC_StrokeStyle(const LxGC *gc);
LX_API void LxGC_SetStrokeBlend(LxGC *gc, LxBlend blend); /* mode 2, opacity 255, all channels */
LX_API LxBlend LxGC_StrokeBlend(const LxGC *gc);
LX_API void LxGC_SetStrokeGradient(LxGC *gc, LxGradient *gradient); /* null */
LX_API LxGradient *LxGC_StrokeGradient(const LxGC *gc);

LX_API void LxGC_SetFillColor(LxGC *gc, LxColor color); /* opaque black */
LX_API LxColor LxGC_FillColor(const LxGC *gc);
LX_API void LxGC_SetFillBlend(LxGC *gc, LxBlend blend); /* mode 2, opacity 255, all channels */
LX_API LxBlend LxGC_FillBlend(const LxGC *gc);
LX_API void LxGC_SetFillGradient(LxGC *gc, LxGradient *gradient); /* null */
LX_API LxGradient *LxGC_FillGradient(const LxGC *gc);

LX_API void LxGC_SetImageBlend(LxGC *gc, LxBlend blend); /* mode 2, opacity 255, all channels */
LX_API LxBlend LxGC_ImageBlend(const LxGC *gc);

/* Of these only the colour has an effect: renderers that draw text choose the font and the size. */
LX_API void LxGC_SetTextSize(LxGC *gc, double size); /* 9 */
LX_API double LxGC_TextSize(const LxGC *gc);
LX_API void LxGC_SetTextFont(LxGC *gc, int32_t font); /* 1; null 0 */
LX_API int32_t LxGC_TextFont(const LxGC *gc);
LX_API void LxGC_SetTextColor(LxGC *gc, LxColor color); /* opaque black */
LX_API LxColor LxGC_TextColor(const LxGC *gc);
LX_API void LxGC_SetTextJust(LxGC *gc, int32_t justification); /* 5 */
LX_API int32_t LxGC_TextJust(const LxGC *gc);
LX_API void LxGC_SetTextBlend(LxGC *gc, LxBlend blend); /* mode 2, opacity 255, all channels */
LX_API LxBlend LxGC_TextBlend(const LxGC *gc);
LX_API void LxGC_SetTextGradient(LxGC *gc, LxGradient *gradient); /* null */
LX_API LxGradient *LxGC_TextGradient(const LxGC *gc);

/* Single fields of the four blends, kept to their low 8 bits. */
LX_API void LxGC_SetStrokeBlendMode(LxGC *gc, int32_t mode);
LX_API void LxGC_SetStrokeBlendChannel(LxGC *gc, int32_t channel);
LX_API void LxGC_SetStrokeBlendOpacity(LxGC *gc, int32_t opacity);
LX_API int32_t LxGC_StrokeBlendMode(const LxGC *gc);
LX_API int32_t LxGC_StrokeBlendChannel(const LxGC *gc);
LX_API int32_t LxGC_StrokeBlendOpacity(const LxGC *gc);
LX_API void LxGC_SetFillBlendMode(LxGC *gc, int32_t mode);
LX_API void LxGC_SetFillBlendChannel(LxGC *gc, int32_t channel);
LX_API void LxGC_SetFillBlendOpacity(LxGC *gc, int32_t opacity);
LX_API int32_t LxGC_FillBlendMode(const LxGC *gc);
LX_API int32_t LxGC_FillBlendChannel(const LxGC *gc);
LX_API int32_t LxGC_FillBlendOpacity(const LxGC *gc);
LX_API void LxGC_SetImageBlendMode(LxGC *gc, int32_t mode);
LX_API void LxGC_SetImageBlendChannel(LxGC *gc, int32_t channel);
LX_API void LxGC_SetImageBlendOpacity(LxGC *gc, int32_t opacity);
LX_API int32_t LxGC_ImageBlendMode(const LxGC *gc);
LX_API int32_t LxGC_ImageBlendChannel(const LxGC *gc);
LX_API int32_t LxGC_ImageBlendOpacity(const LxGC *gc);
LX_API void LxGC_SetTextBlendMode(LxGC *gc, int32_t mode);
LX_API void LxGC_SetTextBlendChannel(LxGC *gc, int32_t channel);
LX_API void LxGC_SetTextBlendOpacity(LxGC *gc, int32_t opacity);
LX_API int32_t LxGC_TextBlendMode(const LxGC *gc);
LX_API int32_t LxGC_TextBlendChannel(const LxGC *gc);
LX_API int32_t LxGC_TextBlendOpacity(const LxGC *gc);

/* The numbers of the attributes. */
typedef enum LxAttribute {
    kLxStrokeColor = 1,    /* LxGC_SetStrokeColor */
    kLxStrokeWidth = 2,    /* LxGC_SetStrokeWidth */
    kLxStrokeStyle = 3,    /* LxGC_SetStrokeStyle */
    kLxStrokeBlend = 4,    /* LxGC_SetStrokeBlend */
    kLxStrokeGradient = 5, /* LxGC_SetStrokeGradient */
    kLxFillColor = 9,      /* LxGC_SetFillColor */
    kLxFillBlend = 10,     /* LxGC_SetFillBlend */
    kLxFillGradient = 11,  /* LxGC_SetFillGradient */
    kLxImageBlend = 13,    /* LxGC_SetImageBlend */
    kLxTextSize = 15,      /* LxGC_SetTextSize */
    kLxTextFont = 16,      /* LxGC_SetTextFont */
    kLxTextColor = 18,     /* LxGC_SetTextColor */
    kLxTextJust = 19,      /* LxGC_SetTextJust */
    kLxTextBlend = 20,     /* LxGC_SetTextBlend */
    kLxTextGradient = 21   /* LxGC_SetTextGradient */
} LxAttribute;

/* A mark beside each number from 0 to 22, also those that name no attribute, for callers to use: every setter
 * writes 1 there, and clearing it does not undo the setting. Other numbers read as 0 and are not written. */
LX_API int32_t LxGC_TestAttrFlag(const LxGC *gc, uint32_t id);
LX_API void LxGC_SetAttrFlag(LxGC *gc, uint32_t id, int32_t value);

/* What paths do, a set of these bits. */
typedef enum LxRenderMode {
    kLxRenderFill = 1,  /* drawn first */
    kLxRenderStroke = 2 /* drawn after the fill */
} LxRenderMode;

LX_API void LxGC_SetRenderMode(LxGC *gc, uint32_t mode); /* 2: strokes only; null 1 */
LX_API uint32_t LxGC_RenderMode(const LxGC *gc);

/* ---- Rectangles ----
 *
 * The clip always lies in the bounds: it becomes the part of the given rectangle in the bounds or, on
 * purpose, the whole bounds where the two do not meet. A new clip replaces the old one and does not narrow
 * it. Swapped corners are sorted. */

/* The bounds; what the clip has been is derived anew. */
LX_API void LxGC_SetBoundsRectD(LxGC *gc, double x0, double y0, double x1, double y1);
LX_API void LxGC_SetBoundsRectL(LxGC *gc, int32_t x0, int32_t y0, int32_t x1, int32_t y1);

/* The clip, by the rule above. */
LX_API void LxGC_SetClipRectD(LxGC *gc, double x0, double y0, double x1, double y1);
LX_API void LxGC_SetClipRectL(LxGC *gc, int32_t x0, int32_t y0, int32_t x1, int32_t y1);
LX_API void LxGC_SetClip(LxGC *gc, double x0, double y0, double x1, double y1); /* As LxGC_SetClipRectD. */

/* The all-zero rectangle for a null context. The pointers show the context's own rectangles. */
LX_API LxRectD LxGC_ClipRect(const LxGC *gc);
LX_API LxRectD LxGC_BoundsRect(const LxGC *gc);
LX_API const LxRectD *LxGC_ClipRectPtr(const LxGC *gc);
LX_API const LxRectD *LxGC_BoundsRectPtr(const LxGC *gc);

/* ---- Matrix ----
 *
 * From the coordinates of paths to those of the target. Every change but LxGC_SetOrigin's is told to the
 * renderers. */

/* The context's own matrix, for reading and writing; null for null. */
LX_API LxMatrix *LxGC_Matrix(LxGC *gc);

/* The identity moved by (x, y), which LxGC_MatrixIdentity comes back to. Not told to the renderers. */
LX_API void LxGC_SetOrigin(LxGC *gc, double x, double y);
LX_API void LxGC_MatrixIdentity(LxGC *gc); /* The identity moved by the origin. */

/* As LxMatrix_MulMat, _Scale, _Translate and _Rotate on the matrix. A null `other` does nothing. */
LX_API void LxGC_MatrixMul(LxGC *gc, const LxMatrix *other);
LX_API void LxGC_MatrixScale(LxGC *gc, double sx, double sy);
LX_API void LxGC_MatrixTranslate(LxGC *gc, double x, double y);
LX_API void LxGC_MatrixRotate(LxGC *gc, double radians);
LX_API void LxGC_MatrixRotateDeg(LxGC *gc, double degrees);

/* The inverse, in one buffer of the process that the next call overwrites; for a null context the buffer as
 * it stands. */
LX_API const LxMatrix *LxGC_InverseMatrix(const LxGC *gc);

/* Transform a point in place; the integer form truncates each coordinate + 0.5 toward zero. */
LX_API void LxGC_TransposeL(const LxGC *gc, int32_t *x, int32_t *y);
LX_API void LxGC_TransposeD(const LxGC *gc, double *x, double *y);

/* ---- Shapes ----
 *
 * They are drawn by the render mode, through matrix and clip. Each costs one path. */

LX_API void LxGC_Line(LxGC *gc, double x1, double y1, double x2, double y2);  /* from the first point on */
LX_API void LxGC_Frame(LxGC *gc, double x1, double y1, double x2, double y2); /* a rectangle */
/* A rectangle whose corners are rounded by the two radii. */
LX_API void LxGC_RoundFrame(LxGC *gc, double x1, double y1, double x2, double y2, double radiusX,
                            double radiusY);
/* An ellipse and a circle around (cx, cy). */
LX_API void LxGC_Ellipse(LxGC *gc, double cx, double cy, double radiusX, double radiusY);
LX_API void LxGC_Circle(LxGC *gc, double cx, double cy, double radius);

/* A closed polygon of `n` points. */
LX_API void LxGC_Poly(LxGC *gc, const LxPointD *points, int32_t n);

/* A path of the caller's, which is only read. */
LX_API void LxGC_Path(LxGC *gc, const LxPath *path);

/* ---- Whole pixels ----
 *
 * One pixel wide, without smoothing, in the stroke's colour and blend, pixel by pixel. Only renderers on
 * images draw them. */

/* A row of pixels from x1 to x2, both included, through matrix and clip. On purpose, the second end is
 * transformed as if its y were 0, and a row that begins on the clip's right side, just outside, still draws
 * that side's last pixel. */
LX_API void LxGC_HLineL(LxGC *gc, int32_t x1, int32_t x2, int32_t y);

/* A column. No renderer draws it. */
LX_API void LxGC_VLineL(LxGC *gc, int32_t x, int32_t y1, int32_t y2);

/* A line, both ends included, through matrix and clip. Nothing where the stroke has a gradient. Two names for
 * one operation: neither smooths. */
LX_API void LxGC_LineL(LxGC *gc, int32_t x1, int32_t y1, int32_t x2, int32_t y2);
LX_API void LxGC_ALineL(LxGC *gc, int32_t x1, int32_t y1, int32_t x2, int32_t y2);

/* A rectangle, by the render mode and without matrix. On purpose, the outline takes x2 and y2 as exclusive
 * while the fill, which is clipped and has the stroke's colour, includes both. It is walked whole, also where
 * it lies outside. */
LX_API void LxGC_FrameL(LxGC *gc, int32_t x1, int32_t y1, int32_t x2, int32_t y2);

/* No renderer draws it. */
LX_API void LxGC_EllipseL(LxGC *gc, int32_t x1, int32_t y1, int32_t x2, int32_t y2);

/* ---- The whole target ---- */

/* Stores the colour everywhere in the target, whatever the clip. */
LX_API void LxGC_Fill(LxGC *gc, LxColor color);
LX_API void LxGC_Clear(LxGC *gc); /* The same with LxColor_L(0). */

/* Wait for the target, and hand it what is pending. Nothing on images. On purpose, the flush ends what a
 * Quartz context shows until the matrix is next set. */
LX_API void LxGC_Sync(LxGC *gc);
LX_API void LxGC_Flush(LxGC *gc); /* Both. */

/* ---- Images and text ---- */

/* Draw an image with the image blend, at (x, y) moved by the matrix; pixels are not scaled. LxGC_DrawImage
 * draws it at its own position. `mask` is an image of one-byte pixels or null. `rect` limits what is drawn on
 * images; on other targets it is the size to draw. */
LX_API void LxGC_DrawImage(LxGC *gc, LxImage *image);
LX_API void LxGC_DrawImageAt(LxGC *gc, int32_t x, int32_t y, LxImage *image);
LX_API void LxGC_DrawImageWithMask(LxGC *gc, int32_t x, int32_t y, LxImage *image, LxImage *mask);
LX_API void LxGC_DrawImageClipped(LxGC *gc, int32_t x, int32_t y, LxImage *image, LxRectL rect);
LX_API void LxGC_DrawImageClippedWithMask(LxGC *gc, int32_t x, int32_t y, LxImage *image, LxImage *mask,
                                          LxRectL rect);

/* Draw `length` bytes of text from (x, y) on its baseline. Only Quartz contexts do. On purpose,
 * the form without a length passes 0 and draws nothing. */
LX_API void LxGC_DrawText(LxGC *gc, double x, double y, const char *text);
LX_API void LxGC_DrawTextWithLength(LxGC *gc, double x, double y, const char *text, int32_t length);

/* Reserved entry points: no effect, a width of 0, and null even where the target is an image. */
LX_API void LxGC_DrawTextInRectW(LxGC *gc, LxRectD rect, const uint16_t *text, int32_t length);
LX_API double LxGC_GetTextWidth(LxGC *gc, const char *text);
LX_API double LxGC_GetTextWidthWithLength(LxGC *gc, const char *text, int32_t length);
LX_API LxImage *LxGC_GetImage(LxGC *gc);

LX_END_DECLS

#endif
