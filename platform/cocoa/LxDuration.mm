// A stopwatch.

#import <Foundation/NSString.h>
#import <oxlume/cocoa/LxDuration.h>

#include <ctime>

namespace lx {
namespace {

// Nanoseconds of a clock that only goes forward.
uint64_t upTime() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<uint64_t>(now.tv_sec) * 1'000'000'000 + static_cast<uint64_t>(now.tv_nsec);
}

UnsignedWide wide(uint64_t value) {
    return {static_cast<uint32_t>(value), static_cast<uint32_t>(value >> 32)};
}

uint64_t narrow(UnsignedWide value) {
    return uint64_t{value.hi} << 32 | value.lo;
}

} // namespace
} // namespace lx

@implementation LxDuration

- (void)start {
    m_Start = lx::wide(lx::upTime());
}

- (void)stop {
    m_Duration = lx::upTime() - lx::narrow(m_Start);
}

- (NSString *)nanoSecondsString {
    return [NSString stringWithFormat:@"%llu ns", m_Duration];
}

- (NSString *)microSecondsString {
    return [NSString stringWithFormat:@"%llu micros", m_Duration / 1000];
}

- (NSString *)milliSecondsString {
    return [NSString stringWithFormat:@"%llu ms", m_Duration / 1000000];
}

- (NSString *)secondsString {
    return [NSString stringWithFormat:@"%llu s", m_Duration / 1000000000];
}

@end
