// `oxlume path ITEMS`: a path's items, after outlining, flattening or clipping it.

#include <algorithm>
#include <array>
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

namespace tool {
namespace {

struct PathDeleter {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using PathHandle = std::unique_ptr<LxPath, PathDeleter>;

using Numbers = std::array<double, 6>;

// The items that can be written down, each by its name or by a letter, and then its numbers.
struct ItemForm {
    std::string_view name;
    std::string_view letter;
    size_t numbers;
    void (*add)(LxPath *path, const Numbers &n);
};

constexpr ItemForm itemForms[] = {
    {"move", "M", 2, [](LxPath *path, const Numbers &n) { LxPath_AddMoveTo(path, n[0], n[1]); }},
    {"line", "L", 2, [](LxPath *path, const Numbers &n) { LxPath_AddLineTo(path, n[0], n[1]); }},
    {"qcurve", "Q", 4,
     [](LxPath *path, const Numbers &n) { LxPath_AddQCurveTo(path, n[0], n[1], n[2], n[3]); }},
    {"curve", "C", 6,
     [](LxPath *path, const Numbers &n) { LxPath_AddCurveTo(path, n[0], n[1], n[2], n[3], n[4], n[5]); }},
    {"close", "Z", 0, [](LxPath *path, const Numbers &) { LxPath_AddClose(path); }},
};

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Splits at blanks, commas and semicolons, and between the letters of a name and what stands beside them.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    // The next piece; empty at the end.
    std::string_view next() {
        const size_t start = text_.find_first_not_of(separators);
        if (start == std::string_view::npos)
            return {};
        text_.remove_prefix(start);
        const bool name = isLetter(text_[0]);
        size_t length = 1;
        while (length < text_.size() && separators.find(text_[length]) == std::string_view::npos &&
               (isLetter(text_[length]) == name || isExponent(length, name)))
            ++length;
        const std::string_view piece = text_.substr(0, length);
        text_.remove_prefix(length);
        return piece;
    }

private:
    static constexpr std::string_view separators = " \t\r\n,;";

    // An e inside a number.
    bool isExponent(size_t at, bool name) const {
        return !name && (text_[at] == 'e' || text_[at] == 'E') && at + 1 < text_.size() &&
               !isLetter(text_[at + 1]);
    }

    std::string_view text_;
};

double numberOf(std::string_view piece) {
    double value = 0;
    const auto [end, error] = std::from_chars(piece.data(), piece.data() + piece.size(), value);
    if (piece.empty() || error != std::errc() || end != piece.data() + piece.size())
        throw Failure(piece.empty() ? "the path ends where a number should be"
                                    : "\"" + std::string(piece) + "\" is no number of a path");
    return value;
}

PathHandle parse(std::string_view text) {
    PathHandle path(LxPath_Create());
    Scanner scanner(text);
    for (std::string_view piece = scanner.next(); !piece.empty(); piece = scanner.next()) {
        const auto *form = std::find_if(std::begin(itemForms), std::end(itemForms), [&](const ItemForm &f) {
            return piece == f.name || piece == f.letter;
        });
        if (form == std::end(itemForms))
            throw Failure("\"" + std::string(piece) + "\" is no item of a path");
        Numbers numbers = {};
        for (size_t i = 0; i < form->numbers; ++i)
            numbers[i] = numberOf(scanner.next());
        form->add(path.get(), numbers);
    }
    return path;
}

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

void run(const Arguments &arguments) {
    const PathHandle path = parse(arguments.items == "-" ? readStandardInput() : arguments.items);
    if (*arguments.outline)
        LxPath_Outline(path.get(), nullptr, nullptr, arguments.width, strokeStyles.at(arguments.style));
    else if (arguments.flatten || !arguments.clip.empty())
        LxPath_Decompose(path.get(), nullptr);
    if (!arguments.clip.empty()) {
        const LxRectD clip =
            LxRectD(arguments.clip[0], arguments.clip[1], arguments.clip[2], arguments.clip[3]);
        LxPath_Clip(path.get(), &clip);
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
