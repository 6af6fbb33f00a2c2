// Paths by the OpenGL renderer, without a display. bench/library-share tells our own part of the time.

#include <optional>

#include <benchmark/benchmark.h>

#include "tests/gc/renderers/OpenGLScene.h"
#include "tools/OffscreenGL.h"

namespace {

using namespace lx::test;
using tool::OffscreenGL;

constexpr int32_t pathsAFrame = 200;

// Draws the path in many places, then waits for the frame to be done.
void draw(benchmark::State &state, const LxPath *path, LxRenderMode mode, int32_t style) {
    const std::optional<OffscreenGL> context = OffscreenGL::open(sceneWidth, sceneHeight);
    if (!context) {
        state.SkipWithError("no OpenGL context without a display can be had");
        return;
    }
    LxGC *gc = LxGC_CreateWithOpenGLContext(nullptr, LxRectD{0, 0, sceneWidth, sceneHeight});
    LxGC_SetRenderMode(gc, mode);
    LxGC_SetStrokeStyle(gc, style);
    LxGC_SetStrokeWidth(gc, 3);
    for (auto _ : state) {
        for (int32_t i = 0; i < pathsAFrame; ++i)
            LxGC_Path(gc, path);
        LxGC_Sync(gc);
    }
    LxGC_Delete(gc);
    state.counters["paths"] = benchmark::Counter(static_cast<double>(state.iterations()) * pathsAFrame,
                                                 benchmark::Counter::kIsRate);
}

ScenePath circle() {
    ScenePath path(LxPath_Create());
    LxPath_AddCircle(path.get(), 100, 100, 20);
    return path;
}

void fillRectangle(benchmark::State &state) {
    const ScenePath path(LxPath_Create());
    const LxRectD rect = {90, 90, 110, 110};
    LxPath_AddRect(path.get(), &rect, 0, 0);
    draw(state, path.get(), kLxRenderFill, 0);
}

void fillCircle(benchmark::State &state) {
    draw(state, circle().get(), kLxRenderFill, 0);
}

void fillStar(benchmark::State &state) {
    draw(state, starPath(100, 100, 20).get(), kLxRenderFill, 0);
}

void strokeCircle(benchmark::State &state) {
    draw(state, circle().get(), kLxRenderStroke, kLxStrokeMitre);
}

void strokeStar(benchmark::State &state) {
    draw(state, starPath(100, 100, 20).get(), kLxRenderStroke, kLxStrokeItems);
}

BENCHMARK(fillRectangle);
BENCHMARK(fillCircle);
BENCHMARK(fillStar);
BENCHMARK(strokeCircle);
BENCHMARK(strokeStar);

} // namespace
