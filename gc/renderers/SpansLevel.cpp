// The span functions of one vector level.
//
// A vector of pixels is taken apart into the 16-bit lanes of its even bytes (r and b of each pixel) and of
// its odd bytes (g and a), in which products of a byte and a weight fit.

#include <string.h>

#include "gc/renderers/Spans.h"

namespace lx {
namespace LX_VECTOR_NAMESPACE {
namespace {

#if defined(__AVX2__)
enum { vectorBytes = 32 };
#define EVERY_OTHER_WORD 1, 3, 5, 7, 9, 11, 13, 15
#else
enum { vectorBytes = 16 };
#define EVERY_OTHER_WORD 1, 3, 5, 7
#endif
enum : size_t { lanes = vectorBytes / 4 };

typedef uint32_t Words __attribute__((vector_size(vectorBytes)));
typedef uint16_t Halves __attribute__((vector_size(vectorBytes)));
typedef int16_t SignedHalves __attribute__((vector_size(vectorBytes)));

inline Words load(const void *from) {
    Words words;
    memcpy(&words, from, sizeof words);
    return words;
}

inline void store(void *to, Words words) {
    memcpy(to, &words, sizeof words);
}

inline uint8_t *pixelAt(void *pixels, size_t i) {
    return (uint8_t *)pixels + i * 4;
}

// A single pixel as a vector of it, and back.
inline Words loadOne(const void *from) {
    uint32_t word;
    memcpy(&word, from, sizeof word);
    return word - Words{};
}

inline void storeOne(void *to, Words words) {
    const uint32_t word = words[0];
    memcpy(to, &word, sizeof word);
}

inline Words allWords(uint32_t word) {
    return word - Words{};
}

inline Halves evenBytes(Words pixels) {
    return (Halves)(pixels & 0x00FF00FFu);
}

inline Halves oddBytes(Words pixels) {
    return (Halves)pixels >> 8;
}

// The larger of two vectors of bytes.
inline Halves larger(Halves a, Halves b) {
    return (SignedHalves)a > (SignedHalves)b ? a : b;
}

// Puts mixed lanes together, with the larger of the old alpha and the weight.
inline Words joined(Halves even, Halves odd, Halves oldOdd, Halves w) {
    const Words colours = (Words)even | ((Words)odd & 0x0000FFFFu) << 8;
    return colours | ((Words)larger(oldOdd, w) & 0xFFFF0000u) << 8;
}

// The part of a mix that the colour gives, at the weight w of which `rest` is left to the pixel.
inline Halves colourPart(Halves f, Halves w, Halves rest) {
    return (f + 1) * w + rest;
}

inline Words mixed(Words pixels, Halves even, Halves odd, Halves w, Halves rest) {
    const Halves oldEven = evenBytes(pixels), oldOdd = oddBytes(pixels);
    return joined((even + oldEven * rest) >> 8, (odd + oldOdd * rest) >> 8, oldOdd, w);
}

void fill(void *out, uint32_t pixel, size_t count) {
    const Words pixels = allWords(pixel);
    if (count < lanes) {
        for (size_t i = 0; i < count; ++i)
            storeOne(pixelAt(out, i), pixels);
        return;
    }
    // The first and the last vector overlap the aligned ones between them.
    store(out, pixels);
    store(pixelAt(out, count - lanes), pixels);
    const size_t first = (vectorBytes - (uintptr_t)out % vectorBytes) / 4;
    for (size_t i = first; i + lanes < count; i += lanes)
        store(pixelAt(out, i), pixels);
}

// The weight in both halves of a word.
inline Words bothHalves(Words w) {
    return w | w << 16;
}

void mix(void *out, uint32_t color, uint32_t w, size_t count) {
    const Halves weight = (Halves)bothHalves(allWords(w));
    const Halves rest = 255 - weight;
    const Halves even = colourPart(evenBytes(allWords(color)), weight, rest);
    const Halves odd = colourPart(oddBytes(allWords(color)), weight, rest);
    size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        store(pixelAt(out, i), mixed(load(pixelAt(out, i)), even, odd, weight, rest));
    for (; i < count; ++i)
        storeOne(pixelAt(out, i), mixed(loadOne(pixelAt(out, i)), even, odd, weight, rest));
}

// What a vector of colours, each with its alpha, gives to a mix.
struct Layer {
    Halves even, odd, w, rest;
};

inline Layer layerOf(Words colors, Halves opacity) {
    const Halves w = (Halves)bothHalves((Words)(((Halves)(colors >> 24) + 1) * opacity >> 8) & 0x0000FFFFu);
    const Halves rest = 255 - w;
    return {colourPart(evenBytes(colors), w, rest), colourPart(oddBytes(colors), w, rest), w, rest};
}

inline Words blended(Words pixels, const Layer &layer) {
    return mixed(pixels, layer.even, layer.odd, layer.w, layer.rest);
}

void blend(void *out, const uint32_t *colors, uint32_t opacity, size_t count) {
    const Halves opacities = (Halves)bothHalves(allWords(opacity));
    size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        store(pixelAt(out, i), blended(load(pixelAt(out, i)), layerOf(load(colors + i), opacities)));
    for (; i < count; ++i)
        storeOne(pixelAt(out, i), blended(loadOne(pixelAt(out, i)), layerOf(allWords(colors[i]), opacities)));
}

// A number of vectors that the compiler knows, so that they stay in registers from row to row.
template <size_t count>
inline void blendVectors(uint8_t *row, ptrdiff_t rowBytes, size_t rows, const uint32_t *colors,
                         Halves opacity) {
    Layer layers[count];
    for (size_t i = 0; i < count; ++i)
        layers[i] = layerOf(load(colors + i * lanes), opacity);
    for (; rows > 0; --rows, row += rowBytes)
        for (size_t i = 0; i < count; ++i)
            store(row + i * vectorBytes, blended(load(row + i * vectorBytes), layers[i]));
}

void blendNarrow(void *out, ptrdiff_t rowBytes, size_t rows, const uint32_t *colors, uint32_t opacity,
                 size_t count) {
    const Halves opacities = (Halves)bothHalves(allWords(opacity));
    if (count <= (size_t)narrowPixels / 2)
        blendVectors<narrowPixels / 2 / lanes>((uint8_t *)out, rowBytes, rows, colors, opacities);
    else
        blendVectors<narrowPixels / lanes>((uint8_t *)out, rowBytes, rows, colors, opacities);
}

void pack(void *out, const LxColor *colors, size_t count) {
    size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        store(pixelAt(out, i),
              __builtin_shufflevector(load(colors + i), load(colors + i + lanes / 2), EVERY_OTHER_WORD));
    for (; i < count; ++i)
        memcpy(pixelAt(out, i), &colors[i].content, 4);
}

} // namespace

const SpanFunctions *spans();

const SpanFunctions *spans() {
    static constexpr SpanFunctions functions = {fill, mix, blend, blendNarrow, pack};
    return &functions;
}

} // namespace LX_VECTOR_NAMESPACE
} // namespace lx
