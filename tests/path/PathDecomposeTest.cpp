// Transforming, flattening, counting, point arrays.
#include "path/PathOperations.h"

#include <cmath>

#include <gtest/gtest.h>

#include "tests/path/PathStream.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr LxMatrix doubled = {2, 0, 100, 0, 3, 200, 9, 9, 9};

PathHandle decomposed(const Stream &stream, const LxMatrix *matrix = nullptr) {
    const PathHandle path = stream.path();
    PathHandle created(LxPath_CreateDecomposed(path.get(), matrix));
    EXPECT_EQ(Stream(path), stream);
    LxPath_Decompose(path.get(), matrix);
    EXPECT_EQ(Stream(path), Stream(created));
    EXPECT_EQ(path->capacity, (path->count + 255) / 256 * 256);
    EXPECT_EQ(created->capacity, path->capacity);
    for (int32_t i = path->count; i < path->capacity; ++i)
        EXPECT_EQ(path->words[i], 0u);
    return created;
}

LxPathInfo info(const Stream &stream, const LxMatrix *matrix = nullptr) {
    return LxPath_Info(stream.path().get(), matrix);
}

void expectInfo(const LxPathInfo &info, int32_t points, int32_t lines, int32_t moves) {
    EXPECT_EQ(info.points, points);
    EXPECT_EQ(info.lines, lines);
    EXPECT_EQ(info.moves, moves);
    EXPECT_EQ(info.reserved1 | info.reserved2 | info.reserved3, 0);
    EXPECT_EQ(info.reserved4 | info.reserved5 | info.reserved6, 0);
}

Stream pointArray(const Stream &stream, const LxMatrix *matrix = nullptr) {
    return Stream(PathHandle(LxPath_CreatePointArray(stream.path().get(), matrix)));
}

} // namespace

TEST(PathTransform, MovesThePointsOfEveryItem) {
    const PathHandle path = Stream()
                                .zeros(1)
                                .move(1, 2)
                                .line(3, 4)
                                .qcurve(1, 2, 3, 4)
                                .curve(1, 2, 3, 4, 5, 6)
                                .arc(1, 2, 3, 4, 5, 6, 7)
                                .word(6)
                                .word(1)
                                .number(1)
                                .number(2)
                                .word(6)
                                .word(0)
                                .close()
                                .line(0, 0)
                                .path();
    LxPath_Transform(path.get(), &doubled);
    EXPECT_EQ(Stream(path), Stream()
                                .zeros(1)
                                .move(102, 206)
                                .line(106, 212)
                                .qcurve(102, 206, 106, 212)
                                .curve(102, 206, 106, 212, 110, 218)
                                .arc(102, 206, 106, 212, 5, 6, 7)
                                .word(6)
                                .word(1)
                                .number(102)
                                .number(206)
                                .word(6)
                                .word(0)
                                .close()
                                .line(100, 200));
}

TEST(PathTransform, MovesTheLastPolygonsPointsBehindTheCount) {
    const LxPointD points[] = {{1, 2}, {3, 4}};
    const PathHandle path = emptyPath();
    LxPath_PolygonTo(path.get(), points, 2);
    LxPath_Transform(path.get(), &doubled);
    EXPECT_EQ(path->count, 3);
    const std::vector<uint32_t> words(path->words, path->words + 6);
    EXPECT_EQ(words, Stream().word(6).word(2).number(102).number(206).number(106).number(212).words);
}

TEST(PathTransform, StopsAtAWordThatIsNoItem) {
    const PathHandle path = Stream().move(1, 2).word(9).line(3, 4).path();
    LxPath_Transform(path.get(), &doubled);
    EXPECT_EQ(Stream(path), Stream().move(102, 206).word(9).line(3, 4));
}

TEST(PathTransform, LeavesACutOffItemAlone) {
    const PathHandle path = Stream().move(1, 2).word(2).number(3).path();
    LxPath_Transform(path.get(), &doubled);
    EXPECT_EQ(Stream(path), Stream().move(102, 206).word(2).number(3));
}

TEST(PathTransform, ShearsAndAddsFromTheLeft) {
    const LxMatrix matrix = {1e8, 1, -1e8, 0.5, -0.25, 3, 0, 0, 1};
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_Transform(path.get(), &matrix);
    EXPECT_EQ(Stream(path), Stream().move(2, 3));
}

TEST(PathDecompose, CircleBecomesMoveLinesClose) {
    const PathHandle circle = emptyPath();
    LxPath_AddCircle(circle.get(), 0, 0, 100);
    const PathHandle flat = decomposed(Stream(circle));
    // The first quarter runs in x from -100 by -100 and -55.2 to 0: c = 0, b = 134.3, a = -34.3. In every
    // quarter M is 134.3, whose root is 11.6: 12 lines.
    EXPECT_EQ(flat->count, 3 + 4 * 12 * 3 + 1);
    EXPECT_EQ(flat->words[0], 1u);
    for (int32_t i = 3; i < flat->count - 1; i += 3) {
        ASSERT_EQ(flat->words[i], 2u);
        const LxPointD p = pointAt(flat->words + i + 1);
        EXPECT_NEAR(std::hypot(p.x, p.y), 100, 0.03);
    }
    EXPECT_EQ(flat->words[flat->count - 1], 15u);
}

TEST(PathDecompose, CloseAddsNoLine) {
    EXPECT_EQ(Stream(decomposed(Stream().move(1, 2).line(3, 4).close())),
              Stream().move(1, 2).line(3, 4).close());
}

TEST(PathDecompose, ArcsAndNothingsVanishAndPolygonsBecomeLines) {
    EXPECT_EQ(decomposed(Stream().arc(1, 2, 3, 4, 5, 6, 7))->words, nullptr);
    EXPECT_EQ(Stream(decomposed(Stream().zeros(3).move(1, 2).arc(1, 2, 3, 4, 5, 6, 7).line(3, 4).zeros(1))),
              Stream().move(1, 2).line(3, 4));
    EXPECT_EQ(Stream(decomposed(Stream().move(1, 2).word(6).word(2).number(3).number(4).number(5).number(6))),
              Stream().move(1, 2).line(3, 4).line(5, 6));
}

TEST(PathDecompose, WordThatIsNoItemEndsTheResult) {
    EXPECT_EQ(Stream(decomposed(Stream().move(1, 2).word(7).line(3, 4))), Stream().move(1, 2));
}

TEST(PathDecompose, ShortCubicIsALineAndThePenStays) {
    // The second curve starts at (0, 0) still: as measured from there M is 3 * 32 = 96, so 10 lines.
    const PathHandle flat =
        decomposed(Stream().move(0, 0).curve(0, 0, 0, 0.0625f, 0, 0.125f).curve(0, 0, 0, 32, 0, 96));
    EXPECT_EQ(flat->count, 3 + 3 + 10 * 3);
    EXPECT_EQ(pointAt(flat->words + 4).y, 0.125);
    EXPECT_EQ(pointAt(flat->words + 7).y, static_cast<float>(96 * 0.1 * 0.1));
}

TEST(PathDecompose, CurveBehindACloseStartsAtTheStart) {
    const PathHandle flat = decomposed(Stream().move(0, 0).line(500, 500).close().curve(0, 0, 0, 32, 0, 96));
    EXPECT_EQ(flat->count, 3 + 3 + 1 + 10 * 3);
}

TEST(PathDecompose, MatrixComesFirst) {
    EXPECT_EQ(Stream(decomposed(Stream().move(1, 2).line(3, 4).close(), &doubled)),
              Stream().move(102, 206).line(106, 212).close());
}

TEST(PathDecompose, FlattenedCurvesStayNearTheCurve) {
    Random random(5);
    for (int round = 0; round < 300; ++round) {
        double p[8];
        Stream stream;
        for (double &v : p)
            v = static_cast<float>(random.real(-500, 500));
        const auto at = [&](int i) { return static_cast<float>(p[i]); };
        const PathHandle flat =
            decomposed(stream.move(at(0), at(1)).curve(at(2), at(3), at(4), at(5), at(6), at(7)));
        // Cut into n steps with n^2 about M, the chord strays by at most an eighth of 2 M / n^2.
        const int32_t n = flat->count / 3 - 1;
        for (int32_t k = 0; k < n; ++k) {
            const LxPointD a = pointAt(flat->words + 3 * k + 1);
            const LxPointD b = pointAt(flat->words + 3 * k + 4);
            const double t = (k + 0.5) / n;
            const double s = 1 - t;
            const double w[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
            const double x = w[0] * p[0] + w[1] * p[2] + w[2] * p[4] + w[3] * p[6];
            const double y = w[0] * p[1] + w[1] * p[3] + w[2] * p[5] + w[3] * p[7];
            ASSERT_LT(std::hypot(x - (a.x + b.x) / 2, y - (a.y + b.y) / 2), 0.45) << round;
        }
    }
}

TEST(PathCreateTransformed, KeepsCurvesWithoutAClip) {
    const PathHandle path = Stream().move(1, 2).curve(1, 2, 3, 4, 5, 6).close().path();
    EXPECT_EQ(Stream(PathHandle(LxPath_CreateTransformed(path.get(), &doubled, nullptr))),
              Stream().move(102, 206).curve(102, 206, 106, 212, 110, 218).close());
    EXPECT_EQ(Stream(PathHandle(LxPath_CreateTransformed(path.get(), nullptr, nullptr))), Stream(path));
}

TEST(PathCreateTransformed, FlattensAndClipsWithAClip) {
    const PathHandle path = emptyPath();
    LxPath_AddCircle(path.get(), 0, 0, 100);
    const LxRectD clip = {0, 0, 1000, 1000};
    const PathHandle clipped(LxPath_CreateTransformed(path.get(), &doubled, &clip));
    EXPECT_GT(clipped->count, 100);
    for (int32_t i = 0; i < clipped->count - 1; i += 3) {
        EXPECT_EQ(clipped->words[i], i == 0 ? 1u : 2u);
        const LxPointD p = pointAt(clipped->words + i + 1);
        EXPECT_TRUE(LxRectD_contains(clip, p.x, p.y));
    }
    EXPECT_EQ(clipped->words[clipped->count - 1], 15u);
}

TEST(PathInfo, CountsPointsLinesAndMoves) {
    expectInfo(info(Stream()), 0, 0, 0);
    expectInfo(info(Stream().move(1, 2).line(3, 4).line(5, 6)), 3, 2, 1);
    expectInfo(info(Stream().move(1, 2).qcurve(3, 4, 5, 6)), 33, 32, 1);
    expectInfo(info(Stream().move(1, 2).arc(1, 2, 3, 4, 5, 6, 7)), 1, 0, 1);
}

TEST(PathInfo, CloseIsMeasuredAgainstTheOrigin) {
    expectInfo(info(Stream().move(1, 2).close()), 1, 0, 1);
    expectInfo(info(Stream().move(1, 2).line(3, 4).line(1, 2).close()), 4, 3, 1);
    expectInfo(info(Stream().move(1, 2).line(0, 0).close()), 2, 1, 1);
}

TEST(PathInfo, CurvesAreMeasuredFromThePenAndNotFromTheMove) {
    // From (0, 0), not from (1000, 0): M = 96.
    expectInfo(info(Stream().move(1000, 0).curve(0, 0, 0, 32, 0, 96)), 11, 10, 1);
}

TEST(PathInfo, MatrixIsApplied) {
    const LxMatrix scale = {10, 0, 0, 0, 10, 0, 0, 0, 1};
    expectInfo(info(Stream().move(0, 0).curve(0, 0, 0, 32, 0, 96), &scale), 32, 31, 1);
}

TEST(PathPointArray, IsARunOfPairsPerSubpath) {
    EXPECT_EQ(pointArray(Stream().move(1, 2).line(3, 4).line(5, 6).close().move(7, 8).line(9, 10)),
              Stream()
                  .word(6)
                  .word(0)
                  .number(1)
                  .number(2)
                  .number(3)
                  .number(4)
                  .number(5)
                  .number(6)
                  .number(1)
                  .number(2)
                  .word(15)
                  .word(6)
                  .word(0)
                  .number(7)
                  .number(8)
                  .number(9)
                  .number(10));
}

TEST(PathPointArray, CloseOnTheStartAddsNoPair) {
    EXPECT_EQ(pointArray(Stream().move(1, 2).line(1, 2).close(), &doubled),
              Stream().word(6).word(0).number(102).number(206).number(102).number(206).word(15));
}

TEST(PathPointArray, CapacityIsRaisedForThePointsFirst) {
    const PathHandle empty(LxPath_CreatePointArray(emptyPath().get(), nullptr));
    EXPECT_EQ(empty->count, 0);
    EXPECT_EQ(empty->capacity, 256);
    ASSERT_NE(empty->words, nullptr);
    EXPECT_EQ(empty->words[0], 0u);
    // 254 points need 256 words by that count, and then 4 + 2 * 253 words by what is written.
    Stream lines = Stream().move(1, 2);
    for (int i = 0; i < 253; ++i)
        lines.line(1, 2);
    const PathHandle array(LxPath_CreatePointArray(lines.path().get(), nullptr));
    EXPECT_EQ(array->count, 4 + 2 * 253);
    EXPECT_EQ(array->capacity, 512);
    // The counting walk takes this curve to start at (0, 0), with M = 3,000,000 and so 1732 lines.
    const PathHandle far(LxPath_CreatePointArray(
        Stream().move(1e6f, 0).curve(1e6f, 0, 1e6f, 0, 1e6f, 0).path().get(), nullptr));
    EXPECT_EQ(far->count, 4 + 2);
    EXPECT_EQ(far->capacity, 1792) << "1733 points + 2, in whole blocks";
}

TEST(PathDecompose, NullPathsAreIgnored) {
    LxPath_Transform(nullptr, &doubled);
    LxPath_Decompose(nullptr, nullptr);
    EXPECT_EQ(LxPath_CreateDecomposed(nullptr, nullptr), nullptr);
    EXPECT_EQ(LxPath_CreateTransformed(nullptr, &doubled, nullptr), nullptr);
    EXPECT_EQ(LxPath_CreatePointArray(nullptr, nullptr), nullptr);
    expectInfo(LxPath_Info(nullptr, nullptr), 0, 0, 0);
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_Transform(path.get(), nullptr);
    EXPECT_EQ(Stream(path), Stream().move(1, 2));
}
