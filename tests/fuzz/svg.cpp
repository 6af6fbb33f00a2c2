// Any bytes as an SVG file, drawn on a small picture by the library's own reader.

#include <oxlume/LxGC.h>

#include "svg/SvgReader.h"
#include "tests/fuzz/FarOut.h"
#include "tests/fuzz/MemoryFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (lx::fuzz::isTooFarOut(data, size))
        return 0;
    static lx::fuzz::MemoryFile file;
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 32, 32, 1, 0);
    LxSVGPaintFlags = 0;
    LxSVG_Read(LxImage_GC(image), file.store(data, size).c_str());
    LxImage_Delete(image);
    return 0;
}
