// How a command of the program fails.
#pragma once

#include <stdexcept>

namespace tool {

// What ends a command: one line that names the culprit and the cause. The program prints it and exits with
// status 2; no file is left half-written.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace tool
