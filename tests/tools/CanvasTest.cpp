// Drawings by the program with each of its renderers, beside those of the software renderer.

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/PictureDifference.h"
#include "tests/support/PngBytes.h"
#include "tests/support/Program.h"
#include "tools/Canvas.h"
#include "tools/PngFile.h"

using namespace lx::test;
using tool::ImageHandle;

namespace {

const std::string white = "size 160 120\nbackground 255 255 255 255\n";

struct Rgba {
    int r, g, b, a;
    bool operator==(const Rgba &) const = default;
};

void PrintTo(const Rgba &pixel, std::ostream *out) {
    *out << pixel.r << ' ' << pixel.g << ' ' << pixel.b << ' ' << pixel.a;
}

Rgba at(const ImageHandle &picture, int32_t x, int32_t y) {
    const uint8_t *p = lx::rowAddress(*picture, y) + ptrdiff_t{4} * x;
    return {p[0], p[1], p[2], p[3]};
}

class Canvases : public testing::TestWithParam<const char *> {
protected:
    ProgramResult run(const std::string &script, const std::string &renderer) const {
        writeFile(folder / "script.draw", script);
        return runProgram("draw " + (folder / "script.draw").string() + " --renderer " + renderer + " -o " +
                          output());
    }
    std::string output() const { return folder / "out.png"; }

    ImageHandle draw(const std::string &script, const std::string &renderer) const {
        const ProgramResult result = run(script, renderer);
        EXPECT_EQ(result.status, 0) << result.errors;
        return tool::readPng(output());
    }
    ImageHandle draw(const std::string &script) const { return draw(script, GetParam()); }

    void expectTheSoftwarePicture(const std::string &script) const {
        const ImageHandle expected = draw(script, "software");
        const PictureDifference difference = compare(expected.get(), draw(script).get());
        EXPECT_TRUE(difference.isSmall()) << difference.largestInside << " levels inside shapes, "
                                          << difference.largestAtEdges << " at edges";
        EXPECT_LT(difference.share, 0.06);
    }

    // A program without the renderer says so.
    void SetUp() override {
        const ProgramResult result = run(white, GetParam());
        if (result.status == 0)
            return;
        EXPECT_EQ(result.status, 2);
        ASSERT_EQ(result.errors, "oxlume: " + (folder / "script.draw").string() + ":1: --renderer " +
                                     GetParam() + ": this program was built without it\n");
        EXPECT_FALSE(std::filesystem::exists(output()));
        GTEST_SKIP() << "built without " << GetParam();
    }

    TemporaryFolder folder;
};

INSTANTIATE_TEST_SUITE_P(All, Canvases, testing::Values("software", "quartz", "opengl"),
                         [](const auto &parameter) { return std::string(parameter.param); });

} // namespace

TEST_P(Canvases, FillsAreTheSoftwareRenderersButForEdges) {
    expectTheSoftwarePicture(white + "renderMode fill\n"
                                     "fillColor 200 40 40 255\nframe 10 10 60 50\n"
                                     "fillColor 40 40 200 128\npoly 40,30 90,30 60,80\n"
                                     "fillColor 30 140 60 255\nellipse 120 40 25 30\n"
                                     "fillColor 220 160 20 180\nroundFrame 80 75 150 110 9 9\n");
}

TEST_P(Canvases, StrokesAreTheSoftwareRenderersButForEdges) {
    expectTheSoftwarePicture(white + "renderMode stroke\nstrokeStyle mitre\n"
                                     "strokeColor 200 40 40 255\nstrokeWidth 6\n"
                                     "path M 20,20 L 140,30 L 100,100 L 40,90\n"
                                     "strokeColor 20 60 160 255\nstrokeWidth 4\ncircle 80 60 22\n");
}

TEST_P(Canvases, MatricesTurnAsTheSoftwareRenderersDo) {
    expectTheSoftwarePicture(white + "renderMode fill\nmatrixScale 1.5 1\nmatrixRotateDeg 20\n"
                                     "matrixTranslate 70 20\nfillColor 90 60 20 255\nframe 0 0 40 50\n");
}

TEST_P(Canvases, ImagesStandUpright) {
    // Two rows of three pixels.
    writeFile(folder / "a.png",
              pngFile(3, 2, 8, 2,
                      {"\x01\x02\x03\x11\x12\x13\x21\x22\x23", "\x31\x32\x33\x41\x42\x43\x51\x52\x53"}));
    const ImageHandle picture = draw(white + "image a.png 20 30\n");
    EXPECT_EQ(at(picture, 20, 30), (Rgba{0x01, 0x02, 0x03, 255}));
    EXPECT_EQ(at(picture, 22, 30), (Rgba{0x21, 0x22, 0x23, 255}));
    EXPECT_EQ(at(picture, 20, 31), (Rgba{0x31, 0x32, 0x33, 255}));
    EXPECT_EQ(at(picture, 22, 31), (Rgba{0x51, 0x52, 0x53, 255}));
    EXPECT_EQ(at(picture, 23, 31), (Rgba{255, 255, 255, 255}));
    EXPECT_EQ(at(picture, 20, 32), (Rgba{255, 255, 255, 255}));
}

// Software drawing blends with the black of transparent pixels; the others have no such colour.
TEST_P(Canvases, TransparentPicturesHavePlainColours) {
    if (std::strcmp(GetParam(), "software") == 0)
        return;
    const ImageHandle picture =
        draw("size 40 40\nrenderMode fill\nfillColor 200 100 50 128\nframe 5 5 25 25\n"
             "fillColor 10 20 250 255\nframe 15 15 35 35\n");
    EXPECT_EQ(at(picture, 2, 2), (Rgba{0, 0, 0, 0}));
    EXPECT_EQ(at(picture, 20, 20), (Rgba{10, 20, 250, 255}));
    const Rgba half = at(picture, 10, 10);
    EXPECT_EQ(half.a, 128);
    EXPECT_NEAR(half.r, 200, 1) << "of 128 levels";
    EXPECT_NEAR(half.g, 100, 1);
    EXPECT_NEAR(half.b, 50, 1);
}

TEST_P(Canvases, OnlyQuartzDrawsText) {
    const ImageHandle picture = draw(white + "textColor 0 0 0 255\ntextWithLength 20 60 Sheen 5\n");
    int ink = 0, inkBelow = 0;
    for (int32_t y = 0; y < 120; ++y)
        for (int32_t x = 0; x < 160; ++x) {
            ink += 255 - at(picture, x, y).g;
            inkBelow += y >= 61 || x < 19 || x > 60 ? 255 - at(picture, x, y).g : 0;
        }
    EXPECT_EQ(ink > 255 * 20, std::strcmp(GetParam(), "quartz") == 0);
    EXPECT_EQ(inkBelow, 0) << "it stands on its baseline";
}

TEST_P(Canvases, DrawSvgFiles) {
    writeFile(folder / "a.svg",
              "<svg xmlns='http://www.w3.org/2000/svg' width='60' height='40'>"
              "<rect x='10' y='5' width='20' height='30' fill='#c86432' fill-opacity='0.5'/>"
              "<rect x='40' y='5' width='10' height='10' fill='#0a14fa'/></svg>");
    const ProgramResult result =
        runProgram("svg " + (folder / "a.svg").string() + " --renderer " + GetParam() + " -o " + output());
    ASSERT_EQ(result.status, 0) << result.errors;
    const ImageHandle picture = tool::readPng(output());
    EXPECT_EQ(at(picture, 2, 2).a, 0);
    EXPECT_EQ(at(picture, 45, 10), (Rgba{10, 20, 250, 255}));
    EXPECT_EQ(at(picture, 45, 30).a, 0) << "the square is at the top";
    const Rgba half = at(picture, 20, 30);
    EXPECT_NEAR(half.a, 128, 1);
    EXPECT_NEAR(half.r, 200, 2);
    EXPECT_NEAR(half.g, 100, 2);
    EXPECT_NEAR(half.b, 50, 2);
}

TEST(CanvasOption, NamesTheRenderers) {
    const ProgramResult result = runProgram("draw a.draw --renderer pen -o out.png");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "oxlume: --renderer: pen not in {software,quartz,opengl}\n");
}

TEST(CanvasOption, AMachineWithoutOpenGLIsToldInOneLine) {
    const TemporaryFolder folder;
    const std::string script = folder / "script.draw", output = folder / "out.png";
    writeFile(script, white);
    // The loader of EGL finds no driver then.
    setenv("__EGL_VENDOR_LIBRARY_FILENAMES", "/dev/null", 1);
    const ProgramResult result = runProgram("draw " + script + " --renderer opengl -o " + output);
    unsetenv("__EGL_VENDOR_LIBRARY_FILENAMES");
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(result.errors.starts_with("oxlume: " + script + ":1: --renderer opengl: ")) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1);
    EXPECT_FALSE(std::filesystem::exists(output));
}

TEST(Canvas, ColoursAreDividedByAlpha) {
    const ImageHandle picture = tool::makePicture(4, 1);
    uint8_t *row = lx::rowAddress(*picture, 0);
    const std::vector<uint8_t> premultiplied = {100, 50, 0, 128, 9, 8, 7, 0, 9, 8, 7, 255, 200, 3, 1, 4};
    std::copy(premultiplied.begin(), premultiplied.end(), row);
    tool::divideByAlpha(*picture);
    // 100 * 255 / 128 = 199.2, 50 * 255 / 128 = 99.6; 3 * 255 / 4 = 191.25, 255 / 4 = 63.75.
    EXPECT_EQ(std::vector<uint8_t>(row, row + 16),
              (std::vector<uint8_t>{199, 100, 0, 128, 9, 8, 7, 0, 9, 8, 7, 255, 255, 191, 64, 4}));
}
