// Sheens: megapixels a second of sampling, compositing and lighting, beside the plain forms of the same
// formulas built with the same flags, and what a change to one layer of ten costs.

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "image/Image.h"
#include "sheen/Compositing.h"
#include "sheen/Descriptor.h"
#include "sheen/Lighting.h"
#include "sheen/SampleRow.h"
#include "sheen/Sampling.h"

namespace {

using namespace lx;

struct Setting {
    SheenIndex parameter;
    double value;
};

struct Case {
    const char *name;
    std::vector<Setting> settings;
};

const std::vector<Case> &cases() {
    static const std::vector<Case> all = {
        {"default", {}},
        {"circle", {{kSymmetry, 0}}},
        {"turned", {{kRotation, 30}}},
        {"curves", {{kHorCurve, 0.5}, {kVertCurve, -0.4}, {kCentralArch, 0.5}}},
        {"height noise", {{kNoiseAmount, 0.5}}},
        {"fine noise", {{kNoiseAmount, 0.5}, {kNoiseZoom, -20}}},
        {"turbulence", {{kNoiseAmount, 0.5}, {kNoiseFreqMod, 0.7}}},
        {"negative turbulence", {{kNoiseAmount, 0.5}, {kNoiseFreqMod, -0.7}}},
        {"edge noise", {{kNoiseHorCurve, 0.5}, {kNoiseVertCurve, 0.5}}},
        {"five with swirl", {{kSymmetry, 5}, {kSwirl, 2}}},
        {"five with swirl and noise", {{kSymmetry, 5}, {kSwirl, 2}, {kNoiseAmount, 0.5}}},
    };
    return all;
}

LxSheenLayer layerOf(const Case &what) {
    LxSheenLayer layer;
    for (const Setting &setting : what.settings)
        layer.SetValue(setting.parameter, setting.value);
    layer.Prepare();
    return layer;
}

void countPixels(benchmark::State &state, int size) {
    state.SetItemsProcessed(state.iterations() * size * size);
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(state.iterations()) * size * size / 1e6,
                                                benchmark::Counter::kIsRate);
}

// Every pixel evaluated, without copies by symmetry.
void sampling(benchmark::State &state, const Case &what, int size,
              void (*sample)(const SheenValues &, SampleRow &)) {
    const LxSheenLayer layer = layerOf(what);
    LxSheenLayer prepared = layer;
    prepared.Prepare();
    std::vector<float> heights(static_cast<size_t>(size) * size);
    const float step = static_cast<float>(1.0 / (size - 1));
    for (auto _ : state) {
        for (int y = 0; y < size; ++y) {
            SampleRow row = {
                step, step * static_cast<float>(y), size, &heights[static_cast<size_t>(y) * size], 0, 0};
            sample(prepared, row);
        }
        benchmark::DoNotOptimize(heights.data());
        benchmark::ClobberMemory();
    }
    countPixels(state, size);
}

// A whole layer, with the copies that its symmetry allows.
void samplingWithCopies(benchmark::State &state, const Case &what, int size) {
    LxSheenLayer layer = layerOf(what);
    layer.Prepare();
    layer.image.reset(LxImage_Create(kLxPixelF, 0, 0, size, size, 1, 0));
    for (auto _ : state) {
        sampleLayer(layer, size, size);
        benchmark::ClobberMemory();
    }
    countPixels(state, size);
}

// Two layers whose heights overlap, rendered.
void renderTwoLayers(LxSheenDescriptor &descriptor) {
    LxSheenLayer plate;
    plate.SetValue(kInnerSize0, 0.45);
    plate.SetValue(kInnerSize1, 0.45);
    plate.SetValue(kNoiseAmount, 0.5);
    plate.SetValue(kNoiseZoom, -20);
    plate.color = {200, 150, 60, 255};
    descriptor.AddLayer(plate);
    LxSheenLayer knob;
    knob.SetValue(kSymmetry, 0);
    knob.SetValue(kInnerSize0, 0.4);
    knob.SetValue(kBorderSize0, -1.0);
    descriptor.AddLayer(knob);
    descriptor.Render();
}

void compositing(benchmark::State &state, uint32_t mode, int size) {
    LxSheenDescriptor descriptor(size, size);
    renderTwoLayers(descriptor);
    descriptor.layers[1].compositeMode = mode;
    const LxImage &first = *descriptor.layers[0].image;
    const auto *bytes = static_cast<const uint8_t *>(LxImage_ConstData(&first));
    auto *composite = static_cast<uint8_t *>(LxImage_Data(descriptor.floatImage.get()));
    for (auto _ : state) {
        // From the same heights each time, as a render does after its copy of the first layer.
        std::copy_n(bytes, LxImage_DataSize(&first), composite);
        compositeLayer(descriptor.layers[1], *descriptor.floatImage, *descriptor.colorImage);
        benchmark::ClobberMemory();
    }
    countPixels(state, size);
}

void lighting(benchmark::State &state, int size) {
    LxSheenDescriptor lit(size, size);
    renderTwoLayers(lit);
    for (auto _ : state) {
        benchmark::DoNotOptimize(litPicture(lit).get());
        benchmark::ClobberMemory();
    }
    countPixels(state, size);
}

// The lighting pass as a loop over pixels.
ImageHandle litPlainly(const LxSheenDescriptor &d) {
    const LxSheenLight &light = d.light;
    const auto lx =
        static_cast<float>(std::cos(light.azimuth) * std::cos(light.elevation) * light.brilliance);
    const auto ly =
        static_cast<float>(std::sin(light.azimuth) * std::cos(light.elevation) * light.brilliance);
    const auto lz = static_cast<float>(std::sin(light.elevation) * light.brilliance);
    const double depth = 1530.0 / light.width;
    const auto lift = static_cast<float>(depth * std::sin(light.elevation) * light.brilliance);
    const auto depth2 = static_cast<float>(depth * depth);
    const auto ambient = static_cast<float>(light.ambient);
    const auto threshold = static_cast<float>(d.alphaThreshold);
    ImageHandle picture(LxImage_Create(kLxPixelRGBA, 0, 0, d.width, d.height, 1, 0));
    for (int y = 1; y < d.height - 1; ++y) {
        const auto *above = reinterpret_cast<const float *>(rowAddress(*d.floatImage, y - 1));
        const auto *middle = reinterpret_cast<const float *>(rowAddress(*d.floatImage, y));
        const auto *below = reinterpret_cast<const float *>(rowAddress(*d.floatImage, y + 1));
        const auto *colors = reinterpret_cast<const LxRGBA *>(rowAddress(*d.colorImage, y));
        auto *out = reinterpret_cast<LxRGBA *>(rowAddress(*picture, y));
        for (int x = 1; x < d.width - 1; ++x) {
            const float gx =
                (above[x - 1] + middle[x - 1] + below[x - 1] - above[x + 1] - middle[x + 1] - below[x + 1]) *
                255.0f;
            const float gy =
                (below[x + 1] + below[x - 1] + below[x] - above[x - 1] - above[x] - above[x + 1]) * 255.0f;
            float i = lz;
            if (gx != 0.0f || gy != 0.0f) {
                const float s = lx * gx + ly * gy + lift;
                i = s < 0.0f ? 0.0f : s / std::sqrt(gx * gx + gy * gy + depth2);
            }
            const LxRGBA c = colors[x];
            if (!(above[x] > threshold)) {
                out[x] = LxRGBA{0, 0, 0, 0};
            } else if (i > 1.0f) {
                const float k = std::floor((i - 1.0f) * 255.0f + 0.5f);
                out[x] = LxRGBA{static_cast<uint8_t>(std::min(255.0f, c.r + k)),
                                static_cast<uint8_t>(std::min(255.0f, c.g + k)),
                                static_cast<uint8_t>(std::min(255.0f, c.b + k)), 255};
            } else {
                const float m = std::max(ambient, i);
                out[x] = LxRGBA{static_cast<uint8_t>(c.r * m), static_cast<uint8_t>(c.g * m),
                                static_cast<uint8_t>(c.b * m), 255};
            }
        }
    }
    return picture;
}

void lightingPlainly(benchmark::State &state, int size) {
    LxSheenDescriptor lit(size, size);
    renderTwoLayers(lit);
    for (auto _ : state) {
        benchmark::DoNotOptimize(litPlainly(lit).get());
        benchmark::ClobberMemory();
    }
    countPixels(state, size);
}

// Ten layers, rendered again after a change to `changed` of them.
void renderingTen(benchmark::State &state, int size, int changed) {
    LxSheenDescriptor descriptor(size, size);
    for (int i = 0; i < 10; ++i) {
        LxSheenLayer layer;
        layer.SetValue(kSymmetry, 5);
        layer.SetValue(kSwirl, 1);
        layer.SetValue(kInnerSize0, 0.45 - 0.04 * i);
        layer.SetValue(kHeight, 0.1);
        descriptor.AddLayer(layer);
    }
    descriptor.Render();
    double swirl = 1.0;
    for (auto _ : state) {
        for (int i = 0; i < changed; ++i)
            descriptor.Layer(i)->SetValue(kSwirl, swirl);
        swirl += 0.001;
        descriptor.Render();
    }
    countPixels(state, size);
}

template <class Function>
void add(std::initializer_list<std::string> name, Function function) {
    std::string whole;
    for (const std::string &part : name)
        whole += (whole.empty() ? "" : "/") + part;
    benchmark::RegisterBenchmark(whole.c_str(), function);
}

bool registerAll() {
    for (const int size : {64, 256, 1024, 2048}) {
        const std::string at = std::to_string(size);
        for (const Case &what : cases()) {
            add({"sampling", what.name, "plain Evaluate", at},
                [&what, size](benchmark::State &s) { sampling(s, what, size, sampleRowPlainly); });
            add({"sampling", what.name, "rows", at},
                [&what, size](benchmark::State &s) { sampling(s, what, size, sampleRow); });
        }
        add({"sampling", "default", "copies by mask 15", at},
            [size](benchmark::State &s) { samplingWithCopies(s, cases()[0], size); });
        for (const uint32_t mode : {compositeAdd, compositePaint, compositeLargerInside})
            add({"compositing", "mode " + std::to_string(mode), at},
                [mode, size](benchmark::State &s) { compositing(s, mode, size); });
        add({"lighting", "plain loop", at}, [size](benchmark::State &s) { lightingPlainly(s, size); });
        add({"lighting", "rows", at}, [size](benchmark::State &s) { lighting(s, size); });
    }
    add({"sampling", "default", "rows", "4096"},
        [](benchmark::State &s) { sampling(s, cases()[0], 4096, sampleRow); });
    for (const int changed : {0, 1, 10})
        add({"ten layers", std::to_string(changed) + " changed", "512"},
            [changed](benchmark::State &s) { renderingTen(s, 512, changed); });
    return true;
}

const bool registered = registerAll();

} // namespace
