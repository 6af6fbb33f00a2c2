// Conversions between number types that are defined for every input. Nothing else in the library converts a
// floating-point number to an integer.
#pragma once

#include <cstdint>
#include <limits>

namespace lx {

// Truncation toward zero. A value out of range, or not a number, gives the lowest integer, as the processor's
// own instruction does.
inline int32_t truncateToInt32(double value) {
#if defined(__SSE2__)
    using Pair [[gnu::vector_size(16)]] = double;
    // Hides constants, which some compilers convert themselves, and to other numbers where out of range.
    asm("" : "+x"(value));
    return __builtin_ia32_cvttsd2si(Pair{value});
#else
    // The bounds are exact in double: everything strictly between them truncates into range.
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int32_t>(value)
                                                         : std::numeric_limits<int32_t>::min();
#endif
}

inline int64_t truncateToInt64(double value) {
    return value >= -9223372036854775808.0 && value < 9223372036854775808.0
               ? static_cast<int64_t>(value)
               : std::numeric_limits<int64_t>::min();
}

// The rounding of clipping and of matrices: truncation toward zero of value + 0.5, so -0.7 goes to 0.
inline int32_t roundToInt32(double value) {
    return truncateToInt32(value + 0.5);
}

// Arithmetic in 32 bits that keeps the low bits of what does not fit.
constexpr int32_t wrappingAdd(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

constexpr int32_t wrappingSubtract(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

constexpr int32_t wrappingMultiply(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

// |a - b|, the difference formed in 64 bits and its low 32 kept.
inline int32_t distance(int32_t a, int32_t b) {
    const int64_t difference = int64_t{a} - b;
    return static_cast<int32_t>(static_cast<uint32_t>(difference < 0 ? -difference : difference));
}

} // namespace lx
