// Vectors of doubles and of floats as wide as the level's registers, for files that are compiled once per
// level. Plain operators do the arithmetic; here is what they lack. A lane's result is the scalar one to the
// bit, for every input.
#pragma once

#ifndef LX_VECTOR_NAMESPACE
#error "only for files that are compiled once per vector level"
#endif

// The headers of C: an inline function of C++ could be merged with that of another level.
#include <math.h>   // NOLINT(modernize-deprecated-headers)
#include <stdint.h> // NOLINT(modernize-deprecated-headers)
#include <string.h> // NOLINT(modernize-deprecated-headers)

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace lx {
namespace LX_VECTOR_NAMESPACE {

#if defined(__AVX2__)
enum { vectorBytes = 32 };
#else
enum { vectorBytes = 16 };
#endif
enum { doubleLanes = vectorBytes / 8, floatLanes = vectorBytes / 4 };

using Doubles = double __attribute__((vector_size(vectorBytes)));
using DoubleMask = int64_t __attribute__((vector_size(vectorBytes)));
using Floats = float __attribute__((vector_size(vectorBytes)));
using Ints = int32_t __attribute__((vector_size(vectorBytes)));         // also the mask of Floats
using HalfFloats = float __attribute__((vector_size(vectorBytes / 2))); // as many as there are Doubles
using HalfInts = int32_t __attribute__((vector_size(vectorBytes / 2)));
using HalfWords = uint32_t __attribute__((vector_size(vectorBytes / 2)));

static inline Doubles all(double value) {
    return value - Doubles{};
}

static inline Floats all(float value) {
    return value - Floats{};
}

static inline Doubles choose(DoubleMask mask, Doubles yes, Doubles no) {
    return mask ? yes : no;
}

static inline Floats choose(Ints mask, Floats yes, Floats no) {
    return mask ? yes : no;
}

static inline Doubles absolute(Doubles v) {
    return (Doubles)((DoubleMask)v & INT64_MAX);
}

static inline Floats absolute(Floats v) {
    return (Floats)((Ints)v & INT32_MAX);
}

// One bit per lane.
static inline int bits(DoubleMask mask) {
#if defined(__AVX2__)
    return _mm256_movemask_pd((__m256d)mask);
#elif defined(__SSE2__)
    return _mm_movemask_pd((__m128d)mask);
#else
    int bits = 0;
    for (int i = 0; i < doubleLanes; ++i)
        bits |= (mask[i] != 0) << i;
    return bits;
#endif
}

static inline int bits(Ints mask) {
#if defined(__AVX2__)
    return _mm256_movemask_ps((__m256)mask);
#elif defined(__SSE2__)
    return _mm_movemask_ps((__m128)mask);
#else
    int bits = 0;
    for (int i = 0; i < floatLanes; ++i)
        bits |= (mask[i] != 0) << i;
    return bits;
#endif
}

static inline bool any(DoubleMask mask) {
    return bits(mask) != 0;
}

static inline bool any(Ints mask) {
    return bits(mask) != 0;
}

static inline bool every(DoubleMask mask) {
    return bits(mask) == (1 << doubleLanes) - 1;
}

static inline bool every(Ints mask) {
    return bits(mask) == (1 << floatLanes) - 1;
}

static inline Doubles squareRoot(Doubles v) {
#if defined(__AVX2__)
    return _mm256_sqrt_pd(v);
#elif defined(__SSE2__)
    return _mm_sqrt_pd(v);
#else
    for (int i = 0; i < doubleLanes; ++i)
        v[i] = sqrt(v[i]);
    return v;
#endif
}

static inline Floats squareRoot(Floats v) {
#if defined(__AVX2__)
    return _mm256_sqrt_ps(v);
#elif defined(__SSE2__)
    return _mm_sqrt_ps(v);
#else
    for (int i = 0; i < floatLanes; ++i)
        v[i] = sqrtf(v[i]);
    return v;
#endif
}

static inline Doubles roundedDown(Doubles v) {
#if defined(__AVX2__)
    return _mm256_floor_pd(v);
#else
    // Adding 2^52 and taking it away rounds a magnitude to a whole number; a result that came out above is
    // one too high. From 2^52 on every number is whole.
    const double shift = 4503599627370496.0;
    const DoubleMask sign = (DoubleMask)v & INT64_MIN;
    Doubles whole = (Doubles)((DoubleMask)((absolute(v) + shift) - shift) | sign);
    whole = whole - choose(whole > v, all(1.0), Doubles{});
    return choose(absolute(v) < shift, whole, v);
#endif
}

static inline Floats roundedDown(Floats v) {
#if defined(__AVX2__)
    return _mm256_floor_ps(v);
#else
    const float shift = 8388608.0f;
    const Ints sign = (Ints)v & INT32_MIN;
    Floats whole = (Floats)((Ints)((absolute(v) + shift) - shift) | sign);
    whole = whole - choose(whole > v, all(1.0f), Floats{});
    return choose(absolute(v) < shift, whole, v);
#endif
}

// Truncation toward zero; what does not fit, or is not a number, gives the lowest integer.
static inline HalfInts truncated(Doubles v) {
#if defined(__AVX2__)
    return (HalfInts)_mm256_cvttpd_epi32(v);
#else
    HalfInts result;
    for (int i = 0; i < doubleLanes; ++i) {
#if defined(__SSE2__)
        result[i] = _mm_cvttsd_si32(_mm_set_sd(v[i]));
#else
        result[i] = v[i] > -2147483649.0 && v[i] < 2147483648.0 ? (int32_t)v[i] : INT32_MIN;
#endif
    }
    return result;
#endif
}

static inline Ints truncated(Floats v) {
#if defined(__AVX2__)
    return (Ints)_mm256_cvttps_epi32(v);
#elif defined(__SSE2__)
    return (Ints)_mm_cvttps_epi32(v);
#else
    Ints result;
    for (int i = 0; i < floatLanes; ++i)
        result[i] = v[i] >= -2147483648.0f && v[i] < 2147483648.0f ? (int32_t)v[i] : INT32_MIN;
    return result;
#endif
}

// 0, 1, 2, ...
static inline HalfInts lanes() {
    HalfInts v;
    for (int i = 0; i < doubleLanes; ++i)
        v[i] = i;
    return v;
}

static inline Doubles widened(HalfInts v) {
    return __builtin_convertvector(v, Doubles);
}

static inline Doubles widened(HalfFloats v) {
    return __builtin_convertvector(v, Doubles);
}

static inline HalfFloats narrowed(Doubles v) {
    return __builtin_convertvector(v, HalfFloats);
}

static inline Floats toFloats(Ints v) {
    return __builtin_convertvector(v, Floats);
}

// The first `count` elements at `source`, the rest zero; and back.
template <typename Vector, typename Element>
static inline Vector load(const Element *source, int count = sizeof(Vector) / sizeof(Element)) {
    Vector v{};
    if (count == sizeof(Vector) / sizeof(Element))
        memcpy(&v, source, sizeof v);
    else
        memcpy(&v, source, (size_t)count * sizeof(Element));
    return v;
}

template <typename Vector, typename Element>
static inline void store(Vector v, Element *target, int count = sizeof(Vector) / sizeof(Element)) {
    if (count == sizeof(Vector) / sizeof(Element))
        memcpy(target, &v, sizeof v);
    else
        memcpy(target, &v, (size_t)count * sizeof(Element));
}

} // namespace LX_VECTOR_NAMESPACE
} // namespace lx
