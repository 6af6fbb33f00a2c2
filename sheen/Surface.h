// A sheen layer's surface: 76 numbers, and the height that they give every point of the unit square.
#pragma once

#include "sheen/SheenValues.h"

namespace lx {

class LxSheenSurface : public SheenValues {
public:
    // Seeds the noise, as every Reset does: no layer may be made while another thread renders.
    LxSheenSurface() : SheenValues() { Reset(); }
    // A copy is a construction followed by an assignment, so it seeds as well.
    LxSheenSurface(const LxSheenSurface &other) : LxSheenSurface() { *this = other; }
    LxSheenSurface &operator=(const LxSheenSurface &other) = default;
    virtual ~LxSheenSurface() = default;

    // Every `index` is below kSheenParameterCount: the caller sees to that.
    double Value(uint32_t index) const { return values[index]; }
    // Stores the value, rounded if the parameter takes whole numbers and never clamped, and marks the surface
    // dirty, which is also the mark by which a render knows what to sample again.
    void SetValue(uint32_t index, double value);

    static double Minimum(uint32_t index) { return sheenParameters[index].minimum; }
    static double Maximum(uint32_t index) { return sheenParameters[index].maximum; }
    static double Step(uint32_t index) { return sheenParameters[index].step; }
    static const char *Label(uint32_t index) { return sheenParameters[index].label; }
    static bool IsInterpolated(uint32_t index) { return (sheenParameters[index].interpolated & 1) != 0; }

    uint32_t SymmetryMask();

    // Computes all derived values.
    void Prepare();

    // The height at (x, y), where (0, 0) is the first pixel of the first row and (1, 1) the last of the last.
    // This is the definition of the surface, in the order of operations that fixes every number; sampleRow is
    // the form for many points. Nothing limits the height here.
    void Evaluate(double *out, const double *x, const double *y);

protected:
    // Seeds the noise, takes the table's defaults, marks the surface dirty.
    void Reset();
};

// What Evaluate does, for a surface that is prepared.
double evaluate(const SheenValues &surface, double x, double y);

} // namespace lx
