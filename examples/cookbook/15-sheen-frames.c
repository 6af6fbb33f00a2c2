/* An animation: a sheen rendered again and again while one of its numbers moves. */
#include "picture.h"

enum { Symmetry = 0, Width = 2, Height = 3, Swirl = 14, CornerType = 17, Size = 100, Frames = 5 };

int main(void) {
    Oxlume_Init();
    LxSheen *sheen = LxSheen_Create(Size);
    LxImage *strip = LxImage_Create(kLxPixelRGBA, 0, 0, Size * Frames, Size, 0, 0);
    LxImage_Fill(strip, LxColor_RGBA(36, 38, 44, 255));

    LxSheen_SetLayerValue(sheen, 0, Symmetry, 5);
    LxSheen_SetLayerValue(sheen, 0, Width, 0.4);
    LxSheen_SetLayerValue(sheen, 0, Height, 0.1);
    LxSheen_SetLayerColor(sheen, 0, LxRGBA(210, 90, 110, 255));
    LxBlend blend = LxBlend(2, 255); /* SrcOver */
    for (int frame = 0; frame < Frames; ++frame) {
        LxSheen_SetLayerValue(sheen, 0, Swirl, 2.5 * frame);
        LxImage *picture = LxSheen_RenderDescriptor(sheen, 0, 1);
        LxImage_MoveTo(picture, Size * frame, 0);
        LxBlend_Image_Image(&blend, strip, picture, NULL, NULL);
    }

    /* Whatever the swirl, the middle stays: it is the plateau. */
    printPixel("middle of the first frame", strip, 50, 50);
    printPixel("middle of the last frame", strip, 450, 50);
    printPixel("between two frames", strip, 200, 2);

    savePicture(strip, "15-sheen-frames.pam");
    LxImage_Delete(strip);
    LxSheen_Delete(sheen);
    return 0;
}
