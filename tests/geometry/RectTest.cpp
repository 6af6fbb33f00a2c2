#include "geometry/Rect.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/geometry/Same.h"

using lx::test::anyRectD;
using lx::test::anyRectL;
using lx::test::Random;

namespace {

constexpr int32_t lowest = std::numeric_limits<int32_t>::min();
constexpr int32_t highest = std::numeric_limits<int32_t>::max();
constexpr LxRectL emptyL{2147483647, 2147483647, -2147483647, -2147483647};
constexpr LxRectD emptyD{999999984306749440.0, 999999984306749440.0, -999999984306749440.0,
                         -999999984306749440.0};

LxRectD widenedAsIs(const LxRectL &r) {
    return {double(r.x0), double(r.y0), double(r.x1), double(r.y1)};
}

// Every rectangle with coordinates 0 to 3, swapped and empty ones among them.
std::vector<LxRectL> smallRects() {
    std::vector<LxRectL> rects;
    for (int32_t code = 0; code < 256; ++code)
        rects.push_back({code & 3, code >> 2 & 3, code >> 4 & 3, code >> 6});
    return rects;
}

// Whether the unit cell at (x, y) is inside, whichever way the corners stand.
bool covers(const LxRectL &r, int32_t x, int32_t y) {
    const bool inX = (r.x0 <= x && x < r.x1) || (r.x1 <= x && x < r.x0);
    const bool inY = (r.y0 <= y && y < r.y1) || (r.y1 <= y && y < r.y0);
    return inX && inY;
}

// The cells covered, one bit each.
unsigned cells(const LxRectL &r) {
    unsigned set = 0;
    for (int32_t y = 0; y < 3; ++y)
        for (int32_t x = 0; x < 3; ++x)
            set |= covers(r, x, y) ? 1u << (3 * y + x) : 0u;
    return set;
}

} // namespace

TEST(Rect, ConstantsAreZero) {
    EXPECT_EQ(LxRectL_0, (LxRectL{0, 0, 0, 0}));
    EXPECT_EQ(LxRectD_0, (LxRectD{0, 0, 0, 0}));
}

TEST(Rect, ConstructorsSort) {
    EXPECT_EQ(LxRectL(30, 2, 10, 4), (LxRectL{10, 2, 30, 4}));
    EXPECT_EQ(LxRectL(1, 9, 2, -9), (LxRectL{1, -9, 2, 9}));
    EXPECT_EQ(LxRectD(3.5, 2, 1.5, 4), (LxRectD{1.5, 2, 3.5, 4}));
    EXPECT_EQ(LxRectD(1, 2, 3, 4), (LxRectD{1, 2, 3, 4}));
}

TEST(Rect, FromLWidensAndSorts) {
    EXPECT_EQ(LxRectD_fromL({5, lowest, -5, highest}), (LxRectD{-5, -2147483648.0, 5, 2147483647.0}));
}

TEST(Rect, FromDCoversTheRectangle) {
    EXPECT_EQ(LxRectL_fromD({-0.5, -0.5, 0.5, 0.5}), (LxRectL{-1, -1, 1, 1}));
    EXPECT_EQ(LxRectL_fromD({2, 3, 4, 5}), (LxRectL{2, 3, 4, 5}));
    EXPECT_EQ(LxRectL_fromD({4.25, 5.25, 2.75, 3.75}), (LxRectL{2, 3, 5, 6})) << "sorts first";
}

TEST(Rect, FromDKeepsTheLow32BitsOfA64BitTruncation) {
    EXPECT_EQ(LxRectL_fromD({2147483648.0, 4294967296.0, 4294967301.0, 8589934595.5}),
              (LxRectL{lowest, 0, 5, 4}));
    EXPECT_EQ(LxRectL_fromD({-4294967297.0, -1e300, 9223372036854775808.0, INFINITY}),
              (LxRectL{-1, 0, 0, 0}));
}

TEST(Rect, FromDHoldsForAnyInput) {
    // The low 32 bits by division with remainder, which a double does exactly.
    const auto lowBits = [](double value) {
        if (!(std::fabs(value) < 9223372036854775808.0))
            return 0;
        const double rest = std::fmod(value, 4294967296.0);
        return static_cast<int32_t>(static_cast<uint32_t>(static_cast<int64_t>(rest)));
    };
    Random random(2);
    for (int i = 0; i < 200000; ++i) {
        LxRectD r = anyRectD(random);
        const LxRectL covering = LxRectL_fromD(r);
        if (r.x0 > r.x1)
            std::swap(r.x0, r.x1);
        if (r.y0 > r.y1)
            std::swap(r.y0, r.y1);
        ASSERT_EQ(covering, (LxRectL{lowBits(std::floor(r.x0)), lowBits(std::floor(r.y0)),
                                     lowBits(std::ceil(r.x1)), lowBits(std::ceil(r.y1))}))
            << r;
    }
}

TEST(Rect, FromCGRectAddsInSinglePrecision) {
    // 16777216 is 2 to the power of 24: above it single precision has no odd numbers.
    EXPECT_EQ(LxRectD_fromCGRect({16777216.0f, 0, 1, 1}), (LxRectD{16777216.0, 0, 16777216.0, 1}));
    EXPECT_EQ(LxRectL_fromCGRect({16777216.0f, 0, 1, 1}), (LxRectL{16777216, 0, 16777216, 1}));
    // In double 0.1f + 0.2f is 0.30000000447, between the singles 0.3 and its neighbour.
    EXPECT_EQ(LxRectD_fromCGRect({0.1f, 0.1f, 0.2f, 0.2f}).x1, double(float(0.1f + 0.2f)));
}

TEST(Rect, FromCGRectSorts) {
    EXPECT_EQ(LxRectD_fromCGRect({10, 20, -4, -8}), (LxRectD{6, 12, 10, 20}));
}

TEST(Rect, FromCGRectToIntegersRoundsBeforeItSorts) {
    EXPECT_EQ(LxRectL_fromCGRect({1.5f, 2.5f, 2, 2}), (LxRectL{1, 2, 4, 5}));
    // From 10.5 back to 6.25: the floor of the first corner is 10, the ceiling of the second 7.
    EXPECT_EQ(LxRectL_fromCGRect({10.5f, 10.5f, -4.25f, -4.25f}), (LxRectL{7, 7, 10, 10}));
    EXPECT_EQ(LxRectL_fromCGRect({0, 0, 1e20f, NAN}), (LxRectL{lowest, lowest, 0, 0}));
}

TEST(Rect, AsCGRectSortsAndNarrows) {
    EXPECT_EQ(LxRectL_asCGRect({30, 2, 10, 5}), (LxCGRect{10, 2, 20, 3}));
    EXPECT_EQ(LxRectD_asCGRect({3, 2, 1.5, 0.1}), (LxCGRect{1.5f, 0.1f, 1.5f, float(2 - 0.1)}));
    EXPECT_EQ(LxRectL_asCGRect({lowest, 0, highest, 16777217}),
              (LxCGRect{-2147483648.0f, 0, 4294967296.0f, 16777216.0f}));
}

TEST(Rect, AsCGRectNarrowsTheDifferenceNotItsOperands) {
    EXPECT_EQ(LxRectL_asCGRect({16777216, 0, 16777217, 1}).width, 1.0f);
    EXPECT_EQ(LxRectD_asCGRect({16777216, 0, 16777217, 1}).width, 1.0f);
}

TEST(Rect, SetEmptyTurnsTheCornersInsideOut) {
    LxRectL l{};
    LxRectL_setEmpty(&l);
    EXPECT_EQ(l, emptyL);
    EXPECT_TRUE(LxRectL_isEmpty(&l));
    LxRectD d{};
    LxRectD_setEmpty(&d);
    EXPECT_EQ(d, emptyD);
    EXPECT_EQ(d.x0, double(1e18f));
    EXPECT_TRUE(LxRectD_isEmpty(&d));
}

TEST(Rect, NullIsEmpty) {
    EXPECT_EQ(LxRectL_isEmpty(nullptr), 1);
    EXPECT_EQ(LxRectD_isEmpty(nullptr), 1);
}

TEST(Rect, NoWidthOrSwappedCornersAreEmpty) {
    const LxRectL line{5, 0, 5, 10}, swapped{7, 0, 5, 10}, low{0, 10, 10, 5}, full{0, 0, 1, 1};
    EXPECT_EQ(LxRectL_isEmpty(&line), 1);
    EXPECT_EQ(LxRectL_isEmpty(&swapped), 1);
    EXPECT_EQ(LxRectL_w(&swapped), 2);
    EXPECT_EQ(LxRectL_isEmpty(&low), 1);
    EXPECT_EQ(LxRectL_h(&low), 5);
    EXPECT_EQ(LxRectL_isEmpty(&full), 0);
    const LxRectD lineD{5, 0, 5, 10}, swappedD{7, 0, 5.5, 10}, fullD{0, 0, 0.001, 1};
    EXPECT_EQ(LxRectD_isEmpty(&lineD), 1);
    EXPECT_EQ(LxRectD_isEmpty(&swappedD), 1);
    EXPECT_EQ(LxRectD_w(&swappedD), 1.5);
    EXPECT_EQ(LxRectD_h(&swappedD), 10);
    EXPECT_EQ(LxRectD_isEmpty(&fullD), 0);
}

TEST(Rect, WidthAndHeightKeepTheLow32Bits) {
    const LxRectL r{lowest, lowest, highest, 0};
    EXPECT_EQ(LxRectL_w(&r), -1) << "4294967295";
    EXPECT_EQ(LxRectL_h(&r), lowest) << "2147483648";
}

TEST(Rect, ContainsAllFourSides) {
    const LxRectL r{0, 0, 10, 10};
    EXPECT_EQ(LxRectL_contains(r, 10, 10), 1);
    EXPECT_EQ(LxRectL_contains(r, 0, 0), 1);
    EXPECT_EQ(LxRectL_contains(r, 11, 10), 0);
    EXPECT_EQ(LxRectL_contains(r, 5, -1), 0);
    EXPECT_EQ(LxRectD_contains({0, 0, 10, 10}, 10, 0), 1);
    EXPECT_EQ(LxRectD_contains({0, 0, 10, 10}, 10.001, 0), 0);
    EXPECT_EQ(LxRectD_contains({0, 0, 10, 10}, NAN, 5), 0);
}

TEST(Rect, OnlyTheDoubleFormOfContainsSorts) {
    EXPECT_EQ(LxRectL_contains({10, 10, 0, 0}, 5, 5), 0);
    EXPECT_EQ(LxRectD_contains({10, 10, 0, 0}, 5, 5), 1);
}

TEST(Rect, RectanglesThatTouchDoNotIntersect) {
    EXPECT_EQ(LxRectL_isIntersecting({0, 0, 10, 10}, {10, 0, 20, 10}), 0);
    EXPECT_EQ(LxRectL_isIntersecting({0, 0, 10, 10}, {9, 0, 20, 10}), 1);
    EXPECT_EQ(LxRectL_isIntersecting({0, 0, 10, 10}, {0, 10, 10, 20}), 0);
    EXPECT_EQ(LxRectD_isIntersecting({0, 0, 10, 10}, {10, 0, 20, 10}), 0);
    EXPECT_EQ(LxRectD_isIntersecting({0, 0, 10, 10}, {9.999, 9.999, 20, 20}), 1);
}

TEST(Rect, IsIntersectingDoesNotSort) {
    EXPECT_EQ(LxRectL_isIntersecting({10, 0, 0, 10}, {2, 2, 8, 8}), 0);
    EXPECT_EQ(LxRectD_isIntersecting({10, 0, 0, 10}, {2, 2, 8, 8}), 0);
    // Four inequalities and nothing else: a crossed rectangle that satisfies them intersects.
    EXPECT_EQ(LxRectL_isIntersecting({6, 0, 4, 10}, {0, 0, 10, 10}), 1);
}

TEST(Rect, IntegralSortsAndGrowsToWholeNumbers) {
    LxRectD r{3.5, -1.25, 0.5, -1.5};
    LxRectD_Integral(&r);
    EXPECT_EQ(r, (LxRectD{0, -2, 4, -1}));
}

TEST(Rect, OffsetAndMoveBySortAndAdd) {
    for (const auto move : {LxRectL_offset, LxRectL_moveBy}) {
        LxRectL r{10, 0, 4, 6};
        move(&r, 100, -1);
        EXPECT_EQ(r, (LxRectL{104, -1, 110, 5}));
        LxRectL edge{0, 0, highest, 1};
        move(&edge, 1, 0);
        EXPECT_EQ(edge, (LxRectL{1, 0, lowest, 1})) << "wraps, and is not sorted again";
    }
    for (const auto move : {LxRectD_offset, LxRectD_moveBy}) {
        LxRectD r{10, 0, 4, 6};
        move(&r, 0.5, -1);
        EXPECT_EQ(r, (LxRectD{4.5, -1, 10.5, 5}));
    }
}

TEST(Rect, MoveToBringsTheCornerStoredFirst) {
    LxRectL r{0, 0, 4, 6};
    LxRectL_moveTo(&r, 10, 20);
    EXPECT_EQ(r, (LxRectL{10, 20, 14, 26}));
    LxRectL swapped{4, 6, 0, 0};
    LxRectL_moveTo(&swapped, 10, 20);
    EXPECT_EQ(swapped, (LxRectL{6, 14, 10, 20}));
    LxRectD d{4, 0, 0, 6};
    LxRectD_moveTo(&d, 10.5, 20);
    EXPECT_EQ(d, (LxRectD{6.5, 20, 10.5, 26}));
    LxRectL far{lowest, 0, 0, 1};
    LxRectL_moveTo(&far, highest, 0);
    EXPECT_EQ(far, (LxRectL{highest, 0, -1, 1})) << "the way of 4294967295 wraps to -1";
}

TEST(Rect, MovesOfDoublesHoldForAnyInput) {
    Random random(3);
    for (int i = 0; i < 50000; ++i) {
        const LxRectD r = anyRectD(random);
        const double x = random.anyReal(), y = random.anyReal();
        const bool swapX = r.x1 < r.x0, swapY = r.y1 < r.y0;
        const LxRectD s{swapX ? r.x1 : r.x0, swapY ? r.y1 : r.y0, swapX ? r.x0 : r.x1, swapY ? r.y0 : r.y1};
        LxRectD to = r, by = r;
        LxRectD_moveTo(&to, x, y);
        LxRectD_moveBy(&by, x, y);
        const double dx = x - r.x0, dy = y - r.y0;
        ASSERT_EQ(to, (LxRectD{s.x0 + dx, s.y0 + dy, s.x1 + dx, s.y1 + dy})) << r;
        ASSERT_EQ(by, (LxRectD{s.x0 + x, s.y0 + y, s.x1 + x, s.y1 + y})) << r;
    }
}

TEST(Rect, IntersectWithTheEmptyRectangleIsTheOther) {
    const LxRectL r{3, 4, 10, 12};
    EXPECT_EQ(LxRectL_intersect(r, emptyL), r);
    EXPECT_EQ(LxRectL_intersect(emptyL, r), r);
    EXPECT_EQ(LxRectL_intersect({10, 12, 3, 4}, emptyL), r) << "sorted";
    EXPECT_EQ(LxRectL_intersect(r, {5, 5, 5, 9}), r) << "no width";
    EXPECT_EQ(LxRectL_intersect({5, 5, 9, 5}, r), r) << "no height";
    EXPECT_EQ(LxRectL_intersect(LxRectL_0, emptyL), emptyL);
    EXPECT_EQ(LxRectL_intersect(emptyL, emptyL), emptyL);
    EXPECT_EQ(LxRectD_intersect({3, 4, 10, 12}, emptyD), (LxRectD{3, 4, 10, 12}));
    EXPECT_EQ(LxRectD_intersect(emptyD, LxRectD_0), emptyD);
}

TEST(Rect, IntersectOfDisjointRectanglesHasCrossedCorners) {
    const LxRectL common = LxRectL_intersect({0, 0, 10, 10}, {20, 20, 30, 30});
    EXPECT_EQ(common, (LxRectL{20, 20, 10, 10}));
    EXPECT_EQ(LxRectL_isEmpty(&common), 1);
}

TEST(Rect, UnionCountsAnEmptyOperandAsAbsent) {
    const LxRectL r{3, 4, 10, 12};
    EXPECT_EQ(LxRectL_union(r, emptyL), r);
    EXPECT_EQ(LxRectL_union(emptyL, {10, 12, 3, 4}), r);
    EXPECT_EQ(LxRectL_union(r, LxRectL_0), r);
    EXPECT_EQ(LxRectL_union(emptyL, LxRectL_0), emptyL);
    EXPECT_EQ(LxRectL_union(r, {20, 0, 15, 5}), (LxRectL{3, 0, 20, 12}));
    EXPECT_EQ(LxRectD_union({3, 4, 10, 12}, emptyD), (LxRectD{3, 4, 10, 12}));
    EXPECT_EQ(LxRectD_union({0, 0, 1, 1}, {0.5, 5, 0.25, 4}), (LxRectD{0, 0, 1, 5}));
}

TEST(Rect, IntersectAndUnionOfAllSmallPairsAreThoseOfTheirCells) {
    const auto rects = smallRects();
    for (const LxRectL &a : rects) {
        for (const LxRectL &b : rects) {
            const LxRectL common = LxRectL_intersect(a, b);
            const LxRectL around = LxRectL_union(a, b);
            const unsigned inA = cells(a), inB = cells(b);
            if (inA == 0 || inB == 0) {
                const LxRectL &other = inA != 0 ? a : b;
                const LxRectL expected =
                    (inA | inB) == 0 ? emptyL
                                     : LxRectL{std::min(other.x0, other.x1), std::min(other.y0, other.y1),
                                               std::max(other.x0, other.x1), std::max(other.y0, other.y1)};
                ASSERT_EQ(common, expected) << a << b;
                ASSERT_EQ(around, expected) << a << b;
            } else {
                ASSERT_EQ(LxRectL_isEmpty(&common), (inA & inB) == 0) << a << b;
                ASSERT_TRUE((inA & inB) == 0 || cells(common) == (inA & inB)) << a << b;
                ASSERT_EQ(cells(around) & (inA | inB), inA | inB) << a << b;
                ASSERT_EQ(around.x0, std::min({a.x0, a.x1, b.x0, b.x1}));
                ASSERT_EQ(around.y0, std::min({a.y0, a.y1, b.y0, b.y1}));
                ASSERT_EQ(around.x1, std::max({a.x0, a.x1, b.x0, b.x1}));
                ASSERT_EQ(around.y1, std::max({a.y0, a.y1, b.y0, b.y1}));
            }
            ASSERT_EQ(LxRectD_intersect(widenedAsIs(a), widenedAsIs(b)),
                      common == emptyL ? emptyD : widenedAsIs(common))
                << a << b;
            ASSERT_EQ(LxRectD_union(widenedAsIs(a), widenedAsIs(b)),
                      around == emptyL ? emptyD : widenedAsIs(around))
                << a << b;
        }
    }
}

TEST(Rect, PredicatesOfAllSmallRectanglesAgreeWithTheirCells) {
    const auto rects = smallRects();
    for (const LxRectL &a : rects) {
        const bool swapped = a.x0 > a.x1 || a.y0 > a.y1;
        ASSERT_EQ(LxRectL_isEmpty(&a), swapped || cells(a) == 0) << a;
        const LxRectD d = widenedAsIs(a);
        ASSERT_EQ(LxRectD_isEmpty(&d), LxRectL_isEmpty(&a)) << a;
        for (const LxRectL &b : rects) {
            if (!LxRectL_isEmpty(&a) && !LxRectL_isEmpty(&b)) {
                ASSERT_EQ(LxRectL_isIntersecting(a, b), (cells(a) & cells(b)) != 0) << a << b;
            }
            ASSERT_EQ(LxRectD_isIntersecting(d, widenedAsIs(b)), LxRectL_isIntersecting(a, b)) << a << b;
        }
    }
}

TEST(Rect, SizesAndMovesOfIntegersHoldForAnyInput) {
    Random random(4);
    const auto low = [](int64_t value) { return static_cast<int32_t>(static_cast<uint32_t>(value)); };
    for (int i = 0; i < 100000; ++i) {
        const LxRectL r = anyRectL(random);
        const int32_t x = random.anyInteger(), y = random.anyInteger();
        const int64_t x0 = std::min(r.x0, r.x1), x1 = std::max(r.x0, r.x1);
        const int64_t y0 = std::min(r.y0, r.y1), y1 = std::max(r.y0, r.y1);
        ASSERT_EQ(LxRectL_w(&r), low(x1 - x0)) << r;
        ASSERT_EQ(LxRectL_h(&r), low(y1 - y0)) << r;
        LxRectL by = r, to = r;
        LxRectL_moveBy(&by, x, y);
        ASSERT_EQ(by, (LxRectL{low(x0 + x), low(y0 + y), low(x1 + x), low(y1 + y)})) << r;
        LxRectL_moveTo(&to, x, y);
        const int64_t dx = int64_t{x} - r.x0, dy = int64_t{y} - r.y0;
        ASSERT_EQ(to, (LxRectL{low(x0 + dx), low(y0 + dy), low(x1 + dx), low(y1 + dy)})) << r;
        ASSERT_EQ(LxRectL_asCGRect(r), (LxCGRect{float(x0), float(y0), float(x1 - x0), float(y1 - y0)})) << r;
    }
}
