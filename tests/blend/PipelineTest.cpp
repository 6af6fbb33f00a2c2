// The fast form agrees with the rules to the bit, on every level that this machine has.
#include "blend/Pipeline.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <vector>

#include <gtest/gtest.h>

#include "blend/Function.h"
#include "blend/Reference.h"
#include "blend/Weight.h"
#include "colour/Hsv.h"
#include "foundation/VectorLevel.h"
#include "tests/blend/OnePixel.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

class BlendPipeline : public testing::TestWithParam<VectorLevel> {
protected:
    void SetUp() override {
        before_ = vectorLevel();
        if (GetParam() > bestVectorLevel())
            GTEST_SKIP() << "this processor has no " << vectorLevelName(GetParam());
        if (GetParam() > before_)
            GTEST_SKIP() << "the level is capped at " << vectorLevelName(before_);
        capVectorLevel(GetParam());
    }
    void TearDown() override { capVectorLevel(before_); }

private:
    VectorLevel before_ = VectorLevel::baseline;
};

// A picture in the middle of guard bytes, at any alignment, with rows in either direction and a gap between
// them, or packed.
struct Picture {
    int step;
    int32_t stride;
    std::vector<uint8_t> memory;
    size_t start;

    Picture(Random &random, int bytes, uint32_t width, uint32_t height, bool packed) : step(bytes) {
        const int32_t row = static_cast<int32_t>(width) * bytes + (packed ? 0 : random.integer(0, 9));
        const auto lead = static_cast<size_t>(random.integer(0, 67));
        memory.resize(lead + static_cast<size_t>(row) * height + 70);
        for (uint8_t &byte : memory)
            byte = random.byte();
        const bool upward = !packed && random.coin();
        stride = upward ? -row : row;
        start = lead + (upward && height > 0 ? static_cast<size_t>(row) * (height - 1) : 0);
    }
    uint8_t *first() { return memory.data() + start; }
    uint8_t *row(uint32_t y) { return first() + int64_t{stride} * y; }
};

// Random bytes at the end of a page, behind which none can be read or written.
class BytesAtTheEnd {
public:
    BytesAtTheEnd(Random &random, size_t size) : size_(size) {
        memory_ = static_cast<uint8_t *>(
            mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        mprotect(memory_ + page, page, PROT_NONE);
        std::generate_n(first(), size_, [&] { return random.byte(); });
    }
    BytesAtTheEnd(const BytesAtTheEnd &) = delete;
    BytesAtTheEnd &operator=(const BytesAtTheEnd &) = delete;
    ~BytesAtTheEnd() { munmap(memory_, 2 * page); }

    uint8_t *first() { return memory_ + page - size_; }
    size_t size() const { return size_; }

private:
    static constexpr size_t page = 1 << 16; // a whole number of pages everywhere
    uint8_t *memory_;
    size_t size_;
};

void byRule(const LxBlend &blend, Cell cell, Picture &out, Picture &a, Picture &b, Picture *mask,
            uint32_t width, uint32_t height) {
    const Plan plan = planOf(cell, blend, mask != nullptr);
    for (uint32_t y = 0; y < height && !plan.isEmpty(); ++y)
        blendRowByRule(plan, out.row(y), a.row(y), b.row(y), mask != nullptr ? mask->row(y) : nullptr, width);
}

void byKernel(const LxBlend &blend, Cell cell, Picture &out, Picture &a, Picture &b, Picture *mask,
              uint32_t width, uint32_t height) {
    const auto kernel = LxBlend_SelectMapBlendFunction(
        static_cast<int32_t>(cell.out), static_cast<int32_t>(cell.a), static_cast<int32_t>(cell.b));
    kernel(&blend, out.first(), a.first(), b.first(), mask != nullptr ? mask->first() : nullptr, out.stride,
           a.stride, b.stride, mask != nullptr ? mask->stride : 0, width, height);
}

// One call in both forms, from the same memory and the same place in the random sequence.
void expectAgreement(Random &random, const LxBlend &blend, Cell cell, bool masked, uint32_t width,
                     uint32_t height) {
    const bool packed = random.integer(0, 2) == 0;
    const auto make = [&](int bytes) { return Picture(random, bytes, width, height, packed); };
    Picture out = make(bytesOf(cell.out)), a = make(bytesOf(cell.a)), b = make(bytesOf(cell.b)),
            mask = make(1);
    const bool inPlace = cell.out == cell.a && random.coin();
    const unsigned seed = random.word();
    Picture expected = out;
    std::srand(seed);
    byRule(blend, cell, expected, inPlace ? expected : a, b, masked ? &mask : nullptr, width, height);
    const int drawnByRule = std::rand();
    std::srand(seed);
    byKernel(blend, cell, out, inPlace ? out : a, b, masked ? &mask : nullptr, width, height);
    ASSERT_EQ(std::rand(), drawnByRule);
    ASSERT_EQ(out.memory, expected.memory)
        << LxBlend_ModeName(LxBlend_Mode(&blend)) << ", " << LxBlend_ChannelName(LxBlend_Channel(&blend))
        << ", opacity " << LxBlend_Opacity(&blend) << (masked ? ", masked" : "")
        << (inPlace ? ", in place" : "") << ", " << width << " x " << height << ", cell " << int(cell.out)
        << int(cell.a) << int(cell.b);
}

constexpr Cell cellOf(int index) {
    return {static_cast<Layout>(index / 9), static_cast<Layout>(index / 3 % 3),
            static_cast<Layout>(index % 3)};
}

} // namespace

TEST_P(BlendPipeline, AgreesInEveryCellModeAndChannel) {
    Random random(static_cast<uint64_t>(GetParam()));
    for (int cell = 0; cell < 27; ++cell) {
        for (int mode = 0; mode < 44; ++mode) {
            for (int channel = 1; channel <= 6; ++channel) {
                for (const bool masked : {false, true}) {
                    for (const int opacity : {255, int{random.byte()}}) {
                        const LxBlend blend = LxBlend_WithChannel(mode, opacity, channel);
                        const auto width = static_cast<uint32_t>(random.integer(1, 60));
                        const auto height = static_cast<uint32_t>(random.integer(1, 3));
                        expectAgreement(random, blend, cellOf(cell), masked, width, height);
                        if (HasFatalFailure())
                            return;
                    }
                }
            }
        }
    }
}

TEST_P(BlendPipeline, AgreesOverLongRows) {
    Random random(10 + static_cast<uint64_t>(GetParam()));
    for (int i = 0; i < 600; ++i) {
        const LxBlend blend = LxBlend_WithChannel(random.integer(0, 43), random.byte(),
                                                  random.coin() ? 6 : random.integer(1, 6));
        expectAgreement(random, blend, cellOf(random.integer(0, 26)), random.coin(),
                        static_cast<uint32_t>(random.integer(500, 1600)), 2);
        if (HasFatalFailure())
            return;
    }
}

TEST_P(BlendPipeline, AgreesWherePicturesShareMemory) {
    Random random(20 + static_cast<uint64_t>(GetParam()));
    for (int i = 0; i < 4000; ++i) {
        const Cell cell = cellOf(random.integer(0, 26));
        const bool masked = random.coin();
        const LxBlend blend = LxBlend_WithChannel(random.integer(0, 43), random.byte(),
                                                  random.coin() ? 6 : random.integer(1, 6));
        std::vector<uint8_t> memory(600);
        for (uint8_t &byte : memory)
            byte = random.byte();
        std::vector<uint8_t> expected = memory;
        const auto at = [&] { return random.integer(0, 2) == 0 ? 0 : random.integer(0, 90); };
        const int out = at(), a = at(), b = at(), m = at();
        const auto width = static_cast<uint32_t>(random.integer(16, 100));
        const unsigned seed = random.word();
        const Plan plan = planOf(cell, blend, masked);
        std::srand(seed);
        if (!plan.isEmpty())
            blendRowByRule(plan, &expected[static_cast<size_t>(out)], &expected[static_cast<size_t>(a)],
                           &expected[static_cast<size_t>(b)],
                           masked ? &expected[static_cast<size_t>(m)] : nullptr, width);
        std::srand(seed);
        const auto kernel = LxBlend_SelectMapBlendFunction(
            static_cast<int>(cell.out), static_cast<int>(cell.a), static_cast<int>(cell.b));
        kernel(&blend, &memory[static_cast<size_t>(out)], &memory[static_cast<size_t>(a)],
               &memory[static_cast<size_t>(b)], masked ? &memory[static_cast<size_t>(m)] : nullptr, 0, 0, 0,
               0, width, 1);
        ASSERT_EQ(memory, expected) << LxBlend_ModeName(LxBlend_Mode(&blend)) << " cell " << int(cell.out)
                                    << int(cell.a) << int(cell.b) << ' ' << out << ' ' << a << ' ' << b << ' '
                                    << m;
    }
}

TEST_P(BlendPipeline, EveryFunctionAgreesForEveryPair) {
    std::vector<uint8_t> a(65536), b(65536), out(65536);
    for (size_t i = 0; i < 65536; ++i) {
        a[i] = static_cast<uint8_t>(i >> 8);
        b[i] = static_cast<uint8_t>(i);
    }
    for (int mode = 0; mode < 44; ++mode) {
        const ModeTraits &traits = traitsOf(static_cast<Mode>(mode));
        if (traits.function == nullptr)
            continue;
        for (int opacity = mode == static_cast<int>(Mode::noName04) ? 0 : 255; opacity < 256; ++opacity) {
            const LxBlend blend = LxBlend(mode, opacity);
            LxBlend_SelectMapBlendFunction(0, 0, 0)(&blend, out.data(), a.data(), b.data(), nullptr, 0, 0, 0,
                                                    0, 65536, 1);
            for (size_t i = 0; i < 65536; ++i)
                ASSERT_EQ(out[i], traits.function(a[i], b[i], opacity))
                    << traits.name << ' ' << int(a[i]) << ' ' << int(b[i]);
        }
    }
}

TEST_P(BlendPipeline, EveryFunctionAgreesForEveryPairInPixels) {
    // All three components of a pixel see each pair; every result of an opaque b is the function's.
    std::vector<uint8_t> a(4 * 65536), b(4 * 65536), out(4 * 65536);
    for (size_t i = 0; i < 4 * 65536; ++i) {
        a[i] = static_cast<uint8_t>(i >> 10);
        b[i] = i % 4 == 3 ? 255 : static_cast<uint8_t>(i >> 2);
    }
    for (int mode = 0; mode < 44; ++mode) {
        const ModeTraits &traits = traitsOf(static_cast<Mode>(mode));
        // Overlay and NoName04 weigh by the smaller alpha, and so do not give the function alone.
        if (traits.function == nullptr || traits.weight != WeightSource::b)
            continue;
        for (const bool inPlace : {false, true}) {
            const LxBlend blend = LxBlend(mode, 255);
            out = a;
            LxBlend_SelectMapBlendFunction(2, 2, 2)(&blend, out.data(), inPlace ? out.data() : a.data(),
                                                    b.data(), nullptr, 0, 0, 0, 0, 65536, 1);
            for (size_t i = 0; i < 4 * 65536; ++i)
                ASSERT_EQ(out[i], i % 4 == 3 ? 255 : traits.function(a[i], b[i], 255))
                    << traits.name << ' ' << int(a[i]) << ' ' << int(b[i]);
        }
    }
}

TEST_P(BlendPipeline, EveryTailAgrees) {
    // Widths around whole vectors, where loads of short pixels would reach behind their rows.
    Random random(40 + static_cast<uint64_t>(GetParam()));
    for (int cell = 0; cell < 27; ++cell) {
        for (uint32_t width = 16; width < 60; ++width) {
            for (const bool masked : {false, true}) {
                expectAgreement(random, blendOf(Mode::overlay, random.byte()), cellOf(cell), masked, width,
                                1);
                expectAgreement(random, blendOf(Mode::srcOver), cellOf(cell), masked, width, 1);
                if (HasFatalFailure())
                    return;
            }
        }
    }
}

TEST_P(BlendPipeline, TouchesNothingBehindItsPictures) {
    Random random(50 + static_cast<uint64_t>(GetParam()));
    for (int cell = 0; cell < 27; ++cell) {
        for (const uint32_t width : {15u, 16u, 17u, 31u, 32u, 33u, 63u, 65u, 511u, 512u, 513u, 1000u}) {
            for (int i = 0; i < 8; ++i) {
                const LxBlend blend = LxBlend_WithChannel(random.integer(0, 43), random.byte(),
                                                          random.coin() ? 6 : random.integer(1, 6));
                const Cell layouts = cellOf(cell);
                const bool masked = random.coin();
                BytesAtTheEnd out(random, width * static_cast<size_t>(bytesOf(layouts.out))),
                    a(random, width * static_cast<size_t>(bytesOf(layouts.a))),
                    b(random, width * static_cast<size_t>(bytesOf(layouts.b))), mask(random, width);
                std::vector<uint8_t> expected(out.first(), out.first() + out.size());
                const unsigned seed = random.word();
                const Plan plan = planOf(layouts, blend, masked);
                std::srand(seed);
                if (!plan.isEmpty())
                    blendRowByRule(plan, expected.data(), a.first(), b.first(),
                                   masked ? mask.first() : nullptr, width);
                std::srand(seed);
                LxBlend_SelectMapBlendFunction(static_cast<int>(layouts.out), static_cast<int>(layouts.a),
                                               static_cast<int>(layouts.b))(
                    &blend, out.first(), a.first(), b.first(), masked ? mask.first() : nullptr, 0, 0, 0, 0,
                    width, 1);
                ASSERT_TRUE(std::equal(expected.begin(), expected.end(), out.first()))
                    << LxBlend_ModeName(LxBlend_Mode(&blend)) << ", cell " << cell << ", width " << width;
            }
        }
    }
}

TEST_P(BlendPipeline, TheMixAgreesForEveryWeight) {
    std::vector<uint8_t> a(65536), b(65536), out(65536);
    for (size_t i = 0; i < 65536; ++i) {
        a[i] = static_cast<uint8_t>(i >> 8);
        b[i] = static_cast<uint8_t>(i);
    }
    for (int w = 1; w < 256; ++w) {
        const LxBlend blend = blendOf(Mode::srcOver, w);
        LxBlend_SelectMapBlendFunction(0, 0, 0)(&blend, out.data(), a.data(), b.data(), nullptr, 0, 0, 0, 0,
                                                65536, 1);
        for (size_t i = 0; i < 65536; ++i)
            ASSERT_EQ(out[i], mix(b[i], a[i], w));
    }
}

TEST_P(BlendPipeline, WeightsAgreeForEveryAlphaAndMask) {
    // The weight shows as the alpha over a transparent a.
    std::vector<uint8_t> a(4 * 65536), b(4 * 65536), mask(65536);
    for (size_t i = 0; i < 65536; ++i) {
        b[4 * i + 3] = static_cast<uint8_t>(i >> 8);
        mask[i] = static_cast<uint8_t>(i);
    }
    for (const int opacity : {255, 254, 128, 77, 1}) {
        for (const Mode mode : {Mode::srcOver, Mode::multiply}) {
            std::vector<uint8_t> out(4 * 65536);
            const LxBlend blend = blendOf(mode, opacity);
            LxBlend_SelectMapBlendFunction(2, 2, 2)(&blend, out.data(), a.data(), b.data(), mask.data(), 0, 0,
                                                    0, 0, 65536, 1);
            for (size_t i = 0; i < 65536; ++i) {
                const int once = fold(b[4 * i + 3], mask[i]);
                const int alpha = mode == Mode::srcOver ? once : fold(once, mask[i]);
                ASSERT_EQ(out[4 * i + 3], weightOf(opacity, alpha));
            }
        }
    }
}

TEST_P(BlendPipeline, HueFamilyAndLuminanceAgreeOverTheCube) {
    // Every seventh colour of the cube, with its edges, against colours of all kinds.
    std::vector<uint8_t> a;
    for (int r = 0; r < 256; r += r == 252 ? 3 : 7) {
        for (int g = 0; g < 256; g += g == 252 ? 3 : 7) {
            for (int b = 0; b < 256; b += b == 252 ? 3 : 7) {
                for (const int c : {r, g, b, 255})
                    a.push_back(static_cast<uint8_t>(c));
            }
        }
    }
    const size_t pixels = a.size() / 4;
    Random random(30);
    std::vector<uint8_t> b(a.size()), out(a.size());
    for (int round = 0; round < 3; ++round) {
        for (size_t i = 0; i < b.size(); ++i)
            b[i] = i % 4 == 3 ? 255 : round == 0 ? a[a.size() - 4 - i / 4 * 4 + i % 4] : random.byte();
        for (const Mode mode : {Mode::hue, Mode::saturation, Mode::value, Mode::color, Mode::grayscale}) {
            const LxBlend blend = blendOf(mode);
            LxBlend_SelectMapBlendFunction(2, 2, 2)(&blend, out.data(), a.data(), b.data(), nullptr, 0, 0, 0,
                                                    0, static_cast<uint32_t>(pixels), 1);
            for (size_t i = 0; i < 4 * pixels; i += 4) {
                const LxHSV ca = hsvFromRgb(a[i], a[i + 1], a[i + 2]),
                            cb = hsvFromRgb(b[i], b[i + 1], b[i + 2]);
                const uint8_t grey = function::luminance(b[i], b[i + 1], b[i + 2]);
                const LxRGB expected = mode == Mode::hue ? rgbFromHsv(cb.hue, ca.saturation, ca.value)
                                       : mode == Mode::saturation
                                           ? rgbFromHsv(ca.hue, cb.saturation, ca.value)
                                       : mode == Mode::value ? rgbFromHsv(ca.hue, ca.saturation, cb.value)
                                       : mode == Mode::color ? rgbFromHsv(cb.hue, cb.saturation, ca.value)
                                                             : LxRGB{grey, grey, grey};
                ASSERT_TRUE(out[i] == expected.r && out[i + 1] == expected.g && out[i + 2] == expected.b)
                    << traitsOf(mode).name << ' ' << int(a[i]) << ' ' << int(a[i + 1]) << ' ' << int(a[i + 2])
                    << ", " << int(b[i]) << ' ' << int(b[i + 1]) << ' ' << int(b[i + 2]);
            }
        }
    }
}

TEST_P(BlendPipeline, LuminanceAgreesForEveryColour) {
    std::vector<uint8_t> a(4 * 65536), b(4 * 65536, 255), out(4 * 65536);
    for (int red = 0; red < 256; ++red) {
        for (size_t i = 0; i < 65536; ++i) {
            b[4 * i] = static_cast<uint8_t>(red);
            b[4 * i + 1] = static_cast<uint8_t>(i >> 8);
            b[4 * i + 2] = static_cast<uint8_t>(i);
        }
        const LxBlend blend = blendOf(Mode::grayscale);
        LxBlend_SelectMapBlendFunction(2, 2, 2)(&blend, out.data(), a.data(), b.data(), nullptr, 0, 0, 0, 0,
                                                65536, 1);
        size_t wrong = 0;
        for (int i = 0; i < 65536; ++i) {
            const int grey = (299 * red + 587 * (i >> 8) + 114 * (i & 255)) / 1000;
            const uint8_t *made = &out[4 * static_cast<size_t>(i)];
            wrong += made[0] != grey || made[1] != grey || made[2] != grey || made[3] != 255;
        }
        ASSERT_EQ(wrong, 0U) << "red " << red;
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, BlendPipeline, testing::Values(VectorLevel::baseline, VectorLevel::avx2),
                         [](const auto &level) { return vectorLevelName(level.param); });
