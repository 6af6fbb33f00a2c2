// Any bytes as a preset of the sheen generator: read, written, read again, and drawn as a picture of a few
// pixels.

#include <string>
#include <string_view>

#include "sheen/Preset.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static lx::LxSheenDescriptor descriptor(4, 4), again(4, 4);
    try {
        lx::readPreset({reinterpret_cast<const char *>(data), size}, descriptor);
    } catch (const lx::PresetError &) {
        return 0;
    }
    const std::string text = lx::writePreset(descriptor);
    lx::readPreset(text, again);
    if (lx::writePreset(again) != text)
        __builtin_trap(); // a descriptor's text says all of it
    lx::valuesBeyondLimits(descriptor);
    if (descriptor.LayerCount() <= 3) {
        descriptor.SetSize(4, 1.0);
        descriptor.Render();
    }
    return 0;
}
