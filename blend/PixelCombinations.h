// What becomes of a vector of pixels: the ways in which a mode's result, a, and the weight meet. Included by
// files that are compiled once per level.
#pragma once

#include <type_traits>

#include "blend/ColourVectors.h"
#include "blend/ComponentVectors.h"
#include "blend/GainVectors.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

inline constexpr uint32_t alphaByte = 0xFF000000;

inline Bytes alphaBytes() {
    return (Bytes)splatLongs(alphaByte);
}

// A vector's operands. The weight of a pixel stands in both of its words, and as `weightBytes` at least in
// the byte of its alpha.
struct Operands {
    Bytes a, first, b;
    Words weight;
    Bytes weightBytes;
    Bytes setting; // for the function
};

// The colours whose sums are given, in the upper bytes of words, and the larger alpha, as far as the result
// has them: that of one byte is the first component.
template <Layout result>
inline Bytes withLargerAlpha(Words evens, Words odds, const Operands &in) {
    if constexpr (result == Layout::a)
        return (Bytes)(evens >> 8);
    if constexpr (result == Layout::rgb)
        return (Bytes)(evens >> 8 | (odds & splat(0xFF00)));
    return (Bytes)(evens >> 8 | upperBytes(odds, (Words)larger(in.a, in.weightBytes)));
}

inline Words mixSum(Words f, Words c, Words weight) {
    return f * weight + c * (255 - weight) + 255;
}

// A function of this kind takes the first source whole, if at all.
template <class Function>
inline constexpr bool pairsComponents = true;
template <>
inline constexpr bool pairsComponents<Source> = false;
template <>
inline constexpr bool pairsComponents<Not> = false;
#if defined(__AVX2__)
template <>
inline constexpr bool pairsComponents<Gain> = false;
#endif

struct Luminance {
    template <bool>
    static Halves of(Bytes, Bytes b, Bytes) {
        const Words grey = luminanceOf(b);
        return {grey, grey};
    }
};
template <>
inline constexpr bool pairsComponents<Luminance> = false;

// A colour that is told.
struct Constant {
    template <bool>
    static Bytes of(Bytes, Bytes, Bytes colour) {
        return colour;
    }
};
template <>
inline constexpr bool pairsComponents<Constant> = false;

// The smaller of both alphas weighs, where b's would.
template <class Function>
inline constexpr bool smallerAlphaWeighs = false;
template <>
inline constexpr bool smallerAlphaWeighs<Overlay> = true;
template <>
inline constexpr bool smallerAlphaWeighs<BentOverlay> = true;

template <class Function>
struct Mixed {
    static constexpr bool skipsAtZero = true;
    static constexpr bool takesBAsItIs = std::is_same_v<Function, Source>;
    static constexpr bool weighsBySmaller = smallerAlphaWeighs<Function>;
    static constexpr bool takesAlphaOfB = false;
    static constexpr bool takesFirst = pairsComponents<Function>;
    static constexpr bool isToldAhead = std::is_same_v<Function, GainOfProduct>;
    Function function;
    template <Layout result>
    Bytes of(const Operands &in) {
        const Halves f = halves(function.template of<true>(in.first, in.b, in.setting));
        return withLargerAlpha<result>(mixSum(f.evens, even(in.a), in.weight),
                                       mixSum(f.odds, odd(in.a), in.weight), in);
    }
    Bytes fullOf(const Operands &in) {
        return whole(function.template of<true>(in.first, in.b, in.setting)) | alphaBytes();
    }
};

// DstOver: a mixed into b.
struct Under {
    static constexpr bool skipsAtZero = false;
    static constexpr bool takesBAsItIs = true;
    static constexpr bool weighsBySmaller = false;
    static constexpr bool takesAlphaOfB = false;
    static constexpr bool takesFirst = false;
    static constexpr bool isToldAhead = false;
    template <Layout result>
    static Bytes of(const Operands &in) {
        return withLargerAlpha<result>(mixSum(even(in.a), even(in.b), in.weight),
                                       mixSum(odd(in.a), odd(in.b), in.weight), in);
    }
    static Bytes fullOf(const Operands &in) { return in.a | alphaBytes(); }
};

struct Copied {
    static constexpr bool skipsAtZero = false;
    static constexpr bool takesBAsItIs = true;
    static constexpr bool weighsBySmaller = false;
    static constexpr bool takesAlphaOfB = false;
    static constexpr bool takesFirst = false;
    static constexpr bool isToldAhead = false;
    template <Layout result>
    static Bytes of(const Operands &in) {
        return choose(alphaBytes(), larger(in.a, in.weightBytes), in.b);
    }
    static Bytes fullOf(const Operands &in) { return in.b | alphaBytes(); }
};

// UserColor: alphas are summed as colours are, with a and b in each other's place.
struct Summed {
    static constexpr bool skipsAtZero = false;
    static constexpr bool takesBAsItIs = false;
    static constexpr bool weighsBySmaller = false;
    static constexpr bool takesAlphaOfB = true;
    static constexpr bool takesFirst = false;
    static constexpr bool isToldAhead = false;
    template <Layout result>
    static Bytes of(const Operands &in) {
        const Bytes swapped = (in.a ^ in.b) & alphaBytes(), x = in.b ^ swapped, y = in.a ^ swapped;
        const auto sum = [&](Words one, Words other) { return (one + 1) * in.weight + other + 1; };
        return (Bytes)(sum(even(x), even(y)) >> 8 | (sum(odd(x), odd(y)) & 0xFF00));
    }
    static Bytes fullOf(Operands in) {
        in.weight = splat(255);
        return of<Layout::rgba>(in);
    }
};

} // namespace
} // namespace lx::LX_VECTOR_NAMESPACE
