// The oxlume program: the library's first client.

#include <exception>
#include <iostream>

#include <oxlume/LxLibrary.h>

#include "tools/Command.h"

namespace {

constexpr int failed = 2;

int fail(const char *message) {
    std::cerr << "oxlume: " << message << '\n';
    return failed;
}

// Parses the arguments, which runs the command that they name.
int run(int argc, char **argv) {
    CLI::App program("2D graphics and imaging from the command line.", "oxlume");
    program.require_subcommand(1);
    program.set_version_flag("--version", "oxlume " OXLUME_VERSION, "Print the version and exit");
    tool::addBlendCommand(program);
    tool::addDrawCommand(program);
    tool::addInfoCommand(program);
    tool::addMorphCommand(program);
    tool::addSheenCommand(program);
    tool::addSvgCommand(program);
    tool::addModesCommand(program);
    tool::addPathCommand(program);
    // Behind the commands, which would take it over.
    program.set_help_all_flag("--help-all", "Print the help of all commands and exit");
    try {
        program.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError &error) {
        const bool helpWasAsked = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
        return helpWasAsked ? program.exit(error) : fail(error.what());
    }
}

} // namespace

int main(int argc, char **argv) {
    Oxlume_Init();
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        return fail(error.what());
    }
}
