// The vocabulary of the vector files: compiler vectors as wide as the level's registers.
//
// Bytes are taken apart into the even and the odd ones, each in a lane of 16 bits, which costs a mask and a
// shift and crosses no lane; products of two components fit there. Included by files that are compiled once
// per level.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__AVX2__)
#include <immintrin.h>
#elif defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

#if defined(__AVX2__)
constexpr size_t vectorBytes = 32;
#else
constexpr size_t vectorBytes = 16;
#endif
constexpr size_t vectorPixels = vectorBytes / 4; // of four bytes

using Bytes = uint8_t __attribute__((vector_size(vectorBytes)));
using SignedBytes = int8_t __attribute__((vector_size(vectorBytes)));
using Words = uint16_t __attribute__((vector_size(vectorBytes)));
using SignedWords = int16_t __attribute__((vector_size(vectorBytes)));
using Longs = uint32_t __attribute__((vector_size(vectorBytes)));
using Ints = int32_t __attribute__((vector_size(vectorBytes)));
using Floats = float __attribute__((vector_size(vectorBytes)));

inline Bytes load(const uint8_t *from) {
    Bytes v;
    __builtin_memcpy(&v, from, vectorBytes);
    return v;
}

inline void store(uint8_t *to, Bytes v) {
    __builtin_memcpy(to, &v, vectorBytes);
}

inline Words splat(int value) {
    return Words{} + static_cast<uint16_t>(value);
}

inline Bytes splatBytes(int value) {
    return Bytes{} + static_cast<uint8_t>(value);
}

inline Longs splatLongs(uint32_t value) {
    return Longs{} + value;
}

inline Words even(Bytes v) {
    return (Words)v & splat(0xFF);
}

inline Words odd(Bytes v) {
    return (Words)v >> 8;
}

// The bytes whose even and odd ones are given, each at most 255.
inline Bytes join(Words evens, Words odds) {
    return (Bytes)(evens | odds << 8);
}

// For words of at most 32767, which every processor compares as signed.
inline Words smaller(Words x, Words y) {
    const auto a = (SignedWords)x, b = (SignedWords)y;
    return (Words)(a < b ? a : b);
}

inline Words larger(Words x, Words y) {
    const auto a = (SignedWords)x, b = (SignedWords)y;
    return (Words)(a > b ? a : b);
}

inline Bytes smaller(Bytes x, Bytes y) {
    return x < y ? x : y;
}

inline Bytes larger(Bytes x, Bytes y) {
    return x > y ? x : y;
}

// All bits where a byte is 128 or more.
inline Bytes upperHalf(Bytes v) {
    return (Bytes)((SignedBytes)v < 0);
}

// What compilers have no expression for: choices by whole bytes and words, arithmetic that saturates, the
// upper half of a product, the smaller of any two words, and the sum of the products of two pairs of words of
// at most 32767.
#if defined(__AVX2__)
inline Bytes choose(Bytes condition, Bytes yes, Bytes no) {
    return (Bytes)_mm256_blendv_epi8((__m256i)no, (__m256i)yes, (__m256i)condition);
}
#else
inline Bytes choose(Bytes condition, Bytes yes, Bytes no) {
    return (condition & yes) | (~condition & no);
}
#endif

// The upper bytes of words: of the lower word of each long from one, of its upper word from the other.
#if defined(__AVX2__)
inline Words upperBytes(Words low, Words high) {
    return (Words)_mm256_blend_epi16((__m256i)low, (__m256i)high, 0xAA) & splat(0xFF00);
}
#else
inline Words upperBytes(Words low, Words high) {
    return (Words)(((Longs)low & 0x0000FF00) | ((Longs)high & 0xFF000000));
}
#endif

#if defined(__AVX2__)
inline Bytes addSaturated(Bytes x, Bytes y) {
    return (Bytes)_mm256_adds_epu8((__m256i)x, (__m256i)y);
}
inline Bytes subtractSaturated(Bytes x, Bytes y) {
    return (Bytes)_mm256_subs_epu8((__m256i)x, (__m256i)y);
}
inline Bytes addSigned(Bytes x, Bytes y) {
    return (Bytes)_mm256_adds_epi8((__m256i)x, (__m256i)y);
}
inline Bytes subtractSigned(Bytes x, Bytes y) {
    return (Bytes)_mm256_subs_epi8((__m256i)x, (__m256i)y);
}
inline Words multiplyHigh(Words x, Words y) {
    return (Words)_mm256_mulhi_epu16((__m256i)x, (__m256i)y);
}
inline Words smallerUnsigned(Words x, Words y) {
    return (Words)_mm256_min_epu16((__m256i)x, (__m256i)y);
}
inline Longs sumOfProducts(Words x, Words y) {
    return (Longs)_mm256_madd_epi16((__m256i)x, (__m256i)y);
}
#elif defined(__SSE2__)
inline Bytes addSaturated(Bytes x, Bytes y) {
    return (Bytes)_mm_adds_epu8((__m128i)x, (__m128i)y);
}
inline Bytes subtractSaturated(Bytes x, Bytes y) {
    return (Bytes)_mm_subs_epu8((__m128i)x, (__m128i)y);
}
inline Bytes addSigned(Bytes x, Bytes y) {
    return (Bytes)_mm_adds_epi8((__m128i)x, (__m128i)y);
}
inline Bytes subtractSigned(Bytes x, Bytes y) {
    return (Bytes)_mm_subs_epi8((__m128i)x, (__m128i)y);
}
inline Words multiplyHigh(Words x, Words y) {
    return (Words)_mm_mulhi_epu16((__m128i)x, (__m128i)y);
}
inline Words smallerUnsigned(Words x, Words y) {
    return x - (Words)_mm_subs_epu16((__m128i)x, (__m128i)y);
}
inline Longs sumOfProducts(Words x, Words y) {
    return (Longs)_mm_madd_epi16((__m128i)x, (__m128i)y);
}
#else
inline Bytes addSaturated(Bytes x, Bytes y) {
    return x + smaller(y, ~x);
}
inline Bytes subtractSaturated(Bytes x, Bytes y) {
    return larger(x, y) - y;
}
// Of numbers that stand 128 above their byte's sign.
inline Bytes addSigned(Bytes x, Bytes y) {
    const auto sumOf = [](Words a, Words b) { return larger(smaller(a + b - 128, splat(255)), Words{}); };
    const Bytes a = x ^ 0x80, b = y ^ 0x80;
    return join(sumOf(even(a), even(b)), sumOf(odd(a), odd(b))) ^ 0x80;
}
inline Bytes subtractSigned(Bytes x, Bytes y) {
    const auto differenceOf = [](Words a, Words b) {
        return larger(smaller(a - b + 128, splat(255)), Words{});
    };
    const Bytes a = x ^ 0x80, b = y ^ 0x80;
    return join(differenceOf(even(a), even(b)), differenceOf(odd(a), odd(b))) ^ 0x80;
}
inline Words multiplyHigh(Words x, Words y) {
    const auto xx = (Longs)x, yy = (Longs)y;
    return (Words)(((xx & 0xFFFF) * (yy & 0xFFFF)) >> 16 | (((xx >> 16) * (yy >> 16)) & 0xFFFF0000));
}
inline Words smallerUnsigned(Words x, Words y) {
    return x < y ? x : y;
}
inline Longs sumOfProducts(Words x, Words y) {
    const auto xx = (Longs)x, yy = (Longs)y;
    return (xx & 0xFFFF) * (yy & 0xFFFF) + (xx >> 16) * (yy >> 16);
}
#endif

// n / 255 for n up to 65279: the product with 257 is (n + 1) plus its 256th.
inline Words by255(Words n) {
    return multiplyHigh(n + 1, splat(257));
}

inline Ints truncated(Floats v) {
    return __builtin_convertvector(v, Ints);
}

inline Floats real(Ints v) {
    return __builtin_convertvector(v, Floats);
}

} // namespace
} // namespace lx::LX_VECTOR_NAMESPACE
