// Making and deleting images, beside a bare malloc and free of the same bytes and beside cairo.

#include <cstdlib>
#include <vector>

#include <benchmark/benchmark.h>
#include <oxlume/LxImage.h>

#ifdef BENCH_WITH_CAIRO
#include <cairo.h>
#endif

namespace {

void mallocAndFree(benchmark::State &state) {
    const auto bytes = static_cast<size_t>(state.range(0) * state.range(0) * 4);
    for (auto _ : state) {
        void *block = std::malloc(bytes);
        benchmark::DoNotOptimize(block);
        std::free(block);
    }
}

void createAndDelete(benchmark::State &state) {
    const auto size = static_cast<int32_t>(state.range(0));
    for (auto _ : state) {
        LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, size, size, 0, 0);
        benchmark::DoNotOptimize(image);
        LxImage_Delete(image);
    }
}

// The second argument is the number of images that are alive all the while.
void createAndDeleteAmongOthers(benchmark::State &state) {
    std::vector<LxImage *> others(static_cast<size_t>(state.range(1)));
    for (LxImage *&image : others)
        image = LxImage_Create(kLxPixelRGBA, 0, 0, 16, 16, 0, 0);
    createAndDelete(state);
    for (LxImage *image : others)
        LxImage_Delete(image);
}

#ifdef BENCH_WITH_CAIRO
void cairoCreateAndDestroy(benchmark::State &state) {
    const auto size = static_cast<int>(state.range(0));
    for (auto _ : state) {
        cairo_surface_t *surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size);
        benchmark::DoNotOptimize(surface);
        cairo_surface_destroy(surface);
    }
}
BENCHMARK(cairoCreateAndDestroy)->Arg(2)->Arg(64)->Arg(256);
#endif

BENCHMARK(mallocAndFree)->Arg(2)->Arg(64)->Arg(256);
BENCHMARK(createAndDelete)->Arg(2)->Arg(64)->Arg(256);
BENCHMARK(createAndDeleteAmongOthers)->Args({64, 1})->Args({64, 1000})->Args({64, 100000});

} // namespace
