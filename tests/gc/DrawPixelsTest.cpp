#include <algorithm>
#include <limits>

#include <gtest/gtest.h>
#include <oxlume/LxGC.h>

#include "tests/gc/Recorder.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

class DrawPixels : public testing::Test {
protected:
    Calls row(int32_t x1, int32_t x2, int32_t y) {
        LxGC_HLineL(gc_, x1, x2, y);
        return recorder_.take();
    }
    Calls column(int32_t x, int32_t y1, int32_t y2) {
        LxGC_VLineL(gc_, x, y1, y2);
        return recorder_.take();
    }
    Calls line(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
        LxGC_LineL(gc_, x1, y1, x2, y2);
        return recorder_.take();
    }
    void setMatrix(const LxMatrix &matrix) { *LxGC_Matrix(gc_) = matrix; }

    RecordingKinds kinds_;
    Recorder recorder_;
    ContextHandle handle_ = makeContext({0, 0, 100, 50}, recordsAll, recorder_);
    LxGC *gc_ = handle_.get();
};

using Row = DrawPixels;
using Column = DrawPixels;
using Line = DrawPixels;

const Calls none;

// A coordinate through the identity: rounded by truncating it + 0.5, which moves the negative ones up by one.
int32_t through(int32_t coordinate) {
    return coordinate < 0 ? coordinate + 1 : coordinate;
}

} // namespace

TEST_F(Row, IsClippedToTheColumnsBeforeTheRightSide) {
    LxGC_SetClipRectD(gc_, 10, 5, 40, 20);
    EXPECT_EQ(row(12, 30, 5), (Calls{"hLine 12 30 5"}));
    EXPECT_EQ(row(30, 12, 19), (Calls{"hLine 12 30 19"}));
    EXPECT_EQ(row(-5, 100, 6), (Calls{"hLine 10 39 6"}));
    EXPECT_EQ(row(10, 40, 6), (Calls{"hLine 10 39 6"}));
    EXPECT_EQ(row(10, 39, 6), (Calls{"hLine 10 39 6"}));
    EXPECT_EQ(row(11, 11, 6), (Calls{"hLine 11 11 6"}));
}

TEST_F(Row, OutsideIsNothing) {
    LxGC_SetClipRectD(gc_, 10, 5, 40, 20);
    EXPECT_EQ(row(12, 30, 4), none);
    EXPECT_EQ(row(12, 30, 20), none); // The bottom itself.
    EXPECT_EQ(row(41, 60, 6), none);
    EXPECT_EQ(row(0, 9, 6), none);
}

// On purpose: a row from the right side on passes, turned around.
TEST_F(Row, ThatBeginsAtTheRightSidePassesTurnedAround) {
    LxGC_SetClipRectD(gc_, 10, 5, 40, 20);
    EXPECT_EQ(row(40, 60, 6), (Calls{"hLine 40 39 6"}));
    EXPECT_EQ(row(40, 40, 6), (Calls{"hLine 40 39 6"}));
}

TEST_F(Row, TheIntegerClipCoversTheClip) {
    LxGC_SetClipRectD(gc_, 10.5, 5.5, 39.1, 19.1);
    EXPECT_EQ(row(0, 99, 5), (Calls{"hLine 10 39 5"}));
    EXPECT_EQ(row(0, 99, 19), (Calls{"hLine 10 39 19"}));
    EXPECT_EQ(row(0, 99, 20), none);
}

TEST_F(Row, TheSecondEndIsTransformedAsIfItsYWereZero) {
    setMatrix({1, 0.5, 3, 0.25, 1, 2, 0, 0, 1});
    // (4, 20) goes to (17, 23); (40, 0) goes to (43, 12), of which the row counts for nothing.
    EXPECT_EQ(row(4, 40, 20), (Calls{"hLine 17 43 23"}));
}

TEST_F(Row, TransformedEndsAreRounded) {
    setMatrix({1, 0, 0.5, 0, 1, -0.75, 0, 0, 1});
    EXPECT_EQ(row(4, 40, 20), (Calls{"hLine 5 41 19"}));
}

TEST_F(Column, IsClippedToTheRowsAboveTheBottom) {
    LxGC_SetClipRectD(gc_, 10, 5, 40, 20);
    EXPECT_EQ(column(10, 7, 9), (Calls{"vLine 10 7 9"}));
    EXPECT_EQ(column(39, 9, 7), (Calls{"vLine 39 7 9"}));
    EXPECT_EQ(column(11, -8, 80), (Calls{"vLine 11 5 19"}));
    EXPECT_EQ(column(11, 20, 80), (Calls{"vLine 11 20 19"}));
    EXPECT_EQ(column(11, 21, 80), none);
    EXPECT_EQ(column(9, 7, 9), none);
    EXPECT_EQ(column(40, 7, 9), none);
}

TEST_F(Column, TheSecondEndIsTransformedAsIfItsXWereZero) {
    setMatrix({1, 0.5, 3, 0.25, 1, 2, 0, 0, 1});
    // (20, 4) goes to (25, 11); (0, 40) goes to (23, 42), of which the column counts for nothing.
    EXPECT_EQ(column(20, 4, 40), (Calls{"vLine 25 11 42"}));
}

TEST_F(Line, IsTransformedAndClipped) {
    EXPECT_EQ(line(1, 2, 30, 40), (Calls{"lineL 1 2 30 40"}));
    EXPECT_EQ(line(-10, 20, 30, 20), (Calls{"lineL 0 20 30 20"}));
    // On purpose: unlike rows and columns, lines reach the far sides themselves.
    EXPECT_EQ(line(50, 10, 150, 10), (Calls{"lineL 50 10 100 10"}));
    EXPECT_EQ(line(5, 50, 20, 50), (Calls{"lineL 5 50 20 50"}));
    EXPECT_EQ(line(-10, 20, -5, 30), none);
    EXPECT_EQ(line(5, 51, 20, 51), none);
    setMatrix({0, 1, 5, 1, 0, 0, 0, 0, 1});
    EXPECT_EQ(line(1, 2, 3, 4), (Calls{"lineL 7 1 9 3"}));
}

TEST_F(Line, UsesTheClipAsItStandsAndNotItsCover) {
    LxGC_SetClipRectD(gc_, 10.5, 5, 40, 20);
    // The left end is cut at x = 10.5, which rounds up.
    EXPECT_EQ(line(0, 10, 30, 10), (Calls{"lineL 11 10 30 10"}));
}

TEST_F(Line, HasASecondName) {
    LxGC_ALineL(gc_, -10, 20, 30, 20);
    EXPECT_EQ(recorder_.take(), (Calls{"lineL 0 20 30 20"}));
}

TEST_F(DrawPixels, FramesAndEllipsesAreNeitherTransformedNorClipped) {
    setMatrix({2, 0, 5, 0, 2, 5, 0, 0, 1});
    LxGC_FrameL(gc_, -10, -20, 300, 200);
    LxGC_EllipseL(gc_, -10, -20, 300, 200);
    EXPECT_EQ(recorder_.take(), (Calls{"frameL -10 -20 300 200", "ellipseL -10 -20 300 200"}));
}

TEST_F(DrawPixels, WithoutAContextDoNothing) {
    LxGC_HLineL(nullptr, 0, 1, 2);
    LxGC_VLineL(nullptr, 0, 1, 2);
    LxGC_LineL(nullptr, 0, 1, 2, 3);
    LxGC_ALineL(nullptr, 0, 1, 2, 3);
    LxGC_FrameL(nullptr, 0, 1, 2, 3);
    LxGC_EllipseL(nullptr, 0, 1, 2, 3);
}

// The steps once more, one by one.
TEST_F(DrawPixels, RandomRunsFollowTheSteps) {
    Random random;
    for (int i = 0; i < 20000; ++i) {
        const int32_t left = random.integer(0, 60), top = random.integer(0, 30);
        const int32_t right = random.integer(left + 1, 100), bottom = random.integer(top + 1, 50);
        LxGC_SetClipRectL(gc_, left, top, right, bottom);
        const bool wild = random.integer(0, 9) == 0;
        int32_t x1 = wild ? random.anyInteger() : random.integer(-20, 120);
        int32_t x2 = wild ? random.anyInteger() : random.integer(-20, 120);
        const int32_t y = random.integer(0, 60);

        const Calls actual = row(x1, x2, y);
        Calls expected;
        x1 = through(x1);
        x2 = through(x2);
        if (!(y < top) && !(y >= bottom)) {
            if (x1 > x2)
                std::swap(x1, x2);
            if (!(right < x1)) {
                x1 = std::max(x1, left);
                if (x2 >= right)
                    x2 = right - 1;
                if (!(left > x2))
                    expected.push_back("hLine " + std::to_string(x1) + " " + std::to_string(x2) + " " +
                                       std::to_string(y));
            }
        }
        ASSERT_EQ(actual, expected);
    }
}

TEST_F(DrawPixels, NumbersOutOfRangeAreHarmless) {
    Random random;
    for (int i = 0; i < 3000; ++i) {
        setMatrix({random.anyReal(), random.anyReal(), random.anyReal(), random.anyReal(), random.anyReal(),
                   random.anyReal(), 0, 0, 1});
        LxGC_SetBoundsRectD(gc_, random.anyReal(), random.anyReal(), random.anyReal(), random.anyReal());
        row(random.anyInteger(), random.anyInteger(), random.anyInteger());
        column(random.anyInteger(), random.anyInteger(), random.anyInteger());
        line(random.anyInteger(), random.anyInteger(), random.anyInteger(), random.anyInteger());
    }
}
