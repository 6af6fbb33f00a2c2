// Edge samples: where the edges of a shape cross the quarter rows of pixels.
//
// A sample is one 32-bit word, so that sorting words sorts samples by row, place in the row and direction:
//
//     bit 0       direction: 1 for an edge going down
//     bits 1-5    place inside the pixel, in 32nds
//     bits 6-16   x of the pixel
//     bits 17-31  y of the pixel
//
// On purpose: both axes end at 2048 pixels. An x beyond runs into the bits of y, and only 11 bits of y are
// read back.
#pragma once

#include <cstdint>

namespace lx {

// A sample covers up to 31 parts of its quarter row, so four of 31 cover the pixel.
inline constexpr int32_t sampleParts = 31;
inline constexpr int32_t quarters = 4;
inline constexpr int32_t subpixels = 32;

// Pixels in a row, and rows, that a sample can tell apart when it is read.
inline constexpr int32_t maxPixels = 2048;

inline constexpr int rowShift = 17;
inline constexpr int pixelShift = 6;

struct Sample {
    uint32_t word;

    constexpr bool down() const { return (word & 1) != 0; }
    constexpr int32_t covered() const {
        return sampleParts - static_cast<int32_t>(word >> 1 & (subpixels - 1));
    }
    constexpr int32_t x() const { return static_cast<int32_t>(word >> pixelShift & (maxPixels - 1)); }
    constexpr int32_t y() const { return static_cast<int32_t>(word >> rowShift & (maxPixels - 1)); }
};

// Samples that a shape can have; the rest of its edges is lost without notice.
inline constexpr int32_t maxSamples = 131073;

} // namespace lx
