// Compositing, a vector of pixels at a time. Compiled once per vector level.

#include "sheen/Compositing.h"
#include "sheen/Vector.h"

namespace lx {
namespace LX_VECTOR_NAMESPACE {
namespace {

// The new height, and the height against which the change is measured.
struct Meeting {
    Floats height, reference;
};

template <uint32_t mode>
inline Meeting meet(Floats a, Floats b) {
    switch (mode) {
    case compositeAdd:
        return {a + b, a};
    case compositeSubtract:
        return {a - b, a};
    case compositeMultiply:
        return {a * b, a};
    case compositePaint:
        return {a, b * 0.02f + a};
    case compositeLarger:
        return {choose(a < b, b, a), a};
    case compositeSmaller:
        return {choose(b < a, b, a), a};
    default:
        return {a, a};
    }
}

// The channel at `shift` of the old colours, mixed with a new one and cut to a byte in its place.
inline Ints mixed(uint8_t color, Ints old, int shift, Floats w, Floats rest) {
    const Floats channel = toFloats((old >> shift) & 255);
    return (truncated(float(color) * w + channel * rest) & 255) << shift;
}

// Pixels x to x + count - 1.
template <uint32_t mode, bool inside>
inline void compositeSome(const CompositeRow &row, int x, int count) {
    const Floats a = load<Floats>(row.heights + x, count);
    const Floats b = load<Floats>(row.layer + x, count);
    Meeting met = meet<mode>(a, b);
    if (inside)
        met.height = choose(a != 0.0f, met.height, a);
    Floats height = choose(met.height < 0.0f, Floats{}, met.height);
    height = choose(height > 1.0f, all(1.0f), height);
    const Floats delta = absolute(height - met.reference);
    const Ints changed = delta > 0.0f;
    if (!any(changed))
        return;
    store(height, row.heights + x, count);
    // A small change of height leaves only a trace of colour.
    const Floats w = choose(delta < 0.02f, row.opacity * (delta * 50.0f), all(row.opacity));
    const Floats rest = 1.0f - w;
    const Ints old = load<Ints>(row.colors + x, count);
    const Ints red = mixed(row.color.r, old, 0, w, rest);
    const Ints green = mixed(row.color.g, old, 8, w, rest);
    const Ints blue = mixed(row.color.b, old, 16, w, rest);
    const Ints painted = red | green | blue | (Ints{} + (int32_t)0xff000000u);
    store((changed & painted) | (~changed & old), row.colors + x, count);
}

template <uint32_t mode, bool inside>
void composite(const CompositeRow &target) {
    const CompositeRow row = target; // nothing that is written can be part of it
    int x = 0;
    for (; x + floatLanes <= row.count; x += floatLanes)
        compositeSome<mode, inside>(row, x, floatLanes);
    if (x < row.count)
        compositeSome<mode, inside>(row, x, row.count - x);
}

} // namespace

void compositeRow(const CompositeRow &row) {
    switch (row.mode) {
    case compositeAdd:
        return composite<compositeAdd, false>(row);
    case compositeSubtract:
        return composite<compositeSubtract, false>(row);
    case compositeMultiply:
        return composite<compositeMultiply, false>(row);
    case compositePaint:
    case compositePaintAgain:
        return composite<compositePaint, false>(row);
    case compositeLarger:
        return composite<compositeLarger, false>(row);
    case compositeSmaller:
        return composite<compositeSmaller, false>(row);
    case compositeAddInside:
        return composite<compositeAdd, true>(row);
    case compositeSubtractInside:
        return composite<compositeSubtract, true>(row);
    case compositeMultiplyInside:
        return composite<compositeMultiply, true>(row);
    case compositeLargerInside:
        return composite<compositeLarger, true>(row);
    case compositeSmallerInside:
        return composite<compositeSmaller, true>(row);
    default:
        break; // the pixels stay, and so do heights that are within 0..1 anyway
    }
}

} // namespace LX_VECTOR_NAMESPACE
} // namespace lx
