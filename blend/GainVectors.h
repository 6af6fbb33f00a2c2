// NoName02 in vectors, from its table. Included by files that are compiled once per level.
#pragma once

#include "blend/Function.h"
#include "blend/Vectors.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// Vectors are told in order, and looked up in that order after `ahead` more have been told: so their indices
// are in memory when they are read, and the processor has work while it waits for the table.
class GainOfProduct {
public:
    static constexpr size_t ahead = 2;

    void tell(Bytes first, Bytes b) { ring_[told_++ % size].set(first, b); }

    // What the next vector comes to; where it has alphas, with b's.
    template <bool hasAlpha>
    Bytes next(Bytes b) {
        return lookedUp<hasAlpha>(ring_[lookedUp_++ % size], b);
    }

    template <bool>
    Bytes of(Bytes, Bytes b, Bytes) {
        return next<true>(b);
    }

private:
    static constexpr size_t size = 4;

    // Indices a * 256 + b, in words, of the even lanes of a vector and of the odd ones.
    //
    // Where the product is above 32767 the gain is 0, as it is at the table's end. Looked up there, it leaves
    // room in the first-level cache for the rest.
    struct Indices {
        alignas(vectorBytes) uint32_t evens[vectorPixels], odds[vectorPixels];

        void set(Bytes first, Bytes b) {
            const auto indices = [](Words x, Words y) {
                return x << 8 | y | (Words)((SignedWords)(x * y) >> 15);
            };
            store(reinterpret_cast<uint8_t *>(evens), (Bytes)indices(even(first), even(b)));
            store(reinterpret_cast<uint8_t *>(odds), (Bytes)indices(odd(first), odd(b)));
        }
    };

#if defined(__AVX2__)
    // Sets a pixel of four, its alpha only where that is looked up.
    template <int pixel, bool hasAlpha>
    __m128i withPixel(__m128i pixels, uint32_t evens, uint32_t odds) const {
        pixels = _mm_insert_epi8(pixels, table_[evens & 0xFFFF], 4 * pixel);
        pixels = _mm_insert_epi8(pixels, table_[odds & 0xFFFF], 4 * pixel + 1);
        pixels = _mm_insert_epi8(pixels, table_[evens >> 16], 4 * pixel + 2);
        return hasAlpha ? pixels : _mm_insert_epi8(pixels, table_[odds >> 16], 4 * pixel + 3);
    }

    template <bool hasAlpha>
    Bytes lookedUp(const Indices &indices, Bytes b) const {
        const auto four = [&](__m128i pixels, const uint32_t *evens, const uint32_t *odds) {
            pixels = withPixel<0, hasAlpha>(pixels, evens[0], odds[0]);
            pixels = withPixel<1, hasAlpha>(pixels, evens[1], odds[1]);
            pixels = withPixel<2, hasAlpha>(pixels, evens[2], odds[2]);
            return withPixel<3, hasAlpha>(pixels, evens[3], odds[3]);
        };
        const auto alphas = (__m256i)((Longs)b & 0xFF000000);
        return (Bytes)_mm256_setr_m128i(
            four(_mm256_castsi256_si128(alphas), indices.evens, indices.odds),
            four(_mm256_extracti128_si256(alphas, 1), indices.evens + 4, indices.odds + 4));
    }
#else
    template <bool hasAlpha>
    Bytes lookedUp(const Indices &indices, Bytes b) const {
        Longs made;
        for (size_t i = 0; i < vectorPixels; ++i) {
            const uint32_t e = indices.evens[i], o = indices.odds[i];
            const uint32_t last = hasAlpha ? ((Longs)b)[i] & 0xFF000000 : uint32_t{table_[o >> 16]} << 24;
            made[i] = uint32_t{table_[e & 0xFFFF]} | uint32_t{table_[o & 0xFFFF]} << 8 |
                      uint32_t{table_[e >> 16]} << 16 | last;
        }
        return (Bytes)made;
    }
#endif

    const uint8_t *const table_ = function::gainOfProductTable();
    size_t told_ = 0, lookedUp_ = 0;
    Indices ring_[size];
};

} // namespace
} // namespace lx::LX_VECTOR_NAMESPACE
