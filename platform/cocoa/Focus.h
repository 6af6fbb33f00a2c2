// Reading and drawing the view that has the focus.
#pragma once

#import <AppKit/NSBitmapImageRep.h>

namespace lx {

// There is a view to draw on.
bool hasFocus();

// What the focused view shows in a rectangle of its coordinates, as a new bitmap; null without focus.
NSBitmapImageRep *newGrab(NSRect rect);

} // namespace lx
