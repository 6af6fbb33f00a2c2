#include <thread>

#include <gtest/gtest.h>

#import <Foundation/NSString.h>
#import <oxlume/cocoa/LxDuration.h>

// A stopwatch that took a time told by the test.
@interface ToldDuration : LxDuration
- (void)take:(uint64_t)nanoseconds;
- (uint64_t)taken;
@end

@implementation ToldDuration
- (void)take:(uint64_t)nanoseconds {
    m_Duration = nanoseconds;
}
- (uint64_t)taken {
    return m_Duration;
}
@end

TEST(LxDuration, StringsAreCutToWholeUnits) {
    ToldDuration *duration = [[[ToldDuration alloc] init] autorelease];
    [duration take:2500000000u];
    EXPECT_STREQ([[duration secondsString] UTF8String], "2 s");
    EXPECT_STREQ([[duration milliSecondsString] UTF8String], "2500 ms");
    [duration take:999];
    EXPECT_STREQ([[duration microSecondsString] UTF8String], "0 micros");
    EXPECT_STREQ([[duration nanoSecondsString] UTF8String], "999 ns");
    [duration take:999999999];
    EXPECT_STREQ([[duration secondsString] UTF8String], "0 s");
}

TEST(LxDuration, CountsAreUnsignedAndOf64Bits) {
    ToldDuration *duration = [[[ToldDuration alloc] init] autorelease];
    [duration take:UINT64_MAX];
    EXPECT_STREQ([[duration nanoSecondsString] UTF8String], "18446744073709551615 ns");
    EXPECT_STREQ([[duration microSecondsString] UTF8String], "18446744073709551 micros");
}

TEST(LxDuration, EachStopMeasuresFromTheSameStart) {
    ToldDuration *duration = [[[ToldDuration alloc] init] autorelease];
    [duration start];
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    [duration stop];
    const uint64_t first = [duration taken];
    EXPECT_GE(first, 2000000u);
    EXPECT_LT(first, 60000000000u);
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    [duration stop];
    EXPECT_GE([duration taken], first + 2000000);
}
