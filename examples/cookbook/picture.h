/* What the programs of the cookbook share: saving a picture, and telling a pixel. */
#ifndef COOKBOOK_PICTURE_H
#define COOKBOOK_PICTURE_H

#include <stdio.h>

#include <oxlume/oxlume.h>

/* Writes an image of bytes as a PAM file, which most viewers read. */
static inline int savePicture(LxImage *image, const char *name) {
    const int depth = LxImage_BytesPerPixel(image);
    FILE *file = fopen(name, "wb");
    if (file == NULL)
        return 0;
    fprintf(file, "P7\nWIDTH %d\nHEIGHT %d\nDEPTH %d\nMAXVAL 255\nTUPLTYPE %s\nENDHDR\n", LxImage_w(image),
            LxImage_h(image), depth,
            depth == 1   ? "GRAYSCALE"
            : depth == 3 ? "RGB"
                         : "RGB_ALPHA");
    for (int y = 0; y < LxImage_h(image); ++y)
        fwrite(LxImage_ConstPointer(image, 0, y), (size_t)depth, (size_t)LxImage_w(image), file);
    return fclose(file) == 0;
}

/* Prints the colour of a pixel: red, green, blue, alpha. */
static inline void printPixel(const char *what, const LxImage *image, int x, int y) {
    LxColor color = LxColor_RGBA(0, 0, 0, 0);
    LxImage_PixelAt(image, x, y, &color);
    printf("%s: %d %d %d %d\n", what, color.content.rgba.r, color.content.rgba.g, color.content.rgba.b,
           color.content.rgba.a);
}

#endif
