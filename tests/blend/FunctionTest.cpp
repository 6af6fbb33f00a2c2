#include "blend/Function.h"

#include <cmath>
#include <functional>

#include <gtest/gtest.h>

#include "blend/Mode.h"

using namespace lx;

namespace {

// A second form of each function, in real arithmetic: every quotient is exact in double.
double whole(double value) {
    return std::floor(value);
}

double limited(double value) {
    return value < 0 ? 0 : value > 255 ? 255 : value;
}

// x / 255 rounded the way of the two shifts.
double byShifts(double x) {
    const double t = x + 128;
    return whole((t + whole(t / 256)) / 256);
}

double overlayCurve(double a, double b, double end) {
    const double t = byShifts(2 * a * std::fmax(0, end - b));
    return std::fmod(byShifts(b * (b + t)), 256);
}

double hardLight(double a, double b, double branch) {
    return b < branch ? std::fmod(whole(2 * a * b / 255), 256) : 255 - whole(2 * (255 - a) * (255 - b) / 255);
}

double softLight(double a, double b) {
    const double t = whole(a * 128 / 255);
    return b < 128 ? whole((2 * t + 128) * b / 255) : 255 - whole((191 - t) * (255 - b) * 2 / 255);
}

double gain(double t, double exponent) {
    const double g = t < 0.5 ? std::pow(2 * t, exponent) * 0.5 : 1.0 - std::pow(2.0 - 2 * t, exponent) * 0.5;
    return std::isnan(g) ? 0 : std::trunc(g * 255.0);
}

constexpr double logHalf = 0.6931471824645996;

struct Expected {
    Mode mode;
    std::function<double(double a, double b)> f;
};

const Expected table[] = {
    {Mode::srcOver, [](double, double b) { return b; }},
    {Mode::srcIn, [](double, double b) { return b; }},
    {Mode::dissolve, [](double, double b) { return b; }},
    {Mode::multiply, [](double a, double b) { return whole(a * b / 256); }},
    {Mode::screen, [](double a, double b) { return 255 - whole((255 - a) * (255 - b) / 256); }},
    {Mode::overlay, [](double a, double b) { return overlayCurve(a, b, 255); }},
    {Mode::divide, [](double a, double b) { return limited(whole(a * 256 / (b + 1))); }},
    {Mode::dodge, [](double a, double b) { return limited(whole(b * 256 / (256 - a))); }},
    {Mode::burn, [](double a, double b) { return limited(255 - whole((255 - b) * 256 / (a + 1))); }},
    {Mode::add, [](double a, double b) { return limited(a + b); }},
    {Mode::subtract, [](double a, double b) { return limited(a - b); }},
    {Mode::difference, [](double a, double b) { return std::fabs(a - b); }},
    {Mode::darken, [](double a, double b) { return std::fmin(a, b); }},
    {Mode::lighten, [](double a, double b) { return std::fmax(a, b); }},
    {Mode::softLight, softLight},
    {Mode::hardLight, [](double a, double b) { return hardLight(a, b, 128); }},
    {Mode::logicalNot, [](double, double b) { return b == 0 ? 1.0 : 0.0; }},
    {Mode::bitOr, [](double a, double b) { return double(int(a) | int(b)); }},
    {Mode::bitXor, [](double a, double b) { return double(int(a) ^ int(b)); }},
    {Mode::flip, [](double a, double) { return double(int(a) ^ 133); }},
    {Mode::noName01, [](double, double b) { return gain(b / 256, std::log(0.8) / -logHalf); }},
    {Mode::noName02,
     [](double a, double b) {
         return gain(whole(2 * a * b / 255) / 256, std::log(1.0 - a / 256) / -logHalf);
     }},
    {Mode::noName03, [](double a, double b) { return hardLight(a, b, 192); }},
    {Mode::noName05, [](double a, double b) { return limited(a + b - 255); }},
    {Mode::noName06, [](double a, double b) { return limited(a - b + 128); }},
    {Mode::noName07, [](double a, double b) { return limited(a + b - 128); }},
};

} // namespace

TEST(BlendFunction, FollowsItsFormulaForEveryPair) {
    for (const Expected &expected : table) {
        const ModeTraits &mode = traitsOf(expected.mode);
        for (int a = 0; a < 256; ++a) {
            for (int b = 0; b < 256; ++b)
                ASSERT_EQ(mode.function(a, b, 77), expected.f(a, b)) << mode.name << ' ' << a << ' ' << b;
        }
    }
}

TEST(BlendFunction, EveryFunctionalModeIsAmongThem) {
    for (int i = 0; i < modeCount; ++i) {
        const ModeTraits &mode = traitsOf(static_cast<Mode>(i));
        bool found = mode.mode == Mode::noName04;
        for (const Expected &expected : table)
            found = found || expected.mode == mode.mode;
        EXPECT_EQ(found, mode.function != nullptr) << mode.name;
        EXPECT_EQ(mode.function != nullptr, mode.family == Family::functional) << mode.name;
    }
}

TEST(BlendFunction, TheOpacityBendsTheCurveOfNoName04) {
    for (int opacity = 0; opacity < 256; ++opacity) {
        for (int a = 0; a < 256; a += 1 + a % 3) {
            for (int b = 0; b < 256; ++b)
                ASSERT_EQ(function::bentOverlay(a, b, opacity), overlayCurve(a, b, opacity));
        }
    }
}

TEST(BlendFunction, KnownValues) {
    EXPECT_EQ(function::multiply(255, 255, 0), 254);
    EXPECT_EQ(function::screen(0, 0, 0), 1) << "255 - (65025 >> 8)";
    EXPECT_EQ(function::screen(255, 255, 0), 255);
    EXPECT_EQ(function::logicalNot(9, 0, 0), 1);
    EXPECT_EQ(function::logicalNot(9, 1, 0), 0);
    EXPECT_EQ(function::flip(0, 77, 0), 133);
    EXPECT_EQ(function::flip(function::flip(200, 0, 0), 0, 0), 200);
    EXPECT_EQ(function::lateHardLight(255, 191, 0), 382 - 256) << "the low byte of 2 * 255 * 191 / 255";
    EXPECT_EQ(function::gainOfProduct(0, 9, 0), 127) << "an exponent of 0: half of 255";
    EXPECT_EQ(function::gainOfProduct(255, 255, 0), 0) << "not a number";
    EXPECT_EQ(function::luminance(255, 255, 255), 255);
    EXPECT_EQ(function::luminance(10, 20, 30), (2990 + 11740 + 3420) / 1000);
}
