/* A stopwatch. */
#ifndef OXLUME_COCOA_LXDURATION_H
#define OXLUME_COCOA_LXDURATION_H

#import <Foundation/NSObject.h>

#include <stdint.h>

@class NSString;

/* An unsigned 64-bit number in two words. */
typedef struct UnsignedWide {
    uint32_t lo, hi;
} UnsignedWide;

@interface LxDuration : NSObject {
    UnsignedWide m_Start; /* in nanoseconds of a clock that only goes forward */
    uint64_t m_Duration;  /* in nanoseconds */
}

- (void)start;

/* Takes the time since `start`, each time it is called. */
- (void)stop;

/* The time taken, cut to whole units: "1500 ns", "1 micros", "0 ms", "0 s". */
- (NSString *)nanoSecondsString;
- (NSString *)microSecondsString;
- (NSString *)milliSecondsString;
- (NSString *)secondsString;

@end

#endif
