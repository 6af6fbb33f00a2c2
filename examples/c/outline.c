/* What a stroke becomes: the polygon around a corner, point by point, and a picture of both. */
#include <oxlume/oxlume.h>
#include <stdio.h>

#include "ppm.h"

static void printMove(LxPathIterator *iterator, const LxPointD *point) {
    (void)iterator;
    printf("move %g %g\n", point->x, point->y);
}

static void printSegment(LxPathIterator *iterator, const LxPointD *from, const LxPointD *to) {
    (void)iterator;
    (void)from;
    printf("line %g %g\n", to->x, to->y);
}

int main(void) {
    LxImage *image = LxImage_Create(kLxPixelRGB, 0, 0, 120, 120, 0, 0);
    LxPathIterator *iterator = LxPath_CreateIterator();
    LxPath *corner = LxPath_Create();
    LxPath *outline;
    LxGC *gc = LxImage_GC(image);
    int written;

    LxPath_AddMoveTo(corner, 20, 20);
    LxPath_AddLineTo(corner, 100, 20);
    LxPath_AddLineTo(corner, 100, 100);
    outline = LxPath_CreateOutlined(corner, NULL, NULL, 20, kLxStrokeMitre);

    LxPathIterator_SetCallback(iterator, kLxPathOnMove, (LxPathCallback)printMove);
    LxPathIterator_SetCallback(iterator, kLxPathOnSegment, (LxPathCallback)printSegment);
    LxPath_IterateConst(outline, iterator, NULL, NULL, NULL);

    LxImage_Fill(image, LxColor_RGB(255, 255, 255));
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(200, 220, 255, 255));
    LxGC_Path(gc, outline);
    LxGC_SetRenderMode(gc, kLxRenderStroke);
    LxGC_SetStrokeColor(gc, LxColor_RGBA(0, 0, 128, 255));
    LxGC_SetStrokeWidth(gc, 2);
    LxGC_Path(gc, corner);
    written = writePpm(image, "outline.ppm");

    LxPath_Delete(outline);
    LxPath_Delete(corner);
    LxPath_DeleteIterator(iterator);
    LxImage_Delete(image);
    return written ? 0 : 1;
}
