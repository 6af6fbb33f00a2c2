// Whole pixels in one pass: loaded from any layout as four bytes, blended, and stored in the layout of the
// result. One loop for each way to combine, to weigh and to reach pixels, chosen once per run.

#include <type_traits>

#include "blend/ColourVectors.h"
#include "blend/ComponentVectors.h"
#include "blend/LevelForms.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

constexpr uint32_t alphaByte = 0xFF000000;

inline Bytes alphaBytes() {
    return (Bytes)splatLongs(alphaByte);
}

// ---- Ways to combine ----

// A vector's operands. The weight of a pixel stands in both of its words, and as `weightBytes` at least in
// the byte of its alpha.
struct Operands {
    Bytes a, first, b;
    Words weight;
    Bytes weightBytes;
    Bytes setting; // for the function
};

// The colours whose sums are given, in the upper bytes of words, and the larger alpha, if there is one.
template <bool hasAlpha>
inline Bytes withLargerAlpha(Words evens, Words odds, const Operands &in) {
    if constexpr (!hasAlpha)
        return (Bytes)(evens >> 8 | (odds & splat(0xFF00)));
    return (Bytes)(evens >> 8 | (odds & (Words)splatLongs(0x0000FF00))) |
           (larger(in.a, in.weightBytes) & alphaBytes());
}

inline Words mixSum(Words f, Words c, Words weight) {
    return f * weight + c * (255 - weight) + 255;
}

// A function of this kind takes the first source whole, if at all.
template <class Function>
constexpr bool pairsComponents = true;
template <>
constexpr bool pairsComponents<Source> = false;
template <>
constexpr bool pairsComponents<Not> = false;
#if defined(__AVX2__)
template <>
constexpr bool pairsComponents<Gain> = false;
#endif

struct Luminance {
    template <bool>
    static Bytes of(Bytes, Bytes b, Bytes) {
        return luminanceOf(b);
    }
};
template <>
constexpr bool pairsComponents<Luminance> = false;

// A colour that is told.
struct Constant {
    template <bool>
    static Bytes of(Bytes, Bytes, Bytes colour) {
        return colour;
    }
};
template <>
constexpr bool pairsComponents<Constant> = false;

// The smaller of both alphas weighs, where b's would.
template <class Function>
constexpr bool smallerAlphaWeighs = false;
template <>
constexpr bool smallerAlphaWeighs<Overlay> = true;
template <>
constexpr bool smallerAlphaWeighs<BentOverlay> = true;

template <class Function>
struct Mixed {
    static constexpr bool weighsBySmaller = smallerAlphaWeighs<Function>;
    static constexpr bool takesAlphaOfB = false;
    static constexpr bool takesFirst = pairsComponents<Function>;
    template <bool hasAlpha>
    static Bytes of(const Operands &in) {
        const Halves f = halves(Function::template of<true>(in.first, in.b, in.setting));
        return withLargerAlpha<hasAlpha>(mixSum(f.evens, even(in.a), in.weight),
                                         mixSum(f.odds, odd(in.a), in.weight), in);
    }
    static Bytes fullOf(const Operands &in) {
        return whole(Function::template of<true>(in.first, in.b, in.setting)) | alphaBytes();
    }
};

// DstOver: a mixed into b.
struct Under {
    static constexpr bool weighsBySmaller = false;
    static constexpr bool takesAlphaOfB = false;
    static constexpr bool takesFirst = false;
    template <bool hasAlpha>
    static Bytes of(const Operands &in) {
        return withLargerAlpha<hasAlpha>(mixSum(even(in.a), even(in.b), in.weight),
                                         mixSum(odd(in.a), odd(in.b), in.weight), in);
    }
    static Bytes fullOf(const Operands &in) { return in.a | alphaBytes(); }
};

struct Copied {
    static constexpr bool weighsBySmaller = false;
    static constexpr bool takesAlphaOfB = false;
    static constexpr bool takesFirst = false;
    template <bool hasAlpha>
    static Bytes of(const Operands &in) {
        return choose(alphaBytes(), larger(in.a, in.weightBytes), in.b);
    }
    static Bytes fullOf(const Operands &in) { return in.b | alphaBytes(); }
};

// UserColor: alphas are summed as colours are, with a and b in each other's place.
struct Summed {
    static constexpr bool weighsBySmaller = false;
    static constexpr bool takesAlphaOfB = true;
    static constexpr bool takesFirst = false;
    template <bool hasAlpha>
    static Bytes of(const Operands &in) {
        const Bytes swapped = (in.a ^ in.b) & alphaBytes(), x = in.b ^ swapped, y = in.a ^ swapped;
        const auto sum = [&](Words one, Words other) { return (one + 1) * in.weight + other + 1; };
        return (Bytes)(sum(even(x), even(y)) >> 8 | (sum(odd(x), odd(y)) & 0xFF00));
    }
    static Bytes fullOf(Operands in) {
        in.weight = splat(255);
        return of<true>(in);
    }
};

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
    const auto v = (Bytes)Longs{bytes, 0, 0, 0};
    return (Words)__builtin_shufflevector(v, v, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3) >> 8;
}
#endif

// ---- Ways to reach pixels ----

// Four bytes in all three places.
class Plain {
public:
    static constexpr bool firstApart = false;
    static constexpr bool isAny = false;
    static constexpr bool hasAlpha = true;
    Plain(uint8_t *out, const PixelInputs &in) : out_(out), a_(in.a), b_(in.b) {}
    template <bool>
    Bytes a(size_t pixel) const {
        return load(a_ + 4 * pixel);
    }
    template <bool>
    Bytes b(size_t pixel) const {
        return load(b_ + 4 * pixel);
    }
    Bytes bOfFour(size_t pixel) const { return load(b_ + 4 * pixel); }
    Bytes first(size_t pixel) const { return load(a_ + 4 * pixel); }
    Bytes old(size_t pixel) const { return load(out_ + 4 * pixel); }
    Bytes finished(Bytes made) const { return made; }
    void put(size_t pixel, Bytes made) const { store(out_ + 4 * pixel, made); }

private:
    uint8_t *const out_;
    const uint8_t *const a_, *const b_;
};

inline size_t stepOf(Layout layout) {
    return layout == Layout::a ? 1 : layout == Layout::rgb ? 3 : 4;
}

inline Bytes forcedOpaque(bool opaque) {
    return (Bytes)splatLongs(opaque ? alphaByte : 0);
}

#if defined(__AVX2__)

// Which bytes of four pixels go where in their four bytes each; none into alphas that are not there.
struct Order {
    signed char bytes[16];
};
constexpr char none = -1;
constexpr Order orders[layoutCount] = {
    {{0, 0, 0, none, 1, 1, 1, none, 2, 2, 2, none, 3, 3, 3, none}},
    {{0, 1, 2, none, 3, 4, 5, none, 6, 7, 8, none, 9, 10, 11, none}},
    {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}},
};
constexpr Order firstOrders[layoutCount] = {
    orders[0],
    {{0, 0, 0, none, 3, 3, 3, none, 6, 6, 6, none, 9, 9, 9, none}},
    {{0, 0, 0, none, 4, 4, 4, none, 8, 8, 8, none, 12, 12, 12, none}},
};

inline __m256i inBothHalves(const Order &order) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i *>(order.bytes)));
}

// Pixels of any layout. Loads take 16 bytes for each four pixels.
class Loader {
public:
    Loader(const uint8_t *pixels, Layout layout, const Order (&order)[layoutCount])
        : pixels_(pixels), step_(stepOf(layout)), order_(inBothHalves(order[static_cast<size_t>(layout)])),
          forced_(forcedOpaque(layout != Layout::rgba)) {}
    Bytes colours(size_t pixel) const {
        const auto four = [&](size_t from) {
            return _mm_loadu_si128(reinterpret_cast<const __m128i *>(pixels_ + from * step_));
        };
        const __m256i eight =
            _mm256_inserti128_si256(_mm256_castsi128_si256(four(pixel)), four(pixel + 4), 1);
        return (Bytes)_mm256_shuffle_epi8(eight, order_);
    }
    Bytes withAlphas(size_t pixel) const { return colours(pixel) | forced_; }

private:
    const uint8_t *const pixels_;
    const size_t step_;
    const __m256i order_;
    const Bytes forced_;
};

// Pixels that a load reads, from its first on.
size_t readBy(Layout layout) {
    return layout == Layout::a ? 20 : layout == Layout::rgb ? 10 : 8;
}

inline void storeRgb(uint8_t *out, Bytes pixels) {
    constexpr char n = -1;
    const __m256i compact = _mm256_shuffle_epi8(
        (__m256i)pixels, _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, n, n, n, n, 0, 1, 2, 4, 5,
                                          6, 8, 9, 10, 12, 13, 14, n, n, n, n));
    const __m256i together = _mm256_permutevar8x32_epi32(compact, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(out), _mm256_castsi256_si128(together));
    _mm_storel_epi64(reinterpret_cast<__m128i *>(out + 16), _mm256_extracti128_si256(together, 1));
}

template <Layout outLayout, bool apart>
class Any {
public:
    static constexpr bool firstApart = apart;
    static constexpr bool isAny = true;
    static constexpr bool hasAlpha = outLayout == Layout::rgba;
    Any(uint8_t *out, const PixelInputs &in)
        : out_(out), a_(in.a, in.aLayout, orders), b_(in.b, in.bLayout, orders),
          first_(in.a, in.aLayout, firstOrders), pixelsOfB_(in.b), forced_(forcedOpaque(in.opaqueResult)) {}
    template <bool alphas>
    Bytes a(size_t pixel) const {
        return alphas ? a_.withAlphas(pixel) : a_.colours(pixel);
    }
    template <bool alphas>
    Bytes b(size_t pixel) const {
        return alphas ? b_.withAlphas(pixel) : b_.colours(pixel);
    }
    Bytes bOfFour(size_t pixel) const { return load(pixelsOfB_ + 4 * pixel); }
    Bytes first(size_t pixel) const { return apart ? first_.colours(pixel) : a_.colours(pixel); }
    Bytes old(size_t pixel) const {
        if constexpr (outLayout == Layout::rgba)
            return load(out_ + 4 * pixel);
        else
            return oldRgb(out_ + 3 * pixel);
    }
    Bytes finished(Bytes made) const { return outLayout == Layout::rgba ? made | forced_ : made; }
    void put(size_t pixel, Bytes made) const {
        if constexpr (outLayout == Layout::rgba)
            store(out_ + 4 * pixel, made);
        else
            storeRgb(out_ + 3 * pixel, made);
    }

private:
    // Exactly 24 bytes, which end where the result may end.
    static Bytes oldRgb(const uint8_t *from) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
        const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i *>(from + 8));
        const __m256i both = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
        constexpr char n = -1;
        return (Bytes)_mm256_shuffle_epi8(both, _mm256_setr_epi8(0, 1, 2, n, 3, 4, 5, n, 6, 7, 8, n, 9, 10,
                                                                 11, n, 4, 5, 6, n, 7, 8, 9, n, 10, 11, 12, n,
                                                                 13, 14, 15, n));
    }

    uint8_t *const out_;
    const Loader a_, b_, first_;
    const uint8_t *const pixelsOfB_;
    const Bytes forced_;
};

#else

// What is no layout of four bytes has been brought into it: blocks of pixels in buffers, one after the other.
struct Block {
    static constexpr size_t pixels = 128;
    alignas(64) uint8_t out[4 * pixels], a[4 * pixels], b[4 * pixels], first[4 * pixels], mask[pixels];
};

template <Layout, bool apart>
class Any {
public:
    static constexpr bool firstApart = apart;
    static constexpr bool isAny = true;
    static constexpr bool hasAlpha = true;
    Any(uint8_t *out, const PixelInputs &in)
        : block_(*reinterpret_cast<Block *>(out)), forced_(forcedOpaque(in.opaqueResult)) {}
    template <bool>
    Bytes a(size_t pixel) const {
        return load(block_.a + 4 * pixel);
    }
    template <bool>
    Bytes b(size_t pixel) const {
        return bOfFour(pixel);
    }
    Bytes bOfFour(size_t pixel) const { return load(block_.b + 4 * pixel); }
    Bytes first(size_t pixel) const { return load((apart ? block_.first : block_.a) + 4 * pixel); }
    Bytes old(size_t pixel) const { return load(block_.out + 4 * pixel); }
    Bytes finished(Bytes made) const { return made | forced_; }
    void put(size_t pixel, Bytes made) const { store(block_.out + 4 * pixel, made); }

private:
    Block &block_;
    const Bytes forced_;
};

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
        operands.weightBytes = from;
        if constexpr (weighing == PixelWeight::alpha)
            return;
    }
    if constexpr (isByAlpha(weighing))
        operands.weight = (operands.weight * opacity + opacity) >> 8;
    operands.weightBytes = (Bytes)(operands.weight << 8);
}

template <class Combination, PixelWeight weighing, bool keeps, class Access>
[[gnu::flatten]] void walk(uint8_t *out, const PixelInputs &in, size_t pixels) {
    const Access access(out, in);
    const Words opacity = splat(in.weightOpacity);
    uint32_t colour;
    __builtin_memcpy(&colour, in.colour, 4);
    const auto setting =
        std::is_same_v<Combination, Mixed<Constant>> ? (Bytes)splatLongs(colour) : splatBytes(in.opacity);
    const uint8_t *const plane = weighing == PixelWeight::told ? in.weights : in.mask, *const gates =
                                                                                           in.gates;
    // Where alpha weighs, b has one; and all three in four bytes are plain, unless the result is opaque.
    constexpr bool byAlpha = isByAlpha(weighing);
    constexpr bool hasAlpha = Access::hasAlpha && !(Access::isAny && byAlpha);
    constexpr bool takesAlphaOfA = hasAlpha || (byAlpha && Combination::weighsBySmaller);
    for (size_t i = 0; i < pixels; i += vectorPixels) {
        Operands operands = {};
        operands.a = access.template a<takesAlphaOfA>(i);
        operands.first = access.first(i);
        operands.b = byAlpha ? access.bOfFour(i) : access.template b<Combination::takesAlphaOfB>(i);
        operands.setting = setting;
        Bytes made;
        if constexpr (weighing == PixelWeight::full) {
            made = Combination::fullOf(operands);
        } else {
            weigh<Combination, weighing>(operands, plane, opacity, i);
            made = Combination::template of<hasAlpha>(operands);
        }
        made = access.finished(made);
        if constexpr (keeps) {
            const Words open = weighing == PixelWeight::told ? planeWords(gates + i) : operands.weight;
            made = choose((Bytes)(open == 0), access.old(i), made);
        }
        access.put(i, made);
    }
}

template <class Combination, PixelWeight weighing, class Access>
Walk keeping(const PixelInputs &in) {
    return in.keeps ? walk<Combination, weighing, true, Access> : walk<Combination, weighing, false, Access>;
}

template <class Combination, class Access>
Walk alphaWalk(const PixelInputs &in) {
    switch (in.weighing) {
    case PixelWeight::alpha:
        return keeping<Combination, PixelWeight::alpha, Access>(in);
    case PixelWeight::maskedOnce:
        return keeping<Combination, PixelWeight::maskedOnce, Access>(in);
    case PixelWeight::maskedTwice:
        return keeping<Combination, PixelWeight::maskedTwice, Access>(in);
    default:
        return keeping<Combination, PixelWeight::alphaAndOpacity, Access>(in);
    }
}

// Of pixels that are not all of four bytes, or not all told a weight each.
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

bool isPlain(const PixelInputs &in) {
    return in.outLayout == Layout::rgba && in.aLayout == Layout::rgba && in.bLayout == Layout::rgba &&
           !in.opaqueResult && in.weighing != PixelWeight::full && in.weighing != PixelWeight::constant;
}

template <class Combination>
Walk walkOf(const PixelInputs &in) {
    if (isPlain(in)) {
        if (in.weighing == PixelWeight::told)
            return keeping<Combination, PixelWeight::told, Plain>(in);
        return alphaWalk<Combination, Plain>(in);
    }
#if defined(__AVX2__)
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
        if (in.keeps)
            bringIn(block.out, out, in.outLayout, count);
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
    at(Mode::src) = blend<Copied>;
    at(Mode::dstOver) = blend<Under>;
    at(Mode::userColor) = blend<Summed>;
    at(Mode::grayscale) = blend<Mixed<Luminance>>;
    at(Mode::noName08) = at(Mode::noName09) = at(Mode::noName10) = blend<Mixed<Constant>>;
}

} // namespace lx::LX_VECTOR_NAMESPACE
