/* Images: rectangles of pixels with a position, in one of six pixel types.
 *
 * An image is an opaque record; whoever creates one deletes it. Its rectangle (x, y, maxX, maxY; the latter
 * two exclusive) places it in some outer coordinate system, and pixel addressing ignores that place: x and y
 * are relative to the image's own top-left corner. Rows lie LxImage_BytesPerRow apart, top row first in
 * memory unless the image is flipped. Every function takes a null image: readers answer 0 or null unless they
 * say otherwise, writers do nothing.
 *
 * Creation and deletion of images belong to one thread at a time; different images may be read and written on
 * different threads. */
#ifndef OXLUME_LXIMAGE_H
#define OXLUME_LXIMAGE_H

#include <oxlume/LxBase.h>
#include <oxlume/LxBlend.h>
#include <oxlume/LxColor.h>
#include <oxlume/LxPixelType.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>

LX_BEGIN_DECLS

typedef struct _LxImage LxImage; /* An opaque record; whoever creates one deletes it. */
typedef struct _LxGC LxGC;       /* See LxGC.h. */

/* ---- Creation and deletion ---- */

/* A new image of the rectangle, or null if that is empty, if its bytes do not fit in signed 32 bits, or if
 * memory is short. `type` is an LxPixelType. With `clear` not 0 all pixels are zero, else they are left as
 * the memory was. The lowest bit of `flipped` says that rows are stored bottom-up. The `empty` mark is set.
 * Small and medium images take pooled memory: making and deleting them costs about two small allocations,
 * whatever their number. */
LX_API LxImage *LxImage_Create(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY, int32_t clear,
                               int32_t flipped);

/* A new image over the caller's memory, which must outlive it and is never released: rows `rowBytes` apart,
 * as many as the rectangle is high. With `clear` not 0 those bytes are zeroed. `empty` and `flipped` set
 * their marks by their lowest bit. Null as above; a rectangle that gives null costs the memory of one record,
 * for ever. */
LX_API LxImage *LxImage_CreateEx(int32_t type, int32_t x, int32_t y, int32_t maxX, int32_t maxY, void *data,
                                 int32_t rowBytes, int32_t empty, int32_t clear, int32_t flipped);

/* Releases the image, its pixels unless they are the caller's, and its context. */
LX_API void LxImage_Delete(LxImage *image);

/* ---- Reading the record ---- */

LX_API int32_t LxImage_Type(const LxImage *image); /* The LxPixelType. */

/* What the type reports of itself, as LxColor_BytesPerPixel and its kin. */
LX_API int32_t LxImage_BytesPerPixel(const LxImage *image);
LX_API int32_t LxImage_BytesPerComponent(const LxImage *image);
LX_API int32_t LxImage_HasAlpha(const LxImage *image);

LX_API int32_t LxImage_BytesPerRow(const LxImage *image); /* The distance between rows. */
LX_API int32_t LxImage_PadBytes(const LxImage *image);    /* That less width times bytes per pixel. */

/* The first stored row: of a flipped image the bottom one. */
LX_API void *LxImage_Data(LxImage *image);
LX_API const void *LxImage_ConstData(const LxImage *image);

LX_API int32_t LxImage_DataSize(const LxImage *image); /* Height times bytes per row. */

/* Bytes of storage accounted to the image; 0 for images of 4,097 to 16,384 bytes and for the caller's memory.
 */
LX_API int32_t LxImage_MemSize(const LxImage *image);

LX_API int32_t LxImage_w(const LxImage *image);    /* Width in pixels. */
LX_API int32_t LxImage_h(const LxImage *image);    /* Height in pixels. */
LX_API int32_t LxImage_x(const LxImage *image);    /* The rectangle's left side. */
LX_API int32_t LxImage_y(const LxImage *image);    /* The rectangle's top side. */
LX_API int32_t LxImage_MinX(const LxImage *image); /* As LxImage_x. */
LX_API int32_t LxImage_MinY(const LxImage *image); /* As LxImage_y. */
LX_API int32_t LxImage_MaxX(const LxImage *image); /* x + width. */
LX_API int32_t LxImage_MaxY(const LxImage *image); /* y + height. */

/* These answer the all-zero point or rectangle for a null image. */
LX_API LxPointL LxImage_Pos(const LxImage *image);    /* x, y */
LX_API LxPointL LxImage_Size(const LxImage *image);   /* width, height */
LX_API LxPointL LxImage_Center(const LxImage *image); /* x + width / 2, y + height / 2 */
LX_API LxRectL LxImage_RectL(const LxImage *image);
LX_API LxRectD LxImage_RectD(const LxImage *image);

LX_API int32_t LxImage_isPlanar(const LxImage *image);    /* Always 0. */
LX_API int32_t LxImage_isFlipped(const LxImage *image);   /* Rows are stored bottom-up. */
LX_API int32_t LxImage_isTiled(const LxImage *image);     /* It is a sheet of tiles. */
LX_API int32_t LxImage_isEmpty(const LxImage *image);     /* The caller's mark; 1 for null. */
LX_API int32_t LxImage_isSegmented(const LxImage *image); /* It is cut into segments. */
LX_API int32_t LxImage_SegmentType(const LxImage *image); /* The segment layout, 1 to 7, or 0 for none. */

/* ---- Writing the record ---- */

/* Sets or clears the mark, which means nothing to the library. Answers the image. */
LX_API LxImage *LxImage_SetEmpty(LxImage *image, int32_t empty);

/* Says how rows are stored; moves no pixel. */
LX_API void LxImage_SetFlipped(LxImage *image, int32_t flipped);

/* Move the rectangle so that it begins at (x, y). Two names for one operation; pixels and size stay. */
LX_API void LxImage_MoveTo(LxImage *image, int32_t x, int32_t y);
LX_API void LxImage_MutableMoveTo(LxImage *image, int32_t x, int32_t y);

/* Take and release the image's recursive mutex, which is there for callers: of the other operations only
 * LxImage_Delete takes it. */
LX_API void LxImage_Lock(LxImage *image);
LX_API void LxImage_Unlock(LxImage *image);

/* The context that draws into the image, made on the first call and owned by the image. Null where none can
 * be made. */
LX_API LxGC *LxImage_GC(LxImage *image);

/* ---- Segments: a picture cut into the fixed and the stretchable pieces of a frame ---- */

/* The piece of a column and row of the three by three grid, each 0 to 2. Its far sides are the coordinates of
 * the piece's last column and row. The zero rectangle for a column above 2 and beyond the nine pieces, which
 * count by row * 3 + column: a column below 0 is one of the row before. */
LX_API LxRectL LxImage_SegmentRectL(const LxImage *image, int32_t column, int32_t row);

/* The width of the first non-empty piece in each column, the height of the first in each row; 0 for none. One
 * less than the extent in pixels. A null image leaves the results untouched, here and below. */
LX_API void LxImage_SegmentW(const LxImage *image, int32_t *left, int32_t *middle, int32_t *right);
LX_API void LxImage_SegmentH(const LxImage *image, int32_t *top, int32_t *middle, int32_t *bottom);

/* Widths, or heights, of pieces 0 to 5 in the order of rows, then of 3 to 5 once more. */
LX_API void LxImage_SegmentX(const LxImage *image, int32_t *a, int32_t *b, int32_t *c, int32_t *d, int32_t *e,
                             int32_t *f, int32_t *g, int32_t *h, int32_t *i);
LX_API void LxImage_SegmentY(const LxImage *image, int32_t *a, int32_t *b, int32_t *c, int32_t *d, int32_t *e,
                             int32_t *f, int32_t *g, int32_t *h, int32_t *i);

/* The six switches that say which pieces of layouts 4 to 7 are drawn. Setting turns a switch on for exactly 1
 * and off for any other value. */
LX_API void LxImage_SegmentFlag(const LxImage *image, int32_t *a, int32_t *b, int32_t *c, int32_t *d,
                                int32_t *e, int32_t *f);
LX_API void LxImage_SetSegmentFlag(LxImage *image, int32_t a, int32_t b, int32_t c, int32_t d, int32_t e,
                                   int32_t f);

/* ---- Tiles: a picture that is a sheet of equal cells ---- */

LX_API void LxImage_Tile(const LxImage *image, int32_t *x, int32_t *y);     /* The current tile. */
LX_API void LxImage_TileNum(const LxImage *image, int32_t *x, int32_t *y);  /* Columns and rows. */
LX_API void LxImage_TileSize(const LxImage *image, int32_t *w, int32_t *h); /* The size told by the marks. */

/* Makes a tile the current one; a coordinate past the last is taken as the last, and none is too small.
 * Answers 1, or 0 for an image that is not tiled. */
LX_API int32_t LxImage_SetTile(LxImage *image, int32_t x, int32_t y);

/* The current tile's rectangle, stepping by the tile size + 1. */
LX_API LxRectL LxImage_TileRectL(const LxImage *image);

/* ---- Single pixels ----
 *
 * Each call tests its bounds: for occasional use. Images of at most 16 bytes live in their record, and these
 * calls reach its first pixel whatever x and y are, as long as they lie inside. */

/* The address of a pixel, or null outside. */
LX_API void *LxImage_Pointer(LxImage *image, int32_t x, int32_t y);
LX_API const void *LxImage_ConstPointer(const LxImage *image, int32_t x, int32_t y);

/* The addresses of the first and of the last pixel of a run in row `y`, its ends in either order and clipped
 * to the image. Answers 1, or 0 with both results null where the run lies outside; a null image leaves the
 * results untouched. A run that begins at the width, just outside, answers 1 with `start` past `end`. */
LX_API int32_t LxImage_PointerLine(LxImage *image, int32_t x0, int32_t x1, int32_t y, void **start,
                                   void **end);

/* Reads a pixel as a colour of the image's type. Answers 1, or 0 outside. On purpose, a one-byte image
 * answers 1 and leaves `color` untouched. */
LX_API int32_t LxImage_PixelAt(const LxImage *image, int32_t x, int32_t y, LxColor *color);

/* Stores the colour's bytes as they stand, by the image's type and whatever the colour's. Answers 1, or 0
 * outside. */
LX_API int32_t LxImage_SetPixelAt(LxImage *image, int32_t x, int32_t y, LxColor color);

/* Blends a colour into a pixel, which is both the destination and the first source. Answers 1, or 0 outside
 * and where no kernel has these types. */
LX_API int32_t LxImage_BlendPixelAt(LxImage *image, int32_t x, int32_t y, LxColor color, LxBlend blend);

/* ---- Whole images ----
 *
 * All work in place on the stored rows. A colour is stored by its bytes as they stand: the first, the first
 * three or all four, by the image's type and whatever the colour's. */

/* Stores the colour in every pixel; bytes between rows stay. */
LX_API void LxImage_Fill(LxImage *image, LxColor color);

/* Zeroes all rows, and the bytes between them. */
LX_API void LxImage_Clear(LxImage *image);

/* A new image with pixels of its own, or null: the same type, rectangle, flip, segments and tiles, the
 * `empty` mark set. Where the image has a context the copy has one too. */
LX_API LxImage *LxImage_Copy(const LxImage *image);

/* Brightens colours of one, three or four straight bytes by `amount`, 0 to 1 of full scale and clamped to
 * that, saturating. On purpose, amounts from 0.998046875 up add nothing: 256 wraps to 0. */
LX_API void LxImage_Add(LxImage *image, double amount);

/* Multiplies colours by alpha and `opacity` in 256ths and makes a straight image a premultiplied one; alpha
 * stays as it is. Images of three bytes are multiplied by `opacity` unless that is 255, images of one byte
 * always, and on purpose each rounds its own way: a byte of 255 at 255 becomes 254. Other types are left
 * alone. */
LX_API void LxImage_PremultiplyAlpha(LxImage *image, uint8_t opacity);

/* Blends a colour into every pixel. Nothing where no kernel has these types. */
LX_API void LxImage_BlendColor(LxImage *image, LxColor color, LxBlend blend);

/* Stores the colour in a run of row `y`, both ends included, in either order and clipped to the image.
 * Answers 1, or 0 where the run lies outside; a run that begins at the width, just outside, answers 1. */
LX_API int32_t LxImage_SetSpan(LxImage *image, int32_t x0, int32_t x1, int32_t y, LxColor color);

/* Draws the border of the image, one pixel wide, in the colour 128, 128, 255, 255. */
LX_API void LxImage_Frame(LxImage *image);

/* Stores `first` in the pixels where x & mask and y & mask are both 0 or both not, and `second` in the
 * others: a mask of one bit gives squares of that size. For types of bytes only. */
LX_API void LxImage_GenerateChequerboard(LxImage *image, int32_t mask, LxColor first, LxColor second);

/* ---- Flips ----
 *
 * A rectangle is in the image's own coordinates and is clipped to it. The mark that rows are stored bottom-up
 * is not touched. */

/* Mirrors left and right. A segmented image is left alone; a tiled one is flipped in its top-left corner, at
 * the size of the current tile. */
LX_API void LxImage_FlipHorizontal(LxImage *image);
LX_API void LxImage_FlipHorizontalinRect(LxImage *image, int32_t x0, int32_t y0, int32_t x1, int32_t y1);

/* Mirrors top and bottom. On purpose, a rectangle that begins above the image pairs rows further up. */
LX_API void LxImage_FlipVertical(LxImage *image);
LX_API void LxImage_FlipVerticalinRect(LxImage *image, int32_t x0, int32_t y0, int32_t x1, int32_t y1);

/* Reverses the pixels as one long run through memory, whatever the rectangle. On purpose, with pixels of one
 * and three bytes the run is taken to end at the first pixel of the last row. */
LX_API void LxImage_Flip(LxImage *image);
LX_API void LxImage_FlipinRect(LxImage *image, int32_t x0, int32_t y0, int32_t x1, int32_t y1);

/* ---- Reserved ----
 *
 * Entry points without effect, kept so that clients link. */

/* Do nothing. */
LX_API void LxImage_Distort(LxImage *image);
LX_API void LxImage_Convolve(LxImage *image);
LX_API void LxImage_Blur(LxImage *image);

LX_API LxImage *LxImage_Resize(LxImage *image); /* Answers its argument. */
LX_API int32_t LxImage_BlendSpan(LxImage *image, int32_t x0, int32_t x1, int32_t y, LxColor color,
                                 LxBlend blend); /* Answers 0. */

LX_END_DECLS

#endif
