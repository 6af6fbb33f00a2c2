// `oxlume sheen`: pictures from the sheen generator.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "image/Image.h"
#include "sheen/Preset.h"
#include "tools/Command.h"
#include "tools/OutputFile.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"
#include "tools/SheenPresets.h"
#include "tools/SheenSheet.h"

namespace tool {
namespace {

using lx::LxSheenDescriptor;
using lx::LxSheenLayer;

// A picture and its heights of this size take about a gigabyte.
constexpr int largestSize = 8192;

struct SheenOptions {
    std::string preset;
    std::string output, heights, save, sheet;
    int size = 512;
    std::vector<std::string> layers, colors, modes, opacities, names, lights;
    bool list = false;
    bool presets = false;
};

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

// Applies the options to the descriptor in the order in which they were given: a layer's options follow it.
void applyOptions(const CLI::App &command, const SheenOptions &options, LxSheenDescriptor &descriptor) {
    const auto layer = [&]() -> LxSheenLayer & {
        if (descriptor.CurrentLayerRecord() == nullptr)
            descriptor.AddLayer(LxSheenLayer());
        return *descriptor.CurrentLayerRecord();
    };
    struct Repeated {
        const char *name;
        const std::vector<std::string> &values;
        size_t next = 0;
    };
    Repeated repeated[] = {{"--layer", options.layers}, {"--color", options.colors},
                           {"--mode", options.modes},   {"--opacity", options.opacities},
                           {"--name", options.names},   {"--light", options.lights}};
    for (const CLI::Option *option : command.parse_order()) {
        for (Repeated &one : repeated) {
            if (!option->check_lname(one.name + 2) || one.next >= one.values.size())
                continue;
            const std::string &value = one.values[one.next++];
            const std::string name = one.name + 2;
            if (name == "layer") {
                descriptor.AddLayer(LxSheenLayer());
                forEachSetting(value, [&](const std::string &key, const std::string &text) {
                    lx::applyToLayer(layer(), key, text);
                });
            } else if (name == "light") {
                forEachSetting(value, [&](const std::string &key, const std::string &text) {
                    lx::applyToLight(descriptor, key, text);
                });
            } else if (name == "name") {
                layer().name = value;
            } else {
                lx::applyToLayer(layer(), name, value);
            }
        }
    }
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

void buildDescriptor(const CLI::App &command, const SheenOptions &options, LxSheenDescriptor &descriptor) {
    try {
        if (!options.preset.empty())
            lx::readPreset(presetText(options.preset), descriptor);
        else if (!options.sheet.empty() && options.layers.empty())
            lx::readPreset(sheetPreset(lx::parameterOf(options.sheet)), descriptor);
    } catch (const lx::PresetError &error) {
        throw Failure((options.preset.empty() ? "" : options.preset + ": ") + error.what());
    }
    // What goes beyond the limits in a preset of ours does so on purpose.
    std::vector<std::string> intended;
    if (builtInPreset(options.preset) != nullptr)
        intended = lx::valuesBeyondLimits(descriptor);
    applyOptions(command, options, descriptor);
    if (descriptor.LayerCount() == 0)
        descriptor.AddLayer(LxSheenLayer());
    for (const std::string &line : lx::valuesBeyondLimits(descriptor)) {
        if (std::find(intended.begin(), intended.end(), line) == intended.end())
            std::cerr << "oxlume: warning: " << line << '\n';
    }
}

void runSheen(const CLI::App &command, const SheenOptions &options) {
    if (options.list || options.presets) {
        options.list ? printTable() : printPresets();
        return;
    }
    if (options.output.empty() && options.heights.empty() && options.save.empty())
        throw Failure("nothing to do: give -o, --heights, --save, --list or --presets");
    LxSheenDescriptor descriptor(options.size, options.size);
    buildDescriptor(command, options, descriptor);
    if (!options.save.empty())
        writeText(options.save, lx::writePreset(descriptor));
    if (!options.sheet.empty()) {
        writePng(options.output, *contactSheet(descriptor, lx::parameterOf(options.sheet)));
        return;
    }
    if (options.output.empty() && options.heights.empty())
        return;
    // A stack without an enabled layer is an empty picture.
    if (render(descriptor) == 0 && descriptor.image == nullptr)
        throw Failure("no picture: no layer is enabled, or memory is short");
    if (!options.output.empty())
        writePng(options.output, *descriptor.image);
    if (!options.heights.empty())
        writePng(options.heights, *greyPicture(*descriptor.floatImage));
}

} // namespace

void addSheenCommand(CLI::App &program) {
    CLI::App *const command = program.add_subcommand("sheen", "Draw a procedural surface, layer by layer");
    const auto options = std::make_shared<SheenOptions>();
    command->add_option("PRESET", options->preset, "A preset: its name (see --presets) or its file");
    command->add_option("-o,--output", options->output, "Write the picture to this PNG file");
    command->add_option("--heights", options->heights, "Write the heights to this PNG file, in grey");
    command->add_option("--size", options->size, "Width and height in pixels")
        ->check(CLI::Range(1, largestSize))
        ->capture_default_str();
    const auto addRepeated = [&](const char *name, std::vector<std::string> &values, const char *help) {
        command->add_option(name, values, help)
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    };
    addRepeated("--layer", options->layers, "Add a layer: KEY=VALUE,KEY=VALUE,... (see --list)");
    addRepeated("--color", options->colors, "Colour of the layer given last: R,G,B or R,G,B,A");
    addRepeated(
        "--mode", options->modes,
        "How the layer given last meets those under it: add, subtract, multiply, paint, larger, smaller, "
        "or one with -inside, such as add-inside");
    addRepeated("--opacity", options->opacities, "Opacity of the layer given last, 0 to 1");
    addRepeated("--name", options->names, "Name of the layer given last");
    addRepeated("--light", options->lights,
                "The light: KEY=VALUE,... of azimuth, elevation, width, ambient, brilliance");
    command->add_option("--save", options->save, "Write the layers as a preset to this file");
    command->add_option(
        "--sheet", options->sheet,
        "Instead of one picture, draw five, with this parameter from its minimum to its maximum");
    command->add_flag("--list", options->list, "List the parameters of a layer");
    command->add_flag("--presets", options->presets, "List the presets");
    command->callback([command, options] { runSheen(*command, *options); });
}

} // namespace tool
