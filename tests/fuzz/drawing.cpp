// Any bytes as a stranger's SVG file, played onto a small picture.

#include "tests/fuzz/MemoryFile.h"
#include "tools/Failure.h"
#include "tools/ImageHandle.h"
#include "tools/SvgDrawing.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static lx::fuzz::MemoryFile file;
    const lx::XmlTree tree(file.store(data, size).c_str());
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
