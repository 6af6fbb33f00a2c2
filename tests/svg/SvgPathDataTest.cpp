#include "svg/SvgPathData.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/gc/Recorder.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

std::string pathOf(const char *data) {
    LxSVGScanner scanner;
    LxPath *path = LxPath_Create();
    addPathData(path, data, scanner);
    const std::string items = describe(path);
    LxPath_Delete(path);
    return items;
}

} // namespace

TEST(SvgPathData, MovesAndLines) {
    EXPECT_EQ(pathOf("M1 2L3,4Z"), "M 1 2, L 3 4, Z");
    EXPECT_EQ(pathOf("m1 2 l3 4 l-1 0.5 z"), "M 1 2, L 4 6, L 3 6.5, Z");
    EXPECT_EQ(pathOf("M1 2 m3 4"), "M 1 2, M 4 6");
    EXPECT_EQ(pathOf("M1 2H5h2V7v-3"), "M 1 2, L 5 2, L 7 2, L 7 7, L 7 4");
    EXPECT_EQ(pathOf("L1 2"), "L 1 2");
    EXPECT_EQ(pathOf(""), "");
}

TEST(SvgPathData, Curves) {
    EXPECT_EQ(pathOf("M1 1C2 3 4 5 6 7l1 1"), "M 1 1, C 2 3 4 5 6 7, L 7 8");
    EXPECT_EQ(pathOf("M1 1c2 3 4 5 6 7l1 1"), "M 1 1, C 3 4 5 6 7 8, L 8 9");
}

TEST(SvgPathData, SmoothCurvesOnlyMoveThePen) {
    EXPECT_EQ(pathOf("M1 1S2 3 10 20l1 1"), "M 1 1, L 11 21");
    EXPECT_EQ(pathOf("M1 1s2 3 10 20l1 1"), "M 1 1, L 12 22");
}

TEST(SvgPathData, QuadraticCurvesAreTwoLines) {
    EXPECT_EQ(pathOf("M0,0q5,5,10,0"), "M 0 0, L 5 5, L 10 0");
    EXPECT_EQ(pathOf("M1 1q5 5 10 0l1 1"), "M 1 1, L 6 6, L 11 1, L 12 2"); // Both from the start.
    EXPECT_EQ(pathOf("M1 1Q5 5 10 0l1 1"), "M 1 1, L 5 5, L 10 0, L 11 1");
}

TEST(SvgPathData, SmoothQuadraticCurvesAndArcsAreIgnored) {
    EXPECT_EQ(pathOf("M1 1T5 5t6 6l1 1"), "M 1 1, L 2 2");
    EXPECT_EQ(pathOf("M1 1A5 5 0 0 1 9 9l1 1"), "M 1 1, L 2 2");
}

TEST(SvgPathData, RepeatedPairsAreIgnored) {
    EXPECT_EQ(pathOf("M 0 0 L 10 0 10 10"), "M 0 0, L 10 0");
    EXPECT_EQ(pathOf("M 0 0 10 0 L 5 5"), "M 0 0, L 5 5");
}

TEST(SvgPathData, AnExponentNeedsAFraction) {
    EXPECT_EQ(pathOf("M1e3 0"), "M 1 3");
    EXPECT_EQ(pathOf("M1.0e3 0"), "M 1000 0");
}

TEST(SvgPathData, ClosingLeavesThePenWhereItIs) {
    EXPECT_EQ(pathOf("M1 1L5 5Zl1 1"), "M 1 1, L 5 5, Z, L 6 6");
    EXPECT_EQ(pathOf("ZM1 1"), "Z, M 1 1");
}

// A command takes the tokens that come, and for one that is no number the last number.
TEST(SvgPathData, WhatStandsForANumberIsTheLastOne) {
    EXPECT_EQ(pathOf("M5 6L7"), "M 5 6, L 7 7");
    EXPECT_EQ(pathOf("M5 6LZ8L1 1"), "M 5 6, L 6 8, L 1 1");
    EXPECT_EQ(pathOf("MM3"), "M 0 3");
    EXPECT_EQ(pathOf("M5 6 \"L 9 9\" fill L1 1"), "M 5 6, L 1 1");
    EXPECT_EQ(pathOf("M fill 4"), "M 0 4");
}

TEST(SvgPathData, TheLastNumberComesFromTheTextBefore) {
    LxSVGScanner scanner;
    LxPath *path = LxPath_Create();
    addPathData(path, "M1 2.5", scanner);
    addPathData(path, "L", scanner);
    EXPECT_EQ(describe(path), "M 1 2.5, L 2.5 2.5");
    LxPath_Delete(path);
}

TEST(SvgPathData, ANegativeZeroKeepsItsSign) {
    EXPECT_EQ(pathOf("M-0 -0L-0.0 1"), "M -0 -0, L -0 1");
}

// Any text at all: no crash, and no path that is not read to its end.
TEST(SvgPathData, RandomTextIsHarmless) {
    static constexpr char letters[] = "MmCcSsQqTtLlHhVvZzAa0123456789.,-+eE \"\\#fillstroke";
    Random random;
    for (int i = 0; i < 3000; ++i) {
        std::string data;
        for (int n = random.integer(0, 60); n > 0; --n)
            data += letters[static_cast<size_t>(random.integer(0, sizeof letters - 2))];
        pathOf(data.c_str());
    }
}
