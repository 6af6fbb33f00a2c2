// The two gains, tables made from their formulas: NoName01 of one component, NoName02 of two.

#include "blend/Function.h"
#include "blend/GainVectors.h"
#include "blend/LevelForms.h"

namespace lx::LX_VECTOR_NAMESPACE {

alignas(16) uint8_t gainRows[8][16];

namespace {

template <bool hasAlpha>
void lookUpProducts(uint8_t *lanes, const uint8_t *first, const uint8_t *b, size_t count) {
    GainOfProduct gain;
    const size_t whole = count / vectorBytes * vectorBytes;
    const auto tell = [&](size_t i) {
        if (i < whole)
            gain.tell(load(first + i), load(b + i));
    };
    for (size_t i = 0; i < GainOfProduct::ahead; ++i)
        tell(i * vectorBytes);
    for (size_t i = 0; i < whole; i += vectorBytes) {
        tell(i + GainOfProduct::ahead * vectorBytes);
        store(lanes + i, gain.next<hasAlpha>(load(b + i)));
    }
    if (whole == count)
        return;
    uint8_t made[vectorBytes], lastFirst[vectorBytes] = {}, lastB[vectorBytes] = {};
    __builtin_memcpy(lastFirst, first + whole, count - whole);
    __builtin_memcpy(lastB, b + whole, count - whole);
    gain.tell(load(lastFirst), load(lastB));
    store(made, gain.next<hasAlpha>(load(lastB)));
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
