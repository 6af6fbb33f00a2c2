// Blends on four threads, an image each. Images are made and deleted on one thread.
#include <array>
#include <thread>

#include "picture.h"

int main() {
    Oxlume_Init(); // before the first thread

    std::array<LxImage *, 4> quarters;
    for (int i = 0; i < 4; ++i) {
        const int x = i % 2 * 120, y = i / 2 * 80;
        quarters[i] = LxImage_Create(kLxPixelRGBA, x, y, x + 120, y + 80, 1, 0);
    }

    std::array<std::thread, 4> threads;
    for (int i = 0; i < 4; ++i)
        threads[i] = std::thread([image = quarters[i], i] {
            LxImage_Fill(image, LxColor_RGBA(250, 250, 250, 255));
            // Multiply of 250 and b is 250 * b / 256, of the same pixel once for every thread's number.
            const LxBlend blend = LxBlend(8, 255);
            for (int round = 0; round <= i; ++round)
                LxImage_BlendColor(image, LxColor_RGBA(128, 192, 224, 255), blend);
        });
    for (std::thread &thread : threads)
        thread.join();

    LxImage *whole = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxBlend blend = LxBlend(2, 255); // SrcOver
    for (LxImage *image : quarters) {
        LxBlend_Image_Image(&blend, whole, image, nullptr, nullptr);
        LxImage_Delete(image);
    }
    printPixel("first", whole, 10, 10);
    printPixel("second", whole, 130, 10);
    printPixel("third", whole, 10, 90);
    printPixel("fourth", whole, 130, 90);
    savePicture(whole, "18-threads.pam");
    LxImage_Delete(whole);
}
