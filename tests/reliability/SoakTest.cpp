// A long life: a million rounds of create, draw and delete in flat memory.

#include <cstdio>

#include <unistd.h>

#include <gtest/gtest.h>
#include <oxlume/oxlume.h>

namespace {

// Pages of memory that the process holds.
long residentPages() {
    long size = 0;
    long resident = 0;
    FILE *file = std::fopen("/proc/self/statm", "r");
    const int read = std::fscanf(file, "%ld %ld", &size, &resident);
    std::fclose(file);
    return read == 2 ? resident : 0;
}

// One round: an image of a size that goes through all storage classes, a context, a path, a fill, a blend.
void drawOnce(int32_t round) {
    const int32_t width = 8 + round % 57;
    LxImage *image = LxImage_Create(round % 2 == 0 ? kLxPixelRGBA : kLxPixelRGB, 0, 0, width, 8, 1, 0);
    LxGC *gc = LxImage_GC(image);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxPath *path = LxPath_Create();
    LxPath_AddLine(path, 0, 0, width, 4);
    LxPath_AddCircle(path, 4, 4, 3.5);
    LxGC_Path(gc, path);
    LxPath_Delete(path);
    LxImage_BlendColor(image, LxColor_RGBA(9, 8, 7, 255), LxBlend_Make(round % 44, 128));
    LxImage_Delete(image);
}

} // namespace

TEST(Soak, AMillionRoundsOfCreateDrawDeleteHoldNoMoreMemory) {
#ifdef OXLUME_SANITIZED
    GTEST_SKIP() << "sanitizers hold memory back themselves, and look for leaks themselves";
#endif
    constexpr int32_t rounds = 1'000'000;
    constexpr int32_t warming = 10'000;
    for (int32_t round = 0; round < warming; ++round)
        drawOnce(round);
    const long before = residentPages();
    for (int32_t round = warming; round < rounds; ++round)
        drawOnce(round);
    constexpr long tolerance = 64; // a page here and there is the system's; a leak of 1 byte a round is 240
    EXPECT_LE(residentPages(), before + tolerance);
}
