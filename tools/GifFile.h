// Animated pictures as GIF files, by giflib, with palettes by libimagequant.
#pragma once

#include <cstdint>
#include <string>

#include <oxlume/LxImage.h>

#include "tools/OutputFile.h"

struct GifFileType;

namespace tool {

// An animation that repeats for ever, written frame by frame. It appears under its name when it is finished.
// All members throw a Failure that names the file.
class GifWriter {
public:
    // Each frame is shown for `hundredths` of a second.
    GifWriter(const std::string &path, int32_t width, int32_t height, int hundredths);
    ~GifWriter();
    GifWriter(const GifWriter &) = delete;
    GifWriter &operator=(const GifWriter &) = delete;

    // A frame of the animation's size, of type kLxPixelA or kLxPixelRGB.
    void add(const LxImage &frame);
    void finish();

private:
    bool close();
    [[noreturn]] void fail() const;

    const std::string path_;
    OutputFile file_;
    const int32_t width_, height_;
    const int hundredths_;
    GifFileType *gif_ = nullptr;
};

} // namespace tool
