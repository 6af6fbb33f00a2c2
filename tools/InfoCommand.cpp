// `oxlume info FILE.png`: what the library makes of a picture.

#include <iostream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "image/Image.h"
#include "tools/Commands.h"
#include "tools/PngFile.h"

namespace tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char *typeNames[8] = {"A", "RGB", "RGBA",      "RGBAPremultiplied",
                                      "F", "L",   "undefined", "undefined"};

constexpr const char *storageNames[lx::storageCount] = {"inline",   "pool 2K", "pool 4K", "pool 16K",
                                                        "pool 64K", "heap",    "external"};

constexpr const char *layoutNames[8] = {"none",         "3 by 3 grid", "three columns", "three rows",
                                        "five columns", "five rows",   "six columns",   "six rows"};

// A segment with its place in the grid. Its far sides belong to it.
struct Segment {
    int32_t column, row;
    LxRectL rect;
};

std::vector<Segment> segmentsOf(const LxImage &image) {
    std::vector<Segment> segments;
    for (int32_t row = 0; row < 3; ++row)
        for (int32_t column = 0; column < 3; ++column) {
            const LxRectL rect = LxImage_SegmentRectL(&image, column, row);
            if (rect.x1 > 0)
                segments.push_back({column, row, rect});
        }
    return segments;
}

struct Pair {
    int32_t x, y;
};

template <class Read>
Pair read(Read accessor, const LxImage &image) {
    Pair pair = {};
    accessor(&image, &pair.x, &pair.y);
    return pair;
}

void printAsText(const std::string &file, const LxImage &image) {
    std::cout << file << '\n'
              << "  size          " << lx::width(image) << " x " << lx::height(image) << '\n'
              << "  type          " << typeNames[image.type] << '\n'
              << "  bytes per row " << image.rowBytes << '\n'
              << "  storage       " << storageNames[image.storage] << '\n';
    if (image.segment != 0) {
        std::cout << "  segments      " << layoutNames[image.segment] << '\n';
        for (const Segment &segment : segmentsOf(image)) {
            const LxRectL &rect = segment.rect;
            std::cout << "    column " << segment.column << ", row " << segment.row << ": x " << rect.x0
                      << " to " << rect.x1 << ", y " << rect.y0 << " to " << rect.y1 << '\n';
        }
    }
    if (image.tiled != 0) {
        const Pair count = read(LxImage_TileNum, image);
        const Pair size = read(LxImage_TileSize, image);
        std::cout << "  tiles         " << count.x << " by " << count.y << " of " << size.x << " x " << size.y
                  << '\n';
    }
}

void printAsJson(const std::string &file, const LxImage &image) {
    Json json = {{"file", file},
                 {"width", lx::width(image)},
                 {"height", lx::height(image)},
                 {"type", typeNames[image.type]},
                 {"bytesPerRow", image.rowBytes},
                 {"storage", storageNames[image.storage]}};
    if (image.segment != 0) {
        Json pieces = Json::array();
        for (const Segment &segment : segmentsOf(image)) {
            const LxRectL &rect = segment.rect;
            pieces.push_back({{"column", segment.column},
                              {"row", segment.row},
                              {"x0", rect.x0},
                              {"y0", rect.y0},
                              {"x1", rect.x1},
                              {"y1", rect.y1}});
        }
        json["segments"] = {
            {"layout", image.segment}, {"name", layoutNames[image.segment]}, {"pieces", pieces}};
    }
    if (image.tiled != 0) {
        const Pair count = read(LxImage_TileNum, image);
        const Pair size = read(LxImage_TileSize, image);
        json["tiles"] = {{"columns", count.x}, {"rows", count.y}, {"width", size.x}, {"height", size.y}};
    }
    std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace

void info(const InfoArguments &arguments) {
    const ImageHandle image = readPng(arguments.file);
    LxImage_ReadSegmentMarks(image.get());
    (arguments.json ? printAsJson : printAsText)(arguments.file, *image);
}

} // namespace tool
