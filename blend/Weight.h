// The mix and the weight: how strongly a mode's result is laid over a.
#pragma once

namespace lx {

// The result f laid on c at weight w; exactly c at 0 and exactly f at 255.
constexpr int mix(int f, int c, int w) {
    return ((f + 1) * w + (c + 1) * (255 - w)) >> 8;
}

// A mask folded into an alpha; exactly the alpha under a mask of 255.
constexpr int fold(int alpha, int m) {
    return (alpha * m + 127) / 255;
}

// The weight of an opacity and an alpha; exactly the opacity at an alpha of 255, and 0 at 0.
constexpr int weightOf(int opacity, int alpha) {
    return (opacity * (alpha + 1)) >> 8;
}

} // namespace lx
