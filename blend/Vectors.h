// The vocabulary of the vector files: compiler vectors as wide as the level's registers.
//
// Bytes are taken apart into the even and the odd ones, each in a lane of 16 bits, which costs a mask and a
// shift and crosses no lane; products of two components fit there. Included by files that are compiled once
// per level.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

#if defined(__AVX2__)
constexpr size_t vectorBytes = 32;
#else
constexpr size_t vectorBytes = 16;
#endif

using Bytes = uint8_t __attribute__((vector_size(vectorBytes)));
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

inline Bytes larger(Bytes x, Bytes y) {
    return x > y ? x : y;
}

// All bits where x < y, both at most 32767.
inline Words below(Words x, Words y) {
    return (Words)((SignedWords)x < (SignedWords)y);
}

inline Words choose(Words condition, Words yes, Words no) {
    return (condition & yes) | (~condition & no);
}

// n / 255 for n up to 65279.
inline Words by255(Words n) {
    return (n + 1 + (n >> 8)) >> 8;
}

inline Ints truncated(Floats v) {
    return __builtin_convertvector(v, Ints);
}

inline Floats real(Ints v) {
    return __builtin_convertvector(v, Floats);
}

// The smaller of n / d and 255. Quotients of 16 by 9 bits are exact in single precision as far as their floor
// goes: below the next integer they stay at least 1 / 256 away from it.
inline Ints limitedQuotient(Ints n, Ints d) {
    const Floats q = real(n) / real(d), limit = Floats{} + 255.0f;
    return truncated(q < limit ? q : limit);
}

inline Words limitedQuotient(Words n, Words d) {
    const auto nn = (Longs)n, dd = (Longs)d;
    const auto low = (Longs)limitedQuotient((Ints)(nn & 0xFFFF), (Ints)(dd & 0xFFFF));
    const auto high = (Longs)limitedQuotient((Ints)(nn >> 16), (Ints)(dd >> 16));
    return (Words)(low | high << 16);
}

} // namespace
} // namespace lx::LX_VECTOR_NAMESPACE
