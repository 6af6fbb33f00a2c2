// Golden pictures of what contexts draw on images.

#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include <oxlume/oxlume.h>

#include "tests/support/Golden.h"

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

struct DeleteGradient {
    void operator()(LxGradient *gradient) const { LxGradient_Delete(gradient); }
};
using GradientHandle = std::unique_ptr<LxGradient, DeleteGradient>;

const LxColor ink = LxColor_RGBA(40, 70, 130, 255);
const LxColor glaze = LxColor_RGBA(230, 120, 20, 150);

// A picture that is filled white, and a context that fills in ink.
struct Sheet {
    ImageHandle image;
    ContextHandle gc;

    Sheet(int32_t width, int32_t height, int32_t type = kLxPixelRGBA, bool flipped = false)
        : image(makeImage(type, width, height, flipped)),
          gc(LxGC_CreateWithImage(image.get(), LxImage_RectD(image.get()))) {
        // All bytes 255, in every type.
        LxImage_Fill(image.get(), LxColor_L(-1));
        LxGC_SetRenderMode(gc.get(), kLxRenderFill);
        LxGC_SetFillColor(gc.get(), ink);
        LxGC_SetStrokeColor(gc.get(), ink);
    }
};

PathHandle star(double cx, double cy, double radius, int points, int step) {
    PathHandle path(LxPath_Create());
    for (int i = 0; i < points; ++i) {
        const double angle = 2 * std::numbers::pi * i * step / points - std::numbers::pi / 2;
        const double x = cx + radius * std::cos(angle), y = cy + radius * std::sin(angle);
        if (i == 0)
            LxPath_AddMoveTo(path.get(), x, y);
        else
            LxPath_AddLineTo(path.get(), x, y);
    }
    LxPath_AddClose(path.get());
    return path;
}

PathHandle zigzag(double x, double y, bool closed) {
    PathHandle path(LxPath_Create());
    LxPath_AddMoveTo(path.get(), x, y + 30);
    LxPath_AddLineTo(path.get(), x + 15, y);
    LxPath_AddLineTo(path.get(), x + 30, y + 30);
    LxPath_AddCurveTo(path.get(), x + 40, y - 20, x + 50, y + 60, x + 60, y + 10);
    if (closed)
        LxPath_AddClose(path.get());
    return path;
}

GradientHandle rainbow(int32_t type, int32_t curve) {
    GradientHandle gradient(LxGradient_Create());
    LxGradient_SetType(gradient.get(), type, curve);
    LxGradient_AddColor(gradient.get(), LxColor_RGBA(220, 30, 30, 255), 0, 0.1, 0.5);
    LxGradient_AddColor(gradient.get(), LxColor_RGBA(250, 220, 60, 255), 1, 0.4, 0.3);
    LxGradient_AddColor(gradient.get(), LxColor_RGBA(30, 90, 200, 60), 2, 0.9, 0.5);
    return gradient;
}

// Some shapes that every kind of target gets.
void drawSample(LxGC *gc) {
    LxGC_Circle(gc, 24, 24, 18.3);
    LxGC_SetFillColor(gc, glaze);
    LxGC_RoundFrame(gc, 20.25, 16.5, 58.75, 40.25, 7, 7);
    LxGC_SetRenderMode(gc, kLxRenderStroke);
    LxGC_SetStrokeWidth(gc, 2.5);
    LxGC_Line(gc, 4, 44, 60, 4);
}

} // namespace

TEST(Golden, RectanglesAtQuarterPixels) {
    const Sheet sheet(60, 60);
    for (int i = 0; i < 4; ++i)
        for (int k = 0; k < 4; ++k)
            LxGC_Frame(sheet.gc.get(), 3 + 14 * i + i * 0.25, 3 + 14 * k + k * 0.25, 11 + 14 * i + k * 0.25,
                       11 + 14 * k + i * 0.25);
    expectGolden(sheet.image, "raster/rectangles");
}

TEST(Golden, CirclesAndStars) {
    const Sheet sheet(200, 140);
    LxGC *gc = sheet.gc.get();
    LxGC_Circle(gc, 36, 36, 30);
    LxGC_Ellipse(gc, 100.5, 36.25, 26, 11);
    LxGC_Circle(gc, 150, 20, 3.3);
    LxGC_Circle(gc, 164, 20, 0.7);
    LxGC_Path(gc, star(160, 60, 30, 5, 2).get());
    LxGC_SetFillColor(gc, glaze);
    LxGC_Circle(gc, 60, 56, 30);
    LxGC_Path(gc, star(60, 100, 36, 7, 3).get());
    LxGC_Path(gc, star(140, 96, 40, 41, 17).get());
    expectGolden(sheet.image, "raster/shapes");
}

TEST(Golden, StrokesInAllStyles) {
    const Sheet sheet(320, 200);
    LxGC *gc = sheet.gc.get();
    LxGC_SetRenderMode(gc, kLxRenderStroke);
    const int32_t styles[] = {0, 16, 64, 128};
    const double widths[] = {1, 3.5, 9};
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 4; ++k) {
            LxGC_SetStrokeWidth(gc, widths[i]);
            LxGC_SetStrokeStyle(gc, styles[k]);
            LxGC_SetStrokeColor(gc, k % 2 == 0 ? ink : glaze);
            LxGC_Path(gc, zigzag(12 + 78 * k, 12 + 66 * i, i == 1).get());
        }
    expectGolden(sheet.image, "raster/strokes");
}

TEST(Golden, ClippedOnAllSides) {
    const Sheet sheet(120, 120);
    LxGC *gc = sheet.gc.get();
    LxGC_SetClipRectD(gc, 30.5, 30.25, 89.75, 90);
    LxGC_Path(gc, star(60, 60, 55, 9, 4).get());
    LxGC_SetFillColor(gc, glaze);
    for (const double x : {30.0, 90.0})
        for (const double y : {30.0, 90.0})
            LxGC_Circle(gc, x, y, 18);
    LxGC_SetRenderMode(gc, kLxRenderStroke);
    LxGC_SetStrokeWidth(gc, 5);
    LxGC_Circle(gc, 60, 60, 38);
    LxGC_SetClipRectD(gc, 0, 0, 120, 120);
    LxGC_SetStrokeWidth(gc, 3);
    LxGC_Circle(gc, 60, 60, 75); // over the image's own corners
    expectGolden(sheet.image, "raster/clipped");
}

TEST(Golden, GradientsOfAllTypesAndCurves) {
    const Sheet sheet(300, 250);
    for (int32_t type = 0; type < 6; ++type)
        for (int32_t curve = 0; curve < 5; ++curve) {
            const GradientHandle gradient = rainbow(type, curve);
            LxGC_SetFillGradient(sheet.gc.get(), gradient.get());
            const double x = 5 + 50 * type, y = 5 + 50 * curve;
            if (curve % 2 == 0)
                LxGC_Frame(sheet.gc.get(), x, y, x + 40.5, y + 33.25);
            else
                LxGC_Ellipse(sheet.gc.get(), x + 20, y + 20, 20.5, 18);
        }
    expectGolden(sheet.image, "raster/gradients");
}

TEST(Golden, EveryTypeOfTarget) {
    const std::pair<int32_t, const char *> targets[] = {{kLxPixelA, "raster/target-a"},
                                                        {kLxPixelRGB, "raster/target-rgb"},
                                                        {kLxPixelRGBA, "raster/target-rgba"}};
    for (const auto &[type, name] : targets) {
        const Sheet sheet(64, 48, type);
        drawSample(sheet.gc.get());
        expectGolden(sheet.image, name);
        const Sheet flipped(64, 48, type, true);
        drawSample(flipped.gc.get());
        EXPECT_TRUE(samePictures(flipped.image.get(), sheet.image.get())) << name;
    }
    for (const int32_t type : {int32_t{kLxPixelRGBAPremultiplied}, int32_t{kLxPixelF}, int32_t{kLxPixelL}}) {
        const Sheet sheet(64, 48, type), untouched(64, 48, type);
        drawSample(sheet.gc.get());
        EXPECT_TRUE(samePictures(sheet.image.get(), untouched.image.get())) << "no kernel for type " << type;
    }
}

TEST(Golden, SeveralBlends) {
    const Sheet sheet(256, 96);
    LxGC *gc = sheet.gc.get();
    const int32_t modes[] = {2, 1, 3, 8, 9, 10, 14, 16, 19, 20, 21, 24, 25, 26, 29, 32};
    for (int i = 0; i < 16; ++i) {
        const double x = 32 * (i % 8), y = 48 * (i / 8);
        LxGC_SetFillBlend(gc, LxBlend(2, 255));
        const GradientHandle back = rainbow(kLxGradientDown, 0);
        LxGC_SetFillGradient(gc, back.get());
        LxGC_Frame(gc, x + 2, y + 2, x + 22, y + 46);
        LxGC_SetFillGradient(gc, nullptr);
        LxGC_SetFillColor(gc, LxColor_RGBA(90, 160, 70, 220));
        LxGC_SetFillBlend(gc, LxBlend(modes[i], 230));
        LxGC_Circle(gc, x + 18, y + 24, 12.5);
    }
    expectGolden(sheet.image, "raster/blends");
}
