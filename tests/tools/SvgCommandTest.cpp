#include <string>

#include <gtest/gtest.h>

#include "tests/support/Program.h"
#include "tools/ImageHandle.h"
#include "tools/PngFile.h"

using namespace lx::test;

namespace {

// The lower half of a drawing of 8 by 8, which comes out as the upper one: y points upwards.
const char *const lowerHalf = "<svg viewBox='0 0 8 8'><path fill='#ff0000' d='M0 4H8V8H0V4Z'/></svg>";

class SvgCommand : public testing::Test {
protected:
    ProgramResult draw(const std::string &text, const std::string &options = "") {
        writeFile(folder_ / "in.svg", text);
        return runProgram("svg --subset " + (folder_ / "in.svg").string() + " -o " +
                          (folder_ / "out.png").string() + " " + options);
    }

    tool::ImageHandle picture() { return tool::readPng((folder_ / "out.png").string()); }

    static LxColor at(const tool::ImageHandle &image, int32_t x, int32_t y) {
        LxColor color = {};
        LxImage_PixelAt(image.get(), x, y, &color);
        return color;
    }

    TemporaryFolder folder_;
};

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
