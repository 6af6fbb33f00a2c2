// The main function of the tests that need a display, which brings its own.

#import <AppKit/AppKit.h>

#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/cocoa/Screen.h"

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!lx::test::startServer()) {
        std::puts("SKIPPED: no X server can be started here; install Xvfb");
        return 77;
    }
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    [NSApplication sharedApplication];
    const int status = RUN_ALL_TESTS();
    [pool drain];
    lx::test::stopServer();
    // The platform's own end would talk to the server that is gone.
    std::fflush(nullptr);
    _exit(status);
}
