#include "platform/cocoa/Rects.h"

namespace lx {

double narrowed(double value) {
    return static_cast<float>(value);
}

double narrowDifference(float a, float b) {
    const float difference = a - b;
    return difference;
}

LxCGRect narrowedRect(double x, double y, double width, double height) {
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(width),
            static_cast<float>(height)};
}

LxRectD narrowCorners(const LxCGRect &rect) {
    const float x1 = rect.x + rect.width;
    const float y1 = rect.y + rect.height;
    return {rect.x, rect.y, x1, y1};
}

} // namespace lx
