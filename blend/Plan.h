// All that a kernel decides before it walks pixels.
#pragma once

#include <oxlume/LxBlend.h>

#include "blend/Cell.h"
#include "blend/ChannelTable.h"
#include "blend/Mode.h"

namespace lx {

struct Plan {
    Cell cell;
    Rule rule;
    const ModeTraits *mode;
    int opacity;
    bool componentwise; // Grayscale on a single channel: b's component instead of the luminance

    // Nothing will be drawn, whatever the pixels.
    bool isEmpty() const { return mode == nullptr; }

    // The opacity that enters the weight. On purpose: NoName04 spends the opacity on its curve and weighs by
    // 255.
    int weightOpacity() const { return mode->mode == Mode::noName04 ? 255 : opacity; }

    // Whether a weight of 0 leaves the pixel alone.
    bool skipsAtZero() const;
};

// Plans a call of a kernel; empty where the blend draws nothing in this cell.
Plan planOf(Cell cell, const LxBlend &blend, bool masked);

} // namespace lx
