#include "gc/renderers/Spans.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/VectorLevel.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

// Runs a check at every level that this machine has.
template <class Check>
void atEachLevel(Check check) {
    for (const VectorLevel level : {VectorLevel::baseline, VectorLevel::avx2}) {
        if (level > bestVectorLevel())
            continue;
        capVectorLevel(level);
        SCOPED_TRACE(vectorLevelName(level));
        check();
    }
    capVectorLevel(bestVectorLevel());
}

std::vector<uint32_t> randomWords(Random &random, size_t count) {
    std::vector<uint32_t> words(count);
    for (uint32_t &word : words)
        word = random.byte() | random.byte() << 8 | random.byte() << 16 | uint32_t{random.byte()} << 24;
    return words;
}

uint32_t mixedByRule(uint32_t pixel, uint32_t color, uint32_t w) {
    if (w == 0)
        return pixel;
    uint32_t result = std::max(pixel >> 24, w) << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        const uint32_t f = color >> shift & 255, c = pixel >> shift & 255;
        result |= (w == 255 ? f : ((f + 1) * w + (c + 1) * (255 - w)) >> 8) << shift;
    }
    return result;
}

} // namespace

TEST(Spans, FillWritesTheRunAndNoMore) {
    atEachLevel([] {
        for (size_t count = 0; count < 70; ++count) {
            std::vector<uint32_t> out(count + 2, 7);
            spanFunctions().fill(out.data() + 1, 0x89ABCDEF, count);
            EXPECT_EQ(out.front(), 7u);
            EXPECT_EQ(out.back(), 7u);
            EXPECT_EQ(std::count(out.begin(), out.end(), 0x89ABCDEF), static_cast<ptrdiff_t>(count));
        }
    });
}

TEST(Spans, MixFollowsTheRuleForEveryByteAndWeight) {
    atEachLevel([] {
        for (uint32_t w = 0; w < 256; ++w)
            for (uint32_t f = 0; f < 256; f += 5) {
                std::vector<uint32_t> out(256);
                for (uint32_t c = 0; c < 256; ++c)
                    out[c] = c * 0x01010101;
                const std::vector<uint32_t> before = out;
                spanFunctions().mix(out.data(), f * 0x01010101, w, out.size());
                for (uint32_t c = 0; c < 256; ++c)
                    ASSERT_EQ(out[c], mixedByRule(before[c], f * 0x01010101, w)) << w << " " << f;
            }
    });
}

TEST(Spans, MixAndBlendFollowTheRuleForRunsOfEveryLength) {
    Random random;
    atEachLevel([&] {
        for (size_t count = 0; count < 70; ++count) {
            const std::vector<uint32_t> before = randomWords(random, count + 2);
            const std::vector<uint32_t> colors = randomWords(random, count);
            const uint32_t w = random.byte(), opacity = random.byte(), color = random.word();
            std::vector<uint32_t> mixed = before, blended = before, expectMixed = before,
                                  expectBlended = before;
            for (size_t i = 0; i < count; ++i) {
                expectMixed[i + 1] = mixedByRule(before[i + 1], color, w);
                expectBlended[i + 1] =
                    mixedByRule(before[i + 1], colors[i], opacity * ((colors[i] >> 24) + 1) >> 8);
            }
            spanFunctions().mix(mixed.data() + 1, color, w, count);
            spanFunctions().blend(blended.data() + 1, colors.data(), opacity, count);
            ASSERT_EQ(mixed, expectMixed);
            ASSERT_EQ(blended, expectBlended);
        }
    });
}

TEST(Spans, BlendNarrowGivesEachRowTheSameColours) {
    Random random;
    constexpr size_t stride = narrowPixels + 5;
    atEachLevel([&] {
        for (size_t count = 1; count <= size_t{narrowPixels}; ++count)
            for (const size_t rows : {1, 2, 7}) {
                std::vector<uint32_t> pixels = randomWords(random, stride * rows);
                std::vector<uint32_t> colors = randomWords(random, count);
                colors.resize(narrowPixels);
                const uint32_t opacity = random.byte();
                std::vector<uint32_t> expected = pixels;
                for (size_t i = 0; i < rows * count; ++i) {
                    uint32_t &pixel = expected[i / count * stride + i % count];
                    const uint32_t color = colors[i % count];
                    pixel = mixedByRule(pixel, color, opacity * ((color >> 24) + 1) >> 8);
                }
                // From the last row up, as in a flipped image.
                spanFunctions().blendNarrow(pixels.data() + (rows - 1) * stride, -4 * ptrdiff_t{stride}, rows,
                                            colors.data(), opacity, count);
                ASSERT_EQ(pixels, expected) << count << " pixels, " << rows << " rows";
            }
    });
}

TEST(Spans, PackTakesTheBytesOfColours) {
    Random random;
    atEachLevel([&] {
        for (size_t count = 0; count < 40; ++count) {
            std::vector<LxColor> colors(count);
            std::vector<uint32_t> expected(count + 1, 5), out(count + 1, 5);
            for (size_t i = 0; i < count; ++i) {
                colors[i] = LxColor_L(static_cast<int32_t>(random.word()));
                std::memcpy(&expected[i], &colors[i].content, 4);
            }
            spanFunctions().pack(out.data(), colors.data(), count);
            ASSERT_EQ(out, expected);
        }
    });
}
