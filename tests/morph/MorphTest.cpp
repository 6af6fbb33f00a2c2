#include "morph/Morph.h"

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "foundation/VectorLevel.h"
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

TEST(Morph, NullAndTooSmallImagesAreLeftAlone) {
    const ImageHandle source = makeImage(kLxPixelRGB, 20, 20);
    const ImageHandle small = makeImage(kLxPixelRGB, 10, 10);
    const LxMorphLine line = morphLine(0, 0, 3, 3);
    EXPECT_EQ(LxMorphFrames(nullptr, small.get(), &line, &line, 1, 1), 1);
    EXPECT_EQ(LxMorphFrames(source.get(), nullptr, &line, &line, 1, 1), 1);
    EXPECT_EQ(LxMorphFrames(source.get(), small.get(), &line, &line, 1, 1), 1);
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
