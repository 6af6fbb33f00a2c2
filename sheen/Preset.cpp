#include "sheen/Preset.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <initializer_list>
#include <iterator>
#include <numeric>

namespace lx {
namespace {

constexpr const char *modeNames[] = {
    "add",        "subtract",        "multiply",        "paint",       "larger",        "smaller",
    "add-inside", "subtract-inside", "multiply-inside", "paint-again", "larger-inside", "smaller-inside",
};

struct LightField {
    const char *key;
    double LxSheenLight::*field;
};

constexpr LightField lightFields[] = {
    {"azimuth", &LxSheenLight::azimuth},       {"elevation", &LxSheenLight::elevation},
    {"width", &LxSheenLight::width},           {"ambient", &LxSheenLight::ambient},
    {"brilliance", &LxSheenLight::brilliance},
};
constexpr const char *alphaThresholdKey = "alphaThreshold";

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string whole;
    for (const std::string_view part : parts)
        whole.append(part);
    return whole;
}

// What is longer than any word that means something is cut short in messages.
constexpr size_t longestQuoted = 80;

std::string quoted(std::string_view text) {
    return joined({"\"", text.substr(0, longestQuoted), text.size() > longestQuoted ? "...\"" : "\""});
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// How many letters must be changed, added or dropped to make one word of the other.
size_t distanceBetween(std::string_view a, std::string_view b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t k = 0; k < b.size(); ++k) {
            const size_t changed = diagonal + (a[i] != b[k] ? 1 : 0);
            diagonal = row[k + 1];
            row[k + 1] = std::min({changed, row[k] + 1, diagonal + 1});
        }
    }
    return row.back();
}

[[noreturn]] void failOnWord(const char *what, std::string_view word,
                             const std::vector<std::string_view> &valid) {
    if (word.size() > longestQuoted)
        throw PresetError(joined({"unknown ", what, " ", quoted(word)}));
    std::string_view nearest;
    size_t least = std::string_view::npos;
    for (const std::string_view candidate : valid) {
        // Each letter that one word has more costs a change at least.
        const size_t longer = std::max(word.size(), candidate.size());
        if (longer - std::min(word.size(), candidate.size()) >= least)
            continue;
        const size_t distance = distanceBetween(word, candidate);
        if (distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    throw PresetError(joined({"unknown ", what, " ", quoted(word), "; the nearest is ", quoted(nearest)}));
}

double numberOf(std::string_view key, std::string_view text) {
    double number = 0.0;
    const std::string_view digits = text.substr(0, 1) == "+" ? text.substr(1) : text;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size())
        throw PresetError(joined({key, ": not a number: ", quoted(text)}));
    return number;
}

std::string textOf(double number) {
    char text[32];
    return {text, std::to_chars(text, std::end(text), number).ptr};
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const size_t at = text.find(separator);
        parts.push_back(trimmed(text.substr(0, at)));
        if (at == std::string_view::npos)
            return parts;
        text.remove_prefix(at + 1);
    }
}

LxRGBA colorOf(std::string_view text) {
    const std::vector<std::string_view> parts = split(text, ',');
    uint8_t channels[4] = {0, 0, 0, 255};
    bool good = parts.size() == 3 || parts.size() == 4;
    for (size_t i = 0; good && i < parts.size(); ++i) {
        const auto [end, error] =
            std::from_chars(parts[i].data(), parts[i].data() + parts[i].size(), channels[i]);
        good = error == std::errc() && end == parts[i].data() + parts[i].size();
    }
    if (!good)
        throw PresetError(joined({"color: not three or four numbers from 0 to 255: ", quoted(text)}));
    return {channels[0], channels[1], channels[2], channels[3]};
}

std::string textOf(LxRGBA color) {
    std::string text =
        joined({std::to_string(color.r), ", ", std::to_string(color.g), ", ", std::to_string(color.b)});
    if (color.a != 255)
        text += joined({", ", std::to_string(color.a)});
    return text;
}

bool switchOf(std::string_view text) {
    if (text != "yes" && text != "no")
        throw PresetError(joined({"enabled: neither yes nor no: ", quoted(text)}));
    return text == "yes";
}

// Reads the lines of a preset one after the other.
class PresetReader {
public:
    explicit PresetReader(LxSheenDescriptor &descriptor) : descriptor_(descriptor) {}

    void read(std::string_view line) {
        line = trimmed(line);
        if (line.empty() || line.front() == '#')
            return;
        if (line.front() == '[')
            return open(line);
        const size_t equals = line.find('=');
        if (equals == std::string_view::npos)
            throw PresetError(joined({"neither a section nor a setting: ", quoted(line)}));
        set(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }

private:
    enum class Section { none, light, layer };

    void open(std::string_view line) {
        constexpr std::string_view layer = "layer";
        const std::string_view title = line.back() == ']' ? trimmed(line.substr(1, line.size() - 2)) : "";
        if (title == "light") {
            section_ = Section::light;
        } else if (title == layer || title.substr(0, layer.size() + 1) == "layer ") {
            section_ = Section::layer;
            if (descriptor_.LayerCount() == maxPresetLayers)
                throw PresetError(joined({"more than ", std::to_string(maxPresetLayers), " layers"}));
            // A name ends at a zero byte, as in C.
            const std::string_view name = trimmed(title.substr(layer.size()));
            descriptor_.AddLayer(LxSheenLayer(std::string(trimmed(name.substr(0, name.find('\0')))).c_str()));
        } else {
            throw PresetError(joined({"neither [light] nor [layer NAME]: ", quoted(line)}));
        }
    }

    void set(std::string_view key, std::string_view value) {
        if (section_ == Section::light)
            applyToLight(descriptor_, key, value);
        else if (section_ == Section::layer)
            applyToLayer(*descriptor_.CurrentLayerRecord(), key, value);
        else
            throw PresetError(joined({"a setting before the first section: ", quoted(key)}));
    }

    LxSheenDescriptor &descriptor_;
    Section section_ = Section::none;
};

void writeLight(const LxSheenDescriptor &descriptor, std::string &text) {
    const LxSheenDescriptor defaults(1, 1);
    std::string lines;
    for (const LightField &field : lightFields) {
        if (descriptor.light.*field.field != defaults.light.*field.field)
            lines += joined({field.key, " = ", textOf(descriptor.light.*field.field), "\n"});
    }
    if (descriptor.alphaThreshold != defaults.alphaThreshold)
        lines += joined({alphaThresholdKey, " = ", textOf(descriptor.alphaThreshold), "\n"});
    if (!lines.empty())
        text += joined({"[light]\n", lines, "\n"});
}

uint64_t bitsOf(double value) {
    return std::bit_cast<uint64_t>(value);
}

// What stores as this value. Rounding takes a negative whole number up to the next, so one half is taken off
// before.
double storedAs(uint32_t index, double value) {
    return sheenParameters[index].step != 0.0 && value < 0.0 ? value - 0.5 : value;
}

void writeLayer(const LxSheenLayer &layer, std::string &text) {
    // A name is part of its line.
    std::string name = layer.name;
    std::replace(name.begin(), name.end(), '\n', ' ');
    text += name.empty() ? "[layer]\n" : joined({"[layer ", name, "]\n"});
    text += joined({"color = ", textOf(layer.color), "\n"});
    if (layer.compositeMode != compositeAdd) {
        const char *const mode = compositeModeName(layer.compositeMode);
        text += joined({"mode = ", mode != nullptr ? mode : std::to_string(layer.compositeMode), "\n"});
    }
    if (layer.opacity != 1.0)
        text += joined({"opacity = ", textOf(layer.opacity), "\n"});
    if (!layer.isEnabled())
        text += "enabled = no\n";
    for (uint32_t i = 0; i < kSheenParameterCount; ++i) {
        // By their bits, so that a -0 is told.
        if (bitsOf(layer.Value(i)) != bitsOf(sheenParameters[i].defaultValue))
            text += joined({sheenParameters[i].key, " = ", textOf(storedAs(i, layer.Value(i))), "\n"});
    }
}

} // namespace

std::optional<uint32_t> findParameter(std::string_view key) {
    for (uint32_t i = 0; i < kSheenParameterCount; ++i) {
        if (key == sheenParameters[i].key)
            return i;
    }
    return std::nullopt;
}

uint32_t parameterOf(std::string_view key) {
    if (const std::optional<uint32_t> index = findParameter(key))
        return *index;
    std::vector<std::string_view> keys;
    for (const LxSheenParameter &parameter : sheenParameters)
        keys.push_back(parameter.key);
    failOnWord("parameter", key, keys);
}

const char *compositeModeName(uint32_t mode) {
    return mode < std::size(modeNames) ? modeNames[mode] : nullptr;
}

uint32_t compositeModeOf(std::string_view name) {
    for (uint32_t mode = 0; mode < std::size(modeNames); ++mode) {
        if (name == modeNames[mode])
            return mode;
    }
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (!name.empty() && error == std::errc() && end == name.data() + name.size())
        return number;
    failOnWord("mode", name, {std::begin(modeNames), std::end(modeNames)});
}

void applyToLayer(LxSheenLayer &layer, std::string_view key, std::string_view value) {
    if (key == "color")
        layer.color = colorOf(value);
    else if (key == "mode")
        layer.compositeMode = compositeModeOf(value);
    else if (key == "opacity")
        layer.opacity = numberOf(key, value);
    else if (key == "enabled")
        layer.setEnabled(switchOf(value));
    else
        layer.SetValue(parameterOf(key), numberOf(key, value));
}

void applyToLight(LxSheenDescriptor &descriptor, std::string_view key, std::string_view value) {
    if (key == alphaThresholdKey) {
        descriptor.alphaThreshold = numberOf(key, value);
        return;
    }
    std::vector<std::string_view> keys = {alphaThresholdKey};
    for (const LightField &field : lightFields) {
        if (key == field.key) {
            descriptor.light.*field.field = numberOf(key, value);
            return;
        }
        keys.push_back(field.key);
    }
    failOnWord("setting of the light", key, keys);
}

void readPreset(std::string_view text, LxSheenDescriptor &descriptor) {
    descriptor.RemoveAllLayers();
    const LxSheenDescriptor defaults(1, 1);
    descriptor.light = defaults.light;
    descriptor.alphaThreshold = defaults.alphaThreshold;
    if (text.size() > maxPresetBytes)
        throw PresetError(joined({"longer than ", std::to_string(maxPresetBytes), " bytes"}));
    PresetReader reader(descriptor);
    size_t number = 0;
    for (const std::string_view line : split(text, '\n')) {
        ++number;
        try {
            reader.read(line);
        } catch (const PresetError &error) {
            throw PresetError(joined({"line ", std::to_string(number), ": ", error.what()}));
        }
    }
    if (descriptor.LayerCount() == 0)
        throw PresetError("no [layer NAME]");
}

std::string writePreset(const LxSheenDescriptor &descriptor) {
    std::string text;
    writeLight(descriptor, text);
    for (const LxSheenLayer &layer : descriptor.layers) {
        if (&layer != &descriptor.layers.front())
            text += "\n";
        writeLayer(layer, text);
    }
    return text;
}

std::vector<std::string> valuesBeyondLimits(const LxSheenDescriptor &descriptor) {
    std::vector<std::string> lines;
    for (const LxSheenLayer &layer : descriptor.layers) {
        for (const LxSheenParameter &row : sheenParameters) {
            const double value = layer.Value(static_cast<uint32_t>(&row - sheenParameters));
            const bool isWithin = value >= row.minimum && value <= row.maximum;
            if (!isWithin && value != row.defaultValue)
                lines.push_back(joined({"layer ", quoted(layer.name), ": ", row.key, " = ", textOf(value),
                                        " lies beyond ", textOf(row.minimum), " to ", textOf(row.maximum)}));
        }
    }
    return lines;
}

} // namespace lx
