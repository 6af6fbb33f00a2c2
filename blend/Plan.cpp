#include "blend/Plan.h"

namespace lx {
namespace {

// Whether the weight, and with it everything that the mode does, is 0 at an opacity of 0.
bool vanishesWithOpacity(const ModeTraits &mode) {
    switch (mode.family) {
    case Family::fixed:
    case Family::copy:
    case Family::dstOver:
        return false;
    default:
        // Dissolve still draws its random numbers.
        return mode.mode != Mode::noName04 && mode.mode != Mode::dissolve;
    }
}

bool drawsNothing(const Plan &plan, bool masked) {
    if (plan.rule.isEmpty())
        return true;
    if (plan.mode->family == Family::hsv && (plan.cell.a == Layout::a || plan.cell.b == Layout::a))
        return true;
    if (plan.rule.weight == Weighing::zero)
        return !masked;
    return plan.opacity == 0 && vanishesWithOpacity(*plan.mode);
}

} // namespace

// To the fixed modes, to copying, DstOver and UserColor it is a weight like any other, except that an alpha
// goes into a component of colour only at a weight above 0.
bool Plan::skipsAtZero() const {
    switch (mode->family) {
    case Family::fixed:
        return false;
    case Family::copy:
    case Family::dstOver:
    case Family::userColor:
        return rule.components == 0 && rule.alphaAt != 3;
    default:
        return true;
    }
}

Plan planOf(Cell cell, const LxBlend &blend, bool masked) {
    Plan plan = {cell, {}, nullptr, static_cast<int>(blend.opacity), false};
    if (blend.channel < 1 || blend.channel > channelCount || blend.mode >= modeCount)
        return plan;
    const auto channel = static_cast<Channel>(blend.channel);
    const auto mode = static_cast<Mode>(blend.mode);
    plan.rule = ruleOf(cell, channel, mode);
    plan.mode = &traitsOf(mode);
    plan.componentwise = mode == Mode::grayscale && channel <= Channel::blue && plan.rule.components != 7 &&
                         cell.out != Layout::a;
    if (drawsNothing(plan, masked))
        plan.mode = nullptr;
    return plan;
}

} // namespace lx
