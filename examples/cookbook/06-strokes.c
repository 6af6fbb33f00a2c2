/* The three stroke styles, along the same corner of three lines. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 360, 140, 0, 0);
    LxImage_Fill(image, LxColor_RGBA_White);
    LxGC *gc = LxImage_GC(image);
    LxGC_SetStrokeWidth(gc, 20);
    LxGC_SetStrokeColor(gc, LxColor_RGBA(40, 70, 110, 255));

    const struct {
        const char *name;
        int32_t style;
    } styles[] = {{"bevel", 0}, {"mitre", kLxStrokeMitre}, {"items", kLxStrokeItems}};
    for (int i = 0; i < 3; ++i) {
        const int left = 120 * i;
        LxPath *path = LxPath_Create();
        LxPath_AddMoveTo(path, left + 30, 110);
        LxPath_AddLineTo(path, left + 30, 30);
        LxPath_AddLineTo(path, left + 90, 30);
        LxGC_SetStrokeStyle(gc, styles[i].style);
        LxGC_Path(gc, path);
        LxPath_Delete(path);
        /* Just inside the tip of the corner, which only a mitre reaches. */
        printPixel(styles[i].name, image, left + 21, 21);
    }
    printPixel("along a line", image, 30, 80);

    savePicture(image, "06-strokes.pam");
    LxImage_Delete(image);
    return 0;
}
