// Animated pictures as GIF files, by giflib, with palettes by libimagequant.
#pragma once

#include <string>
#include <vector>

#include <oxlume/LxImage.h>

namespace tool {

// Writes frames of one size, of type kLxPixelA or kLxPixelRGB in tightly packed rows, as an animation that
// repeats for ever, each shown for `hundredths` of a second. Throws a Failure that names the file.
void writeGif(const std::string &path, const std::vector<const LxImage *> &frames, int hundredths);

} // namespace tool
