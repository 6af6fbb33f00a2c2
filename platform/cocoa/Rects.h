// Single precision inside the bridges.
//
// g++ drops the narrowing of a double that is widened again when it compiles Objective-C++, and keeps it in
// C++: that is why these few functions have a source file of their own.
#pragma once

#include <oxlume/LxRect.h>

namespace lx {

double narrowed(double value);

// a - b.
double narrowDifference(float a, float b);

// The platform's rectangle in our precision.
LxCGRect narrowedRect(double x, double y, double width, double height);

// A rectangle's corners, added in single precision.
LxRectD narrowCorners(const LxCGRect &rect);

} // namespace lx
