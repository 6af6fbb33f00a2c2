// The main function of the tests that need no display.

#import <Foundation/NSAutoreleasePool.h>

#include <gtest/gtest.h>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    const int status = RUN_ALL_TESTS();
    [pool drain];
    return status;
}
