#include "bench/blend/PlainLoops.h"

#include <cstddef>

namespace bench::LX_VECTOR_NAMESPACE {
namespace {

// x / 255, rounded, for x up to 65025.
inline uint32_t by255(uint32_t x) {
    return (x + 128 + ((x + 128) >> 8)) >> 8;
}

struct Multiply {
    static uint32_t of(uint32_t a, uint32_t b) { return by255(a * b); }
};
struct Screen {
    static uint32_t of(uint32_t a, uint32_t b) { return a + b - by255(a * b); }
};
struct Darken {
    static uint32_t of(uint32_t a, uint32_t b) { return a < b ? a : b; }
};
struct Lighten {
    static uint32_t of(uint32_t a, uint32_t b) { return a > b ? a : b; }
};
struct Difference {
    static uint32_t of(uint32_t a, uint32_t b) { return a > b ? a - b : b - a; }
};
struct Overlay {
    static uint32_t of(uint32_t a, uint32_t b) {
        const uint32_t low = by255(2 * a * b), high = 255 - by255(2 * (255 - a) * (255 - b));
        return a < 128 ? low : high;
    }
};
struct HardLight {
    static uint32_t of(uint32_t a, uint32_t b) { return Overlay::of(b, a); }
};

// A pixel to a word: what remains in the way of vectors is nothing but the width of the products.
template <class Function>
void blend(uint32_t *__restrict a, const uint32_t *__restrict b, size_t pixels) {
    for (size_t i = 0; i < pixels; ++i) {
        const uint32_t x = a[i], y = b[i], w = y >> 24, oldAlpha = x >> 24;
        const auto component = [=](int shift) {
            const uint32_t c = (x >> shift) & 255, f = Function::of(c, (y >> shift) & 255);
            return by255(f * w + c * (255 - w)) << shift;
        };
        a[i] = component(0) | component(8) | component(16) | (oldAlpha > w ? oldAlpha : w) << 24;
    }
}

} // namespace

PlainLoop plainLoop(lx::Mode mode) {
    switch (mode) {
    case lx::Mode::multiply:
        return blend<Multiply>;
    case lx::Mode::screen:
        return blend<Screen>;
    case lx::Mode::darken:
        return blend<Darken>;
    case lx::Mode::lighten:
        return blend<Lighten>;
    case lx::Mode::difference:
        return blend<Difference>;
    case lx::Mode::overlay:
        return blend<Overlay>;
    case lx::Mode::hardLight:
        return blend<HardLight>;
    default:
        return nullptr;
    }
}

} // namespace bench::LX_VECTOR_NAMESPACE
