/* A frame that fills any size: a picture cut by marker pixels, its corners kept and its sides repeated. */
#include <oxlume/LxExtras.h>

#include "picture.h"

int main(void) {
    Oxlume_Init();
    /* Nine pieces of 8 by 8 pixels between marks; the middle column and row are smaller. */
    LxImage *frame = LxImage_Create(kLxPixelRGBA, 0, 0, 30, 30, 1, 0);
    const LxColor mark = LxColor_RGBA(0, 255, 255, 255);
    const int marks[] = {3, 12, 17, 26};
    for (int y = 4; y < 26; ++y)
        LxImage_SetSpan(frame, 4, 25, y, LxColor_RGBA(90, 60, 30, 255)); /* the rim */
    for (int y = 8; y < 22; ++y)
        LxImage_SetSpan(frame, 8, 21, y, LxColor_RGBA(245, 225, 180, 255)); /* the paper */
    LxImage_SetPixelAt(frame, 0, 0, mark);
    for (int i = 0; i < 4; ++i) {
        LxImage_SetPixelAt(frame, marks[i], 2, mark); /* columns, on the third row */
        LxImage_SetPixelAt(frame, 2, marks[i], mark); /* rows, on the third column */
    }
    LxImage_ReadSegmentMarks(frame);
    const LxRectL middle = LxImage_SegmentRectL(frame, 1, 1);
    printf("layout %d, the middle from %d to %d\n", LxImage_SegmentType(frame), middle.x0, middle.x1);

    LxImage *page = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage_Fill(page, LxColor_RGBA(200, 210, 220, 255));
    LxBlend blend = LxBlend(2, 255); /* SrcOver */
    const LxRectL wide = LxRectL(10, 10, 230, 90), small = LxRectL(20, 105, 80, 150);
    LxBlend_Image_Image(&blend, page, frame, NULL, &wide);
    LxBlend_Image_Image(&blend, page, frame, NULL, &small);

    printPixel("corner of the wide one", page, 10, 10);
    printPixel("inside of it", page, 120, 50);
    printPixel("its last pixel", page, 229, 89);
    printPixel("between the two", page, 120, 98);

    savePicture(page, "21-frame.pam");
    LxImage_Delete(page);
    LxImage_Delete(frame);
    return 0;
}
