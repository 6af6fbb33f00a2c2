// Pixels with a Quartz context over them, for tests.
#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <vector>

#include <cairo.h>
#include <gtest/gtest.h>
#include <oxlume/LxQuartz.h>

namespace lx::test {

// A pixel of the target: colours multiplied by alpha.
struct Pixel {
    uint8_t r, g, b, a;
    bool operator==(const Pixel &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const Pixel &pixel) {
    return out << '(' << +pixel.r << ' ' << +pixel.g << ' ' << +pixel.b << ' ' << +pixel.a << ')';
}

inline constexpr Pixel white = {255, 255, 255, 255};
inline constexpr Pixel black = {0, 0, 0, 255};
inline constexpr Pixel red = {255, 0, 0, 255};
inline constexpr Pixel green = {0, 255, 0, 255};
inline constexpr Pixel blue = {0, 0, 255, 255};
inline constexpr Pixel nothing = {0, 0, 0, 0};

struct ReleaseContext {
    void operator()(CGContextRef context) const { CGContextRelease(context); }
};
using QuartzHandle = std::unique_ptr<CGContext, ReleaseContext>;

struct ReleaseCGImage {
    void operator()(CGImageRef image) const { CGImageRelease(image); }
};
using CGImageHandle = std::unique_ptr<CGImage, ReleaseCGImage>;

class Canvas {
public:
    Canvas(int32_t width, int32_t height, Pixel paper = white)
        : width_(width), height_(height), pixels_(static_cast<size_t>(width) * height, paper),
          context_(LxQuartz_CreateWithPixels(pixels_.data(), width, height, width * 4)) {}

    operator CGContextRef() const { return context_.get(); }
    Pixel at(int32_t x, int32_t y) const { return pixels_[static_cast<size_t>(y) * width_ + x]; }
    const std::vector<Pixel> &pixels() const { return pixels_; }

    // The canvas shows `inside` in the rectangle, whose far sides are exclusive, and `outside` elsewhere.
    void expectBox(int32_t x0, int32_t y0, int32_t x1, int32_t y1, Pixel inside,
                   Pixel outside = white) const {
        for (int32_t y = 0; y < height_; ++y)
            for (int32_t x = 0; x < width_; ++x) {
                const bool isInside = x >= x0 && x < x1 && y >= y0 && y < y1;
                ASSERT_EQ(at(x, y), isInside ? inside : outside) << "at " << x << ", " << y;
            }
    }
    void expectAll(Pixel pixel) const { expectBox(0, 0, 0, 0, pixel, pixel); }

    // How dark a row is against white paper.
    int32_t inkInRow(int32_t y) const {
        int32_t ink = 0;
        for (int32_t x = 0; x < width_; ++x)
            ink += 255 - at(x, y).g;
        return ink;
    }
    int32_t ink() const {
        int32_t ink = 0;
        for (int32_t y = 0; y < height_; ++y)
            ink += inkInRow(y);
        return ink;
    }

private:
    int32_t width_, height_;
    std::vector<Pixel> pixels_;
    QuartzHandle context_;
};

inline bool isClose(Pixel a, Pixel b, int32_t tolerance) {
    const auto close = [&](uint8_t x, uint8_t y) { return x - y <= tolerance && y - x <= tolerance; };
    return close(a.r, b.r) && close(a.g, b.g) && close(a.b, b.b) && close(a.a, b.a);
}

} // namespace lx::test
