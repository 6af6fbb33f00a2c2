// Morphing 512 x 512 colour pixels by 8 pairs of lines, beside the formulas pixel by pixel.
// The progress lines go to standard output: run with --benchmark_out=FILE >/dev/null.

#include <random>

#include <benchmark/benchmark.h>

#include "image/Image.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/PlainMorph.h"

namespace {

using namespace lx::test;

struct Scene {
    ImageHandle source = makeImage(kLxPixelRGB, 512, 512);
    ImageHandle destination = makeImage(kLxPixelRGB, 512, 512);
    std::vector<LxMorphLine> from, to;

    Scene() {
        std::mt19937 random(7);
        const auto line = [&random] {
            const auto at = [&random] { return static_cast<int32_t>(random() % 512); };
            return morphLine(at(), at(), at(), at());
        };
        for (int i = 0; i < 8; ++i) {
            from.push_back(line());
            to.push_back(line());
        }
    }
};

void countPixels(benchmark::State &state) {
    state.counters["pixels"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * 512 * 512, benchmark::Counter::kIsRate);
}

void plainPixelByPixel(benchmark::State &state) {
    const Scene scene;
    for (auto _ : state)
        plainMorph(lx::firstRow(*scene.source), lx::firstRow(*scene.destination), 512, 512, 3, scene.from,
                   scene.to);
    countPixels(state);
}

void morphOneFrame(benchmark::State &state) {
    const Scene scene;
    for (auto _ : state)
        LxMorphFrames(scene.source.get(), scene.destination.get(), scene.from.data(), scene.to.data(), 8, 1);
    countPixels(state);
}

BENCHMARK(plainPixelByPixel);
BENCHMARK(morphOneFrame);

} // namespace
