// Descriptors as text.
//
//     # A comment.
//     [light]
//     width = 180
//     [layer petals]
//     color = 200, 60, 90
//     mode = larger
//     kSymmetry = 5
//
// A section per layer, bottom first, with its name; parameters by the keys of their table, and color (r, g, b
// or r, g, b, a), mode, opacity and enabled (yes or no). What is not told keeps its default. The section of
// the light, in radians, may stand anywhere; alphaThreshold stands there too. Numbers have a point whatever
// the locale.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "sheen/Descriptor.h"

namespace lx {

// Larger texts, and stacks of more layers, are refused.
constexpr size_t maxPresetBytes = 1 << 20;
constexpr int32_t maxPresetLayers = 256;

// What is wrong with a preset or a setting: names the culprit and, for a misspelt key, the nearest valid one.
struct PresetError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The parameter of that key, or nothing.
std::optional<uint32_t> findParameter(std::string_view key);

// The same. Throws if there is none.
uint32_t parameterOf(std::string_view key);

// "add", "subtract", ..., in the order of the mode's numbers.
const char *compositeModeName(uint32_t mode); // null for a mode without effect
uint32_t compositeModeOf(std::string_view name);

// Apply one setting of a section. They throw.
void applyToLayer(LxSheenLayer &layer, std::string_view key, std::string_view value);
void applyToLight(LxSheenDescriptor &descriptor, std::string_view key, std::string_view value);

// Replaces the layers and the light by those of the text. Throws an error that begins with the number of the
// line.
void readPreset(std::string_view text, LxSheenDescriptor &descriptor);

// The text that reads back as this descriptor. Values equal to their defaults are left out.
std::string writePreset(const LxSheenDescriptor &descriptor);

// One line for each value of a layer that lies beyond the limits of its parameter.
std::vector<std::string> valuesBeyondLimits(const LxSheenDescriptor &descriptor);

} // namespace lx
