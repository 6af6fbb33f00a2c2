#include "image/BufferPool.h"

#include <cstring>
#include <vector>

#include <gtest/gtest.h>
#include <oxlume/LxLibrary.h>
#include <oxlume/LxMem.h>

#include "foundation/Library.h"
#include "foundation/Memory.h"
#include "image/Image.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

namespace {

bool noMoreMemory = false;

constexpr SystemAllocator withoutRealloc = {
    [](size_t size) { return noMoreMemory ? nullptr : std::malloc(size); },
    [](size_t count, size_t size) { return std::calloc(count, size); },
    [](void *, size_t) -> void * { return nullptr; },
};

} // namespace

TEST(BufferPool, BuffersComeBackLastReleasedFirst) {
    BufferPool pool(2048);
    uint8_t *a = pool.take(false);
    uint8_t *b = pool.take(false);
    EXPECT_NE(a, b);
    pool.give(a);
    pool.give(b);
    EXPECT_EQ(pool.freeCount(), 2);
    EXPECT_EQ(pool.take(false), b);
    EXPECT_EQ(pool.take(false), a);
    pool.give(a);
    pool.give(b);
    pool.drain();
}

TEST(BufferPool, ClearingZeroesTheWholeBufferAndNotClearingKeepsIt) {
    BufferPool pool(4096);
    uint8_t *buffer = pool.take(true);
    for (int i = 0; i < 4096; ++i)
        ASSERT_EQ(buffer[i], 0);
    std::memset(buffer, 0x5A, 4096);
    pool.give(buffer);
    buffer = pool.take(false);
    EXPECT_EQ(buffer[0], 0x5A);
    EXPECT_EQ(buffer[4095], 0x5A);
    pool.give(buffer);
    buffer = pool.take(true);
    for (int i = 0; i < 4096; ++i)
        ASSERT_EQ(buffer[i], 0) << i;
    pool.give(buffer);
    pool.drain();
}

TEST(BufferPool, TheThirtyThirdBufferGrowsItASecondTime) {
    BufferPool pool(2048);
    EXPECT_EQ(pool.capacity(), 0);
    std::vector<uint8_t *> buffers(33);
    for (uint8_t *&buffer : buffers)
        buffer = pool.take(false);
    EXPECT_EQ(pool.capacity(), 0) << "taking grows nothing";
    for (int i = 0; i < 32; ++i)
        pool.give(buffers[static_cast<size_t>(i)]);
    EXPECT_EQ(pool.capacity(), 32);
    pool.give(buffers[32]);
    EXPECT_EQ(pool.capacity(), 64);
    EXPECT_EQ(pool.freeCount(), 33);
    pool.drain();
}

TEST(BufferPool, DrainingReleasesAllAndLeavesItAsNew) {
    const int32_t before = allocationCount();
    BufferPool pool(2048);
    uint8_t *a = pool.take(false);
    uint8_t *b = pool.take(false);
    pool.give(a);
    pool.give(b);
    pool.drain();
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(pool.freeCount(), 0);
    EXPECT_EQ(pool.capacity(), 0);
    pool.give(pool.take(false));
    EXPECT_EQ(pool.freeCount(), 1);
    pool.drain();
    EXPECT_EQ(allocationCount(), before);
}

TEST(BufferPool, ReleasesWhatItCannotKeep) {
    const int32_t before = allocationCount();
    BufferPool pool(2048);
    uint8_t *buffer = pool.take(false);
    setSystemAllocator(&withoutRealloc);
    noMoreMemory = true; // the first growth allocates
    pool.give(buffer);
    noMoreMemory = false;
    setSystemAllocator(nullptr);
    EXPECT_EQ(pool.freeCount(), 0);
    EXPECT_EQ(allocationCount(), before);
}

TEST(ImagePools, TheSecondImageOfATierSeesTheFirstOnesPixelsUnlessCleared) {
    LxImage *first = LxImage_Create(kLxPixelA, 0, 0, 64, 32, 0, 0);
    void *data = LxImage_Data(first);
    std::memset(data, 0x77, 2048);
    LxImage_Delete(first);
    const ImageHandle second(LxImage_Create(kLxPixelRGBA, 0, 0, 5, 5, 0, 0));
    EXPECT_EQ(LxImage_Data(second.get()), data);
    EXPECT_EQ(*static_cast<uint8_t *>(LxImage_Data(second.get())), 0x77);
    LxImage_Delete(LxImage_Create(kLxPixelA, 0, 0, 64, 32, 0, 0));
    LxImage *third = LxImage_Create(kLxPixelRGBA, 0, 0, 5, 5, 1, 0);
    const auto *pixels = static_cast<const uint8_t *>(LxImage_ConstData(third));
    for (int i = 0; i < 2048; ++i)
        ASSERT_EQ(pixels[i], 0) << "the whole buffer, not only the image's 100 bytes: " << i;
    LxImage_Delete(third);
}

TEST(ImagePools, TermReleasesThemAndTheLibraryGoesOn) {
    registerModule(Module::renderers, {}); // so that only images allocate
    Oxlume_Init();
    Oxlume_Term(); // empties the pools
    Oxlume_Init();
    const int32_t before = allocationCount();
    LxImage *alive = LxImage_Create(kLxPixelRGBA, 0, 0, 16, 16, 0, 0);
    for (int size = 16; size <= 128; size *= 2)
        LxImage_Delete(LxImage_Create(kLxPixelRGBA, 0, 0, size, size, 0, 0));
    Oxlume_Term();
    EXPECT_EQ(allocationCount(), before + 3) << "the living image's record, mutex and pixels";
    LxImage_Delete(alive); // into a pool that begins anew
    EXPECT_EQ(allocationCount(), before + 2) << "its buffer and the pool's slots";
    Oxlume_Init();
    EXPECT_NE(makeImage(kLxPixelRGBA, 16, 16), nullptr);
    Oxlume_Term();
}
