/* A client of a library without Quartz, OpenGL and Cocoa: images are drawn on as ever, and what would stand
 * on those answers null. */

#include <oxlume/oxlume.h>

#include <stdio.h>

static int failures = 0;

static void expect(int holds, const char *what) {
    if (!holds) {
        printf("does not hold: %s\n", what);
        ++failures;
    }
}

#define EXPECT(condition) expect((condition) != 0, #condition)

static int greenAt(const LxImage *image, int32_t x, int32_t y) {
    return ((const uint8_t *)LxImage_ConstPointer(image, x, y))[1];
}

int main(void) {
    Oxlume_Init();
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 64, 48, 1, 0);
    EXPECT(image);
    LxGC *gc = LxImage_GC(image);
    EXPECT(gc);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(10, 200, 30, 255));
    LxGC_Circle(gc, 32, 24, 16);
    EXPECT(greenAt(image, 32, 24) == 200);
    EXPECT(greenAt(image, 2, 2) == 0);

    const LxRectD rect = {0, 0, 64, 48};
    int target = 0;
    EXPECT(LxGC_CreateWithCGContextRef(&target, rect) == NULL);
    EXPECT(LxGC_CreateWithOpenGLContext(&target, rect) == NULL);
    EXPECT(LxGC_CreateWithNSView(&target) == NULL);
    EXPECT(LxGC_CreateWithNSOpenGLView(&target) == NULL);
    EXPECT(LxImage_NativeCGImage(kLxPixelRGBA, 0, 0, 8, 8, 0, 1, 0) == NULL);
    EXPECT(LxImage_CreateCGImageRef(image, 0) == NULL);
    EXPECT(LxImage_isNative(image) == 0);
    for (int32_t kind = kLxRendererOpenGL; kind <= kLxRendererQuartz; ++kind)
        EXPECT(LxGC_AddRenderer(gc, kind, &target, NULL) == 0);

    LxImage_Delete(image);
    Oxlume_Term();
    return failures != 0;
}
