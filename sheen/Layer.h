// A layer: a surface, how it looks and how it meets the layers under it, and its sampled heights.
#pragma once

#include <string>

#include "image/ImageHandle.h"
#include "sheen/Surface.h"

namespace lx {

// How a layer's height `b` meets the height `a` under it. Numbers beyond these leave the pixel as it is.
enum CompositeMode : uint32_t {
    compositeAdd = 0,
    compositeSubtract = 1,
    compositeMultiply = 2,
    compositePaint = 3, // the height stays and only the colour is laid on
    compositeLarger = 4,
    compositeSmaller = 5,
    compositeAddInside = 6, // inside: where `a` is not 0
    compositeSubtractInside = 7,
    compositeMultiplyInside = 8,
    compositePaintAgain = 9, // as compositePaint
    compositeLargerInside = 10,
    compositeSmallerInside = 11,
};

class LxSheenLayer : public LxSheenSurface {
public:
    LxSheenLayer() = default;
    explicit LxSheenLayer(const char *layerName) : name(layerName) {}
    LxSheenLayer(const LxSheenLayer &other) : LxSheenLayer() { *this = other; }
    // Copies everything except the image, which is dropped here and sampled anew at the next render.
    LxSheenLayer &operator=(const LxSheenLayer &other);

    // Back to the defaults; the colour becomes grey, unlike a new layer's white. The name stays.
    virtual void Reset();

    bool isEnabled() const { return (status[0] & 1) != 0; }
    void setEnabled(bool enabled) { status[0] = static_cast<uint8_t>((status[0] & ~1) | (enabled ? 1 : 0)); }

    uint32_t reserved = 0; // copied, not read
    uint8_t status[3] = {1, 0, 0};
    std::string name;
    uint32_t compositeMode = compositeAdd;
    double opacity = 1.0; // of the colour
    LxRGBA color = {255, 255, 255, 255};
    ImageHandle image;             // kLxPixelF, of the descriptor's size
    LxRectD bounds = {0, 0, 0, 0}; // the pixels with a height above 0, far sides exclusive
};

} // namespace lx
