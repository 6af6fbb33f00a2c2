// Reading and drawing the view that has the focus.
#pragma once

#import <AppKit/NSBitmapImageRep.h>

@class NSView;

namespace lx {

// There is a view to draw on.
bool hasFocus();

// A view can take the focus: it is in a window that the server knows. Locking the focus of others raises an
// exception.
bool canFocus(NSView *view);

// What the focused view shows in a rectangle of its coordinates, as a new bitmap; null without focus.
NSBitmapImageRep *newGrab(NSRect rect);

} // namespace lx
