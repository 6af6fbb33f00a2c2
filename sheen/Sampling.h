// A layer's surface sampled into its image.
#pragma once

#include "sheen/Layer.h"

namespace lx {

// Samples the layer into its image, which is of `width` by `height`, copying by symmetry what need not be
// evaluated. Fills the layer's bounds and prepares it.
void sampleLayer(LxSheenLayer &layer, int32_t width, int32_t height);

} // namespace lx
