// `oxlume modes DST.png SRC.png -o FOLDER`: all blend modes over two pictures, as a contact sheet, a picture
// for each mode, and a page that names them.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include <oxlume/LxBlend.h>
#include <oxlume/LxGC.h>

#include "blend/Mode.h"
#include "image/Image.h"
#include "tools/BlendNames.h"
#include "tools/Canvas.h"
#include "tools/Commands.h"
#include "tools/OutputFile.h"
#include "tools/PngFile.h"
#include "tools/Progress.h"

namespace tool {
namespace {

constexpr int32_t columns = 8;
constexpr int32_t gap = 6;
constexpr int32_t labelHeight = 14; // under each picture, for the mode's name in the text size that there is
constexpr int32_t baseline = 10;    // of the name in it

ImageHandle makeRgba(int32_t w, int32_t h) {
    ImageHandle image(LxImage_Create(kLxPixelRGBA, 0, 0, w, h, 1, 0));
    if (image == nullptr)
        throw Failure("not enough memory for a picture of " + std::to_string(w) + " x " + std::to_string(h));
    return image;
}

void copyTo(LxImage &to, LxImage &from) {
    LxBlend copy = LxBlend(static_cast<int32_t>(lx::Mode::src), 255);
    LxBlend_Image_Image(&copy, &to, &from, nullptr, nullptr);
}

// The picture in four bytes, each pixel the mean of a square of `factor` pixels.
ImageHandle reduced(const std::string &path, int32_t side) {
    const ImageHandle read = readPng(path);
    const int32_t w = lx::width(*read), h = lx::height(*read);
    const ImageHandle whole = makeRgba(w, h);
    copyTo(*whole, *read);
    const int32_t factor = std::max(1, (std::max(w, h) + side - 1) / side);
    ImageHandle small = makeRgba(std::max(1, w / factor), std::max(1, h / factor));
    for (int32_t y = 0; y < lx::height(*small); ++y) {
        uint8_t *to = lx::rowAddress(*small, y);
        for (int32_t x = 0; x < lx::width(*small) * 4; ++x) {
            int64_t sum = 0, count = 0;
            for (int32_t row = y * factor; row < std::min(h, (y + 1) * factor); ++row) {
                for (int32_t column = x / 4 * factor; column < std::min(w, (x / 4 + 1) * factor); ++column) {
                    sum += lx::rowAddress(*whole, row)[column * 4 + x % 4];
                    ++count;
                }
            }
            to[x] = static_cast<uint8_t>((sum + count / 2) / count);
        }
    }
    return small;
}

// Where a mode's picture lies on the sheet.
struct Sheet {
    int32_t w, h; // of a picture

    int32_t x(int32_t mode) const { return gap + mode % columns * (w + gap); }
    int32_t y(int32_t mode) const { return gap + mode / columns * (h + labelHeight + gap); }
    int32_t width() const { return x(columns - 1) + w + gap; }
    int32_t height() const { return y(lx::modeCount - 1) + h + labelHeight + gap; }
};

// Writes a mode's name under its picture, as far as it fits. Only Quartz contexts have text.
void drawName(LxImage &picture, const Sheet &sheet, int32_t mode) {
    const std::unique_ptr<Canvas> canvas = makeQuartzCanvas(sheet.w, labelHeight);
    const std::string name = std::to_string(mode) + ' ' + LxBlend_ModeName(mode);
    LxGC_DrawTextWithLength(canvas->context(), 0, baseline, name.c_str(), static_cast<int32_t>(name.size()));
    const ImageHandle label = canvas->finish();
    LxImage_MoveTo(label.get(), sheet.x(mode), sheet.y(mode) + sheet.h);
    LxBlend over = LxBlend(static_cast<int32_t>(lx::Mode::srcOver), 255);
    LxBlend_Image_Image(&over, &picture, label.get(), nullptr, nullptr);
}

void writePage(const std::string &path, int opacity) {
    OutputFile page(path);
    std::fprintf(page.stream(),
                 "<!doctype html>\n<meta charset=\"utf-8\">\n<title>Blend modes</title>\n"
                 "<style>body{font:14px sans-serif;background:#888}"
                 "figure{display:inline-block;margin:6px}figcaption{text-align:center}</style>\n"
                 "<h1>All blend modes, opacity %d</h1>\n",
                 opacity);
    for (int32_t mode = 0; mode < lx::modeCount; ++mode) {
        const char *name = LxBlend_ModeName(mode);
        std::fprintf(page.stream(),
                     "<figure><img src=\"%s.png\" alt=\"%s\"><figcaption>%d %s</figcaption></figure>\n", name,
                     name, mode, name);
    }
    page.commit();
}

void makeFolder(const std::string &folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!std::filesystem::is_directory(folder))
        throw Failure(folder + ": cannot be made a folder" + (error ? ": " + error.message() : ""));
}

} // namespace

void modes(const ModesArguments &arguments) {
    if (arguments.list) {
        std::cout << modeList();
        return;
    }
    if (arguments.destination.empty() || arguments.source.empty() || arguments.folder.empty())
        throw Failure("modes needs two pictures and a folder to write to: DST SRC -o FOLDER");
    const ImageHandle destination = reduced(arguments.destination, arguments.side);
    const ImageHandle source = reduced(arguments.source, arguments.side);
    const Sheet sheet = {lx::width(*destination), lx::height(*destination)};
    const ImageHandle picture = makeRgba(sheet.width(), sheet.height());
    LxImage_Fill(picture.get(), LxColor_RGBA(136, 136, 136, 255));

    makeFolder(arguments.folder);
    Progress progress("blending by all modes", lx::modeCount);
    for (int32_t mode = 0; mode < lx::modeCount; ++mode) {
        const ImageHandle result(LxImage_Copy(destination.get()));
        if (result == nullptr)
            throw Failure("not enough memory");
        LxBlend blend = LxBlend(mode, arguments.opacity);
        LxBlend_Image_Image(&blend, result.get(), source.get(), nullptr, nullptr);
        writePng(arguments.folder + "/" + LxBlend_ModeName(mode) + ".png", *result);
        LxImage_MoveTo(result.get(), sheet.x(mode), sheet.y(mode));
        copyTo(*picture, *result);
        if (hasQuartzCanvas)
            drawName(*picture, sheet, mode);
        progress.advance();
    }
    writePng(arguments.folder + "/sheet.png", *picture);
    writePage(arguments.folder + "/index.html", arguments.opacity);
}

} // namespace tool
