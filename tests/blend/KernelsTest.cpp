// Which kernels there are, and what all of them have in common.
#include <cstring>
#include <limits>

#include "tests/blend/OnePixel.h"

using namespace lx;
using namespace lx::test;

namespace {

bool blends(int32_t type) {
    return type >= kLxPixelA && type <= kLxPixelRGBAPremultiplied;
}

Bytes pixelOf(int32_t type, uint8_t value) {
    return Bytes(type == kLxPixelA ? 1 : type == kLxPixelRGB ? 3 : 4, value);
}

} // namespace

TEST(BlendKernels, PixelAndLineTables) {
    for (int32_t out = -1; out < 8; ++out) {
        for (int32_t b = -1; b < 8; ++b) {
            const bool expected = out >= kLxPixelA && out <= kLxPixelRGBA && blends(b);
            EXPECT_EQ(LxBlend_SelectPixelBlendFunction(out, b) != nullptr, expected) << out << ' ' << b;
            EXPECT_EQ(LxBlend_SelectLineBlendFunction(out, b) != nullptr, expected) << out << ' ' << b;
        }
    }
    EXPECT_EQ(LxBlend_SelectPixelBlendFunction(1, 3), LxBlend_SelectPixelBlendFunction(1, 2));
    EXPECT_EQ(LxBlend_SelectLineBlendFunction(0, 3), LxBlend_SelectLineBlendFunction(0, 2));
}

TEST(BlendKernels, MapTable) {
    int entries = 0, floats = 0;
    for (int32_t out = -1; out < 8; ++out) {
        for (int32_t a = -1; a < 8; ++a) {
            for (int32_t b = -1; b < 8; ++b) {
                const bool of = blends(out) && a >= kLxPixelA && a <= kLxPixelRGBA;
                const bool converts = of && b == kLxPixelF && (out == a || (out == 3 && a == 2));
                EXPECT_EQ(LxBlend_SelectMapBlendFunction(out, a, b) != nullptr,
                          (of && blends(b)) || converts);
                entries += of && blends(b);
                floats += converts;
            }
        }
    }
    EXPECT_EQ(entries, 48);
    EXPECT_EQ(floats, 4);
    EXPECT_EQ(LxBlend_SelectMapBlendFunction(2, 3, 2), nullptr);
    EXPECT_EQ(LxBlend_SelectMapBlendFunction(3, 2, 2), LxBlend_SelectMapBlendFunction(2, 2, 2));
}

TEST(BlendKernels, ChannelsAndModesOutOfRangeWriteNothing) {
    for (int32_t out = 0; out < 3; ++out) {
        for (int32_t a = 0; a < 3; ++a) {
            for (int32_t b = 0; b < 3; ++b) {
                const Bytes nines = pixelOf(out, 9), pa = pixelOf(a, 100), pb = pixelOf(b, 200);
                for (const int mask : {unmasked, 255}) {
                    for (int mode = 0; mode < 256; ++mode) {
                        for (const int channel : {0, 7, 255})
                            ASSERT_EQ(blended(LxBlend_WithChannel(mode, 255, channel), nines, pa, pb, mask),
                                      nines);
                        if (mode >= 44) {
                            ASSERT_EQ(blended(LxBlend(mode, 255), nines, pa, pb, mask), nines);
                        }
                    }
                }
            }
        }
    }
}

TEST(BlendKernels, AMaskOfZeroWritesNothingInAnyMode) {
    for (int32_t out = 0; out < 3; ++out) {
        for (int32_t a = 0; a < 3; ++a) {
            for (int32_t b = 0; b < 3; ++b) {
                for (int mode = 0; mode < 44; ++mode) {
                    for (int channel = 1; channel <= 6; ++channel) {
                        const Bytes nines = pixelOf(out, 9);
                        ASSERT_EQ(blended(LxBlend_WithChannel(mode, 255, channel), nines, pixelOf(a, 100),
                                          pixelOf(b, 200), 0),
                                  nines);
                    }
                }
            }
        }
    }
}

TEST(BlendKernels, EmptyRectanglesWriteNothing) {
    const LxBlend blend = LxBlend(0, 255);
    uint8_t pixel[4] = {9, 9, 9, 9};
    const auto kernel = LxBlend_SelectMapBlendFunction(2, 2, 2);
    kernel(&blend, pixel, pixel, pixel, nullptr, 4, 4, 4, 0, 0, 5);
    kernel(&blend, pixel, pixel, pixel, nullptr, 4, 4, 4, 0, 5, 0);
    LxBlend_SelectLineBlendFunction(2, 2)(&blend, pixel, pixel, pixel, 0);
    EXPECT_EQ(pixel[0], 9);
}

TEST(BlendKernels, FloatsBecomeBytesWhateverTheBlend) {
    const struct {
        float value;
        uint8_t byte;
    } table[] = {{0.0f, 0},
                 {1.0f, 255},
                 {0.5f, 127},
                 {2.0f, 254},
                 {-0.5f, 129},
                 {-0.001f, 0},
                 {std::numeric_limits<float>::infinity(), 0},
                 {std::numeric_limits<float>::quiet_NaN(), 0}};
    for (const auto &row : table) {
        Bytes b(4);
        std::memcpy(b.data(), &row.value, 4);
        for (int32_t out = 0; out < 4; ++out) {
            Bytes result = pixelOf(out, 9);
            const Bytes a = result;
            const LxBlend none = LxBlend_WithChannel(200, 0, 0);
            const uint8_t mask = 0;
            const auto kernel = LxBlend_SelectMapBlendFunction(out, out == 3 ? 2 : out, kLxPixelF);
            kernel(&none, result.data(), a.data(), b.data(), &mask, 4, 4, 4, 1, 1, 1);
            Bytes expected = pixelOf(out, row.byte);
            if (expected.size() == 4)
                expected[3] = 255;
            EXPECT_EQ(result, expected) << row.value;
        }
    }
}

TEST(BlendKernels, FloatsFillTheRectangleAndNothingBeside) {
    constexpr size_t width = 3, height = 2;
    const float values[height][width + 1] = {{0.0f, 0.5f, 1.0f, -1.0f}, {1.0f, 0.0f, 0.5f, -1.0f}};
    const uint8_t expected[height][width] = {{0, 127, 255}, {255, 0, 127}};
    for (int32_t out = 0; out < 3; ++out) {
        const size_t step = pixelOf(out, 0).size(), stride = width * step + 2;
        Bytes result(height * stride, 9);
        const auto kernel = LxBlend_SelectMapBlendFunction(out, out, kLxPixelF);
        const LxBlend blend = LxBlend(2, 255);
        const auto outStride = static_cast<int32_t>(stride);
        kernel(&blend, result.data(), result.data(), values, nullptr, outStride, outStride, sizeof values[0],
               0, width, height);
        for (size_t y = 0; y < height; ++y) {
            for (size_t i = 0; i < stride; ++i) {
                const size_t x = i / step;
                const int byte = x >= width ? 9 : step == 4 && i % 4 == 3 ? 255 : expected[y][x];
                EXPECT_EQ(result[y * stride + i], byte) << out << ' ' << i << ' ' << y;
            }
        }
    }
}

TEST(BlendKernels, PixelAndLineAgreeWithTheMap) {
    const Bytes b = {10, 200, 30, 127};
    for (int32_t out = 0; out < 3; ++out) {
        for (int32_t from = 0; from < 3; ++from) {
            for (int mode = 0; mode < 44; ++mode) {
                for (int channel = 0; channel <= 7; ++channel) {
                    if (mode == static_cast<int>(Mode::dissolve))
                        continue;
                    const LxBlend blend = LxBlend_WithChannel(mode, 170, channel);
                    const Bytes a = pixelOf(out, 77),
                                source(b.begin(), b.begin() + static_cast<long>(pixelOf(from, 0).size()));
                    const Bytes expected = blended(blend, pixelOf(out, 9), a, source);
                    Bytes pixel = pixelOf(out, 9), line = pixel;
                    LxBlend_SelectPixelBlendFunction(out, from)(&blend, pixel.data(), a.data(),
                                                                source.data());
                    LxBlend_SelectLineBlendFunction(out, from)(&blend, line.data(), a.data(), source.data(),
                                                               1);
                    ASSERT_EQ(pixel, expected) << mode << ' ' << channel;
                    ASSERT_EQ(line, expected) << mode << ' ' << channel;
                }
            }
        }
    }
}
