/* Draws through a Quartz context, which smooths by itself and knows text, into pixels of the program. */
#include <oxlume/LxQuartz.h>

#include "picture.h"

int main(void) {
    Oxlume_Init();
    /* A Quartz context wants colours that are multiplied by alpha. */
    LxImage *image = LxImage_Create(kLxPixelRGBAPremultiplied, 0, 0, 240, 160, 1, 0);
    CGContextRef quartz =
        LxQuartz_CreateWithPixels(LxImage_Data(image), 240, 160, LxImage_BytesPerRow(image));
    if (quartz == NULL)
        return 1;

    /* The same calls as on an image. */
    LxGC *gc = LxGC_CreateWithCGContextRef(quartz, LxRectD(0, 0, 240, 160));
    LxGC_Fill(gc, LxColor_RGBA(250, 250, 255, 255));
    LxGC_SetRenderMode(gc, kLxRenderFill | kLxRenderStroke);
    LxGC_SetFillColor(gc, LxColor_RGBA(90, 60, 160, 255));
    LxGC_SetStrokeColor(gc, LxColor_RGBA(40, 20, 80, 255));
    LxGC_SetStrokeWidth(gc, 4);
    LxGC_RoundFrame(gc, 40, 30, 200, 130, 30, 30);

    /* And Quartz' own. */
    CGContextSetRGBFillColor(quartz, 1, 0.8f, 0.2f, 1);
    const LxCGRect bar = {60, 70, 120, 20};
    CGContextFillRect(quartz, bar);
    CGContextFlush(quartz); /* the pixels are up to date from here on */

    printPixel("ground", image, 5, 5);
    printPixel("in the frame", image, 120, 50);
    printPixel("in the bar", image, 120, 80);

    savePicture(image, "19-quartz.pam");
    LxGC_Delete(gc);
    CGContextRelease(quartz);
    LxImage_Delete(image);
    return 0;
}
