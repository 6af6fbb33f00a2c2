#include "blend/Composite.h"

#include <cstring>

#include <gtest/gtest.h>

#include "tests/blend/OnePixel.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

// One-byte images, whose pixels are told as rows of characters and read back in the same way: logical rows,
// the top one first.
ImageHandle makePicture(const std::vector<std::string> &rows, int32_t x = 0, int32_t y = 0,
                        bool flipped = false) {
    const auto w = static_cast<int32_t>(rows[0].size()), h = static_cast<int32_t>(rows.size());
    ImageHandle image(LxImage_Create(kLxPixelA, x, y, x + w, y + h, 1, flipped));
    for (int32_t row = 0; row < h; ++row)
        std::memcpy(rowAddress(*image, row), rows[static_cast<size_t>(row)].data(), static_cast<size_t>(w));
    return image;
}

std::vector<std::string> pictureOf(const ImageHandle &image) {
    std::vector<std::string> rows;
    for (int32_t y = 0; y < LxImage_h(image.get()); ++y) {
        const auto *row = reinterpret_cast<const char *>(rowAddress(*image, y));
        rows.emplace_back(row, static_cast<size_t>(LxImage_w(image.get())));
    }
    return rows;
}

using Picture = std::vector<std::string>;

const Picture letters = {"abcdef", "ghijkl", "mnopqr"};
const Picture dots = {"........", "........", "........", "........"};

LxBlend copying() {
    return blendOf(Mode::src);
}

} // namespace

TEST(Composite, ImagesMeetWhereTheyLie) {
    LxBlend blend = copying();
    for (const bool flippedOut : {false, true}) {
        for (const bool flippedB : {false, true}) {
            const ImageHandle out = makePicture(dots, 10, 20, flippedOut);
            const ImageHandle b = makePicture(letters, 13, 22, flippedB);
            LxBlend_Image_Image(&blend, out.get(), b.get(), nullptr, nullptr);
            EXPECT_EQ(pictureOf(out), (Picture{"........", "........", "...abcde", "...ghijk"}));
        }
    }
}

TEST(Composite, ARectangleLimitsTheResult) {
    LxBlend blend = copying();
    const ImageHandle out = makePicture(dots), b = makePicture(letters, 1, 1);
    const LxRectL rect = {3, 2, 5, 9};
    LxBlend_Image_Image(&blend, out.get(), b.get(), nullptr, &rect);
    EXPECT_EQ(pictureOf(out), (Picture{"........", "........", "...ij...", "...op..."}));
    const LxRectL beside = {7, 1, 9, 2};
    LxBlend_Image_Image(&blend, out.get(), b.get(), nullptr, &beside);
    EXPECT_EQ(pictureOf(out), (Picture{"........", "........", "...ij...", "...op..."}));
}

TEST(Composite, ImagesThatOnlyTouchChangeNothing) {
    LxBlend blend = copying();
    const ImageHandle out = makePicture(dots), b = makePicture(letters, 8, 0),
                      below = makePicture(letters, 0, 4);
    LxBlend_Image_Image(&blend, out.get(), b.get(), nullptr, nullptr);
    LxBlend_Image_Image(&blend, out.get(), below.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(out), dots);
}

TEST(Composite, AMaskLiesInTheSameSystem) {
    LxBlend blend = copying();
    for (const bool flipped : {false, true}) {
        const ImageHandle out = makePicture(dots), b = makePicture(letters, 1, 1);
        const ImageHandle mask = makePicture({std::string("\1\0\1\1\0", 5), std::string("\0\1\1\1\1", 5),
                                              std::string("\1\0\0\0\1", 5), std::string("\0\0\0\0\0", 5)},
                                             2, 1, flipped);
        LxBlend_Image_Image(&blend, out.get(), b.get(), mask.get(), nullptr);
        // The result is cut to the mask's five columns and four rows.
        EXPECT_EQ(pictureOf(out), (Picture{"........", "..b.de..", "...ijkl.", "..n...r."}));
        EXPECT_EQ(blend.premultiplied, 0u);
    }
}

TEST(Composite, AMaskOfAnotherTypeCountsAsNone) {
    LxBlend blend = copying();
    const ImageHandle out = makePicture(dots), b = makePicture(letters);
    const ImageHandle mask = makeImage(kLxPixelRGB, 6, 3);
    LxBlend_Image_Image(&blend, out.get(), b.get(), mask.get(), nullptr);
    EXPECT_EQ(pictureOf(out), (Picture{"abcdef..", "ghijkl..", "mnopqr..", "........"}));
}

TEST(Composite, ThreeImages) {
    LxBlend blend = blendOf(Mode::add);
    const ImageHandle out = makePicture(dots);
    const Picture as = {"aaaaa", "aaaaa", "aaaaa"};
    const ImageHandle a = makePicture(as, 2, 1),
                      b = makePicture({"\1\2\3\4\5", "\5\6\7\1\1", "\1\1\1\1\1"}, 0, 1);
    LxBlend_Image_Image_Image(&blend, out.get(), a.get(), b.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(out), (Picture{"........", "..def...", "..hbb...", "..bbb..."}))
        << "cut to a as well";
    EXPECT_EQ(pictureOf(a), as);
}

TEST(Composite, AnImageOnItself) {
    LxBlend blend = blendOf(Mode::multiply);
    const ImageHandle image = makePicture({"\200\100", "\300\377"});
    LxBlend_Image(&blend, image.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(image), (Picture{"\100\020", "\220\376"}));
}

TEST(Composite, AnImageOnItselfAwayFromTheOriginShifts) {
    // From its corner to its position, row by row: the third row repeats what the second has just become.
    LxBlend blend = copying();
    const ImageHandle image = makePicture(letters, 2, 1);
    LxBlend_Image(&blend, image.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(image), (Picture{"abcdef", "ghabcd", "mnghab"}));
    // In one row, pixel by pixel.
    const ImageHandle beside = makePicture(letters, 2, 0);
    LxBlend_Image(&blend, beside.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(beside), (Picture{"ababab", "ghghgh", "mnmnmn"}));
}

TEST(Composite, WhenBIsAnOperandTheOthersAreNotTouched) {
    LxBlend blend = blendOf(Mode::flip);
    const ImageHandle out = makePicture(dots), b = makePicture({"\205"});
    LxBlend_Image_Image_Image(&blend, out.get(), b.get(), b.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(out), dots);
    EXPECT_EQ(pictureOf(b), Picture{std::string(1, '\0')});
}

TEST(Composite, PremultipliedDestinationsHaveNoKernelAndSourcesAreStraight) {
    LxBlend blend = blendOf(Mode::srcOver);
    const ImageHandle premultiplied = makeImage(kLxPixelRGBAPremultiplied, 3, 3),
                      straight = makeImage(kLxPixelRGBA, 3, 3);
    LxImage_Fill(straight.get(), LxColor_RGBA(9, 8, 7, 255));
    LxBlend_Image_Image(&blend, premultiplied.get(), straight.get(), nullptr, nullptr);
    EXPECT_EQ(*static_cast<const uint8_t *>(LxImage_ConstData(premultiplied.get())), 0);
    LxImage_Fill(premultiplied.get(), LxColor_RGBA(1, 2, 3, 255));
    const ImageHandle mask = makeImage(kLxPixelA, 3, 3);
    LxImage_Fill(mask.get(), LxColor_A(255));
    LxBlend_Image_Image(&blend, straight.get(), premultiplied.get(), mask.get(), nullptr);
    EXPECT_EQ(*static_cast<const uint8_t *>(LxImage_ConstData(straight.get())), 1);
    EXPECT_EQ(blend.premultiplied, 0u);
}

TEST(Composite, AMaskedCallLeavesNoPremultipliedMark) {
    LxBlend blend = blendOf(Mode::srcOver);
    blend.premultiplied = 1;
    const ImageHandle out = makeImage(kLxPixelRGBA, 3, 3), b = makeImage(kLxPixelRGB, 3, 3),
                      mask = makeImage(kLxPixelA, 3, 3);
    LxBlend_Image_Image(&blend, out.get(), b.get(), nullptr, nullptr);
    EXPECT_EQ(blend.premultiplied, 1u) << "without a mask the call has a copy of the blend";
    LxBlend_Image_Image(&blend, out.get(), b.get(), mask.get(), nullptr);
    EXPECT_EQ(blend.premultiplied, 0u);
}

TEST(Composite, ATiledSourceAndNullsChangeNothing) {
    LxBlend blend = copying();
    const ImageHandle out = makePicture(dots), b = makePicture(letters);
    b->tiled = 1;
    LxBlend_Image_Image(&blend, out.get(), b.get(), nullptr, nullptr);
    LxBlend_Image(&blend, b.get(), nullptr, nullptr);
    b->tiled = 0;
    b->segment = 1;
    LxBlend_Image(&blend, b.get(), nullptr, nullptr);
    b->segment = 0;
    LxBlend_Image_Image(nullptr, out.get(), b.get(), nullptr, nullptr);
    LxBlend_Image_Image(&blend, nullptr, b.get(), nullptr, nullptr);
    LxBlend_Image_Image(&blend, out.get(), nullptr, nullptr, nullptr);
    LxBlend_Image_Image_Image(&blend, out.get(), nullptr, b.get(), nullptr, nullptr);
    LxBlend_Image(nullptr, b.get(), nullptr, nullptr);
    LxBlend_Image(&blend, nullptr, nullptr, nullptr);
    EXPECT_EQ(pictureOf(out), dots);
    EXPECT_EQ(pictureOf(b), letters);
}

TEST(Composite, ImagesWithoutPixelsChangeNothing) {
    LxBlend blend = copying();
    const ImageHandle out = makePicture(dots), a = makePicture(letters), b = makePicture(letters);
    const ImageHandle none(LxImage_CreateEx(kLxPixelA, 0, 0, 6, 3, nullptr, 8, 0, 0, 0));
    LxBlend_Image_Image_Image(&blend, none.get(), a.get(), b.get(), nullptr, nullptr);
    LxBlend_Image_Image_Image(&blend, out.get(), none.get(), b.get(), nullptr, nullptr);
    LxBlend_Image_Image_Image(&blend, out.get(), a.get(), none.get(), nullptr, nullptr);
    LxBlend_Image_Image_Image(&blend, out.get(), a.get(), b.get(), none.get(), nullptr); // a mask
    LxBlend_Image(&blend, none.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(out), dots);
    EXPECT_EQ(pictureOf(a), letters);
    EXPECT_EQ(pictureOf(b), letters);
}

TEST(Composite, ImagesInTheirRecordKeepTheirAddressing) {
    // Only the pixel (1, 1) overlaps, and the record shows its first pixel there.
    LxBlend blend = copying();
    const ImageHandle out = makePicture({"....", "...."}), b = makePicture({"ab", "cd"}, 3, 1);
    LxBlend_Image_Image(&blend, out.get(), b.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(out), (Picture{"a...", "...."}));
    // A flipped one starts there too, with nothing before it: one row is drawn.
    const ImageHandle flipped = makePicture({"....", "...."}, 0, 0, true), source = makePicture(letters);
    LxBlend_Image_Image(&blend, flipped.get(), source.get(), nullptr, nullptr);
    EXPECT_EQ(pictureOf(flipped), (Picture{"....", "abcd"}));
}

TEST(Composite, NothingOutsideTheImagesIsTouchedWhateverThePositions) {
    Random random(3);
    for (int i = 0; i < 20000; ++i) {
        const auto make = [&] {
            const int32_t type = random.integer(0, 7);
            ImageHandle image = makeImage(type, random.integer(1, 9), random.integer(1, 9), random.coin());
            const auto at = [&] {
                return random.integer(0, 9) == 0 ? random.anyInteger() : random.integer(-5, 5);
            };
            LxImage_MoveTo(image.get(), at(), at());
            image->segment = random.integer(0, 3) == 0 ? random.word() & 7 : 0;
            for (int slot = 0; slot < 9; ++slot) {
                const auto any = [&] {
                    return random.integer(0, 9) == 0 ? random.anyInteger() : random.integer(0, 9);
                };
                image->cut.setSegment(slot, {any(), any(), any(), any()});
            }
            image->cut.setSwitches(random.word());
            return image;
        };
        const ImageHandle images[3] = {make(), make(), make()};
        const ImageHandle mask = makeImage(random.integer(0, 1), 8, 8, random.coin());
        LxImage_Fill(mask.get(), LxColor_A(200));
        const auto any = [&] { return images[random.word() % 3].get(); };
        const auto at = [&] {
            return random.integer(0, 5) == 0 ? random.anyInteger() : random.integer(-9, 20);
        };
        const LxRectL rect = {at(), at(), at(), at()};
        LxBlend blend = LxBlend_WithChannel(random.integer(0, 45), random.byte(), random.integer(0, 7));
        LxBlend_Image_Image_Image(&blend, any(), any(), any(), random.coin() ? mask.get() : nullptr,
                                  random.coin() ? &rect : nullptr);
        LxBlend_Image(&blend, any(), random.coin() ? mask.get() : nullptr, random.coin() ? &rect : nullptr);
        ASSERT_EQ(blend.premultiplied, 0u);
    }
}
