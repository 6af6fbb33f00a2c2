#include "tools/PngFile.h"

#include <cstring>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/PngBytes.h"
#include "tests/support/Program.h"
#include "tests/support/Random.h"
#include "tools/Failure.h"

using namespace lx::test;
using tool::ImageHandle;

namespace {

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values)
        text += static_cast<char>(value);
    return text;
}

// Reads a file of the given bytes.
ImageHandle read(const std::string &content) {
    const TemporaryFolder folder;
    writeFile(folder / "a.png", content);
    return tool::readPng(folder / "a.png");
}

std::string row(const ImageHandle &image, int32_t y, size_t size) {
    return {reinterpret_cast<const char *>(lx::rowAddress(*image, y)), size};
}

// What reading a file of the given bytes complains of.
std::string complaint(const std::string &content) {
    try {
        read(content);
        return "no complaint";
    } catch (const tool::Failure &failure) {
        const std::string text = failure.what();
        return text.substr(text.find("a.png"));
    }
}

bool startsWith(const std::string &text, const std::string &start) {
    return text.compare(0, start.size(), start) == 0;
}

} // namespace

TEST(ReadPng, KeepsGreyColourAndColourWithAlpha) {
    const ImageHandle grey = read(pngFile(2, 2, 8, 0, {bytes({1, 2}), bytes({3, 4})}));
    EXPECT_EQ(grey->type, kLxPixelA);
    EXPECT_EQ(row(grey, 1, 2), bytes({3, 4}));
    const ImageHandle rgb = read(pngFile(2, 1, 8, 2, {bytes({1, 2, 3, 4, 5, 6})}));
    EXPECT_EQ(rgb->type, kLxPixelRGB);
    EXPECT_EQ(row(rgb, 0, 6), bytes({1, 2, 3, 4, 5, 6}));
    const ImageHandle rgba = read(pngFile(1, 2, 8, 6, {bytes({1, 2, 3, 4}), bytes({5, 6, 7, 0})}));
    EXPECT_EQ(rgba->type, kLxPixelRGBA);
    EXPECT_EQ(row(rgba, 1, 4), bytes({5, 6, 7, 0}));
    EXPECT_EQ(LxImage_x(rgba.get()), 0);
    EXPECT_EQ(LxImage_h(rgba.get()), 2);
}

TEST(ReadPng, RoundsSixteenBitsToEight) {
    const ImageHandle grey = read(pngFile(3, 1, 16, 0, {bytes({0x12, 0x34, 0xFF, 0xFF, 0x80, 0xFF})}));
    EXPECT_EQ(grey->type, kLxPixelA);
    // value / 257, rounded: 0x1234 / 257 = 18.13, 0x80FF / 257 = 128.49
    EXPECT_EQ(row(grey, 0, 3), bytes({0x12, 0xFF, 0x80}));
}

TEST(ReadPng, ExpandsFewerBits) {
    const ImageHandle grey = read(pngFile(8, 1, 1, 0, {bytes({0xA5})}));
    EXPECT_EQ(row(grey, 0, 8), bytes({255, 0, 255, 0, 0, 255, 0, 255}));
}

TEST(ReadPng, LooksUpPalettes) {
    const std::string palette = pngChunk("PLTE", bytes({10, 20, 30, 40, 50, 60}));
    const ImageHandle opaque = read(pngFile(2, 1, 8, 3, {bytes({1, 0})}, palette));
    EXPECT_EQ(opaque->type, kLxPixelRGB);
    EXPECT_EQ(row(opaque, 0, 6), bytes({40, 50, 60, 10, 20, 30}));
    const ImageHandle clear =
        read(pngFile(2, 1, 8, 3, {bytes({1, 0})}, palette + pngChunk("tRNS", bytes({7}))));
    EXPECT_EQ(clear->type, kLxPixelRGBA);
    EXPECT_EQ(row(clear, 0, 8), bytes({40, 50, 60, 255, 10, 20, 30, 7}));
}

TEST(ReadPng, MakesGreyWithTransparencyColourWithAlpha) {
    const ImageHandle alpha = read(pngFile(1, 1, 8, 4, {bytes({9, 8})}));
    EXPECT_EQ(alpha->type, kLxPixelRGBA);
    EXPECT_EQ(row(alpha, 0, 4), bytes({9, 9, 9, 8}));
    const ImageHandle keyed = read(pngFile(2, 1, 8, 0, {bytes({9, 8})}, pngChunk("tRNS", bytes({0, 8}))));
    EXPECT_EQ(keyed->type, kLxPixelRGBA);
    EXPECT_EQ(row(keyed, 0, 8), bytes({9, 9, 9, 255, 8, 8, 8, 0}));
}

TEST(ReadPng, NamesTheFileAndTheCause) {
    EXPECT_TRUE(startsWith(complaint(""), "a.png: not a PNG file"));
    EXPECT_TRUE(startsWith(complaint("GIF89a and so on"), "a.png: not a PNG file"));
    EXPECT_TRUE(startsWith(complaint(pngSignature()), "a.png: broken PNG file: "));
    const std::string whole = pngFile(2, 2, 8, 0, {bytes({1, 2}), bytes({3, 4})});
    for (size_t size = 8; size + 12 < whole.size(); ++size)
        EXPECT_TRUE(startsWith(complaint(whole.substr(0, size)), "a.png: broken PNG file: ")) << size;
    EXPECT_THROW(tool::readPng("/nonexistent/a.png"), tool::Failure);
    EXPECT_THROW(tool::readPng("/"), tool::Failure);
}

TEST(ReadPng, RefusesSizesThatNoImageHas) {
    EXPECT_TRUE(startsWith(complaint(pngSignature() + pngHeader(2147483647, 1, 8, 2) + pngData("")),
                           "a.png: too large: 2147483647 x 1 pixels"));
    EXPECT_TRUE(startsWith(complaint(pngSignature() + pngHeader(100000, 100000, 8, 6) + pngData("")),
                           "a.png: too large: 100000 x 100000 pixels"));
}

TEST(ReadPng, SurvivesAnyBrokenByte) {
    Random random;
    const std::string whole = pngFile(8, 8, 8, 2, std::vector<std::string>(8, std::string(24, '\x40')));
    for (int i = 0; i < 3000; ++i) {
        std::string broken = whole;
        for (int n = random.integer(1, 4); n > 0; --n)
            broken[random.word() % broken.size()] = static_cast<char>(random.byte());
        complaint(broken); // must neither crash nor hang
    }
}

TEST(WritePng, RoundTripsEveryTypeThatPngHas) {
    Random random;
    const TemporaryFolder folder;
    const std::string path = folder / "b.png";
    for (const int32_t type : {kLxPixelA, kLxPixelRGB, kLxPixelRGBA})
        for (const int32_t flipped : {0, 1}) {
            const ImageHandle image(LxImage_Create(type, 5, 6, 18, 13, 1, flipped));
            auto *data = static_cast<uint8_t *>(LxImage_Data(image.get()));
            for (int32_t i = 0; i < LxImage_DataSize(image.get()); ++i)
                data[i] = random.byte();
            tool::writePng(path, *image);
            const ImageHandle copy = tool::readPng(path);
            ASSERT_EQ(copy->type, static_cast<uint32_t>(type));
            const auto size = size_t{13} * static_cast<size_t>(LxColor_BytesPerPixel(type));
            for (int32_t y = 0; y < 7; ++y)
                EXPECT_EQ(row(copy, y, size), row(image, y, size)) << "type " << type << " row " << y;
        }
}

TEST(WritePng, LeavesNothingBehindWhereItCannotWrite) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, 0, 0, 4, 4, 1, 0));
    EXPECT_THROW(tool::writePng("/nonexistent/b.png", *image), tool::Failure);
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "b.png");
    EXPECT_THROW(tool::writePng(folder / "b.png", *image), tool::Failure) << "the name is a folder's";
    const ImageHandle heights(LxImage_Create(kLxPixelF, 0, 0, 4, 4, 1, 0));
    EXPECT_THROW(tool::writePng(folder / "c.png", *heights), tool::Failure);
    int files = 0;
    for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator(folder.path()))
        ++files;
    EXPECT_EQ(files, 1) << "only the folder made above";
}
