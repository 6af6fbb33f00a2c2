// A sheen laid on a chequerboard with its own shadow: the picture's alpha, blackened and moved aside.
#include <cstdio>
#include <memory>
#include <oxlume/oxlume.h>

#include "../c/ppm.h"

struct Deleter {
    void operator()(LxImage *image) const { LxImage_Delete(image); }
    void operator()(LxSheen *sheen) const { LxSheen_Delete(sheen); }
};
using Image = std::unique_ptr<LxImage, Deleter>;
using Sheen = std::unique_ptr<LxSheen, Deleter>;

int main() {
    constexpr int side = 160, margin = 40;
    constexpr int srcOver = 2; // as LxBlend_ModeName(2) says
    const Sheen sheen(LxSheen_Create(side));
    const Image picture(LxImage_Create(kLxPixelRGBA, 0, 0, side + 2 * margin, side + 2 * margin, 0, 0));
    if (sheen == nullptr || picture == nullptr)
        return 1;
    LxSheen_SetLayerColor(sheen.get(), 0, LxRGBA(70, 130, 220, 255));
    LxImage *button = LxSheen_RenderDescriptor(sheen.get(), 0, 1); // the sheen's own

    const Image shadow(LxImage_Copy(button));
    if (shadow == nullptr)
        return 1;
    LxImage_SetFlipped(shadow.get(), LxImage_isFlipped(button));
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            auto *pixel = static_cast<LxRGBA *>(LxImage_Pointer(shadow.get(), x, y));
            pixel->r = pixel->g = pixel->b = 0;
        }

    LxImage_GenerateChequerboard(picture.get(), 16, LxColor_RGBA(235, 235, 235, 255),
                                 LxColor_RGBA(210, 210, 210, 255));
    LxBlend blend = LxBlend(srcOver, 100);
    LxImage_MoveTo(shadow.get(), margin + 10, margin + 12);
    LxBlend_Image_Image(&blend, picture.get(), shadow.get(), nullptr, nullptr);
    LxBlend_SetOpacity(&blend, 255);
    LxImage_MoveTo(button, margin, margin);
    LxBlend_Image_Image(&blend, picture.get(), button, nullptr, nullptr);
    std::printf("%s at %d, %d\n", LxBlend_ModeName(srcOver), LxImage_x(button), LxImage_y(button));
    return writePpm(picture.get(), "button.ppm") ? 0 : 1;
}
