// Any bytes as an SVG file, drawn on a small picture by the library's own reader.

#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include <oxlume/LxGC.h>

#include "svg/SvgReader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const int file = memfd_create("drawing", 0);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
        return 0;
    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 64, 64, 1, 0);
    LxSVGPaintFlags = 0;
    LxSVG_Read(LxImage_GC(image), ("/proc/self/fd/" + std::to_string(file)).c_str());
    LxImage_Delete(image);
    return 0;
}
