/* Draws only inside a rectangle, and clips a path to one. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage_Fill(image, LxColor_RGBA(236, 236, 230, 255));
    LxGC *gc = LxImage_GC(image);
    LxGC_SetRenderMode(gc, kLxRenderFill);

    /* What is drawn from now on stays inside this rectangle. */
    LxGC_SetClipRectD(gc, 20, 20, 120, 140);
    LxGC_SetFillColor(gc, LxColor_RGBA(40, 120, 90, 255));
    LxGC_Circle(gc, 100, 80, 70);

    /* A new clip replaces the old one. The bounds are the whole image. */
    LxGC_SetClipRectL(gc, 120, 0, 240, 160);
    LxGC_SetFillColor(gc, LxColor_RGBA(200, 150, 40, 255));
    LxGC_Circle(gc, 140, 80, 70);

    printPixel("in both circles, left", image, 110, 80);
    printPixel("in both circles, right", image, 130, 80);
    printPixel("in the first circle alone", image, 36, 80);
    printPixel("above the first clip", image, 100, 15);

    /* A path can be clipped for itself: to lines that stay in the rectangle. */
    LxPath *square = LxPath_Create();
    const LxRectD rect = {0, 0, 100, 100}, half = {0, 0, 50, 100};
    LxPath_AddRect(square, &rect, 0, 0);
    LxPath_Clip(square, &half);
    LxGC_SetClipRectD(gc, 0, 0, 240, 160);
    LxGC_SetFillColor(gc, LxColor_RGBA(60, 60, 160, 255));
    LxGC_MatrixTranslate(gc, 180, 50);
    LxGC_Path(gc, square);
    printPixel("in the half that is left", image, 205, 100);

    savePicture(image, "08-clip.pam");
    LxPath_Delete(square);
    LxImage_Delete(image);
    return 0;
}
