// What the vector files of one level give each other.
#pragma once

#include "blend/VectorForms.h"

namespace lx::LX_VECTOR_NAMESPACE {

void addLaneForms(VectorForms &forms);
void addPlaneForms(VectorForms &forms);
void addColourForms(VectorForms &forms);

// All of them, made on first use.
const VectorForms &levelForms();

} // namespace lx::LX_VECTOR_NAMESPACE
