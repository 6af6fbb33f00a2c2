// Whole pixels in one pass: loaded from any layout as four bytes, blended, and stored in the layout of the
// result. One loop for each way to combine, to weigh and to reach pixels that is in use, chosen once per run.

#include <type_traits>

#include "blend/LevelForms.h"
#include "blend/PixelAccess.h"
#include "blend/PixelCombinations.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// ---- Weights ----

#if defined(__AVX2__)
// Byte `of` of each pixel, widened into both of its words.
template <char of>
inline Words widened(__m256i pixels) {
    constexpr char n = -1, i = of, j = of + 4, k = of + 8, l = of + 12;
    return (Words)_mm256_shuffle_epi8(pixels,
                                      _mm256_setr_epi8(i, n, i, n, j, n, j, n, k, n, k, n, l, n, l, n, i, n,
                                                       i, n, j, n, j, n, k, n, k, n, l, n, l, n));
}

inline Words alphaWords(Bytes pixels) {
    return widened<3>((__m256i)pixels);
}

inline Words planeWords(const uint8_t *plane) {
    constexpr char n = -1;
    long long bytes;
    __builtin_memcpy(&bytes, plane, vectorPixels);
    return (Words)_mm256_shuffle_epi8(_mm256_set1_epi64x(bytes),
                                      _mm256_setr_epi8(0, n, 0, n, 1, n, 1, n, 2, n, 2, n, 3, n, 3, n, 4, n,
                                                       4, n, 5, n, 5, n, 6, n, 6, n, 7, n, 7, n));
}
#else
inline Words alphaWords(Bytes pixels) {
    const Longs alphas = (Longs)pixels >> 24;
    return (Words)(alphas | alphas << 16);
}

inline Words planeWords(const uint8_t *plane) {
    uint32_t bytes;
    __builtin_memcpy(&bytes, plane, vectorPixels);
    // In two steps that are one instruction each: compilers take other shuffles byte by byte.
    const auto v = (Bytes)Longs{bytes, 0, 0, 0};
    const auto words =
        (Words)__builtin_shufflevector(v, Bytes{}, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    return __builtin_shufflevector(words, words, 0, 8, 1, 9, 2, 10, 3, 11);
}
#endif

// ---- The loop ----

// Takes whole vectors of pixels.
using Walk = void (*)(uint8_t *out, const PixelInputs &in, size_t pixels);

constexpr bool isByAlpha(PixelWeight weighing) {
    return weighing == PixelWeight::alpha || weighing == PixelWeight::alphaAndOpacity ||
           weighing == PixelWeight::maskedOnce || weighing == PixelWeight::maskedTwice;
}

// Sets the weights of a vector's pixels, the first of them number i.
template <class Combination, PixelWeight weighing>
inline void weigh(Operands &operands, const uint8_t *plane, Words opacity, size_t i) {
    constexpr bool once = weighing == PixelWeight::maskedOnce, twice = weighing == PixelWeight::maskedTwice;
    if constexpr (weighing == PixelWeight::constant) {
        operands.weight = opacity;
    } else if constexpr (weighing == PixelWeight::told) {
        operands.weight = planeWords(plane + i);
    } else if constexpr (once || twice) {
        const Words m = planeWords(plane + i);
        Words alpha = by255(alphaWords(operands.b) * m + 127);
        if constexpr (Combination::weighsBySmaller)
            alpha = smaller(alpha, alphaWords(operands.a));
        if constexpr (twice)
            alpha = by255(alpha * m + 127);
        operands.weight = alpha;
    } else {
        const Bytes from = Combination::weighsBySmaller ? smaller(operands.a, operands.b) : operands.b;
        operands.weight = alphaWords(from);
        // The smaller alpha is at most a's, which so stays.
        operands.weightBytes = Combination::weighsBySmaller ? operands.a : from;
        if constexpr (weighing == PixelWeight::alpha)
            return;
    }
    if constexpr (isByAlpha(weighing))
        operands.weight = (operands.weight * opacity + opacity) >> 8;
    operands.weightBytes =
        isByAlpha(weighing) && Combination::weighsBySmaller ? operands.a : (Bytes)(operands.weight << 8);
}

template <class Combination, PixelWeight weighing, bool keeps, class Access>
[[gnu::flatten]] void walk(uint8_t *out, const PixelInputs &in, size_t pixels) {
    const Access access(out, in);
    Combination combination;
    const Words opacity = splat(in.weightOpacity);
    uint32_t colour;
    __builtin_memcpy(&colour, in.colour, 4);
    const auto setting =
        std::is_same_v<Combination, Mixed<Constant>> ? (Bytes)splatLongs(colour) : splatBytes(in.opacity);
    const uint8_t *const plane = weighing == PixelWeight::told ? in.weights : in.mask, *const gates =
                                                                                           in.gates;
    // Where alpha weighs, b has one; and all three in four bytes are plain, unless the result is opaque.
    constexpr bool byAlpha = isByAlpha(weighing);
    constexpr bool hasAlpha = Access::layout == Layout::rgba && !(Access::isAny && byAlpha);
    constexpr Layout result = Access::layout == Layout::rgba && !hasAlpha ? Layout::rgb : Access::layout;
    constexpr bool takesAlphaOfA = hasAlpha || (byAlpha && Combination::weighsBySmaller);
    const auto bAt = [&](size_t i) {
        return byAlpha ? access.bOfFour(i) : access.template b<Combination::takesAlphaOfB>(i);
    };
    const auto tell = [&](size_t i) {
        if constexpr (Combination::isToldAhead) {
            if (i < pixels)
                combination.function.tell(access.first(i), bAt(i));
        }
    };
    for (size_t i = 0; i < GainOfProduct::ahead; ++i)
        tell(i * vectorPixels);
    for (size_t i = 0; i < pixels; i += vectorPixels) {
        tell(i + GainOfProduct::ahead * vectorPixels);
        Operands operands = {};
        operands.a = access.template a<takesAlphaOfA>(i);
        operands.first = access.first(i);
        operands.b = bAt(i);
        operands.setting = setting;
        Bytes made;
        if constexpr (weighing == PixelWeight::full) {
            made = combination.fullOf(operands);
        } else {
            weigh<Combination, weighing>(operands, plane, opacity, i);
            made = combination.template of<result>(operands);
        }
        made = access.finished(made);
        if constexpr (keeps) {
            const Words open = weighing == PixelWeight::told ? planeWords(gates + i) : operands.weight;
            made = choose((Bytes)(open == 0), access.old(i), made);
        }
        access.put(i, made);
    }
}

bool isPlain(const PixelInputs &in) {
    return in.outLayout == Layout::rgba && in.aLayout == Layout::rgba && in.bLayout == Layout::rgba &&
           !in.opaqueResult && in.weighing != PixelWeight::full && in.weighing != PixelWeight::constant;
}

// Where all is written or told, pixels are kept by a rule, so that there need not be both loops.
template <class Combination, PixelWeight weighing, class Access>
constexpr bool alwaysKeeps = Combination::skipsAtZero &&Access::isAny &&
                             (weighing == PixelWeight::told || Access::layout != Layout::rgb);
template <class Combination, PixelWeight weighing>
constexpr bool neverKeeps = !Combination::skipsAtZero && weighing != PixelWeight::told;

template <class Combination, PixelWeight weighing, class Access>
Walk keeping(const PixelInputs &in) {
    if constexpr (neverKeeps<Combination, weighing>)
        return walk<Combination, weighing, false, Access>;
    else if constexpr (alwaysKeeps<Combination, weighing, Access>)
        return walk<Combination, weighing, true, Access>;
    else
        return in.keeps ? walk<Combination, weighing, true, Access>
                        : walk<Combination, weighing, false, Access>;
}

template <class Combination, class Access>
Walk alphaWalk(const PixelInputs &in) {
    if (in.weighing == PixelWeight::alpha)
        return keeping<Combination, PixelWeight::alpha, Access>(in);
    return keeping<Combination, PixelWeight::alphaAndOpacity, Access>(in);
}

// Weights that are told here are those of modes that take b as it is.
template <class Combination>
Walk plainWalk(const PixelInputs &in) {
    if constexpr (Combination::takesBAsItIs) {
        if (in.weighing == PixelWeight::told)
            return keeping<Combination, PixelWeight::told, Plain>(in);
        if (in.weighing == PixelWeight::maskedOnce)
            return keeping<Combination, PixelWeight::maskedOnce, Plain>(in);
    }
    if (in.weighing == PixelWeight::maskedTwice)
        return keeping<Combination, PixelWeight::maskedTwice, Plain>(in);
    return alphaWalk<Combination, Plain>(in);
}

// Of pixels that are not all of four bytes, or with a weight that is no alpha's.
template <class Combination, class Access>
Walk anyWalk(const PixelInputs &in) {
    switch (in.weighing) {
    case PixelWeight::full:
        return walk<Combination, PixelWeight::full, false, Access>;
    case PixelWeight::constant:
        return walk<Combination, PixelWeight::constant, false, Access>;
    case PixelWeight::told:
        return keeping<Combination, PixelWeight::told, Access>(in);
    default:
        // Where the first source goes apart, b is of one byte.
        if constexpr (!Access::firstApart)
            return alphaWalk<Combination, Access>(in);
        return nullptr;
    }
}

template <class Combination, Layout outLayout>
Walk anyWalkInto(const PixelInputs &in) {
    if constexpr (Combination::takesFirst) {
        if (in.firstOfA)
            return anyWalk<Combination, Any<outLayout, true>>(in);
    }
    return anyWalk<Combination, Any<outLayout, false>>(in);
}

template <class Combination>
Walk walkOf(const PixelInputs &in) {
    if (isPlain(in))
        return plainWalk<Combination>(in);
#if defined(__AVX2__)
    if (in.outLayout == Layout::a)
        return alphaWalk<Combination, Any<Layout::a, false>>(in);
    if (in.outLayout == Layout::rgb)
        return anyWalkInto<Combination, Layout::rgb>(in);
#endif
    return anyWalkInto<Combination, Layout::rgba>(in);
}

PixelInputs movedOn(PixelInputs in, size_t pixels) {
    in.a += pixels * stepOf(in.aLayout);
    in.b += pixels * stepOf(in.bLayout);
    if (in.weights != nullptr)
        in.weights += pixels;
    if (in.gates != nullptr)
        in.gates += pixels;
    if (in.mask != nullptr)
        in.mask += pixels;
    return in;
}

size_t wholeVectors(size_t pixels) {
    return (pixels + vectorPixels - 1) / vectorPixels * vectorPixels;
}

// The last pixels, whose vectors would reach behind memory, in copies that have room behind them.
void walkTail(Walk walk, uint8_t *out, const PixelInputs &in, size_t pixels) {
    constexpr size_t most = 32;
    uint8_t outCopy[4 * most] = {}, aCopy[4 * most] = {}, bCopy[4 * most] = {};
    const size_t outBytes = pixels * stepOf(in.outLayout);
    __builtin_memcpy(outCopy, out, outBytes);
    __builtin_memcpy(aCopy, in.a, pixels * stepOf(in.aLayout));
    __builtin_memcpy(bCopy, in.b, pixels * stepOf(in.bLayout));
    PixelInputs copies = in;
    copies.a = aCopy;
    copies.b = bCopy;
    uint8_t maskCopy[most] = {};
    if (in.mask != nullptr) {
        __builtin_memcpy(maskCopy, in.mask, pixels);
        copies.mask = maskCopy;
    }
    walk(outCopy, copies, wholeVectors(pixels));
    __builtin_memcpy(out, outCopy, outBytes);
}

#if defined(__AVX2__)

void walkAny(Walk walk, uint8_t *out, const PixelInputs &in, size_t pixels) {
    const size_t readByA = readBy(in.aLayout), readByB = readBy(in.bLayout);
    const size_t read = readByA > readByB ? readByA : readByB, there = pixels + in.pixelsBehind;
    size_t direct = pixels / vectorPixels * vectorPixels;
    while (direct > 0 && direct - vectorPixels + read > there)
        direct -= vectorPixels;
    walk(out, in, direct);
    if (direct < pixels)
        walkTail(walk, out + direct * stepOf(in.outLayout), movedOn(in, direct), pixels - direct);
}

#else

void bringIn(uint8_t *rgba, const uint8_t *pixels, Layout layout, size_t count) {
    if (layout == Layout::rgba)
        __builtin_memcpy(rgba, pixels, 4 * count);
    else
        (layout == Layout::a ? aToRgba : rgbToRgba)(rgba, pixels, count);
}

void walkAny(Walk walk, uint8_t *out, const PixelInputs &in, size_t pixels) {
    Block block;
    const size_t step = stepOf(in.outLayout);
    for (size_t i = 0; i < pixels; i += Block::pixels, out += Block::pixels * step) {
        const size_t count = pixels - i < Block::pixels ? pixels - i : Block::pixels;
        PixelInputs here = movedOn(in, i);
        bringIn(block.a, here.a, in.aLayout, count);
        bringIn(block.b, here.b, in.bLayout, count);
        if (in.firstOfA)
            firstOfRgba(block.first, block.a, count);
        if (in.mask != nullptr) {
            __builtin_memcpy(block.mask, here.mask, count);
            here.mask = block.mask;
        }
        bringIn(block.out, out, in.outLayout, count); // for the pixels that are kept
        walk(reinterpret_cast<uint8_t *>(&block), here, wholeVectors(count));
        if (in.outLayout == Layout::rgb) {
            rgbaToRgb(block.a, block.out, count); // padded
            __builtin_memcpy(out, block.a, 3 * count);
        } else {
            __builtin_memcpy(out, block.out, 4 * count);
        }
    }
}

#endif

template <class Combination>
void blend(uint8_t *out, const PixelInputs &in, size_t pixels) {
    const Walk walk = walkOf<Combination>(in);
    if (!isPlain(in))
        return walkAny(walk, out, in, pixels);
    const size_t direct = pixels / vectorPixels * vectorPixels;
    walk(out, in, direct);
    if (direct < pixels)
        walkTail(walk, out + 4 * direct, movedOn(in, direct), pixels - direct);
}

} // namespace

void addPixelForms(VectorForms &forms) {
    const auto at = [&](Mode mode) -> auto & {
        return forms.pixels[static_cast<size_t>(mode)];
    };
    forEachFunction([&](Mode mode, auto function) { at(mode) = blend<Mixed<decltype(function)>>; });
    at(Mode::noName02) = blend<Mixed<GainOfProduct>>;
    at(Mode::src) = blend<Copied>;
    at(Mode::dstOver) = blend<Under>;
    at(Mode::userColor) = blend<Summed>;
    at(Mode::grayscale) = blend<Mixed<Luminance>>;
    at(Mode::noName08) = at(Mode::noName09) = at(Mode::noName10) = blend<Mixed<Constant>>;
#if defined(__AVX2__)
    forms.pixelsMakeSingleBytes = true;
#endif
}

} // namespace lx::LX_VECTOR_NAMESPACE
