// `oxlume morph A.png LINES.txt -o OUT.png`: warps a picture by pairs of lines.

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <oxlume/LxExtras.h>

#include "image/Image.h"
#include "tools/Commands.h"
#include "tools/GifFile.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"

namespace tool {
namespace {

// The squares of a line between two such coordinates still fit in 32 bits, and larger ones are no use.
constexpr int maxCoordinate = 16000;

struct Lines {
    std::vector<LxMorphLine> from, to;
};

LxMorphLine lineOf(const int *c) {
    return LxMorphLine(c[0], c[1], c[2], c[3]);
}

// Eight whole numbers a line: the two ends of a line in the picture, and those of where it goes. Lines that
// are empty or begin with # do not count.
Lines readLines(const std::string &path) {
    std::ifstream file(path);
    if (!file)
        throw Failure(path + ": " + std::strerror(errno));
    Lines lines;
    std::string text;
    for (int number = 1; std::getline(file, text); ++number) {
        if (text.find_first_not_of(" \t\r") == std::string::npos || text[0] == '#')
            continue;
        std::istringstream words(text);
        words.imbue(std::locale::classic());
        int c[8];
        bool isGood = true;
        for (int &coordinate : c)
            isGood = isGood && words >> coordinate && std::abs(coordinate) <= maxCoordinate;
        std::string rest;
        if (!isGood || words >> rest)
            throw Failure(path + ":" + std::to_string(number) +
                          ": expected eight whole numbers: sx0 sy0 sx1 sy1 tx0 ty0 tx1 ty1");
        if (lineOf(c).lengthSquared == 0 || lineOf(c + 4).lengthSquared == 0)
            throw Failure(path + ":" + std::to_string(number) + ": a line has no length");
        lines.from.push_back(lineOf(c));
        lines.to.push_back(lineOf(c + 4));
    }
    if (lines.from.empty())
        throw Failure(path + ": no lines");
    return lines;
}

// OUT.png as OUT-007.png.
std::string numbered(const std::string &path, int number) {
    const std::filesystem::path whole(path);
    char tail[16];
    std::snprintf(tail, sizeof tail, "-%03d", number);
    return (whole.parent_path() / whole.stem()).string() + tail + whole.extension().string();
}

} // namespace

void morph(const MorphArguments &arguments) {
    const ImageHandle picture = readPng(arguments.picture);
    if (picture->type != kLxPixelA && picture->type != kLxPixelRGB)
        throw Failure(arguments.picture + ": pictures with transparency cannot be morphed");
    const Lines lines = readLines(arguments.lines);
    const int32_t width = lx::width(*picture), height = lx::height(*picture);
    const ImageHandle result(LxImage_Create(LxImage_Type(picture.get()), 0, 0, width, height, 0, 0));
    std::optional<GifWriter> animation;
    if (!arguments.animation.empty()) {
        animation.emplace(arguments.animation, width, height, 8);
        animation->add(*picture);
    }
    const int first = animation || arguments.keepFrames ? 1 : arguments.frames;
    Progress progress("warping", arguments.frames - first + 1);
    for (int frame = first; frame <= arguments.frames; ++frame) {
        if (LxMorph_Frame(picture.get(), result.get(), lines.from.data(), lines.to.data(),
                          static_cast<int32_t>(lines.from.size()),
                          static_cast<double>(frame) / arguments.frames) == 0)
            throw Failure("not enough memory for a frame of " + std::to_string(width) + " x " +
                          std::to_string(height));
        if (animation)
            animation->add(*result);
        if (arguments.keepFrames)
            writePng(numbered(arguments.output, frame), *result);
        progress.advance();
    }
    writePng(arguments.output, *result);
    if (animation)
        animation->finish();
}

} // namespace tool
