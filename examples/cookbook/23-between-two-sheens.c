/* The way from one sheen to another: its two descriptors are the ends, and any moment between them is a
 * picture. */
#include <oxlume/LxExtras.h>

#include "picture.h"

enum { Size = 100, Frames = 5 };

int main(void) {
    Oxlume_Init();
    LxSheen *sheen = LxSheen_Create(Size);
    LxSheen_SetLayerValue(sheen, 0, kLxSheenInnerSize0, 0.4);
    LxSheen_SetLayerColor(sheen, 0, LxRGBA(200, 60, 60, 255));
    LxSheen_SetCurrentDescriptor(sheen, 1); /* the same layer at the other end */
    LxSheen_SetLayerValue(sheen, 0, kLxSheenInnerSize0, 0.4);
    LxSheen_SetLayerValue(sheen, 0, kLxSheenRotation, 90);
    LxSheen_SetLayerValue(sheen, 0, kLxSheenCornerType, 1);
    LxSheen_SetLayerColor(sheen, 0, LxRGBA(200, 200, 60, 255));

    LxImage *strip = LxImage_Create(kLxPixelRGBA, 0, 0, Size * Frames, Size, 0, 0);
    LxImage_Fill(strip, LxColor_RGBA(36, 38, 44, 255));
    LxBlend blend = LxBlend(2, 255); /* SrcOver */
    for (int frame = 0; frame < Frames; ++frame) {
        const double t = frame / (Frames - 1.0);
        LxSheen *moment = LxSheen_CreateBetween(t, sheen, 0, sheen, 1);
        LxImage *picture = LxSheen_RenderDescriptor(moment, 0, 1);
        LxImage_MoveTo(picture, Size * frame, 0);
        LxBlend_Image_Image(&blend, strip, picture, NULL, NULL);
        printf("at %.2f turned by %g degrees\n", t, LxSheen_LayerValue(moment, 0, kLxSheenRotation));
        LxSheen_Delete(moment);
    }

    printPixel("the first", strip, 50, 50);
    printPixel("the last", strip, 450, 50);
    savePicture(strip, "23-between-two-sheens.pam");
    LxImage_Delete(strip);
    LxSheen_Delete(sheen);
    return 0;
}
