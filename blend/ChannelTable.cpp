#include "blend/ChannelTable.h"

#include <algorithm>
#include <iterator>

namespace lx {
namespace {

using enum Layout;
constexpr auto onOpacity = Weighing::opacity;
constexpr auto onOpacityAlone = Weighing::opacityAlone;
constexpr auto onAlpha = Weighing::alpha;

constexpr Rule nothing = {};
constexpr Rule becomesA = {.components = 1, .weight = Weighing::zero};

// A result of one byte from component `source` of b.
constexpr Rule single(uint8_t source, Weighing weight = onOpacity) {
    return {.components = 1, .weight = weight, .source = source};
}

// One component of several, alpha left alone or made opaque.
constexpr Rule only(int component, Weighing weight = onOpacity, AlphaRule alpha = AlphaRule::untouched) {
    return {.components = static_cast<uint8_t>(1 << component), .weight = weight, .alpha = alpha};
}

constexpr Rule all(Weighing weight, AlphaRule alpha = AlphaRule::untouched) {
    return {.components = 7, .weight = weight, .alpha = alpha};
}

constexpr Rule opaqueInto(uint8_t at) {
    return {.alpha = AlphaRule::opaque, .alphaAt = at};
}

constexpr Rule alphaInto(uint8_t at, Weighing weight) {
    return {.weight = weight, .alpha = AlphaRule::larger, .alphaAt = at};
}

constexpr auto larger = AlphaRule::larger;
constexpr auto opaque = AlphaRule::opaque;

// The eight cells that tell channels apart; in the others all six are one.
struct Row {
    Cell cell;
    Rule rules[channelCount]; // red, green, blue, alpha, rgb, rgba
};

// On purpose: single channels of colour do nothing where b has alpha, and an alpha that the result cannot
// hold goes into its last component.
constexpr Row rows[] = {
    {{a, a, rgb}, {single(0), single(1), single(2), nothing, single(0), single(0)}},
    {{a, a, rgba}, {becomesA, becomesA, becomesA, opaqueInto(0), single(0, onOpacityAlone), becomesA}},
    {{rgb, rgb, a}, {only(0), only(1), only(2), opaqueInto(2), all(onOpacity), all(onOpacity)}},
    {{rgb, rgb, rgb}, {only(0), only(1), only(2), nothing, all(onOpacity), all(onOpacity)}},
    {{rgb, rgb, rgba}, {nothing, nothing, nothing, nothing, all(onOpacityAlone), all(onAlpha)}},
    {{rgba, rgba, a},
     {only(0), only(1), only(2), alphaInto(2, onOpacity), all(onOpacity, larger), all(onOpacity, larger)}},
    {{rgba, rgba, rgb}, {only(0), only(1), only(2), nothing, all(onOpacity, larger), all(onOpacity, larger)}},
    {{rgba, rgba, rgba},
     {nothing, nothing, nothing, alphaInto(3, onAlpha), all(onOpacityAlone, opaque), all(onAlpha, larger)}},
};

// Modes that leave the row of their cell: SrcOver, and those that know no weight for their colour.
enum Group : uint8_t { srcOver = 1, src = 2, fixed = 4 };

struct Exception {
    Cell cell;
    Channel channel;
    int groups;
    Rule rule;
};

constexpr Exception exceptions[] = {
    {{a, a, rgba}, Channel::red, srcOver, single(0, onAlpha)},
    {{a, a, rgba}, Channel::green, srcOver, single(1, onAlpha)},
    {{a, a, rgba}, Channel::blue, srcOver, single(2, onAlpha)},
    {{a, a, rgba}, Channel::alpha, srcOver, single(3, onAlpha)},
    {{a, a, rgba}, Channel::rgb, srcOver, single(0, onAlpha)},
    {{a, a, rgba}, Channel::rgba, srcOver, single(0, onAlpha)},
    {{a, a, rgba}, Channel::red, src | fixed, single(0)},
    {{a, a, rgba}, Channel::green, src | fixed, single(1)},
    {{a, a, rgba}, Channel::blue, src | fixed, single(2)},
    {{a, a, rgba}, Channel::alpha, fixed, single(0)},
    {{a, a, rgba}, Channel::rgba, src | fixed, single(0)},

    {{rgb, rgb, a}, Channel::alpha, fixed, only(2)},

    {{rgb, rgb, rgba}, Channel::red, srcOver | src | fixed, only(0, onAlpha)},
    {{rgb, rgb, rgba}, Channel::green, srcOver | src | fixed, only(1, onAlpha)},
    {{rgb, rgb, rgba}, Channel::blue, srcOver | src | fixed, only(2, onAlpha)},
    {{rgb, rgb, rgba}, Channel::rgb, srcOver, all(onAlpha)},

    {{rgba, rgba, rgba}, Channel::red, srcOver | src, only(0, onAlpha, opaque)},
    {{rgba, rgba, rgba}, Channel::green, srcOver | src, only(1, onAlpha, opaque)},
    {{rgba, rgba, rgba}, Channel::blue, srcOver | src, only(2, onAlpha, opaque)},
    {{rgba, rgba, rgba}, Channel::red, fixed, only(0)},
    {{rgba, rgba, rgba}, Channel::green, fixed, only(1)},
    {{rgba, rgba, rgba}, Channel::blue, fixed, only(2)},
};

int groupOf(Mode mode) {
    if (mode == Mode::srcOver)
        return srcOver;
    if (mode == Mode::src)
        return src;
    return traitsOf(mode).family == Family::fixed ? fixed : 0;
}

// The rule of a cell that does not tell channels apart: everything that the result has.
constexpr Rule wholeOf(Cell cell) {
    return {.components = static_cast<uint8_t>(cell.out == a ? 1 : 7),
            .weight = cell.b == rgba ? onAlpha : onOpacity,
            .alpha = cell.out == rgba ? AlphaRule::larger : AlphaRule::untouched};
}

} // namespace

Rule ruleOf(Cell cell, Channel channel, Mode mode) {
    const auto row =
        std::find_if(std::begin(rows), std::end(rows), [&](const Row &r) { return r.cell == cell; });
    if (row == std::end(rows))
        return wholeOf(cell);
    const int group = groupOf(mode);
    const auto exception =
        std::find_if(std::begin(exceptions), std::end(exceptions), [&](const Exception &e) {
            return e.cell == cell && e.channel == channel && (e.groups & group) != 0;
        });
    return exception != std::end(exceptions) ? exception->rule : row->rules[static_cast<int>(channel) - 1];
}

} // namespace lx
