// The option --renderer of the commands that draw.
#pragma once

#include <CLI/CLI.hpp>

#include "tools/Canvas.h"

namespace tool {

// Lets the command's user choose what makes the canvas; `makeCanvas` must live until the command has run.
void addRendererOption(CLI::App &command, CanvasMaker &makeCanvas);

} // namespace tool
