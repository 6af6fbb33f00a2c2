#include "sheen/Descriptor.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "image/Image.h"
#include "sheen/Compositing.h"
#include "sheen/Lighting.h"
#include "sheen/Sampling.h"

namespace lx {
namespace {

ImageHandle imageOf(LxPixelType type, int32_t width, int32_t height, bool clear, bool flipped) {
    return ImageHandle(createImage(type, {0, 0, width, height}, clear, flipped));
}

void clearImage(LxImage *image) {
    if (image != nullptr)
        std::fill_n(static_cast<uint8_t *>(LxImage_Data(image)), LxImage_DataSize(image), uint8_t{0});
}

void fillImage(LxImage &image, LxRGBA color) {
    for (int32_t y = 0; y < height(image); ++y)
        std::fill_n(reinterpret_cast<LxRGBA *>(rowAddress(image, y)), lx::width(image), color);
}

// A copy of a layer's heights, or null.
ImageHandle copyOfHeights(const LxImage &heights) {
    ImageHandle copy = imageOf(kLxPixelF, width(heights), height(heights), false, false);
    if (copy != nullptr)
        std::copy_n(static_cast<const uint8_t *>(LxImage_ConstData(&heights)), LxImage_DataSize(&heights),
                    static_cast<uint8_t *>(LxImage_Data(copy.get())));
    return copy;
}

} // namespace

LxSheenDescriptor::LxSheenDescriptor(int32_t newWidth, int32_t newHeight) {
    width = std::max(newWidth, 1);
    height = std::max(newHeight, 1);
}

LxSheenDescriptor::LxSheenDescriptor(const LxSheenDescriptor &other) {
    *this = other;
}

LxSheenDescriptor &LxSheenDescriptor::operator=(const LxSheenDescriptor &other) {
    if (this == &other)
        return *this;
    deleteImages();
    layers = other.layers;
    currentLayer = other.currentLayer;
    width = other.width;
    height = other.height;
    light = other.light;
    scale = other.scale;
    blurRadius = other.blurRadius;
    blurEnabled = other.blurEnabled;
    alphaThreshold = other.alphaThreshold;
    std::copy(std::begin(other.reservedBox), std::end(other.reservedBox), reservedBox);
    return *this;
}

void LxSheenDescriptor::Reset() {
    *this = LxSheenDescriptor(1, 1);
}

void LxSheenDescriptor::deleteImages() {
    floatImage.reset();
    colorImage.reset();
    image.reset();
    replaced_.clear();
}

void LxSheenDescriptor::AddLayer(const LxSheenLayer &layer) {
    layers.push_back(layer);
    currentLayer = LayerCount() - 1;
}

void LxSheenDescriptor::RemoveLayer(int32_t index) {
    if (!isIndex(index))
        return;
    for (int32_t i = index; i + 1 < LayerCount(); ++i)
        *Layer(i) = *Layer(i + 1);
    layers.pop_back();
    currentLayer = LayerCount() - 1;
}

void LxSheenDescriptor::RemoveAllLayers() {
    layers.clear();
    currentLayer = -1;
}

LxSheenLayer *LxSheenDescriptor::Layer(int32_t index) {
    return isIndex(index) ? &layers[static_cast<size_t>(index)] : nullptr;
}

void LxSheenDescriptor::SetCurrentLayer(int32_t index) {
    if (isIndex(index))
        currentLayer = index;
}

void LxSheenDescriptor::SetScale(double newScale) {
    scale = newScale > 1.0 ? 1.0 : newScale >= 0.01 ? newScale : 0.01;
    deleteImages();
    Render();
}

void LxSheenDescriptor::SetSize(int32_t size, double newScale) {
    width = size;
    height = size;
    SetScale(newScale);
}

// The steps of a render: each layer is sampled, then each is composited, then the picture is lit.
void LxSheenDescriptor::tellStep(int32_t done) const {
    if (onRenderStep)
        onRenderStep(done, 2 * LayerCount() + 1);
}

// Answers false if an image cannot be made.
bool LxSheenDescriptor::sampleLayers() {
    int32_t step = 0;
    for (LxSheenLayer &layer : layers) {
        tellStep(step++);
        const bool isMissing = layer.isEnabled() && layer.image == nullptr;
        if (!isMissing && layer.prepared)
            continue;
        if (layer.image == nullptr)
            layer.image = imageOf(kLxPixelF, width, height, false, false);
        if (layer.image == nullptr)
            return false;
        sampleLayer(layer, width, height);
    }
    return true;
}

int32_t LxSheenDescriptor::Render() {
    if (layers.empty())
        return 1;
    if (colorImage == nullptr) {
        colorImage = imageOf(kLxPixelRGBA, width, height, false, true);
        for (LxSheenLayer &layer : layers)
            layer.image.reset();
    }
    if (floatImage == nullptr)
        floatImage = imageOf(kLxPixelF, width, height, true, true);
    if (colorImage == nullptr) {
        deleteImages();
        return 0;
    }
    if (!sampleLayers())
        return 0;
    const auto first = std::find_if(layers.begin(), layers.end(),
                                    [](const LxSheenLayer &layer) { return layer.isEnabled(); });
    if (first == layers.end()) {
        // The images stay, so that a caller who holds one sees it empty.
        for (LxImage *cleared : {floatImage.get(), colorImage.get(), image.get()})
            clearImage(cleared);
        return 0;
    }
    floatImage = copyOfHeights(*first->image);
    if (floatImage == nullptr)
        return 0;
    fillImage(*colorImage, first->color);
    for (auto layer = std::next(first); layer != layers.end(); ++layer) {
        tellStep(LayerCount() + static_cast<int32_t>(layer - layers.begin()));
        if (layer->isEnabled())
            compositeLayer(*layer, *floatImage, *colorImage);
    }
    tellStep(2 * LayerCount());
    ImageHandle lit = litPicture(*this);
    if (lit == nullptr)
        return 0;
    if (image != nullptr)
        replaced_.push_back(std::move(image));
    image = std::move(lit);
    return 1;
}

void LxSheenDescriptor::LayerBounds(int32_t index, LxRectD &result) const {
    if (isIndex(index))
        result = layers[static_cast<size_t>(index)].bounds;
}

void LxSheenDescriptor::SwapLayers(int32_t from, int32_t to) {
    if (from == to || !isIndex(from) || !isIndex(to))
        return;
    const LxSheenLayer kept = *Layer(from);
    *Layer(from) = *Layer(to);
    *Layer(to) = kept;
    currentLayer = to;
}

int32_t LxSheenDescriptor::LayerAt(LxPointD point) {
    if (!(point.x > 0.0 && point.y > 0.0 && point.x < width && point.y < height))
        return -1;
    const double x = point.x / width;
    const double y = point.y / height;
    const auto first = std::find_if(layers.begin(), layers.end(),
                                    [](const LxSheenLayer &layer) { return layer.isEnabled(); });
    if (first == layers.end())
        return -1;
    double running = 0.0;
    first->Evaluate(&running, &x, &y);
    double best = running > -1.0 ? running : -1.0;
    int32_t index = running > -1.0 ? 0 : -1;
    // On purpose: layers count from the first enabled one.
    int32_t count = 1;
    for (auto layer = std::next(first); layer != layers.end(); ++layer, ++count) {
        if (!layer->isEnabled())
            continue;
        double height = 0.0;
        layer->Evaluate(&height, &x, &y);
        running = compositeHeight(layer->compositeMode, running, height);
        if (running > best) {
            best = running;
            index = count;
        }
    }
    return index;
}

} // namespace lx
