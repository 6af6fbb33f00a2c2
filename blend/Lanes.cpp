// The functions of one component and the mix, in vectors: the forms that Function.h and Weight.h define.

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

// What becomes of a lane: three ways to combine, each on even and odd bytes.
template <class Function>
struct Mixed {
    static Words sum(Words first, Words c, Words b, Words w, Words opacity) {
        return Function::of(first, b, opacity) * w + c * (255 - w) + 255;
    }
    static Bytes of(Bytes first, Bytes c, Bytes b, Bytes w, Words opacity) {
        const Words evens = sum(even(first), even(c), even(b), even(w), opacity);
        const Words odds = sum(odd(first), odd(c), odd(b), odd(w), opacity);
        return (Bytes)(evens >> 8 | (odds & 0xFF00));
    }
};
struct Copied {
    static Bytes of(Bytes, Bytes, Bytes b, Bytes, Words) { return b; }
};
struct Summed {
    static Words sum(Words c, Words b, Words w) { return ((b + 1) * w + c + 1); }
    static Bytes of(Bytes, Bytes c, Bytes b, Bytes w, Words) {
        // A sum of 65536 wraps to 0, of which the byte is the same.
        const Words evens = sum(even(c), even(b), even(w)), odds = sum(odd(c), odd(b), odd(w));
        return (Bytes)(evens >> 8 | (odds & 0xFF00));
    }
};

// The opacity and the alpha of b as a weight, in all four bytes of a pixel.
inline Bytes weightOfAlpha(Bytes b, Longs opacity) {
    const Longs alpha = (Longs)b >> 24;
    Longs w = ((Longs)((Words)alpha * (Words)opacity) + opacity) >> 8;
    w |= w << 8;
    return (Bytes)(w | w << 16);
}

constexpr uint32_t colourBytes = 0x00FFFFFF;

template <class Combination>
struct Body {
    const Words opacity;
    const Longs opacityOfPixel;
    const Bytes colours;

    explicit Body(const LaneInputs &in)
        : opacity(splat(in.opacity)), opacityOfPixel(Longs{} + static_cast<uint32_t>(in.opacity)),
          colours((Bytes)(Longs{} + (in.hasAlpha ? colourBytes : ~0u))) {}

    Bytes operator()(Bytes first, Bytes c, Bytes b, Bytes w) const {
        return (Combination::of(first, c, b, w, opacity) & colours) | (larger(first, w) & ~colours);
    }
};

template <class Combination, bool ownWeight>
void walk(uint8_t *out, const LaneInputs &in, size_t lanes) {
    const Body<Combination> body(in);
    const auto weightAt = [&](size_t i, Bytes b) {
        return ownWeight ? weightOfAlpha(b, body.opacityOfPixel) : load(in.weight + i);
    };
    size_t i = 0;
    for (; i + vectorBytes <= lanes; i += vectorBytes) {
        const Bytes b = load(in.b + i);
        store(out + i, body(load(in.first + i), load(in.c + i), b, weightAt(i, b)));
    }
    if (i == lanes)
        return;
    uint8_t first[vectorBytes] = {}, c[vectorBytes] = {}, b[vectorBytes] = {}, w[vectorBytes] = {};
    const size_t rest = lanes - i;
    __builtin_memcpy(first, in.first + i, rest);
    __builtin_memcpy(c, in.c + i, rest);
    __builtin_memcpy(b, in.b + i, rest);
    if (!ownWeight)
        __builtin_memcpy(w, in.weight + i, rest);
    const Bytes last = load(b);
    store(first, body(load(first), load(c), last, ownWeight ? weightAt(i, last) : load(w)));
    __builtin_memcpy(out + i, first, rest);
}

template <class Combination>
void combine(uint8_t *out, const LaneInputs &in, size_t lanes) {
    if (in.weight == nullptr)
        walk<Combination, true>(out, in, lanes);
    else
        walk<Combination, false>(out, in, lanes);
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
