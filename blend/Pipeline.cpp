#include "blend/Pipeline.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "blend/Function.h"
#include "blend/Reference.h"

namespace lx {
namespace {

// Families that a weight of 0 leaves alone; to the others it is a weight like any other.
bool skips(Family family) {
    return family == Family::functional || family == Family::constant || family == Family::hsv ||
           family == Family::grayscale;
}

bool writesEverything(const Plan &plan) {
    const Layout out = plan.cell.out;
    return plan.rule.components == (out == Layout::a ? 1 : 7) &&
           (plan.rule.alpha != AlphaRule::untouched) == (out == Layout::rgba);
}

// The weight is the opacity in every pixel.
bool hasConstantWeight(const Plan &plan, bool masked) {
    if (plan.mode->mode == Mode::dissolve)
        return false;
    if (plan.mode->weight == WeightSource::a)
        return (plan.rule.weight == Weighing::opacityAlone || plan.cell.a != Layout::rgba) &&
               (!masked || plan.mode->family == Family::dstOver);
    return plan.rule.weight != Weighing::alpha && !masked;
}

// Whether the lane functions can make the weight on the way: from pixels of four bytes whose b keeps its
// alpha in whatever the mode makes of it.
LaneWeight weighingOf(const Plan &plan, bool masked) {
    const ModeTraits &mode = *plan.mode;
    constexpr auto rgba = Layout::rgba;
    if (plan.cell.out != rgba || plan.cell.b != rgba || plan.rule.weight != Weighing::alpha ||
        plan.rule.alpha != AlphaRule::larger || mode.weight == WeightSource::a ||
        mode.mode == Mode::dissolve || mode.family == Family::constant ||
        (mode.family == Family::userColor && plan.cell.a != rgba))
        return LaneWeight::told;
    if (mode.weight == WeightSource::smaller)
        return masked ? LaneWeight::told : LaneWeight::smallerAlpha;
    if (!masked)
        return LaneWeight::alpha;
    return mode.foldsMaskOnce ? LaneWeight::alphaMaskedOnce : LaneWeight::alphaMaskedTwice;
}

// Whether the function looks at a at all.
bool usesFirst(Mode mode) {
    return mode != Mode::srcOver && mode != Mode::srcIn && mode != Mode::dissolve &&
           mode != Mode::logicalNot && mode != Mode::noName01;
}

bool overlap(const uint8_t *one, size_t bytes, const uint8_t *other, size_t otherBytes) {
    const auto from = reinterpret_cast<uintptr_t>(one), otherFrom = reinterpret_cast<uintptr_t>(other);
    return from < otherFrom + otherBytes && otherFrom < from + bytes;
}

size_t stepOf(Layout layout) {
    return static_cast<size_t>(bytesOf(layout));
}

void repeat(uint8_t *lanes, const uint8_t *pixel, size_t step, size_t pixels) {
    for (size_t i = 0; i < pixels; ++i) {
        for (size_t j = 0; j < step; ++j)
            lanes[i * step + j] = pixel[j];
    }
}

} // namespace

bool Pipeline::serves(const Plan &plan, uint32_t width, uint32_t height) {
    // For fewer pixels the buffers cost more than the rules take.
    constexpr uint64_t worthwhile = 16;
    return plan.rule.weight != Weighing::zero && plan.rule.components != 0 &&
           uint64_t{width} * height >= worthwhile;
}

Pipeline::Pipeline(const Plan &plan, bool masked, uint32_t width)
    : plan_(plan), forms_(vectorForms()), masked_(masked), step_(stepOf(plan.cell.out)),
      writesAll_(writesEverything(plan)), skipsAtZero_(skips(plan.mode->family)),
      weighing_(weighingOf(plan, masked)) {
    const size_t longest = std::min<size_t>(run, width);
    const ModeTraits &mode = *plan.mode;
    if (mode.family == Family::fixed || mode.family == Family::constant) {
        const uint8_t alpha = plan.rule.alpha == AlphaRule::opaque ? 255 : static_cast<uint8_t>(plan.opacity);
        const uint8_t pixel[4] = {step_ == 1 ? mode.single : mode.colour[0], mode.colour[1], mode.colour[2],
                                  alpha};
        repeat(colourLanes_.bytes, pixel, step_, longest);
    }
    if (hasConstantWeight(plan, masked)) {
        std::memset(weights_.bytes, plan.weightOpacity(), longest);
        constantWeights_ =
            spread(weightLanes_, weights_.bytes, plan.rule.alpha == AlphaRule::opaque, longest);
    }
}

void Pipeline::blendRow(uint8_t *out, const uint8_t *a, const uint8_t *b, const uint8_t *mask,
                        uint32_t width) {
    const size_t aStep = stepOf(plan_.cell.a), bStep = stepOf(plan_.cell.b);
    const auto sharesBadly = [&](const uint8_t *pixels, size_t step) {
        return overlap(out, width * step_, pixels, width * step) && (pixels != out || step != step_);
    };
    if (sharesBadly(a, aStep) || sharesBadly(b, bStep) || (masked_ && sharesBadly(mask, 1))) {
        // Pixels read what earlier ones wrote: one after the other, then.
        blendRowByRule(plan_, out, a, b, mask, width);
        return;
    }
    for (size_t x = 0; x < width; x += run) {
        const size_t pixels = std::min<size_t>(run, width - x);
        if (masked_)
            std::memcpy(mask_.bytes, mask + x, pixels);
        blendRun({out + x * step_, a + x * aStep, b + x * bStep, masked_ ? mask_.bytes : nullptr, pixels,
                  pixels * step_});
    }
}

void Pipeline::blendRun(const Run &run) {
    if (plan_.mode->family == Family::fixed)
        return blendFixed(run);
    LaneInputs in = {};
    in.opacity = plan_.opacity;
    in.hasAlpha = plan_.rule.alpha != AlphaRule::untouched;
    in.c = inLayout(plan_.cell.a, a_, run.a, run.pixels, 0);
    in.first = firstLanes(run, in.c);
    in.b = sourceLanes(run, in.first);

    // Where a is what is there, the lanes give for an unwritten pixel what is there.
    const bool unwrittenStays = skipsAtZero_ && in.c == run.out;
    const bool writesEachPixel = skipsAtZero_ ? constantWeights_ != nullptr : !masked_;
    const bool direct = writesAll_ && (unwrittenStays || writesEachPixel);
    const bool gatesByWeight = skipsAtZero_ && !direct;
    if (constantWeights_ != nullptr) {
        in.weight = constantWeights_;
    } else if (weighing_ != LaneWeight::told && !gatesByWeight) {
        in.weighing = weighing_;
        in.mask = run.mask;
        in.weightOpacity = plan_.weightOpacity();
    } else {
        makeWeights(run);
        in.weight = spread(weightLanes_, weights_.bytes, plan_.rule.alpha == AlphaRule::opaque, run.pixels);
    }
    uint8_t *const result = direct ? run.out : made_.bytes;
    combine(run, in, result);
    if (!direct)
        select(run, result, in.weight);
}

void Pipeline::blendFixed(const Run &run) {
    if (writesAll_ && !masked_)
        std::memcpy(run.out, colourLanes_.bytes, run.lanes);
    else
        select(run, colourLanes_.bytes, nullptr);
}

void Pipeline::combine(const Run &run, LaneInputs in, uint8_t *result) {
    const auto lay = forms_.mix[static_cast<size_t>(Mode::srcOver)];
    const bool setsAlphas =
        in.hasAlpha && !skipsAtZero_ && in.weighing == LaneWeight::told &&
        (plan_.rule.alpha == AlphaRule::opaque || plan_.mode->family == Family::userColor);
    if (setsAlphas) // from the operands, while they stand
        makeAlphas(run);
    switch (plan_.mode->family) {
    case Family::copy:
        if (in.hasAlpha)
            forms_.copy(result, in, run.lanes);
        else
            std::memmove(result, in.b, run.lanes);
        break;
    case Family::dstOver:
        std::swap(in.b, in.c);
        lay(result, in, run.lanes);
        break;
    case Family::userColor:
        forms_.userColor(result, in, run.lanes);
        break;
    default: {
        const auto function = forms_.mix[static_cast<size_t>(plan_.mode->mode)];
        (function != nullptr ? function : lay)(result, in, run.lanes);
        break;
    }
    }
    for (size_t i = 0; setsAlphas && i < run.pixels; ++i)
        result[4 * i + 3] = alphas_.bytes[i];
}

// The alphas that the lanes do not give, in alphas_: 255, and UserColor's sum.
void Pipeline::makeAlphas(const Run &run) {
    if (plan_.rule.alpha == AlphaRule::opaque || plan_.cell.a != Layout::rgba) {
        std::memset(alphas_.bytes, 255, run.pixels);
        return;
    }
    const uint8_t *c = alphaPlane(plan_.cell.b, alphaB_, run.b, run.pixels);
    if (masked_)
        forms_.fold(alphaB_.bytes, c, run.mask, run.pixels);
    LaneInputs in = {};
    in.c = in.first = c;
    in.b = alphaPlane(plan_.cell.a, alphaA_, run.a, run.pixels);
    in.weight = weights_.bytes;
    forms_.userColor(alphas_.bytes, in, run.pixels);
}

// The lanes that the rule lets through, and an open gate for the case that nothing closes it.
void Pipeline::prepareSelection() {
    const Rule &rule = plan_.rule;
    const auto lane = [](bool written) { return static_cast<uint8_t>(written ? 255 : 0); };
    const uint8_t written[4] = {lane((rule.components & 1) != 0), lane((rule.components & 2) != 0),
                                lane((rule.components & 4) != 0), lane(rule.alpha != AlphaRule::untouched)};
    repeat(writtenLanes_.bytes, written, step_, run);
    if (!masked_)
        std::memset(gateLanes_.bytes, 255, sizeof gateLanes_.bytes);
    selectionIsPrepared_ = true;
}

void Pipeline::select(const Run &run, const uint8_t *result, const uint8_t *weight) {
    if (!selectionIsPrepared_)
        prepareSelection();
    const uint8_t *gate = skipsAtZero_ ? weight
                          : masked_    ? spread(gateLanes_, run.mask, false, run.pixels)
                                       : gateLanes_.bytes;
    forms_.select(run.out, result, gate, writtenLanes_.bytes, run.lanes);
}

// Pixels in the layout of the result: their own memory, or a copy. For a result of one byte `component` is
// taken.
const uint8_t *Pipeline::inLayout(Layout layout, Lanes &buffer, const uint8_t *pixels, size_t count,
                                  size_t component) {
    const Layout out = plan_.cell.out;
    if (layout == out)
        return pixels;
    if (out == Layout::a) {
        forms_.component(buffer.bytes, pixels, stepOf(layout), component, count);
    } else if (out == Layout::rgb) {
        (layout == Layout::a ? forms_.spread3 : forms_.rgbaToRgb)(buffer.bytes, pixels, count);
    } else {
        (layout == Layout::a ? forms_.aToRgba : forms_.rgbToRgba)(buffer.bytes, pixels, count);
    }
    return buffer.bytes;
}

// What the function takes of a: with a one-byte b, component 0 for all. Alphas stay a's.
const uint8_t *Pipeline::firstLanes(const Run &run, const uint8_t *c) {
    const Cell &cell = plan_.cell;
    if (cell.b != Layout::a || cell.a == Layout::a || cell.out == Layout::a ||
        plan_.mode->family != Family::functional || !usesFirst(plan_.mode->mode))
        return c;
    if (cell.out == Layout::rgba) {
        forms_.firstOfRgba(first_.bytes, c, run.pixels);
        return first_.bytes;
    }
    Plane component;
    forms_.component(component.bytes, c, 3, 0, run.pixels);
    forms_.spread3(first_.bytes, component.bytes, run.pixels);
    return first_.bytes;
}

// The second source, after what the mode makes of whole pixels or looks up in a table.
const uint8_t *Pipeline::sourceLanes(const Run &run, const uint8_t *first) {
    const ModeTraits &mode = *plan_.mode;
    const Cell &cell = plan_.cell;
    switch (mode.family) {
    case Family::constant:
        return colourLanes_.bytes;
    case Family::hsv:
        forms_.hsv(rgbaB_.bytes, inRgba(cell.a, rgbaA_, run.a, run.pixels),
                   inRgba(cell.b, rgbaB_, run.b, run.pixels), mode.mode, run.pixels);
        return fromRgba(rgbaB_, run.pixels);
    case Family::grayscale:
        if (plan_.componentwise || cell.b == Layout::a)
            break;
        forms_.luminance(rgbaB_.bytes, inRgba(cell.b, rgbaB_, run.b, run.pixels), run.pixels);
        return fromRgba(rgbaB_, run.pixels);
    default:
        break;
    }
    const uint8_t *b = inLayout(cell.b, b_, run.b, run.pixels, plan_.rule.source);
    if (mode.mode == Mode::noName01 || mode.mode == Mode::noName02)
        return lookedUp(first, b, run);
    return b;
}

// The two gains, which are tables. Alphas stay b's.
const uint8_t *Pipeline::lookedUp(const uint8_t *first, const uint8_t *b, const Run &run) {
    uint8_t *const to = b_.bytes;
    const auto lookUpAll = [&](auto valueOf) {
        if (plan_.cell.out != Layout::rgba) {
            for (size_t i = 0; i < run.lanes; ++i)
                to[i] = valueOf(i);
            return;
        }
        for (size_t i = 0; i < run.lanes; i += 4) {
            const uint32_t pixel = uint32_t{valueOf(i)} | uint32_t{valueOf(i + 1)} << 8 |
                                   uint32_t{valueOf(i + 2)} << 16 | uint32_t{b[i + 3]} << 24;
            std::memcpy(to + i, &pixel, 4);
        }
    };
    if (plan_.mode->mode == Mode::noName01)
        lookUpAll([&, table = function::gainTable()](size_t i) { return table[b[i]]; });
    else
        lookUpAll(
            [&, table = function::gainOfProductTable()](size_t i) { return table[first[i] * 256 + b[i]]; });
    return to;
}

// A padded copy in four bytes, of a picture with three or four.
const uint8_t *Pipeline::inRgba(Layout layout, Lanes &buffer, const uint8_t *pixels, size_t count) {
    if (layout == Layout::rgba)
        std::memcpy(buffer.bytes, pixels, 4 * count);
    else
        forms_.rgbToRgba(buffer.bytes, pixels, count);
    return buffer.bytes;
}

// And back to the layout of the result.
const uint8_t *Pipeline::fromRgba(const Lanes &rgba, size_t count) {
    return inLayout(Layout::rgba, b_, rgba.bytes, count, 0);
}

const uint8_t *Pipeline::alphaPlane(Layout layout, Plane &buffer, const uint8_t *pixels, size_t count) {
    if (layout == Layout::rgba)
        forms_.component(buffer.bytes, pixels, 4, 3, count);
    else
        std::memset(buffer.bytes, 255, count);
    return buffer.bytes;
}

// The weight of each pixel, in weights_.
void Pipeline::makeWeights(const Run &run) {
    const ModeTraits &mode = *plan_.mode;
    const int opacity = plan_.weightOpacity();
    if (mode.weight == WeightSource::a) {
        const Layout of = plan_.rule.weight == Weighing::opacityAlone ? Layout::a : plan_.cell.a;
        forms_.weights(weights_.bytes, alphaPlane(of, alphaA_, run.a, run.pixels), opacity, run.pixels);
        if (masked_)
            forms_.gate(weights_.bytes, run.mask, run.pixels);
    } else if (plan_.rule.weight == Weighing::alpha) {
        alphaWeights(run);
    } else {
        const uint8_t *alpha = masked_ ? run.mask : alphaPlane(Layout::a, alphaB_, run.b, run.pixels);
        forms_.weights(weights_.bytes, alpha, opacity, run.pixels);
    }
    if (mode.mode == Mode::dissolve)
        dissolve(run);
}

// From b's alpha, with the mask folded in once or twice.
void Pipeline::alphaWeights(const Run &run) {
    const ModeTraits &mode = *plan_.mode;
    alphaPlane(plan_.cell.b, alphaB_, run.b, run.pixels);
    uint8_t *const alpha = alphaB_.bytes;
    if (masked_)
        forms_.fold(alpha, alpha, run.mask, run.pixels);
    if (mode.weight == WeightSource::smaller)
        forms_.smaller(alpha, alphaPlane(plan_.cell.a, alphaA_, run.a, run.pixels), run.pixels);
    if (masked_ && !mode.foldsMaskOnce)
        forms_.fold(alpha, alpha, run.mask, run.pixels);
    forms_.weights(weights_.bytes, alpha, plan_.weightOpacity(), run.pixels);
}

// One random number for each pixel that the mask leaves, in order.
void Pipeline::dissolve(const Run &run) {
    for (size_t i = 0; i < run.pixels; ++i) {
        if ((!masked_ || run.mask[i] != 0) && (std::rand() & 255) > plan_.opacity)
            weights_.bytes[i] = 0;
    }
}

const uint8_t *Pipeline::spread(Lanes &buffer, const uint8_t *plane, bool opaqueAlpha, size_t pixels) {
    if (step_ == 1)
        return plane;
    if (step_ == 3)
        forms_.spread3(buffer.bytes, plane, pixels);
    else
        (opaqueAlpha ? forms_.spreadOpaque : forms_.spread4)(buffer.bytes, plane, pixels);
    return buffer.bytes;
}

} // namespace lx
