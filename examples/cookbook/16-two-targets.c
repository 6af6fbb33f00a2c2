/* One context that draws on two images at once: a picture, and a copy on black. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *picture = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage *copy = LxImage_Create(kLxPixelRGB, 0, 0, 240, 160, 0, 0);
    LxImage_Fill(picture, LxColor_RGBA(245, 240, 225, 255));
    LxImage_Fill(copy, LxColor_RGB(0, 0, 0));

    LxGC *gc = LxGC_Create(); /* no renderer yet: it would draw nowhere */
    LxGC_SetBoundsRectD(gc, 0, 0, 240, 160);
    LxGC_SetClipRectD(gc, 0, 0, 240, 160);
    printf("attached: %d", LxGC_AddRenderer(gc, kLxRendererSoftware, picture, NULL));
    printf(", %d", LxGC_AddRenderer(gc, kLxRendererSoftware, copy, NULL));
    printf(", and a third: %d\n", LxGC_AddRenderer(gc, kLxRendererSoftware, copy, NULL));

    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(60, 130, 80, 255));
    LxGC_Ellipse(gc, 80, 80, 60, 40);
    LxGC_SetFillColor(gc, LxColor_RGBA(200, 90, 50, 255));
    LxGC_Ellipse(gc, 160, 80, 60, 40);

    printPixel("in the picture", picture, 60, 80);
    printPixel("in the copy", copy, 60, 80);
    printPixel("ground of the picture", picture, 5, 5);
    printPixel("ground of the copy", copy, 5, 5);

    savePicture(picture, "16-two-targets.pam");
    LxGC_Delete(gc); /* before what it draws on */
    LxImage_Delete(copy);
    LxImage_Delete(picture);
    return 0;
}
