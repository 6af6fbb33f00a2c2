#include "foundation/Library.h"

#include <array>
#include <clocale>
#include <cstdlib>

#include <oxlume/LxLibrary.h>

#include "foundation/Memory.h"

namespace lx {
namespace {

constinit std::array<ModuleHooks, 3> modules = {};
constinit bool started = false;

ModuleHooks &hooksOf(Module module) {
    return modules[static_cast<size_t>(module)];
}

void call(void (*hook)()) {
    if (hook != nullptr)
        hook();
}

} // namespace

void registerModule(Module module, ModuleHooks hooks) {
    hooksOf(module) = hooks;
}

} // namespace lx

using namespace lx;

int32_t Oxlume_Init(void) {
    if (started)
        return 1;
    started = true;
    std::setlocale(LC_ALL, "");
    startMemory();
    for (const Module module : {Module::images, Module::rasteriser, Module::renderers})
        call(hooksOf(module).start);
    std::atexit(Oxlume_Term);
    return 1;
}

void Oxlume_Term(void) {
    if (!started)
        return;
    started = false;
    // On purpose: not the reverse of the start, but from the images up, and the memory module last.
    for (const Module module : {Module::images, Module::rasteriser, Module::renderers})
        call(hooksOf(module).end);
    endMemory();
}
