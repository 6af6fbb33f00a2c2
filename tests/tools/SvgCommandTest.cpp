#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "tests/tools/SvgProgram.h"

using namespace lx::test;

namespace {

// The lower half of a drawing of 8 by 8, which comes out as the upper one: y points upwards.
const char *const lowerHalf = "<svg viewBox='0 0 8 8'><path fill='#ff0000' d='M0 4H8V8H0V4Z'/></svg>";

class SvgCommand : public SvgProgram {};

} // namespace

TEST_F(SvgCommand, DrawsAtTheFilesOwnSize) {
    const ProgramResult result = draw(lowerHalf);
    EXPECT_EQ(result.status, 0) << result.errors;
    const tool::ImageHandle image = picture();
    EXPECT_EQ(LxImage_w(image.get()), 8);
    EXPECT_EQ(LxImage_h(image.get()), 8);
    EXPECT_EQ(at(image, 4, 1).content.rgba.r, 255);
    EXPECT_EQ(at(image, 4, 1).content.rgba.a, 255);
    EXPECT_EQ(at(image, 4, 6).content.rgba.a, 0);
}

TEST_F(SvgCommand, DrawsAtTheSizeAndOnTheBackgroundAskedFor) {
    const ProgramResult result = draw(lowerHalf, "--size 40x20 --background 0,0,255");
    EXPECT_EQ(result.status, 0) << result.errors;
    const tool::ImageHandle image = picture();
    EXPECT_EQ(LxImage_w(image.get()), 40);
    EXPECT_EQ(LxImage_h(image.get()), 20);
    EXPECT_EQ(at(image, 20, 5).content.rgba.r, 255);
    EXPECT_EQ(at(image, 20, 15).content.rgba.b, 255);
    EXPECT_EQ(at(image, 20, 15).content.rgba.r, 0);
}

TEST_F(SvgCommand, RefusesWhatItCannotRead) {
    const ProgramResult result = draw("<svg");
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.errors.find("in.svg: cannot be read as XML"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "out.png"));
}

TEST_F(SvgCommand, RefusesBadOptions) {
    for (const char *options : {"--size 40", "--size 0x5", "--size 40x4000", "--size 40x20x", "--size x",
                                "--background 1,2", "--background 1,2,256", "--background 1,2,3,4,5"}) {
        const ProgramResult result = draw(lowerHalf, options);
        EXPECT_EQ(result.status, 2) << options;
        EXPECT_FALSE(std::filesystem::exists(folder_ / "out.png"));
    }
}

// ---- Whole drawings ----

TEST_F(SvgCommand, DrawsBasicShapes) {
    const auto image = pictureOf("<rect x='1' y='1' width='4' height='4' fill='red'/>"
                                 "<circle cx='12' cy='4' r='3' fill='#0f0'/>"
                                 "<ellipse cx='4' cy='12' rx='3' ry='2' fill='rgb(0,0,255)'/>"
                                 "<polygon points='9,9 15,9 15,15 9,15' fill='white'/>");
    expectPixel(image, 0, 0, {});
    expectPixel(image, 1, 1, rgba(255, 0, 0));
    expectPixel(image, 4, 4, rgba(255, 0, 0));
    expectPixel(image, 5, 5, {});
    expectPixel(image, 12, 4, rgba(0, 255, 0));
    EXPECT_LT(at(image, 9, 1).content.rgba.a, 8); // of which the circle has little: its corner is 2.83 away
    expectPixel(image, 4, 12, rgba(0, 0, 255));
    expectPixel(image, 4, 9, {});
    expectPixel(image, 12, 12, rgba(255, 255, 255));
}

TEST_F(SvgCommand, DrawsPathsWithAllKindsOfCommands) {
    // A square by relative commands, a half circle by an arc, one more square after a repeated pair.
    const auto image =
        pictureOf("<path fill='red' d='m1 1h4v4h-4z'/><path fill='red' d='M8 4A3 3 0 0 1 14 4Z'/>"
                  "<path fill='red' d='M1,9 5 9 5,13 1,13z m8 0 4-0 0 4-4 0'/>");
    expectPixel(image, 3, 3, rgba(255, 0, 0));
    expectPixel(image, 11, 2, rgba(255, 0, 0)); // sweeping to positive angles, the arc lies above
    expectPixel(image, 11, 5, {});
    expectPixel(image, 2, 11, rgba(255, 0, 0));
    expectPixel(image, 11, 11, rgba(255, 0, 0));
    expectPixel(image, 7, 11, {});
}

TEST_F(SvgCommand, TransformsShapes) {
    // (1, 1) to (3, 3), doubled, then moved: (2, 6) to (6, 10). A quarter turn takes (x, y) to (-y, x).
    const auto image =
        pictureOf("<g transform='translate(0,4) scale(2)'><rect x='1' y='1' width='2' height='2'/></g>"
                  "<rect width='2' height='6' fill='red' transform='translate(15 1) rotate(90)'/>");
    expectPixel(image, 2, 6, rgba(0, 0, 0));
    expectPixel(image, 5, 9, rgba(0, 0, 0));
    expectPixel(image, 1, 6, {});
    expectPixel(image, 6, 10, {});
    expectPixel(image, 10, 2, rgba(255, 0, 0));
    expectPixel(image, 14, 1, rgba(255, 0, 0));
    expectPixel(image, 8, 2, {});
    expectPixel(image, 14, 3, {});
}

TEST_F(SvgCommand, StrokesAroundTheLine) {
    // 2 wide: a pixel to either side. The mitred corner is filled, the bevelled one is not.
    const auto image = pictureOf("<path d='M2 2H7V7H2Z' fill='none' stroke='blue' stroke-width='2'/>"
                                 "<path d='M10 14V9H15' style='fill:none;stroke:red;stroke-width:4;"
                                 "stroke-linejoin:bevel'/>");
    expectPixel(image, 1, 1, rgba(0, 0, 255));
    expectPixel(image, 7, 7, rgba(0, 0, 255));
    expectPixel(image, 4, 4, {});
    expectPixel(image, 8, 2, {});
    expectPixel(image, 8, 12, rgba(255, 0, 0));
    expectPixel(image, 8, 7, {});
}

TEST_F(SvgCommand, StylesGoBeforeAttributesAndAreInherited) {
    const auto image =
        pictureOf("<g fill='red' opacity='.5'><rect width='4' height='4' fill='lime' style='fill:blue'/>"
                  "<rect x='8' width='4' height='4' fill-opacity='.4'/></g>"
                  "<rect y='8' width='4' height='4' style='display:none'/>");
    expectPixel(image, 2, 2, rgba(0, 0, 255, 128)); // 127.5, rounded
    expectPixel(image, 10, 2, rgba(255, 0, 0, 51));
    expectPixel(image, 2, 10, {});
}

TEST_F(SvgCommand, LaysLinearGradientsAlongTheirWay) {
    // The second half of the drawing's way from black to white, and a hard change of colours downwards.
    const auto image = pictureOf(
        "<linearGradient id='a' gradientUnits='userSpaceOnUse' x1='0' x2='16'><stop stop-color='black'/>"
        "<stop offset='1' stop-color='white'/></linearGradient>"
        "<linearGradient id='b' x2='0' y2='1'><stop offset='.5' stop-color='red'/>"
        "<stop offset='50%' style='stop-color:blue'/></linearGradient>"
        "<rect x='8' width='8' height='8' fill='url(#a)'/><rect y='8' width='8' height='8' fill='url(#b)'/>");
    for (int x = 8; x < 16; ++x) // by the middle of each pixel
        EXPECT_NEAR(at(image, x, 3).content.rgba.g, 255 * (x + 0.5) / 16, 1) << x;
    expectPixel(image, 3, 9, rgba(255, 0, 0));
    expectPixel(image, 3, 14, rgba(0, 0, 255));
}

TEST_F(SvgCommand, TakesTheSizeWithUnitsAndShrinksWhatIsTooLarge) {
    EXPECT_EQ(drawWhole("<svg width='1in' height='24pt'/>").status, 0);
    EXPECT_EQ(LxImage_w(picture().get()), 96);
    EXPECT_EQ(LxImage_h(picture().get()), 32);
    EXPECT_EQ(drawWhole("<svg viewBox='0 0 4096 1024'/>").status, 0);
    EXPECT_EQ(LxImage_w(picture().get()), 2048);
    EXPECT_EQ(LxImage_h(picture().get()), 512);
    EXPECT_EQ(drawWhole("<svg width='1e300' height='1e-300'/>").status, 0);
    EXPECT_EQ(LxImage_w(picture().get()), 2048);
}

TEST_F(SvgCommand, DrawsOnAfterOddities) {
    const std::string square = "<rect width='16' height='16' fill='red'/>";
    for (const std::string &content :
         {"<path d='M0 0L1e38 1e38 5 5Z'/>" + square,
          "<path d='M0 0C" + std::string(100'000, '9') + "'/>" + square,
          "<linearGradient id='a' href='#b'/><linearGradient id='b' href='#a'/><path fill='url(#a)' d='M0 "
          "0H9V9'/>" +
              square,
          "<path transform='scale(0)' stroke='red' d='M0 0H9V9A0 0 0 0 0 1 1a1-1 nan'/>" + square,
          "<path transform='matrix(1e300,1e300,1e300,1e300,0,0)' stroke='red' d='M0 0Q1 1 3 9'/>" + square})
        expectPixel(pictureOf(content), 8, 8, rgba(255, 0, 0));
}
