// PNG files to and from images, by libpng.
#pragma once

#include <string>

#include "tools/ImageHandle.h"

namespace tool {

// Reads a PNG file as an image at the origin: grey as kLxPixelA, colour as kLxPixelRGB, and with transparency
// of any kind as kLxPixelRGBA. Palettes are looked up and 16 bits rounded to 8. Throws a Failure that names
// the file.
ImageHandle readPng(const std::string &path);

// Writes an image of type kLxPixelA (as grey), kLxPixelRGB or kLxPixelRGBA. Throws a Failure that names the
// file.
void writePng(const std::string &path, const LxImage &image);

} // namespace tool
