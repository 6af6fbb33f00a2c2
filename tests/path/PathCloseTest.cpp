// The closing test and mending.
#include "path/Path.h"

#include <cmath>
#include <ctime>
#include <limits>

#include <gtest/gtest.h>

#include "tests/path/PathStream.h"
#include "tests/support/NoMemory.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

int32_t closed(const Stream &stream) {
    const PathHandle path = stream.path();
    const int32_t answer = LxPath_isClosed(path.get());
    EXPECT_EQ(Stream(path), stream) << "the test changes nothing";
    EXPECT_EQ(LxPath_Close(path.get(), 0), answer);
    return answer;
}

Stream square() {
    return Stream().move(0, 0).line(10, 0).line(10, 10).line(0, 10);
}

} // namespace

TEST(PathClose, EmptyPathIsClosed) {
    EXPECT_EQ(closed(Stream()), 1);
    EXPECT_EQ(closed(Stream().zeros(3)), 1);
}

TEST(PathClose, SquareIsOpenUnlessItsLastLineReturned) {
    EXPECT_EQ(closed(square().close()), 0);
    EXPECT_EQ(closed(square().line(0, 0).close()), 1);
}

TEST(PathClose, MendingAddsTheLineInFrontOfTheClose) {
    const PathHandle path = square().close().path();
    EXPECT_EQ(LxPath_Close(path.get(), 1), 1);
    EXPECT_EQ(Stream(path), square().line(0, 0).close());
    EXPECT_EQ(LxPath_isClosed(path.get()), 1);
}

TEST(PathClose, MendingAddsTheLineInFrontOfTheNextMove) {
    const PathHandle path = square().move(50, 50).line(60, 60).close().path();
    EXPECT_EQ(LxPath_Close(path.get(), 7), 1);
    EXPECT_EQ(Stream(path), square().line(0, 0).move(50, 50).line(60, 60).line(50, 50).close());
}

TEST(PathClose, LastSubpathWithoutACloseItemIsOpenEvenIfItReturned) {
    EXPECT_EQ(closed(square().line(0, 0)), 0);
    const PathHandle path = square().line(0, 0).path();
    EXPECT_EQ(LxPath_Close(path.get(), 1), 0);
    EXPECT_EQ(Stream(path), square().line(0, 0));
}

TEST(PathClose, TwoSubpathsCountOnceEach) {
    const Stream two = square().line(0, 0).close().move(5, 5).line(6, 6).line(5, 5);
    EXPECT_EQ(closed(Stream(two).close()), 1);
    EXPECT_EQ(closed(two), 0);
}

TEST(PathClose, SubpathWithoutACloseIsTestedAtTheNextMove) {
    EXPECT_EQ(closed(square().line(0, 0).move(5, 5).close()), 1);
    EXPECT_EQ(closed(square().move(5, 5).close()), 0);
}

TEST(PathClose, TwoClosesCountOnce) {
    EXPECT_EQ(closed(Stream().move(1, 1).close().close()), 1);
    EXPECT_EQ(closed(Stream().move(1, 1).close().close().move(2, 2)), 0);
}

TEST(PathClose, CloseBeforeAnyMoveIsSteppedOver) {
    EXPECT_EQ(closed(Stream().close()), 1);
    EXPECT_EQ(closed(Stream().line(3, 3).close().move(1, 1).close()), 1);
    const PathHandle path = Stream().line(3, 3).close().path();
    EXPECT_EQ(LxPath_Close(path.get(), 1), 1);
    EXPECT_EQ(path->count, 4);
}

TEST(PathClose, CurvesEndAtTheirLastPoint) {
    EXPECT_EQ(closed(Stream().move(1, 2).qcurve(5, 5, 1, 2).close()), 1);
    EXPECT_EQ(closed(Stream().move(1, 2).qcurve(1, 2, 5, 5).close()), 0);
    EXPECT_EQ(closed(Stream().move(1, 2).curve(5, 5, 6, 6, 1, 2).close()), 1);
    EXPECT_EQ(closed(Stream().move(1, 2).curve(1, 2, 1, 2, 6, 6).close()), 0);
}

TEST(PathClose, PolygonsEndAtTheirLastPoint) {
    const Stream polygon = Stream().move(1, 2).word(6).word(2).number(8).number(9);
    EXPECT_EQ(closed(Stream(polygon).number(1).number(2).close()), 1);
    EXPECT_EQ(closed(Stream(polygon).number(1).number(3).close()), 0);
    EXPECT_EQ(closed(Stream().move(1, 2).word(6).word(0).close()), 1);
    EXPECT_EQ(closed(Stream().move(1, 2).word(6).word(0xFFFFFFFF).close()), 1);
}

TEST(PathClose, PolygonWhoseCountFallsShortStillEndsAtItsLastPoint) {
    const LxPointD points[] = {{8, 9}, {1, 2}};
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_PolygonTo(path.get(), points, 2);
    EXPECT_EQ(LxPath_isClosed(path.get()), 0) << "no close item";
}

TEST(PathClose, ArcIsSteppedIntoAndItsRadiusReadAsAnItem) {
    // A radius above 0 has bits above 15: that ends the test.
    EXPECT_EQ(closed(Stream().move(1, 2).arc(5, 5, 1, 2, 1.0f, 0, 0).close()), 0);
    // A radius of 0 and words of 0 read as nothing, and the arc's second point counts as the end.
    EXPECT_EQ(closed(Stream().move(1, 2).arc(5, 5, 1, 2, 0.0f, 0, 0).close()), 1);
    EXPECT_EQ(closed(Stream().move(1, 2).arc(5, 5, 6, 6, 0.0f, 0, 0).close()), 0);
    // A word of 15 reads as a close.
    EXPECT_EQ(closed(Stream().move(1, 2).arc(5, 5, 1, 2, 0.0f, 15, 0)), 1);
}

TEST(PathClose, WordThatIsNoItemAnswersNo) {
    for (const uint32_t tag : {7u, 8u, 9u, 14u, 16u, 0xFFFFFFFFu}) {
        EXPECT_EQ(closed(Stream().word(tag)), 0) << tag;
        EXPECT_EQ(closed(Stream().move(1, 2).close().word(tag)), 0) << tag;
    }
}

TEST(PathClose, PointsAreComparedAsStored) {
    const PathHandle path = emptyPath();
    LxPath_AddMoveTo(path.get(), 0.1, 0.2);
    LxPath_AddLineTo(path.get(), 5, 5);
    LxPath_AddLineTo(path.get(), 0.1 + 1e-12, static_cast<double>(0.2f));
    LxPath_AddClose(path.get());
    EXPECT_EQ(LxPath_isClosed(path.get()), 1);
    EXPECT_EQ(closed(Stream().move(0.0f, -0.0f).line(-0.0f, 0.0f).close()), 1);
}

TEST(PathClose, StartThatIsNotANumberCountsAsReached) {
    const PathHandle path = Stream().move(NAN, 2).line(5, 5).close().path();
    EXPECT_EQ(LxPath_Close(path.get(), 1), 1);
    EXPECT_EQ(path->count, 7);
}

TEST(PathClose, CutOffItemEndsTheTest) {
    EXPECT_EQ(closed(Stream().move(1, 2).close().word(2).number(5)), 1);
    EXPECT_EQ(closed(Stream().move(1, 2).close().word(1)), 1);
    EXPECT_EQ(closed(Stream().move(1, 2).close().word(4).zeros(5)), 1);
}

TEST(PathClose, MendingCountsAllItemsBeforeTheGap) {
    const Stream start = Stream().zeros(2).move(1, 2).qcurve(3, 4, 5, 6).curve(1, 2, 3, 4, 5, 6);
    const PathHandle path = Stream(start).close().path();
    EXPECT_EQ(LxPath_Close(path.get(), 1), 1);
    EXPECT_EQ(Stream(path), Stream(start).line(1, 2).close());
}

TEST(PathClose, MendingComesToAnEndWhereTheIndexGoesAstray) {
    // The index walk steps over all of this polygon and more, so the line lands at the end.
    const Stream polygon = Stream().move(1, 2).word(6).word(1).number(8).number(9).close();
    const PathHandle path = polygon.path();
    EXPECT_EQ(LxPath_Close(path.get(), 1), 0);
    EXPECT_EQ(Stream(path), Stream(polygon).line(1, 2));
    Random random(3);
    for (int round = 0; round < 2000; ++round) {
        Stream stream;
        for (int i = random.integer(1, 40); i > 0; --i)
            stream.word(random.coin() ? static_cast<uint32_t>(random.integer(0, 6)) : random.coin() ? 15 : 0);
        const PathHandle wild = stream.path();
        LxPath_Close(wild.get(), 1);
    }
}

TEST(PathClose, MendedPathsAreClosed) {
    Random random(4);
    for (int round = 0; round < 200; ++round) {
        Stream stream;
        for (int i = random.integer(1, 20); i > 0; --i) {
            const auto x = static_cast<float>(random.integer(0, 3));
            const auto y = static_cast<float>(random.integer(0, 3));
            if (random.integer(0, 4) == 0)
                stream.close();
            stream.move(x, y).line(y, x);
            if (random.coin())
                stream.qcurve(5, 5, x, y);
        }
        stream.close();
        const PathHandle path = stream.path();
        EXPECT_EQ(LxPath_Close(path.get(), 1), 1) << stream;
        EXPECT_EQ(LxPath_isClosed(path.get()), 1) << stream;
    }
}

TEST(PathClose, MendingAddsALineAtEachGapAndNothingElse) {
    Random random(5);
    for (int round = 0; round < 300; ++round) {
        Stream stream, expected;
        float startX = 0, startY = 0, endX = 0, endY = 0;
        const auto comeBack = [&] {
            if (endX != startX || endY != startY)
                expected.line(startX, startY);
            endX = startX;
            endY = startY;
        };
        const auto both = [&](auto add) {
            add(stream);
            add(expected);
        };
        const auto coordinate = [&] { return static_cast<float>(random.integer(0, 2)); };
        for (int i = random.integer(1, 200); i > 0; --i) {
            const float x = coordinate(), y = coordinate();
            switch (random.integer(0, i == 1 ? 0 : 5)) {
            case 0:
                comeBack();
                both([](Stream &to) { to.close(); });
                continue;
            case 1:
                comeBack();
                both([&](Stream &to) { to.move(x, y); });
                startX = x;
                startY = y;
                break;
            case 2:
                both([](Stream &to) { to.zeros(2); });
                continue;
            case 3:
                both([&](Stream &to) { to.qcurve(7, 7, x, y); });
                break;
            case 4:
                both([&](Stream &to) { to.curve(7, 7, 8, 8, x, y); });
                break;
            default:
                both([&](Stream &to) { to.line(x, y); });
                break;
            }
            endX = x;
            endY = y;
        }
        // A move in front makes all of it one path with a start.
        const PathHandle path = Stream().move(0, 0).path();
        LxPath_Add(path.get(), stream.path().get());
        LxPath_Close(path.get(), 1);
        Stream whole = Stream().move(0, 0);
        whole.words.insert(whole.words.end(), expected.words.begin(), expected.words.end());
        ASSERT_EQ(Stream(path), whole) << round;
        ASSERT_EQ(path->capacity, (path->count + 255) / 256 * 256);
        for (int32_t i = path->count; i < path->capacity; ++i)
            ASSERT_EQ(path->words[i], 0u);
    }
}

TEST(PathClose, MendingGoesOnBehindAnArcLineByLine) {
    // The arc is read as five words and three that are nothing, so that the second gap is in front of item 9;
    // the index counts the arc once and comes to the end.
    const Stream arc = Stream().arc(3, 3, 4, 4, 0, 0, 0).line(2, 2).close();
    Stream before = Stream().move(0, 0).line(1, 0).close();
    Stream after = Stream().move(0, 0).line(1, 0).line(0, 0).close();
    for (Stream *stream : {&before, &after})
        stream->words.insert(stream->words.end(), arc.words.begin(), arc.words.end());
    const PathHandle path = before.path();
    EXPECT_EQ(LxPath_Close(path.get(), 1), 0);
    EXPECT_EQ(Stream(path), after.line(0, 0));
}

TEST(PathClose, MendingTakesTimeInProportion) {
    // With a walk from the beginning for each gap this would take a minute.
    constexpr int subpaths = 100'000;
    Stream stream;
    for (int i = 0; i < subpaths; ++i)
        stream.move(0, 0).line(1, static_cast<float>(i)).close();
    const PathHandle path = stream.path();
    const std::clock_t start = std::clock();
    EXPECT_EQ(LxPath_Close(path.get(), 1), 1);
    EXPECT_LT(std::clock() - start, 2 * CLOCKS_PER_SEC);
    EXPECT_EQ(path->count, subpaths * (3 + 3 + 3 + 1));
}

TEST(PathClose, WithoutMemoryForTheLineThePathStaysOpen) {
    Stream full; // 3 words, 84 times 3, and 1: the array's 256
    full.move(0, 0);
    for (int i = 0; i < 84; ++i)
        full.line(1, static_cast<float>(i));
    full.close();
    const PathHandle path = full.path();
    ASSERT_EQ(path->capacity, path->count);
    {
        const NoMemory shortage;
        EXPECT_EQ(LxPath_Close(path.get(), 1), 0);
    }
    EXPECT_EQ(Stream(path), full);
    EXPECT_EQ(LxPath_Close(path.get(), 1), 1);
}

TEST(PathClose, PolygonWithoutItsNumberEndsTheTest) {
    Stream full; // 3 words and 84 times 3, and the tag in the array's last
    full.move(0, 0);
    for (int i = 0; i < 84; ++i)
        full.line(0, 0);
    full.word(6);
    const PathHandle path = full.path();
    ASSERT_EQ(path->capacity, path->count);
    EXPECT_EQ(LxPath_isClosed(path.get()), 0) << "the move was never closed";
    EXPECT_EQ(LxPath_Info(path.get(), nullptr).points, 85);
}

TEST(PathClose, NullPathAnswersNo) {
    EXPECT_EQ(LxPath_Close(nullptr, 1), 0);
    EXPECT_EQ(LxPath_isClosed(nullptr), 0);
}
