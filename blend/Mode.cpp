#include "blend/Mode.h"

#include <array>
#include <cstddef>

#include "blend/Function.h"

namespace lx {
namespace {

using enum Family;
constexpr auto fromA = WeightSource::a;
constexpr auto fromB = WeightSource::b;
constexpr auto fromSmaller = WeightSource::smaller;
constexpr bool once = true;

// On purpose: DstIn, SrcOut and DstOut write blue, Select and Select2 red, and the last three modes mix blue.
constexpr std::array<ModeTraits, modeCount> rows = {{
    {Mode::clear, "Clear", fixed, nullptr},
    {Mode::src, "Src", copy, nullptr, fromB, once},
    {Mode::srcOver, "SrcOver", functional, function::source, fromB, once},
    {Mode::dstOver, "DstOver", dstOver, nullptr, fromA},
    {Mode::srcIn, "SrcIn", functional, function::source, fromA},
    {Mode::dstIn, "DstIn", fixed, nullptr, fromB, false, {0, 0, 255}},
    {Mode::srcOut, "SrcOut", fixed, nullptr, fromB, false, {0, 0, 255}},
    {Mode::dstOut, "DstOut", fixed, nullptr, fromB, false, {0, 0, 255}},
    {Mode::multiply, "Multiply", functional, function::multiply},
    {Mode::screen, "Screen", functional, function::screen},
    {Mode::overlay, "Overlay", functional, function::overlay, fromSmaller},
    {Mode::divide, "Divide", functional, function::divide},
    {Mode::dodge, "Dodge", functional, function::dodge},
    {Mode::burn, "Burn", functional, function::burn},
    {Mode::add, "Add", functional, function::add},
    {Mode::subtract, "Subtract", functional, function::subtract},
    {Mode::difference, "Difference", functional, function::difference},
    {Mode::darken, "Darken", functional, function::darken},
    {Mode::lighten, "Lighten", functional, function::lighten},
    {Mode::softLight, "SoftLight", functional, function::softLight},
    {Mode::hardLight, "HardLight", functional, function::hardLight},
    {Mode::hue, "Hue", hsv, nullptr},
    {Mode::saturation, "Saturation", hsv, nullptr},
    {Mode::value, "Value", hsv, nullptr},
    {Mode::color, "Color", hsv, nullptr},
    {Mode::grayscale, "Grayscale", grayscale, nullptr},
    {Mode::userColor, "UserColor", userColor, nullptr, fromB, once},
    {Mode::logicalNot, "Not", functional, function::logicalNot},
    {Mode::bitOr, "Or", functional, function::bitOr},
    {Mode::bitXor, "Xor", functional, function::bitXor},
    {Mode::select, "Select", fixed, nullptr, fromB, false, {255, 0, 0}},
    {Mode::select2, "Select2", fixed, nullptr, fromB, false, {255, 0, 0}},
    {Mode::flip, "Flip", functional, function::flip},
    {Mode::dissolve, "Dissolve", functional, function::source, fromB, once},
    {Mode::noName01, "NoName01", functional, function::gain},
    {Mode::noName02, "NoName02", functional, function::gainOfProduct},
    {Mode::noName03, "NoName03", functional, function::lateHardLight},
    {Mode::noName04, "NoName04", functional, function::bentOverlay, fromSmaller},
    {Mode::noName05, "NoName05", functional, function::linearBurn},
    {Mode::noName06, "NoName06", functional, function::centredDifference},
    {Mode::noName07, "NoName07", functional, function::centredSum},
    {Mode::noName08, "NoName08", constant, nullptr, fromB, false, {0, 0, 255}},
    {Mode::noName09, "NoName09", constant, nullptr, fromB, false, {0, 0, 255}},
    {Mode::noName10, "NoName10", constant, nullptr, fromB, false, {0, 0, 255}},
}};

constexpr bool inOrder() {
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].mode != static_cast<Mode>(i))
            return false;
    }
    return true;
}
static_assert(inOrder(), "a row stands at its mode's number");

constexpr const char *channelNames[channelCount] = {"red", "green", "blue", "alpha", "rgb", "rgba"};

} // namespace

const ModeTraits &traitsOf(Mode mode) {
    return rows[static_cast<size_t>(mode)];
}

const char *modeName(int32_t mode) {
    if (mode == -1)
        return "Mix";
    return mode >= 0 && mode < modeCount ? rows[static_cast<size_t>(mode)].name : "noname";
}

const char *channelName(int32_t channel) {
    return channel >= 1 && channel <= channelCount ? channelNames[channel - 1] : "noname";
}

} // namespace lx
