// `oxlume draw SCRIPT -o OUT.png`: a picture drawn by a script of context calls.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "tools/Commands.h"
#include "tools/DrawScript.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"

namespace tool {
namespace {

// What the program says last if drawing takes too long; made up before, since a signal's handler cannot.
char lateMessage[256];

void giveUp(int) {
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, lateMessage, std::strlen(lateMessage));
    _exit(2);
}

// Ends the program if its work lasts longer: also in the midst of a single command.
class TimeLimit {
public:
    TimeLimit(const std::string &script, unsigned seconds) {
        // On a terminal the message takes the place of the progress display.
        std::snprintf(lateMessage, sizeof lateMessage, "%soxlume: %.180s: takes longer than %u seconds\n",
                      isatty(STDERR_FILENO) != 0 ? "\r\033[K" : "", script.c_str(), seconds);
        std::signal(SIGALRM, giveUp);
        alarm(seconds);
    }
    ~TimeLimit() { alarm(0); }
    TimeLimit(const TimeLimit &) = delete;
    TimeLimit &operator=(const TimeLimit &) = delete;
};

// At most one byte more than a script may have.
std::string readScript(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    std::string text(DrawLimits().bytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!file && !file.eof())
        throw Failure(path + ": " + std::strerror(errno));
    text.resize(static_cast<size_t>(file.gcount()));
    return text;
}

} // namespace

void draw(const DrawArguments &arguments) {
    const std::filesystem::path folder = std::filesystem::path(arguments.script).parent_path();
    Drawing drawing([&](const std::string &file) { return readPng((folder / file).string()); },
                    arguments.makeCanvas);
    const std::string script = readScript(arguments.script);
    {
        const TimeLimit limit(arguments.script, arguments.seconds);
        Progress progress("drawing " + arguments.script, 0);
        drawScript(script, arguments.script, drawing, {}, [&](size_t done, size_t commands) {
            progress.report(static_cast<int64_t>(done), static_cast<int64_t>(commands));
        });
    }
    writePng(arguments.output, *drawing.finish());
}

} // namespace tool
