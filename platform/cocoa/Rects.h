// The platform's rectangles, inside the bridges.
#pragma once

#import <Foundation/NSGeometry.h>

#include <oxlume/LxRect.h>

namespace lx {

// The platform's rectangle in our precision.
inline LxCGRect narrowed(NSRect rect) {
    return {static_cast<float>(rect.origin.x), static_cast<float>(rect.origin.y),
            static_cast<float>(rect.size.width), static_cast<float>(rect.size.height)};
}

} // namespace lx
