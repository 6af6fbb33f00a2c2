// All commands of the program with their options. The parser is a large template library: it is included here
// alone.

#include "tools/CommandLine.h"

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "tools/Commands.h"
#include "tools/DrawScript.h"

namespace tool {
namespace {

// Adds a command that runs `function` with its arguments, which addOptions(command, arguments) binds to
// options.
template <class Arguments, class AddOptions>
void addCommand(CLI::App &program, const char *name, const char *help, void (*function)(const Arguments &),
                AddOptions addOptions) {
    CLI::App *const command = program.add_subcommand(name, help);
    const auto arguments = std::make_shared<Arguments>();
    addOptions(*command, *arguments);
    command->callback([=] { function(*arguments); });
}

void addOpacity(CLI::App &command, int &opacity) {
    command.add_option("--opacity", opacity, "0 to 255")->capture_default_str()->check(CLI::Range(0, 255));
}

void addRenderer(CLI::App &command, CanvasMaker &makeCanvas) {
    static const std::map<std::string, CanvasMaker> makers = {
        {"software", makeSoftwareCanvas}, {"quartz", makeQuartzCanvas}, {"opengl", makeOpenGLCanvas}};
    command
        .add_option_function<std::string>(
            "--renderer", [&makeCanvas](const std::string &name) { makeCanvas = makers.at(name); },
            "What draws: software, quartz or opengl")
        ->check(CLI::IsMember({"software", "quartz", "opengl"}))
        ->default_str("software");
}

void addBlend(CLI::App &program) {
    addCommand(
        program, "blend", "Lay one picture over another", blend,
        [](CLI::App &command, BlendArguments &arguments) {
            command.add_option("DST", arguments.destination, "PNG file that is laid on")->required();
            command.add_option("SRC", arguments.source, "PNG file to lay over it")->required();
            command.add_option("-o,--out", arguments.out, "PNG file to write")->required();
            command.add_option("--mode", arguments.mode, "Blend mode, as `oxlume modes --list` names them")
                ->capture_default_str();
            addOpacity(command, arguments.opacity);
            command.add_option("--channel", arguments.channel, "red, green, blue, alpha, rgb or rgba")
                ->capture_default_str();
            command.add_option("--mask", arguments.mask, "Grey PNG file that lies on SRC and gates it");
            CLI::Option *const at = command.add_option("--at", arguments.at, "Where SRC goes in DST, as X,Y")
                                        ->delimiter(',')
                                        ->expected(2)
                                        ->capture_default_str();
            CLI::Option *const frame =
                command
                    .add_option("--frame", arguments.frame,
                                "Stretch SRC, cut into pieces by its marker pixels, over X0,Y0,X1,Y1 of DST")
                    ->delimiter(',')
                    ->expected(4);
            command
                .add_option("--tile", arguments.tile,
                            "Lay the tile X,Y, from 0,0, of those that SRC's marker pixels cut it into")
                ->delimiter(',')
                ->expected(2)
                ->excludes(frame);
            frame->excludes(at);
        });
}

void addDraw(CLI::App &program) {
    addCommand(program, "draw", "Draw a picture by a script of context calls", draw,
               [](CLI::App &command, DrawArguments &arguments) {
                   command
                       .add_option("SCRIPT", arguments.script,
                                   "Text file, at most 1 MiB: size W H, then commands")
                       ->required();
                   command.add_option("-o,--output", arguments.output, "PNG file to write")->required();
                   addRenderer(command, arguments.makeCanvas);
                   command.add_option("--seconds", arguments.seconds, "Give up after this time")
                       ->check(CLI::Range(1, 3600))
                       ->capture_default_str();
                   command.footer(
                       "One command a line; # begins a comment. Files are looked for beside the script.\n" +
                       drawCommandList());
               });
}

void addInfo(CLI::App &program) {
    addCommand(program, "info",
               "Tell a picture's size, type, row bytes and storage class, and its segments or tiles", info,
               [](CLI::App &command, InfoArguments &arguments) {
                   command.add_option("FILE", arguments.file, "PNG file")->required();
                   command.add_flag("--json", arguments.json, "Print JSON, for programs");
               });
}

void addModes(CLI::App &program) {
    addCommand(
        program, "modes", "Show every blend mode over two pictures: a contact sheet and a page", modes,
        [](CLI::App &command, ModesArguments &arguments) {
            command.add_option("DST", arguments.destination, "PNG file that is laid on");
            command.add_option("SRC", arguments.source, "PNG file to lay over it");
            command.add_option("-o,--out", arguments.folder,
                               "Folder to write sheet.png, index.html and a PNG file a mode to");
            addOpacity(command, arguments.opacity);
            command.add_option("--size", arguments.side, "Longest side of a picture on the sheet, in pixels")
                ->capture_default_str()
                ->check(CLI::Range(1, 4096));
            command.add_flag("--list", arguments.list, "Print the names of the modes and do nothing else");
        });
}

void addMorph(CLI::App &program) {
    addCommand(
        program, "morph", "Warp a picture by pairs of lines", morph,
        [](CLI::App &command, MorphArguments &arguments) {
            command.add_option("PICTURE", arguments.picture, "PNG file, grey or colour without transparency")
                ->required();
            command
                .add_option("LINES", arguments.lines,
                            "Text file, one pair of lines a row: sx0 sy0 sx1 sy1 tx0 ty0 tx1 ty1")
                ->required();
            command.add_option("-o,--output", arguments.output, "PNG file of the last frame")->required();
            command.add_option("--frames", arguments.frames, "Number of frames")->check(CLI::Range(1, 10000));
            command.add_flag("--keep-frames", arguments.keepFrames,
                             "Keep every frame, as OUT-001.png and so on");
            command.add_option("--animation", arguments.animation, "GIF file of the picture and all frames");
        });
}

void addPath(CLI::App &program) {
    addCommand(program, "path", "Print a path's items, one a line", path,
               [](CLI::App &command, PathArguments &arguments) {
                   command
                       .add_option("ITEMS", arguments.items,
                                   "Items such as \"M 0,0 L 10,0 Q 15,5 10,10 C 5,15 0,5 0,0 Z\", or by "
                                   "name: \"move 0 0; line 10 0; close\"; - reads them from standard input")
                       ->required();
                   command.add_option("--outline", arguments.outline, "Outline a stroke of this width")
                       ->type_name("WIDTH");
                   command.add_option("--style", arguments.style, "Joins of the outline; items for none")
                       ->check(CLI::IsMember(&strokeStyles))
                       ->capture_default_str();
                   command.add_flag("--flatten", arguments.flatten, "Cut curves into lines");
                   command.add_option("--clip", arguments.clip, "Clip to a rectangle, after flattening")
                       ->type_name("X0,Y0,X1,Y1")
                       ->delimiter(',')
                       ->expected(4);
               });
}

// The options of `sheen` that may come often, and whose order among each other counts.
constexpr struct {
    const char *name, *help;
} sheenSettings[] = {
    {"layer", "Add a layer: KEY=VALUE,KEY=VALUE,... (see --list)"},
    {"color", "Colour of the layer given last: R,G,B or R,G,B,A"},
    {"mode",
     "How the layer given last meets those under it: add, subtract, multiply, paint, larger, smaller, "
     "or one with -inside, such as add-inside"},
    {"opacity", "Opacity of the layer given last, 0 to 1"},
    {"name", "Name of the layer given last"},
    {"light", "The light: KEY=VALUE,... of azimuth, elevation, width, ambient, brilliance"},
};

// The settings in the order in which they were given.
std::vector<SheenArguments::Setting> settingsOf(const CLI::App &command) {
    std::vector<SheenArguments::Setting> settings;
    std::map<const CLI::Option *, size_t> taken;
    for (const CLI::Option *option : command.parse_order())
        for (const auto &[name, help] : sheenSettings)
            if (option->check_lname(name))
                settings.push_back({name, option->results().at(taken[option]++)});
    return settings;
}

void addSheen(CLI::App &program) {
    constexpr int largestSize = 8192; // a picture and its heights then take about a gigabyte
    addCommand(
        program, "sheen", "Draw a procedural surface, layer by layer", sheen,
        [](CLI::App &command, SheenArguments &arguments) {
            command.add_option("PRESET", arguments.preset, "A preset: its name (see --presets) or its file");
            command.add_option("-o,--output", arguments.output, "Write the picture to this PNG file");
            command.add_option("--heights", arguments.heights, "Write the heights to this PNG file, in grey");
            command.add_option("--size", arguments.size, "Width and height in pixels")
                ->check(CLI::Range(1, largestSize))
                ->capture_default_str();
            for (const auto &[name, help] : sheenSettings)
                command.add_option(std::string("--") + name)
                    ->description(help)
                    ->type_name("TEXT")
                    ->type_size(1)
                    ->expected(1)
                    ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
            command.add_option("--save", arguments.save, "Write the layers as a preset to this file");
            command.add_option(
                "--sheet", arguments.sheet,
                "Instead of one picture, draw five, with this parameter from its minimum to its maximum");
            command.add_flag("--list", arguments.list, "List the parameters of a layer");
            command.add_flag("--presets", arguments.presets, "List the presets");
            command.parse_complete_callback([&] { arguments.settings = settingsOf(command); });
        });
}

void addSvg(CLI::App &program) {
    addCommand(program, "svg", "Draw an SVG file", svg, [](CLI::App &command, SvgArguments &arguments) {
        command.add_option("FILE", arguments.input, "SVG file")->required();
        command.add_option("-o,--output", arguments.output, "Write the picture to this PNG file")->required();
        command.add_option("--size", arguments.size, "WIDTHxHEIGHT in pixels; by default the file's own");
        command.add_option("--background", arguments.background, "R,G,B or R,G,B,A; by default transparent");
        addRenderer(command, arguments.makeCanvas);
        command.add_flag(
            "--subset", arguments.subset,
            "Draw with the library's own reader: paths of the simplest commands and lines, y upwards");
    });
}

} // namespace

int runCommandLine(int argc, char **argv) {
    CLI::App program("2D graphics and imaging from the command line.", "oxlume");
    program.require_subcommand(1);
    program.set_version_flag("--version", "oxlume " OXLUME_VERSION, "Print the version and exit");
    addBlend(program);
    addDraw(program);
    addInfo(program);
    addMorph(program);
    addSheen(program);
    addSvg(program);
    addModes(program);
    addPath(program);
    // Behind the commands, which would take it over.
    program.set_help_all_flag("--help-all", "Print the help of all commands and exit");
    try {
        program.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError &error) {
        const bool helpWasAsked = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
        if (!helpWasAsked)
            throw std::runtime_error(error.what());
        return program.exit(error);
    }
}

} // namespace tool
