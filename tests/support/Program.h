// Runs the oxlume program as a user would, and looks at what it did.
#pragma once

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <sys/wait.h>

#include "tests/support/TemporaryFolder.h"

namespace lx::test {

struct ProgramResult {
    int status;
    std::string output; // standard output
    std::string errors; // standard error
};

// Runs the program with arguments as the shell splits them.
inline ProgramResult runProgram(const std::string &arguments) {
    const TemporaryFolder folder;
    const std::filesystem::path errors = folder / "errors";
    const std::string command = std::string(OXLUME_PROGRAM) + " " + arguments + " 2>" + errors.string();
    ProgramResult result = {-1, {}, {}};
    std::FILE *pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return result;
    std::array<char, 4096> buffer;
    while (const size_t read = std::fread(buffer.data(), 1, buffer.size(), pipe))
        result.output.append(buffer.data(), read);
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.errors = readFile(errors);
    return result;
}

} // namespace lx::test
