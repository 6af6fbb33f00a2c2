#include "tools/GifFile.h"

#include <cstdint>
#include <cstdio>
#include <gif_lib.h>
#include <libimagequant.h>
#include <memory>
#include <utility>
#include <vector>

#include "image/Image.h"
#include "tools/Failure.h"

namespace tool {
namespace {

constexpr int maxColours = 256;
constexpr int32_t maxSide = 65535;

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
    const int32_t width = lx::width(image);
    std::vector<liq_color> pixels(static_cast<size_t>(width) * static_cast<size_t>(lx::height(image)));
    auto to = pixels.begin();
    for (int32_t y = 0; y < lx::height(image); ++y) {
        const uint8_t *from = lx::rowAddress(image, y);
        for (int32_t x = 0; x < width; ++x, ++to) {
            if (image.type == kLxPixelA)
                *to = {from[x], from[x], from[x], 255};
            else
                *to = {from[3 * x], from[3 * x + 1], from[3 * x + 2], 255};
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

bool putStart(GifFileType *gif, int width, int height) {
    EGifSetGifVersion(gif, true);
    return EGifPutScreenDesc(gif, width, height, 8, 0, nullptr) == GIF_OK && putLoop(gif);
}

} // namespace

GifWriter::GifWriter(const std::string &path, int32_t width, int32_t height, int hundredths)
    : path_(path), file_(path), width_(width), height_(height), hundredths_(hundredths) {
    if (width > maxSide || height > maxSide)
        throw Failure(path + ": a GIF file has at most " + std::to_string(maxSide) + " pixels a side");
    int error = 0;
    gif_ = EGifOpen(file_.stream(), writeBytes, &error);
    if (gif_ == nullptr)
        fail();
    if (!putStart(gif_, width, height)) {
        close();
        fail();
    }
}

GifWriter::~GifWriter() {
    close();
}

bool GifWriter::close() {
    int error = 0;
    return gif_ == nullptr || EGifCloseFile(std::exchange(gif_, nullptr), &error) == GIF_OK;
}

void GifWriter::fail() const {
    throw Failure(path_ + ": cannot write the animation");
}

void GifWriter::add(const LxImage &frame) {
    const std::unique_ptr<Indexed> pixels = indexed(frame);
    if (pixels == nullptr || !putFrame(gif_, *pixels, width_, height_, hundredths_))
        fail();
}

void GifWriter::finish() {
    if (!close())
        fail();
    file_.commit();
}

} // namespace tool
