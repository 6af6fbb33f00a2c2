// The walks, their default slots and the clients' callbacks.
#include "path/PathIterator.h"

#include <cmath>
#include <string>

#include <gtest/gtest.h>
#include <oxlume/LxLine.h>

#include "path/Flatten.h"
#include "tests/path/PathStream.h"

using namespace lx;
using namespace lx::test;

namespace {

struct IteratorDeleter {
    void operator()(LxPathIterator *iterator) const { LxPath_DeleteIterator(iterator); }
};
using IteratorHandle = std::unique_ptr<LxPathIterator, IteratorDeleter>;

// What a client with all three callbacks sees.
struct Log {
    std::string events; // m: a subpath starts; s: a segment; e: a subpath ended
    std::vector<LxPointD> moves;
    std::vector<LxLineD> segments;
};

Log &logOf(LxPathIterator *iterator) {
    return *static_cast<Log *>(LxPathIterator_User(iterator));
}

void onMove(LxPathIterator *iterator, const LxPointD *point) {
    logOf(iterator).events += 'm';
    logOf(iterator).moves.push_back(*point);
}

void onSegment(LxPathIterator *iterator, const LxPointD *from, const LxPointD *to) {
    logOf(iterator).events += 's';
    logOf(iterator).segments.push_back({from->x, from->y, to->x, to->y});
}

void onSubpathEnd(LxPathIterator *iterator) {
    logOf(iterator).events += 'e';
}

template <class Callback>
LxPathCallback any(Callback callback) {
    return reinterpret_cast<LxPathCallback>(callback);
}

IteratorHandle loggingIterator() {
    IteratorHandle iterator(LxPath_CreateIterator());
    LxPathIterator_SetCallback(iterator.get(), 0, any(onMove));
    LxPathIterator_SetCallback(iterator.get(), 1, any(onSegment));
    LxPathIterator_SetCallback(iterator.get(), 2, any(onSubpathEnd));
    return iterator;
}

Log walk(const Stream &stream, LxPathIterator *iterator, const LxMatrix *matrix = nullptr) {
    Log log;
    const PathHandle path = stream.path();
    LxPath_IterateConst(path.get(), iterator, matrix, &log, nullptr);
    return log;
}

Log walk(const Stream &stream, const LxMatrix *matrix = nullptr) {
    return walk(stream, loggingIterator().get(), matrix);
}

void expectLine(const LxLineD &line, double x0, double y0, double x1, double y1) {
    EXPECT_EQ(line.x0, x0);
    EXPECT_EQ(line.y0, y0);
    EXPECT_EQ(line.x1, x1);
    EXPECT_EQ(line.y1, y1);
}

int begins;
int ends;

// An iterator that counts its begins and ends.
IteratorHandle countingIterator() {
    begins = 0;
    ends = 0;
    IteratorHandle iterator(LxPath_CreateIterator());
    iterator->begin = [](LxPathIterator *) { ++begins; };
    iterator->end = [](LxPathIterator *) { ++ends; };
    return iterator;
}

} // namespace

TEST(PathIterator, RecordIsZeroedButForItsSlots) {
    const IteratorHandle iterator(LxPath_CreateIterator());
    EXPECT_EQ(iterator->flags, 0u);
    EXPECT_EQ(iterator->segments, 0);
    EXPECT_EQ(iterator->steps, 0);
    EXPECT_EQ(iterator->start.x, 0);
    EXPECT_EQ(iterator->current.y, 0);
    EXPECT_EQ(LxPathIterator_User(iterator.get()), nullptr);
    EXPECT_EQ(LxPathIterator_Data(iterator.get()), nullptr);
}

TEST(PathIterator, BeginSetsTheStepsOfAQuadraticCurve) {
    const IteratorHandle iterator(LxPath_CreateIterator());
    iterator->segments = 5;
    iterator->begin(iterator.get());
    EXPECT_EQ(iterator->flags, 1u);
    EXPECT_EQ(iterator->segments, 0);
    EXPECT_EQ(iterator->steps, 32);
    EXPECT_EQ(iterator->step, 0.03125);
    EXPECT_EQ(iterator->step2, 0.0009765625);
    EXPECT_EQ(iterator->step3, 3.0517578125e-05);
}

TEST(PathIterator, UserAndDataAreStored) {
    const IteratorHandle iterator(LxPath_CreateIterator());
    int user = 0;
    int data = 0;
    LxPathIterator_SetUser(iterator.get(), &user);
    LxPathIterator_SetData(iterator.get(), &data);
    EXPECT_EQ(LxPathIterator_User(iterator.get()), &user);
    EXPECT_EQ(LxPathIterator_Data(iterator.get()), &data);
    const PathHandle path = emptyPath();
    LxPath_IterateConst(path.get(), iterator.get(), nullptr, &data, &user);
    EXPECT_EQ(LxPathIterator_User(iterator.get()), &data);
    EXPECT_EQ(LxPathIterator_Data(iterator.get()), &user);
    LxPath_Iterate(path.get(), iterator.get(), nullptr, &user, nullptr);
    EXPECT_EQ(LxPathIterator_User(iterator.get()), &user);
    EXPECT_EQ(LxPathIterator_Data(iterator.get()), nullptr);
}

TEST(PathIterator, NullIsIgnored) {
    LxPath_DeleteIterator(nullptr);
    LxPathIterator_SetCallback(nullptr, 0, any(onMove));
    LxPathIterator_SetUser(nullptr, &begins);
    LxPathIterator_SetData(nullptr, &begins);
    EXPECT_EQ(LxPathIterator_User(nullptr), nullptr);
    EXPECT_EQ(LxPathIterator_Data(nullptr), nullptr);
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_IterateConst(path.get(), nullptr, nullptr, nullptr, nullptr);
    LxPath_Iterate(path.get(), nullptr, nullptr, nullptr, nullptr);
    const IteratorHandle iterator = countingIterator();
    LxPath_IterateConst(nullptr, iterator.get(), nullptr, nullptr, nullptr);
    LxPath_Iterate(nullptr, iterator.get(), nullptr, nullptr, nullptr);
    EXPECT_EQ(begins, 0);
}

TEST(PathIterator, OtherKindsOfCallbackChangeNothing) {
    const IteratorHandle iterator(LxPath_CreateIterator());
    const LxPathIterator before = *iterator;
    for (const int32_t kind : {3, -1, 1000})
        LxPathIterator_SetCallback(iterator.get(), kind, any(onMove));
    EXPECT_EQ(iterator->onMove, before.onMove);
    EXPECT_EQ(iterator->onSegment, before.onSegment);
    EXPECT_EQ(iterator->onSubpathEnd, before.onSubpathEnd);
}

TEST(PathIterator, NullCallbackTakesOneAway) {
    const IteratorHandle iterator = loggingIterator();
    for (const int32_t kind : {0, 1, 2})
        LxPathIterator_SetCallback(iterator.get(), kind, nullptr);
    EXPECT_EQ(walk(Stream().move(1, 2).line(3, 4).close(), iterator.get()).events, "");
}

TEST(PathIterator, EmptyPathBeginsAndEnds) {
    const IteratorHandle iterator = countingIterator();
    const PathHandle path = emptyPath();
    LxPath_IterateConst(path.get(), iterator.get(), nullptr, nullptr, nullptr);
    EXPECT_EQ(begins, 1);
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(walk(Stream()).events, "");
}

TEST(PathIterator, WordThatIsNoItemEndsTheWalkWithoutEnd) {
    for (const uint32_t tag : {7u, 8u, 9u, 14u, 16u, 0xFFFFFFFFu}) {
        const IteratorHandle iterator = countingIterator();
        const PathHandle path = Stream().word(tag).path();
        LxPath_IterateConst(path.get(), iterator.get(), nullptr, nullptr, nullptr);
        LxPath_Iterate(path.get(), iterator.get(), nullptr, nullptr, nullptr);
        EXPECT_EQ(begins, 2);
        EXPECT_EQ(ends, 0);
        EXPECT_EQ(walk(Stream().move(1, 2).line(3, 4).word(tag).line(5, 6)).events, "ms");
    }
}

TEST(PathIterator, CutOffItemEndsTheWalkWithEnd) {
    const Stream cutOff[] = {Stream().word(1).number(1), Stream().word(2).number(1),
                             Stream().word(3).zeros(3),  Stream().word(4).zeros(5),
                             Stream().word(5).zeros(6),  Stream().word(6).word(1000)};
    for (const Stream &stream : cutOff) {
        const IteratorHandle iterator = countingIterator();
        const PathHandle path = stream.path();
        LxPath_IterateConst(path.get(), iterator.get(), nullptr, nullptr, nullptr);
        EXPECT_EQ(ends, 1) << stream;
        EXPECT_EQ(walk(stream).events, "") << stream;
    }
}

TEST(PathIterator, LineBeforeAnyMoveStartsAtTheOrigin) {
    const Log log = walk(Stream().line(3, 4));
    EXPECT_EQ(log.events, "s");
    expectLine(log.segments[0], 0, 0, 3, 4);
}

TEST(PathIterator, CloseWithThePenOnTheStartEmitsNoSegment) {
    EXPECT_EQ(walk(Stream().move(1, 2).close()).events, "me");
    EXPECT_EQ(walk(Stream().move(1, 2).line(3, 4).line(1, 2).close()).events, "msse");
    const Log log = walk(Stream().move(1, 2).line(3, 4).close());
    EXPECT_EQ(log.events, "msse");
    expectLine(log.segments[1], 3, 4, 1, 2);
}

TEST(PathIterator, MoveInAnOpenSubpathEndsItAndKeepsTheOldStart) {
    const Log log = walk(Stream().move(1, 2).line(3, 4).move(10, 20).line(30, 40).close());
    EXPECT_EQ(log.events, "msemsse");
    expectLine(log.segments[1], 10, 20, 30, 40);
    expectLine(log.segments[2], 30, 40, 1, 2);
}

TEST(PathIterator, OpenLastSubpathReportsNoEnd) {
    EXPECT_EQ(walk(Stream().move(1, 2).line(3, 4)).events, "ms");
    EXPECT_EQ(walk(Stream().move(1, 2)).events, "m");
}

TEST(PathIterator, LinesBehindACloseStartAtTheSubpathsStart) {
    const Log log = walk(Stream().move(1, 2).line(3, 4).close().line(5, 6));
    EXPECT_EQ(log.events, "msses");
    expectLine(log.segments[2], 1, 2, 5, 6);
}

TEST(PathIterator, ReusedIteratorKeepsItsPen) {
    const IteratorHandle iterator = loggingIterator();
    walk(Stream().move(7, 8).line(9, 10), iterator.get());
    expectLine(walk(Stream().line(1, 1), iterator.get()).segments[0], 9, 10, 1, 1);
    EXPECT_EQ(iterator->segments, 1);
}

TEST(PathIterator, QuadraticGivesThirtyTwoSegmentsHoweverShort) {
    EXPECT_EQ(walk(Stream().move(5, 5).qcurve(5, 5, 5, 5)).segments.size(), 32u);
    const IteratorHandle iterator = loggingIterator();
    const Log log = walk(Stream().move(0, 0).qcurve(8, 16, 32, 0), iterator.get());
    EXPECT_EQ(log.segments.size(), 32u);
    EXPECT_EQ(iterator->segments, 32);
    for (int i = 1; i < 32; ++i) {
        // All numbers here are exact: x = 16 t (1 - t) + 32 t^2, y = 32 t (1 - t).
        const double t = i / 32.0;
        EXPECT_EQ(log.segments[i].x0, 16 * t * (1 - t) + 32 * t * t);
        EXPECT_EQ(log.segments[i].y0, 32 * t * (1 - t));
    }
    EXPECT_EQ(log.segments[31].x1, 32);
    EXPECT_EQ(log.segments[31].y1, 0);
}

TEST(PathIterator, QuadraticMayStartAnywhere) {
    const Log log = walk(Stream().move(4, -8).qcurve(12, 8, 36, -24));
    ASSERT_EQ(log.segments.size(), 32u);
    expectLine(log.segments[0], 4, -8, log.segments[0].x1, log.segments[0].y1);
    for (int i = 1; i < 32; ++i) {
        // Exact again: the three points weigh (1 - t)^2, 2 t (1 - t) and t^2.
        const double t = i / 32.0, s = 1 - t;
        EXPECT_EQ(log.segments[i].x0, 4 * s * s + 12 * 2 * t * s + 36 * t * t);
        EXPECT_EQ(log.segments[i].y0, -8 * s * s + 8 * 2 * t * s - 24 * t * t);
    }
    EXPECT_EQ(log.segments[31].x1, 36);
    EXPECT_EQ(log.segments[31].y1, -24);
}

TEST(PathIterator, CubicIsCutByTheSquareRootOfItsExtent) {
    // In y: c = 0, b = 3 * 32 = 96, a = 96 - 96 = 0, so M = 96, and its root + 0.5 is 10.29...
    const IteratorHandle iterator = loggingIterator();
    const Log log = walk(Stream().move(0, 0).curve(0, 0, 0, 32, 0, 96), iterator.get());
    EXPECT_EQ(log.segments.size(), 10u);
    EXPECT_EQ(iterator->segments, 10);
    double t = 0;
    for (int k = 1; k < 10; ++k) {
        t += 1.0 / 10;
        EXPECT_EQ(log.segments[k - 1].y1, ((0 * t + 96) * t + 0) * t + 0) << k;
        EXPECT_EQ(log.segments[k].y0, log.segments[k - 1].y1) << k;
    }
    EXPECT_EQ(log.segments[9].y1, 96);
}

TEST(PathIterator, CubicStepsAreThoseOfTheLargerSecondDifference) {
    // |3a + b| and |b| over both coordinates; the integer part of the root + 0.5.
    const auto steps = [](double ax, double bx, double ay, double by) {
        // Controls of given powers: p1 = c / 3 with c = 0, p2 = b / 3, p3 = a + b.
        return cubicSteps(CubicCoefficients(0, 0, bx / 3, ax + bx), CubicCoefficients(0, 0, by / 3, ay + by));
    };
    EXPECT_EQ(steps(0, 96, 0, 0), 10);
    EXPECT_EQ(steps(0, 0, 0, -96), 10);
    EXPECT_EQ(steps(33, -96, 0, 0), 10) << "|b| is the larger";
    EXPECT_EQ(steps(-33, 3, 0, 0), 10) << "|3a + b| = 96 is the larger";
    EXPECT_EQ(steps(0, 0, 0, 0), 0);
    EXPECT_EQ(steps(0, 0.24, 0, 0), 0);
    EXPECT_EQ(steps(0, 0.2501, 0, 0), 1);
    EXPECT_EQ(steps(0, 2.24, 0, 0), 1);
    EXPECT_EQ(steps(0, 2.26, 0, 0), 2);
}

TEST(PathIterator, CubicStepsAreBounded) {
    const auto steps = [](double b) {
        return cubicSteps(CubicCoefficients(0, 0, b / 3, b), CubicCoefficients(0, 0, 0, 0));
    };
    EXPECT_EQ(steps(1e11), 316228);
    EXPECT_EQ(steps(1e15), 1048576);
    EXPECT_EQ(steps(1e38), 1) << "the root does not fit an integer";
    EXPECT_EQ(steps(INFINITY), 1);
    EXPECT_EQ(steps(NAN), 1);
}

TEST(PathIterator, CubicOfOneStepIsItsChord) {
    const Log log = walk(Stream().move(0, 0).curve(0, 0, 0, 0.25f, 0, 0.75f).line(5, 5));
    ASSERT_EQ(log.segments.size(), 2u);
    expectLine(log.segments[0], 0, 0, 0, 0.75);
    expectLine(log.segments[1], 0, 0.75, 5, 5);
}

TEST(PathIterator, PenStaysWhereItIsAfterAShortCubic) {
    const IteratorHandle iterator = loggingIterator();
    const Log log = walk(Stream().move(1, 1).curve(1, 1, 1, 1.0625f, 1, 1.125f).line(5, 5), iterator.get());
    ASSERT_EQ(log.segments.size(), 2u);
    expectLine(log.segments[0], 1, 1, 1, 1.125);
    expectLine(log.segments[1], 1, 1, 5, 5);
    EXPECT_EQ(iterator->segments, 2);
}

TEST(PathIterator, PolygonIsARunOfLines) {
    const LxPointD points[] = {{3, 4}, {5, 6}, {7, 8}};
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_PolygonTo(path.get(), points, 3);
    Log log;
    LxPath_IterateConst(path.get(), loggingIterator().get(), nullptr, &log, nullptr);
    EXPECT_EQ(log.events, "msss");
    expectLine(log.segments[2], 5, 6, 7, 8);
    EXPECT_EQ(walk(Stream().word(6).word(0).line(1, 1)).events, "s");
    EXPECT_EQ(walk(Stream().word(6).word(0xFFFFFFFE).line(1, 1)).events, "s");
}

TEST(PathIterator, ArcsDrawNothingAndDoNotMoveThePen) {
    const Log log = walk(Stream().move(1, 2).arc(50, 50, 60, 60, 5, 1, 2).line(3, 4));
    EXPECT_EQ(log.events, "ms");
    expectLine(log.segments[0], 1, 2, 3, 4);
}

TEST(PathIterator, ArcSlotGetsPointsRadiusAndWords) {
    const IteratorHandle iterator(LxPath_CreateIterator());
    static LxPointD first, second;
    static double arcRadius;
    static uint32_t firstWord, secondWord;
    iterator->arcTo = [](LxPathIterator *, const LxPointD *p1, const LxPointD *p2, double radius,
                         uint32_t word1, uint32_t word2) {
        first = *p1;
        second = *p2;
        arcRadius = radius;
        firstWord = word1;
        secondWord = word2;
    };
    const PathHandle path = Stream().arc(1, 2, 3, 4, 5.5, 0xFFFFFFFE, 9).path();
    const LxMatrix matrix = {2, 0, 100, 0, 3, 200, 0, 0, 1};
    LxPath_IterateConst(path.get(), iterator.get(), &matrix, nullptr, nullptr);
    EXPECT_EQ(first.x, 102);
    EXPECT_EQ(first.y, 206);
    EXPECT_EQ(second.x, 106);
    EXPECT_EQ(second.y, 212);
    EXPECT_EQ(arcRadius, 5.5) << "radii are not transformed";
    EXPECT_EQ(firstWord, 0xFFFFFFFEu);
    EXPECT_EQ(secondWord, 9u);
}

TEST(PathIterator, MatrixIsAppliedBeforeCurvesAreCut) {
    const LxMatrix scale = {10, 0, 0, 0, 10, 0, 7, 7, 7};
    const Stream stream = Stream().move(0, 0).curve(0, 0, 0, 32, 0, 96);
    EXPECT_EQ(walk(stream).segments.size(), 10u);
    EXPECT_EQ(walk(stream, &scale).segments.size(), 31u) << "the root of 960, + 0.5";
    const LxMatrix matrix = {0.5, 2, 10, -1, 4, 20, 0, 0, 1};
    const Log log = walk(Stream().move(3, 5).line(7, 9), &matrix);
    expectLine(log.segments[0], 0.5 * 3 + 2 * 5 + 10, -3 + 4 * 5 + 20, 0.5 * 7 + 2 * 9 + 10, -7 + 4 * 9 + 20);
}

TEST(PathIterator, CallbackMayEmptyThePath) {
    const PathHandle path = emptyPath();
    for (int i = 0; i < 300; ++i)
        LxPath_AddLineTo(path.get(), i, i);
    static LxPath *shrinking;
    shrinking = path.get();
    static int segments;
    segments = 0;
    const IteratorHandle iterator(LxPath_CreateIterator());
    const LxPathSegmentCallback shrink = [](LxPathIterator *, const LxPointD *, const LxPointD *) {
        if (++segments == 3)
            LxPath_MakeEmpty(shrinking);
    };
    LxPathIterator_SetCallback(iterator.get(), kLxPathOnSegment, any(shrink));
    LxPath_IterateConst(path.get(), iterator.get(), nullptr, nullptr, nullptr);
    EXPECT_EQ(segments, 3);
}

TEST(PathIterator, MutableWalkEditsInPlace) {
    const IteratorHandle iterator(LxPath_CreateIterator());
    // Through a plain function type: the slots' own types differ from those that they hold here.
    const auto install = [](auto &slot, auto function) {
        slot = reinterpret_cast<std::remove_reference_t<decltype(slot)>>(any(function));
    };
    const MutablePointSlot raisePoint = [](LxPathIterator *, float *x, float *y) {
        *x += 100;
        *y += 200;
    };
    const MutableQCurveSlot raiseQCurve = [](LxPathIterator *, float *cx, float *cy, float *x, float *y) {
        *cx += 1;
        *cy += 2;
        *x += 3;
        *y += 4;
    };
    const MutableCurveSlot raiseCurve = [](LxPathIterator *, float *ax, float *ay, float *bx, float *by,
                                           float *x, float *y) {
        *ax += 1;
        *ay += 2;
        *bx += 3;
        *by += 4;
        *x += 5;
        *y += 6;
    };
    const MutableArcSlot raiseArc = [](LxPathIterator *, float *ax, float *ay, float *bx, float *by,
                                       float *radius, uint32_t *word1, uint32_t *word2) {
        *ax += 1;
        *ay += 2;
        *bx += 3;
        *by += 4;
        *radius += 5;
        *word1 += 6;
        *word2 += 7;
    };
    install(iterator->moveTo, raisePoint);
    install(iterator->lineTo, raisePoint);
    install(iterator->qcurveTo, raiseQCurve);
    install(iterator->curveTo, raiseCurve);
    install(iterator->arcTo, raiseArc);
    const PathHandle path = Stream()
                                .move(1, 1)
                                .line(2, 2)
                                .qcurve(1, 1, 1, 1)
                                .curve(1, 1, 1, 1, 1, 1)
                                .arc(1, 1, 1, 1, 1, 1, 1)
                                .word(6)
                                .word(2)
                                .zeros(4)
                                .close()
                                .path();
    LxPath_Iterate(path.get(), iterator.get(), nullptr, nullptr, nullptr);
    EXPECT_EQ(Stream(path), Stream()
                                .move(101, 201)
                                .line(102, 202)
                                .qcurve(2, 3, 4, 5)
                                .curve(2, 3, 4, 5, 6, 7)
                                .arc(2, 3, 4, 5, 6, 7, 8)
                                .word(6)
                                .word(2)
                                .number(100)
                                .number(200)
                                .number(100)
                                .number(200)
                                .close());
}

TEST(PathIterator, DefaultSlotsHaveNoPartInTheMutableWalk) {
    const IteratorHandle iterator = loggingIterator();
    const Stream stream = Stream()
                              .move(1, 1)
                              .line(2, 2)
                              .qcurve(1, 1, 1, 1)
                              .curve(1, 1, 1, 1, 1, 1)
                              .arc(1, 1, 1, 1, 1, 1, 1)
                              .close();
    const PathHandle path = stream.path();
    Log log;
    LxPath_Iterate(path.get(), iterator.get(), nullptr, &log, nullptr);
    EXPECT_EQ(log.events, "e");
    EXPECT_EQ(Stream(path), stream);
}
