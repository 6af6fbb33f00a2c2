// `oxlume svg`: pictures from SVG files.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <oxlume/LxGC.h>

#include "platform/XmlNumber.h"
#include "platform/XmlTree.h"
#include "svg/SvgReader.h"
#include "svg/SvgScanner.h"
#include "tools/Commands.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"
#include "tools/SvgDrawing.h"

namespace tool {
namespace {

// The rasteriser's coordinates go no further.
constexpr int largestSide = 2048;

// The size of a file that tells the library's own reader none.
constexpr PictureSize ordinarySize = {512, 512};

// The numbers of a text that are separated by `separator`; none if it is not made of numbers.
std::vector<int> numbersIn(std::string_view text, char separator) {
    std::vector<int> numbers;
    for (const char *p = text.data(), *end = p + text.size();;) {
        int number = 0;
        const auto [next, error] = std::from_chars(p, end, number);
        if (error != std::errc())
            return {};
        numbers.push_back(number);
        if (next == end)
            return numbers;
        if (*next != separator)
            return {};
        p = next + 1;
    }
}

PictureSize sizeFrom(const std::string &text) {
    const std::vector<int> sides = numbersIn(text, 'x');
    if (sides.size() != 2 || std::min(sides[0], sides[1]) < 1 || std::max(sides[0], sides[1]) > largestSide)
        throw Failure("--size: not WIDTHxHEIGHT of 1 to " + std::to_string(largestSide) + ": \"" + text +
                      "\"");
    return {sides[0], sides[1]};
}

LxColor backgroundFrom(const std::string &text) {
    std::vector<int> parts = numbersIn(text, ',');
    if (parts.size() == 3)
        parts.push_back(255);
    const auto isByte = [](int part) { return part >= 0 && part <= 255; };
    if (parts.size() != 4 || !std::all_of(parts.begin(), parts.end(), isByte))
        throw Failure("--background: not R,G,B or R,G,B,A of 0 to 255: \"" + text + "\"");
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(parts[i]); };
    return LxColor_RGBA(byte(0), byte(1), byte(2), byte(3));
}

bool isSide(double side) {
    return side >= 1 && side <= largestSide;
}

// The size that the root tells by its width and height, or else by its view box, as the library's own reader
// takes them.
PictureSize subsetSizeOf(const lx::XmlNode &document) {
    double width = 0, height = 0, boxWidth = 0, boxHeight = 0;
    lx::XmlNode root = document.firstChild();
    while (root && root.type() != lx::XmlNode::element)
        root = root.next();
    if (!root)
        return ordinarySize;
    for (lx::XmlAttribute attribute = root.firstAttribute(); attribute; attribute = attribute.next()) {
        if (std::strcmp(attribute.name(), "width") == 0) {
            width = lx::leadingNumber(attribute.value());
        } else if (std::strcmp(attribute.name(), "height") == 0) {
            height = lx::leadingNumber(attribute.value());
        } else if (std::strcmp(attribute.name(), "viewBox") == 0) {
            LxSVGScanner scanner;
            scanner.begin(attribute.value());
            scanner.nextNumber();
            scanner.nextNumber();
            boxWidth = scanner.nextNumber();
            boxHeight = scanner.nextNumber();
        }
    }
    if (isSide(width) && isSide(height))
        return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
    if (isSide(boxWidth) && isSide(boxHeight))
        return {static_cast<int>(std::ceil(boxWidth)), static_cast<int>(std::ceil(boxHeight))};
    return ordinarySize;
}

void draw(const SvgArguments &arguments, const lx::XmlNode &document) {
    PictureSize size;
    if (!arguments.size.empty())
        size = sizeFrom(arguments.size);
    else
        size =
            arguments.subset ? subsetSizeOf(document) : drawingSize(document, largestSide, arguments.input);
    if (!arguments.subset && arguments.makeCanvas != makeSoftwareCanvas)
        throw Failure("--renderer: without --subset drawings are drawn by software alone");
    const std::unique_ptr<Canvas> canvas = arguments.makeCanvas(size.width, size.height);
    LxGC *gc = canvas->context();
    if (!arguments.background.empty())
        LxGC_Fill(gc, backgroundFrom(arguments.background));

    const Progress progress("drawing " + arguments.input, 0);
    if (arguments.subset)
        LxSVG_Read(gc, arguments.input.c_str());
    const ImageHandle picture = canvas->finish();
    if (!arguments.subset) {
        drawSvg(*picture, document, arguments.input);
        // Drawn onto nothing, colours come out weakened by their alpha.
        if (arguments.background.empty())
            divideByAlpha(*picture);
    }
    writePng(arguments.output, *picture);
}

} // namespace

void svg(const SvgArguments &arguments) {
    const lx::XmlTree tree(arguments.input.c_str());
    if (!tree.root())
        throw Failure(arguments.input + ": cannot be read as XML");
    draw(arguments, tree.root());
}

} // namespace tool
