// The software renderer, through contexts on images.

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>

#include <oxlume/oxlume.h>

#include "foundation/Memory.h"
#include "gc/Context.h"
#include "tests/gc/renderers/NaiveRaster.h"
#include "tests/gc/renderers/RasterHandle.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

struct DeleteContext {
    void operator()(LxGC *gc) const { LxGC_Delete(gc); }
};
using ContextHandle = std::unique_ptr<LxGC, DeleteContext>;

struct DeletePath {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using PathHandle = std::unique_ptr<LxPath, DeletePath>;

ContextHandle contextOn(const ImageHandle &image) {
    ContextHandle gc(LxGC_CreateWithImage(image.get(), LxImage_RectD(image.get())));
    LxGC_SetRenderMode(gc.get(), kLxRenderFill);
    LxGC_SetFillColor(gc.get(), LxColor_RGBA_White);
    LxGC_SetStrokeColor(gc.get(), LxColor_RGBA_White);
    return gc;
}

PathHandle randomPath(Random &random) {
    PathHandle path(LxPath_Create());
    for (int i = random.integer(1, 3); i > 0; --i) {
        const auto p = [&] { return random.real(-20, 80); };
        LxPath_AddMoveTo(path.get(), p(), p());
        for (int k = random.integer(1, 5); k > 0; --k) {
            switch (random.integer(0, 2)) {
            case 0:
                LxPath_AddLineTo(path.get(), p(), p());
                break;
            case 1:
                LxPath_AddQCurveTo(path.get(), p(), p(), p(), p());
                break;
            default:
                LxPath_AddCurveTo(path.get(), p(), p(), p(), p(), p(), p());
                break;
            }
        }
        if (random.integer(0, 4) != 0)
            LxPath_AddClose(path.get());
    }
    return path;
}

struct DeleteGradient {
    void operator()(LxGradient *gradient) const { LxGradient_Delete(gradient); }
};
using GradientHandle = std::unique_ptr<LxGradient, DeleteGradient>;

// What a fill or a stroke is painted with.
struct Ink {
    LxColor color;
    GradientHandle gradient; // or null
    LxBlend blend;
};

Ink randomInk(Random &random) {
    Ink ink = {LxColor_RGBA(random.byte(), random.byte(), random.byte(), random.byte()), nullptr,
               LxBlend_WithChannel(random.coin() ? 2 : random.integer(0, 44),
                                   random.coin() ? 255 : random.byte(),
                                   random.coin() ? 6 : random.integer(0, 7))};
    if (random.integer(0, 2) == 0) {
        ink.gradient.reset(LxGradient_Create());
        LxGradient_SetType(ink.gradient.get(), random.integer(0, 6), random.integer(0, 4));
        for (int32_t i = 0; i < 3; ++i)
            LxGradient_AddColor(ink.gradient.get(),
                                LxColor_RGBA(random.byte(), random.byte(), random.byte(), random.byte()), i,
                                i * 0.5, random.real(0.1, 0.9));
    }
    return ink;
}

// A shape whose segments come from a walk, and their bounds.
struct WalkedShape {
    NaiveShape shape;
    double bounds[4] = {1e6, 1e6, -1e6, -1e6};

    explicit WalkedShape(const LxPath *path) {
        const std::unique_ptr<LxPathIterator, void (*)(LxPathIterator *)> iterator(LxPath_CreateIterator(),
                                                                                   LxPath_DeleteIterator);
        const LxPathSegmentCallback onSegment = [](LxPathIterator *self, const LxPointD *a,
                                                   const LxPointD *b) {
            if (a->x != b->x || a->y != b->y)
                static_cast<WalkedShape *>(LxPathIterator_User(self))->add(*a, *b);
        };
        LxPathIterator_SetCallback(iterator.get(), kLxPathOnSegment,
                                   reinterpret_cast<LxPathCallback>(onSegment));
        LxPath_IterateConst(path, iterator.get(), nullptr, this, nullptr);
    }

private:
    void add(const LxPointD &a, const LxPointD &b) {
        bounds[0] = std::min({bounds[0], a.x, b.x});
        bounds[1] = std::min({bounds[1], a.y, b.y});
        bounds[2] = std::max({bounds[2], a.x, b.x});
        bounds[3] = std::max({bounds[3], a.y, b.y});
        shape.addEdge(a.x, a.y, b.x, b.y);
    }
};

// Paints a path of the image's own coordinates.
void paintNaively(const LxPath *path, LxImage *image, const Ink &ink) {
    const WalkedShape walked(path);
    const LxPixelBlendFunction kernel = LxBlend_SelectPixelBlendFunction(LxImage_Type(image), kLxPixelRGBA);
    if (kernel == nullptr || walked.shape.samples.empty())
        return;
    LxShader shader = {};
    if (ink.gradient != nullptr) {
        LxCreate_GradientShader(&shader, ink.gradient.get());
        shader.begin(&shader, walked.bounds);
    }
    walked.shape.plotAll(true, LxImage_w(image), [&](int32_t x, int32_t y, int32_t coverage) {
        void *pixel = LxImage_Pointer(image, x, y);
        if (pixel == nullptr)
            return;
        LxColor color = ink.color;
        if (ink.gradient != nullptr)
            shader.color(&color, &shader, x, y, coverage);
        else
            color.content.rgba.a = static_cast<uint8_t>((color.content.rgba.a + 1) * coverage / 256);
        kernel(&ink.blend, pixel, pixel, color.content.bytes);
    });
}

} // namespace

TEST(SoftwareRenderer, FillsByTheMatrixAndTheClip) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 40, 40);
    const ContextHandle gc = contextOn(image);
    LxGC_MatrixTranslate(gc.get(), 10, 5);
    LxGC_SetClipRectD(gc.get(), 0, 0, 14, 40);
    LxGC_Frame(gc.get(), 0.5, 0, 10, 10);
    EXPECT_EQ(coverageAt(image, 9, 8), 0);
    EXPECT_EQ(coverageAt(image, 10, 8), 123);
    EXPECT_EQ(coverageAt(image, 13, 8), 255);
    EXPECT_EQ(coverageAt(image, 14, 8), 0);
    EXPECT_EQ(coverageAt(image, 11, 4), 0);
    EXPECT_EQ(coverageAt(image, 11, 14), 255);
    EXPECT_EQ(coverageAt(image, 11, 15), 0);
}

TEST(SoftwareRenderer, FillsThenStrokes) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 40, 40);
    const ContextHandle gc = contextOn(image);
    LxGC_SetRenderMode(gc.get(), kLxRenderFill | kLxRenderStroke);
    LxGC_SetFillColor(gc.get(), LxColor_RGBA(200, 0, 0, 255));
    LxGC_SetStrokeColor(gc.get(), LxColor_RGBA(0, 0, 200, 255));
    LxGC_SetStrokeWidth(gc.get(), 4);
    LxGC_Frame(gc.get(), 10, 10, 30, 30);
    EXPECT_EQ(pixelOf(image, 20, 20).r, 200);
    EXPECT_EQ(pixelOf(image, 9, 20).b, 200);
    EXPECT_EQ(pixelOf(image, 11, 20).b, 200) << "the stroke lies over the fill";
    EXPECT_EQ(pixelOf(image, 11, 20).r, 0);
    EXPECT_EQ(pixelOf(image, 7, 20).a, 0);
}

TEST(SoftwareRenderer, DrawsNothingWithoutAMode) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 40, 40);
    const ContextHandle gc = contextOn(image);
    LxGC_SetRenderMode(gc.get(), 4);
    LxGC_Frame(gc.get(), 10, 10, 30, 30);
    EXPECT_EQ(bytesOf(image), bytesOf(makeImage(kLxPixelRGBA, 40, 40)));
}

TEST(SoftwareRenderer, TakesTheBytesOfAnyColour) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 40, 40);
    const ContextHandle gc = contextOn(image);
    LxGC_SetFillColor(gc.get(), LxColor_A(200)); // r 200, and alpha 0
    LxGC_Frame(gc.get(), 10, 10, 30, 30);
    EXPECT_EQ(pixelOf(image, 20, 20).a, 0);
    LxGC_SetFillColor(gc.get(), LxColor_L(static_cast<int32_t>(0xFF0000C8)));
    LxGC_Frame(gc.get(), 10, 10, 30, 30);
    EXPECT_EQ(pixelOf(image, 20, 20).a, 255);
}

TEST(SoftwareRenderer, AGradientGoesBeforeTheColour) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 40, 40);
    const ContextHandle gc = contextOn(image);
    const GradientHandle gradient(LxGradient_Create());
    LxGradient_AddColor(gradient.get(), LxColor_RGBA(0, 0, 0, 255), 0, 0, 0.5);
    LxGradient_AddColor(gradient.get(), LxColor_RGBA(0, 200, 0, 255), 1, 1, 0.5);
    LxGC_SetFillGradient(gc.get(), gradient.get());
    LxGC_Frame(gc.get(), 10, 10, 30, 30);
    EXPECT_EQ(pixelOf(image, 20, 10).g, 0);
    EXPECT_EQ(pixelOf(image, 20, 20).g, 100);
    // Down 24 rows now, stroke and all.
    LxGC_SetFillGradient(gc.get(), nullptr);
    LxGC_SetStrokeGradient(gc.get(), gradient.get());
    LxGC_SetStrokeWidth(gc.get(), 4);
    LxGC_SetRenderMode(gc.get(), kLxRenderStroke);
    LxGC_Frame(gc.get(), 10, 10, 30, 30);
    EXPECT_EQ(pixelOf(image, 20, 8).g, 0);
    EXPECT_EQ(pixelOf(image, 9, 20).g, 100);
}

TEST(SoftwareRenderer, PixelsFillsAndImages) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 20, 20);
    const ContextHandle gc = contextOn(image);
    LxGC_SetStrokeColor(gc.get(), LxColor_RGBA(1, 2, 3, 255));
    LxGC_LineL(gc.get(), 3, 4, 3, 4);
    EXPECT_EQ(pixelOf(image, 3, 4).g, 2);
    LxGC_SetClipRectD(gc.get(), 0, 0, 5, 5);
    LxGC_Fill(gc.get(), LxColor_RGBA(9, 8, 7, 6));
    EXPECT_EQ(pixelOf(image, 19, 19).r, 9) << "whatever the clip";
    LxGC_Clear(gc.get());
    EXPECT_EQ(bytesOf(image), bytesOf(makeImage(kLxPixelRGBA, 20, 20)));

    const ImageHandle stamp(LxImage_Create(kLxPixelRGBA, 100, 100, 105, 105, 1, 0));
    LxImage_Fill(stamp.get(), LxColor_RGBA(50, 60, 70, 255));
    LxGC_MatrixTranslate(gc.get(), 2.6, 0);
    LxGC_DrawImageAt(gc.get(), 4, 7, stamp.get());
    EXPECT_EQ(coverageAt(image, 6, 7), 0);
    EXPECT_EQ(pixelOf(image, 7, 7).g, 60) << "the place is rounded";
    EXPECT_EQ(coverageAt(image, 11, 11), 255);
    EXPECT_EQ(coverageAt(image, 12, 11), 0);
    EXPECT_EQ(LxImage_x(stamp.get()), 100) << "and the image stands where it stood";
    EXPECT_EQ(LxImage_MaxY(stamp.get()), 105);

    const ImageHandle mask(LxImage_Create(kLxPixelA, 0, 0, 20, 20, 1, 0));
    LxGC_Clear(gc.get());
    *static_cast<uint8_t *>(LxImage_Pointer(mask.get(), 8, 8)) = 255;
    LxGC_DrawImageWithMask(gc.get(), 4, 7, stamp.get(), mask.get());
    EXPECT_EQ(coverageAt(image, 8, 8), 255);
    EXPECT_EQ(coverageAt(image, 7, 8), 0);
    LxGC_DrawImageClipped(gc.get(), 4, 7, stamp.get(), LxRectL{7, 7, 8, 9});
    EXPECT_EQ(coverageAt(image, 7, 8), 255);
    EXPECT_EQ(coverageAt(image, 7, 9), 0);
    LxGC_DrawImageAt(gc.get(), 0, 0, nullptr);
    LxGC_Sync(gc.get());
    LxGC_Flush(gc.get());
}

TEST(SoftwareRenderer, EveryPixelReadsAsWhite) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 4, 4);
    const ContextHandle gc = contextOn(image);
    const LxColor color = gc->renderers[0]->pixelColor(gc->renderers[0]);
    EXPECT_EQ(color.type, kLxPixelRGBA);
    EXPECT_EQ(color.content.l, -1);
}

TEST(SoftwareRenderer, WithoutATargetDrawsNothing) {
    const ContextHandle gc(LxGC_CreateWithRect(LxRectD{0, 0, 50, 50}, LxRectD{0, 0, 50, 50}));
    if (LxGC_AddRenderer(gc.get(), 0, nullptr, nullptr) == 0)
        return;
    LxGC_SetRenderMode(gc.get(), 3);
    LxGC_Frame(gc.get(), 5, 5, 20, 20);
    LxGC_LineL(gc.get(), 5, 5, 20, 20);
    LxGC_Fill(gc.get(), LxColor_RGBA_White);
    const ImageHandle stamp = makeImage(kLxPixelRGBA, 5, 5);
    LxGC_DrawImage(gc.get(), stamp.get());
}

TEST(SoftwareRenderer, WithoutMemoryIsNotMade) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 20, 20);
    static int allowed;
    const SystemAllocator failing = {
        [](size_t size) { return allowed-- > 0 ? std::malloc(size) : nullptr; },
        [](size_t n, size_t size) { return allowed-- > 0 ? std::calloc(n, size) : nullptr; },
        [](void *, size_t) -> void * { return nullptr; }};
    const int32_t before = allocationCount();
    setSystemAllocator(&failing);
    for (int n = 0; n < 4; ++n) {
        allowed = n;
        EXPECT_EQ(LxGC_CreateWithImage(image.get(), LxRectD{0, 0, 20, 20}), nullptr) << n;
    }
    setSystemAllocator(nullptr);
    EXPECT_EQ(allocationCount(), before);
}

TEST(SoftwareRenderer, PaintsWhatThePathFunctionsAndTheNaiveRasterGive) {
    Random random;
    for (int round = 0; round < 600; ++round) {
        // Of all types that have kernels and one that has none; not so small that it lies in its record.
        const int32_t type = random.coin() ? 2 : random.integer(0, 3);
        const int32_t width = random.integer(1, 70), height = random.integer(6, 70);
        const ImageHandle actual = makeImage(type, width, height, random.coin());
        auto *data = static_cast<uint8_t *>(LxImage_Data(actual.get()));
        for (int32_t i = 0; i < LxImage_DataSize(actual.get()); ++i)
            data[i] = random.byte();
        const ImageHandle expected(LxImage_Copy(actual.get()));
        const ContextHandle gc = contextOn(actual);
        if (random.integer(0, 3) == 0) // A context may reach beyond its image.
            LxGC_SetBoundsRectD(gc.get(), -20, -20, 90, 90);
        if (random.coin())
            LxGC_SetClipRectD(gc.get(), random.real(-20, 30), random.real(-20, 30), random.real(30, 90),
                              random.real(30, 90));
        LxGC_MatrixRotate(gc.get(), random.real(-1, 1));
        switch (random.integer(0, 7)) {
        case 0: // Narrow shapes have code of their own,
        case 1:
            LxGC_MatrixScale(gc.get(), 0.1, 0.4);
            break;
        case 2: // and open ones are not clipped, so that large ones wrap.
            LxGC_MatrixScale(gc.get(), random.real(1, 60), random.real(1, 60));
            break;
        default:
            break;
        }
        LxGC_MatrixTranslate(gc.get(), random.real(-20, 20), random.real(-20, 20));
        const Ink fill = randomInk(random), stroke = randomInk(random);
        LxGC_SetFillColor(gc.get(), fill.color);
        LxGC_SetFillGradient(gc.get(), fill.gradient.get());
        LxGC_SetFillBlend(gc.get(), fill.blend);
        LxGC_SetStrokeColor(gc.get(), stroke.color);
        LxGC_SetStrokeGradient(gc.get(), stroke.gradient.get());
        LxGC_SetStrokeBlend(gc.get(), stroke.blend);
        const double strokeWidth = random.real(0, 9);
        const int32_t style = random.integer(0, 7) * 16 + random.integer(0, 1) * 128;
        LxGC_SetStrokeWidth(gc.get(), strokeWidth);
        LxGC_SetStrokeStyle(gc.get(), style);
        const uint32_t mode = static_cast<uint32_t>(random.integer(0, 3));
        LxGC_SetRenderMode(gc.get(), mode);
        const PathHandle path = randomPath(random);
        const auto seed = random.word();
        std::srand(seed);
        LxGC_Path(gc.get(), path.get());

        const LxMatrix *matrix = LxGC_Matrix(gc.get());
        const LxRectD *clip = LxGC_ClipRectPtr(gc.get());
        std::srand(seed);
        if ((mode & 1) != 0)
            paintNaively(PathHandle(LxPath_CreateTransformed(path.get(), matrix, clip)).get(), expected.get(),
                         fill);
        if ((mode & 2) != 0)
            paintNaively(
                PathHandle(LxPath_CreateOutlined(path.get(), matrix, clip, strokeWidth, style)).get(),
                expected.get(), stroke);
        ASSERT_EQ(bytesOf(actual), bytesOf(expected))
            << "round " << round << " mode " << mode << " type " << type;
    }
}
