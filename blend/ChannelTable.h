// What each channel selects in each cell.
#pragma once

#include <cstdint>

#include "blend/Cell.h"
#include "blend/Mode.h"

namespace lx {

// What the weight of a functional mode is made of, besides the mask.
enum class Weighing : uint8_t {
    opacity,      // the opacity, as b has no alpha
    opacityAlone, // the opacity, whatever the alphas of a and b
    alpha,        // the opacity and b's alpha
    zero          // always 0: nothing is drawn, but with a mask the pixel becomes a
};

// What becomes of the result's alpha.
enum class AlphaRule : uint8_t {
    untouched,
    larger, // the larger of a's alpha and the weight; the modes that have a rule of their own follow that
    opaque  // 255
};

struct Rule {
    uint8_t components = 0; // bit i: component i of the result is blended
    Weighing weight = Weighing::opacity;
    uint8_t source = 0; // for a result of one byte, the component of b that goes into it
    AlphaRule alpha = AlphaRule::untouched;
    uint8_t alphaAt = 3; // the byte of the result that the alpha goes into

    constexpr bool isEmpty() const { return components == 0 && alpha == AlphaRule::untouched; }
};

// The rule of a cell for a channel and a mode; an empty rule where nothing is drawn.
Rule ruleOf(Cell cell, Channel channel, Mode mode);

} // namespace lx
