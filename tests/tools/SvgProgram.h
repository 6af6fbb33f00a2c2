// `oxlume svg` on files that tests write.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "tests/support/Program.h"
#include "tools/ImageHandle.h"
#include "tools/PngFile.h"

namespace lx::test {

class SvgProgram : public testing::Test {
protected:
    // By the library's own reader.
    ProgramResult draw(const std::string &text, const std::string &options = "") {
        return drawWhole(text, "--subset " + options);
    }

    ProgramResult drawWhole(const std::string &text, const std::string &options = "") {
        writeFile(folder_ / "in.svg", text);
        return runProgram("svg " + (folder_ / "in.svg").string() + " -o " + (folder_ / "out.png").string() +
                          " " + options);
    }

    // The picture of 16 by 16 that comes of what stands in a drawing of that size.
    tool::ImageHandle pictureOf(const std::string &content) {
        const ProgramResult result = drawWhole("<svg viewBox='0 0 16 16'>" + content + "</svg>");
        EXPECT_EQ(result.status, 0) << result.errors;
        return picture();
    }

    static void expectPixel(const tool::ImageHandle &image, int32_t x, int32_t y, LxRGBA expected) {
        const LxRGBA is = at(image, x, y).content.rgba;
        EXPECT_TRUE(is.a == expected.a &&
                    (is.a == 0 || (is.r == expected.r && is.g == expected.g && is.b == expected.b)))
            << x << ' ' << y << ": " << int{is.r} << ' ' << int{is.g} << ' ' << int{is.b} << ' ' << int{is.a};
    }

    static LxRGBA rgba(uint8_t r, uint8_t g, uint8_t b, uint8_t a = 255) {
        return LxColor_RGBA(r, g, b, a).content.rgba;
    }

    tool::ImageHandle picture() { return tool::readPng((folder_ / "out.png").string()); }

    static LxColor at(const tool::ImageHandle &image, int32_t x, int32_t y) {
        LxColor color = {};
        LxImage_PixelAt(image.get(), x, y, &color);
        return color;
    }

    TemporaryFolder folder_;
};

} // namespace lx::test
