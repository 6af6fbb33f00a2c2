// The exported object: two descriptors and a store of layers.

#include "sheen/Sheen.h"

#include <algorithm>

using namespace lx;

namespace {

const char *orEmpty(const char *name) {
    return name != nullptr ? name : "";
}

template <class Value>
void storeAt(Value *target, Value value) {
    if (target != nullptr)
        *target = value;
}

} // namespace

LxSheen *LxSheen_Create(int32_t size) {
    return guarded(static_cast<LxSheen *>(nullptr), [&] {
        auto sheen = std::make_unique<LxSheen>();
        sheen->addLayer(LxSheenLayer("no name"));
        sheen->setScale(1.0);
        sheen->setSize(size);
        return sheen.release();
    });
}

void LxSheen_Delete(LxSheen *sheen) {
    delete sheen;
}

int32_t LxSheen_AddLayer(LxSheen *sheen, const char *name) {
    if (sheen == nullptr)
        return 0;
    return guarded(-1, [&] {
        sheen->addLayer(LxSheenLayer(orEmpty(name)));
        return sheen->descriptors[0].LayerCount() - 1;
    });
}

void *LxSheen_RemoveLayer(LxSheen *sheen, int32_t layer) {
    if (sheen == nullptr || sheen->descriptors[0].Layer(layer) == nullptr)
        return nullptr;
    return sheen->descriptors[1].Layer(layer);
}

int32_t LxSheen_NumberOfLayers(const LxSheen *sheen) {
    return sheen != nullptr ? writable(sheen).current().LayerCount() : 0;
}

void LxSheen_SetCurrentDescriptor(LxSheen *sheen, uint32_t descriptor) {
    if (sheen != nullptr && descriptor < 2)
        sheen->currentDescriptor = descriptor;
}

uint32_t LxSheen_CurrentDescriptor(const LxSheen *sheen) {
    return sheen != nullptr ? sheen->currentDescriptor : 0;
}

int32_t LxSheen_SetCurrentLayer(LxSheen *sheen, int32_t layer) {
    if (sheen == nullptr)
        return 0;
    sheen->current().SetCurrentLayer(layer);
    return sheen->currentLayer = sheen->current().currentLayer;
}

int32_t LxSheen_CurrentLayer(const LxSheen *sheen) {
    return sheen != nullptr ? sheen->descriptors[0].currentLayer : 0;
}

void LxSheen_SetLayerValue(LxSheen *sheen, int32_t layer, uint32_t parameter, double value) {
    LxSheenLayer *const record = sheen != nullptr ? sheen->layer(layer) : nullptr;
    if (record != nullptr && parameter < kSheenParameterCount)
        record->SetValue(parameter, value);
}

double LxSheen_LayerValue(const LxSheen *sheen, int32_t layer, uint32_t parameter) {
    const LxSheenLayer *const record = sheen != nullptr ? writable(sheen).layer(layer) : nullptr;
    return record != nullptr && parameter < kSheenParameterCount ? record->Value(parameter) : 0.0;
}

const char *LxSheen_LayerValueParameter(const LxSheen *sheen, int32_t layer, uint32_t parameter,
                                        double *value, double *minimum, double *maximum,
                                        int32_t *continuous) {
    const LxSheenLayer *const record = sheen != nullptr ? writable(sheen).layer(layer) : nullptr;
    if (record == nullptr || parameter >= kSheenParameterCount)
        return nullptr;
    const double low = LxSheenLayer::Minimum(parameter);
    const double high = LxSheenLayer::Maximum(parameter);
    const double stored = record->Value(parameter);
    storeAt(value, stored < low ? low : stored > high ? high : stored);
    storeAt(minimum, low);
    storeAt(maximum, high);
    storeAt(continuous, LxSheenLayer::Step(parameter) == 0.0 ? 1 : 0);
    return LxSheenLayer::Label(parameter);
}

void LxSheen_SetLayerColor(LxSheen *sheen, int32_t layer, LxRGBA color) {
    LxSheenLayer *const record = sheen != nullptr ? sheen->layer(layer) : nullptr;
    if (record != nullptr)
        record->color = color;
}

void LxSheen_SetLayerName(LxSheen *sheen, int32_t layer, const char *name) {
    LxSheenLayer *const record = sheen != nullptr ? sheen->layer(layer) : nullptr;
    if (record != nullptr)
        guarded([&] { record->name = orEmpty(name); });
}

const char *LxSheen_LayerName(const LxSheen *sheen, int32_t layer) {
    const LxSheenLayer *const record = sheen != nullptr ? writable(sheen).layer(layer) : nullptr;
    return record != nullptr ? record->name.c_str() : nullptr;
}

void LxSheen_SetSize(LxSheen *sheen, int32_t size) {
    if (sheen != nullptr)
        guarded([&] { sheen->setSize(size); });
}

int32_t LxSheen_Size(const LxSheen *sheen) {
    return sheen != nullptr ? sheen->descriptors[0].width : 0;
}

void LxSheen_SetScale(LxSheen *sheen, double scale) {
    if (sheen != nullptr)
        guarded([&] { sheen->setScale(scale); });
}

double LxSheen_Scale(const LxSheen *sheen) {
    return sheen != nullptr ? sheen->descriptors[0].scale : 0.0;
}

void LxSheen_SetInterpolationStep(LxSheen *sheen, int32_t steps) {
    if (sheen == nullptr || steps == static_cast<int64_t>(sheen->interpolationLayers.size()))
        return;
    std::vector<LxSheenLayer> &store = sheen->interpolationLayers;
    store = {};
    guarded([&] { store.resize(static_cast<size_t>(std::max(steps, 0))); });
}

LxImage *LxSheen_RenderDescriptor(LxSheen *sheen, uint32_t descriptor, int32_t render) {
    if (sheen == nullptr || descriptor >= 2)
        return nullptr;
    LxSheenDescriptor &rendered = sheen->descriptors[descriptor];
    if (render != 0)
        guarded([&] { rendered.Render(); });
    return rendered.image.get();
}

LxImage *LxSheen_FloatImage(LxSheen *sheen) {
    return sheen != nullptr ? sheen->current().floatImage.get() : nullptr;
}

LxImage *LxSheen_Image(LxSheen *sheen) {
    return sheen != nullptr ? sheen->current().image.get() : nullptr;
}
