// Contact sheets: what one parameter does to a picture.
#pragma once

#include <string>

#include "sheen/Descriptor.h"
#include "tools/ImageHandle.h"

namespace tool {

// The descriptor drawn at five values of a parameter of its last layer, from its minimum to its maximum, side
// by side on grey. Each picture is of the descriptor's size.
ImageHandle contactSheet(const lx::LxSheenDescriptor &descriptor, uint32_t parameter);

// The preset on which a parameter shows best: one that has what it acts on.
std::string sheetPreset(uint32_t parameter);

} // namespace tool
