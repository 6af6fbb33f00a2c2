#include "blend/Reference.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "blend/Function.h"
#include "blend/Weight.h"

namespace lx {
namespace {

struct Pixel {
    int colours[3];
    int alpha; // 255 where the layout has none
};

Pixel load(Layout layout, const uint8_t *from) {
    if (layout == Layout::a)
        return {{from[0], from[0], from[0]}, 255};
    return {{from[0], from[1], from[2]}, layout == Layout::rgba ? from[3] : 255};
}

int pixelWeight(const Plan &plan, int aAlpha, int bAlpha, int m) {
    const int opacity = plan.weightOpacity();
    if (plan.mode->weight == WeightSource::a)
        return plan.rule.weight == Weighing::opacityAlone ? opacity : weightOf(opacity, aAlpha);
    if (plan.rule.weight != Weighing::alpha)
        return weightOf(opacity, m);
    const int once = fold(bAlpha, m);
    if (plan.mode->foldsMaskOnce)
        return weightOf(opacity, once);
    // On purpose: the mask is folded in a second time, so that it acts squared.
    return weightOf(opacity,
                    fold(plan.mode->weight == WeightSource::smaller ? std::min(aAlpha, once) : once, m));
}

using Colours = std::array<int, 3>;

// The components of b, each at the place of the result's component that it goes into.
Colours sourceOf(const Plan &plan, const Pixel &b) {
    if (plan.cell.out != Layout::a)
        return {b.colours[0], b.colours[1], b.colours[2]};
    const int chosen = plan.rule.source == 3 ? b.alpha : b.colours[plan.rule.source];
    return {chosen, chosen, chosen};
}

Colours hsvOf(Mode mode, const Pixel &a, const Pixel &b) {
    const auto bytesOfPixel = [](const Pixel &p) {
        return std::array{static_cast<uint8_t>(p.colours[0]), static_cast<uint8_t>(p.colours[1]),
                          static_cast<uint8_t>(p.colours[2])};
    };
    int32_t hueA, saturationA, valueA, hueB, saturationB, valueB;
    intRGBtoHSV(bytesOfPixel(a).data(), &hueA, &saturationA, &valueA);
    intRGBtoHSV(bytesOfPixel(b).data(), &hueB, &saturationB, &valueB);
    uint8_t rgb[3];
    intHSVtoRGB(mode == Mode::hue || mode == Mode::color ? hueB : hueA,
                mode == Mode::saturation || mode == Mode::color ? saturationB : saturationA,
                mode == Mode::value ? valueB : valueA, rgb);
    return {rgb[0], rgb[1], rgb[2]};
}

// What the mode makes of each component, before the mix.
Colours resultOf(const Plan &plan, const Pixel &a, const Pixel &b) {
    const ModeTraits &mode = *plan.mode;
    const Colours source = sourceOf(plan, b);
    switch (mode.family) {
    case Family::fixed:
    case Family::constant:
        return {mode.colour[0], mode.colour[1], mode.colour[2]};
    case Family::hsv:
        return hsvOf(mode.mode, a, b);
    case Family::grayscale:
        if (!plan.componentwise) {
            const int grey = function::luminance(b.colours[0], b.colours[1], b.colours[2]);
            return {grey, grey, grey};
        }
        return source;
    case Family::functional: {
        Colours f;
        for (size_t i = 0; i < 3; ++i) {
            // On purpose: with a one-byte b, component 0 of a serves all three.
            const int of = plan.cell.b == Layout::a ? a.colours[0] : a.colours[i];
            f[i] = mode.function(of, source[i], plan.opacity);
        }
        return f;
    }
    default:
        return source;
    }
}

// The result laid on a component of a.
int laidOn(const Plan &plan, int f, int c, int w) {
    switch (plan.mode->family) {
    case Family::fixed:
    case Family::copy:
        return f;
    case Family::dstOver:
        return mix(c, f, w);
    case Family::userColor:
        // On purpose: the second term has no weight.
        return ((f + 1) * w + c + 1) >> 8;
    default:
        return mix(f, c, w);
    }
}

int alphaOf(const Plan &plan, int aAlpha, int bAlpha, int m, int w) {
    if (plan.rule.alpha == AlphaRule::opaque)
        return 255;
    switch (plan.mode->family) {
    case Family::fixed:
        return plan.opacity;
    case Family::userColor:
        return plan.cell.a == Layout::rgba ? ((aAlpha + 1) * w + fold(bAlpha, m) + 1) >> 8 : 255;
    default:
        return std::max(aAlpha, w);
    }
}

void blendPixel(const Plan &plan, uint8_t *out, const uint8_t *aBytes, const uint8_t *bBytes, int m) {
    const Rule &rule = plan.rule;
    if (rule.weight == Weighing::zero) {
        out[0] = aBytes[0];
        return;
    }
    const Pixel a = load(plan.cell.a, aBytes);
    const Pixel b = load(plan.cell.b, bBytes);
    int w = pixelWeight(plan, a.alpha, b.alpha, m);
    if (plan.mode->mode == Mode::dissolve && (std::rand() & 255) > plan.opacity)
        w = 0;
    if (w == 0 && plan.skipsAtZero())
        return;
    const Colours f = resultOf(plan, a, b);
    for (int i = 0; i < coloursOf(plan.cell.out); ++i) {
        if ((rule.components >> i & 1) != 0)
            out[i] = static_cast<uint8_t>(laidOn(plan, f[static_cast<size_t>(i)], a.colours[i], w));
    }
    if (rule.alpha != AlphaRule::untouched)
        out[rule.alphaAt] = static_cast<uint8_t>(alphaOf(plan, a.alpha, b.alpha, m, w));
}

} // namespace

void blendRowByRule(const Plan &plan, uint8_t *out, const uint8_t *a, const uint8_t *b, const uint8_t *mask,
                    uint32_t width) {
    const int outStep = bytesOf(plan.cell.out);
    const int aStep = bytesOf(plan.cell.a);
    const int bStep = bytesOf(plan.cell.b);
    for (uint32_t i = 0; i < width; ++i) {
        const int m = mask != nullptr ? mask[i] : 255;
        if (m != 0)
            blendPixel(plan, out, a, b, m);
        out += outStep;
        a += aStep;
        b += bStep;
    }
}

} // namespace lx
