/* Lays one picture over another, half transparent. */
#include "picture.h"

enum { SrcOver = 2 }; /* the mode's number; LxBlend_ModeName names all 44 */

int main(void) {
    Oxlume_Init();
    LxImage *ground = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage *card = LxImage_Create(kLxPixelRGBA, 0, 0, 120, 80, 0, 0);
    LxImage_GenerateChequerboard(ground, 16, LxColor_RGBA(240, 240, 240, 255),
                                 LxColor_RGBA(255, 255, 255, 255));
    LxImage_Fill(card, LxColor_RGBA(200, 30, 60, 255));

    /* Images meet where they lie: this puts the card's corner at (60, 40) of the ground. */
    LxImage_MoveTo(card, 60, 40);

    LxBlend blend = LxBlend(SrcOver, 128); /* opacity 128 of 255 */
    printf("%s at %d\n", LxBlend_ModeName(LxBlend_Mode(&blend)), LxBlend_Opacity(&blend));
    LxBlend_Image_Image(&blend, ground, card, NULL, NULL);

    printPixel("beside the card", ground, 10, 10);
    printPixel("on the card", ground, 72, 72);

    savePicture(ground, "02-blend-two.pam");
    LxImage_Delete(card);
    LxImage_Delete(ground);
    return 0;
}
