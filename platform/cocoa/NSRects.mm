// The plane's rectangles and the platform's.

#import <oxlume/cocoa/LxNSRect.h>

#include "platform/cocoa/Rects.h"

using namespace lx;

LxRectD LxRectD_fromNSRect(NSRect rect) {
    const LxCGRect r = narrowed(rect);
    const float x1 = r.x + r.width;
    const float y1 = r.y + r.height;
    return {r.x, r.y, x1, y1};
}

NSRect LxRectD_asNSRect(LxRectD rect) {
    return NSMakeRect(static_cast<float>(rect.x0), static_cast<float>(rect.y0),
                      static_cast<float>(rect.x1 - rect.x0), static_cast<float>(rect.y1 - rect.y0));
}

NSRect LxRectL_asNSRect(LxRectL rect) {
    // The differences are exact in 64 bits, and narrowed once.
    return NSMakeRect(static_cast<float>(rect.x0), static_cast<float>(rect.y0),
                      static_cast<float>(int64_t{rect.x1} - rect.x0),
                      static_cast<float>(int64_t{rect.y1} - rect.y0));
}

LxRectL LxRectL_fromNSRect(NSRect rect) {
    return LxRectL_fromCGRect(narrowed(rect));
}
