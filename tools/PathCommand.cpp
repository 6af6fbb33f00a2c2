// `oxlume path ITEMS`: a path's items, after outlining, flattening or clipping it.

#include <bit>
#include <charconv>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <oxlume/LxPath.h>

#include "path/PathReader.h"
#include "tools/Command.h"
#include "tools/PathText.h"
#include "tools/Progress.h"

namespace tool {
namespace {

// The shortest text that reads back as the same float.
void printNumber(uint32_t word) {
    char text[32];
    const auto end = std::to_chars(std::begin(text), std::end(text), std::bit_cast<float>(word)).ptr;
    std::cout << ' ' << std::string_view(text, static_cast<size_t>(end - text));
}

void print(const LxPath &path) {
    static constexpr const char *names[] = {"nothing", "move", "line", "qcurve", "curve", "arc", "polygon"};
    const lx::WalkEnd end = lx::readItems(path, [&](uint32_t tag, int32_t position, int32_t n) {
        std::cout << (tag < std::size(names) ? names[tag] : "close");
        const bool polygon = tag == kLxPathPolygon;
        const int32_t first = position + (polygon ? 2 : 1);
        const int32_t behind = polygon ? first + 2 * n : position + lx::itemSize(tag);
        const int32_t plainWords = tag == kLxPathArc ? 2 : 0;
        for (int32_t i = first; i < behind - plainWords; ++i)
            printNumber(path.words[i]);
        for (int32_t i = behind - plainWords; i < behind; ++i)
            std::cout << ' ' << path.words[i];
        std::cout << '\n';
    });
    if (end == lx::WalkEnd::unknown)
        std::cout << "no item\n";
}

const std::map<std::string, int32_t> strokeStyles = {
    {"bevel", 0}, {"mitre", kLxStrokeMitre}, {"items", kLxStrokeItems}};

struct Arguments {
    std::string items;
    double width = 0;
    std::string style = "bevel";
    std::vector<double> clip;
    bool flatten = false;
    const CLI::Option *outline = nullptr;
};

std::string readStandardInput() {
    return {std::istreambuf_iterator<char>(std::cin), {}};
}

void edit(LxPath &path, const Arguments &arguments) {
    if (*arguments.outline)
        LxPath_Outline(&path, nullptr, nullptr, arguments.width, strokeStyles.at(arguments.style));
    else if (arguments.flatten || !arguments.clip.empty())
        LxPath_Decompose(&path, nullptr);
    if (!arguments.clip.empty()) {
        const LxRectD clip =
            LxRectD(arguments.clip[0], arguments.clip[1], arguments.clip[2], arguments.clip[3]);
        LxPath_Clip(&path, &clip);
    }
}

void run(const Arguments &arguments) {
    const std::string items = arguments.items == "-" ? readStandardInput() : arguments.items;
    PathHandle path;
    {
        const Progress progress("computing the path", 0);
        path = parsePath(items);
        edit(*path, arguments);
    }
    print(*path);
}

} // namespace

void addPathCommand(CLI::App &program) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = program.add_subcommand("path", "Print a path's items, one a line");
    command
        ->add_option(
            "ITEMS", arguments->items,
            "Items such as \"M 0,0 L 10,0 Q 15,5 10,10 C 5,15 0,5 0,0 Z\", or by name: \"move 0 0; line "
            "10 0; close\"; - reads them from standard input")
        ->required();
    arguments->outline = command->add_option("--outline", arguments->width, "Outline a stroke of this width")
                             ->type_name("WIDTH");
    command->add_option("--style", arguments->style, "Joins of the outline; items for none")
        ->check(CLI::IsMember(&strokeStyles))
        ->capture_default_str();
    command->add_flag("--flatten", arguments->flatten, "Cut curves into lines");
    command->add_option("--clip", arguments->clip, "Clip to a rectangle, after flattening")
        ->type_name("X0,Y0,X1,Y1")
        ->delimiter(',')
        ->expected(4);
    command->callback([arguments] { run(*arguments); });
}

} // namespace tool
