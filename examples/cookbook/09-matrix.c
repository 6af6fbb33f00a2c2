/* Turns, scales and moves what is drawn, by the context's matrix. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 240, 0, 0);
    LxImage_Fill(image, LxColor_RGBA(18, 24, 38, 255));
    LxGC *gc = LxImage_GC(image);
    LxGC_SetRenderMode(gc, kLxRenderFill);

    /* Each call acts on top of those before it, so the move into the middle comes last. */
    for (int i = 0; i < 12; ++i) {
        LxGC_MatrixIdentity(gc);
        LxGC_MatrixRotateDeg(gc, 30.0 * i);
        LxGC_MatrixTranslate(gc, 120, 120);
        LxGC_SetFillColor(gc, LxColor_RGBA((uint8_t)(120 + 11 * i), (uint8_t)(220 - 12 * i), 160, 255));
        LxGC_RoundFrame(gc, 40, -8, 110, 8, 8, 8);
    }

    /* Where does the matrix take a point? A quarter turn, twice the size, and a move. */
    double x = 10, y = 0;
    LxGC_MatrixIdentity(gc);
    LxGC_MatrixRotateDeg(gc, 90);
    LxGC_MatrixScale(gc, 2, 2);
    LxGC_MatrixTranslate(gc, 100, 50);
    LxGC_TransposeD(gc, &x, &y);
    printf("(10, 0) goes to (%.3f, %.3f)\n", x, y);

    printPixel("to the right", image, 190, 120);
    printPixel("in the middle", image, 120, 120);

    savePicture(image, "09-matrix.pam");
    LxImage_Delete(image);
    return 0;
}
