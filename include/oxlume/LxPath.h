/* Vector paths: building, editing, shapes, flattening, outlining, clipping.
 *
 * A path is a run of drawing items with single-precision coordinates in one growing array of 32-bit words.
 * All functions take and hand out double precision; a coordinate is rounded when it is stored. A path belongs
 * to one thread at a time; several may read it while none writes. Unless a declaration says otherwise, a null
 * path (or null points, a null rectangle) does nothing and answers 0 or null, and a function that creates a
 * path answers one that the caller owns until LxPath_Delete, or null for lack of memory. Where memory for an
 * item is lacking, the item is not added. */
#ifndef OXLUME_LXPATH_H
#define OXLUME_LXPATH_H

#include <oxlume/LxBase.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>

LX_BEGIN_DECLS

typedef struct LxPath LxPath; /* An opaque record. */

/* The first word of an item tells its kind. Behind it stand the points' x and y as floats; coordinates are
 * absolute. */
typedef enum LxPathItem {
    kLxPathNothing = 0, /* 1 word: every reader steps over it */
    kLxPathMove = 1,    /* 3 words: a subpath starts at x, y */
    kLxPathLine = 2,    /* 3 words: to x, y */
    kLxPathQCurve = 3,  /* 5 words: quadratic curve: control point, end */
    kLxPathCurve = 4,   /* 7 words: cubic curve: two control points, end */
    kLxPathArc = 5,     /* 8 words: two points, a radius, two words of the caller's; draws nothing */
    kLxPathPolygon = 6, /* 2 + 2 n words: n as a signed integer, then n points, each reached by a line */
    kLxPathClose = 15   /* 1 word: back to the subpath's start */
} LxPathItem;

/* ---- Creating, clearing, copying ---- */

/* An empty path. */
LX_API LxPath *LxPath_Create(void);

/* Removes all items and releases their memory. */
LX_API void LxPath_MakeEmpty(LxPath *path);

/* Releases the path. Null is ignored. */
LX_API void LxPath_Delete(LxPath *path);

/* Appends all items of `src` to `dst`, which may be the same path. */
LX_API void LxPath_Add(LxPath *dst, const LxPath *src);

/* Makes `dst` a copy of `src`; does nothing if they are the same path. */
LX_API void LxPath_Copy(LxPath *dst, const LxPath *src);

/* A new path with the items of `src`. */
LX_API LxPath *LxPath_CreateCopy(const LxPath *src);

/* A plain copy: `clip` is never looked at, and may be null. To clip, call LxPath_Clip on the result. */
LX_API LxPath *LxPath_CreateClipped(const LxPath *src, const LxRectD *clip);

/* ---- Appending one item ---- */

/* Start a subpath at (x, y), and draw a line from the pen to (x, y). */
LX_API void LxPath_AddMoveTo(LxPath *path, double x, double y);
LX_API void LxPath_AddLineTo(LxPath *path, double x, double y);

/* Draw a quadratic curve with one control point, and a cubic one with two, from the pen to (x, y). */
LX_API void LxPath_AddQCurveTo(LxPath *path, double cx, double cy, double x, double y);
LX_API void LxPath_AddCurveTo(LxPath *path, double c1x, double c1y, double c2x, double c2y, double x,
                              double y);

/* Closes the subpath by a line to its start. */
LX_API void LxPath_AddClose(LxPath *path);

/* An arc is storage only: it draws nothing and does not move the pen. A transform moves its two points and
 * leaves the radius and the two words alone. */
LX_API void LxPath_AddArcTo(LxPath *path, double x1, double y1, double x2, double y2, double radius,
                            uint32_t word1, uint32_t word2);

/* A run of lines to `n` points, as one item. It counts for n + 1 words though it fills 2 + 2 n, so it is
 * whole only as long as nothing is appended behind it: the next item lands on its last points. With `n` below
 * 1 there are no points. For a closed polygon of ordinary items see LxPath_AddPoly. */
LX_API void LxPath_PolygonTo(LxPath *path, const LxPointD *points, int32_t n);

/* ---- Inserting, replacing, removing by index ----
 *
 * `index` counts items from 0, whatever their size; one below 0 means the first item. On paths with polygon
 * items that have points it means nothing: the walk to the item cannot step over them. Each insertion or
 * replacement walks to its item. The pointers that are answered are valid until the path changes. */

/* Insert an item in front of the one at `index`; an index past the end appends. Answer the item written; the
 * polygon form answers the word after the last point that it wrote. */
LX_API uint32_t *LxPath_InsertMoveTo(LxPath *path, int32_t index, double x, double y);
LX_API uint32_t *LxPath_InsertLineTo(LxPath *path, int32_t index, double x, double y);
LX_API uint32_t *LxPath_InsertQCurveTo(LxPath *path, int32_t index, double cx, double cy, double x, double y);
LX_API uint32_t *LxPath_InsertCurveTo(LxPath *path, int32_t index, double c1x, double c1y, double c2x,
                                      double c2y, double x, double y);
LX_API uint32_t *LxPath_InsertArcTo(LxPath *path, int32_t index, double x1, double y1, double x2, double y2,
                                    double radius, uint32_t word1, uint32_t word2);
LX_API uint32_t *LxPath_InsertPolygonTo(LxPath *path, int32_t index, const LxPointD *points, int32_t n);
LX_API uint32_t *LxPath_InsertClose(LxPath *path, int32_t index);

/* Replace the item at `index`. Answer the item written, or null where there is no such item. The path's count
 * of words goes up by the whole size of the new item: words as many as the old item's stay behind the last
 * item, ordinarily zero, which readers step over. */
LX_API uint32_t *LxPath_ReplaceByMoveTo(LxPath *path, int32_t index, double x, double y);
LX_API uint32_t *LxPath_ReplaceByLineTo(LxPath *path, int32_t index, double x, double y);
LX_API uint32_t *LxPath_ReplaceByQCurveTo(LxPath *path, int32_t index, double cx, double cy, double x,
                                          double y);
LX_API uint32_t *LxPath_ReplaceByCurveTo(LxPath *path, int32_t index, double c1x, double c1y, double c2x,
                                         double c2y, double x, double y);
LX_API uint32_t *LxPath_ReplaceByArcTo(LxPath *path, int32_t index, double x1, double y1, double x2,
                                       double y2, double radius, uint32_t word1, uint32_t word2);
LX_API uint32_t *LxPath_ReplaceByPolygonTo(LxPath *path, int32_t index, const LxPointD *points, int32_t n);
LX_API uint32_t *LxPath_ReplaceByClose(LxPath *path, int32_t index);

/* Removes the item at `index`, if there is one. */
LX_API void LxPath_RemoveItem(LxPath *path, int32_t index);

/* 1 if every move opened a subpath that came back to its start, else 0. The last subpath counts only if a
 * close item ends it; the close item itself is no return to the start. Points are compared as stored. With
 * `mend` not zero the missing lines to the start are inserted first. */
LX_API int32_t LxPath_Close(LxPath *path, int32_t mend);

/* LxPath_Close without mending. */
LX_API int32_t LxPath_isClosed(const LxPath *path);

/* ---- Shapes ----
 *
 * The Add forms append to the path; the Set forms clear it first. Angles are in degrees and grow
 * counterclockwise as seen, towards smaller y. */

/* A move and a line. */
LX_API void LxPath_AddLine(LxPath *path, double x1, double y1, double x2, double y2);
LX_API void LxPath_SetLine(LxPath *path, double x1, double y1, double x2, double y2);

/* A move, n - 1 lines and a close; nothing if `n` is 0. */
LX_API void LxPath_AddPoly(LxPath *path, const LxPointD *points, int32_t n);
LX_API void LxPath_SetPoly(LxPath *path, const LxPointD *points, int32_t n);

/* A rectangle; with a radius that is not 0 its corners are rounded by curves somewhat flatter than quarter
 * ellipses. Radii above half of a side give curves that cross. */
LX_API void LxPath_AddRect(LxPath *path, const LxRectD *rect, double radiusX, double radiusY);
LX_API void LxPath_SetRect(LxPath *path, const LxRectD *rect, double radiusX, double radiusY);

/* Four curves from the leftmost point by the smallest y. */
LX_API void LxPath_AddCircle(LxPath *path, double cx, double cy, double radius);
LX_API void LxPath_SetCircle(LxPath *path, double cx, double cy, double radius);
LX_API void LxPath_AddEllipse(LxPath *path, double cx, double cy, double radiusX, double radiusY);
LX_API void LxPath_SetEllipse(LxPath *path, double cx, double cy, double radiusX, double radiusY);

/* A pie slice of straight lines: from the centre, along `steps` chords, and back. Equal angles ordinarily
 * sweep the whole circle, see LxArcLength. */
LX_API void LxPath_AddPolyPie(LxPath *path, double cx, double cy, double radius, double startAngle,
                              double endAngle, int32_t steps, int32_t clockwise);
LX_API void LxPath_SetPolyPie(LxPath *path, double cx, double cy, double radius, double startAngle,
                              double endAngle, int32_t steps, int32_t clockwise);

/* A ring segment of straight lines: along radius2, then back along radius1. The first arc's second point lies
 * one step behind the start, and the arc ends two steps short of the end angle. */
LX_API void LxPath_AddPolyRing(LxPath *path, double cx, double cy, double radius1, double radius2,
                               double startAngle, double endAngle, int32_t steps, int32_t clockwise);
LX_API void LxPath_SetPolyRing(LxPath *path, double cx, double cy, double radius1, double radius2,
                               double startAngle, double endAngle, int32_t steps, int32_t clockwise);

/* ---- Transforming, flattening ----
 *
 * Flattening cuts a quadratic curve into 32 segments and a cubic by the square root of its extent, measured
 * after the matrix. A matrix may be null except where it is the point of the call; its last row is not read,
 * and an arc's radius is not touched. A word that is no item ends every reading of a path there. */

/* Moves the stored points in place; curves stay curves. */
LX_API void LxPath_Transform(LxPath *path, const LxMatrix *matrix);

/* Replaces the path's content by its flattened form: moves, lines and closes only. */
LX_API void LxPath_Decompose(LxPath *path, const LxMatrix *matrix);
LX_API LxPath *LxPath_CreateDecomposed(const LxPath *path, const LxMatrix *matrix);

/* With `clip` null a transformed copy; else the copy flattened with the matrix, then clipped. */
LX_API LxPath *LxPath_CreateTransformed(const LxPath *path, const LxMatrix *matrix, const LxRectD *clip);

/* A path that holds raw point runs instead of items, to be read as an array and by no function of this
 * family: per subpath the words 6 and 0 and the first point, then one pair of floats per segment, and the
 * word 15 if it was closed. */
LX_API LxPath *LxPath_CreatePointArray(const LxPath *path, const LxMatrix *matrix);

/* What LxPath_Info counts. */
typedef struct LxPathInfo {
    int32_t reserved1, reserved2, reserved3; /* 0 */
    int32_t points;                          /* moves + lines: the vertices to provide for */
    int32_t lines;                           /* segments after flattening */
    int32_t moves;                           /* subpaths begun */
    int32_t reserved4, reserved5, reserved6; /* 0 */
} LxPathInfo;

/* Counts what flattening would give. A move does not move the pen here, and a close is measured against the
 * origin: the counts are an estimate, which real flattening may miss. */
LX_API LxPathInfo LxPath_Info(const LxPath *path, const LxMatrix *matrix);

/* ---- Outlining, clipping ---- */

/* Bits of a stroke style. With none of them: one ribbon per subpath with bevelled joins. */
typedef enum LxStrokeStyle {
    kLxStrokeItems = 16,    /* each item gets a ribbon of its own, without joins */
    kLxStrokeMitre = 64,    /* mitre joins without a limit, unless kLxStrokeItems is set */
    kLxStrokeMitreToo = 128 /* the same */
} LxStrokeStyle;

/* The polygon that covers a stroke of `width` (in the path's own units) along the path, with butt ends. The
 * matrix, which may be null, is applied to the outline, and then the clip, if it is not null. Zero-length
 * segments and arcs leave no stroke. Linear in the number of segments. */
LX_API LxPath *LxPath_CreateOutlined(const LxPath *path, const LxMatrix *matrix, const LxRectD *clip,
                                     double width, int32_t style);

/* Replaces the path's content by its outline. */
LX_API void LxPath_Outline(LxPath *path, const LxMatrix *matrix, const LxRectD *clip, double width,
                           int32_t style);

/* Clips a flattened path to a rectangle with sorted corners, closed subpath by closed subpath. What lies
 * outside collapses onto the rectangle's border, or to a lone close item. Open subpaths are lost, except in a
 * path that has no close item: it stays as it is. Curves and arcs are skipped, so flatten first. A word that
 * is no item leaves the whole path unchanged. */
LX_API void LxPath_Clip(LxPath *path, const LxRectD *clip);

LX_END_DECLS

#endif
