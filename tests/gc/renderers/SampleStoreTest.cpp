#include "gc/renderers/SampleStore.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/gc/renderers/NaiveRaster.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

using Words = std::vector<uint32_t>;

Words sorted(SampleList &list) {
    const auto words = list.sort();
    return {words.begin(), words.end()};
}

Words samplesOf(double x0, double y0, double x1, double y1) {
    SampleList list = {};
    list.addEdge(x0, y0, x1, y1);
    return sorted(list);
}

uint32_t word(uint32_t y, uint32_t x, uint32_t fraction, uint32_t direction) {
    return y << 17 | x << 6 | fraction << 1 | direction;
}

} // namespace

TEST(Samples, AreFourARow) {
    EXPECT_EQ(samplesOf(10.5, 3, 10.5, 4), Words(4, word(3, 10, 16, 1)));
    EXPECT_EQ(samplesOf(10.5, 4, 10.5, 3), Words(4, word(3, 10, 16, 0)));
    EXPECT_EQ(samplesOf(10.5, 3.25, 10.5, 4), Words(3, word(3, 10, 16, 1)));
    EXPECT_EQ(samplesOf(10.5, 3.24, 10.5, 3.49), Words(1, word(3, 10, 16, 1)));
}

TEST(Samples, OfLevelEdgesAreNone) {
    EXPECT_EQ(samplesOf(1, 3, 50, 3), Words());
    EXPECT_EQ(samplesOf(1, 3, 50, 3.2), Words()) << "level in quarters of a row";
    EXPECT_EQ(samplesOf(1, -0.2, 50, 0.2), Words()) << "both are truncated to 0";
}

TEST(Samples, FollowTheSlope) {
    // From (0, 0) to (1, 2): 32 steps of x over 8 quarter rows. The error starts at 8, so each row adds 32:
    // (40 - 1) / 8 = 4 steps, and the error is 8 again.
    EXPECT_EQ(samplesOf(0, 0, 1, 2),
              (Words{word(0, 0, 0, 1), word(0, 0, 4, 1), word(0, 0, 8, 1), word(0, 0, 12, 1),
                     word(1, 0, 16, 1), word(1, 0, 20, 1), word(1, 0, 24, 1), word(1, 0, 28, 1)}));
    // From (3 / 32, 0) back to (0, 1): 3 steps over 4 rows. Error 4 + 3 = 7: one step, 3; 6: one step, 2; 5:
    // one step.
    EXPECT_EQ(samplesOf(3.0 / 32, 0, 0, 1),
              (Words{word(0, 0, 0, 1), word(0, 0, 1, 1), word(0, 0, 2, 1), word(0, 0, 3, 1)}));
}

TEST(Samples, AboveTheFirstRowAreLeftOut) {
    EXPECT_EQ(samplesOf(5, -2, 5, 1), Words(4, word(0, 5, 0, 1)));
    // From (0, -1) to (4, 1): entered at row 0 with x at 2, then 16 steps a quarter row.
    EXPECT_EQ(samplesOf(0, -1, 4, 1),
              (Words{word(0, 2, 0, 1), word(0, 2, 16, 1), word(0, 3, 0, 1), word(0, 3, 16, 1)}));
    EXPECT_EQ(samplesOf(0, -9, 4, -1), Words());
    EXPECT_EQ(samplesOf(0, -9, 4, 0), Words());
}

TEST(Samples, LeftOfTheFirstPixelStandAtIt) {
    EXPECT_EQ(samplesOf(-7, 0, -7, 1), Words(4, word(0, 0, 0, 1)));
    EXPECT_EQ(samplesOf(-0.5, 0, 0.5, 1),
              (Words{word(0, 0, 0, 1), word(0, 0, 0, 1), word(0, 0, 0, 1), word(0, 0, 8, 1)}));
}

TEST(Samples, BeyondTheLastPixelRunIntoTheRow) {
    // x 2048.5 is pixel 0 of the next row, or'd into the row's own bits.
    EXPECT_EQ(samplesOf(2048.5, 0, 2048.5, 1), Words(4, word(1, 0, 16, 1)));
    EXPECT_EQ(samplesOf(2048.5, 1, 2048.5, 2), Words(4, word(1, 0, 16, 1)));
    EXPECT_EQ(samplesOf(2047, 0, 2047, 1), Words(4, word(0, 2047, 0, 1)));
}

TEST(Samples, EndWithTheStore) {
    SampleList list = {};
    for (int i = 0; i < 16; ++i)
        list.addEdge(i, 0, i, 2047); // 8188 each
    list.addEdge(100, 0, 100, 2047);
    EXPECT_EQ(list.count, 131073);
    list.addEdge(101, 0, 101, 2047);
    EXPECT_EQ(list.count, 131073);
    // The last edge that found room has 131073 - 16 * 8188 = 65 samples.
    const Words words = sorted(list);
    EXPECT_EQ(std::count_if(words.begin(), words.end(), [](uint32_t w) { return Sample{w}.x() == 100; }), 65);
    EXPECT_EQ(std::count_if(words.begin(), words.end(), [](uint32_t w) { return Sample{w}.x() == 101; }), 0);
}

TEST(Samples, AgreeWithTheStepsOneByOne) {
    Random random;
    for (int round = 0; round < 200; ++round) {
        SampleList list = {};
        NaiveShape naive;
        const double range = round % 4 == 0 ? 3000 : round % 4 == 1 ? 3 : 200;
        for (int i = random.integer(1, 20); i > 0; --i) {
            const double x0 = random.real(-range, range), y0 = random.real(-range, range);
            const double x1 = random.coin() ? x0 : random.real(-range, range),
                         y1 = random.real(-range, range);
            list.addEdge(x0, y0, x1, y1);
            naive.addEdge(x0, y0, x1, y1);
        }
        std::sort(naive.samples.begin(), naive.samples.end());
        ASSERT_EQ(sorted(list), naive.samples) << "round " << round;
    }
}

TEST(SampleRowsTest, GiveEachRowsSums) {
    Random random;
    struct Sums {
        int32_t rise = 0, fall = 0, winding = 0;
        bool operator==(const Sums &) const = default;
    };
    for (int round = 0; round < 20; ++round) {
        SampleList list = {};
        const bool upright = random.coin();
        for (int i = random.integer(1, upright ? 4 : 30); i > 0; --i) {
            // A slanted edge from above the first row is taken for plain only if it ends in its first half.
            const double right = upright ? 2000 : 1000;
            const double x = random.real(-5, right);
            list.addEdge(x, random.real(-5, 300), upright ? x : random.real(0, right), random.real(0, 300));
        }
        // The naive way: a sum for each pixel.
        std::map<std::pair<int32_t, int32_t>, Sums> expected, actual;
        SampleRows rows(list);
        ASSERT_FALSE(rows.areWords());
        for (int32_t y = rows.first(); y <= rows.last();) {
            int32_t before = -1;
            const int32_t end = y + rows.read(y, sharedCells());
            sharedCells().drain([&](int32_t x, const CellSums &sums, int32_t winding) {
                EXPECT_GT(x, before);
                before = x;
                for (int32_t row = y; row < end; ++row)
                    actual[{row, x}] = {sums.rise, sums.fall, winding};
            });
            y = end;
        }
        for (const uint32_t w : list.sort()) {
            const Sample sample = {w};
            Sums &sums = expected[{sample.y(), sample.x()}];
            (sample.down() ? sums.rise : sums.fall) += sample.down() ? sample.covered() : -sample.covered();
            sums.winding += sample.down() ? 1 : -1;
        }
        ASSERT_TRUE(actual == expected) << "round " << round;
    }
}

TEST(SampleRowsTest, TellHowManyRowsAreAlike) {
    SampleList list = {};
    list.addEdge(3, 1.5, 3, 20);
    list.addEdge(9, 4, 9, 10.25);
    std::vector<std::pair<int32_t, int32_t>> steps;
    SampleRows rows(list);
    for (int32_t y = rows.first(); y <= rows.last(); y += steps.back().second) {
        steps.emplace_back(y, rows.read(y, sharedCells()));
        sharedCells().drain([](int32_t, const CellSums &, int32_t) {});
    }
    // The half row alone, the rows up to the second edge, those of both, the one where it ends, the rest.
    EXPECT_EQ(steps, (std::vector<std::pair<int32_t, int32_t>>{{1, 1}, {2, 2}, {4, 6}, {10, 1}, {11, 9}}));
}

TEST(SampleRowsTest, GiveWayToWordsWhereRowsWrap) {
    SampleList list = {};
    list.addEdge(1, 2046, 1, 2048);
    EXPECT_FALSE(SampleRows(list).areWords());
    list.addEdge(1, 2048, 1, 2049);
    EXPECT_TRUE(SampleRows(list).areWords());
    list.restart();
    list.addEdge(2048, 3, 2048, 4);
    EXPECT_TRUE(SampleRows(list).areWords());
    const SampleList empty = {};
    EXPECT_GT(SampleRows(empty).first(), SampleRows(empty).last());
}

// Lists that write over each other's samples, beside an array that does.
TEST(SampleRowsTest, ShareTheWordsWhateverIsKeptAsEdges) {
    Random random;
    std::vector<uint32_t> store;
    SampleList lists[3] = {};
    for (int round = 0; round < 2000; ++round) {
        SampleList &list = lists[random.integer(0, 2)];
        switch (random.integer(0, 5)) {
        case 0:
            list.restart();
            break;
        case 1: {
            Words expected(store.begin(), store.begin() + list.count);
            if (!list.sorted) // or they were once, and stay as they are now
                std::sort(expected.begin(), expected.end());
            ASSERT_EQ(sorted(list), expected) << "round " << round;
            // What was sorted stays so in the store.
            std::copy(expected.begin(), expected.end(), store.begin());
            break;
        }
        default: {
            const double right = random.integer(0, 9) == 0 ? 2050 : 50;
            const double x0 = random.real(-5, right), y0 = random.real(-2, 9);
            const double x1 = random.real(-5, right), y1 = random.real(-2, 9);
            NaiveShape naive;
            naive.addEdge(x0, y0, x1, y1);
            store.resize(std::max(store.size(), static_cast<size_t>(list.count) + naive.samples.size()));
            std::copy(naive.samples.begin(), naive.samples.end(), store.begin() + list.count);
            list.addEdge(x0, y0, x1, y1);
        }
        }
    }
}
