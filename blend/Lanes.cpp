// The functions of one component and the mix over lanes that are told a weight each: for results of one byte,
// and for channels that write a part of a pixel.

#include "blend/ComponentVectors.h"
#include "blend/LevelForms.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// What becomes of a vector: three ways to combine. Alphas are merged in afterwards.
template <class Function>
struct Mixed {
    static Bytes of(Bytes first, Bytes c, Bytes b, Bytes w, Bytes opacity) {
        const Halves f = halves(Function::template of<false>(first, b, opacity));
        const auto sum = [](Words x, Words y, Words weight) { return x * weight + y * (255 - weight) + 255; };
        return join(sum(f.evens, even(c), even(w)) >> 8, sum(f.odds, odd(c), odd(w)) >> 8);
    }
    static Bytes fullOf(Bytes first, Bytes b, Bytes opacity) {
        return whole(Function::template of<false>(first, b, opacity));
    }
};
struct Copied {
    static Bytes of(Bytes, Bytes, Bytes b, Bytes, Bytes) { return b; }
    static Bytes fullOf(Bytes, Bytes b, Bytes) { return b; }
};
struct Summed {
    static Bytes of(Bytes, Bytes c, Bytes b, Bytes w, Bytes) {
        // A sum of 65536 wraps to 0, of which the byte is the same.
        const auto sum = [](Words x, Words y, Words weight) { return (x + 1) * weight + y + 1; };
        return join(sum(even(b), even(c), even(w)) >> 8, sum(odd(b), odd(c), odd(w)) >> 8);
    }
};

// The vectors of a walk's inputs, or of what is left of them at its end.
struct At {
    const uint8_t *first, *c, *b, *weight;
};

template <class Combination, bool full>
[[gnu::flatten]] void walk(uint8_t *out, const LaneInputs &in, size_t lanes) {
    const Bytes opacity = splatBytes(in.opacity);
    const auto alphas = (Bytes)splatLongs(in.hasAlpha ? 0xFF000000 : 0);
    const auto made = [&](const At &at) {
        if constexpr (full) {
            return Combination::fullOf(load(at.first), load(at.b), opacity) | alphas;
        } else {
            const Bytes first = load(at.first), w = load(at.weight);
            const Bytes colours = Combination::of(first, load(at.c), load(at.b), w, opacity);
            return choose(alphas, larger(first, w), colours);
        }
    };
    // In variables of their own, which no store can change.
    const uint8_t *const first = in.first, *const c = in.c, *const b = in.b;
    const uint8_t *const weight = full ? in.b : in.weight; // the former is not read
    size_t i = 0;
    for (; i + vectorBytes <= lanes; i += vectorBytes)
        store(out + i, made({first + i, c + i, b + i, weight + i}));
    if (i == lanes)
        return;
    struct Tail {
        uint8_t bytes[vectorBytes] = {};
        Tail(const uint8_t *from, size_t count) { __builtin_memcpy(bytes, from, count); }
    };
    const size_t rest = lanes - i;
    const Tail tailFirst(first + i, rest), tailC(c + i, rest), tailB(b + i, rest);
    Tail last(weight + i, rest);
    store(last.bytes, made({tailFirst.bytes, tailC.bytes, tailB.bytes, last.bytes}));
    __builtin_memcpy(out + i, last.bytes, rest);
}

template <class Combination>
void combine(uint8_t *out, const LaneInputs &in, size_t lanes) {
    if (in.weight == nullptr)
        walk<Combination, true>(out, in, lanes);
    else
        walk<Combination, false>(out, in, lanes);
}

void select(uint8_t *out, const uint8_t *result, const uint8_t *gate, const uint8_t *written, size_t lanes) {
    size_t i = 0;
    for (; i + vectorBytes <= lanes; i += vectorBytes) {
        const auto take = (Bytes)(load(gate + i) != 0) & (Bytes)(load(written + i) != 0);
        store(out + i, choose(take, load(result + i), load(out + i)));
    }
    for (; i < lanes; ++i) {
        if (gate[i] != 0 && written[i] != 0)
            out[i] = result[i];
    }
}

} // namespace

void addLaneForms(VectorForms &forms) {
    forEachFunction([&](Mode mode, auto function) {
        forms.mix[static_cast<size_t>(mode)] = combine<Mixed<decltype(function)>>;
    });
    forms.copy = combine<Copied>;
    forms.userColor = walk<Summed, false>;
    forms.select = select;
}

} // namespace lx::LX_VECTOR_NAMESPACE
