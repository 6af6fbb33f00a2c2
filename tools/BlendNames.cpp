#include "tools/BlendNames.h"

#include <oxlume/LxBlend.h>

#include "blend/Mode.h"
#include "tools/Failure.h"

namespace tool {
namespace {

using NameOf = const char *(*)(int32_t);

// The number from `first` to `last` that bears the name.
int32_t named(const std::string &name, const char *kind, NameOf nameOf, int32_t first, int32_t last) {
    std::string valid;
    for (int32_t number = first; number <= last; ++number) {
        if (name == nameOf(number))
            return number;
        valid += std::string(valid.empty() ? "" : ", ") + nameOf(number);
    }
    throw Failure(name + " is no " + kind + "; there are " + valid);
}

} // namespace

int32_t modeNamed(const std::string &name) {
    return named(name, "mode", LxBlend_ModeName, 0, lx::modeCount - 1);
}

int32_t channelNamed(const std::string &name) {
    return named(name, "channel", LxBlend_ChannelName, 1, lx::channelCount);
}

std::string modeList() {
    std::string list;
    for (int32_t mode = 0; mode < lx::modeCount; ++mode)
        list += std::string(LxBlend_ModeName(mode)) + '\n';
    return list;
}

} // namespace tool
