#include <algorithm>
#include <gif_lib.h>
#include <vector>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/PngBytes.h"
#include "tests/support/Program.h"
#include "tools/PngFile.h"

using namespace lx::test;

namespace {

// A grey picture of 8 by 4 whose columns count up from 10.
std::string columnsPng() {
    return pngFile(8, 4, 8, 0, std::vector<std::string>(4, "\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11"));
}

// A line that moves 3 pixels to the right.
constexpr const char *shift = "# a shift\n\n1 0 1 3  4 0 4 3\n";

struct Scene {
    TemporaryFolder folder;
    std::string picture = folder / "a.png";
    std::string lines = folder / "lines.txt";
    std::string output = folder / "out.png";

    explicit Scene(const std::string &content = columnsPng(), const std::string &text = shift) {
        writeFile(picture, content);
        writeFile(lines, text);
    }
    ProgramResult run(const std::string &options = "") const {
        return runProgram("morph " + picture + " " + lines + " -o " + output + " " + options);
    }
};

std::string firstRow(const std::string &path) {
    const tool::ImageHandle image = tool::readPng(path);
    return {reinterpret_cast<const char *>(lx::rowAddress(*image, 0)), 8};
}

} // namespace

TEST(MorphCommand, WritesTheLastFrame) {
    const Scene scene;
    const ProgramResult result = scene.run("--frames 3");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "") << "the engine's progress lines do not show";
    EXPECT_EQ(firstRow(scene.output), "\x0A\x0A\x0A\x0A\x0B\x0C\x0D\x0E");
}

TEST(MorphCommand, KeepsFramesByNumber) {
    const Scene scene;
    EXPECT_EQ(scene.run("--frames 3 --keep-frames").status, 0);
    EXPECT_EQ(firstRow(scene.folder / "out-001.png"), "\x0A\x0A\x0B\x0C\x0D\x0E\x0F\x10");
    EXPECT_EQ(firstRow(scene.folder / "out-002.png"), "\x0A\x0A\x0A\x0B\x0C\x0D\x0E\x0F");
    EXPECT_EQ(readFile(scene.folder / "out-003.png"), readFile(scene.output));
}

TEST(MorphCommand, WritesAnAnimationOfThePictureAndAllFrames) {
    const Scene scene;
    const std::string animation = scene.folder / "out.gif";
    EXPECT_EQ(scene.run("--frames 3 --animation " + animation).status, 0);
    const std::string gif = readFile(animation);
    EXPECT_EQ(gif.substr(0, 6), "GIF89a");
    EXPECT_EQ(gif.substr(6, 4), std::string("\x08\0\x04\0", 4)) << "8 by 4";
    size_t frames = 0;
    for (size_t at = gif.find("\x21\xF9\x04"); at != std::string::npos; at = gif.find("\x21\xF9\x04", at + 1))
        ++frames;
    EXPECT_EQ(frames, 4u);
}

TEST(MorphCommand, AnimationsShowThePixelsOfAnyWidth) {
    // Seven columns: rows of images end in padding.
    const Scene scene(
        pngFile(7, 3, 8, 2,
                std::vector<std::string>(3, std::string("\1\2\3\x11\x12\x13\x21\x22\x23\x31\x32\x33"
                                                        "\x41\x42\x43\x51\x52\x53\x61\x62\x63"))),
        "0 0 0 3  1 0 1 3\n");
    EXPECT_EQ(scene.run("--animation " + (scene.folder / "a.gif").string()).status, 0);
    int error = 0;
    GifFileType *gif = DGifOpenFileName((scene.folder / "a.gif").c_str(), &error);
    ASSERT_NE(gif, nullptr);
    ASSERT_EQ(DGifSlurp(gif), GIF_OK);
    ASSERT_EQ(gif->ImageCount, 2);
    for (int frame = 0; frame < 2; ++frame) {
        const SavedImage &image = gif->SavedImages[frame];
        ASSERT_EQ(image.ImageDesc.Width, 7);
        for (int i = 0; i < 21; ++i) {
            const GifColorType &color = image.ImageDesc.ColorMap->Colors[image.RasterBits[i]];
            const int column = std::max(i % 7 - frame, 0);
            EXPECT_EQ(color.Red, column * 16 + 1) << frame << ", " << i;
            EXPECT_EQ(color.Blue, column * 16 + 3) << frame << ", " << i;
        }
    }
    DGifCloseFile(gif, &error);
}

TEST(MorphCommand, NumbersFilesWithoutAnExtensionInFoldersWithADot) {
    Scene scene;
    std::filesystem::create_directory(scene.folder / "v1.0");
    scene.output = scene.folder / "v1.0/out";
    EXPECT_EQ(scene.run("--keep-frames").status, 0);
    EXPECT_EQ(readFile(scene.folder / "v1.0/out-001"), readFile(scene.output));
}

TEST(MorphCommand, AnAnimationThatCannotBeWrittenIsToldBeforeTheWork) {
    const Scene scene;
    const ProgramResult result = scene.run("--animation /no/such/folder/a.gif");
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(result.errors.starts_with("oxlume: /no/such/folder/a.gif: ")) << result.errors;
    EXPECT_FALSE(std::filesystem::exists(scene.output));
}

TEST(MorphCommand, FailsWithOneLineThatNamesTheCulprit) {
    const struct {
        const char *text;
        const char *complaint;
    } cases[] = {
        {"", ": no lines\n"},
        {"# nothing\n", ": no lines\n"},
        {"1 2 3 4 5 6 7\n", ":1: expected eight whole numbers: sx0 sy0 sx1 sy1 tx0 ty0 tx1 ty1\n"},
        {"0 0 1 1 0 0 1 1\n\n1 2 3 4 5 6 7 8 9\n",
         ":3: expected eight whole numbers: sx0 sy0 sx1 sy1 tx0 ty0 tx1 ty1\n"},
        {"0 0 1 1 0 0 1 99999999\n", ":1: expected eight whole numbers: sx0 sy0 sx1 sy1 tx0 ty0 tx1 ty1\n"},
        {"0 0 1 1 0 0 1 -16001\n", ":1: expected eight whole numbers: sx0 sy0 sx1 sy1 tx0 ty0 tx1 ty1\n"},
        {"5 5 5 5 0 0 1 1\n", ":1: a line has no length\n"},
        {"0 0 1 1 7 5 7 5\n", ":1: a line has no length\n"},
    };
    for (const auto &c : cases) {
        const Scene scene(columnsPng(), c.text);
        const ProgramResult result = scene.run();
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.errors, "oxlume: " + scene.lines + c.complaint);
        EXPECT_FALSE(std::filesystem::exists(scene.output));
    }
    const Scene transparent(pngFile(1, 1, 8, 6, {"abcd"}));
    EXPECT_EQ(transparent.run().errors,
              "oxlume: " + transparent.picture + ": pictures with transparency cannot be morphed\n");
    EXPECT_EQ(Scene().run("--frames 0").status, 2);
}
