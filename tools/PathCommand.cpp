// `oxlume path ITEMS`: a path's items, after outlining, flattening or clipping it.

#include <bit>
#include <charconv>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include <oxlume/LxPath.h>

#include "path/PathReader.h"
#include "tools/Commands.h"
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

std::string readStandardInput() {
    return {std::istreambuf_iterator<char>(std::cin), {}};
}

void edit(LxPath &path, const PathArguments &arguments) {
    if (arguments.outline)
        LxPath_Outline(&path, nullptr, nullptr, *arguments.outline, strokeStyles.at(arguments.style));
    else if (arguments.flatten || !arguments.clip.empty())
        LxPath_Decompose(&path, nullptr);
    if (!arguments.clip.empty()) {
        const LxRectD clip =
            LxRectD(arguments.clip[0], arguments.clip[1], arguments.clip[2], arguments.clip[3]);
        LxPath_Clip(&path, &clip);
    }
}

} // namespace

const std::map<std::string, int32_t> strokeStyles = {
    {"bevel", 0}, {"mitre", kLxStrokeMitre}, {"items", kLxStrokeItems}};

void path(const PathArguments &arguments) {
    const std::string items = arguments.items == "-" ? readStandardInput() : arguments.items;
    PathHandle parsed;
    {
        const Progress progress("computing the path", 0);
        parsed = parsePath(items);
        edit(*parsed, arguments);
    }
    print(*parsed);
}

} // namespace tool
