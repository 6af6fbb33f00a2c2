// Draws into memory that belongs to the program, such as a window's or a camera's.
#include <cstdint>
#include <cstdio>
#include <vector>

#include "picture.h"

int main() {
    Oxlume_Init();
    const int width = 240, height = 160, rowBytes = width * 4 + 64; // rows may have room at their ends
    std::vector<std::uint8_t> memory(static_cast<std::size_t>(rowBytes) * height, 0x40);

    // Nothing is copied: the image sees these bytes, and they must outlive it.
    LxImage *image = LxImage_CreateEx(kLxPixelRGBA, 0, 0, width, height, memory.data(), rowBytes, 0, 0, 0);

    LxGC *gc = LxImage_GC(image);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(255, 200, 0, 255));
    LxGC_Frame(gc, 40, 40, 200, 120);

    const std::uint8_t *pixel = &memory[static_cast<std::size_t>(rowBytes) * 80 + 4 * 100];
    std::printf("byte by byte: %d %d %d %d\n", pixel[0], pixel[1], pixel[2], pixel[3]);

    // And the other way round.
    memory[0] = 1;
    memory[1] = 2;
    memory[2] = 3;
    memory[3] = 4;
    printPixel("the first pixel", image, 0, 0);
    std::printf("behind the first row: %d\n", memory[width * 4]);

    savePicture(image, "17-own-pixels.pam");
    LxImage_Delete(image); // leaves the memory alone
}
