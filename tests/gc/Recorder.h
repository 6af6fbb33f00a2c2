// Renderers that write down what they are asked to do, and contexts that delete themselves.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "gc/Renderer.h"

namespace lx::test {

// A target of the recording renderers.
struct Recorder {
    std::vector<std::string> calls;
    bool refuses = false; // makes creation fail

    // What was recorded since the last time, and forgets it.
    std::vector<std::string> take() { return std::exchange(calls, {}); }
};

using Calls = std::vector<std::string>;

// While it lives, kinds 3 to 5 record every slot, and kind 6 has the defaults and records `pixel` and `path`
// alone. All take a Recorder as their target. The library's starts and ends come to `libraryCalls`, with S, O
// and Q for the three families.
class RecordingKinds {
public:
    // With `software` kinds 0 to 2 record every slot too; no context on an image may then be deleted.
    explicit RecordingKinds(bool software = false);
    ~RecordingKinds();
    RecordingKinds(const RecordingKinds &) = delete;
    RecordingKinds &operator=(const RecordingKinds &) = delete;

    static Calls libraryCalls;

private:
    const RendererKind *replaced_[3];
};

constexpr int32_t recordsAll = kLxRendererOpenGL;
constexpr int32_t recordsBasics = kLxRendererQuartz;

struct DeleteContext {
    void operator()(LxGC *gc) const { LxGC_Delete(gc); }
};
using ContextHandle = std::unique_ptr<LxGC, DeleteContext>;

// A context with a renderer of the kind on the recorder.
ContextHandle makeContext(const LxRectD &bounds, int32_t kind, Recorder &recorder);

// The items of a path, as "M 0 0, L 1 1, Z".
std::string describe(const LxPath *path);

} // namespace lx::test
