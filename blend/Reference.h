// The definition of blending: one pixel after the other, as the rules say. It serves every cell, mode and
// channel; the vector forms agree with it to the bit.
#pragma once

#include <cstdint>

#include "blend/Plan.h"

namespace lx {

// Blends a row of `width` pixels. `mask` is null or holds one byte for each. `plan` is not empty.
void blendRowByRule(const Plan &plan, uint8_t *out, const uint8_t *a, const uint8_t *b, const uint8_t *mask,
                    uint32_t width);

} // namespace lx
