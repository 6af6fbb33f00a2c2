#include <oxlume/oxlume.hpp>

#include <cstring>
#include <mutex>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

using namespace oxlume;

static_assert(sizeof(Image) == sizeof(void *) && sizeof(ImageRef) == sizeof(void *));
static_assert(!std::is_copy_constructible_v<Image> && !std::is_copy_assignable_v<Image>);
static_assert(std::is_nothrow_move_constructible_v<Image> && std::is_trivially_copyable_v<ImageRef>);

TEST(CppImage, HasItsTypeAndPlace) {
    const Image image(PixelType::RGB, {10, 20, 15, 22});
    EXPECT_EQ(image.type(), PixelType::RGB);
    EXPECT_EQ(image.width(), 5);
    EXPECT_EQ(image.height(), 2);
    EXPECT_EQ(image.rect(), IntRect(10, 20, 15, 22));
    EXPECT_EQ(image.rowBytes(), 16);
    EXPECT_EQ(image.dataSize(), 32);
    EXPECT_FALSE(image.isFlipped());
    EXPECT_TRUE(Image(PixelType::A, {0, 0, 4, 4}, true).isFlipped());
}

TEST(CppImage, WithoutPixelsItIsNothingAndTooLargeItThrows) {
    EXPECT_FALSE(Image());
    EXPECT_FALSE(Image(PixelType::RGBA, 0, 5));
    EXPECT_FALSE(Image(PixelType::RGBA, -5, 5));
    EXPECT_EQ(Image().width(), 0);
    EXPECT_FALSE(Image().copy());
    EXPECT_THROW(Image(PixelType::RGBA, 100000, 100000), std::bad_alloc);
}

TEST(CppImage, ReadsAndWritesPixelsOfEveryType) {
    const std::pair<PixelType, Color> colors[] = {{PixelType::A, Color::gray(7)},
                                                  {PixelType::RGB, Color::rgb(1, 2, 3)},
                                                  {PixelType::RGBA, Color(1, 2, 3, 4)},
                                                  {PixelType::Float, Color::number(0.5f)}};
    for (const auto &[type, color] : colors) {
        Image image(type, 8, 8);
        EXPECT_TRUE(image.setPixel(3, 4, color));
        EXPECT_EQ(image.pixel(3, 4), color);
        EXPECT_FALSE(image.setPixel(8, 4, color));
        image.fill(color);
        EXPECT_EQ(image.pixel(7, 7), color);
        image.clear();
        EXPECT_NE(image.pixel(7, 7), color);
    }
    Image numbers(PixelType::Long, 8, 8);
    numbers.fill(Color::integer(-9));
    EXPECT_EQ(numbers.pixels<int32_t>()(7, 7), -9);
    EXPECT_EQ(Image(PixelType::RGBA, 8, 8).pixel(8, 0), Color(0, 0, 0, 0)) << "outside";
}

TEST(CppImage, PixelsGoFromTheTopHoweverRowsAreStored) {
    for (const bool flipped : {false, true}) {
        Image image(PixelType::RGB, {0, 0, 5, 3}, flipped);
        const Pixels<LxRGB> pixels = image.pixels<LxRGB>();
        ASSERT_EQ(pixels.width(), 5);
        ASSERT_EQ(pixels.height(), 3);
        EXPECT_EQ(pixels.stride(), flipped ? -16 : 16);
        for (int32_t y = 0; y < 3; ++y)
            for (LxRGB &pixel : pixels[y])
                pixel = LxRGB{static_cast<uint8_t>(y), 0, 0};
        pixels(4, 2).g = 9;
        EXPECT_EQ(image.pixel(0, 1), Color::rgb(1, 0, 0));
        EXPECT_EQ(image.pixel(4, 2), Color::rgb(2, 9, 0));
        const ImageRef constant = image;
        EXPECT_EQ(constant.pixels<LxRGB>()[2][4].g, 9);
        EXPECT_EQ(pixels[0].size(), 5u);
    }
}

TEST(CppImage, PixelsOfAnotherTypeAreNone) {
    Image image(PixelType::RGBA, 4, 4);
    EXPECT_TRUE(image.pixels<uint8_t>().empty());
    EXPECT_TRUE(image.pixels<float>().empty());
    EXPECT_FALSE(image.pixels<LxRGBA>().empty());
    EXPECT_TRUE(ImageRef().pixels<LxRGBA>().empty());
    EXPECT_EQ(ImageRef().pixels<LxRGBA>().height(), 0);
}

TEST(CppImage, LiesOverTheCallersMemory) {
    std::vector<LxRGBA> memory(6);
    {
        Image image = Image::over(memory.data(), PixelType::RGBA, 3, 2, 12);
        image.setPixel(1, 1, {1, 2, 3, 4});
        EXPECT_EQ(&image.pixels<LxRGBA>()(1, 1), &memory[4]);
    }
    EXPECT_EQ(memory[4].b, 3);
    EXPECT_FALSE(Image::over(memory.data(), PixelType::RGBA, 0, 2, 12));
}

TEST(CppImage, OwnsMovesAndCopies) {
    Image image(PixelType::A, 20, 20);
    image.fill(Color::gray(9));
    Image copied = image.copy();
    Image moved = std::move(image);
    EXPECT_FALSE(image);
    EXPECT_EQ(moved.pixel(5, 5), Color::gray(9));
    copied.clear();
    EXPECT_EQ(moved.pixel(5, 5), Color::gray(9));
    moved = std::move(copied);
    EXPECT_EQ(moved.pixel(5, 5), Color::gray(0));
    moved = Image(PixelType::A, 2, 2);
    EXPECT_EQ(moved.width(), 2);
    LxImage *raw = moved.release();
    EXPECT_FALSE(moved);
    moved.reset(raw);
    EXPECT_TRUE(moved);
    moved.reset();
    EXPECT_FALSE(moved);
}

TEST(CppImage, BlendsImagesAndColours) {
    Image image(PixelType::RGBA, 10, 10);
    image.fill({100, 100, 100});
    Image red(PixelType::RGBA, {5, 5, 8, 8});
    red.fill({200, 0, 0});
    image.draw(red, Mode::Src);
    EXPECT_EQ(image.pixel(5, 5), Color(200, 0, 0));
    EXPECT_EQ(image.pixel(4, 5), Color(100, 100, 100));
    EXPECT_EQ(image.pixel(8, 7), Color(100, 100, 100));
    red.moveTo({0, 0});
    const IntRect limit(0, 0, 1, 1);
    image.draw(red, Mode::Src, {}, &limit);
    EXPECT_EQ(image.pixel(0, 0), Color(200, 0, 0));
    EXPECT_EQ(image.pixel(1, 0), Color(100, 100, 100));
    Image mask(PixelType::A, 10, 10);
    mask.setPixel(1, 1, Color::gray(255));
    image.draw(red, {}, mask);
    EXPECT_EQ(image.pixel(1, 1), Color(200, 0, 0));
    EXPECT_EQ(image.pixel(2, 2), Color(100, 100, 100));
    EXPECT_TRUE(image.blendPixel(9, 9, {1, 2, 3}, Mode::Src));
    EXPECT_EQ(image.pixel(9, 9), Color(1, 2, 3));
    image.blendColor({0, 0, 255}, Mode::Src);
    EXPECT_EQ(image.pixel(3, 3), Color(0, 0, 255));
}

TEST(CppImage, WorksOnWholeImages) {
    Image image(PixelType::RGBA, 8, 4);
    image.setPixel(1, 0, {9, 9, 9});
    image.flipHorizontal();
    EXPECT_EQ(image.pixel(6, 0), Color(9, 9, 9));
    image.flipVertical();
    EXPECT_EQ(image.pixel(6, 3), Color(9, 9, 9));
    image.chequerboard(2, {1, 1, 1}, {2, 2, 2});
    EXPECT_EQ(image.pixel(1, 1), Color(1, 1, 1));
    EXPECT_EQ(image.pixel(2, 1), Color(2, 2, 2));
    image.add(0.25);
    EXPECT_EQ(image.pixel(1, 1).rgba().r, 65);
    image.premultiply();
    EXPECT_EQ(image.type(), PixelType::RGBAPremultiplied);
    image.setFlipped(true);
    EXPECT_TRUE(image.isFlipped());
}

TEST(CppImage, ReadsSegmentMarks) {
    Image image(PixelType::RGB, 20, 20);
    const Color marker = Color::rgb(0, 255, 255);
    image.setPixel(0, 0, marker);
    for (const int32_t x : {1, 6, 12, 19})
        image.setPixel(x, 2, marker);
    image.setPixel(2, 1, marker);
    image.setPixel(2, 19, marker);
    image.readSegmentMarks();
    EXPECT_TRUE(image.isSegmented());
    EXPECT_EQ(image.segmentLayout(), 2);
    EXPECT_EQ(image.segment(0, 0).x0, 2);
    image.setPixel(0, 0, Color::rgb(0, 0, 0));
    image.readSegmentMarks();
    EXPECT_FALSE(image.isSegmented());
    EXPECT_FALSE(image.setTile(0, 0));
    EXPECT_EQ(image.tileCount(), IntPoint(0, 0));
    EXPECT_FALSE(image.isTiled());
    image.tile();
}

TEST(CppImage, IsALockable) {
    Image image(PixelType::A, 4, 4);
    const std::lock_guard<Image> guard(image);
    EXPECT_TRUE(image);
}

TEST(CppMorph, MovesPicturesByLines) {
    Image source(PixelType::RGBA, 30, 6);
    source.setPixel(5, 3, {9, 8, 7, 6});
    Image result(PixelType::RGBA, 30, 6);
    const std::vector<MorphLine> from = {{{5, 0}, {5, 5}}};
    const std::vector<MorphLine> to = {{{15, 0}, {15, 5}}};
    EXPECT_TRUE(morph(source, result, from, to, 0.5));
    EXPECT_EQ(result.pixel(10, 3), Color(9, 8, 7, 6));
    EXPECT_FALSE(morph(source, result, from, {}, 0.5));
    EXPECT_FALSE(morph(source, Image(PixelType::RGB, 30, 6), from, to, 0.5));
    static_assert(sizeof(MorphLine) == sizeof(LxMorphLine));
}
