// `oxlume sheen`: pictures from the sheen generator.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "image/Image.h"
#include "sheen/Preset.h"
#include "tools/Commands.h"
#include "tools/OutputFile.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"
#include "tools/SheenPresets.h"
#include "tools/SheenSheet.h"

namespace tool {
namespace {

using lx::LxSheenDescriptor;
using lx::LxSheenLayer;

void printTable() {
    std::printf("%5s  %-22s %-33s %8s %8s  %-10s %s\n", "index", "key", "label", "minimum", "maximum",
                "values", "default");
    for (uint32_t i = 0; i < lx::kSheenParameterCount; ++i) {
        const lx::LxSheenParameter &row = lx::sheenParameters[i];
        std::printf("%5u  %-22s %-33s %8g %8g  %-10s %g\n", i, row.key, row.label, row.minimum, row.maximum,
                    row.step == 0.0 ? "continuous" : "whole", row.defaultValue);
    }
}

void printPresets() {
    for (const SheenPreset &preset : sheenPresets())
        std::cout << preset.name << '\n';
}

const SheenPreset *builtInPreset(const std::string &name) {
    for (const SheenPreset &preset : sheenPresets()) {
        if (preset.name == name)
            return &preset;
    }
    return nullptr;
}

// A preset's text, by the name of a file or of a preset that is built in.
std::string presetText(const std::string &name) {
    if (const SheenPreset *preset = builtInPreset(name))
        return preset->text;
    std::ifstream file(name, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw Failure(name + ": neither a file that can be read nor a preset (--presets lists them)");
    return text;
}

// "key=value,key=value": calls `apply` for each.
template <class Apply>
void forEachSetting(const std::string &settings, Apply apply) {
    for (size_t start = 0; start <= settings.size();) {
        const size_t end = std::min(settings.find(',', start), settings.size());
        const std::string setting = settings.substr(start, end - start);
        const size_t equals = setting.find('=');
        if (equals == std::string::npos && !(setting.empty() && settings.empty()))
            throw Failure("not of the form key=value: \"" + setting + "\"");
        if (equals != std::string::npos)
            apply(setting.substr(0, equals), setting.substr(equals + 1));
        start = end + 1;
    }
}

// Applies the settings in their order: what is set of a layer follows it.
void apply(const std::vector<SheenArguments::Setting> &settings, LxSheenDescriptor &descriptor) {
    const auto layer = [&]() -> LxSheenLayer & {
        if (descriptor.CurrentLayerRecord() == nullptr)
            descriptor.AddLayer(LxSheenLayer());
        return *descriptor.CurrentLayerRecord();
    };
    for (const auto &[option, value] : settings) {
        if (option == "layer") {
            descriptor.AddLayer(LxSheenLayer());
            forEachSetting(value, [&](const std::string &key, const std::string &text) {
                lx::applyToLayer(layer(), key, text);
            });
        } else if (option == "light") {
            forEachSetting(value, [&](const std::string &key, const std::string &text) {
                lx::applyToLight(descriptor, key, text);
            });
        } else if (option == "name") {
            layer().name = value;
        } else {
            lx::applyToLayer(layer(), option, value);
        }
    }
}

bool hasLayers(const SheenArguments &arguments) {
    return std::any_of(arguments.settings.begin(), arguments.settings.end(),
                       [](const auto &setting) { return setting.option == "layer"; });
}

// The heights as a grey picture, white for 1.
ImageHandle greyPicture(const LxImage &heights) {
    ImageHandle grey(LxImage_Create(kLxPixelA, 0, 0, lx::width(heights), lx::height(heights), 0, 0));
    if (grey == nullptr)
        throw Failure("not enough memory for the heights");
    for (int32_t y = 0; y < lx::height(heights); ++y) {
        const auto *from = reinterpret_cast<const float *>(lx::rowAddress(heights, y));
        uint8_t *to = lx::rowAddress(*grey, y);
        for (int32_t x = 0; x < lx::width(heights); ++x)
            to[x] = static_cast<uint8_t>(std::lround(from[x] * 255.0f));
    }
    return grey;
}

int32_t render(LxSheenDescriptor &descriptor) {
    Progress progress("rendering", 0);
    descriptor.onRenderStep = [&](int32_t done, int32_t steps) { progress.report(done, steps); };
    const int32_t result = descriptor.Render();
    descriptor.onRenderStep = nullptr;
    return result;
}

void writeText(const std::string &path, const std::string &text) {
    OutputFile file(path);
    std::fwrite(text.data(), 1, text.size(), file.stream());
    file.commit();
}

void buildDescriptor(const SheenArguments &arguments, LxSheenDescriptor &descriptor) {
    try {
        if (!arguments.preset.empty())
            lx::readPreset(presetText(arguments.preset), descriptor);
        else if (!arguments.sheet.empty() && !hasLayers(arguments))
            lx::readPreset(sheetPreset(lx::parameterOf(arguments.sheet)), descriptor);
    } catch (const lx::PresetError &error) {
        throw Failure((arguments.preset.empty() ? "" : arguments.preset + ": ") + error.what());
    }
    // What goes beyond the limits in a preset of ours does so on purpose.
    std::vector<std::string> intended;
    if (builtInPreset(arguments.preset) != nullptr)
        intended = lx::valuesBeyondLimits(descriptor);
    apply(arguments.settings, descriptor);
    if (descriptor.LayerCount() == 0)
        descriptor.AddLayer(LxSheenLayer());
    for (const std::string &line : lx::valuesBeyondLimits(descriptor)) {
        if (std::find(intended.begin(), intended.end(), line) == intended.end())
            std::cerr << "oxlume: warning: " << line << '\n';
    }
}

} // namespace

void sheen(const SheenArguments &arguments) {
    if (arguments.list || arguments.presets) {
        arguments.list ? printTable() : printPresets();
        return;
    }
    if (arguments.output.empty() && arguments.heights.empty() && arguments.save.empty())
        throw Failure("nothing to do: give -o, --heights, --save, --list or --presets");
    LxSheenDescriptor descriptor(arguments.size, arguments.size);
    buildDescriptor(arguments, descriptor);
    if (!arguments.save.empty())
        writeText(arguments.save, lx::writePreset(descriptor));
    if (!arguments.sheet.empty()) {
        writePng(arguments.output, *contactSheet(descriptor, lx::parameterOf(arguments.sheet)));
        return;
    }
    if (arguments.output.empty() && arguments.heights.empty())
        return;
    // A stack without an enabled layer is an empty picture.
    if (render(descriptor) == 0 && descriptor.image == nullptr)
        throw Failure("no picture: no layer is enabled, or memory is short");
    if (!arguments.output.empty())
        writePng(arguments.output, *descriptor.image);
    if (!arguments.heights.empty())
        writePng(arguments.heights, *greyPicture(*descriptor.floatImage));
}

} // namespace tool
