// Laying a gradient out: from the stops to a table, and from the table to a ramp as long as the shape.

#include <algorithm>
#include <cmath>

#include <oxlume/LxMem.h>

#include "foundation/Numeric.h"
#include "gc/Gradient.h"

namespace lx {
namespace {

constexpr double lastEntry = gradientTableSize - 1;

// A longer ramp counts as a failed allocation: absurd bounds are not to eat the machine's memory.
constexpr int64_t maxRampLength = int64_t{1} << 27;

int32_t heldToTable(int32_t index) {
    return std::clamp(index, 0, gradientTableSize - 1);
}

int32_t entryAt(double position) {
    return heldToTable(truncateToInt32(position * lastEntry));
}

LxColor tagged(const LxColor &color) {
    return LxColor_RGBA_t(color.content.rgba);
}

uint8_t between(double u, uint8_t from, uint8_t to) {
    return static_cast<uint8_t>(truncateToInt32(std::floor(u * (to - from) + from + 0.5)));
}

LxColor between(double u, const LxRGBA &from, const LxRGBA &to) {
    return LxColor_RGBA(between(u, from.r, to.r), between(u, from.g, to.g), between(u, from.b, to.b),
                        between(u, from.a, to.a));
}

// A stop's follower.
struct Stop {
    double position;
    LxRGBA color;
};

Stop stopAfter(const LxGradient &gradient, int32_t stop) {
    if (stop + 1 < gradientStops)
        return {gradient.positions[stop + 1], gradient.colors[stop + 1].content.rgba};
    // On purpose: behind the tenth stop comes the first field of the mids, read as a position, and the first
    // colour again.
    return {gradient.mids[0], gradient.colors[0].content.rgba};
}

// From one stop to the next, both ends included. `t` is accumulated, so it may end a little off 1.
void writeSpan(const LxGradient &gradient, int32_t stop, const Stop &next, LxColor *table) {
    const int32_t first = entryAt(gradient.positions[stop]);
    const int32_t last = entryAt(next.position);
    const int32_t n = last - first;
    if (n <= 0)
        return;
    const double step = 1.0 / n;
    double t = 0.0;
    for (int32_t i = first; i <= last; ++i, t += step)
        table[static_cast<size_t>(i)] =
            between(gradient.curve(gradient.mids[stop], t), gradient.colors[stop].content.rgba, next.color);
}

void buildTable(const LxGradient &gradient, LxColor *table) {
    // Entries that no stop reaches are black.
    std::fill_n(table, gradientTableSize, LxColor_RGBA_Black);
    if (gradient.positions[0] < 0.0)
        return;
    if (gradient.positions[0] > 0.0)
        std::fill_n(table, entryAt(gradient.positions[0]) + 1, tagged(gradient.colors[0]));
    for (int32_t stop = 0; stop < gradientStops; ++stop) {
        if (gradient.positions[stop] < 0.0)
            continue;
        const Stop next = stopAfter(gradient, stop);
        if (next.position < 0.0)
            std::fill(table + entryAt(gradient.positions[stop]), table + gradientTableSize,
                      tagged(gradient.colors[stop]));
        else
            writeSpan(gradient, stop, next, table);
    }
}

// The steps of the shape, each of which gets a colour.
int64_t rampLength(int32_t type, int32_t width, int32_t height) {
    switch (type) {
    case kLxGradientAcross:
        return width;
    case kLxGradientDown:
        return height;
    case kLxGradientInward:
        return int64_t{width / 2} + height / 2;
    case kLxGradientDiagonal:
    case kLxGradientDiagonalUp:
        return int64_t{width} + height;
    default:
        return 0;
    }
}

void freeRamp(LxGradient &gradient) {
    LxMem_free(gradient.ramp);
    gradient.ramp = nullptr;
    gradient.rampCapacity = 0;
}

// Makes sure of a ramp of `length` steps. A longer one stays as it is.
bool ensureRamp(LxGradient &gradient, int64_t length) {
    if (length <= gradient.rampCapacity)
        return true;
    freeRamp(gradient);
    if (length > maxRampLength)
        return false;
    gradient.ramp = static_cast<LxColor *>(LxMem_calloc(static_cast<uint32_t>(length), sizeof(LxColor)));
    gradient.rampCapacity = gradient.ramp != nullptr ? static_cast<int32_t>(length) : 0;
    return gradient.ramp != nullptr;
}

const LxColor &sample(const LxColor *table, double t) {
    return table[heldToTable(truncateToInt32(t * lastEntry + 0.5))];
}

void sampleRamp(LxGradient &gradient, int32_t length, int32_t width, const LxColor *table) {
    // On purpose: inward, the ramp climbs over half the width and falls back at the same pace, so that over a
    // higher shape it stays at the first colour.
    const bool inward = gradient.type == kLxGradientInward;
    const int32_t rising = inward ? width / 2 : length;
    const double step = 1.0 / rising;
    double t = 0.0;
    for (int32_t i = 0; i < rising; ++i, t += step)
        gradient.ramp[i] = sample(table, t);
    t = 0.0;
    for (int32_t i = rising; i < length; ++i, t += step)
        gradient.ramp[i] = sample(table, 1.0 - t);
}

} // namespace

void dropTable(LxGradient &gradient) {
    LxMem_free(gradient.table);
    gradient.table = nullptr;
}

void rebuild(LxGradient &gradient, const double *bounds) {
    gradient.bounds = {truncateToInt32(std::floor(bounds[0])), truncateToInt32(std::floor(bounds[1])),
                       truncateToInt32(std::ceil(bounds[2])), truncateToInt32(std::ceil(bounds[3]))};
    const int32_t width = distance(gradient.bounds.x1, gradient.bounds.x0);
    const int32_t height = distance(gradient.bounds.y1, gradient.bounds.y0);
    if (width == 0 || height == 0)
        return;
    gradient.dirty = 0;
    const int64_t length = rampLength(gradient.type, width, height);
    if (length <= 0) {
        freeRamp(gradient);
        return;
    }
    if (!ensureRamp(gradient, length))
        return;
    // The stops' table is kept from fill to fill; without memory for it, it is made for this one alone.
    LxColor onStack[gradientTableSize];
    LxColor *table = gradient.table;
    if (table == nullptr) {
        gradient.table = static_cast<LxColor *>(LxMem_malloc(sizeof onStack));
        table = gradient.table != nullptr ? gradient.table : onStack;
        buildTable(gradient, table);
    }
    sampleRamp(gradient, static_cast<int32_t>(length), width, table);
}

} // namespace lx
