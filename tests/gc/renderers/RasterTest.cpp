#include "gc/renderers/Raster.h"

#include <cmath>

#include <gtest/gtest.h>

#include <oxlume/LxLibrary.h>

#include "foundation/Memory.h"
#include "tests/gc/renderers/RasterHandle.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

TEST(RasterRecord, StartsEmpty) {
    for (const int32_t kind : {0, 1, 2}) {
        const RasterHandle raster = makeRaster(kind);
        EXPECT_EQ(raster->kind, kind);
        EXPECT_EQ(raster->nonZero, 1);
        EXPECT_EQ(raster->boundsEmpty, 1);
        EXPECT_EQ(raster->bounds[0], 1000000.0);
        EXPECT_EQ(raster->bounds[1], 1000000.0);
        EXPECT_EQ(raster->bounds[2], -1000000.0);
        EXPECT_EQ(raster->bounds[3], -1000000.0);
        EXPECT_NE(raster->fill, nullptr);
        EXPECT_NE(raster->store, nullptr);
    }
}

TEST(RasterRecord, OfAnUnknownKindDoesNothing) {
    for (const int32_t kind : {-1, 3, 77}) {
        const RasterHandle raster = makeRaster(kind);
        const ImageHandle image = makeImage(kLxPixelRGBA, 10, 10);
        EXPECT_EQ(raster->fill, nullptr);
        EXPECT_EQ(LxRaster_Restart(raster.get()), 0);
        addRect(raster.get(), 1, 1, 9, 9);
        fillSolid(raster.get(), image.get(), LxRGBA_White);
        EXPECT_EQ(coverageAt(image, 5, 5), 0);
    }
}

TEST(RasterRecord, NullIsIgnored) {
    const RasterHandle raster = makeRaster();
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 10);
    const LxBlend blend = LxBlend(2, 255);
    LxRGBA white = LxRGBA_White;
    LxShader shader = solidShader(white);
    addRect(raster.get(), 1, 1, 9, 9);
    EXPECT_EQ(LxRaster_Restart(nullptr), 0);
    LxRaster_AddEdge(nullptr, 0, 0, 1, 1);
    LxRaster_Delete(nullptr);
    LxRaster_Fill(nullptr, image.get(), &blend, &shader);
    LxRaster_Fill(raster.get(), nullptr, &blend, &shader);
    LxRaster_Fill(raster.get(), image.get(), nullptr, &shader);
    LxRaster_Fill(raster.get(), image.get(), &blend, nullptr);
    shader.color = nullptr;
    LxRaster_Fill(raster.get(), image.get(), &blend, &shader);
    EXPECT_EQ(coverageAt(image, 5, 5), 0);
}

TEST(RasterRecord, EdgesWidenTheBoundsAndARestartEmptiesThem) {
    for (const int32_t kind : {0, 1}) {
        const RasterHandle raster = makeRaster(kind);
        LxRaster_AddEdge(raster.get(), 5, 6, 5, 6);
        EXPECT_EQ(raster->boundsEmpty, 1) << "an edge of no length is none";
        LxRaster_AddEdge(raster.get(), 5.5, 6, -3, 6);
        LxRaster_AddEdge(raster.get(), 1, 8, 1, 2.25);
        EXPECT_EQ(raster->bounds[0], -3);
        EXPECT_EQ(raster->bounds[1], 2.25);
        EXPECT_EQ(raster->bounds[2], 5.5);
        EXPECT_EQ(raster->bounds[3], 8);
        EXPECT_EQ(raster->boundsEmpty, 0);
        raster->nonZero = 0;
        EXPECT_EQ(LxRaster_Restart(raster.get()), 1);
        EXPECT_EQ(raster->nonZero, 1);
        EXPECT_EQ(raster->boundsEmpty, 1);
        EXPECT_EQ(raster->bounds[0], 1000000.0);
        EXPECT_EQ(raster->bounds[3], -1000000.0);
    }
}

TEST(RasterRecord, BoundsBeyondAMillionWidenOnOneSideOnly) {
    const RasterHandle raster = makeRaster();
    LxRaster_AddEdge(raster.get(), 3e6, -3e6, 2e6, -2e6);
    EXPECT_EQ(raster->bounds[0], 1000000.0);
    EXPECT_EQ(raster->bounds[2], 3e6);
    EXPECT_EQ(raster->bounds[1], -3e6);
    EXPECT_EQ(raster->bounds[3], -1000000.0);
}

TEST(RasterFill, AsksTheShaderFirstForTheKernel) {
    struct Log {
        double bounds[4];
        int begins = 0;
        std::vector<std::array<int32_t, 3>> asked;
        int32_t type = kLxPixelF;
    } log;
    LxShader shader = {};
    shader.data = &log;
    shader.begin = [](LxShader *self, const double *bounds) {
        auto &l = *static_cast<Log *>(self->data);
        ++l.begins;
        std::copy_n(bounds, 4, l.bounds);
    };
    shader.color = [](LxColor *out, LxShader *self, int32_t x, int32_t y, int32_t coverage) {
        auto &l = *static_cast<Log *>(self->data);
        l.asked.push_back({x, y, coverage});
        *out = LxColor_RGBA_White;
        out->type = l.type;
    };
    const LxBlend blend = LxBlend(2, 255);
    for (const int32_t kind : {0, 1}) {
        log = {};
        const RasterHandle raster = makeRaster(kind);
        const ImageHandle image = makeImage(kLxPixelRGBA, 10, 10);
        LxRaster_Fill(raster.get(), image.get(), &blend, &shader);
        EXPECT_EQ(log.begins, 0) << "an empty store";
        addRect(raster.get(), 1.5, 2.25, 4, 4);
        LxRaster_Fill(raster.get(), image.get(), &blend, &shader);
        EXPECT_EQ(log.begins, 1);
        EXPECT_EQ(log.bounds[0], 1.5);
        EXPECT_EQ(log.bounds[1], 2.25);
        EXPECT_EQ(log.bounds[2], 4);
        EXPECT_EQ(log.bounds[3], 4);
        ASSERT_EQ(log.asked.size(), 1u) << "floats have no kernel, and that ends the fill";
        EXPECT_EQ(log.asked[0], (std::array<int32_t, 3>{2, 2, 255}));
    }
}

TEST(RasterFill, OfAnyCoordinatesEndsAndStaysInMemory) {
    Random random;
    for (int round = 0; round < 60; ++round) {
        const RasterHandle raster = makeRaster(random.integer(0, 1));
        const ImageHandle image =
            makeImage(random.integer(0, 5), random.integer(1, 40), random.integer(1, 40), random.coin());
        for (int i = 0; i < 12; ++i)
            LxRaster_AddEdge(raster.get(), random.anyReal(), random.anyReal(), random.anyReal(),
                             random.anyReal());
        raster->nonZero = random.integer(0, 1);
        fillSolid(raster.get(), image.get(), {1, 2, 3, 200}, LxBlend(random.integer(0, 43), 200));
    }
}

TEST(RasterStore, OutOfMemoryGivesARasteriserThatDoesNothing) {
    Oxlume_Init();
    Oxlume_Term(); // so that there is no store
    static int allowed;
    const SystemAllocator failing = {[](size_t size) { return allowed-- > 0 ? std::malloc(size) : nullptr; },
                                     [](size_t, size_t) -> void * { return nullptr; },
                                     [](void *, size_t) -> void * { return nullptr; }};
    setSystemAllocator(&failing);
    allowed = 0;
    EXPECT_EQ(LxRaster_Create(1), nullptr);
    allowed = 1;
    const RasterHandle raster = makeRaster();
    setSystemAllocator(nullptr);
    ASSERT_NE(raster, nullptr);
    EXPECT_EQ(raster->fill, nullptr);
    EXPECT_EQ(LxRaster_Restart(raster.get()), 0);
    LxRaster_AddEdge(raster.get(), 0, 0, 5, 5);
}

TEST(RasterStore, ComesBackAfterTheLibraryEnded) {
    Oxlume_Init();
    const RasterHandle raster = makeRaster();
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 10);
    addRect(raster.get(), 1, 1, 9, 9);
    Oxlume_Term();
    fillSolid(raster.get(), image.get(), LxRGBA_White);
    EXPECT_EQ(coverageAt(image, 5, 5), 0) << "the samples went with the store";
    Oxlume_Init();
    LxRaster_Restart(raster.get());
    addRect(raster.get(), 1, 1, 9, 9);
    fillSolid(raster.get(), image.get(), LxRGBA_White);
    EXPECT_EQ(coverageAt(image, 5, 5), 255);
}
