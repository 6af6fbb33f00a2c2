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
