#include "geometry/Clip.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <gtest/gtest.h>

#include "tests/geometry/Same.h"

using lx::test::anyLine;
using lx::test::anyRectD;
using lx::test::anyRectL;
using lx::test::Random;

namespace {

struct Clipped {
    int32_t inside;
    LxLineD line;
};

Clipped clipD(const LxRectD &rect, LxLineD l) {
    const int32_t inside = LxRectD_clipLineD(rect, &l.x0, &l.y0, &l.x1, &l.y1);
    return {inside, l};
}

Clipped clipPixels(const LxRectD &rect, LxLineD l) {
    const int32_t inside = LxClipLineD(&rect, &l.x0, &l.y0, &l.x1, &l.y1);
    return {inside, l};
}

// The told loop once more, written flat: the ends in an array, the sides as they are named.
Clipped naive(double leftSide, double topSide, double rightSide, double bottomSide, const LxLineD &line,
              int *roundsTaken = nullptr) {
    double x[2] = {line.x0, line.x1}, y[2] = {line.y0, line.y1};
    for (int end = 0; end < 2; ++end)
        if (!std::isfinite(x[end]) || !std::isfinite(y[end]))
            return {0, line};
    const auto code = [&](int end) {
        int bits = 0;
        if (x[end] < leftSide)
            bits += 1;
        if (x[end] > rightSide)
            bits += 2;
        if (y[end] < topSide)
            bits += 4;
        if (y[end] > bottomSide)
            bits += 8;
        return bits;
    };
    int rounds = 0;
    while (code(0) + code(1) != 0) {
        if ((code(0) & code(1)) != 0 || rounds == 16)
            break;
        const int end = code(0) != 0 ? 0 : 1;
        const int bits = code(end);
        double newX = 0, newY = 0;
        if (bits % 2 == 1) {
            newX = leftSide;
            newY = (y[1] - y[0]) * (newX - x[0]) / (x[1] - x[0]) + y[0];
        }
        if (bits / 2 % 2 == 1) {
            newX = rightSide;
            newY = (y[1] - y[0]) * (newX - x[0]) / (x[1] - x[0]) + y[0];
        }
        if (bits > 7) {
            newY = bottomSide;
            newX = (x[1] - x[0]) * (newY - y[0]) / (y[1] - y[0]) + x[0];
        }
        if (bits / 4 % 2 == 1) {
            newY = topSide;
            newX = (x[1] - x[0]) * (newY - y[0]) / (y[1] - y[0]) + x[0];
        }
        x[end] = newX;
        y[end] = newY;
        ++rounds;
    }
    if (roundsTaken != nullptr)
        *roundsTaken = rounds;
    return {code(0) == 0 ? 1 : 0, {x[0], y[0], x[1], y[1]}};
}

// The part of a line inside a rectangle by its parameter, which has no rounds and no order of sides.
std::optional<LxLineD> parametric(const LxRectD &r, const LxLineD &l) {
    double enter = 0, leave = 1;
    const double delta[] = {-(l.x1 - l.x0), l.x1 - l.x0, -(l.y1 - l.y0), l.y1 - l.y0};
    const double room[] = {l.x0 - r.x0, r.x1 - l.x0, l.y0 - r.y0, r.y1 - l.y0};
    for (int side = 0; side < 4; ++side) {
        if (delta[side] == 0 && room[side] < 0)
            return std::nullopt;
        const double t = room[side] / delta[side];
        if (delta[side] < 0)
            enter = std::max(enter, t);
        if (delta[side] > 0)
            leave = std::min(leave, t);
    }
    if (enter > leave)
        return std::nullopt;
    const auto at = [&](double t) { return LxPointD{l.x0 + t * (l.x1 - l.x0), l.y0 + t * (l.y1 - l.y0)}; };
    const LxPointD a = at(enter), b = at(leave);
    return LxLineD{a.x, a.y, b.x, b.y};
}

} // namespace

TEST(Clip, ALineInsideStaysAsItIs) {
    const auto [inside, line] = clipD({0, 0, 10, 10}, {1, 2, 10, 0});
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(line, (LxLineD{1, 2, 10, 0})) << "all four sides are inclusive";
}

TEST(Clip, AHorizontalLineIsCutAtBothSides) {
    const auto [inside, line] = clipD({0, 0, 10, 10}, {-5, 5, 20, 5});
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(line, (LxLineD{0, 5, 10, 5}));
}

TEST(Clip, PixelRectanglesEndOnePixelBefore) {
    const auto [inside, line] = clipPixels({0, 0, 10, 10}, {-5, 5, 20, 5});
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(line, (LxLineD{0, 5, 9, 5}));
    EXPECT_EQ(clipPixels({0, 0, 10, 10}, {3, -7, 3, 70}).line, (LxLineD{3, 0, 3, 9}));
    EXPECT_EQ(clipPixels({0, 0, 10, 10}, {9.5, 0, 9.5, 5}).inside, 0);
}

TEST(Clip, APixelRectangleNarrowerThanAPixelHoldsNothing) {
    // Its far side, -0.5, lies before its near side, 0, so every point is beyond one of them.
    for (const double x : {-1.0, -0.5, -0.25, 0.0, 0.25, 1.0})
        EXPECT_EQ(clipPixels({0, 0, 0.5, 10}, {x, 1, x + 0.1, 2}).inside, 0) << x;
}

TEST(Clip, EmptyRectanglesRejectAtOnce) {
    const LxLineD through{-5, 5, 20, 5};
    for (const LxRectD &rect :
         {LxRectD{0, 0, 0, 10}, LxRectD{10, 0, 0, 10}, LxRectD{0, 10, 10, 10}, LxRectD{0, 10, 10, 0}}) {
        EXPECT_EQ(clipD(rect, through).inside, 0) << rect;
        EXPECT_EQ(clipD(rect, through).line, through) << rect;
        EXPECT_EQ(clipPixels(rect, through).inside, 0) << rect;
        EXPECT_EQ(clipPixels(rect, through).line, through) << rect;
    }
    double x0 = -5, y0 = 5, x1 = 20, y1 = 5;
    EXPECT_EQ(LxClipLineD(nullptr, &x0, &y0, &x1, &y1), 0);
    EXPECT_EQ((LxLineD{x0, y0, x1, y1}), through);
}

TEST(Clip, IntegerRectanglesAreSortedFirst) {
    double x0 = -5, y0 = 5, x1 = 20, y1 = 5;
    EXPECT_EQ(LxRectL_clipLineD({10, 10, 0, 0}, &x0, &y0, &x1, &y1), 1);
    EXPECT_EQ((LxLineD{x0, y0, x1, y1}), (LxLineD{0, 5, 10, 5}));
    EXPECT_EQ(LxRectL_clipLineD({0, 0, 0, 10}, &x0, &y0, &x1, &y1), 0) << "no width";
}

TEST(Clip, ARejectedLineMayComeBackPartlyClipped) {
    // From below the left side to beyond the bottom right: the first end moves to (0, -5) by the left side...
    // no, its corner code goes to the top side first, which puts it at x = 30; both ends are then right
    // of 10.
    const auto [inside, line] = clipD({0, 0, 10, 10}, {-10, -40, 50, 20});
    EXPECT_EQ(inside, 0);
    EXPECT_EQ(line, (LxLineD{30, 0, 50, 20}));
}

TEST(Clip, CornersAreResolvedAgainstTheHorizontalSidesFirst) {
    // Top left: by the top side the first end is at (5, 0), by the left side it would be at (0, -5).
    EXPECT_EQ(clipD({0, 0, 10, 10}, {-5, -10, 10, 5}).line, (LxLineD{5, 0, 10, 5}));
    // Bottom right, second end: by the bottom side at (8, 10).
    EXPECT_EQ(clipD({0, 0, 10, 10}, {3, 5, 13, 15}).line, (LxLineD{3, 5, 8, 10}));
}

TEST(Clip, EndsThatAreNotFiniteReject) {
    const LxRectD rect{0, 0, 10, 10};
    for (const double bad : {double{NAN}, double{INFINITY}, double{-INFINITY}}) {
        for (int which = 0; which < 4; ++which) {
            double v[4] = {1, 2, 3, 4};
            v[which] = bad;
            double w[4] = {v[0], v[1], v[2], v[3]};
            EXPECT_EQ(LxRectD_clipLineD(rect, &w[0], &w[1], &w[2], &w[3]), 0);
            EXPECT_EQ(LxClipLineD(&rect, &w[0], &w[1], &w[2], &w[3]), 0);
            for (int i = 0; i < 4; ++i)
                EXPECT_TRUE(same(w[i], v[i]));
        }
    }
}

TEST(Clip, IntegerLinesAreRoundedByTruncationOfThePlusAHalf) {
    // Clipped at x = -1 the line (-4, -1) to (6, 0) has y = -0.7, and -0.7 + 0.5 truncates to 0.
    int32_t x0 = -4, y0 = -1, x1 = 6, y1 = 0;
    EXPECT_EQ(LxRectL_clipLineL({-1, -10, 6, 10}, &x0, &y0, &x1, &y1), 1);
    EXPECT_EQ(y0, 0);
    EXPECT_EQ(x0, 0) << "-1 + 0.5 truncates to 0 as well";
    EXPECT_EQ(x1, 6);
    EXPECT_EQ(y1, 0);
}

TEST(Clip, RejectedIntegerLinesStayUntouched) {
    int32_t x0 = -10, y0 = -40, x1 = 50, y1 = 20;
    EXPECT_EQ(LxRectL_clipLineL({0, 0, 10, 10}, &x0, &y0, &x1, &y1), 0);
    EXPECT_EQ(LxRectD_clipLineL({0, 0, 10, 10}, &x0, &y0, &x1, &y1), 0);
    EXPECT_EQ(LxRectD_clipLineL({10, 10, 0, 0}, &x0, &y0, &x1, &y1), 0) << "the double form does not sort";
    EXPECT_EQ(x0, -10);
    EXPECT_EQ(y0, -40);
    EXPECT_EQ(x1, 50);
    EXPECT_EQ(y1, 20);
}

TEST(Clip, AllFormsFollowTheLoopForAnyInput) {
    Random random(30);
    int accepted = 0;
    for (int i = 0; i < 300000; ++i) {
        const LxRectD r = random.coin() ? anyRectD(random)
                                        : LxRectD{random.real(-50, 0), random.real(-50, 0),
                                                  random.real(0, 50), random.real(0, 50)};
        const LxLineD l = random.coin() ? anyLine(random)
                                        : LxLineD{random.real(-99, 99), random.real(-99, 99),
                                                  random.real(-99, 99), random.real(-99, 99)};
        const bool empty = r.x0 >= r.x1 || r.y0 >= r.y1;
        const Clipped expected = empty ? Clipped{0, l} : naive(r.x0, r.y0, r.x1, r.y1, l);
        const Clipped clipped = clipD(r, l);
        ASSERT_EQ(clipped.inside, expected.inside) << r << l;
        ASSERT_EQ(clipped.line, expected.line) << r << l;
        accepted += clipped.inside;
        const Clipped expectedPixels = empty ? Clipped{0, l} : naive(r.x0, r.y0, r.x1 - 1.0, r.y1 - 1.0, l);
        const Clipped pixels = clipPixels(r, l);
        ASSERT_EQ(pixels.inside, expectedPixels.inside) << r << l;
        ASSERT_EQ(pixels.line, expectedPixels.line) << r << l;
    }
    EXPECT_GT(accepted, 1000);
}

TEST(Clip, IntegerFormsWidenClipAndRound) {
    Random random(31);
    const auto rounded = [](double v) { return static_cast<int32_t>(static_cast<int64_t>(v + 0.5)); };
    for (int i = 0; i < 200000; ++i) {
        const LxRectL r = random.coin() ? anyRectL(random)
                                        : LxRectL{random.integer(-50, 50), random.integer(-50, 50),
                                                  random.integer(-50, 50), random.integer(-50, 50)};
        const LxRectL l = random.coin() ? anyRectL(random)
                                        : LxRectL{random.integer(-99, 99), random.integer(-99, 99),
                                                  random.integer(-99, 99), random.integer(-99, 99)};
        const LxRectD asIs{double(r.x0), double(r.y0), double(r.x1), double(r.y1)};
        const LxLineD line{double(l.x0), double(l.y0), double(l.x1), double(l.y1)};
        for (const bool sorts : {false, true}) {
            const LxRectD rect = sorts ? LxRectD_fromL(r) : asIs;
            const Clipped expected = clipD(rect, line);
            LxRectL out = l;
            const int32_t inside = sorts ? LxRectL_clipLineL(r, &out.x0, &out.y0, &out.x1, &out.y1)
                                         : LxRectD_clipLineL(asIs, &out.x0, &out.y0, &out.x1, &out.y1);
            ASSERT_EQ(inside, expected.inside);
            ASSERT_EQ(out, inside == 0 ? l
                                       : (LxRectL{rounded(expected.line.x0), rounded(expected.line.y0),
                                                  rounded(expected.line.x1), rounded(expected.line.y1)}))
                << r << l;
        }
        LxLineD widened = line;
        const int32_t inside = LxRectL_clipLineD(r, &widened.x0, &widened.y0, &widened.x1, &widened.y1);
        const Clipped expected = clipD(LxRectD_fromL(r), line);
        ASSERT_EQ(inside, expected.inside);
        ASSERT_EQ(widened, expected.line);
    }
}

TEST(Clip, WhatIsKeptIsThePartOfTheLineInside) {
    Random random(32);
    int kept = 0;
    for (int i = 0; i < 100000; ++i) {
        const LxRectD r{random.real(-50, 0), random.real(-50, 0), random.real(1, 50), random.real(1, 50)};
        const LxLineD l{random.real(-99, 99), random.real(-99, 99), random.real(-99, 99),
                        random.real(-99, 99)};
        const auto part = parametric(r, l);
        const auto [inside, line] = clipD(r, l);
        // Only lines that graze a corner may be judged differently by rounding.
        const bool grazes = part && std::hypot(part->x1 - part->x0, part->y1 - part->y0) < 1e-9;
        ASSERT_TRUE(grazes || (inside != 0) == part.has_value()) << r << l;
        if (inside != 0 && part) {
            ++kept;
            ASSERT_NEAR(line.x0, part->x0, 1e-8) << r << l;
            ASSERT_NEAR(line.y0, part->y0, 1e-8) << r << l;
            ASSERT_NEAR(line.x1, part->x1, 1e-8) << r << l;
            ASSERT_NEAR(line.y1, part->y1, 1e-8) << r << l;
        }
    }
    EXPECT_GT(kept, 10000);
}

TEST(Clip, LinesAimedAtFractionalCornersEnd) {
    Random random(33);
    int endless = 0;
    for (int i = 0; i < 100000; ++i) {
        const LxRectD r{random.integer(0, 99) / 10.0, random.integer(0, 99) / 10.0,
                        random.integer(110, 199) / 10.0, random.integer(110, 199) / 10.0};
        // Through a corner from outside to outside, or to the inside.
        const double cx = random.coin() ? r.x0 : r.x1, cy = random.coin() ? r.y0 : r.y1;
        const double dx = random.integer(-90, 90) / 7.0, dy = random.integer(-90, 90) / 7.0;
        const LxLineD l{cx + dx, cy + dy, cx - dx, cy - dy};
        int rounds = 0;
        const Clipped expected = naive(r.x0, r.y0, r.x1, r.y1, l, &rounds);
        ASSERT_TRUE(rounds <= 8 || rounds == 16) << "the limit stands far from lines that settle: " << rounds;
        endless += rounds == 16;
        const Clipped clipped = clipD(r, l);
        ASSERT_EQ(clipped.inside, expected.inside) << r << l;
        ASSERT_EQ(clipped.line, expected.line) << r << l;
    }
    EXPECT_GT(endless, 0) << "the loop's limit was never needed";
}
