// Any bytes as a stranger's SVG text, played onto a small picture.

#include <string_view>

#include "tools/Failure.h"
#include "tools/ImageHandle.h"
#include "tools/SvgDrawing.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const auto tree = lx::XmlTree::ofText(std::string_view(reinterpret_cast<const char *>(data), size));
    if (!tree.root())
        return 0;
    const tool::ImageHandle image(LxImage_Create(kLxPixelRGBA, 0, 0, 32, 32, 1, 0));
    try {
        tool::drawingSize(tree.root(), 2048, "drawing");
        tool::drawSvg(*image, tree.root(), "drawing",
                      {.elements = 200, .shapes = 50, .points = 2000, .work = 1e5});
    } catch (const tool::Failure &) {
    }
    return 0;
}
