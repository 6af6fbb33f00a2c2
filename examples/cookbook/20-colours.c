/* A ramp of colours: hue, saturation and lightness, and the way between two colours. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *image = LxImage_Create(kLxPixelRGB, 0, 0, 360, 150, 0, 0);
    for (int x = 0; x < 360; ++x)
        for (int y = 0; y < 100; ++y) /* the lightness falls from 255 to 0 */
            LxImage_SetPixelAt(image, x, y, LxColor_RGB_t(LxRGB_fromHSV(x, 255, 255 - y * 255 / 99)));

    const LxRGB red = LxRGB(255, 0, 0), blue = LxRGB(0, 0, 255);
    for (int x = 0; x < 360; ++x) {
        const LxColor straight = LxColor_RGB_t(LxRGB_Lerp(x / 359.0, red, blue));
        const LxColor byHue = LxColor_RGB_t(LxRGB_LerpHSV(x / 359.0, red, blue));
        for (int y = 100; y < 150; ++y)
            LxImage_SetPixelAt(image, x, y, y < 125 ? straight : byHue);
    }

    const LxHSV hue = LxHSV_fromRGB(blue);
    printf("blue has hue %d, saturation %d, lightness %d\n", hue.hue, hue.saturation, hue.value);
    const LxRGB between = LxRGB_Lerp(0.5, red, blue);
    printf("half way from red to blue: %d %d %d\n", between.r, between.g, between.b);
    const LxRGB around = LxRGB_LerpHSV(0.5, red, blue);
    printf("half way by hue: %d %d %d\n", around.r, around.g, around.b);
    printPixel("full lightness", image, 200, 0);
    printPixel("no lightness", image, 200, 99);

    savePicture(image, "20-colours.pam");
    LxImage_Delete(image);
    return 0;
}
