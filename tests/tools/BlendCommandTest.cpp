#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/PngBytes.h"
#include "tests/support/Program.h"
#include "tools/Canvas.h"
#include "tools/PngFile.h"

using namespace lx::test;

namespace {

// Runs `blend` on pictures of one row, black and grey pixels under a light one, and tells the first two of
// the result.
struct BlendRun {
    TemporaryFolder folder;
    ProgramResult result;

    explicit BlendRun(const std::string &options) {
        const std::string row = std::string(3, '\0') + std::string(27, 'd');
        writeFile(folder / "dst.png", pngFile(10, 1, 8, 2, {row}));
        writeFile(folder / "src.png", pngFile(1, 1, 8, 2, {"\310\310\310"}));
        writeFile(folder / "mask.png", pngFile(1, 1, 8, 0, {std::string(1, '\0')}));
        result = runProgram("blend " + (folder / "dst.png").string() + " " + (folder / "src.png").string() +
                            " -o " + (folder / "out.png").string() + " " + options);
    }
    std::string pixels() const {
        const tool::ImageHandle out = tool::readPng(folder / "out.png");
        return {reinterpret_cast<const char *>(lx::firstRow(*out)), 6};
    }
};

} // namespace

TEST(BlendCommand, LaysOnePictureOverAnother) {
    const BlendRun run("");
    EXPECT_EQ(run.result.status, 0);
    EXPECT_EQ(run.pixels(), "\310\310\310ddd");
}

TEST(BlendCommand, TakesModeOpacityChannelAndPlace) {
    // Difference of 200 and 100 is 100; at 128 the mix of 100 on 100 is 100 and of 200 on 100 is 150.
    EXPECT_EQ(BlendRun("--mode Difference --at 1,0").pixels(), std::string("\0\0\0ddd", 6));
    EXPECT_EQ(BlendRun("--opacity 128 --at 1,0").pixels(), std::string("\0\0\0\226\226\226", 6));
    EXPECT_EQ(BlendRun("--channel green --at 1,0").pixels(), std::string("\0\0\0d\310d", 6));
    EXPECT_EQ(BlendRun("--at -1,0").pixels(), std::string("\0\0\0ddd", 6));
}

TEST(BlendCommand, TakesAMask) {
    const BlendRun run("--mask src.png");
    EXPECT_EQ(run.result.status, 2) << "there is no such file here";
    const TemporaryFolder folder;
    writeFile(folder / "mask.png", pngFile(1, 1, 8, 0, {std::string(1, '\0')}));
    EXPECT_EQ(BlendRun("--mask " + (folder / "mask.png").string()).pixels(), std::string("\0\0\0ddd", 6));
    writeFile(folder / "colour.png", pngFile(1, 1, 8, 2, {"abc"}));
    const BlendRun colour("--mask " + (folder / "colour.png").string());
    EXPECT_EQ(colour.result.status, 2);
    EXPECT_NE(colour.result.errors.find("a mask is a grey picture"), std::string::npos);
}

namespace {

// A picture of one colour with marker pixels.
std::string markedPng(uint32_t width, uint32_t height, const std::vector<std::pair<int, int>> &marks) {
    std::vector<std::string> rows(height, std::string(width * 3, '\310'));
    for (const auto &[x, y] : marks)
        rows[static_cast<size_t>(y)].replace(static_cast<size_t>(x) * 3, 3, std::string("\0\xFF\xFF", 3));
    return pngFile(width, height, 8, 2, rows);
}

struct MarkedRun {
    TemporaryFolder folder;
    ProgramResult result;

    MarkedRun(const std::vector<std::pair<int, int>> &marks, const std::string &options) {
        writeFile(folder / "dst.png",
                  pngFile(30, 20, 8, 2, std::vector<std::string>(20, std::string(90, 'd'))));
        writeFile(folder / "src.png", markedPng(20, 12, marks));
        result = runProgram("blend " + (folder / "dst.png").string() + " " + (folder / "src.png").string() +
                            " -o " + (folder / "out.png").string() + " " + options);
    }
    int red(int32_t x, int32_t y) const {
        const tool::ImageHandle out = tool::readPng(folder / "out.png");
        LxColor color = {};
        LxImage_PixelAt(out.get(), x, y, &color);
        return color.content.rgba.r;
    }
};

// Three columns of 3, 4 and 6 pixels, of 8 rows.
const std::vector<std::pair<int, int>> threeColumns = {{0, 0}, {2, 2}, {6, 2}, {11, 2}, {18, 2}, {2, 11}};
// Two tiles of 3 by 4 pixels.
const std::vector<std::pair<int, int>> twoTiles = {{0, 0}, {2, 2}, {7, 2}, {12, 2}, {2, 8}};

} // namespace

TEST(BlendCommand, StretchesAFrame) {
    const MarkedRun run(threeColumns, "--frame 5,6,27,20");
    EXPECT_EQ(run.result.status, 0) << run.result.errors;
    for (const int32_t x : {5, 15, 26}) {
        EXPECT_EQ(run.red(x, 6), 200) << x;
        EXPECT_EQ(run.red(x, 5), 100) << x;
    }
    EXPECT_EQ(run.red(4, 6), 100);
    EXPECT_EQ(run.red(27, 6), 100);
    EXPECT_EQ(run.red(15, 6 + 9), 100) << "columns are as high as their row";
}

TEST(BlendCommand, AFrameTakesOpacityAndAMaskInItsCorner) {
    EXPECT_EQ(MarkedRun(threeColumns, "--frame 5,6,27,20 --opacity 128").red(5, 6), 150);
    const TemporaryFolder folder;
    writeFile(folder / "mask.png", pngFile(1, 1, 8, 0, {"\xFF"}));
    const MarkedRun masked(threeColumns, "--frame 5,6,27,20 --mask " + (folder / "mask.png").string());
    EXPECT_EQ(masked.red(5, 6), 200);
    EXPECT_EQ(masked.red(6, 6), 100);
}

TEST(BlendCommand, AFrameNeedsMarksAndAnArea) {
    const MarkedRun plain({}, "--frame 0,0,10,10");
    EXPECT_EQ(plain.result.status, 2);
    EXPECT_NE(plain.result.errors.find("src.png: no marker pixels cut it into the pieces of a frame"),
              std::string::npos);
    EXPECT_EQ(MarkedRun(twoTiles, "--frame 0,0,10,10").result.status, 2) << "tiles are no frame";
    const MarkedRun empty(threeColumns, "--frame 9,0,9,10");
    EXPECT_EQ(empty.result.status, 2);
    EXPECT_NE(empty.result.errors.find("--frame: X0,Y0"), std::string::npos);
    EXPECT_EQ(MarkedRun(threeColumns, "--frame 0,0,10").result.status, 2);
    EXPECT_EQ(MarkedRun(threeColumns, "--frame 0,0,10,10 --at 1,1").result.status, 2);
}

TEST(BlendCommand, LaysATile) {
    const MarkedRun run(twoTiles, "--tile 1,0 --at 10,5");
    EXPECT_EQ(run.result.status, 0) << run.result.errors;
    EXPECT_EQ(run.red(10, 5), 200);
    EXPECT_EQ(run.red(12, 8), 200);
    EXPECT_EQ(run.red(9, 5), 100);
    EXPECT_EQ(run.red(13, 5), 100);
    EXPECT_EQ(run.red(12, 9), 100);
}

TEST(BlendCommand, ATileMustBeThere) {
    const MarkedRun past(twoTiles, "--tile 2,0");
    EXPECT_EQ(past.result.status, 2);
    EXPECT_NE(past.result.errors.find("has 2 by 1 tiles, counted from 0,0"), std::string::npos);
    EXPECT_EQ(MarkedRun(twoTiles, "--tile -1,0").result.status, 2);
    const MarkedRun plain({}, "--tile 0,0");
    EXPECT_EQ(plain.result.status, 2);
    EXPECT_NE(plain.result.errors.find("src.png: no marker pixels cut it into tiles"), std::string::npos);
    EXPECT_EQ(MarkedRun(twoTiles, "--tile 0,0 --frame 0,0,9,9").result.status, 2);
}

TEST(BlendCommand, UnknownNamesListTheValidOnes) {
    const BlendRun mode("--mode Multiplied");
    EXPECT_EQ(mode.result.status, 2);
    EXPECT_NE(mode.result.errors.find("Multiplied is no mode; there are Clear, Src, SrcOver, "),
              std::string::npos);
    EXPECT_NE(mode.result.errors.find(", NoName10"), std::string::npos);
    const BlendRun channel("--channel cyan");
    EXPECT_EQ(channel.result.status, 2);
    EXPECT_NE(channel.result.errors.find("cyan is no channel; there are red, green, blue, alpha, rgb, rgba"),
              std::string::npos);
    EXPECT_EQ(BlendRun("--opacity 256").result.status, 2);
}

TEST(ModesCommand, WritesASheetAPageAndAPictureAMode) {
    const TemporaryFolder folder;
    writeFile(folder / "dst.png", pngFile(4, 2, 8, 2, {std::string(12, '\144'), std::string(12, '\144')}));
    writeFile(folder / "src.png", pngFile(4, 2, 8, 2, {std::string(12, '\310'), std::string(12, '\310')}));
    const ProgramResult result =
        runProgram("modes " + (folder / "dst.png").string() + " " + (folder / "src.png").string() + " -o " +
                   (folder / "out").string());
    EXPECT_EQ(result.status, 0) << result.errors;
    const tool::ImageHandle sheet = tool::readPng(folder / "out/sheet.png");
    EXPECT_EQ(LxImage_w(sheet.get()), 8 * (4 + 6) + 6);
    EXPECT_EQ(LxImage_h(sheet.get()), 6 * (2 + 14 + 6) + 6);
    // Difference is mode 16: the first of the third row.
    LxColor color;
    LxImage_PixelAt(sheet.get(), 6, 6 + 2 * 22, &color);
    EXPECT_EQ(color.content.rgba.r, 100);
    const tool::ImageHandle add = tool::readPng(folder / "out/Add.png");
    LxImage_PixelAt(add.get(), 3, 1, &color);
    EXPECT_EQ(color.content.rgba.g, 255);
    const std::string page = readFile(folder / "out/index.html");
    EXPECT_NE(page.find("<img src=\"NoName10.png\""), std::string::npos);
}

TEST(ModesCommand, WritesTheNamesUnderThePictures) {
    if (!tool::hasQuartzCanvas)
        GTEST_SKIP() << "built without text";
    const TemporaryFolder folder;
    writeFile(folder / "white.png",
              pngFile(50, 2, 8, 0, std::vector<std::string>(2, std::string(50, '\xff'))));
    const std::string white = folder / "white.png";
    EXPECT_EQ(runProgram("modes " + white + " " + white + " -o " + (folder / "out").string()).status, 0);
    const tool::ImageHandle sheet = tool::readPng(folder / "out/sheet.png");
    const auto ink = [&](int32_t mode) {
        int32_t sum = 0;
        const int32_t left = 6 + mode % 8 * 56, top = 6 + mode / 8 * 22 + 2;
        for (int32_t y = top; y < top + 14; ++y)
            for (int32_t x = left; x < left + 50; ++x)
                sum += 136 - lx::rowAddress(*sheet, y)[x * 4];
        return sum;
    };
    for (int32_t mode = 0; mode < 44; ++mode)
        EXPECT_GT(ink(mode), 136 * 15) << mode;
    EXPECT_GT(ink(22), ink(1)) << "Saturation is longer than Src";
    EXPECT_EQ(ink(44), 0) << "there is no such mode";
}

TEST(ModesCommand, ReducesLargePicturesAndListsNames) {
    const TemporaryFolder folder;
    writeFile(folder / "big.png",
              pngFile(4, 4, 8, 0, std::vector<std::string>(4, std::string("\0\2\4\6", 4))));
    EXPECT_EQ(runProgram("modes " + (folder / "big.png").string() + " " + (folder / "big.png").string() +
                         " --size 2 -o " + (folder / "out").string())
                  .status,
              0);
    const tool::ImageHandle src = tool::readPng(folder / "out/Src.png");
    EXPECT_EQ(LxImage_w(src.get()), 2);
    EXPECT_EQ(lx::rowAddress(*src, 1)[4], 5) << "the mean of 4 and 6";
    const ProgramResult list = runProgram("modes --list");
    EXPECT_EQ(list.output.substr(0, 10), "Clear\nSrc\n");
    EXPECT_EQ(runProgram("modes").status, 2);
}
