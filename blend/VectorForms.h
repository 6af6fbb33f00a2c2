// The steps of the pipeline, in plain bytes: one set of functions for each instruction set.
//
// "Lanes" are the bytes of pixels in the layout of the result, 1, 3 or 4 to a pixel; "planes" hold one byte
// for each pixel, weights or alphas. Functions take any alignment. They read and write exactly the bytes told
// unless a line below says that buffers are padded. A result may lie where an input of the same length lies.
#pragma once

#include <cstddef>
#include <cstdint>

#include "blend/Mode.h"

namespace lx {

// Bytes behind the last one that matters, for the functions that take padded buffers.
inline constexpr size_t vectorPadding = 64;

// Where the lane functions find the weight: told for every lane, or, in pixels of four bytes, made on the way
// of the opacity and these alphas.
enum class LaneWeight : uint8_t {
    told,
    alpha,           // b's
    smallerAlpha,    // the smaller of b's and that of `first`
    alphaMaskedOnce, // b's with the mask folded in
    alphaMaskedTwice
};

struct LaneInputs {
    const uint8_t *first; // what the function takes of a
    const uint8_t *c;     // what the result is mixed into
    const uint8_t *b;     // the second source
    bool hasAlpha;        // every fourth byte is an alpha: the larger of that of `first` and the weight
    int opacity;          // for the function
    LaneWeight weighing;
    const uint8_t *weight; // lanes, where they are told
    const uint8_t *mask;   // padded, where it is folded in
    int weightOpacity;     // where weights are made
};

struct VectorForms {
    // mix(f(first, b), c, weight) in every lane; null for modes that have no function of one component.
    void (*mix[modeCount])(uint8_t *out, const LaneInputs &in, size_t lanes);

    // b, and the larger alpha.
    void (*copy)(uint8_t *out, const LaneInputs &in, size_t lanes);

    // ((b + 1) * weight + c + 1) >> 8, the low byte. With weights made on the way, alphas are summed too,
    // that of `first` in the place of b's and the folded one of b in the place of c's; else they are left to
    // the caller.
    void (*userColor)(uint8_t *out, const LaneInputs &in, size_t lanes);

    // out where `gate` or `written` is 0, else `result`.
    void (*select)(uint8_t *out, const uint8_t *result, const uint8_t *gate, const uint8_t *written,
                   size_t lanes);

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

    // ---- Functions of three components, on pixels of four bytes; all buffers are padded ----

    // They keep b's alpha.
    void (*hsv)(uint8_t *rgba, const uint8_t *a, const uint8_t *b, Mode mode, size_t pixels);
    void (*luminance)(uint8_t *rgba, const uint8_t *b, size_t pixels);
};

// The set for the level that the library calls.
const VectorForms &vectorForms();

} // namespace lx
