// The commands of the oxlume program. Each stands in a file of its own and adds itself to the program's
// parser. A command that cannot do its work throws a Failure.
#pragma once

#include <CLI/CLI.hpp>

#include "tools/Failure.h"

namespace tool {

void addBlendCommand(CLI::App &program);
void addDrawCommand(CLI::App &program);
void addInfoCommand(CLI::App &program);
void addMorphCommand(CLI::App &program);
void addSheenCommand(CLI::App &program);
void addSvgCommand(CLI::App &program);
void addModesCommand(CLI::App &program);
void addPathCommand(CLI::App &program);

} // namespace tool
