/* Draws SVG from a text, by the library's own small reader, in which y grows upwards. */
#include <string.h>

#include <oxlume/LxExtras.h>

#include "picture.h"

int main(void) {
    Oxlume_Init();
    const char *text = "<svg width='200' height='200'>"
                       "<path fill='#2a6f97' d='M 20 20 L 180 20 L 180 100 L 20 100 Z'/>"
                       "<path fill='#f4a259' d='M 60 100 L 140 100 L 100 180 Z'/>"
                       "</svg>";

    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 200, 200, 0, 0);
    LxImage_Fill(image, LxColor_RGBA_White);
    LxSVG_SetPaintFlags(0); /* nothing is left over from a drawing before */
    printf("read: %d\n", LxSVG_ReadText(LxImage_GC(image), text, strlen(text)));
    printf("a text that is no XML: %d\n", LxSVG_ReadText(LxImage_GC(image), "<svg", 4));

    printPixel("low in the picture", image, 100, 150);
    printPixel("high in the picture", image, 100, 60);
    printPixel("at its edge", image, 5, 5);

    savePicture(image, "22-svg.pam");
    LxImage_Delete(image);
    return 0;
}
