#include "blend/Pipeline.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "blend/Function.h"
#include "blend/Reference.h"

namespace lx {
namespace {

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

PixelWeight weighingOf(const Plan &plan, bool masked) {
    const ModeTraits &mode = *plan.mode;
    const bool full = plan.weightOpacity() == 255;
    if (mode.mode == Mode::dissolve)
        return PixelWeight::told;
    if (masked) {
        constexpr Cell plain = {Layout::rgba, Layout::rgba, Layout::rgba};
        if (plan.cell != plain || plan.rule.alpha != AlphaRule::larger || mode.weight == WeightSource::a ||
            !plan.skipsAtZero())
            return PixelWeight::told;
        return mode.foldsMaskOnce ? PixelWeight::maskedOnce : PixelWeight::maskedTwice;
    }
    if (hasConstantWeight(plan, masked))
        return full ? PixelWeight::full : PixelWeight::constant;
    if (mode.weight == WeightSource::a)
        return PixelWeight::told;
    return full ? PixelWeight::alpha : PixelWeight::alphaAndOpacity;
}

// Whether the pixel functions serve. UserColor's alpha under a mask is not theirs. Functions of two pictures
// of three bytes are faster by lanes, which leave no room for an alpha, while the weight is one for all.
// Results of one byte are theirs where b's alpha weighs.
bool servesWholePixels(const Plan &plan, bool masked, const VectorForms &forms) {
    const Family family = plan.mode->family;
    if (!writesEverything(plan) || family == Family::fixed || (masked && family == Family::userColor))
        return false;
    const PixelWeight weighing = weighingOf(plan, masked);
    switch (plan.cell.out) {
    case Layout::a:
        return forms.pixelsMakeSingleBytes && plan.rule.source == 0 &&
               (weighing == PixelWeight::alpha || weighing == PixelWeight::alphaAndOpacity);
    case Layout::rgb:
        return plan.cell.b != Layout::rgb || family != Family::functional ||
               (weighing != PixelWeight::full && weighing != PixelWeight::constant);
    default:
        return true;
    }
}

// Whether rows of the result are rows of b, byte by byte.
bool copiesRows(const Plan &plan, bool masked) {
    if (plan.cell.out == Layout::rgba || plan.cell.out != plan.cell.b || !writesEverything(plan) || masked)
        return false;
    return plan.mode->family == Family::copy ||
           (plan.mode->function == function::source && weighingOf(plan, masked) == PixelWeight::full);
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
      writesAll_(writesEverything(plan)), skipsAtZero_(plan.skipsAtZero()),
      copiesRows_(lx::copiesRows(plan, masked)), wholePixels_(servesWholePixels(plan, masked, forms_)),
      weighing_(weighingOf(plan, masked)) {
    if (wholePixels_ || copiesRows_)
        return;
    const size_t longest = std::min<size_t>(run, width);
    const ModeTraits &mode = *plan.mode;
    if (mode.family == Family::fixed || mode.family == Family::constant) {
        const uint8_t alpha = plan.rule.alpha == AlphaRule::opaque ? 255 : static_cast<uint8_t>(plan.opacity);
        const uint8_t pixel[4] = {mode.colour[0], mode.colour[1], mode.colour[2], alpha};
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
    if (copiesRows_) {
        std::memmove(out, b, width * step_);
        return;
    }
    // What needs no buffers takes the row at once.
    const bool inOneRun = wholePixels_ && weighing_ != PixelWeight::told && !makesSourceFirst();
    const size_t longest = inOneRun ? width : run;
    for (size_t x = 0; x < width; x += longest) {
        const size_t pixels = std::min(longest, width - x);
        const uint8_t *maskHere = masked_ ? mask + x : nullptr;
        if (masked_ && (!wholePixels_ || weighing_ == PixelWeight::told)) {
            std::memcpy(mask_.bytes, mask + x, pixels);
            maskHere = mask_.bytes;
        }
        const Run here = {out + x * step_, a + x * aStep,  b + x * bStep,     maskHere,
                          pixels,          pixels * step_, width - x - pixels};
        if (wholePixels_)
            blendPixels(here);
        else if (plan_.mode->family == Family::fixed)
            blendFixed(here);
        else
            blendLanes(here);
    }
}

bool Pipeline::makesSourceFirst() const {
    return forms_.pixels[static_cast<size_t>(plan_.mode->mode)] == nullptr;
}

void Pipeline::blendPixels(const Run &run) {
    const ModeTraits &mode = *plan_.mode;
    const Cell &cell = plan_.cell;
    PixelInputs in = {};
    in.a = run.a;
    in.b = run.b;
    in.outLayout = cell.out;
    in.aLayout = cell.a;
    in.bLayout = cell.b;
    in.opaqueResult =
        cell.out == Layout::rgba && (plan_.rule.alpha == AlphaRule::opaque || cell.a != Layout::rgba);
    in.firstOfA = takesFirstOfA();
    in.weighing = weighing_;
    in.opacity = plan_.opacity;
    in.weightOpacity = plan_.weightOpacity();
    in.mask = run.mask;
    in.pixelsBehind = run.behind;
    std::memcpy(in.colour, mode.colour, sizeof mode.colour);

    // Where a is what is there, and so are its alphas, a weight of 0 makes of a pixel what is there.
    const bool unwrittenStays =
        skipsAtZero_ && run.a == run.out && cell.a == cell.out && plan_.rule.alpha != AlphaRule::opaque;
    const bool writesEachPixel =
        skipsAtZero_ ? weighing_ == PixelWeight::full || weighing_ == PixelWeight::constant : !masked_;
    in.keeps = !unwrittenStays && !writesEachPixel;
    if (weighing_ == PixelWeight::told) {
        makeWeights(run);
        in.weights = weights_.bytes;
        in.gates = skipsAtZero_ ? weights_.bytes : mask_.bytes;
    }
    const auto formOf = [&](Mode of) { return forms_.pixels[static_cast<size_t>(of)]; };
    if (!makesSourceFirst())
        return formOf(mode.mode)(run.out, in, run.pixels);
    in.b = madeSource(run);
    in.bLayout = Layout::rgba;
    formOf(Mode::srcOver)(run.out, in, run.pixels);
}

// The source that a mode makes of whole pixels or looks up in a table, in four bytes with b's alpha.
const uint8_t *Pipeline::madeSource(const Run &run) {
    const Cell &cell = plan_.cell;
    const uint8_t *const b = inRgba(cell.b, rgbaB_, run.b, run.pixels);
    const uint8_t *const a = inRgba(cell.a, rgbaA_, run.a, run.pixels);
    const auto mode = static_cast<size_t>(plan_.mode->mode);
    if (forms_.colours[mode] != nullptr)
        forms_.colours[mode](made_.bytes, a, b, run.pixels);
    else
        forms_.tables[mode](made_.bytes, a, b, true, 4 * run.pixels);
    return made_.bytes;
}

// With a one-byte b, component 0 of a serves the function for all.
bool Pipeline::takesFirstOfA() const {
    const Cell &cell = plan_.cell;
    return cell.b == Layout::a && cell.a != Layout::a && cell.out != Layout::a &&
           plan_.mode->family == Family::functional && usesFirst(plan_.mode->mode);
}

void Pipeline::blendLanes(const Run &run) {
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
    if (constantWeights_ != nullptr) {
        in.weight = constantWeights_;
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
        in.hasAlpha && !skipsAtZero_ &&
        (plan_.rule.alpha == AlphaRule::opaque || plan_.mode->family == Family::userColor);
    if (weighing_ == PixelWeight::full && plan_.mode->family != Family::userColor)
        in.weight = nullptr;
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

// What the function takes of a. Alphas stay a's.
const uint8_t *Pipeline::firstLanes(const Run &run, const uint8_t *c) {
    if (!takesFirstOfA())
        return c;
    if (plan_.cell.out == Layout::rgba) {
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
    if (mode.family == Family::constant)
        return colourLanes_.bytes;
    if (mode.family == Family::hsv ||
        (mode.family == Family::grayscale && !plan_.componentwise && cell.b != Layout::a))
        return madeOfColours(run);
    const uint8_t *b = inLayout(cell.b, b_, run.b, run.pixels, plan_.rule.source);
    const auto number = static_cast<size_t>(mode.mode);
    if (forms_.mix[number] != nullptr || forms_.tables[number] == nullptr)
        return b;
    forms_.tables[number](b_.bytes, first, b, cell.out == Layout::rgba, run.lanes);
    return b_.bytes;
}

// What a function of three components gives, in the layout of the result.
const uint8_t *Pipeline::madeOfColours(const Run &run) {
    const Cell &cell = plan_.cell;
    const uint8_t *const b = inRgba(cell.b, rgbaB_, run.b, run.pixels);
    const uint8_t *const a = inRgba(cell.a, rgbaA_, run.a, run.pixels);
    forms_.colours[static_cast<size_t>(plan_.mode->mode)](rgbaB_.bytes, a, b, run.pixels);
    return inLayout(Layout::rgba, b_, rgbaB_.bytes, run.pixels, 0);
}

// Pixels in four bytes each: their own memory, or a copy.
const uint8_t *Pipeline::inRgba(Layout layout, Lanes &buffer, const uint8_t *pixels, size_t count) {
    if (layout == Layout::rgba)
        return pixels;
    (layout == Layout::a ? forms_.aToRgba : forms_.rgbToRgba)(buffer.bytes, pixels, count);
    return buffer.bytes;
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
