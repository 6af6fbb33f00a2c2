// The 44 modes and six channels by their public numbers, and what a kernel has to know of each mode.
#pragma once

#include <cstdint>

namespace lx {

enum class Mode : uint8_t {
    clear,
    src,
    srcOver,
    dstOver,
    srcIn,
    dstIn,
    srcOut,
    dstOut,
    multiply,
    screen,
    overlay,
    divide,
    dodge,
    burn,
    add,
    subtract,
    difference,
    darken,
    lighten,
    softLight,
    hardLight,
    hue,
    saturation,
    value,
    color,
    grayscale,
    userColor,
    logicalNot,
    bitOr,
    bitXor,
    select,
    select2,
    flip,
    dissolve,
    noName01,
    noName02,
    noName03,
    noName04,
    noName05,
    noName06,
    noName07,
    noName08,
    noName09,
    noName10
};
inline constexpr int modeCount = 44;

enum class Channel : uint8_t { red = 1, green, blue, alpha, rgb, rgba };
inline constexpr int channelCount = 6;

// How a mode makes its result.
enum class Family : uint8_t {
    fixed,      // writes a colour of its own, and the opacity as alpha; has no weight
    copy,       // writes b's colour at any opacity; the weight reaches only alpha
    functional, // a function of one component of each source, mixed into a by the weight
    constant,   // a colour of its own, mixed into a by the weight
    hsv,        // a function of three components of each source, mixed into a by the weight
    grayscale,  // b's luminance, mixed into a by the weight
    dstOver,    // a mixed into b
    userColor   // a sum of its own instead of the mix
};

// Which alpha the weight of a mode comes from.
enum class WeightSource : uint8_t {
    b,       // b's
    a,       // a's; a mask only gates
    smaller, // the smaller of both
};

// A function of one component of each source. Only NoName04 looks at the opacity.
using ComponentFunction = uint8_t (*)(int a, int b, int opacity);

struct ModeTraits {
    Mode mode;
    const char *name;
    Family family;
    ComponentFunction function; // of the functional modes, else null
    WeightSource weight = WeightSource::b;
    bool foldsMaskOnce = false; // where the weight is from b's alpha; the others fold the mask in twice
    uint8_t colour[3] = {};     // of the fixed and constant modes; a result of one byte gets the first
};

// The row of `mode`, which must be below modeCount.
const ModeTraits &traitsOf(Mode mode);

// The names at the boundary: of -1 to 43 and of 1 to 6, else "noname".
const char *modeName(int32_t mode);
const char *channelName(int32_t channel);

} // namespace lx
