// Any bytes as a draw script on a small picture. It opens no files: an image's name says what it is.

#include <cstring>
#include <string_view>

#include "image/Image.h"
#include "tests/fuzz/FarOut.h"
#include "tools/DrawScript.h"
#include "tools/Failure.h"

namespace {

tool::ImageHandle makeImage(const std::string &name) {
    const bool isMask = name.starts_with('m');
    tool::ImageHandle image(LxImage_Create(isMask ? kLxPixelA : kLxPixelRGBA, 0, 0, 6, 5, 1, 0));
    for (int32_t y = 0; y < 5; ++y)
        std::memset(lx::rowAddress(*image, y), 40 * y + 60, isMask ? 6 : 24);
    return image;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (lx::fuzz::isTooFarOut(data, size))
        return 0;
    tool::Drawing drawing(makeImage);
    try {
        tool::drawScript({reinterpret_cast<const char *>(data), size}, "script", drawing,
                         {.bytes = 4096, .side = 32});
    } catch (const tool::Failure &) {
    }
    return 0;
}
