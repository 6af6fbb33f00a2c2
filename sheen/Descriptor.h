// A descriptor: a stack of layers, bottom first, and the pictures made of them.
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include <oxlume/LxExtras.h>

#include "sheen/Layer.h"

namespace lx {

// The light of the last pass. The render reads azimuth, elevation, width, ambient, brilliance and
// shadowDisplacement; the others are only carried.
constexpr LxSheenLight defaultLight = {.azimuth = 2.356194490192345,
                                       .elevation = 0.7853981633974483,
                                       .width = 255.0,
                                       .ambient = 0.20000000298023224,
                                       .brilliance = 1.0,
                                       .color = {255, 255, 255, 255},
                                       .shadowSoftness = 7.0,
                                       .shadowLength = 10.0,
                                       .shadowDisplacement = 0.0,
                                       .shadowOpacity = 130,
                                       .shadowStep = 5};

class LxSheenDescriptor {
public:
    // Sizes below 2 become 1.
    LxSheenDescriptor(int32_t width, int32_t height);
    // Copies everything but the pictures.
    LxSheenDescriptor(const LxSheenDescriptor &other);
    LxSheenDescriptor &operator=(const LxSheenDescriptor &other);
    // The blend of two descriptors at `t`, held to 0..1: the layers of `a`, on the way to those of `b`.
    LxSheenDescriptor(double t, const LxSheenDescriptor &a, const LxSheenDescriptor &b);
    virtual ~LxSheenDescriptor() = default;

    // Back to a new descriptor of 1 by 1, without layers.
    void Reset();

    // Appends a copy and makes it current.
    virtual void AddLayer(const LxSheenLayer &layer);
    // Moves the later layers down by assignment and makes the new last one current. Ignores an index out of
    // range.
    virtual void RemoveLayer(int32_t index);
    virtual void RemoveAllLayers();

    int32_t LayerCount() const { return static_cast<int32_t>(layers.size()); }
    LxSheenLayer *Layer(int32_t index); // null when out of range
    LxSheenLayer *CurrentLayerRecord() { return Layer(currentLayer); }
    void SetCurrentLayer(int32_t index); // ignores an index out of range

    // Both drop the pictures and render. The scale is held to 0.01..1.
    void SetScale(double newScale);
    void SetSize(int32_t size, double newScale);

    // Samples what is dirty, composites, lights. Answers 1 when a picture stands, else 0.
    int32_t Render();

    // Told before each long step of a render how many of how many are done, if it is set. Not copied.
    std::function<void(int32_t done, int32_t steps)> onRenderStep;

    // Copies the layer's bounds; leaves `result` alone for an index out of range.
    void LayerBounds(int32_t index, LxRectD &result) const;
    // Exchanges two different layers and makes `to` current. Both are sampled anew.
    void SwapLayers(int32_t from, int32_t to);
    // The layer that shows at a pixel, counted from the first enabled one, or -1.
    int32_t LayerAt(LxPointD point);

    // A layer never moves in memory while it lives, so its name stays where it is when others are added.
    std::deque<LxSheenLayer> layers;
    ImageHandle floatImage; // kLxPixelF: the composite heights
    ImageHandle colorImage; // kLxPixelRGBA: the composite colours before lighting
    ImageHandle image;      // kLxPixelRGBA: the lit picture
    int32_t currentLayer = -1;
    int32_t width = 1, height = 1;
    LxSheenLight light = defaultLight;
    double scale = 1.0;                           // reported only
    double blurRadius = 2.75;                     // stored only
    uint8_t blurEnabled = 0;                      // stored only
    double alphaThreshold = 0.009999999776482582; // the height above which the lit picture is opaque
    double reservedBox[4] = {0.0, 0.0, 0.0, 0.0}; // copied, not read

private:
    bool isIndex(int32_t index) const { return index >= 0 && index < LayerCount(); }
    void deleteImages();
    bool sampleLayers();
    void tellStep(int32_t done) const;

    // Pictures that renders replaced. Callers may still hold them, so they live until the next change of size
    // or scale.
    std::vector<ImageHandle> replaced_;
};

} // namespace lx
