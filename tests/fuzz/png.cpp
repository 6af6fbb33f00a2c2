// Any bytes as a PNG file: read as an image, or refused with a Failure.

#include <cstdio>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "tools/Failure.h"
#include "tools/PngFile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const int file = memfd_create("picture", 0);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
        return 0;
    try {
        tool::readPng("/proc/self/fd/" + std::to_string(file));
    } catch (const tool::Failure &) {
    }
    return 0;
}
