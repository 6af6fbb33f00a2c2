// Images of the program delete themselves.
#pragma once

#include "image/ImageHandle.h"

namespace tool {

using lx::ImageHandle;

} // namespace tool
