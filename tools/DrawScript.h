// Drawings as text: a script of context calls, one a line.
//
//     size 120 80
//     background 255 255 255 255
//     renderMode 3                # fill and stroke
//     fillColor 255 0 0 255
//     roundFrame 10 10 110 70 8 8
//
// Words are separated by blanks or commas, and put in double quotes where they hold any; # begins a comment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "tools/DrawTable.h"

namespace tool {

// What a stranger's script may ask for.
struct DrawLimits {
    size_t bytes = size_t{1} << 20; // of the script
    int32_t side = 8192;            // of the picture; whole coordinates go to twice this, on both sides of 0
};

// Reads the whole script and then draws it on `drawing`, which it begins. `name` is what errors call the
// script: a Failure says "NAME:LINE: cause". Before each command `report` is told how many of how many are
// drawn.
void drawScript(std::string_view text, const std::string &name, Drawing &drawing,
                const DrawLimits &limits = {},
                const std::function<void(size_t done, size_t commands)> &report = {});

// All commands with their arguments, one a line.
std::string drawCommandList();

} // namespace tool
