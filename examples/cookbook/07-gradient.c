/* Fills a shape with a gradient of three stops, and strokes it with another. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage_Fill(image, LxColor_RGBA_White);

    /* A stop has an index, a position of 0 to 1 along the shape, and the way to the next stop. */
    LxGradient *dawn = LxGradient_Create();
    LxGradient_SetType(dawn, kLxGradientDown, kLxGradientLinear);
    LxGradient_AddColor(dawn, LxColor_RGBA(24, 32, 88, 255), 0, 0.0, 0.5);
    LxGradient_AddColor(dawn, LxColor_RGBA(232, 120, 72, 255), 1, 0.7, 0.5);
    LxGradient_AddColor(dawn, LxColor_RGBA(255, 232, 160, 255), 2, 1.0, 0.5);

    LxGradient *rim = LxGradient_Create();
    LxGradient_SetType(rim, kLxGradientAcross, kLxGradientSine);
    LxGradient_AddColor(rim, LxColor_RGBA(60, 140, 120, 255), 0, 0.0, 0.5);
    LxGradient_AddColor(rim, LxColor_RGBA(140, 60, 140, 255), 1, 1.0, 0.5);

    LxGC *gc = LxImage_GC(image);
    LxGC_SetRenderMode(gc, kLxRenderFill | kLxRenderStroke);
    LxGC_SetFillGradient(gc, dawn); /* goes before the fill colour */
    LxGC_SetStrokeGradient(gc, rim);
    LxGC_SetStrokeWidth(gc, 8);
    LxGC_SetStrokeStyle(gc, kLxStrokeMitre);
    LxGC_RoundFrame(gc, 20, 20, 220, 140, 24, 24);

    LxColor top, bottom;
    LxImage_PixelAt(image, 120, 30, &top);
    LxImage_PixelAt(image, 120, 130, &bottom);
    printf("the top is bluer: %d\n", top.content.rgba.b > top.content.rgba.r);
    printf("the bottom is brighter: %d\n", bottom.content.rgba.g > top.content.rgba.g);
    printPixel("outside", image, 5, 5);

    savePicture(image, "07-gradient.pam");
    LxImage_Delete(image);
    LxGradient_Delete(rim); /* gradients are not the context's */
    LxGradient_Delete(dawn);
    return 0;
}
