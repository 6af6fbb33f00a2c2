#include "tools/GifFile.h"

#include <cstdint>
#include <cstdio>
#include <gif_lib.h>
#include <libimagequant.h>
#include <memory>

#include "image/Image.h"
#include "tools/Failure.h"
#include "tools/OutputFile.h"
#include "tools/Progress.h"

namespace tool {
namespace {

constexpr int maxColours = 256;

// A frame as indices into a palette of its own.
struct Indexed {
    std::vector<uint8_t> pixels;
    std::vector<GifColorType> palette = std::vector<GifColorType>(maxColours);
};

template <auto destroy>
struct Destroy {
    template <class T>
    void operator()(T *object) const {
        destroy(object);
    }
};

using Attributes = std::unique_ptr<liq_attr, Destroy<liq_attr_destroy>>;
using Picture = std::unique_ptr<liq_image, Destroy<liq_image_destroy>>;
using Result = std::unique_ptr<liq_result, Destroy<liq_result_destroy>>;

std::vector<liq_color> colours(const LxImage &image) {
    const size_t count = static_cast<size_t>(lx::width(image)) * static_cast<size_t>(lx::height(image));
    const uint8_t *from = lx::firstRow(image);
    std::vector<liq_color> pixels(count);
    for (liq_color &pixel : pixels) {
        if (image.type == kLxPixelA) {
            pixel = {from[0], from[0], from[0], 255};
            from += 1;
        } else {
            pixel = {from[0], from[1], from[2], 255};
            from += 3;
        }
    }
    return pixels;
}

// Null where memory is short.
std::unique_ptr<Indexed> indexed(const LxImage &image) {
    const std::vector<liq_color> pixels = colours(image);
    const Attributes attributes(liq_attr_create());
    const Picture picture(
        liq_image_create_rgba(attributes.get(), pixels.data(), lx::width(image), lx::height(image), 0));
    liq_result *made = nullptr;
    if (picture == nullptr || liq_image_quantize(picture.get(), attributes.get(), &made) != LIQ_OK)
        return nullptr;
    const Result result(made);
    auto frame = std::make_unique<Indexed>();
    frame->pixels.resize(pixels.size());
    if (liq_write_remapped_image(result.get(), picture.get(), frame->pixels.data(), frame->pixels.size()) !=
        LIQ_OK)
        return nullptr;
    const liq_palette *palette = liq_get_palette(result.get());
    for (size_t i = 0; i < palette->count; ++i)
        frame->palette[i] = {palette->entries[i].r, palette->entries[i].g, palette->entries[i].b};
    return frame;
}

int writeBytes(GifFileType *gif, const GifByteType *bytes, int size) {
    return static_cast<int>(
        std::fwrite(bytes, 1, static_cast<size_t>(size), static_cast<std::FILE *>(gif->UserData)));
}

bool putLoop(GifFileType *gif) {
    static const char name[] = "NETSCAPE2.0";
    static const GifByteType forEver[] = {1, 0, 0};
    return EGifPutExtensionLeader(gif, APPLICATION_EXT_FUNC_CODE) == GIF_OK &&
           EGifPutExtensionBlock(gif, 11, name) == GIF_OK &&
           EGifPutExtensionBlock(gif, 3, forEver) == GIF_OK && EGifPutExtensionTrailer(gif) == GIF_OK;
}

bool putFrame(GifFileType *gif, Indexed &frame, int width, int height, int hundredths) {
    const std::unique_ptr<ColorMapObject, Destroy<GifFreeMapObject>> map(
        GifMakeMapObject(maxColours, frame.palette.data()));
    const GraphicsControlBlock control = {DISPOSE_DO_NOT, false, hundredths, NO_TRANSPARENT_COLOR};
    GifByteType extension[4];
    EGifGCBToExtension(&control, extension);
    if (map == nullptr ||
        EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, sizeof extension, extension) != GIF_OK ||
        EGifPutImageDesc(gif, 0, 0, width, height, false, map.get()) != GIF_OK)
        return false;
    for (int y = 0; y < height; ++y)
        if (EGifPutLine(gif, frame.pixels.data() + ptrdiff_t{y} * width, width) != GIF_OK)
            return false;
    return true;
}

bool putAnimation(GifFileType *gif, const std::vector<const LxImage *> &frames, int hundredths,
                  Progress &progress) {
    const int width = lx::width(*frames.front());
    const int height = lx::height(*frames.front());
    EGifSetGifVersion(gif, true);
    if (EGifPutScreenDesc(gif, width, height, 8, 0, nullptr) != GIF_OK || !putLoop(gif))
        return false;
    for (const LxImage *image : frames) {
        progress.advance();
        const std::unique_ptr<Indexed> frame = indexed(*image);
        if (frame == nullptr || !putFrame(gif, *frame, width, height, hundredths))
            return false;
    }
    return true;
}

} // namespace

void writeGif(const std::string &path, const std::vector<const LxImage *> &frames, int hundredths) {
    OutputFile file(path);
    int error = 0;
    GifFileType *gif = EGifOpen(file.stream(), writeBytes, &error);
    Progress progress("writing " + path, static_cast<int64_t>(frames.size()));
    const bool isWhole = gif != nullptr && putAnimation(gif, frames, hundredths, progress);
    if (gif != nullptr && EGifCloseFile(gif, &error) != GIF_OK)
        throw Failure(path + ": cannot write: " + GifErrorString(error));
    if (!isWhole)
        throw Failure(path + ": cannot write the animation");
    file.commit();
}

} // namespace tool
