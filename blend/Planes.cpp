// Weights and alphas, and the way between layouts of pixels.

#include "blend/LevelForms.h"
#include "blend/Vectors.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// Writes step(i) to every vector of a plane; buffers are padded to whole vectors.
template <class Step>
inline void forEachVector(uint8_t *plane, size_t bytes, Step step) {
    for (size_t i = 0; i < bytes; i += vectorBytes)
        store(plane + i, step(i));
}

template <size_t step>
void everyByte(uint8_t *plane, const uint8_t *bytes, size_t pixels) {
    for (size_t i = 0; i < pixels; ++i)
        plane[i] = bytes[step * i];
}

#if defined(__AVX2__)

// Byte `number` of eight pixels, each in a long of its own. Loads of three bytes take 16 for each four
// pixels.
template <size_t step>
inline __m256i longsOf(const uint8_t *pixels, __m256i order) {
    if constexpr (step == 4)
        return _mm256_shuffle_epi8((__m256i)load(pixels), order);
    const auto four = [&](size_t from) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i *>(pixels + from * step));
    };
    return _mm256_shuffle_epi8(_mm256_inserti128_si256(_mm256_castsi128_si256(four(0)), four(4), 1), order);
}

// Whole vectors of bytes; the pixels behind them are left to the caller.
template <size_t step>
size_t componentVectors(uint8_t *plane, const uint8_t *pixels, size_t number, size_t count) {
    const auto at = [&](size_t i) { return static_cast<int>(i * step + number); };
    const __m256i order = _mm256_broadcastsi128_si256(
        _mm_setr_epi32(at(0) | ~0xFF, at(1) | ~0xFF, at(2) | ~0xFF, at(3) | ~0xFF));
    // The packs work in halves of a register and leave groups of four bytes to be put in order.
    const __m256i inOrder = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    size_t i = 0;
    for (; (i + vectorBytes) * step + 4 <= count * step; i += vectorBytes) {
        const auto eight = [&](size_t from) { return longsOf<step>(pixels + (i + from) * step, order); };
        const __m256i words = _mm256_packus_epi32(eight(0), eight(8)),
                      moreWords = _mm256_packus_epi32(eight(16), eight(24));
        store(plane + i, (Bytes)_mm256_permutevar8x32_epi32(_mm256_packus_epi16(words, moreWords), inOrder));
    }
    return i;
}

#else

template <size_t>
size_t componentVectors(uint8_t *, const uint8_t *, size_t, size_t) {
    return 0;
}

#endif

template <size_t step>
void componentOf(uint8_t *plane, const uint8_t *pixels, size_t number, size_t count) {
    const size_t done = componentVectors<step>(plane, pixels, number, count);
    everyByte<step>(plane + done, pixels + done * step + number, count - done);
}

void component(uint8_t *plane, const uint8_t *pixels, size_t step, size_t number, size_t count) {
    (step == 3 ? componentOf<3> : componentOf<4>)(plane, pixels, number, count);
}

void fold(uint8_t *plane, const uint8_t *alpha, const uint8_t *mask, size_t pixels) {
    forEachVector(plane, pixels, [=](size_t i) {
        const Bytes x = load(alpha + i), m = load(mask + i);
        return join(by255(even(x) * even(m) + 127), by255(odd(x) * odd(m) + 127));
    });
}

void smallerPlane(uint8_t *plane, const uint8_t *other, size_t pixels) {
    forEachVector(plane, pixels, [=](size_t i) {
        const Bytes x = load(plane + i), y = load(other + i);
        return smaller(x, y);
    });
}

void weights(uint8_t *plane, const uint8_t *alpha, int opacity, size_t pixels) {
    const Words o = splat(opacity);
    forEachVector(plane, pixels, [=](size_t i) {
        const Bytes x = load(alpha + i);
        return (Bytes)(((even(x) + 1) * o) >> 8 | (((odd(x) + 1) * o) & 0xFF00));
    });
}

void gate(uint8_t *plane, const uint8_t *mask, size_t pixels) {
    forEachVector(plane, pixels, [=](size_t i) { return load(plane + i) & (Bytes)(load(mask + i) != 0); });
}

// A word of a pixel; unaligned.
inline uint32_t word(const uint8_t *from) {
    uint32_t w;
    __builtin_memcpy(&w, from, 4);
    return w;
}

inline void putWord(uint8_t *to, uint32_t w) {
    __builtin_memcpy(to, &w, 4);
}

constexpr uint32_t opaque = 0xFF000000;

void spread4(uint8_t *lanes, const uint8_t *plane, size_t pixels) {
    for (size_t i = 0; i < pixels; ++i) {
        const uint32_t twice = plane[i] | uint32_t{plane[i]} << 8;
        putWord(lanes + 4 * i, twice | twice << 16);
    }
}

void spreadOpaque(uint8_t *lanes, const uint8_t *plane, size_t pixels) {
    for (size_t i = 0; i < pixels; ++i) {
        const uint32_t w = plane[i];
        putWord(lanes + 4 * i, w | w << 8 | w << 16 | (w != 0 ? opaque : 0));
    }
}

#if defined(__SSSE3__)

using Sixteen = uint8_t __attribute__((vector_size(16)));

inline Sixteen loadSixteen(const uint8_t *from) {
    Sixteen v;
    __builtin_memcpy(&v, from, 16);
    return v;
}

inline void storeSixteen(uint8_t *to, Sixteen v) {
    __builtin_memcpy(to, &v, 16);
}

// Whole groups; the pixels behind them are left to the caller.
size_t spread3Groups(uint8_t *lanes, const uint8_t *plane, size_t pixels) {
    size_t i = 0;
    for (; i + 16 <= pixels; i += 16) {
        const Sixteen v = loadSixteen(plane + i);
        storeSixteen(lanes + 3 * i,
                     __builtin_shufflevector(v, v, 0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5));
        storeSixteen(lanes + 3 * i + 16,
                     __builtin_shufflevector(v, v, 5, 5, 6, 6, 6, 7, 7, 7, 8, 8, 8, 9, 9, 9, 10, 10));
        storeSixteen(lanes + 3 * i + 32, __builtin_shufflevector(v, v, 10, 11, 11, 11, 12, 12, 12, 13, 13, 13,
                                                                 14, 14, 14, 15, 15, 15));
    }
    return i;
}

size_t rgbToRgbaGroups(uint8_t *rgba, const uint8_t *rgb, size_t pixels) {
    const Sixteen alpha = {0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255};
    size_t i = 0;
    for (; 3 * i + 16 <= 3 * pixels; i += 4) {
        const Sixteen v = loadSixteen(rgb + 3 * i);
        storeSixteen(rgba + 4 * i,
                     __builtin_shufflevector(v, v, 0, 1, 2, 2, 3, 4, 5, 5, 6, 7, 8, 8, 9, 10, 11, 11) |
                         alpha);
    }
    return i;
}

size_t rgbaToRgbGroups(uint8_t *rgb, const uint8_t *rgba, size_t pixels) {
    size_t i = 0;
    for (; i + 4 <= pixels; i += 4) {
        const Sixteen v = loadSixteen(rgba + 4 * i);
        storeSixteen(rgb + 3 * i,
                     __builtin_shufflevector(v, v, 0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 12, 13, 14, 14));
    }
    return i;
}

#else

size_t spread3Groups(uint8_t *, const uint8_t *, size_t) {
    return 0;
}

size_t rgbToRgbaGroups(uint8_t *rgba, const uint8_t *rgb, size_t pixels) {
    // A word reads one byte of the next pixel, so not in the last.
    size_t i = 0;
    for (; i + 1 < pixels; ++i)
        putWord(rgba + 4 * i, (word(rgb + 3 * i) & 0x00FFFFFF) | opaque);
    return i;
}

size_t rgbaToRgbGroups(uint8_t *, const uint8_t *, size_t) {
    return 0;
}

#endif

// In the forms of three bytes a store of four covers the first byte of the next pixel, which the next store
// sets right.
void spread3(uint8_t *lanes, const uint8_t *plane, size_t pixels) {
    for (size_t i = spread3Groups(lanes, plane, pixels); i < pixels; ++i) {
        const uint32_t w = plane[i];
        putWord(lanes + 3 * i, w | w << 8 | w << 16);
    }
}

} // namespace

void aToRgba(uint8_t *rgba, const uint8_t *a, size_t pixels) {
    for (size_t i = 0; i < pixels; ++i) {
        const uint32_t v = a[i];
        putWord(rgba + 4 * i, v | v << 8 | v << 16 | opaque);
    }
}

void firstOfRgba(uint8_t *rgba, const uint8_t *pixels, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const uint32_t v = word(pixels + 4 * i), first = v & 0xFF;
        putWord(rgba + 4 * i, first | first << 8 | first << 16 | (v & opaque));
    }
}

void rgbToRgba(uint8_t *rgba, const uint8_t *rgb, size_t pixels) {
    for (size_t i = rgbToRgbaGroups(rgba, rgb, pixels); i < pixels; ++i) {
        const uint8_t *from = rgb + 3 * i;
        putWord(rgba + 4 * i, from[0] | uint32_t{from[1]} << 8 | uint32_t{from[2]} << 16 | opaque);
    }
}

void rgbaToRgb(uint8_t *rgb, const uint8_t *rgba, size_t pixels) {
    for (size_t i = rgbaToRgbGroups(rgb, rgba, pixels); i < pixels; ++i)
        putWord(rgb + 3 * i, word(rgba + 4 * i));
}

void addPlaneForms(VectorForms &forms) {
    forms.component = component;
    forms.fold = fold;
    forms.smaller = smallerPlane;
    forms.weights = weights;
    forms.gate = gate;
    forms.spread3 = spread3;
    forms.spread4 = spread4;
    forms.spreadOpaque = spreadOpaque;
    forms.rgbToRgba = rgbToRgba;
    forms.rgbaToRgb = rgbaToRgb;
    forms.aToRgba = aToRgba;
    forms.firstOfRgba = firstOfRgba;
}

const VectorForms &levelForms() {
    static const VectorForms made = [] {
        VectorForms forms = {};
        addLaneForms(forms);
        addPixelForms(forms);
        addPlaneForms(forms);
        addColourForms(forms);
        addGainForms(forms);
        return forms;
    }();
    return made;
}

} // namespace lx::LX_VECTOR_NAMESPACE
