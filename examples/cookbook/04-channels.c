/* Writes one channel at a time: white squares that reach only the red, the green or the blue of the ground.
 */
#include "picture.h"

enum { SrcOver = 2, Red = 1, Green = 2, Blue = 3 };

int main(void) {
    Oxlume_Init();
    LxImage *ground = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage *square = LxImage_Create(kLxPixelRGBA, 0, 0, 100, 100, 0, 0);
    LxImage_Fill(ground, LxColor_RGBA_Black);
    LxImage_Fill(square, LxColor_RGBA_White);

    const LxPointL places[] = {{30, 10}, {110, 10}, {70, 50}};
    for (int channel = Red; channel <= Blue; ++channel) {
        LxBlend blend = LxBlend_WithChannel(SrcOver, 255, channel);
        LxImage_MoveTo(square, places[channel - 1].x, places[channel - 1].y);
        LxBlend_Image_Image(&blend, ground, square, NULL, NULL);
        printf("%s at %d, %d\n", LxBlend_ChannelName(channel), LxImage_x(square), LxImage_y(square));
    }

    printPixel("red alone", ground, 40, 20);
    printPixel("red and green", ground, 120, 20);
    printPixel("all three", ground, 120, 80);
    printPixel("none", ground, 5, 5);

    savePicture(ground, "04-channels.pam");
    LxImage_Delete(square);
    LxImage_Delete(ground);
    return 0;
}
