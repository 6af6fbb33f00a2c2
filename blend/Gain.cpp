// The two gains, tables made from their formulas: NoName01 of one component, NoName02 of two.

#include "blend/Function.h"
#include "blend/LevelForms.h"
#include "blend/Vectors.h"

namespace lx::LX_VECTOR_NAMESPACE {

alignas(16) uint8_t gainRows[8][16];

namespace {

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
// Sets a pixel of four, the alpha only where it is looked up.
template <int pixel, bool hasAlpha>
inline __m128i withPixel(__m128i pixels, const uint8_t *table, uint32_t evens, uint32_t odds) {
    pixels = _mm_insert_epi8(pixels, table[evens & 0xFFFF], 4 * pixel);
    pixels = _mm_insert_epi8(pixels, table[odds & 0xFFFF], 4 * pixel + 1);
    pixels = _mm_insert_epi8(pixels, table[evens >> 16], 4 * pixel + 2);
    return hasAlpha ? pixels : _mm_insert_epi8(pixels, table[odds >> 16], 4 * pixel + 3);
}

template <bool hasAlpha>
inline Bytes lookUp(const uint8_t *table, const Indices &indices, Bytes b) {
    const auto four = [&](__m128i pixels, const uint32_t *evens, const uint32_t *odds) {
        pixels = withPixel<0, hasAlpha>(pixels, table, evens[0], odds[0]);
        pixels = withPixel<1, hasAlpha>(pixels, table, evens[1], odds[1]);
        pixels = withPixel<2, hasAlpha>(pixels, table, evens[2], odds[2]);
        return withPixel<3, hasAlpha>(pixels, table, evens[3], odds[3]);
    };
    const auto alphas = (__m256i)((Longs)b & 0xFF000000);
    return (Bytes)_mm256_setr_m128i(
        four(_mm256_castsi256_si128(alphas), indices.evens, indices.odds),
        four(_mm256_extracti128_si256(alphas, 1), indices.evens + 4, indices.odds + 4));
}
#else
template <bool hasAlpha>
inline Bytes lookUp(const uint8_t *table, const Indices &indices, Bytes b) {
    Longs made;
    for (size_t i = 0; i < vectorPixels; ++i) {
        const uint32_t e = indices.evens[i], o = indices.odds[i];
        const uint32_t last = hasAlpha ? ((Longs)b)[i] & 0xFF000000 : uint32_t{table[o >> 16]} << 24;
        made[i] = uint32_t{table[e & 0xFFFF]} | uint32_t{table[o & 0xFFFF]} << 8 |
                  uint32_t{table[e >> 16]} << 16 | last;
    }
    return (Bytes)made;
}
#endif

template <bool hasAlpha>
void lookUpProducts(uint8_t *lanes, const uint8_t *first, const uint8_t *b, size_t count) {
    // Indices are made two vectors ahead: they are in memory when they are read, and the processor has work
    // while it waits for the table.
    constexpr size_t ahead = 2;
    const uint8_t *const table = function::gainOfProductTable();
    Indices ring[ahead + 2];
    const auto at = [&](size_t i) -> Indices & { return ring[i / vectorBytes % (ahead + 2)]; };
    const size_t whole = count / vectorBytes * vectorBytes;
    const auto prepare = [&](size_t i) {
        if (i < whole)
            at(i).set(load(first + i), load(b + i));
    };
    for (size_t i = 0; i < ahead; ++i)
        prepare(i * vectorBytes);
    for (size_t i = 0; i < whole; i += vectorBytes) {
        prepare(i + ahead * vectorBytes);
        store(lanes + i, lookUp<hasAlpha>(table, at(i), load(b + i)));
    }
    if (whole == count)
        return;
    uint8_t made[vectorBytes], lastFirst[vectorBytes] = {}, lastB[vectorBytes] = {};
    __builtin_memcpy(lastFirst, first + whole, count - whole);
    __builtin_memcpy(lastB, b + whole, count - whole);
    ring[0].set(load(lastFirst), load(lastB));
    store(made, lookUp<hasAlpha>(table, ring[0], load(lastB)));
    __builtin_memcpy(lanes + whole, made, count - whole);
}

void gainOfProduct(uint8_t *lanes, const uint8_t *first, const uint8_t *b, bool hasAlpha, size_t count) {
    (hasAlpha ? lookUpProducts<true> : lookUpProducts<false>)(lanes, first, b, count);
}

void gain(uint8_t *lanes, const uint8_t *, const uint8_t *b, bool hasAlpha, size_t count) {
    const uint8_t *const table = function::gainTable();
    size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        uint32_t v;
        __builtin_memcpy(&v, b + i, 4);
        const uint32_t last = hasAlpha ? v & 0xFF000000 : uint32_t{table[v >> 24]} << 24;
        const uint32_t four = uint32_t{table[v & 0xFF]} | uint32_t{table[v >> 8 & 0xFF]} << 8 |
                              uint32_t{table[v >> 16 & 0xFF]} << 16 | last;
        __builtin_memcpy(lanes + i, &four, 4);
    }
    for (; i < count; ++i)
        lanes[i] = table[b[i]];
}

} // namespace

void addGainForms(VectorForms &forms) {
    __builtin_memcpy(gainRows, function::gainTable(), sizeof gainRows);
    forms.tables[static_cast<size_t>(Mode::noName01)] = gain;
    forms.tables[static_cast<size_t>(Mode::noName02)] = gainOfProduct;
}

} // namespace lx::LX_VECTOR_NAMESPACE
