// How the library's modules take part in its start and stop.
#pragma once

namespace lx {

// A module's part in Oxlume_Init and Oxlume_Term; either may be null.
struct ModuleHooks {
    void (*start)();
    void (*end)();
};

// The modules above the foundation put their hooks here, by a constant initialiser in their own source file,
// so that the foundation includes none of them.
enum class Module { images, rasteriser, renderers };
void registerModule(Module module, ModuleHooks hooks);

} // namespace lx
