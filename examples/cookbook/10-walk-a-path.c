/* Walks a path: prints its straight segments, with curves cut into them. */
#include "picture.h"

struct Count {
    int moves, segments, ends;
};

static void onMove(LxPathIterator *iterator, const LxPointD *point) {
    struct Count *count = LxPathIterator_User(iterator);
    ++count->moves;
    printf("move to %g, %g\n", point->x, point->y);
}

static void onSegment(LxPathIterator *iterator, const LxPointD *from, const LxPointD *to) {
    struct Count *count = LxPathIterator_User(iterator);
    if (++count->segments <= 2)
        printf("line from %g, %g to %g, %g\n", from->x, from->y, to->x, to->y);
}

static void onEnd(LxPathIterator *iterator) {
    struct Count *count = LxPathIterator_User(iterator);
    ++count->ends;
}

int main(void) {
    Oxlume_Init();
    LxPath *path = LxPath_Create();
    LxPath_AddMoveTo(path, 20, 140);
    LxPath_AddLineTo(path, 20, 20);
    LxPath_AddLineTo(path, 120, 20);
    LxPath_AddQCurveTo(path, 220, 20, 220, 140); /* always 32 segments */
    LxPath_AddClose(path);                       /* and one back to the start */

    struct Count count = {0, 0, 0};
    LxPathIterator *iterator = LxPath_CreateIterator();
    LxPathIterator_SetCallback(iterator, kLxPathOnMove, (LxPathCallback)onMove);
    LxPathIterator_SetCallback(iterator, kLxPathOnSegment, (LxPathCallback)onSegment);
    LxPathIterator_SetCallback(iterator, kLxPathOnSubpathEnd, (LxPathCallback)onEnd);
    LxPath_IterateConst(path, iterator, NULL, &count, NULL);
    printf("%d move, %d segments, %d end\n", count.moves, count.segments, count.ends);

    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage_Fill(image, LxColor_RGBA_White);
    LxGC_SetStrokeWidth(LxImage_GC(image), 2);
    LxGC_Path(LxImage_GC(image), path);
    savePicture(image, "10-walk-a-path.pam");

    LxImage_Delete(image);
    LxPath_DeleteIterator(iterator);
    LxPath_Delete(path);
    return 0;
}
