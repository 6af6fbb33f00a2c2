#include "image/Image.h"

#include <cstring>
#include <limits>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <oxlume/LxLibrary.h>
#include <oxlume/LxMem.h>

#include "foundation/Memory.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"

#ifdef OXLUME_SANITIZED
#include <sanitizer/lsan_interface.h>
#endif

using namespace lx;
using namespace lx::test;

namespace {

constexpr int32_t highest = std::numeric_limits<int32_t>::max();
constexpr int32_t lowest = std::numeric_limits<int32_t>::min();

Storage storageOf(const ImageHandle &image) {
    return static_cast<Storage>(image->storage);
}

// Allocations that succeed before all others fail.
int allocationsLeft = 0;

bool failsNow() {
    return allocationsLeft-- <= 0;
}

constexpr SystemAllocator scarce = {
    [](size_t size) { return failsNow() ? nullptr : std::malloc(size); },
    [](size_t count, size_t size) { return failsNow() ? nullptr : std::calloc(count, size); },
    [](void *pointer, size_t size) { return failsNow() ? nullptr : std::realloc(pointer, size); },
};

// An image over caller memory whose bad rectangle leaves a record behind, on purpose.
LxImage *createExLeaving(int32_t x, int32_t y, int32_t maxX, int32_t maxY, void *data, int32_t rowBytes) {
#ifdef OXLUME_SANITIZED
    const __lsan::ScopedDisabler leaksOnPurpose;
#endif
    return LxImage_CreateEx(kLxPixelRGBA, x, y, maxX, maxY, data, rowBytes, 0, 0, 0);
}

} // namespace

TEST(ImageCreate, StorageClassGoesByTheBytes) {
    struct Case {
        int32_t type, width, height, rowBytes;
        Storage storage;
        int32_t memSize;
    };
    // One-byte images of one row take 4 bytes a row at least, so sizes step by 4.
    const Case cases[] = {
        {kLxPixelRGBA, 2, 2, 8, Storage::inlined, 16},
        {kLxPixelRGBA, 3, 2, 12, Storage::pool2K, 2048},
        {kLxPixelA, 1, 1, 4, Storage::inlined, 16},
        {kLxPixelRGB, 5, 1, 16, Storage::inlined, 16},
        {kLxPixelRGB, 1, 1, 4, Storage::inlined, 16},
        {kLxPixelF, 4, 1, 16, Storage::inlined, 16},
        {kLxPixelL, 5, 1, 20, Storage::pool2K, 2048},
        {kLxPixelA, 17, 1, 20, Storage::pool2K, 2048},
        {kLxPixelA, 2048, 1, 2048, Storage::pool2K, 2048},
        {kLxPixelA, 2049, 1, 2052, Storage::pool4K, 4096},
        {kLxPixelA, 4096, 1, 4096, Storage::pool4K, 4096},
        {kLxPixelA, 4097, 1, 4100, Storage::pool16K, 0},
        {kLxPixelA, 16384, 1, 16384, Storage::pool16K, 0},
        {kLxPixelA, 16385, 1, 16388, Storage::pool64K, 65536},
        {kLxPixelA, 65536, 1, 65536, Storage::pool64K, 65536},
        {kLxPixelA, 65537, 1, 65540, Storage::heap, 65540},
        {kLxPixelRGBA, 64, 64, 256, Storage::pool16K, 0},
        {kLxPixelRGB, 256, 256, 768, Storage::heap, 768 * 256},
    };
    for (const Case &c : cases) {
        const ImageHandle image = makeImage(c.type, c.width, c.height);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(LxImage_BytesPerRow(image.get()), c.rowBytes) << c.width;
        EXPECT_EQ(storageOf(image), c.storage) << c.width;
        EXPECT_EQ(LxImage_MemSize(image.get()), c.memSize) << c.width;
        EXPECT_EQ(LxImage_DataSize(image.get()), c.rowBytes * c.height);
    }
}

TEST(ImageCreate, EmptyRectanglesGiveNullAndAllocateNothing) {
    const int32_t before = allocationCount();
    const LxRectL rects[] = {{0, 0, 0, 5},           {0, 0, 5, 0}, {3, 0, 2, 5},
                             {0, 3, 5, 2},           {5, 5, 5, 5}, {highest, 0, lowest, 5},
                             {0, highest, 5, lowest}};
    for (const LxRectL &r : rects)
        EXPECT_EQ(LxImage_Create(kLxPixelA, r.x0, r.y0, r.x1, r.y1, 1, 0), nullptr);
    EXPECT_EQ(allocationCount(), before);
}

TEST(ImageCreate, SizesBeyond32BitsGiveNull) {
    struct Case {
        int32_t type;
        LxRectL rect;
    };
    const Case cases[] = {
        {kLxPixelA, {0, 0, highest, 1}},          // 2^31 - 1 rounds up to 2^31
        {kLxPixelA, {lowest, 0, highest, 1}},     // the width alone is 2^32 - 1
        {kLxPixelA, {0, lowest, 1, highest}},     // the height alone is 2^32 - 1
        {kLxPixelRGBA, {0, 0, 1 << 29, 1}},       // rows of 2^31
        {kLxPixelRGBA, {0, 0, 1 << 15, 1 << 14}}, // 2^31 in all
        {kLxPixelRGB, {0, 0, 715827883, 1}},      // rows of 2^31 + 1
        {kLxPixelRGBA, {0, 0, 1 << 30, 1 << 30}}, // 2^62
        {kLxPixelRGBA, {lowest, lowest, highest, highest}},
    };
    const int32_t before = allocationCount();
    for (const Case &c : cases)
        EXPECT_EQ(LxImage_Create(c.type, c.rect.x0, c.rect.y0, c.rect.x1, c.rect.y1, 0, 0), nullptr);
    EXPECT_EQ(allocationCount(), before);
}

TEST(ImageCreate, TakesAnyPositionWhoseSizeFits) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, lowest, highest - 3, lowest + 4, highest, 0, 0));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_w(image.get()), 4);
    EXPECT_EQ(LxImage_h(image.get()), 3);
}

TEST(ImageCreate, TheWholeTypeArgumentDecidesTheStrideAndThreeBitsAreStored) {
    for (const int32_t type : {6, 7, 8, 9, -1, 257}) {
        const ImageHandle image(LxImage_Create(type, 0, 0, 10, 10, 1, 0));
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(LxImage_BytesPerRow(image.get()), 40) << type;
        EXPECT_EQ(LxImage_Type(image.get()), type & 7) << type;
    }
}

TEST(ImageCreate, MarksItEmptyWhetherOrNotCleared) {
    for (const int32_t clear : {0, 1}) {
        const ImageHandle image(LxImage_Create(kLxPixelRGBA, 0, 0, 4, 4, clear, 0));
        EXPECT_EQ(LxImage_isEmpty(image.get()), 1);
    }
}

TEST(ImageCreate, FlippedIsTheLowestBitOfItsArgument) {
    for (const int32_t flipped : {0, 1, 2, 3, -1, -2}) {
        const ImageHandle image(LxImage_Create(kLxPixelRGBA, 0, 0, 4, 4, 0, flipped));
        EXPECT_EQ(LxImage_isFlipped(image.get()), flipped & 1) << flipped;
    }
}

TEST(ImageCreate, ClearsPixelsOfEveryStorageClass) {
    for (const int32_t size : {2, 20, 30, 60, 120, 200}) {
        LxImage *dirty = LxImage_Create(kLxPixelRGBA, 0, 0, size, size, 0, 0);
        std::memset(LxImage_Data(dirty), 0xCD, static_cast<size_t>(LxImage_DataSize(dirty)));
        LxImage_Delete(dirty);
        const ImageHandle image = makeImage(kLxPixelRGBA, size, size);
        const auto *pixels = static_cast<const uint8_t *>(LxImage_ConstData(image.get()));
        for (int32_t i = 0; i < LxImage_DataSize(image.get()); ++i)
            ASSERT_EQ(pixels[i], 0) << size << " at " << i;
    }
}

TEST(ImageCreate, GivesNullAndLeaksNothingWhereverMemoryEnds) {
    for (const int32_t size : {2, 20, 30, 60, 120, 200}) {
        for (const int32_t clear : {0, 1}) {
            Oxlume_Init();
            Oxlume_Term();                        // empties the pools
            const int needed = size == 2 ? 2 : 3; // record, mutex, and pixels unless they are inside
            for (int given = 0; given <= needed; ++given) {
                const int32_t before = allocationCount();
                setSystemAllocator(&scarce);
                allocationsLeft = given;
                LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, size, size, clear, 0);
                setSystemAllocator(nullptr);
                EXPECT_EQ(image != nullptr, given == needed) << size << " with " << given;
                if (image == nullptr) {
                    EXPECT_EQ(allocationCount(), before) << size << " with " << given;
                }
                LxImage_Delete(image);
            }
        }
    }
}

TEST(ImageCreate, CountsImagesAndBytesByClassForGood) {
    const ImageStatistics inlined = imageStatistics(Storage::inlined);
    const ImageStatistics pool16K = imageStatistics(Storage::pool16K);
    const ImageStatistics heap = imageStatistics(Storage::heap);
    LxImage_Delete(LxImage_Create(kLxPixelRGBA, 0, 0, 1, 1, 0, 0));
    LxImage_Delete(LxImage_Create(kLxPixelRGBA, 0, 0, 64, 64, 0, 0));
    LxImage_Delete(LxImage_Create(kLxPixelRGBA, 0, 0, 200, 200, 0, 0));
    EXPECT_EQ(LxImage_Create(kLxPixelRGBA, 0, 0, 0, 0, 0, 0), nullptr);
    EXPECT_EQ(imageStatistics(Storage::inlined).images, inlined.images + 1);
    EXPECT_EQ(imageStatistics(Storage::inlined).bytes, inlined.bytes + 16);
    EXPECT_EQ(imageStatistics(Storage::pool16K).images, pool16K.images + 1);
    EXPECT_EQ(imageStatistics(Storage::pool16K).bytes, pool16K.bytes) << "this class accounts for nothing";
    EXPECT_EQ(imageStatistics(Storage::heap).images, heap.images + 1);
    EXPECT_EQ(imageStatistics(Storage::heap).bytes, heap.bytes + 160000);
}

TEST(ImageCreateEx, TakesTheCallersMemoryAndRowsAsTheyAre) {
    uint8_t memory[7 * 13];
    std::memset(memory, 0x31, sizeof memory);
    const ImageHandle image(LxImage_CreateEx(kLxPixelRGB, -2, 5, 2, 12, memory, 13, 0, 0, 1));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_Data(image.get()), memory);
    EXPECT_EQ(LxImage_BytesPerRow(image.get()), 13);
    EXPECT_EQ(LxImage_PadBytes(image.get()), 1);
    EXPECT_EQ(LxImage_DataSize(image.get()), 91);
    EXPECT_EQ(LxImage_MemSize(image.get()), 0);
    EXPECT_EQ(LxImage_isEmpty(image.get()), 0);
    EXPECT_EQ(LxImage_isFlipped(image.get()), 1);
    EXPECT_EQ(storageOf(image), Storage::external);
    EXPECT_EQ(memory[0], 0x31);
}

TEST(ImageCreateEx, ClearsHeightTimesRowBytes) {
    uint8_t memory[100];
    std::memset(memory, 0xFF, sizeof memory);
    const ImageHandle image(LxImage_CreateEx(kLxPixelA, 0, 0, 3, 5, memory + 10, 16, 1, 1, 0));
    EXPECT_EQ(LxImage_isEmpty(image.get()), 1);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(memory[i], i >= 10 && i < 90 ? 0 : 0xFF) << i;
}

TEST(ImageCreateEx, DeletingLeavesTheCallersMemoryAlone) {
    uint8_t memory[16] = {9};
    const int32_t before = allocationCount();
    LxImage_Delete(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 2, 2, memory, 8, 0, 0, 0));
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(memory[0], 9);
}

TEST(ImageCreateEx, BadRectanglesGiveNullAndLeaveTheRecordAndItsMutexBehind) {
    uint8_t memory[16];
    int32_t before = allocationCount();
    EXPECT_EQ(createExLeaving(0, 0, 0, 1, memory, 4), nullptr);
    EXPECT_EQ(allocationCount(), before + 2);
    before = allocationCount();
    EXPECT_EQ(createExLeaving(0, 4, 1, 3, memory, 4), nullptr);
    EXPECT_EQ(allocationCount(), before + 2);
}

TEST(ImageCreateEx, SizesBeyond32BitsGiveNull) {
    uint8_t memory[16];
    EXPECT_EQ(createExLeaving(0, 0, 1 << 29, 1, memory, 4), nullptr);
    EXPECT_EQ(createExLeaving(0, 0, 1, 1 << 16, memory, 1 << 15), nullptr);
    EXPECT_EQ(createExLeaving(0, 0, 1, 1 << 16, memory, -(1 << 16)), nullptr);
    EXPECT_EQ(createExLeaving(lowest, 0, highest, 1, memory, 4), nullptr);
}

TEST(ImageCreateEx, CountsTheImageAndNoBytes) {
    uint8_t memory[16];
    const ImageStatistics before = imageStatistics(Storage::external);
    LxImage_Delete(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 2, 2, memory, 8, 0, 0, 0));
    EXPECT_EQ(imageStatistics(Storage::external).images, before.images + 1);
    EXPECT_EQ(imageStatistics(Storage::external).bytes, before.bytes);
}

TEST(ImageCreateEx, OverNullMemoryReachesNoPixel) {
    const ImageHandle image(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 2, 2, nullptr, 8, 0, 1, 0));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(LxImage_Pointer(image.get(), 1, 1), nullptr);
    EXPECT_EQ(LxImage_SetPixelAt(image.get(), 1, 1, LxColor_RGBA_White), 0);
    void *start = &start;
    void *end = &end;
    EXPECT_EQ(LxImage_PointerLine(image.get(), 0, 1, 0, &start, &end), 0);
    EXPECT_EQ(start, nullptr);
    LxImage_ReadSegmentMarks(image.get());
    EXPECT_EQ(LxImage_isTiled(image.get()), 0);
}

TEST(ImageDelete, NullIsIgnored) {
    LxImage_Delete(nullptr);
}

TEST(ImageDelete, ReleasesEverythingOfEveryStorageClass) {
    for (const int32_t size : {2, 20, 30, 60, 120, 200}) {
        LxImage_Delete(LxImage_Create(kLxPixelRGBA, 0, 0, size, size, 0, 0)); // fills the pool
        const int32_t before = allocationCount();
        LxImage_Delete(LxImage_Create(kLxPixelRGBA, 0, 0, size, size, 0, 0));
        EXPECT_EQ(allocationCount(), before) << size;
    }
}

TEST(ImageLock, IsRecursiveAndKeepsOthersOut) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 4, 4);
    LxImage_Lock(image.get());
    LxImage_Lock(image.get());
    const auto isFree = [&image] {
        bool free = false;
        std::thread([&] {
            free = pthread_mutex_trylock(image->lock) == 0;
            if (free)
                LxImage_Unlock(image.get());
        }).join();
        return free;
    };
    LxImage_Unlock(image.get());
    EXPECT_FALSE(isFree());
    LxImage_Unlock(image.get());
    EXPECT_TRUE(isFree());
    LxImage_Lock(nullptr);
    LxImage_Unlock(nullptr);
}

TEST(ImageContext, IsMadeOnFirstDemandWithTheImagesRectangleAndOwned) {
    static int made;
    static int removed;
    static LxRectD clip;
    static char context;
    made = removed = 0;
    registerImageContexts({[](LxImage *, LxRectD rect) {
                               ++made;
                               clip = rect;
                               return reinterpret_cast<LxGC *>(&context);
                           },
                           [](LxGC *) { ++removed; }});
    LxImage *image = LxImage_Create(kLxPixelRGBA, -3, 4, 7, 9, 0, 0);
    EXPECT_EQ(made, 0);
    EXPECT_EQ(LxImage_GC(image), reinterpret_cast<LxGC *>(&context));
    EXPECT_EQ(LxImage_GC(image), reinterpret_cast<LxGC *>(&context));
    EXPECT_EQ(made, 1);
    EXPECT_EQ(clip.x0, -3);
    EXPECT_EQ(clip.y0, 4);
    EXPECT_EQ(clip.x1, 7);
    EXPECT_EQ(clip.y1, 9);
    LxImage_Delete(image);
    EXPECT_EQ(removed, 1);
    LxImage_Delete(LxImage_Create(kLxPixelRGBA, 0, 0, 7, 9, 0, 0));
    EXPECT_EQ(removed, 1) << "an image that was never drawn on has no context to remove";
    registerImageContexts({nullptr, nullptr});
    EXPECT_EQ(LxImage_GC(nullptr), nullptr);
}

TEST(ImageCreate, RandomRectanglesGiveAnImageOfTheirSizeOrNull) {
    Random random;
    for (int i = 0; i < 20000; ++i) {
        const LxRectL r = {random.anyInteger(), random.anyInteger(), random.anyInteger(),
                           random.anyInteger()};
        const int32_t type = random.integer(0, 7);
        const int64_t w = int64_t{r.x1} - r.x0;
        const int64_t h = int64_t{r.y1} - r.y0;
        const int64_t stride = type == kLxPixelA ? 1 : type == kLxPixelRGB ? 3 : 4;
        const int64_t rowBytes = (w * stride + 3) / 4 * 4;
        const bool isNull = w <= 0 || h <= 0 || rowBytes > highest || rowBytes * h > highest;
        if (!isNull && rowBytes * h > (1 << 24))
            continue; // takes long to make
        const ImageHandle image(LxImage_Create(type, r.x0, r.y0, r.x1, r.y1, 0, 0));
        ASSERT_EQ(image == nullptr, isNull) << w << " by " << h << " of type " << type;
        if (!isNull) {
            ASSERT_EQ(LxImage_w(image.get()), w);
            ASSERT_EQ(LxImage_h(image.get()), h);
        }
    }
}
