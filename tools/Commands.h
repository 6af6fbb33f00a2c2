// The commands of the oxlume program: what each is asked for, and the function that does it. What the
// arguments mean to the user stands in CommandLine.cpp. A command that cannot do its work throws a Failure.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/Canvas.h"
#include "tools/Failure.h"

namespace tool {

struct BlendArguments {
    std::string destination, source, out, mask;
    std::string mode = "SrcOver", channel = "rgba";
    int opacity = 255;
    std::vector<int32_t> at = {0, 0};
    std::vector<int32_t> frame, tile; // empty where SRC is laid as it is
};
void blend(const BlendArguments &arguments);

struct DrawArguments {
    std::string script, output;
    CanvasMaker makeCanvas = makeSoftwareCanvas;
    unsigned seconds = 60;
};
void draw(const DrawArguments &arguments);

struct InfoArguments {
    std::string file;
    bool json = false;
};
void info(const InfoArguments &arguments);

struct ModesArguments {
    std::string destination, source, folder;
    int opacity = 255, side = 240;
    bool list = false;
};
void modes(const ModesArguments &arguments);

struct MorphArguments {
    std::string picture, lines, output, animation;
    int frames = 1;
    bool keepFrames = false;
};
void morph(const MorphArguments &arguments);

struct PathArguments {
    std::string items;
    std::optional<double> outline; // the stroke's width
    std::string style = "bevel";   // one of strokeStyles
    std::vector<double> clip;      // empty or four
    bool flatten = false;
};
void path(const PathArguments &arguments);

extern const std::map<std::string, int32_t> strokeStyles;

struct SheenArguments {
    // An option about layers or the light, and its value.
    struct Setting {
        std::string option, value;
    };
    std::string preset;
    std::string output, heights, save, sheet;
    int size = 512;
    std::vector<Setting> settings; // in the order in which they were given
    bool list = false;
    bool presets = false;
};
void sheen(const SheenArguments &arguments);

struct SvgArguments {
    std::string input, output, size, background;
    bool subset = false;
    CanvasMaker makeCanvas = makeSoftwareCanvas;
};
void svg(const SvgArguments &arguments);

} // namespace tool
