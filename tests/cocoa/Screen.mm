// A window on an X server of the tests' own.

#include "tests/cocoa/Screen.h"

#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

pid_t server = 0;

} // namespace

@interface FunctionView : NSView {
@public
    const std::function<void(NSView *)> *draw; // while the window is drawn
    BOOL flipped;
}
@end

@implementation FunctionView
- (BOOL)isFlipped {
    return flipped;
}
- (void)drawRect:(NSRect)rect {
    (void)rect;
    if (draw != nullptr)
        (*draw)(self);
}
@end

namespace lx::test {

bool startServer() {
    int ends[2];
    if (pipe(ends) != 0)
        return false;
    server = fork();
    if (server == 0) {
        close(ends[0]);
        const std::string descriptor = std::to_string(ends[1]);
        if (std::freopen("/dev/null", "w", stderr) == nullptr)
            _exit(126);
        execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "640x480x24", "-nolisten",
               "tcp", static_cast<char *>(nullptr));
        _exit(127);
    }
    close(ends[1]);
    // The server writes its number and a line end when it is ready.
    std::string number;
    char next = 0;
    while (read(ends[0], &next, 1) == 1 && next != '\n')
        number += next;
    close(ends[0]);
    return !number.empty() && setenv("DISPLAY", (":" + number).c_str(), 1) == 0;
}

void stopServer() {
    if (server > 0) {
        kill(server, SIGTERM);
        waitpid(server, nullptr, 0);
    }
}

void show(NSView *view) {
    static NSWindow *window = nil;
    if (window == nil) {
        window = [[NSWindow alloc] initWithContentRect:NSMakeRect(20, 20, 240, 200)
                                             styleMask:NSBorderlessWindowMask
                                               backing:NSBackingStoreBuffered
                                                 defer:NO];
        [window orderFront:nil];
    }
    [window setContentView:view];
    [window display];
}

NSView *showView(const std::function<void(NSView *)> &draw, bool flipped) {
    FunctionView *view = [[[FunctionView alloc] initWithFrame:NSMakeRect(0, 0, 240, 200)] autorelease];
    view->draw = &draw;
    view->flipped = flipped ? YES : NO;
    show(view);
    view->draw = nullptr;
    return view;
}

LxRGBA colorAt(NSView *view, double x, double y) {
    [view lockFocus];
    NSBitmapImageRep *rep = [[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(x, y, 1, 1)];
    [view unlockFocus];
    unsigned char *planes[5] = {};
    [rep getBitmapDataPlanes:planes];
    const LxRGBA color =
        planes[0] != nullptr ? LxRGBA{planes[0][0], planes[0][1], planes[0][2], planes[0][3]} : LxRGBA{};
    [rep release];
    return color;
}

void keepPicture(NSView *view, NSString *name) {
    [view lockFocus];
    NSBitmapImageRep *rep = [[NSBitmapImageRep alloc] initWithFocusedViewRect:[view bounds]];
    [view unlockFocus];
    NSData *file = [rep representationUsingType:NSPNGFileType properties:[NSDictionary dictionary]];
    [file writeToFile:[name stringByAppendingPathExtension:@"png"] atomically:NO];
    [rep release];
}

} // namespace lx::test
