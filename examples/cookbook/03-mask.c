/* Lays a picture over another through a mask: an image of one-byte pixels, 0 where nothing is drawn. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *ground = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage *stripes = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage *mask = LxImage_Create(kLxPixelA, 0, 0, 240, 160, 1, 0);

    LxImage_Fill(ground, LxColor_RGBA(20, 40, 80, 255));
    for (int y = 0; y < 160; ++y)
        LxImage_SetSpan(stripes, 0, 239, y,
                        y / 10 % 2 ? LxColor_RGBA(250, 180, 40, 255) : LxColor_RGBA(220, 80, 40, 255));

    /* A mask is drawn like any picture: of a colour its first byte counts. */
    LxGC *gc = LxImage_GC(mask);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA_White);
    LxGC_Circle(gc, 120, 80, 60);

    LxBlend blend = LxBlend(2, 255); /* SrcOver */
    LxBlend_Image_Image(&blend, ground, stripes, mask, NULL);

    printPixel("outside the circle", ground, 20, 80);
    printPixel("in the circle", ground, 120, 85);
    printPixel("in the next stripe", ground, 120, 95);

    savePicture(ground, "03-mask.pam");
    LxImage_Delete(mask);
    LxImage_Delete(stripes);
    LxImage_Delete(ground);
    return 0;
}
