// What of the exported object the classic boundary keeps inside.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>

#include <oxlume/LxExtras.h>
#include <oxlume/LxMem.h>

#include "sheen/Preset.h"
#include "sheen/Sheen.h"

using namespace lx;

namespace {

LxSheenLayer *layerOf(const LxSheen *sheen, int32_t layer) {
    return sheen != nullptr ? writable(sheen).layer(layer) : nullptr;
}

LxSheenDescriptor *descriptorOf(const LxSheen *sheen, uint32_t descriptor) {
    return sheen != nullptr && descriptor < 2 ? &writable(sheen).descriptors[descriptor] : nullptr;
}

bool isFinite(const LxSheenLight &light) {
    const double numbers[] = {light.azimuth,      light.elevation,         light.width,
                              light.ambient,      light.brilliance,        light.shadowSoftness,
                              light.shadowLength, light.shadowDisplacement};
    return std::all_of(std::begin(numbers), std::end(numbers), [](double n) { return std::isfinite(n); });
}

// As much of `text` as there is room for, with its ending.
void storeText(char *target, size_t bytes, std::string_view text) {
    if (target == nullptr || bytes == 0)
        return;
    const size_t length = std::min(text.size(), bytes - 1);
    std::copy_n(text.data(), length, target);
    target[length] = '\0';
}

// Puts the layers and the light of one descriptor in place of another's. The pictures stay, since callers may
// hold them; a render makes them anew.
void adopt(LxSheenDescriptor &target, LxSheenDescriptor &&source) {
    target.layers = std::move(source.layers);
    target.currentLayer = source.currentLayer;
    target.light = source.light;
    target.alphaThreshold = source.alphaThreshold;
}

} // namespace

// ---- Parameters ----

const char *LxSheen_ParameterKey(uint32_t parameter) {
    return parameter < kSheenParameterCount ? sheenParameters[parameter].key : nullptr;
}

int32_t LxSheen_ParameterIndex(const char *key) {
    const std::optional<uint32_t> index = key != nullptr ? findParameter(key) : std::nullopt;
    return index ? static_cast<int32_t>(*index) : -1;
}

double LxSheen_ParameterDefault(uint32_t parameter) {
    return parameter < kSheenParameterCount ? sheenParameters[parameter].defaultValue : 0.0;
}

// ---- Layers ----

int32_t LxSheen_SetLayerMode(LxSheen *sheen, int32_t layer, uint32_t mode) {
    LxSheenLayer *const record = layerOf(sheen, layer);
    if (record == nullptr || mode > kLxSheenSmallerInside)
        return 0;
    record->compositeMode = mode;
    return 1;
}

uint32_t LxSheen_LayerMode(const LxSheen *sheen, int32_t layer) {
    const LxSheenLayer *const record = layerOf(sheen, layer);
    return record != nullptr ? record->compositeMode : 0;
}

int32_t LxSheen_SetLayerOpacity(LxSheen *sheen, int32_t layer, double opacity) {
    LxSheenLayer *const record = layerOf(sheen, layer);
    const bool isInRange = opacity >= 0.0 && opacity <= 1.0;
    if (record == nullptr || !isInRange)
        return 0;
    record->opacity = opacity;
    return 1;
}

double LxSheen_LayerOpacity(const LxSheen *sheen, int32_t layer) {
    const LxSheenLayer *const record = layerOf(sheen, layer);
    return record != nullptr ? record->opacity : 0.0;
}

int32_t LxSheen_SetLayerEnabled(LxSheen *sheen, int32_t layer, int32_t enabled) {
    LxSheenLayer *const record = layerOf(sheen, layer);
    if (record == nullptr)
        return 0;
    record->setEnabled(enabled != 0);
    return 1;
}

int32_t LxSheen_isLayerEnabled(const LxSheen *sheen, int32_t layer) {
    const LxSheenLayer *const record = layerOf(sheen, layer);
    return record != nullptr && record->isEnabled() ? 1 : 0;
}

LxRGBA LxSheen_LayerColor(const LxSheen *sheen, int32_t layer) {
    const LxSheenLayer *const record = layerOf(sheen, layer);
    return record != nullptr ? record->color : LxRGBA_0;
}

// ---- Light ----

int32_t LxSheen_SetLight(LxSheen *sheen, uint32_t descriptor, LxSheenLight light) {
    LxSheenDescriptor *const record = descriptorOf(sheen, descriptor);
    if (record == nullptr || !isFinite(light))
        return 0;
    record->light = light;
    return 1;
}

LxSheenLight LxSheen_Light(const LxSheen *sheen, uint32_t descriptor) {
    const LxSheenDescriptor *const record = descriptorOf(sheen, descriptor);
    return record != nullptr ? record->light : LxSheenLight{};
}

int32_t LxSheen_SetAlphaThreshold(LxSheen *sheen, uint32_t descriptor, double height) {
    LxSheenDescriptor *const record = descriptorOf(sheen, descriptor);
    if (record == nullptr || !std::isfinite(height))
        return 0;
    record->alphaThreshold = height;
    return 1;
}

double LxSheen_AlphaThreshold(const LxSheen *sheen, uint32_t descriptor) {
    const LxSheenDescriptor *const record = descriptorOf(sheen, descriptor);
    return record != nullptr ? record->alphaThreshold : 0.0;
}

// ---- Between two descriptors ----

LxSheen *LxSheen_CreateBetween(double t, const LxSheen *a, uint32_t descriptorA, const LxSheen *b,
                               uint32_t descriptorB) {
    const LxSheenDescriptor *const from = descriptorOf(a, descriptorA);
    const LxSheenDescriptor *const to = descriptorOf(b, descriptorB);
    if (from == nullptr || to == nullptr || std::isnan(t))
        return nullptr;
    return guarded(static_cast<LxSheen *>(nullptr), [&] {
        auto sheen = std::make_unique<LxSheen>();
        sheen->descriptors[0] = LxSheenDescriptor(t, *from, *to);
        sheen->descriptors[1] = sheen->descriptors[0];
        return sheen.release();
    });
}

// ---- Presets ----

int32_t LxSheen_LoadPreset(LxSheen *sheen, uint32_t descriptor, const char *text, size_t length,
                           char *message, size_t messageBytes) {
    storeText(message, messageBytes, "");
    LxSheenDescriptor *const record = descriptorOf(sheen, descriptor);
    if (record == nullptr || text == nullptr)
        return 0;
    return guarded(0, [&] {
        LxSheenDescriptor loaded(record->width, record->height);
        try {
            readPreset({text, length}, loaded);
        } catch (const PresetError &error) {
            storeText(message, messageBytes, error.what());
            return 0;
        }
        adopt(*record, std::move(loaded));
        return 1;
    });
}

char *LxSheen_CreatePreset(const LxSheen *sheen, uint32_t descriptor) {
    const LxSheenDescriptor *const record = descriptorOf(sheen, descriptor);
    if (record == nullptr)
        return nullptr;
    return guarded(static_cast<char *>(nullptr), [&] { return LxMem_strdup(writePreset(*record).c_str()); });
}
