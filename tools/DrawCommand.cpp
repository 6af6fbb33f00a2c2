// `oxlume draw SCRIPT -o OUT.png`: a picture drawn by a script of context calls.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>

#include "tools/Command.h"
#include "tools/DrawScript.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"
#include "tools/RendererOption.h"

namespace tool {
namespace {

struct Arguments {
    std::string script, output;
    CanvasMaker makeCanvas = makeSoftwareCanvas;
    unsigned seconds = 60;
};

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

void draw(const Arguments &arguments) {
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

} // namespace

void addDrawCommand(CLI::App &program) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = program.add_subcommand("draw", "Draw a picture by a script of context calls");
    command->footer("One command a line; # begins a comment. Files are looked for beside the script.\n" +
                    drawCommandList());
    command->add_option("SCRIPT", arguments->script, "Text file, at most 1 MiB: size W H, then commands")
        ->required();
    command->add_option("-o,--output", arguments->output, "PNG file to write")->required();
    addRendererOption(*command, arguments->makeCanvas);
    command->add_option("--seconds", arguments->seconds, "Give up after this time")
        ->check(CLI::Range(1, 3600))
        ->capture_default_str();
    command->callback([arguments] { draw(*arguments); });
}

} // namespace tool
