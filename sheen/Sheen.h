// The exported object's record.
#pragma once

#include <new>
#include <stdexcept>
#include <vector>

#include <oxlume/LxSheen.h>

#include "sheen/Descriptor.h"

struct _LxSheen {
    // Members go in the reverse order of their making: the store first, then the second descriptor.
    lx::LxSheenDescriptor descriptors[2] = {{32, 32}, {32, 32}};
    std::vector<lx::LxSheenLayer> interpolationLayers;
    uint32_t currentDescriptor = 0;
    int32_t currentLayer = 0;

    lx::LxSheenDescriptor &current() { return descriptors[currentDescriptor]; }
    lx::LxSheenLayer *layer(int32_t index) { return current().Layer(index < 0 ? currentLayer : index); }

    // Appends to both descriptors, or throws and leaves both as they were.
    void addLayer(const lx::LxSheenLayer &layer) {
        lx::LxSheenDescriptor &first = descriptors[0];
        const int32_t currentOfFirst = first.currentLayer;
        first.AddLayer(layer);
        try {
            descriptors[1].AddLayer(layer);
        } catch (...) {
            first.RemoveLayer(first.LayerCount() - 1);
            first.SetCurrentLayer(currentOfFirst);
            throw;
        }
    }
    void setScale(double scale) {
        for (lx::LxSheenDescriptor &descriptor : descriptors)
            descriptor.SetScale(scale);
        interpolationLayers.clear();
    }
    void setSize(int32_t size) {
        for (lx::LxSheenDescriptor &descriptor : descriptors)
            descriptor.SetSize(size, size);
        interpolationLayers.clear();
    }
};

namespace lx {

// Readers change nothing that a caller could see; the lookups are written once, for writers.
inline LxSheen &writable(const LxSheen *sheen) {
    return *const_cast<LxSheen *>(sheen);
}

// Runs `work`. Containers report a lack of memory, and sizes beyond any memory, by exceptions, which end
// here: the answer is then `otherwise`.
template <class Work, class Result>
Result guarded(Result otherwise, Work work) {
    try {
        return work();
    } catch (const std::bad_alloc &) {
        return otherwise;
    } catch (const std::length_error &) {
        return otherwise;
    }
}

template <class Work>
void guarded(Work work) {
    guarded(0, [&] {
        work();
        return 0;
    });
}

} // namespace lx
