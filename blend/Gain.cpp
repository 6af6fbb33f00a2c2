// The two gains, tables made from their formulas: NoName01 of one component, NoName02 of two.

#include "blend/Function.h"
#include "blend/LevelForms.h"
#include "blend/Vectors.h"

namespace lx::LX_VECTOR_NAMESPACE {

alignas(16) uint8_t gainRows[8][16];

namespace {

// A vector of lanes at a time; `lookUp` takes them in buffers of whole vectors.
template <class LookUp>
void eachVector(uint8_t *lanes, const uint8_t *first, const uint8_t *b, size_t count, LookUp lookUp) {
    size_t i = 0;
    for (; i + vectorBytes <= count; i += vectorBytes)
        lookUp(lanes + i, first + i, b + i);
    if (i == count)
        return;
    uint8_t made[vectorBytes], lastFirst[vectorBytes] = {}, lastB[vectorBytes] = {};
    __builtin_memcpy(lastFirst, first + i, count - i);
    __builtin_memcpy(lastB, b + i, count - i);
    lookUp(made, lastFirst, lastB);
    __builtin_memcpy(lanes + i, made, count - i);
}

// The even lanes, and of the odd ones the first of two, as indices a * 256 + b in words; where the second is
// an alpha, it stands in the upper byte of its word.
struct Indices {
    alignas(vectorBytes) uint32_t evens[vectorPixels], odds[vectorPixels];

    Indices(const uint8_t *first, const uint8_t *b, bool hasAlpha) {
        const Bytes x = load(first), y = load(b);
        const auto e = (Longs)(even(y) | (Words)x << 8);
        const auto o = (Longs)(odd(y) | ((Words)x & 0xFF00));
        const auto alphas = (Longs)y & 0xFF000000;
        store(reinterpret_cast<uint8_t *>(evens), (Bytes)e);
        store(reinterpret_cast<uint8_t *>(odds), (Bytes)(hasAlpha ? (o & 0xFFFF) | alphas : o));
    }
};

void gainOfProduct(uint8_t *lanes, const uint8_t *first, const uint8_t *b, bool hasAlpha, size_t count) {
    const uint8_t *const table = function::gainOfProductTable();
    eachVector(lanes, first, b, count, [=](uint8_t *out, const uint8_t *x, const uint8_t *y) {
        const Indices indices(x, y, hasAlpha);
        for (size_t i = 0; i < vectorPixels; ++i) {
            const uint32_t e = indices.evens[i], o = indices.odds[i];
            const uint32_t last = hasAlpha ? o & 0xFF000000 : uint32_t{table[o >> 16]} << 24;
            const uint32_t four = uint32_t{table[e & 0xFFFF]} | uint32_t{table[o & 0xFFFF]} << 8 |
                                  uint32_t{table[e >> 16]} << 16 | last;
            __builtin_memcpy(out + 4 * i, &four, 4);
        }
    });
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
