// The plane's rectangles and the platform's.

#import <oxlume/cocoa/LxNSRect.h>

#include "platform/cocoa/Rects.h"

namespace lx {
namespace {

LxCGRect single(NSRect rect) {
    return narrowedRect(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

NSRect makeNarrowed(double x, double y, double width, double height) {
    return NSMakeRect(narrowed(x), narrowed(y), narrowed(width), narrowed(height));
}

} // namespace
} // namespace lx

using namespace lx;

LxRectD LxRectD_fromNSRect(NSRect rect) {
    return narrowCorners(single(rect));
}

NSRect LxRectD_asNSRect(LxRectD rect) {
    return makeNarrowed(rect.x0, rect.y0, rect.x1 - rect.x0, rect.y1 - rect.y0);
}

NSRect LxRectL_asNSRect(LxRectL rect) {
    // In double the differences are exact, so that they are rounded once.
    return makeNarrowed(rect.x0, rect.y0, static_cast<double>(rect.x1) - rect.x0,
                        static_cast<double>(rect.y1) - rect.y0);
}

LxRectL LxRectL_fromNSRect(NSRect rect) {
    return LxRectL_fromCGRect(single(rect));
}
