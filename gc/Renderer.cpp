// The registry of renderer kinds.

#include "gc/Renderer.h"

#include <array>
#include <utility>

#include <oxlume/LxMem.h>

#include "foundation/Library.h"
#include "gc/RendererDefaults.h"

namespace lx {
namespace {

// By RendererFamily.
constinit std::array<const RendererKind *, 3> families = {};

// The families that the numbers 0 to 6 stand for.
constexpr RendererFamily familyByKind[] = {
    RendererFamily::software, RendererFamily::software, RendererFamily::software, RendererFamily::openGL,
    RendererFamily::openGL,   RendererFamily::openGL,   RendererFamily::quartz};

const RendererKind *&kindOf(RendererFamily family) {
    return families[static_cast<size_t>(family)];
}

// Null for a number that means nothing, and for a family that is not in this library.
const RendererKind *kindOf(int32_t kind) {
    const auto index = static_cast<uint32_t>(kind);
    return index < std::size(familyByKind) ? kindOf(familyByKind[index]) : nullptr;
}

// What a start answers is not looked at: a kind that cannot start refuses at creation.
void startKinds() {
    for (const RendererFamily family :
         {RendererFamily::quartz, RendererFamily::openGL, RendererFamily::software})
        if (const RendererKind *kind = kindOf(family))
            kind->start();
}

void endKinds() {
    for (const RendererFamily family :
         {RendererFamily::openGL, RendererFamily::quartz, RendererFamily::software})
        if (const RendererKind *kind = kindOf(family))
            kind->end();
}

const bool registered = (registerModule(Module::renderers, {startKinds, endKinds}), true);

} // namespace

const RendererKind *registerRendererKind(RendererFamily family, const RendererKind *kind) {
    return std::exchange(kindOf(family), kind);
}

} // namespace lx

using namespace lx;

LxRenderer *LxRenderer_Create(LxGC *gc, int32_t kind, void *target) {
    const RendererKind *functions = kindOf(kind);
    if (functions == nullptr)
        return nullptr;
    auto *renderer = static_cast<LxRenderer *>(LxMem_calloc(1, sizeof(LxRenderer)));
    if (renderer == nullptr)
        return nullptr;
    *renderer = defaultRenderer;
    renderer->gc = gc;
    renderer->kind = kind;
    if (functions->create(*renderer, target))
        return renderer;
    LxMem_free(renderer);
    return nullptr;
}

void LxRenderer_Delete(LxRenderer *renderer) {
    if (renderer == nullptr)
        return;
    if (const RendererKind *functions = kindOf(renderer->kind))
        functions->remove(renderer);
}
