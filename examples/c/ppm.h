/* Writes an image of type kLxPixelRGB or kLxPixelRGBA as a PPM file, which most viewers show; transparency
 * comes out as black. Answers 0 if the file cannot be written. */
#ifndef EXAMPLES_PPM_H
#define EXAMPLES_PPM_H

#include <oxlume/LxImage.h>
#include <stdio.h>

static int writePpm(const LxImage *image, const char *name) {
    const int bytes = LxImage_BytesPerPixel(image);
    FILE *file = fopen(name, "wb");
    int x, y;
    if (file == NULL)
        return 0;
    fprintf(file, "P6 %d %d 255\n", LxImage_w(image), LxImage_h(image));
    for (y = 0; y < LxImage_h(image); ++y) {
        for (x = 0; x < LxImage_w(image); ++x) {
            const unsigned char *pixel = (const unsigned char *)LxImage_ConstPointer(image, x, y);
            const int alpha = bytes == 4 ? pixel[3] : 255;
            int i;
            for (i = 0; i < 3; ++i)
                fputc(pixel[i] * alpha / 255, file);
        }
    }
    return fclose(file) == 0;
}

#endif
