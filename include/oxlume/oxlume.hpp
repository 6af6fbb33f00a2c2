/// @file
/// Oxlume for C++17: owning handles and value types over the C boundary, extras included.
///
///     #include <oxlume/oxlume.hpp>
///
///     oxlume::Image image(oxlume::PixelType::RGBA, 320, 200);
///     auto gc = image.context();
///     gc.setRenderMode(oxlume::RenderMode::Fill).setFillColor({255, 128, 0}).circle({160, 100}, 80);
///
/// - Image, Path, Gradient, Context and Sheen own what they hold, move and do not copy; copy() copies where
///   that means something. ImageRef and ContextRef are the address of what another owns, with the same calls.
/// - Point, Rect, Matrix, Color, Blend and their kin are the structures of the C boundary with operators.
/// - Every call is inline and costs what the call of the C boundary costs. get() answers the record for what
///   is not wrapped.
/// - Nothing throws but std::bad_alloc, where a declaration says so.
#ifndef OXLUME_OXLUME_HPP
#define OXLUME_OXLUME_HPP

#include <oxlume/LxLibrary.h>
#include <oxlume/cpp/Color.hpp>
#include <oxlume/cpp/Context.hpp>
#include <oxlume/cpp/Image.hpp>
#include <oxlume/cpp/Morph.hpp>
#include <oxlume/cpp/Path.hpp>
#include <oxlume/cpp/Sheen.hpp>
#include <oxlume/cpp/Values.hpp>

/// All of Oxlume.
namespace oxlume {

/// Keeps the library started while it lives. A program makes one at its start; the environment's locale
/// becomes the process's. Programs that only draw into images can do without.
class Library {
public:
    Library() noexcept { Oxlume_Init(); }
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;
    ~Library() { Oxlume_Term(); }
};

} // namespace oxlume

#endif
