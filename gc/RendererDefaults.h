// The operations that every renderer starts from.
#pragma once

#include "gc/Renderer.h"

namespace lx {

// Shapes become a path for the slot `path`, whole-pixel lines and frames a walk over the slot `pixel`, and
// the rest does nothing.
extern const LxRenderer defaultRenderer;

} // namespace lx
