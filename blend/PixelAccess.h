// Ways to reach a vector of pixels, in four bytes each: as they are, or out of any layout. Included by files
// that are compiled once per level.
#pragma once

#include "blend/PixelCombinations.h"
#include "blend/VectorForms.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// Four bytes in all three places.
class Plain {
public:
    static constexpr bool firstApart = false;
    static constexpr bool isAny = false;
    static constexpr Layout layout = Layout::rgba;
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
    // Eight pixels, each four at the start of a half.
    __m256i raw(size_t pixel) const {
        const auto four = [&](size_t from) {
            return _mm_loadu_si128(reinterpret_cast<const __m128i *>(pixels_ + from * step_));
        };
        return _mm256_inserti128_si256(_mm256_castsi128_si256(four(pixel)), four(pixel + 4), 1);
    }
    Bytes colours(size_t pixel) const { return (Bytes)_mm256_shuffle_epi8(raw(pixel), order_); }
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
    const __m128i high = _mm256_extracti128_si256(compact, 1);
    _mm_storeu_si128(reinterpret_cast<__m128i *>(out), _mm256_castsi256_si128(compact));
    _mm_storel_epi64(reinterpret_cast<__m128i *>(out + 12), high);
    const int last = _mm_extract_epi32(high, 2);
    __builtin_memcpy(out + 20, &last, 4);
}

inline void storeFirsts(uint8_t *out, Bytes pixels) {
    constexpr char n = -1;
    const __m256i firsts = _mm256_shuffle_epi8(
        (__m256i)pixels, _mm256_setr_epi8(0, 4, 8, 12, n, n, n, n, n, n, n, n, n, n, n, n, n, n, n, n, 0, 4,
                                          8, 12, n, n, n, n, n, n, n, n));
    const __m128i together =
        _mm_or_si128(_mm256_castsi256_si128(firsts), _mm256_extracti128_si256(firsts, 1));
    _mm_storel_epi64(reinterpret_cast<__m128i *>(out), together);
}

template <Layout outLayout, bool apart>
class Any {
public:
    static constexpr bool firstApart = apart;
    static constexpr bool isAny = true;
    static constexpr Layout layout = outLayout;
    Any(uint8_t *out, const PixelInputs &in)
        : out_(out), a_(in.a, in.aLayout, orders), b_(in.b, in.bLayout, orders),
          firstOrder_(inBothHalves(firstOrders[static_cast<size_t>(in.aLayout)])), pixelsOfB_(in.b),
          forced_(forcedOpaque(in.opaqueResult)) {}
    template <bool alphas>
    Bytes a(size_t pixel) const {
        return alphas ? a_.withAlphas(pixel) : a_.colours(pixel);
    }
    template <bool alphas>
    Bytes b(size_t pixel) const {
        return alphas ? b_.withAlphas(pixel) : b_.colours(pixel);
    }
    Bytes bOfFour(size_t pixel) const { return load(pixelsOfB_ + 4 * pixel); }
    Bytes first(size_t pixel) const {
        return apart ? (Bytes)_mm256_shuffle_epi8(a_.raw(pixel), firstOrder_) : a_.colours(pixel);
    }
    Bytes old(size_t pixel) const {
        if constexpr (outLayout == Layout::rgba)
            return load(out_ + 4 * pixel);
        else if constexpr (outLayout == Layout::rgb)
            return oldRgb(out_ + 3 * pixel);
        else
            return oldFirsts(out_ + pixel);
    }
    Bytes finished(Bytes made) const { return outLayout == Layout::rgba ? made | forced_ : made; }
    void put(size_t pixel, Bytes made) const {
        if constexpr (outLayout == Layout::rgba)
            store(out_ + 4 * pixel, made);
        else if constexpr (outLayout == Layout::rgb)
            storeRgb(out_ + 3 * pixel, made);
        else
            storeFirsts(out_ + pixel, made);
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
    static Bytes oldFirsts(const uint8_t *from) {
        return (Bytes)_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i *>(from)));
    }

    uint8_t *const out_;
    const Loader a_, b_;
    const __m256i firstOrder_;
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
    static constexpr Layout layout = Layout::rgba;
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

} // namespace
} // namespace lx::LX_VECTOR_NAMESPACE
