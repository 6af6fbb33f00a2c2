/* Fills a path of lines and curves: a heart. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage_Fill(image, LxColor_RGBA(252, 246, 240, 255));

    LxPath *heart = LxPath_Create();
    LxPath_AddMoveTo(heart, 120, 50);
    LxPath_AddCurveTo(heart, 120, 0, 40, 0, 40, 60); /* two control points, then the end */
    LxPath_AddQCurveTo(heart, 40, 100, 120, 150);    /* one control point, then the end */
    LxPath_AddQCurveTo(heart, 200, 100, 200, 60);
    LxPath_AddCurveTo(heart, 200, 0, 120, 0, 120, 50);
    LxPath_AddClose(heart);

    /* The context that draws into the image belongs to the image. */
    LxGC *gc = LxImage_GC(image);
    LxGC_SetRenderMode(gc, kLxRenderFill | kLxRenderStroke);
    LxGC_SetFillColor(gc, LxColor_RGBA(214, 48, 72, 255));
    LxGC_SetStrokeColor(gc, LxColor_RGBA(120, 16, 40, 255));
    LxGC_SetStrokeWidth(gc, 3);
    LxGC_Path(gc, heart);

    printPixel("in the heart", image, 120, 90);
    printPixel("above its dip", image, 120, 20);
    printPixel("on its outline", image, 40, 60);

    savePicture(image, "05-fill-a-path.pam");
    LxPath_Delete(heart);
    LxImage_Delete(image);
    return 0;
}
