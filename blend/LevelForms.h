// What the vector files of one level give each other.
#pragma once

#include "blend/VectorForms.h"

namespace lx::LX_VECTOR_NAMESPACE {

void addLaneForms(VectorForms &forms);
void addPixelForms(VectorForms &forms);
void addPlaneForms(VectorForms &forms);
void addColourForms(VectorForms &forms);
void addGainForms(VectorForms &forms);

// Ways between layouts, as in VectorForms.
void rgbToRgba(uint8_t *rgba, const uint8_t *rgb, size_t pixels);
void rgbaToRgb(uint8_t *rgb, const uint8_t *rgba, size_t pixels);
void aToRgba(uint8_t *rgba, const uint8_t *a, size_t pixels);
void firstOfRgba(uint8_t *rgba, const uint8_t *pixels, size_t count);

// The lower half of NoName01's table, for the function in ComponentVectors.h.
alignas(16) extern uint8_t gainRows[8][16];

// All of them, made on first use.
const VectorForms &levelForms();

} // namespace lx::LX_VECTOR_NAMESPACE
