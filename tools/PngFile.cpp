#include "tools/PngFile.h"

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <png.h>

#include "image/Image.h"
#include "tools/Failure.h"
#include "tools/OutputFile.h"
#include "tools/Progress.h"

// libpng reports an error by jumping out of its call. The functions between setjmp and the calls hold nothing
// that needs destruction; what they make stands in the objects of their callers.

namespace tool {
namespace {

// What libpng said last, kept for the Failure.
struct PngMessage {
    char text[128] = "";
};

[[noreturn]] void onError(png_structp png, png_const_charp text) {
    auto *message = static_cast<PngMessage *>(png_get_error_ptr(png));
    std::snprintf(message->text, sizeof message->text, "%s", text);
    png_longjmp(png, 1);
}

void onWarning(png_structp, png_const_charp) {}

struct CloseFile {
    void operator()(std::FILE *file) const { std::fclose(file); }
};

class PngReader {
public:
    PngReader() : png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, &message_, onError, onWarning)) {
        info_ = png_ != nullptr ? png_create_info_struct(png_) : nullptr;
    }
    ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }
    PngReader(const PngReader &) = delete;
    PngReader &operator=(const PngReader &) = delete;

    const char *message() const { return message_.text; }

    // Reads all before the pixels; false on an error.
    bool readHeader(std::FILE *file) {
        if (info_ == nullptr || setjmp(png_jmpbuf(png_)) != 0)
            return false;
        png_init_io(png_, file);
        // The library's own limit on an image's size is the one that counts.
        png_set_user_limits(png_, std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::max());
        png_read_info(png_, info_);
        return true;
    }

    uint32_t width() const { return png_get_image_width(png_, info_); }
    uint32_t height() const { return png_get_image_height(png_, info_); }

    // The type of image that holds the pixels.
    int32_t type() const {
        const int colourType = png_get_color_type(png_, info_);
        if ((colourType & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png_, info_, PNG_INFO_tRNS) != 0)
            return kLxPixelRGBA;
        return (colourType & PNG_COLOR_MASK_COLOR) != 0 ? kLxPixelRGB : kLxPixelA;
    }

    // Reads the pixels, converted to `type`, into rows that lie `stride` apart; false on an error.
    bool readRows(uint8_t *rows, ptrdiff_t stride, Progress &progress) {
        if (setjmp(png_jmpbuf(png_)) != 0)
            return false;
        png_set_expand(png_);
        png_set_scale_16(png_);
        if (type() == kLxPixelRGBA)
            png_set_gray_to_rgb(png_);
        const int passes = png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
        for (int pass = 0; pass < passes; ++pass)
            for (uint32_t y = 0; y < height(); ++y) {
                png_read_row(png_, rows + stride * y, nullptr);
                progress.report(int64_t{pass} * height() + y + 1, int64_t{passes} * height());
            }
        png_read_end(png_, nullptr);
        return true;
    }

private:
    PngMessage message_;
    png_structp png_;
    png_infop info_;
};

class PngWriter {
public:
    PngWriter() : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, &message_, onError, onWarning)) {
        info_ = png_ != nullptr ? png_create_info_struct(png_) : nullptr;
    }
    ~PngWriter() { png_destroy_write_struct(&png_, &info_); }
    PngWriter(const PngWriter &) = delete;
    PngWriter &operator=(const PngWriter &) = delete;

    const char *message() const { return message_.text; }

    bool write(std::FILE *file, const LxImage &image, int colourType, Progress &progress) {
        if (info_ == nullptr || setjmp(png_jmpbuf(png_)) != 0)
            return false;
        png_init_io(png_, file);
        png_set_IHDR(png_, info_, static_cast<uint32_t>(lx::width(image)),
                     static_cast<uint32_t>(lx::height(image)), 8, colourType, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png_, info_);
        for (int32_t y = 0; y < lx::height(image); ++y) {
            png_write_row(png_, lx::rowAddress(image, y));
            progress.advance();
        }
        png_write_end(png_, info_);
        return true;
    }

private:
    PngMessage message_;
    png_structp png_;
    png_infop info_;
};

bool hasPngSignature(std::FILE *file) {
    uint8_t signature[8] = {};
    const size_t read = std::fread(signature, 1, sizeof signature, file);
    std::rewind(file);
    return read == sizeof signature && png_sig_cmp(signature, 0, sizeof signature) == 0;
}

} // namespace

ImageHandle readPng(const std::string &path) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr)
        throw Failure(path + ": " + std::strerror(errno));
    if (!hasPngSignature(file.get()))
        throw Failure(path + ": not a PNG file");
    PngReader reader;
    if (!reader.readHeader(file.get()))
        throw Failure(path + ": broken PNG file: " + reader.message());
    const std::string size = std::to_string(reader.width()) + " x " + std::to_string(reader.height());
    ImageHandle image(LxImage_Create(reader.type(), 0, 0, static_cast<int32_t>(reader.width()),
                                     static_cast<int32_t>(reader.height()), 0, 0));
    if (image == nullptr)
        throw Failure(path + ": too large: " + size + " pixels");
    Progress progress("reading " + path, 0);
    if (!reader.readRows(lx::firstRow(*image), image->rowBytes, progress))
        throw Failure(path + ": broken PNG file: " + reader.message());
    return image;
}

void writePng(const std::string &path, const LxImage &image) {
    int colourType = 0;
    switch (image.type) {
    case kLxPixelA:
        colourType = PNG_COLOR_TYPE_GRAY;
        break;
    case kLxPixelRGB:
        colourType = PNG_COLOR_TYPE_RGB;
        break;
    case kLxPixelRGBA:
        colourType = PNG_COLOR_TYPE_RGB_ALPHA;
        break;
    default:
        throw Failure(path + ": cannot write pixels of type " + std::to_string(image.type) + " as PNG");
    }
    OutputFile file(path);
    PngWriter writer;
    Progress progress("writing " + path, lx::height(image));
    if (!writer.write(file.stream(), image, colourType, progress))
        throw Failure(path + ": cannot write: " + writer.message());
    file.commit();
}

} // namespace tool
