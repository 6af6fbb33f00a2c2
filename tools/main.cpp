// The oxlume program: the library's first client.

#include <exception>
#include <iostream>

#include <oxlume/LxLibrary.h>

#include "tools/CommandLine.h"

namespace {

constexpr int failed = 2;

int fail(const char *message) {
    std::cerr << "oxlume: " << message << '\n';
    return failed;
}

} // namespace

int main(int argc, char **argv) {
    Oxlume_Init();
    try {
        return tool::runCommandLine(argc, argv);
    } catch (const std::exception &error) {
        return fail(error.what());
    }
}
