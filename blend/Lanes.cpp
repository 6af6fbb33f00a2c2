// The functions of one component and the mix, in vectors: the forms that Function.h and Weight.h define.

#if defined(__AVX2__)
#include <immintrin.h>
#endif

#include "blend/LevelForms.h"
#include "blend/Vectors.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// Each takes words of 0 to 255 and gives such words.
struct Source {
    static Words of(Words, Words b, Words) { return b; }
};
struct Multiply {
    static Words of(Words a, Words b, Words) { return (a * b) >> 8; }
};
struct Screen {
    static Words of(Words a, Words b, Words) { return 255 - (((255 - a) * (255 - b)) >> 8); }
};
struct BentOverlay {
    // The doubling of t before its two shifts is taken out of both, so that it fits: 2n + 128 becomes n + 64.
    static Words of(Words a, Words b, Words opacity) {
        const Words n = a * larger(opacity - b, Words{}) + 64;
        const Words u = b * (b + ((n + (n >> 8)) >> 7)) + 128;
        return (u + (u >> 8)) >> 8;
    }
};
struct Overlay {
    static Words of(Words a, Words b, Words) { return BentOverlay::of(a, b, splat(255)); }
};
struct Divide {
    static Words of(Words a, Words b, Words) { return limitedQuotient(a << 8, b + 1); }
};
struct Dodge {
    static Words of(Words a, Words b, Words) { return limitedQuotient(b << 8, 256 - a); }
};
struct Burn {
    static Words of(Words a, Words b, Words) { return 255 - limitedQuotient((255 - b) << 8, a + 1); }
};
struct Add {
    static Words of(Words a, Words b, Words) { return smaller(a + b, splat(255)); }
};
struct Subtract {
    static Words of(Words a, Words b, Words) { return larger(a - b, Words{}); }
};
struct Difference {
    static Words of(Words a, Words b, Words) { return larger(a, b) - smaller(a, b); }
};
struct Darken {
    static Words of(Words a, Words b, Words) { return smaller(a, b); }
};
struct Lighten {
    static Words of(Words a, Words b, Words) { return larger(a, b); }
};
struct SoftLight {
    static Words of(Words a, Words b, Words) {
        const Words t = by255(a * 128);
        const Words low = by255((2 * t + 128) * b);
        const Words high = 255 - by255((191 - t) * (255 - b) * 2);
        return choose(below(b, splat(128)), low, high);
    }
};
struct HardLight {
    static Words upper(Words a, Words b) { return 255 - by255((255 - a) * (255 - b) * 2); }
    static Words of(Words a, Words b, Words) {
        return choose(below(b, splat(128)), by255(a * b * 2), upper(a, b));
    }
};
struct LateHardLight {
    static Words of(Words a, Words b, Words) {
        // Twice the product does not fit: double the quotient, and carry where the remainder doubles past
        // 255.
        const Words p = a * b, q = by255(p);
        const Words low = (2 * q + ((p - q * 255) >> 7)) & 0xFF;
        return choose(below(b, splat(192)), low, HardLight::upper(a, b));
    }
};
struct Not {
    static Words of(Words, Words b, Words) { return (Words)(b == 0) & 1; }
};
struct Or {
    static Words of(Words a, Words b, Words) { return a | b; }
};
struct Xor {
    static Words of(Words a, Words b, Words) { return a ^ b; }
};
struct Flip {
    static Words of(Words a, Words, Words) { return a ^ 0x85; }
};
struct LinearBurn {
    static Words of(Words a, Words b, Words) { return larger(a + b - 255, Words{}); }
};
struct CentredDifference {
    static Words of(Words a, Words b, Words) { return larger(smaller(a - b + 128, splat(255)), Words{}); }
};
struct CentredSum {
    static Words of(Words a, Words b, Words) { return larger(smaller(a + b - 128, splat(255)), Words{}); }
};

// The even and the odd weights of a vector.
struct Weights {
    Words evens, odds;
};

// The bytes that are colours: all bits there, none in alphas; and the same of the odd ones alone.
struct Colours {
    Bytes all;
    Words odds;
};

// What becomes of the colours: three ways to combine, each on even and odd bytes. Alphas come out as 0.
template <class Function>
struct Mixed {
    static Words sum(Words first, Words c, Words b, Words w, Words opacity) {
        return Function::of(first, b, opacity) * w + c * (255 - w) + 255;
    }
    static Bytes of(Bytes first, Bytes c, Bytes b, Weights w, const Colours &colours, Words opacity) {
        const Words evens = sum(even(first), even(c), even(b), w.evens, opacity);
        const Words odds = sum(odd(first), odd(c), odd(b), w.odds, opacity);
        return (Bytes)(evens >> 8 | (odds & colours.odds));
    }
    static constexpr bool sumsAlphas = false;
};
struct Copied {
    static Bytes of(Bytes, Bytes, Bytes b, Weights, const Colours &colours, Words) { return b & colours.all; }
    static constexpr bool sumsAlphas = false;
};
struct Summed {
    // A sum of 65536 wraps to 0, of which the byte is the same.
    static Words sum(Words c, Words b, Words w) { return (b + 1) * w + c + 1; }
    static Bytes of(Bytes, Bytes c, Bytes b, Weights w, const Colours &colours, Words) {
        const Words evens = sum(even(c), even(b), w.evens), odds = sum(odd(c), odd(b), w.odds);
        return (Bytes)(evens >> 8 | (odds & colours.odds));
    }
    static constexpr bool sumsAlphas = true;
};

constexpr uint32_t colourBytes = 0x00FFFFFF;
constexpr size_t vectorPixels = vectorBytes / 4;

// A long for each pixel, of its byte of the mask: the one widening that compilers do byte by byte when left
// to them.
inline Longs loadMask(const uint8_t *mask) {
#if defined(__AVX2__)
    long long bytes;
    __builtin_memcpy(&bytes, mask, vectorPixels);
    return (Longs)_mm256_cvtepu8_epi32(_mm_set_epi64x(0, bytes));
#else
    uint32_t bytes;
    __builtin_memcpy(&bytes, mask, vectorPixels);
    const auto m = (Bytes)Longs{bytes, 0, 0, 0};
    const auto words =
        __builtin_shufflevector(m, Bytes{}, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    return (Longs)__builtin_shufflevector((Words)words, Words{}, 0, 8, 1, 9, 2, 10, 3, 11);
#endif
}

// Words of a pixel's long that fit in its lower one: products and sums there leave the upper one 0.
inline Longs foldLong(Longs alpha, Longs m) {
    const auto n = (Longs)((Words)alpha * (Words)m) + 127;
    return (n + 1 + (n >> 8)) >> 8;
}

// The alpha that weighs a pixel, with the mask in it.
template <LaneWeight weighing>
inline Longs foldedAlpha(Bytes first, Bytes b, const uint8_t *mask) {
    const Longs alpha = (Longs)b >> 24;
    if constexpr (weighing == LaneWeight::smallerAlpha) {
        const Longs other = (Longs)first >> 24;
        return (Longs)smaller((Words)alpha, (Words)other);
    } else if constexpr (weighing == LaneWeight::alphaMaskedOnce) {
        return foldLong(alpha, loadMask(mask));
    } else if constexpr (weighing == LaneWeight::alphaMaskedTwice) {
        const Longs m = loadMask(mask);
        return foldLong(foldLong(alpha, m), m);
    } else {
        return alpha;
    }
}

template <class Combination, LaneWeight weighing>
struct Body {
    const Words opacity;
    const Longs weightOpacity;
    const Colours colours;

    explicit Body(const LaneInputs &in)
        : opacity(splat(in.opacity)), weightOpacity(Longs{} + static_cast<uint32_t>(in.weightOpacity)),
          colours(in.hasAlpha ? Colours{(Bytes)(Longs{} + colourBytes), (Words)(Longs{} + 0x0000FF00u)}
                              : Colours{(Bytes)(Longs{} + ~0u), splat(0xFF00)}) {}

    // `weight` points to the weights of the lanes, or to the mask of the pixels.
    Bytes operator()(Bytes first, Bytes c, Bytes b, const uint8_t *weight) const {
        if constexpr (weighing == LaneWeight::told) {
            const Bytes w = load(weight);
            return Combination::of(first, c, b, {even(w), odd(w)}, colours, opacity) |
                   (larger(first, w) & ~colours.all);
        } else {
            const Longs x = foldedAlpha<weighing>(first, b, weight);
            const Longs w = ((Longs)((Words)x * (Words)weightOpacity) + weightOpacity) >> 8;
            const auto both = (Words)(w | w << 16);
            const Bytes made = Combination::of(first, c, b, {both, both}, colours, opacity);
            if constexpr (Combination::sumsAlphas) {
                const Longs other = ((Longs)first >> 24) + 1;
                return made | (Bytes)(((Longs)((Words)other * (Words)w) + x + 1) >> 8 << 24);
            } else {
                return made | (larger(first, (Bytes)(w << 24)) & ~colours.all);
            }
        }
    }
};

template <class Combination, LaneWeight weighing>
void walk(uint8_t *out, const LaneInputs &in, size_t lanes) {
    constexpr bool told = weighing == LaneWeight::told;
    constexpr bool masked =
        weighing == LaneWeight::alphaMaskedOnce || weighing == LaneWeight::alphaMaskedTwice;
    const Body<Combination, weighing> body(in);
    // In variables of their own, which no store can change.
    const uint8_t *const first = in.first, *const c = in.c, *const b = in.b;
    const uint8_t *const weight = told ? in.weight : masked ? in.mask : in.b; // the last is not read
    const auto weightAt = [&](size_t i) { return weight + (masked ? i / 4 : i); };
    size_t i = 0;
    for (; i + vectorBytes <= lanes; i += vectorBytes)
        store(out + i, body(load(first + i), load(c + i), load(b + i), weightAt(i)));
    if (i == lanes)
        return;
    struct Tail {
        uint8_t bytes[vectorBytes] = {};
        Tail(const uint8_t *from, size_t count) { __builtin_memcpy(bytes, from, count); }
    };
    const size_t rest = lanes - i;
    const Tail tailFirst(first + i, rest), tailC(c + i, rest), tailB(b + i, rest);
    Tail last(weightAt(i), told ? rest : 0);
    store(last.bytes,
          body(load(tailFirst.bytes), load(tailC.bytes), load(tailB.bytes), told ? last.bytes : weightAt(i)));
    __builtin_memcpy(out + i, last.bytes, rest);
}

template <class Combination>
void combine(uint8_t *out, const LaneInputs &in, size_t lanes) {
    switch (in.weighing) {
    case LaneWeight::told:
        return walk<Combination, LaneWeight::told>(out, in, lanes);
    case LaneWeight::alpha:
        return walk<Combination, LaneWeight::alpha>(out, in, lanes);
    case LaneWeight::smallerAlpha:
        return walk<Combination, LaneWeight::smallerAlpha>(out, in, lanes);
    case LaneWeight::alphaMaskedOnce:
        return walk<Combination, LaneWeight::alphaMaskedOnce>(out, in, lanes);
    case LaneWeight::alphaMaskedTwice:
        return walk<Combination, LaneWeight::alphaMaskedTwice>(out, in, lanes);
    }
}

void select(uint8_t *out, const uint8_t *result, const uint8_t *gate, const uint8_t *written, size_t lanes) {
    const auto chosen = [](Bytes old, Bytes made, Bytes open, Bytes in) {
        const auto take = (Bytes)(open != 0) & (Bytes)(in != 0);
        return (made & take) | (old & ~take);
    };
    size_t i = 0;
    for (; i + vectorBytes <= lanes; i += vectorBytes)
        store(out + i, chosen(load(out + i), load(result + i), load(gate + i), load(written + i)));
    for (; i < lanes; ++i) {
        if (gate[i] != 0 && written[i] != 0)
            out[i] = result[i];
    }
}

} // namespace

void addLaneForms(VectorForms &forms) {
    const auto set = [&](Mode mode, auto function) {
        forms.mix[static_cast<size_t>(mode)] = combine<Mixed<decltype(function)>>;
    };
    set(Mode::srcOver, Source{});
    set(Mode::srcIn, Source{});
    set(Mode::dissolve, Source{});
    set(Mode::multiply, Multiply{});
    set(Mode::screen, Screen{});
    set(Mode::overlay, Overlay{});
    set(Mode::divide, Divide{});
    set(Mode::dodge, Dodge{});
    set(Mode::burn, Burn{});
    set(Mode::add, Add{});
    set(Mode::subtract, Subtract{});
    set(Mode::difference, Difference{});
    set(Mode::darken, Darken{});
    set(Mode::lighten, Lighten{});
    set(Mode::softLight, SoftLight{});
    set(Mode::hardLight, HardLight{});
    set(Mode::logicalNot, Not{});
    set(Mode::bitOr, Or{});
    set(Mode::bitXor, Xor{});
    set(Mode::flip, Flip{});
    set(Mode::noName03, LateHardLight{});
    set(Mode::noName04, BentOverlay{});
    set(Mode::noName05, LinearBurn{});
    set(Mode::noName06, CentredDifference{});
    set(Mode::noName07, CentredSum{});
    forms.copy = combine<Copied>;
    forms.userColor = combine<Summed>;
    forms.select = select;
}

} // namespace lx::LX_VECTOR_NAMESPACE
