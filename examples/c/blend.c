/* Lays a half transparent red square over a blue picture, by each of three blend modes. */
#include <oxlume/oxlume.h>
#include <stdio.h>
#include <string.h>

#include "ppm.h"

/* Modes are numbers from 0 to 43. */
static int modeNamed(const char *name) {
    int mode = 0;
    while (mode < 43 && strcmp(LxBlend_ModeName(mode), name) != 0)
        ++mode;
    return mode;
}

int main(void) {
    const char *const modes[] = {"SrcOver", "Multiply", "Difference"};
    LxImage *picture = LxImage_Create(kLxPixelRGBA, 0, 0, 320, 120, 0, 0);
    LxImage *square = LxImage_Create(kLxPixelRGBA, 0, 0, 80, 80, 0, 0);
    int i;
    int written;
    if (picture == NULL || square == NULL)
        return 1;
    LxImage_Fill(picture, LxColor_RGBA(40, 80, 255, 255));
    LxImage_Fill(square, LxColor_RGBA(255, 0, 0, 255));
    for (i = 0; i < 3; ++i) {
        LxBlend blend = LxBlend(modeNamed(modes[i]), 128);
        LxImage_MoveTo(square, 20 + 100 * i, 20);
        LxBlend_Image_Image(&blend, picture, square, NULL, NULL);
        printf("%s is mode %d\n", modes[i], LxBlend_Mode(&blend));
    }
    written = writePpm(picture, "blend.ppm");
    LxImage_Delete(square);
    LxImage_Delete(picture);
    return written ? 0 : 1;
}
