// The modes' functions of one component in vectors: the forms that Function.h defines.
//
// Each takes vectors of bytes and answers bytes, or the even and the odd ones apart, whichever it comes to.
// With `pixels` true the bytes are pixels of four, and what becomes of their alphas does not matter.
// Included by files that are compiled once per level.
#pragma once

#include "blend/LevelForms.h"
#include "blend/Mode.h"
#include "blend/Vectors.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// Words of 0 to 255.
struct Halves {
    Words evens, odds;
};

inline Halves halves(Bytes v) {
    return {even(v), odd(v)};
}

inline Halves halves(const Halves &v) {
    return v;
}

inline Bytes whole(Bytes v) {
    return v;
}

inline Bytes whole(const Halves &v) {
    return join(v.evens, v.odds);
}

template <class Function>
inline Halves eachHalf(Bytes a, Bytes b, Function function) {
    return {function(even(a), even(b)), function(odd(a), odd(b))};
}

struct Source {
    template <bool>
    static Bytes of(Bytes, Bytes b, Bytes) {
        return b;
    }
};
struct Multiply {
    template <bool>
    static Halves of(Bytes a, Bytes b, Bytes) {
        return eachHalf(a, b, [](Words x, Words y) { return (x * y) >> 8; });
    }
};
struct Screen {
    template <bool>
    static Halves of(Bytes a, Bytes b, Bytes) {
        return eachHalf(~a, ~b, [](Words x, Words y) { return 255 - ((x * y) >> 8); });
    }
};

// Overlay's curve up to the bytes `end` above b. The doubling of t before its two shifts is taken out of
// both, so that it fits: 2n + 128 becomes n + 64. A product with 257 is a number plus its 256th.
inline Halves overlayCurve(Bytes a, Bytes b, Bytes end) {
    const auto half = [](Words x, Words y, Words rest) {
        const Words t = multiplyHigh(x * rest + 64, splat(2 * 257));
        return multiplyHigh(y * (y + t) + 128, splat(257));
    };
    return {half(even(a), even(b), even(end)), half(odd(a), odd(b), odd(end))};
}
struct Overlay {
    template <bool>
    static Halves of(Bytes a, Bytes b, Bytes) {
        return overlayCurve(a, b, ~b);
    }
};
struct BentOverlay {
    template <bool>
    static Halves of(Bytes a, Bytes b, Bytes opacity) {
        return overlayCurve(a, b, subtractSaturated(opacity, b));
    }
};

// The smaller of 256x / (y + 1) and 255, exact: a quotient that is no integer lies at least 1 / 256 below the
// next, and single precision rounds by far less.
template <bool pixels>
inline Halves limitedQuotient(Bytes x, Bytes y) {
    const auto n = (Longs)x;
    const auto quotient = [](Longs dividend, Longs divisor) {
        return (Longs)truncated(real((Ints)(dividend & 0xFF00)) / real((Ints)divisor));
    };
    const auto limited = [](Longs low, Longs high) {
        return smallerUnsigned((Words)(low | high << 16), splat(255));
    };
    const auto evens = (Longs)(even(y) + 1), odds = (Longs)(odd(y) + 1);
    return {limited(quotient(n << 8, evens & 0xFFFF), quotient(n >> 8, evens >> 16)),
            limited(quotient(n, odds & 0xFFFF), pixels ? Longs{} : quotient(n >> 16, odds >> 16))};
}
struct Divide {
    template <bool pixels>
    static Halves of(Bytes a, Bytes b, Bytes) {
        return limitedQuotient<pixels>(a, b);
    }
};
struct Dodge {
    template <bool pixels>
    static Halves of(Bytes a, Bytes b, Bytes) {
        return limitedQuotient<pixels>(b, ~a);
    }
};
struct Burn {
    template <bool pixels>
    static Halves of(Bytes a, Bytes b, Bytes) {
        const Halves q = limitedQuotient<pixels>(~b, a);
        return {255 - q.evens, 255 - q.odds};
    }
};

struct Add {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return addSaturated(a, b);
    }
};
struct Subtract {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return subtractSaturated(a, b);
    }
};
struct Difference {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return subtractSaturated(a, b) | subtractSaturated(b, a);
    }
};
struct Darken {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return smaller(a, b);
    }
};
struct Lighten {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return larger(a, b);
    }
};

// The functions with a branch on b turn both components and the result around in the upper one.
struct SoftLight {
    template <bool>
    static Halves of(Bytes a, Bytes b, Bytes) {
        const Bytes upper = upperHalf(b);
        const auto half = [](Words x, Words y, Words turned) {
            const Words t = multiplyHigh(x, splat(32897)); // x * 128 / 255
            // Below the branch 2t + 128, and above it 2 (191 - t): the complement of 2t, and 383.
            const auto above = (Words)((SignedWords)turned > 0);
            const Words k = ((t + t) ^ above) + (turned + 128);
            return by255(k * y) ^ turned;
        };
        const Bytes y = b ^ upper;
        return {half(even(a), even(y), even(upper)), half(odd(a), odd(y), odd(upper))};
    }
};
struct HardLight {
    template <bool>
    static Halves of(Bytes a, Bytes b, Bytes) {
        const Bytes upper = upperHalf(b), x = a ^ upper, y = b ^ upper;
        return {by255(even(x) * even(y) * 2) ^ even(upper), by255(odd(x) * odd(y) * 2) ^ odd(upper)};
    }
};
struct LateHardLight {
    template <bool>
    static Halves of(Bytes a, Bytes b, Bytes) {
        // Twice the product does not fit in a word: 2n / 255 is n and its 255th over 128.
        const auto half = [](Words n, Words turned) { return (((n + by255(n)) >> 7) & 0xFF) ^ turned; };
        const auto upper = (Bytes)(b >= splatBytes(192)), x = a ^ upper, y = b ^ upper;
        return {half(even(x) * even(y), even(upper)), half(odd(x) * odd(y), odd(upper))};
    }
};

struct Not {
    template <bool>
    static Bytes of(Bytes, Bytes b, Bytes) {
        return (Bytes)(b == 0) & 1;
    }
};
struct Or {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return a | b;
    }
};
struct Xor {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return a ^ b;
    }
};
struct Flip {
    template <bool>
    static Bytes of(Bytes a, Bytes, Bytes) {
        return a ^ 0x85;
    }
};
struct LinearBurn {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return subtractSaturated(a, ~b);
    }
};
struct CentredDifference {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return subtractSigned(a ^ 0x80, b ^ 0x80) ^ 0x80;
    }
};
struct CentredSum {
    template <bool>
    static Bytes of(Bytes a, Bytes b, Bytes) {
        return addSigned(a ^ 0x80, b ^ 0x80) ^ 0x80;
    }
};

#if defined(__AVX2__)
// NoName01. From 128 on it is 254 less the value at 256 - b; 127 serves for 128, which has the same.
struct Gain {
    template <bool>
    static Bytes of(Bytes, Bytes b, Bytes) {
        const Bytes upper = upperHalf(b), at = smaller((b ^ upper) - upper, splatBytes(127));
        // A shuffle goes by the lower four bits; the three above choose among the rows, each brought to the
        // top of its byte.
        const auto row = [at](int number) {
            const __m128i values = _mm_load_si128(reinterpret_cast<const __m128i *>(gainRows[number]));
            return (Bytes)_mm256_shuffle_epi8(_mm256_broadcastsi128_si256(values), (__m256i)at);
        };
        const Bytes bit6 = at + at, bit5 = bit6 + bit6, bit4 = bit5 + bit5;
        const auto pair = [&](int lower) { return choose(bit4, row(lower + 1), row(lower)); };
        const auto four = [&](int lower) { return choose(bit5, pair(lower + 2), pair(lower)); };
        const Bytes value = choose(bit6, four(4), four(0));
        return (value ^ upper) + upper;
    }
};
#endif

// The modes that are a function of one component and no table at this level.
template <class Take>
void forEachFunction(Take take) {
    take(Mode::srcOver, Source{});
    take(Mode::srcIn, Source{});
    take(Mode::dissolve, Source{});
    take(Mode::multiply, Multiply{});
    take(Mode::screen, Screen{});
    take(Mode::overlay, Overlay{});
    take(Mode::divide, Divide{});
    take(Mode::dodge, Dodge{});
    take(Mode::burn, Burn{});
    take(Mode::add, Add{});
    take(Mode::subtract, Subtract{});
    take(Mode::difference, Difference{});
    take(Mode::darken, Darken{});
    take(Mode::lighten, Lighten{});
    take(Mode::softLight, SoftLight{});
    take(Mode::hardLight, HardLight{});
    take(Mode::logicalNot, Not{});
    take(Mode::bitOr, Or{});
    take(Mode::bitXor, Xor{});
    take(Mode::flip, Flip{});
    take(Mode::noName03, LateHardLight{});
    take(Mode::noName04, BentOverlay{});
    take(Mode::noName05, LinearBurn{});
    take(Mode::noName06, CentredDifference{});
    take(Mode::noName07, CentredSum{});
#if defined(__AVX2__)
    take(Mode::noName01, Gain{});
#endif
}

} // namespace
} // namespace lx::LX_VECTOR_NAMESPACE
