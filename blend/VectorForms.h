// The steps of the pipeline, in plain bytes: one set of functions for each instruction set.
//
// "Lanes" are the bytes of pixels in the layout of the result, 1, 3 or 4 to a pixel; "planes" hold one byte
// for each pixel, weights or alphas. Functions take any alignment. They read and write exactly the bytes told
// unless a line below says that buffers are padded. A result may lie where an input of the same length lies.
#pragma once

#include <cstddef>
#include <cstdint>

#include "blend/Cell.h"
#include "blend/Mode.h"

namespace lx {

// Bytes behind the last one that matters, for the functions that take padded buffers.
inline constexpr size_t vectorPadding = 64;

struct LaneInputs {
    const uint8_t *first;  // what the function takes of a
    const uint8_t *c;      // what the result is mixed into
    const uint8_t *b;      // the second source
    bool hasAlpha;         // every fourth byte is an alpha: the larger of that of `first` and the weight
    int opacity;           // for the function
    const uint8_t *weight; // lanes; null where all are 255
};

// Where the pixel functions find the weight.
enum class PixelWeight : uint8_t {
    full,     // 255 in every pixel
    constant, // the opacity in every pixel
    alpha,    // b's alpha, which is the weight at full opacity; for the modes that weigh by the smaller
              // alpha, that
    alphaAndOpacity, // made of the opacity and that alpha
    maskedOnce,      // of the opacity and b's alpha with a mask folded in
    maskedTwice,     // the same with the mask folded in once more, and in between the smaller alpha
    told             // in a plane
};

// Whole pixels in any layout, blended into a result of three or four bytes in one pass.
struct PixelInputs {
    const uint8_t *a, *b;
    Layout outLayout, aLayout, bLayout;
    bool opaqueResult; // alphas of the result become 255
    bool firstOfA;     // the function takes component 0 of a for all
    bool keeps;        // pixels of weight 0, or with a plane of gates those of gate 0, stay as they are
    PixelWeight weighing;
    int opacity;            // for the function
    int weightOpacity;      // for the weights
    const uint8_t *weights; // padded planes, where they are told
    const uint8_t *gates;
    const uint8_t *mask; // where it is folded in
    uint8_t colour[4];   // of the modes with a colour of their own
    size_t pixelsBehind; // that may be read behind those told, in a and b
};

struct VectorForms {
    // mix(f(first, b), c, weight) in every lane; null for modes that have no function of one component.
    void (*mix[modeCount])(uint8_t *out, const LaneInputs &in, size_t lanes);

    // b, and the larger alpha.
    void (*copy)(uint8_t *out, const LaneInputs &in, size_t lanes);

    // ((b + 1) * weight + c + 1) >> 8, the low byte; alphas are left to the caller.
    void (*userColor)(uint8_t *out, const LaneInputs &in, size_t lanes);

    // out where `gate` or `written` is 0, else `result`.
    void (*select)(uint8_t *out, const uint8_t *result, const uint8_t *gate, const uint8_t *written,
                   size_t lanes);

    // All that a mode does to pixels of which every component is written; null for the modes that write a
    // colour without a weight, and for those of which `tables` or `colours` make a new b first.
    void (*pixels[modeCount])(uint8_t *out, const PixelInputs &in, size_t pixels);

    // Whether results of one byte, too, are theirs where b's alpha weighs.
    bool pixelsMakeSingleBytes;

    // The functions that are tables of b or of pairs, over lanes; where pixels have an alpha, that is b's.
    // Null for the other modes.
    void (*tables[modeCount])(uint8_t *lanes, const uint8_t *first, const uint8_t *b, bool hasAlpha,
                              size_t count);

    // ---- Planes; all buffers are padded, but for the pixels that a component is taken from ----

    // One component of pixels of three or four bytes.
    void (*component)(uint8_t *plane, const uint8_t *pixels, size_t step, size_t number, size_t count);
    void (*fold)(uint8_t *plane, const uint8_t *alpha, const uint8_t *mask, size_t pixels);
    void (*smaller)(uint8_t *plane, const uint8_t *other, size_t pixels);
    void (*weights)(uint8_t *plane, const uint8_t *alpha, int opacity, size_t pixels);
    void (*gate)(uint8_t *plane, const uint8_t *mask, size_t pixels); // 0 where the mask is

    // A byte of a plane into all lanes of its pixel; the result is padded. The last form makes the alpha 255
    // unless the byte is 0.
    void (*spread3)(uint8_t *lanes, const uint8_t *plane, size_t pixels);
    void (*spread4)(uint8_t *lanes, const uint8_t *plane, size_t pixels);
    void (*spreadOpaque)(uint8_t *lanes, const uint8_t *plane, size_t pixels);

    // ---- Layouts; the result is padded ----

    void (*rgbToRgba)(uint8_t *rgba, const uint8_t *rgb, size_t pixels); // alpha 255
    void (*rgbaToRgb)(uint8_t *rgb, const uint8_t *rgba, size_t pixels);
    void (*aToRgba)(uint8_t *rgba, const uint8_t *a, size_t pixels);         // alpha 255
    void (*firstOfRgba)(uint8_t *rgba, const uint8_t *pixels, size_t count); // component 0 in all three

    // Functions of three components, on pixels of four bytes, with b's alpha; null for the other modes.
    void (*colours[modeCount])(uint8_t *rgba, const uint8_t *a, const uint8_t *b, size_t pixels);
};

// The set for the level that the library calls.
const VectorForms &vectorForms();

} // namespace lx
