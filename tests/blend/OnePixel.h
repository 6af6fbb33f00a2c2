// Blends single pixels through the map kernels, for tests that say byte by byte what must come out.
#pragma once

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>
#include <oxlume/LxBlend.h>

#include "blend/Mode.h"

namespace lx::test {

using Bytes = std::vector<uint8_t>;

inline constexpr int unmasked = -1;

inline LxBlend blendOf(Mode mode, int opacity = 255, Channel channel = Channel::rgba) {
    return LxBlend_WithChannel(static_cast<int32_t>(mode), opacity, static_cast<int32_t>(channel));
}

inline int32_t typeOf(const Bytes &pixel) {
    return pixel.size() == 1 ? kLxPixelA : pixel.size() == 3 ? kLxPixelRGB : kLxPixelRGBA;
}

// `out` after the blend; the pixels' types follow from their sizes.
inline Bytes blended(const LxBlend &blend, Bytes out, const Bytes &a, const Bytes &b, int mask = unmasked) {
    const auto kernel = LxBlend_SelectMapBlendFunction(typeOf(out), typeOf(a), typeOf(b));
    const auto m = static_cast<uint8_t>(mask);
    kernel(&blend, out.data(), a.data(), b.data(), mask == unmasked ? nullptr : &m, 4, 4, 4, 1, 1, 1);
    return out;
}

// The usual call, in which the destination is the first source.
inline Bytes blendedOnto(const LxBlend &blend, const Bytes &a, const Bytes &b, int mask = unmasked) {
    return blended(blend, a, a, b, mask);
}

} // namespace lx::test
