// The fast form of a kernel: short runs of pixels taken through the vector forms in buffers that stay in the
// first-level cache.
//
// Where a mode writes whole pixels of three or four bytes, or single bytes by b's alpha, one vector function
// does it all: it loads each operand from its layout, makes the weight or takes it from a plane, and stores.
// The rest goes by steps. A run is brought into "lanes", the bytes of the result's layout: a as it is mixed
// into, what the function takes of a, b, and the weight in every byte of its pixel. One vector function then
// makes all lanes, whatever the layout, and what may not be written is kept out by a selection at the end.
// Modes that are no function of one component first make a new b out of their operands and go on as SrcOver
// does. Where a picture already has the layout of the result its own memory serves as lanes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "blend/Plan.h"
#include "blend/VectorForms.h"

namespace lx {

class Pipeline {
public:
    // For rows of `width` pixels at most. `plan` is one that the pipeline serves, and outlives it.
    Pipeline(const Plan &plan, bool masked, uint32_t width);
    Pipeline(const Pipeline &) = delete;
    Pipeline &operator=(const Pipeline &) = delete;

    // Whether there is a form for the plan, which is not empty, and whether it pays for so many pixels.
    static bool serves(const Plan &plan, uint32_t width, uint32_t height);

    // Blends a row, as blendRowByRule does.
    void blendRow(uint8_t *out, const uint8_t *a, const uint8_t *b, const uint8_t *mask, uint32_t width);

private:
    static constexpr size_t run = 512; // pixels; the buffers of the common cells fill half of 32 kB

    struct Plane {
        alignas(64) uint8_t bytes[run + vectorPadding];
    };
    struct Lanes {
        alignas(64) uint8_t bytes[4 * run + vectorPadding];
    };

    // A run's operands. `mask` is null or, but for pixels that weigh by it on the way, a copy in a padded
    // buffer. `behind` is the number of pixels that its row has behind it.
    struct Run {
        uint8_t *out;
        const uint8_t *a, *b, *mask;
        size_t pixels, lanes, behind;
    };

    void blendPixels(const Run &run);
    void blendLanes(const Run &run);
    void blendFixed(const Run &run);
    void combine(const Run &run, LaneInputs in, uint8_t *result);
    void makeAlphas(const Run &run);
    void prepareSelection();
    void select(const Run &run, const uint8_t *result, const uint8_t *weight);

    const uint8_t *inLayout(Layout layout, Lanes &buffer, const uint8_t *pixels, size_t count,
                            size_t component);
    const uint8_t *firstLanes(const Run &run, const uint8_t *c);
    const uint8_t *sourceLanes(const Run &run, const uint8_t *first);
    const uint8_t *madeSource(const Run &run);
    bool makesSourceFirst() const;
    bool takesFirstOfA() const;
    const uint8_t *inRgba(Layout layout, Lanes &buffer, const uint8_t *pixels, size_t count);
    const uint8_t *madeOfColours(const Run &run);

    const uint8_t *alphaPlane(Layout layout, Plane &buffer, const uint8_t *pixels, size_t count);
    void makeWeights(const Run &run);
    void alphaWeights(const Run &run);
    void dissolve(const Run &run);
    const uint8_t *spread(Lanes &buffer, const uint8_t *plane, bool opaqueAlpha, size_t pixels);

    const Plan &plan_;
    const VectorForms &forms_;
    const bool masked_;
    const size_t step_;      // bytes of a pixel of the result
    const bool writesAll_;   // every byte of a pixel that is written at all
    const bool skipsAtZero_; // a weight of 0 leaves the pixel alone
    const bool copiesRows_;
    const bool wholePixels_; // goes through the pixel functions
    const PixelWeight weighing_;
    bool selectionIsPrepared_ = false;
    const uint8_t *constantWeights_ = nullptr; // lanes, where one weight holds for the whole call

    Lanes a_, first_, b_, made_, rgbaA_, rgbaB_, weightLanes_, gateLanes_, writtenLanes_, colourLanes_;
    Plane mask_, weights_, alphaA_, alphaB_, alphas_;
};

} // namespace lx
