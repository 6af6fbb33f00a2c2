// Modes and channels by their names.
#pragma once

#include <cstdint>
#include <string>

namespace tool {

// The number of a mode or channel. Throws a Failure that lists the valid names.
int32_t modeNamed(const std::string &name);
int32_t channelNamed(const std::string &name);

// The names of all modes, one a line, in the order of their numbers.
std::string modeList();

} // namespace tool
