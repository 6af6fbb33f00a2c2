#include <oxlume/oxlume.h>
#include <stdio.h>

int main(void) {
    LxImage *image = LxImage_Create(kLxPixelRGB, 0, 0, 320, 200, 1, 0);
    LxGC *gc = LxImage_GC(image);
    LxPath *path = LxPath_Create();
    LxPath_AddCircle(path, 160, 100, 80);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(255, 128, 0, 255));
    LxGC_Path(gc, path);

    FILE *file = fopen("circle.ppm", "wb");
    fprintf(file, "P6 320 200 255\n");
    fwrite(LxImage_ConstData(image), 3, 320 * 200, file);
    fclose(file);
    LxPath_Delete(path);
    LxImage_Delete(image);
    return 0;
}
