// A window on an X server of the tests' own.
#pragma once

#import <AppKit/AppKit.h>

#include <functional>

#include <oxlume/LxColor.h>

namespace lx::test {

// Starts an X server without a screen and points the process at it; false where there is none to start.
bool startServer();
void stopServer();

// A window with one view in it, which takes 240 by 200 units and draws by the function.
NSView *showView(const std::function<void(NSView *)> &draw, bool flipped = false);

// Puts another view into the window, and draws it.
void show(NSView *view);

// What the view shows at a point of its coordinates.
LxRGBA colorAt(NSView *view, double x, double y);

// Keeps what the view shows as NAME.png in the working directory, for people to look at.
void keepPicture(NSView *view, NSString *name);

} // namespace lx::test
