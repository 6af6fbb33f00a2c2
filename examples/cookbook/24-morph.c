/* Warps a picture by two pairs of lines: one moves, the other holds its place. */
#include <oxlume/LxExtras.h>

#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *before = LxImage_Create(kLxPixelRGBA, 0, 0, 160, 160, 0, 0);
    LxImage *after = LxImage_Create(kLxPixelRGBA, 0, 0, 160, 160, 0, 0);
    LxImage_GenerateChequerboard(before, 16, LxColor_RGBA(60, 90, 140, 255),
                                 LxColor_RGBA(240, 235, 220, 255));

    /* What lies along the first line of a pair comes to lie along the second. */
    const LxMorphLine from[] = {LxMorphLine(80, 40, 80, 120), LxMorphLine(0, 0, 0, 159),
                                LxMorphLine(159, 0, 159, 159)};
    const LxMorphLine to[] = {LxMorphLine(110, 40, 80, 120), LxMorphLine(0, 0, 0, 159),
                              LxMorphLine(159, 0, 159, 159)};
    printf("morphed: %d\n", LxMorph_Frame(before, after, from, to, 3, 1.0));
    printPixel("at the left edge, before", before, 0, 100);
    printPixel("and after", after, 0, 100);
    printf("the middle moved: %d\n", *(const uint32_t *)LxImage_ConstPointer(before, 110, 42) !=
                                         *(const uint32_t *)LxImage_ConstPointer(after, 110, 42));

    /* At 0 of the way nothing has moved. */
    LxMorph_Frame(before, after, from, to, 3, 0.0);
    int same = 0;
    for (int y = 0; y < 160; ++y)
        for (int x = 0; x < 160; ++x)
            same += *(const uint32_t *)LxImage_ConstPointer(before, x, y) ==
                    *(const uint32_t *)LxImage_ConstPointer(after, x, y);
    printf("pixels that are the same at the start: %d of %d\n", same, 160 * 160);

    LxMorph_Frame(before, after, from, to, 3, 1.0);
    savePicture(after, "24-morph.pam");
    LxImage_Delete(after);
    LxImage_Delete(before);
    return 0;
}
