// Paths written as text.
#pragma once

#include <memory>
#include <string_view>

#include <oxlume/LxPath.h>

namespace tool {

struct DeletePath {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};

using PathHandle = std::unique_ptr<LxPath, DeletePath>;

// The path of items such as "M 0,0 L 10,0 Z", or by name, "move 0 0; line 10 0; close". Throws a Failure that
// names what cannot be read.
PathHandle parsePath(std::string_view text);

} // namespace tool
