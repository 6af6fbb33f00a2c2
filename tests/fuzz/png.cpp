// Any bytes as a PNG file: read as an image, or refused with a Failure.

#include "tests/fuzz/MemoryFile.h"
#include "tools/Failure.h"
#include "tools/PngFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // Large pictures take time and tell nothing: the sides stand at the beginning, highest byte first.
    constexpr size_t sidesAt = 16, sidesEnd = 24;
    for (size_t i = sidesAt; i < sidesEnd && i < size; ++i)
        if (i % 4 != 3 && data[i] != 0)
            return 0;
    static lx::fuzz::MemoryFile file;
    try {
        tool::readPng(file.store(data, size));
    } catch (const tool::Failure &) {
    }
    return 0;
}
