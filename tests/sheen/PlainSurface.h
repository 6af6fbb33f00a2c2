// The surface a second time, as one plain function of the parameters: what the library's own form, with its
// derived values and steps, is compared with.
#pragma once

namespace lx::test {

// The height at (x, y) of a surface with these 76 values.
double plainHeight(const double *values, double x, double y);

// The mask of its exact mirrorings.
unsigned plainSymmetryMask(const double *values);

} // namespace lx::test
