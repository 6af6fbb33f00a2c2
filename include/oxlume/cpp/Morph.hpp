/// @file
/// Warping pictures by pairs of lines.
#ifndef OXLUME_CPP_MORPH_HPP
#define OXLUME_CPP_MORPH_HPP

#include <oxlume/LxExtras.h>
#include <oxlume/cpp/Image.hpp>
#include <oxlume/cpp/Values.hpp>

namespace oxlume {

/// A control line, in pixels of the picture.
struct MorphLine : LxMorphLine {
    /// The line between two points.
    MorphLine(IntPoint from, IntPoint to) noexcept : LxMorphLine{LxMorphLine(from.x, from.y, to.x, to.y)} {}
};

/// Warps `source` into `destination`, as LxMorph_Frame: lines that have gone `t` of the way from `from` to
/// `to`, arrays of `count`. False where the images do not match, and for lack of memory.
inline bool morph(const ImageRef &source, ImageRef destination, const MorphLine *from, const MorphLine *to,
                  int32_t count, double t) noexcept {
    return LxMorph_Frame(source.get(), destination.get(), from, to, count, t) != 0;
}

/// The same with containers of MorphLine that lie in one piece, such as std::vector. False if their sizes
/// differ.
template <class Lines>
bool morph(const ImageRef &source, ImageRef destination, const Lines &from, const Lines &to,
           double t) noexcept {
    return from.size() == to.size() && from.size() <= INT32_MAX &&
           morph(source, destination, from.data(), to.data(), static_cast<int32_t>(from.size()), t);
}

} // namespace oxlume

#endif
