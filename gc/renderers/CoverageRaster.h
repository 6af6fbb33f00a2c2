// The coverage form's fill, as tests and benchmarks reach into it.
#pragma once

#include "gc/renderers/Raster.h"

namespace lx {

enum class FillMethod {
    best,  // whatever gives the picture soonest
    byRule // all samples sorted, a call of the kernel for each pixel: the measure of the other
};

void fillCoverage(LxRaster &raster, LxImage &image, const LxBlend &blend, LxShader &shader,
                  FillMethod method);

} // namespace lx
