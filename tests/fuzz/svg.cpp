// Any bytes as an SVG text, drawn on a small picture by the library's own reader.

#include <string_view>

#include <oxlume/LxGC.h>

#include "svg/SvgReader.h"
#include "tests/fuzz/FarOut.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (lx::fuzz::isTooFarOut(data, size))
        return 0;
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 32, 32, 1, 0);
    LxSVGPaintFlags = 0;
    lx::playSvg(LxImage_GC(image),
                lx::XmlTree::ofText(std::string_view(reinterpret_cast<const char *>(data), size)));
    LxImage_Delete(image);
    return 0;
}
