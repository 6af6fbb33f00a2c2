#include <array>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/gc/renderers/RasterHandle.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

std::string rowOf(const ImageHandle &image, int32_t y) {
    std::string row;
    for (int32_t x = 0; x < LxImage_w(image.get()); ++x)
        row += coverageAt(image, x, y) != 0 ? '#' : '.';
    return row;
}

// A shader whose colour varies, logging what it is asked for.
struct Varying {
    std::vector<std::array<int32_t, 3>> asked;
    LxShader shader = {nullptr,
                       [](LxColor *out, LxShader *self, int32_t x, int32_t y, int32_t coverage) {
                           static_cast<Varying *>(self->data)->asked.push_back({x, y, coverage});
                           *out = LxColor_RGBA(static_cast<uint8_t>(x), static_cast<uint8_t>(y), 0, 255);
                       },
                       nullptr, this, 0};
};

} // namespace

TEST(PlainForm, FillsWholePixelsUpToTheRightSide) {
    const RasterHandle raster = makeRaster(0);
    addRect(raster.get(), 1.4, 1.6, 4.5, 4.4); // 1, 2, 5, 4
    const ImageHandle image = makeImage(kLxPixelRGBA, 8, 6);
    fillSolid(raster.get(), image.get(), {1, 2, 3, 255});
    EXPECT_EQ(rowOf(image, 1), "........");
    EXPECT_EQ(rowOf(image, 2), ".####...");
    EXPECT_EQ(rowOf(image, 3), ".####...");
    EXPECT_EQ(rowOf(image, 4), "........");
    EXPECT_EQ(pixelOf(image, 4, 3).b, 3);
}

TEST(PlainForm, RoundsHalvesAwayFromZero) {
    const RasterHandle raster = makeRaster(0);
    LxRaster_AddEdge(raster.get(), 2.5, -2.5, 2.5, 1); // from (3, -3)
    LxRaster_AddEdge(raster.get(), 5.49, -2.5, 5.49, 1);
    const ImageHandle image = makeImage(kLxPixelRGBA, 8, 3);
    fillSolid(raster.get(), image.get(), LxRGBA_White);
    EXPECT_EQ(rowOf(image, 0), "...##...");
    EXPECT_EQ(rowOf(image, 1), "........");
}

TEST(PlainForm, IsEvenOdd) {
    const RasterHandle raster = makeRaster(0);
    addRect(raster.get(), 0, 0, 8, 3);
    addRect(raster.get(), 2, 1, 5, 2);
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 3);
    fillSolid(raster.get(), image.get(), LxRGBA_White);
    EXPECT_EQ(rowOf(image, 0), "########..");
    EXPECT_EQ(rowOf(image, 1), "##...###..");
    EXPECT_EQ(rowOf(image, 2), "########..");
}

TEST(PlainForm, StepsItsEdges) {
    const RasterHandle raster = makeRaster(0);
    // A triangle: left side 8 to 0 over 4 rows, right side 8 to 10 over 4 rows.
    LxRaster_AddEdge(raster.get(), 8, 0, 0, 4);
    LxRaster_AddEdge(raster.get(), 10, 4, 8, 0);
    const ImageHandle image = makeImage(kLxPixelRGBA, 12, 5);
    fillSolid(raster.get(), image.get(), LxRGBA_White);
    EXPECT_EQ(rowOf(image, 0), "............");
    EXPECT_EQ(rowOf(image, 1), "......##....") << "6 to 8: the error of the right side is 2 of 4";
    EXPECT_EQ(rowOf(image, 2), "....#####...") << "4 to 9";
    EXPECT_EQ(rowOf(image, 3), "..#######...") << "2 to 9";
    EXPECT_EQ(rowOf(image, 4), "............");
}

TEST(PlainForm, AsksAVaryingShaderForEachPixel) {
    const RasterHandle raster = makeRaster(0);
    addRect(raster.get(), 1, 1, 3, 3);
    const ImageHandle image = makeImage(kLxPixelRGBA, 8, 4);
    Varying varying;
    const LxBlend blend = LxBlend(2, 255);
    LxRaster_Fill(raster.get(), image.get(), &blend, &varying.shader);
    EXPECT_EQ(varying.asked, (std::vector<std::array<int32_t, 3>>{
                                 {1, 1, 255}, {1, 1, 255}, {2, 1, 255}, {1, 2, 255}, {2, 2, 255}}));
    EXPECT_EQ(pixelOf(image, 2, 1).r, 2);
    EXPECT_EQ(pixelOf(image, 1, 2).g, 2);
    EXPECT_EQ(coverageAt(image, 3, 1), 0);
}

TEST(PlainForm, SpendsItsEdges) {
    const RasterHandle raster = makeRaster(0);
    LxRaster_AddEdge(raster.get(), 0, 0, 4, 2);
    LxRaster_AddEdge(raster.get(), 2, 0, 6, 2);
    const ImageHandle first = makeImage(kLxPixelRGBA, 12, 2), second = makeImage(kLxPixelRGBA, 12, 2);
    fillSolid(raster.get(), first.get(), LxRGBA_White);
    EXPECT_EQ(rowOf(first, 0), "##..........");
    EXPECT_EQ(rowOf(first, 1), "..##........");
    fillSolid(raster.get(), second.get(), LxRGBA_White);
    EXPECT_EQ(rowOf(second, 0), "....##......") << "each starts where its last row led to";
    EXPECT_EQ(rowOf(second, 1), "......##....");
}

TEST(PlainForm, TakesManyEdges) {
    const RasterHandle raster = makeRaster(0);
    for (int i = 0; i < 400; ++i)
        addRect(raster.get(), 2 * i, 0, 2 * i + 1, 1);
    const ImageHandle image = makeImage(kLxPixelRGBA, 800, 1);
    fillSolid(raster.get(), image.get(), LxRGBA_White);
    for (int32_t x = 0; x < 800; ++x)
        ASSERT_EQ(coverageAt(image, x, 0), x % 2 == 0 ? 255 : 0) << x;
}

// The rules once more, a row at a time from the first edge on.
TEST(PlainForm, PaintsWhatTheNaiveWayPaints) {
    struct Record {
        int64_t yTop, yBottom, x, dx, dy, error = 0;
    };
    Random random;
    const auto rounded = [](double v) {
        return v > 0 ? static_cast<int64_t>(v + 0.5) : -static_cast<int64_t>(0.5 - v);
    };
    for (int round = 0; round < 500; ++round) {
        const RasterHandle raster = makeRaster(0);
        std::vector<Record> records;
        for (int i = random.integer(2, 12); i > 0; --i) {
            double x0 = random.real(-20, 60), y0 = random.real(-20, 60), x1 = random.real(-20, 60),
                   y1 = random.coin() ? y0 : random.real(-20, 60);
            LxRaster_AddEdge(raster.get(), x0, y0, x1, y1);
            if (y0 == y1)
                continue;
            if (y0 > y1) {
                std::swap(x0, x1);
                std::swap(y0, y1);
            }
            records.push_back({rounded(y0), rounded(y1), rounded(x0), rounded(x1) - rounded(x0),
                               rounded(y1) - rounded(y0)});
        }
        const ImageHandle actual = makeImage(kLxPixelRGBA, 40, 40),
                          expected = makeImage(kLxPixelRGBA, 40, 40);
        fillSolid(raster.get(), actual.get(), LxRGBA_White);
        for (int64_t y = -30; y < 70; ++y) {
            std::vector<Record *> active;
            for (Record &r : records)
                if (r.yTop <= y && y < r.yBottom)
                    active.push_back(&r);
            std::stable_sort(active.begin(), active.end(),
                             [](const Record *a, const Record *b) { return a->x < b->x; });
            for (size_t i = 0; i + 1 < active.size(); i += 2)
                for (int64_t x = active[i]->x; x < active[i + 1]->x; ++x)
                    LxImage_SetPixelAt(expected.get(), static_cast<int32_t>(x), static_cast<int32_t>(y),
                                       LxColor_RGBA_White);
            for (Record *r : active) {
                r->error += r->dx;
                for (; r->dx > 0 && r->error >= r->dy; ++r->x)
                    r->error -= r->dy;
                for (; r->dx < 0 && -r->error >= r->dy; --r->x)
                    r->error += r->dy;
            }
        }
        ASSERT_EQ(bytesOf(actual), bytesOf(expected)) << "round " << round;
    }
}
