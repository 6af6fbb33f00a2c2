#include "morph/Morph.h"

#include <cmath>
#include <cstring>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "foundation/VectorLevel.h"
#include "image/Image.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/PlainMorph.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

using Lines = std::vector<LxMorphLine>;

// Morphs without the progress lines getting into the test's output.
int32_t morph(const ImageHandle &source, const ImageHandle &destination, const Lines &from, const Lines &to,
              int32_t frames = 1) {
    testing::internal::CaptureStdout();
    const int32_t answer = LxMorphFrames(source.get(), destination.get(), from.data(), to.data(),
                                         static_cast<int32_t>(from.size()), frames);
    testing::internal::GetCapturedStdout();
    return answer;
}

uint8_t *data(const ImageHandle &image) {
    return static_cast<uint8_t *>(LxImage_Data(image.get()));
}

ImageHandle makeNoise(Random &random, int32_t type, int32_t width, int32_t height) {
    ImageHandle image = makeImage(type, width, height);
    for (int32_t i = 0; i < LxImage_DataSize(image.get()); ++i)
        data(image)[i] = static_cast<uint8_t>(random.word());
    return image;
}

std::string packed(const ImageHandle &image, int32_t bytes) {
    return {reinterpret_cast<const char *>(data(image)),
            static_cast<size_t>(LxImage_w(image.get()) * LxImage_h(image.get()) * bytes)};
}

// Runs a check with every vector level that this machine has.
template <class Check>
void forEveryLevel(Check check) {
    for (const VectorLevel level : {VectorLevel::baseline, VectorLevel::avx2}) {
        capVectorLevel(level);
        SCOPED_TRACE(vectorLevelName(vectorLevel()));
        check();
    }
    capVectorLevel(bestVectorLevel());
}

// In place each frame reads what the one before wrote, and so shows how far the lines had gone in it. Rows
// smear, as their pixels are overwritten from the left.
void expectShifts(Random &random, int32_t distance, const std::vector<int32_t> &shifts) {
    const ImageHandle image = makeNoise(random, kLxPixelA, 30, 4);
    std::vector<uint8_t> expected(data(image), data(image) + 120);
    for (const int32_t shift : shifts)
        for (size_t i = 0; i < 120; ++i) {
            const auto x = static_cast<int32_t>(i % 30);
            expected[i] = expected[i - static_cast<size_t>(std::min(shift, x))];
        }
    morph(image, image, {morphLine(5, 0, 5, 3)}, {morphLine(5 + distance, 0, 5 + distance, 3)},
          static_cast<int32_t>(shifts.size()));
    EXPECT_EQ(std::memcmp(data(image), expected.data(), 120), 0) << distance;
}

} // namespace

TEST(Morph, EqualLinesCopyTheSource) {
    Random random;
    const Lines lines = {morphLine(3, 4, 25, 30)};
    for (const int32_t frames : {1, 2, 7}) {
        const ImageHandle source = makeNoise(random, kLxPixelRGB, 40, 40);
        const ImageHandle destination = makeImage(kLxPixelRGB, 40, 40);
        EXPECT_EQ(morph(source, destination, lines, lines, frames), frames + 1);
        EXPECT_EQ(packed(destination, 3), packed(source, 3));
    }
}

TEST(Morph, AShiftedLineShiftsThePictureAndRepeatsTheEdge) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelA, 40, 20);
    const ImageHandle destination = makeImage(kLxPixelA, 40, 20);
    morph(source, destination, {morphLine(5, 2, 5, 18)}, {morphLine(15, 2, 15, 18)}, 3);
    for (int32_t y = 0; y < 20; ++y)
        for (int32_t x = 0; x < 40; ++x)
            ASSERT_EQ(data(destination)[y * 40 + x], data(source)[y * 40 + std::max(x - 10, 0)])
                << x << ", " << y;
}

TEST(Morph, WritesAProgressLineForEveryRowOfEveryFrame) {
    const ImageHandle source = makeImage(kLxPixelA, 4, 2);
    const ImageHandle destination = makeImage(kLxPixelA, 4, 2);
    const LxMorphLine line = morphLine(0, 0, 3, 1);
    testing::internal::CaptureStdout();
    EXPECT_EQ(LxMorphFrames(source.get(), destination.get(), &line, &line, 1, 2), 3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "processing frame 1: line 0 of 2\n"
                                                      "processing frame 1: line 1 of 2\n"
                                                      "processing frame 2: line 0 of 2\n"
                                                      "processing frame 2: line 1 of 2\n");
}

TEST(Morph, BelowOneFrameNothingHappens) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelA, 8, 8);
    const ImageHandle destination = makeImage(kLxPixelA, 8, 8);
    for (const int32_t frames : {0, -3}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(LxMorphFrames(source.get(), destination.get(), nullptr, nullptr, 0, frames), frames);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    }
    EXPECT_EQ(packed(destination, 1), std::string(64, '\0'));
}

TEST(Morph, OtherTypesStayAsTheyAre) {
    Random random;
    for (const int32_t type : {kLxPixelRGBA, kLxPixelRGBAPremultiplied, kLxPixelF, kLxPixelL}) {
        const ImageHandle source = makeNoise(random, type, 8, 8);
        const ImageHandle destination = makeImage(type, 8, 8);
        const Lines lines = {morphLine(0, 0, 3, 3)};
        EXPECT_EQ(morph(source, destination, lines, lines, 2), 3);
        EXPECT_EQ(packed(destination, 4), std::string(256, '\0'));
    }
}

TEST(Morph, RowsArePackedWhateverTheirDistance) {
    // Rows of 5 three-byte pixels lie 16 bytes apart in the image, and 15 here.
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelRGB, 5, 4);
    const ImageHandle destination = makeImage(kLxPixelRGB, 5, 4);
    const Lines lines = {morphLine(0, 0, 4, 3)};
    morph(source, destination, lines, lines);
    EXPECT_EQ(packed(destination, 3), packed(source, 3));
    for (int32_t i = 60; i < 64; ++i)
        EXPECT_EQ(data(destination)[i], 0);
}

TEST(Morph, WithoutLinesOrWithLinesOfNoLengthPixelsStayInPlace) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelA, 9, 7);
    const ImageHandle destination = makeImage(kLxPixelA, 9, 7);
    morph(source, destination, {}, {});
    EXPECT_EQ(packed(destination, 1).substr(0, 63), packed(source, 1).substr(0, 63));
    morph(source, destination, {morphLine(3, 3, 3, 3)}, {morphLine(3, 3, 3, 3)});
    EXPECT_EQ(packed(destination, 1).substr(0, 63), packed(source, 1).substr(0, 63));
}

TEST(Morph, OneLineThatLosesItsLengthKeepsEveryPixelInPlace) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelA, 12, 7);
    const ImageHandle destination = makeImage(kLxPixelA, 12, 7);
    morph(source, destination, {morphLine(2, 0, 2, 6), morphLine(3, 3, 5, 3)},
          {morphLine(6, 0, 6, 6), morphLine(4, 4, 4, 4)});
    EXPECT_EQ(packed(destination, 1), packed(source, 1)) << "its weight is not a number, nor is their sum";
}

TEST(Morph, FromALineWithoutLengthEveryPixelIsTheFirst) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelA, 12, 7);
    const ImageHandle destination = makeImage(kLxPixelA, 12, 7);
    morph(source, destination, {morphLine(3, 3, 3, 3)}, {morphLine(1, 2, 9, 5)});
    EXPECT_EQ(packed(destination, 1), std::string(84, static_cast<char>(data(source)[0])))
        << "a place that is not a number is held at 0";
}

TEST(Morph, NullAndTooSmallImagesAndMissingLinesAreLeftAlone) {
    const ImageHandle source = makeImage(kLxPixelRGB, 20, 20);
    const ImageHandle small = makeImage(kLxPixelRGB, 10, 10);
    const LxMorphLine line = morphLine(0, 0, 3, 3);
    EXPECT_EQ(LxMorphFrames(nullptr, small.get(), &line, &line, 1, 1), 1);
    EXPECT_EQ(LxMorphFrames(source.get(), nullptr, &line, &line, 1, 1), 1);
    EXPECT_EQ(LxMorphFrames(source.get(), small.get(), &line, &line, 1, 1), 1);
    const ImageHandle bare(LxImage_CreateEx(kLxPixelRGB, 0, 0, 20, 20, nullptr, 60, 0, 0, 0));
    EXPECT_EQ(LxMorphFrames(source.get(), bare.get(), &line, &line, 1, 1), 1);
    EXPECT_EQ(LxMorphFrames(bare.get(), source.get(), &line, &line, 1, 1), 1);
    EXPECT_EQ(LxMorphFrames(source.get(), source.get(), nullptr, &line, 1, 1), 1);
    EXPECT_EQ(LxMorphFrames(source.get(), source.get(), &line, nullptr, 1, 1), 1);
}

TEST(Morph, AgreesWithThePlainFormToTheByte) {
    forEveryLevel([] {
        Random random;
        for (int round = 0; round < 60; ++round) {
            const int32_t width = random.integer(1, 70);
            const int32_t height = random.integer(1, 40);
            const int32_t bytes = random.coin() ? 1 : 3;
            const int32_t count = random.integer(1, 9);
            const auto line = [&] {
                return morphLine(random.integer(-5, width + 5), random.integer(-5, height + 5),
                                 random.integer(-5, width + 5), random.integer(-5, height + 5));
            };
            Lines from;
            Lines to;
            for (int32_t i = 0; i < count; ++i) {
                from.push_back(line());
                to.push_back(random.integer(0, 9) == 0 ? from.back() : line());
            }
            const ImageHandle source = makeNoise(random, bytes == 1 ? kLxPixelA : kLxPixelRGB, width, height);
            const ImageHandle destination = makeImage(bytes == 1 ? kLxPixelA : kLxPixelRGB, width, height);
            std::vector<uint8_t> expected(static_cast<size_t>(width * height * bytes));
            plainMorph(data(source), expected.data(), width, height, bytes, from, to);
            morph(source, destination, from, to, random.integer(1, 3));
            ASSERT_EQ(std::memcmp(data(destination), expected.data(), expected.size()), 0)
                << "round " << round;
        }
    });
}

TEST(Morph, TakesAHundredLinesAndMore) {
    Random random;
    Lines lines;
    for (int i = 0; i < 250; ++i)
        lines.push_back(morphLine(random.integer(0, 20), random.integer(0, 20), random.integer(0, 20),
                                  random.integer(0, 20)));
    const ImageHandle source = makeNoise(random, kLxPixelA, 20, 20);
    const ImageHandle destination = makeImage(kLxPixelA, 20, 20);
    std::vector<uint8_t> expected(400);
    plainMorph(data(source), expected.data(), 20, 20, 1, lines, lines);
    morph(source, destination, lines, lines);
    EXPECT_EQ(std::memcmp(data(destination), expected.data(), expected.size()), 0);
}

TEST(Morph, OfAnImageOntoItselfEveryFrameReadsWhatTheOneBeforeWrote) {
    Random random;
    expectShifts(random, 6, {3, 6});
}

// 0.33333334, 0.6666667 and 1 of the way in single precision: of 3 and of 24 just the whole thirds, not a
// hair less, which would be cut to one pixel less.
TEST(Morph, InThreeFramesTheLinesGoByThirds) {
    Random random;
    expectShifts(random, 3, {1, 2, 3});
    expectShifts(random, 24, {8, 16, 24});
}

TEST(Morph, AnyLinesAreSafe) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelRGB, 17, 9);
    const ImageHandle destination = makeImage(kLxPixelRGB, 17, 9);
    for (int round = 0; round < 300; ++round) {
        const auto line = [&random] {
            return LxMorphLine{random.anyInteger(),
                               random.anyInteger(),
                               random.anyInteger(),
                               random.anyInteger(),
                               random.anyInteger(),
                               random.anyInteger(),
                               static_cast<float>(random.anyReal()),
                               random.anyInteger()};
        };
        morph(source, destination, {line(), line()}, {line(), line()}, 2);
    }
}

// ---- One frame of images as they lie ----

namespace {

// Every pixel of an image, row after row from the top, without what lies between rows.
std::string pixels(const ImageHandle &image, int32_t bytes) {
    std::string all;
    for (int32_t y = 0; y < LxImage_h(image.get()); ++y)
        all.append(reinterpret_cast<const char *>(rowAddress(*image, y)),
                   static_cast<size_t>(LxImage_w(image.get()) * bytes));
    return all;
}

int32_t frame(const ImageHandle &source, const ImageHandle &destination, const Lines &from, const Lines &to,
              double t) {
    return LxMorph_Frame(source.get(), destination.get(), from.data(), to.data(),
                         static_cast<int32_t>(from.size()), t);
}

} // namespace

TEST(MorphFrame, AgreesWithThePlainFormForEveryTypeAndEitherOrderOfRows) {
    Random random;
    const struct {
        int32_t type, bytes;
    } kinds[] = {{kLxPixelA, 1}, {kLxPixelRGB, 3}, {kLxPixelRGBA, 4}, {kLxPixelRGBAPremultiplied, 4},
                 {kLxPixelF, 4}, {kLxPixelL, 4}};
    for (const auto &[type, bytes] : kinds)
        for (int round = 0; round < 12; ++round) {
            const int32_t width = random.integer(1, 40);
            const int32_t height = random.integer(1, 25);
            const auto line = [&] {
                return morphLine(random.integer(-5, width + 5), random.integer(-5, height + 5),
                                 random.integer(-5, width + 5), random.integer(-5, height + 5));
            };
            const Lines from = {line(), line(), line()};
            const Lines to = {line(), line(), line()};
            const ImageHandle source = makeNoise(random, type, width, height);
            LxImage_SetFlipped(source.get(), random.integer(0, 1));
            const ImageHandle destination = makeImage(type, width, height, random.coin());
            const std::string packedSource = pixels(source, bytes);
            std::string expected(packedSource.size(), '\0');
            plainMorph(reinterpret_cast<const uint8_t *>(packedSource.data()),
                       reinterpret_cast<uint8_t *>(expected.data()), width, height, bytes, from, to);
            ASSERT_EQ(frame(source, destination, from, to, 1.0), 1);
            ASSERT_EQ(pixels(destination, bytes), expected) << "type " << type << ", round " << round;
        }
}

TEST(MorphFrame, IsTheSameAsTheLastOfTheFramesDrawnOverEachOther) {
    Random random;
    const Lines from = {morphLine(2, 3, 30, 20), morphLine(5, 30, 25, 28)};
    const Lines to = {morphLine(6, 1, 28, 24), morphLine(5, 30, 30, 20)};
    const ImageHandle source = makeNoise(random, kLxPixelRGB, 40, 36); // rows without padding
    const ImageHandle whole = makeImage(kLxPixelRGB, 40, 36);
    const ImageHandle one = makeImage(kLxPixelRGB, 40, 36);
    morph(source, whole, from, to, 3);
    EXPECT_EQ(frame(source, one, from, to, 1.0), 1);
    EXPECT_EQ(pixels(one, 3), pixels(whole, 3));
}

TEST(MorphFrame, TheLinesGoAsFarAsTSays) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelRGBA, 40, 6);
    const Lines from = {morphLine(5, 0, 5, 5)};
    const Lines to = {morphLine(15, 0, 15, 5)};
    for (const auto &[t, shift] : {std::pair{0.0, 0}, {0.5, 5}, {1.0, 10}, {2.0, 20}}) {
        const ImageHandle destination = makeImage(kLxPixelRGBA, 40, 6);
        ASSERT_EQ(frame(source, destination, from, to, t), 1);
        for (int32_t y = 0; y < 6; ++y)
            for (int32_t x = 0; x < 40; ++x)
                ASSERT_EQ(std::memcmp(LxImage_Pointer(destination.get(), x, y),
                                      LxImage_Pointer(source.get(), std::max(x - shift, 0), y), 4),
                          0)
                    << t << ": " << x << ", " << y;
    }
}

TEST(MorphFrame, WithoutLinesItIsACopy) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelRGB, 5, 4);
    const ImageHandle destination = makeImage(kLxPixelRGB, 5, 4);
    EXPECT_EQ(LxMorph_Frame(source.get(), destination.get(), nullptr, nullptr, 0, 1.0), 1);
    EXPECT_EQ(pixels(destination, 3), pixels(source, 3));
}

TEST(MorphFrame, WhatDoesNotFitIsRefusedAndStaysAsItIs) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelRGB, 8, 6);
    const ImageHandle destination = makeImage(kLxPixelRGB, 8, 6);
    const Lines lines = {morphLine(0, 0, 3, 3)};
    const auto refuses = [&](const LxImage *from, LxImage *to, const LxMorphLine *a, const LxMorphLine *b,
                             int32_t count,
                             double t) { return LxMorph_Frame(from, to, a, b, count, t) == 0; };
    const LxMorphLine *line = lines.data();
    EXPECT_TRUE(refuses(nullptr, destination.get(), line, line, 1, 1.0));
    EXPECT_TRUE(refuses(source.get(), nullptr, line, line, 1, 1.0));
    EXPECT_TRUE(refuses(source.get(), destination.get(), nullptr, line, 1, 1.0));
    EXPECT_TRUE(refuses(source.get(), destination.get(), line, nullptr, 1, 1.0));
    EXPECT_TRUE(refuses(source.get(), destination.get(), line, line, -1, 1.0));
    EXPECT_TRUE(refuses(source.get(), destination.get(), line, line, 1, NAN));
    EXPECT_TRUE(refuses(source.get(), destination.get(), line, line, 1, INFINITY));
    EXPECT_TRUE(refuses(source.get(), makeImage(kLxPixelRGB, 8, 5).get(), line, line, 1, 1.0));
    EXPECT_TRUE(refuses(source.get(), makeImage(kLxPixelRGBA, 8, 6).get(), line, line, 1, 1.0));
    EXPECT_EQ(pixels(destination, 3), std::string(8 * 6 * 3, '\0'));
}

TEST(MorphFrame, SharedAndMissingMemoryIsRefused) {
    uint8_t memory[24] = {};
    const LxMorphLine line = morphLine(0, 0, 3, 3);
    const ImageHandle a(LxImage_CreateEx(kLxPixelA, 0, 0, 4, 4, memory, 4, 0, 0, 0));
    const ImageHandle b(LxImage_CreateEx(kLxPixelA, 0, 0, 4, 4, memory + 8, 4, 0, 0, 0));
    const ImageHandle none(LxImage_CreateEx(kLxPixelA, 0, 0, 4, 4, nullptr, 4, 0, 0, 0));
    const ImageHandle narrow(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 4, 1, memory, 8, 0, 0, 0));
    const ImageHandle other = makeImage(kLxPixelA, 4, 4);
    const ImageHandle wide = makeImage(kLxPixelRGBA, 4, 1);
    EXPECT_EQ(LxMorph_Frame(a.get(), a.get(), &line, &line, 1, 1.0), 0);
    EXPECT_EQ(LxMorph_Frame(a.get(), b.get(), &line, &line, 1, 1.0), 0);
    EXPECT_EQ(LxMorph_Frame(none.get(), other.get(), &line, &line, 1, 1.0), 0);
    EXPECT_EQ(LxMorph_Frame(narrow.get(), wide.get(), &line, &line, 1, 1.0), 0) << "rows are too short";
    EXPECT_EQ(LxMorph_Frame(a.get(), other.get(), &line, &line, 1, 1.0), 1);
}

TEST(MorphFrame, AnyLinesAreSafe) {
    Random random;
    const ImageHandle source = makeNoise(random, kLxPixelRGBA, 17, 9);
    const ImageHandle destination = makeImage(kLxPixelRGBA, 17, 9);
    for (int round = 0; round < 300; ++round) {
        const auto line = [&random] {
            return LxMorphLine(random.anyInteger(), random.anyInteger(), random.anyInteger(),
                               random.anyInteger());
        };
        frame(source, destination, {line(), line()}, {line(), line()}, random.anyReal());
    }
}

TEST(MorphLine, DerivesWhatItsEndsTell) {
    const LxMorphLine line = LxMorphLine(10, -2, 7, 2);
    EXPECT_EQ(line.x0, 10);
    EXPECT_EQ(line.y0, -2);
    EXPECT_EQ(line.x1, 7);
    EXPECT_EQ(line.y1, 2);
    EXPECT_EQ(line.dx, -3);
    EXPECT_EQ(line.dy, 4);
    EXPECT_EQ(line.lengthSquared, 25);
    EXPECT_EQ(line.length, 5.0f);
}
