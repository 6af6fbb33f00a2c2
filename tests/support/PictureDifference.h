// How far pictures of two renderers are from each other.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include <oxlume/LxImage.h>

namespace lx::test {

struct PictureDifference {
    int largest = 0;        // between pixels at the same place, which at edges may be anything
    int largestInside = 0;  // where both pictures are plain all around
    int largestAtEdges = 0; // what remains if an edge may lie a pixel off
    double share = 0;       // of pixels that differ by more than rounding

    bool isSmall() const;
};

// Mixed colours differ by so much, from rounding.
constexpr int roundingOfMixes = 3;

// So much of a pixel can the tip of a star cover that antialiasing alone shows.
constexpr int thinnestTips = 40;

inline bool PictureDifference::isSmall() const {
    return largestInside <= roundingOfMixes && largestAtEdges <= thinnestTips;
}

// The values of a component at a place and its eight neighbours.
struct ValuesAround {
    int low = 255;
    int high = 0;

    ValuesAround(const LxImage *picture, int32_t x, int32_t y, int32_t c) {
        for (int32_t v = y - 1; v <= y + 1; ++v)
            for (int32_t u = x - 1; u <= x + 1; ++u)
                if (const auto *p = static_cast<const uint8_t *>(LxImage_ConstPointer(picture, u, v))) {
                    low = std::min<int>(low, p[c]);
                    high = std::max<int>(high, p[c]);
                }
    }
    bool plain() const { return low == high; }
    int outside(int value) const { return std::max({low - value, value - high, 0}); }
};

// Compares the colours of two RGBA pictures of one size. At an edge one picture may have one of two colours
// where the other has a mixture: each must lie among the other's neighbours.
inline PictureDifference compare(const LxImage *a, const LxImage *b) {
    PictureDifference result;
    int64_t differing = 0;
    for (int32_t y = 0; y < LxImage_h(a); ++y)
        for (int32_t x = 0; x < LxImage_w(a); ++x) {
            const auto *p = static_cast<const uint8_t *>(LxImage_ConstPointer(a, x, y));
            const auto *q = static_cast<const uint8_t *>(LxImage_ConstPointer(b, x, y));
            int here = 0;
            for (int32_t c = 0; c < 3; ++c) {
                const ValuesAround aroundA(a, x, y, c);
                const ValuesAround aroundB(b, x, y, c);
                const int difference = std::abs(p[c] - q[c]);
                here = std::max(here, difference);
                if (aroundA.plain() && aroundB.plain())
                    result.largestInside = std::max(result.largestInside, difference);
                result.largestAtEdges =
                    std::max({result.largestAtEdges, aroundB.outside(p[c]), aroundA.outside(q[c])});
            }
            result.largest = std::max(result.largest, here);
            differing += here > roundingOfMixes ? 1 : 0;
        }
    result.share = static_cast<double>(differing) / LxImage_w(a) / LxImage_h(a);
    return result;
}

} // namespace lx::test
