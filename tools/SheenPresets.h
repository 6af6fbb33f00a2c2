// The presets that come with the program: the files of presets/, built in.
#pragma once

#include <string>
#include <vector>

namespace tool {

struct SheenPreset {
    std::string name;
    std::string text;
};

// In the order of their names.
const std::vector<SheenPreset> &sheenPresets();

} // namespace tool
