// Runs a piece of work with standard error on a terminal, and keeps what appears there.
#pragma once

#include <array>
#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace lx::test {

struct TerminalResult {
    int status = -1;  // that `work` answered
    std::string text; // all that was written to the terminal
};

// Calls `work` in a child process whose three standard streams are a terminal of 80 columns.
template <class Work>
TerminalResult onTerminal(Work &&work) {
    int terminal = -1;
    winsize size = {24, 80, 0, 0};
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0)
        _exit(std::forward<Work>(work)());
    TerminalResult result;
    if (child < 0)
        return result;
    std::array<char, 4096> buffer;
    for (ssize_t read; (read = ::read(terminal, buffer.data(), buffer.size())) > 0;)
        result.text.append(buffer.data(), static_cast<size_t>(read));
    int status = 0;
    waitpid(child, &status, 0);
    close(terminal);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

} // namespace lx::test
