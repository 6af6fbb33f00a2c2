// The colours that SVG knows by name.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tool {

// 0xRRGGBB, or nothing for an unknown name. Names are in small letters.
std::optional<uint32_t> namedColor(std::string_view name);

} // namespace tool
