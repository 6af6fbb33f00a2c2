#include "gc/renderers/CoverageRaster.h"

#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

#include <gtest/gtest.h>

#include "gc/Gradient.h"
#include "tests/gc/renderers/NaiveRaster.h"
#include "tests/gc/renderers/RasterHandle.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

// Opaque white on a clear image: alpha is the coverage.
ImageHandle filled(LxRaster *raster, int32_t width = 40, int32_t height = 40) {
    ImageHandle image = makeImage(kLxPixelRGBA, width, height);
    fillSolid(raster, image.get(), LxRGBA_White);
    return image;
}

ImageHandle filledRect(double x0, double y0, double x1, double y1) {
    const RasterHandle raster = makeRaster();
    addRect(raster.get(), x0, y0, x1, y1);
    return filled(raster.get());
}

struct Edge {
    double x0, y0, x1, y1;
};

// A closed polygon through random points, some of them far out.
std::vector<Edge> randomPolygon(Random &random, int32_t corners, double size) {
    std::vector<LxPointD> points;
    for (int32_t i = 0; i < corners; ++i)
        points.push_back({random.real(-0.2 * size, 1.2 * size), random.real(-0.2 * size, 1.2 * size)});
    if (random.coin())
        for (LxPointD &p : points)
            p = {std::round(p.x * 4) / 4, std::round(p.y * 2) / 2};
    std::vector<Edge> edges;
    for (size_t i = 0; i < points.size(); ++i) {
        const LxPointD &a = points[i], &b = points[(i + 1) % points.size()];
        edges.push_back({a.x, a.y, b.x, b.y});
    }
    return edges;
}

// A closed polygon of upright and level edges only, as rectangles and letters of blocks have them.
std::vector<Edge> randomBlocks(Random &random, int32_t corners, double size) {
    std::vector<Edge> edges;
    const auto place = [&] { return random.real(-0.2 * size, 1.2 * size); };
    const LxPointD start = {place(), place()};
    LxPointD at = start;
    const auto goTo = [&](double x, double y) {
        edges.push_back({at.x, at.y, at.x, y});
        edges.push_back({at.x, y, x, y});
        at = {x, y};
    };
    for (int32_t i = 0; i < corners; ++i)
        goTo(place(), random.coin() ? std::round(place()) : place());
    goTo(start.x, start.y);
    return edges;
}

void randomise(Random &random, const ImageHandle &image) {
    auto *data = static_cast<uint8_t *>(LxImage_Data(image.get()));
    for (int32_t i = 0; i < LxImage_DataSize(image.get()); ++i)
        data[i] = random.byte();
}

ImageHandle copyOf(const ImageHandle &image) {
    ImageHandle copy = makeImage(LxImage_Type(image.get()), LxImage_w(image.get()), LxImage_h(image.get()),
                                 LxImage_isFlipped(image.get()) != 0);
    std::memcpy(LxImage_Data(copy.get()), LxImage_ConstData(image.get()),
                static_cast<size_t>(LxImage_DataSize(image.get())));
    return copy;
}

// Paints the naive way, a pixel at a time.
void paintNaively(const std::vector<Edge> &edges, bool nonZero, LxImage *image, const LxBlend &blend,
                  LxShader shader, const double *bounds) {
    NaiveShape shape;
    for (const Edge &e : edges)
        if (e.x0 != e.x1 || e.y0 != e.y1)
            shape.addEdge(e.x0, e.y0, e.x1, e.y1);
    if (shape.samples.empty())
        return;
    if (shader.begin != nullptr)
        shader.begin(&shader, bounds);
    const LxPixelBlendFunction kernel = LxBlend_SelectPixelBlendFunction(LxImage_Type(image), kLxPixelRGBA);
    if (kernel == nullptr)
        return;
    shape.plotAll(nonZero, LxImage_w(image), [&](int32_t x, int32_t y, int32_t coverage) {
        void *pixel = LxImage_Pointer(image, x, y);
        if (pixel == nullptr)
            return;
        LxColor color;
        shader.color(&color, &shader, x, y, coverage);
        kernel(&blend, pixel, pixel, color.content.bytes);
    });
}

} // namespace

TEST(Coverage, OfAWholePixelIsCutTo255) {
    const ImageHandle image = filledRect(10, 10, 20, 20);
    for (int32_t y = 0; y < 40; ++y)
        for (int32_t x = 0; x < 40; ++x)
            EXPECT_EQ(coverageAt(image, x, y), x >= 10 && x < 20 && y >= 10 && y < 20 ? 255 : 0)
                << x << ", " << y;
}

TEST(Coverage, OfHalfAPixelIsFifteenOf31) {
    const ImageHandle image = filledRect(10.5, 10, 20.5, 20);
    // Four samples of 31 - 16 parts: 60 * 256 / 124 = 123. On the right they are taken from 256.
    EXPECT_EQ(coverageAt(image, 9, 15), 0);
    EXPECT_EQ(coverageAt(image, 10, 15), 123);
    EXPECT_EQ(coverageAt(image, 11, 15), 255);
    EXPECT_EQ(coverageAt(image, 19, 15), 255);
    EXPECT_EQ(coverageAt(image, 20, 15), 133);
    EXPECT_EQ(coverageAt(image, 21, 15), 0);
}

TEST(Coverage, OfQuarterRowsIsSixtyFourEach) {
    const ImageHandle image = filledRect(10, 10.25, 20, 12.5);
    EXPECT_EQ(coverageAt(image, 15, 9), 0);
    EXPECT_EQ(coverageAt(image, 15, 10), 192);
    EXPECT_EQ(coverageAt(image, 15, 11), 255);
    EXPECT_EQ(coverageAt(image, 15, 12), 128);
    EXPECT_EQ(coverageAt(image, 15, 13), 0);
    EXPECT_EQ(coverageAt(image, 10, 10), 93 * 256 / 124);
}

TEST(Coverage, OfASliverInOnePixelSubtractsItsSides) {
    const ImageHandle image = filledRect(10.25, 10, 10.75, 11);
    // Fractions 8 and 24: fall 4 * 23 = 92, rise 4 * 7 = 28: -189 + 57 = -132, each division cut by itself.
    EXPECT_EQ(coverageAt(image, 10, 10), 132);
    EXPECT_EQ(coverageAt(image, 11, 10), 0);
}

TEST(Coverage, OfAShapeWithoutAreaPaintsNothing) {
    const RasterHandle raster = makeRaster();
    LxRaster_AddEdge(raster.get(), 0, 5, 30, 5);
    LxRaster_AddEdge(raster.get(), 30, 5, 0, 5);
    const ImageHandle image = filled(raster.get());
    EXPECT_EQ(bytesOf(image), bytesOf(makeImage(kLxPixelRGBA, 40, 40)));
}

TEST(Coverage, DoesNotDependOnTheDirection) {
    const RasterHandle raster = makeRaster();
    LxRaster_AddEdge(raster.get(), 5, 5, 5, 15);
    LxRaster_AddEdge(raster.get(), 15, 15, 15, 5);
    const ImageHandle image = filled(raster.get());
    EXPECT_EQ(coverageAt(image, 5, 5), 255);
    EXPECT_EQ(coverageAt(image, 14, 14), 255);
    EXPECT_EQ(coverageAt(image, 15, 10), 0);
}

TEST(Coverage, OfOverlappingShapesIsCut) {
    const RasterHandle raster = makeRaster();
    addRect(raster.get(), 5, 5, 20, 20);
    addRect(raster.get(), 10, 10, 25, 25);
    const ImageHandle image = filled(raster.get());
    EXPECT_EQ(coverageAt(image, 7, 7), 255);
    EXPECT_EQ(coverageAt(image, 15, 15), 255);
    EXPECT_EQ(coverageAt(image, 22, 22), 255);
}

TEST(Coverage, WithoutNonZeroFoldsAtBitEight) {
    const RasterHandle raster = makeRaster();
    addRect(raster.get(), 5, 5, 20, 20);
    addRect(raster.get(), 10, 10, 25, 25);
    raster->nonZero = 0;
    const ImageHandle image = filled(raster.get());
    EXPECT_EQ(coverageAt(image, 7, 7), 255) << "-256 has bit 8 set: ~-256 = 255";
    EXPECT_EQ(coverageAt(image, 15, 15), 0) << "-512 has not: its low byte is 0";
    EXPECT_EQ(coverageAt(image, 22, 22), 255);

    LxRaster_Restart(raster.get());
    raster->nonZero = 0;
    addRect(raster.get(), 10.5, 10, 20, 11);
    EXPECT_EQ(coverageAt(filled(raster.get()), 10, 10), 122) << "~-123";
}

TEST(Coverage, OfAnOpenShapeEndsWithItsRow) {
    const RasterHandle raster = makeRaster();
    LxRaster_AddEdge(raster.get(), 5, 5, 5, 6);
    LxRaster_AddEdge(raster.get(), 9, 8, 9, 9);
    const ImageHandle image = filled(raster.get());
    EXPECT_EQ(coverageAt(image, 5, 5), 255);
    EXPECT_EQ(coverageAt(image, 6, 5), 0) << "no sample follows in this row";
    EXPECT_EQ(coverageAt(image, 9, 8), 255);
}

TEST(Coverage, AtTheOriginIsPaintedToo) {
    const RasterHandle raster = makeRaster();
    LxRaster_AddEdge(raster.get(), 0, 0, 0, 1);
    EXPECT_EQ(coverageAt(filled(raster.get()), 0, 0), 255);
    LxRaster_Restart(raster.get());
    addRect(raster.get(), 0, 0, 3, 2);
    const ImageHandle image = filled(raster.get());
    EXPECT_EQ(coverageAt(image, 0, 0), 255);
    EXPECT_EQ(coverageAt(image, 2, 1), 255);
    EXPECT_EQ(coverageAt(image, 3, 0), 0);
}

TEST(Coverage, ReachesTheImagesLastColumn) {
    const RasterHandle raster = makeRaster();
    addRect(raster.get(), -5, -5, 100, 100);
    const ImageHandle image = filled(raster.get());
    for (int32_t y = 0; y < 40; ++y)
        for (int32_t x = 0; x < 40; ++x)
            ASSERT_EQ(coverageAt(image, x, y), 255) << x << ", " << y;
}

TEST(Coverage, BeyondTheLimitWrapsIntoTheRows) {
    const RasterHandle raster = makeRaster();
    // The right side stands at pixel 0 of row 1, whatever the row.
    addRect(raster.get(), 10, 0, 2048.5, 1);
    const ImageHandle image = filled(raster.get(), 2048, 4);
    EXPECT_EQ(coverageAt(image, 10, 0), 255);
    EXPECT_EQ(coverageAt(image, 11, 0), 0) << "nothing ends row 0";
    EXPECT_EQ(coverageAt(image, 0, 1), 123);
    EXPECT_EQ(coverageAt(image, 1, 1), 0);
    // A row past 2047 is painted from the top.
    LxRaster_Restart(raster.get());
    addRect(raster.get(), 10, 2049, 20, 2050);
    EXPECT_EQ(coverageAt(filled(raster.get(), 64, 4), 15, 1), 255);
}

TEST(Coverage, LosesWhatTheStoreCannotTake) {
    const RasterHandle raster = makeRaster();
    for (int i = 0; i < 8; ++i)
        addRect(raster.get(), 2 + 4 * i, 0, 4 + 4 * i, 2047); // 16376 samples each: 131008
    addRect(raster.get(), 40, 0, 42, 2047);                   // 65 left, all for its right side
    const ImageHandle image = filled(raster.get(), 64, 2048);
    EXPECT_EQ(coverageAt(image, 30, 2046), 255);
    EXPECT_EQ(coverageAt(image, 40, 5), 0);
    EXPECT_EQ(coverageAt(image, 42, 15), 255) << "rows 0 to 15 of a side without its partner";
    EXPECT_EQ(coverageAt(image, 42, 16), 64) << "the 65th sample";
}

TEST(Coverage, AFillLeavesTheEdgesInPlace) {
    const RasterHandle raster = makeRaster();
    addRect(raster.get(), 3.25, 4.5, 17.75, 20.25);
    const ImageHandle first = filled(raster.get());
    EXPECT_EQ(bytesOf(filled(raster.get())), bytesOf(first));
    // Sorting the samples changes nothing.
    const ImageHandle sorted = makeImage(kLxPixelRGBA, 40, 40);
    LxRGBA white = LxRGBA_White;
    LxShader shader = solidShader(white);
    fillCoverage(*raster, *sorted, LxBlend(2, 255), shader, FillMethod::byRule);
    EXPECT_EQ(bytesOf(sorted), bytesOf(first));
    EXPECT_EQ(bytesOf(filled(raster.get())), bytesOf(first));
    addRect(raster.get(), 25, 25, 30, 30);
    EXPECT_EQ(coverageAt(filled(raster.get()), 27, 27), 255);
}

TEST(Coverage, TwoRasterisersShareTheStore) {
    const RasterHandle a = makeRaster(), b = makeRaster(2);
    addRect(a.get(), 3, 3, 10, 10);
    addRect(b.get(), 20, 20, 27, 27);
    const ImageHandle image = filled(a.get());
    EXPECT_EQ(coverageAt(image, 5, 5), 0) << "overwritten";
    EXPECT_EQ(coverageAt(image, 22, 22), 255);
}

TEST(CoverageFill, AsksForColoursInOrderOfPainting) {
    struct Log {
        std::vector<std::array<int32_t, 3>> asked;
    } log;
    LxShader shader = {};
    shader.data = &log;
    shader.color = [](LxColor *out, LxShader *self, int32_t x, int32_t y, int32_t coverage) {
        static_cast<Log *>(self->data)->asked.push_back({x, y, coverage});
        *out = LxColor_RGBA_White;
    };
    const LxBlend blend = LxBlend(2, 255);
    const RasterHandle raster = makeRaster();
    addRect(raster.get(), 1.5, 1, 5, 2.25);
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 10);
    using Asked = std::vector<std::array<int32_t, 3>>;
    LxRaster_Fill(raster.get(), image.get(), &blend, &shader);
    EXPECT_EQ(log.asked, (Asked{{2, 1, 255},
                                {1, 1, 123},
                                {2, 1, 255},
                                {3, 1, 255},
                                {4, 1, 255},
                                {1, 2, 30},
                                {2, 2, 64},
                                {3, 2, 64},
                                {4, 2, 64}}));
    log.asked.clear();
    shader.flags = 1;
    LxRaster_Fill(raster.get(), image.get(), &blend, &shader);
    EXPECT_EQ(log.asked, (Asked{{2, 1, 255}, {1, 1, 123}, {2, 1, 255}, {1, 2, 30}, {2, 2, 64}}));
}

// The main property: whatever the shape, the image, the blend and the shader, the quick way paints what the
// naive one does.
TEST(CoverageFill, PaintsWhatTheNaiveWayPaints) {
    Random random;
    for (int round = 0; round < 1500; ++round) {
        const int32_t width = random.integer(1, 60), height = random.integer(6, 30); // not inside its record
        const ImageHandle expected = makeImage(random.integer(0, 5), width, height, random.coin());
        randomise(random, expected);
        const ImageHandle actual = copyOf(expected), byRule = copyOf(expected);
        const auto randomShape = random.integer(0, 3) == 0 ? randomBlocks : randomPolygon;
        const std::vector<Edge> edges = randomShape(random, random.integer(2, 9), random.coin() ? 60 : 20);
        // The modes and channels that most fills have come often.
        const LxBlend blend = LxBlend_WithChannel(random.coin() ? 2 : random.integer(0, 44),
                                                  random.coin() ? 255 : random.byte(),
                                                  random.coin() ? 6 : random.integer(0, 7));
        LxRGBA solid = {random.byte(), random.byte(), random.byte(), random.byte()};
        LxShader shader = solidShader(solid);
        const std::unique_ptr<LxGradient, void (*)(LxGradient *)> gradient(LxGradient_Create(),
                                                                           LxGradient_Delete);
        if (random.coin()) {
            LxGradient_SetType(gradient.get(), random.integer(0, 6), random.integer(0, 4));
            for (int32_t i = 0; i < 3; ++i)
                LxGradient_AddColor(gradient.get(),
                                    LxColor_RGBA(random.byte(), random.byte(), random.byte(), random.byte()),
                                    i, i * 0.5, random.real(0.1, 0.9));
            LxCreate_GradientShader(&shader, gradient.get());
        }
        const RasterHandle raster = makeRaster();
        for (const Edge &e : edges)
            LxRaster_AddEdge(raster.get(), e.x0, e.y0, e.x1, e.y1);
        raster->nonZero = random.integer(0, 3) != 0;
        const auto seed = random.word();
        std::srand(seed);
        paintNaively(edges, raster->nonZero != 0, expected.get(), blend, shader, raster->bounds);
        std::srand(seed);
        fillCoverage(*raster, *actual, blend, shader, FillMethod::best);
        ASSERT_EQ(bytesOf(actual), bytesOf(expected))
            << "round " << round << " mode " << blend.mode << " type " << LxImage_Type(actual.get());
        std::srand(seed);
        fillCoverage(*raster, *byRule, blend, shader, FillMethod::byRule);
        ASSERT_EQ(bytesOf(byRule), bytesOf(expected)) << "round " << round;
    }
}

// Shapes of a vector or two stand all over images that are windows on larger pictures, at their sides too.
TEST(CoverageFill, PaintsNarrowShapesAsTheNaiveWayDoesAndNothingBeside) {
    Random random;
    constexpr int32_t stride = 4 * 48, rows = 24;
    for (int round = 0; round < 3000; ++round) {
        std::vector<uint8_t> expected(stride * rows);
        for (uint8_t &byte : expected)
            byte = random.byte();
        std::vector<uint8_t> actual = expected;
        const int32_t width = random.integer(14, 44), flipped = random.integer(0, 1);
        const auto windowOn = [&](std::vector<uint8_t> &memory) {
            return ImageHandle(LxImage_CreateEx(kLxPixelRGBA, 0, 0, width, rows - 2,
                                                memory.data() + stride + 8, stride, 0, 0, flipped));
        };
        const auto randomShape = random.coin() ? randomBlocks : randomPolygon;
        std::vector<Edge> edges = randomShape(random, random.integer(2, 6), random.integer(1, 12));
        if (random.integer(0, 5) == 0)
            edges.pop_back(); // open
        const double dx = random.real(-8, width + 4.0), dy = random.real(-4, rows);
        const RasterHandle raster = makeRaster();
        for (Edge &e : edges) {
            e = {e.x0 + dx, e.y0 + dy, e.x1 + dx, e.y1 + dy};
            LxRaster_AddEdge(raster.get(), e.x0, e.y0, e.x1, e.y1);
        }
        raster->nonZero = random.integer(0, 3) != 0;
        LxRGBA solid = {random.byte(), random.byte(), random.byte(),
                        random.coin() ? uint8_t{255} : random.byte()};
        LxShader shader = solidShader(solid);
        const LxBlend blend = LxBlend(2, random.coin() ? 255 : random.byte());
        paintNaively(edges, raster->nonZero != 0, windowOn(expected).get(), blend, shader, raster->bounds);
        fillCoverage(*raster, *windowOn(actual), blend, shader, FillMethod::best);
        ASSERT_EQ(actual, expected) << "round " << round;
    }
}

TEST(CoverageFill, PaintsLargeShapesAsTheNaiveWayDoes) {
    Random random;
    for (int round = 0; round < 12; ++round) {
        const double size = round % 3 == 0 ? 2100 : round % 3 == 1 ? 500 : 2600;
        const std::vector<Edge> edges = randomPolygon(random, random.integer(3, 60), size);
        const ImageHandle expected = makeImage(kLxPixelRGBA, 700, 300);
        const ImageHandle actual = makeImage(kLxPixelRGBA, 700, 300);
        LxRGBA solid = {200, 100, 50, random.byte()};
        LxShader shader = solidShader(solid);
        const RasterHandle raster = makeRaster();
        for (const Edge &e : edges)
            LxRaster_AddEdge(raster.get(), e.x0, e.y0, e.x1, e.y1);
        paintNaively(edges, true, expected.get(), LxBlend(2, 255), shader, raster->bounds);
        fillCoverage(*raster, *actual, LxBlend(2, 255), shader, FillMethod::best);
        ASSERT_TRUE(bytesOf(actual) == bytesOf(expected)) << "round " << round;
    }
}

TEST(CoverageFill, InAnImageInsideItsRecordUsesItsFirstRow) {
    const ImageHandle image = makeImage(kLxPixelA, 4, 4);
    const RasterHandle raster = makeRaster();
    addRect(raster.get(), 1, 1, 3, 3);
    fillSolid(raster.get(), image.get(), LxRGBA_White);
    // Single pixels stand at the first, runs along the first row.
    EXPECT_EQ(bytesOf(image), (std::vector<uint8_t>{255, 0, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(CoverageFill, TakesImagesOverTheCallersMemory) {
    std::vector<uint8_t> memory(400 * 50 + 1);
    const RasterHandle raster = makeRaster();
    addRect(raster.get(), 2, 2, 30, 30);
    // Neither the start nor the rows are aligned.
    const ImageHandle image(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 40, 40, memory.data() + 1, 399, 0, 0, 0));
    fillSolid(raster.get(), image.get(), {9, 8, 7, 255});
    EXPECT_EQ(pixelOf(image, 29, 29).g, 8);
    fillSolid(raster.get(), image.get(), {200, 8, 7, 128});
    EXPECT_GT(pixelOf(image, 29, 29).r, 9);
    // No memory at all.
    const ImageHandle none(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 40, 40, nullptr, 160, 0, 0, 0));
    fillSolid(raster.get(), none.get(), {9, 8, 7, 255});
}
