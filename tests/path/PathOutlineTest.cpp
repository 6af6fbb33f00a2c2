// Outlining.
#include "path/PathOperations.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <oxlume/LxLine.h>

#include "path/Flatten.h"
#include "path/PathIterator.h"
#include "path/PathReader.h"
#include "tests/path/PathStream.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr int32_t bevel = 0;

PathHandle outlined(const Stream &stream, double width, int32_t style, const LxMatrix *matrix = nullptr,
                    const LxRectD *clip = nullptr) {
    const PathHandle path = stream.path();
    PathHandle result(LxPath_CreateOutlined(path.get(), matrix, clip, width, style));
    EXPECT_EQ(Stream(path), stream);
    LxPath_Outline(path.get(), matrix, clip, width, style);
    EXPECT_EQ(Stream(path), Stream(result));
    EXPECT_EQ(result->capacity, (result->count + 255) / 256 * 256);
    EXPECT_EQ(path->capacity, result->capacity);
    return result;
}

Stream outline(const Stream &stream, double width, int32_t style, const LxMatrix *matrix = nullptr,
               const LxRectD *clip = nullptr) {
    return Stream(outlined(stream, width, style, matrix, clip));
}

Stream square() {
    return Stream().move(0, 0).line(10, 0).line(10, 10).line(0, 10).close();
}

// The stroker in its plainest form: two paths, one of which really grows by insertion at its front, driven by
// an iterator with slots of its own.
struct PlainStroker {
    PathHandle out = emptyPath();
    PathHandle side1 = emptyPath();
    PathHandle side2 = emptyPath();
    int32_t style = 0;
    double halfWidth = 0;
    bool atStart = false;
    bool newItem = false;
    LxLineD firstHead = LxLineD_0, firstTail = LxLineD_0;
    LxLineD lastHead = LxLineD_0, lastTail = LxLineD_0;
    LxLineD startHead = LxLineD_0;

    void append() {
        LxPath_Add(out.get(), side2.get());
        LxPath_Add(out.get(), side1.get());
    }
    void empty() {
        LxPath_MakeEmpty(side1.get());
        LxPath_MakeEmpty(side2.get());
    }
    void join(const LxLineD &head, const LxLineD &tail) {
        const double o = LxLineD_Orientation(&head, lastTail.x0, lastTail.y0);
        if (o < 0) {
            const LxLineD a = {lastHead.x0, lastHead.y0, lastTail.x0, lastTail.y0};
            const LxLineD b = {head.x0, head.y0, tail.x0, tail.y0};
            const LxPointD p = LxLineD_Intersection(&a, &b);
            LxPath_InsertLineTo(side1.get(), 0, p.x, p.y);
        } else if (o > 0) {
            const LxLineD a = {lastHead.x1, lastHead.y1, lastTail.x1, lastTail.y1};
            const LxLineD b = {head.x1, head.y1, tail.x1, tail.y1};
            const LxPointD p = LxLineD_Intersection(&a, &b);
            LxPath_AddLineTo(side2.get(), p.x, p.y);
        }
    }
};

PlainStroker &strokerOf(LxPathIterator *iterator) {
    return *static_cast<PlainStroker *>(iterator->user);
}

bool same(double from, double to) {
    constexpr double e = 2.220446049250313e-16;
    return to >= from ? from >= to - e : to + e >= from;
}

void plainMove(LxPathIterator *iterator, const LxPointD *point) {
    PlainStroker &s = strokerOf(iterator);
    if ((iterator->flags & 1) == 0)
        s.append();
    s.empty();
    s.atStart = true;
    drawMove(*iterator, *point);
}

void plainSegment(LxPathIterator *iterator, const LxPointD *from, const LxPointD *to) {
    PlainStroker &s = strokerOf(iterator);
    if (same(from->x, to->x) && same(from->y, to->y))
        return;
    const LxLineD line = {from->x, from->y, to->x, to->y};
    const LxLineD h = LxLineD_Head(&line, s.halfWidth);
    const LxLineD t = LxLineD_Tail(&line, s.halfWidth);
    if ((s.style & 16) != 0 && s.newItem) {
        s.append();
        s.empty();
        s.newItem = false;
        LxPath_InsertClose(s.side1.get(), 0);
        LxPath_AddMoveTo(s.side2.get(), h.x1, h.y1);
        LxPath_InsertLineTo(s.side1.get(), 0, h.x0, h.y0);
        LxPath_AddLineTo(s.side2.get(), h.x1, h.y1);
    }
    if ((s.style & 16) == 0 && s.newItem) {
        if (s.atStart) {
            s.startHead = h;
            LxPath_InsertClose(s.side1.get(), 0);
            LxPath_AddMoveTo(s.side2.get(), h.x1, h.y1);
            s.atStart = false;
            s.firstHead = h;
            s.firstTail = t;
        } else if ((s.style & (128 | 64)) != 0) {
            s.join(h, t);
        }
        s.newItem = false;
        LxPath_InsertLineTo(s.side1.get(), 0, h.x0, h.y0);
        LxPath_AddLineTo(s.side2.get(), h.x1, h.y1);
    }
    LxPath_InsertLineTo(s.side1.get(), 0, t.x0, t.y0);
    LxPath_AddLineTo(s.side2.get(), t.x1, t.y1);
    s.lastHead = h;
    s.lastTail = t;
}

void plainClose(LxPathIterator *iterator) {
    PlainStroker &s = strokerOf(iterator);
    s.newItem = true;
    drawClose(*iterator);
    if ((s.style & 16) == 0) {
        if ((s.style & (128 | 64)) != 0)
            s.join(s.firstHead, s.firstTail);
        LxPath_InsertMoveTo(s.side1.get(), 0, s.startHead.x0, s.startHead.y0);
        LxPath_AddClose(s.side2.get());
    }
    s.append();
    s.empty();
}

// Calls a default slot after telling the stroker that an item began.
LxPathIterator defaults;

Stream plainOutline(const Stream &stream, double width, int32_t style) {
    PlainStroker stroker;
    stroker.style = style;
    stroker.halfWidth = width * 0.5;
    defaults = {};
    setDefaultSlots(defaults);
    LxPathIterator iterator = defaults;
    iterator.moveTo = plainMove;
    iterator.lineTo = [](LxPathIterator *i, const LxPointD *p) {
        strokerOf(i).newItem = true;
        defaults.lineTo(i, p);
    };
    iterator.qcurveTo = [](LxPathIterator *i, const LxPointD *c, const LxPointD *p) {
        strokerOf(i).newItem = true;
        defaults.qcurveTo(i, c, p);
    };
    iterator.curveTo = [](LxPathIterator *i, const LxPointD *c1, const LxPointD *c2, const LxPointD *p) {
        strokerOf(i).newItem = true;
        defaults.curveTo(i, c1, c2, p);
    };
    iterator.arcTo = [](LxPathIterator *i, const LxPointD *, const LxPointD *, double, uint32_t, uint32_t) {
        strokerOf(i).newItem = true;
    };
    iterator.close = plainClose;
    iterator.end = [](LxPathIterator *i) {
        if ((i->flags & 1) == 0)
            strokerOf(i).append();
        strokerOf(i).empty();
    };
    iterator.onSegment = plainSegment;
    LxPath_IterateConst(stream.path().get(), &iterator, nullptr, &stroker, nullptr);
    return Stream(stroker.out);
}

// Any items, often on one line or on one spot, and now and then something odd.
Stream randomStream(Random &random, bool tame) {
    Stream stream;
    const auto number = [&] {
        return random.coin() ? static_cast<float>(random.integer(-3, 3))
                             : static_cast<float>(random.real(-100, 100));
    };
    const auto numbers = [&](int n) {
        for (int i = 0; i < n; ++i)
            stream.number(number());
    };
    if (tame)
        stream.move(number(), number());
    for (int i = random.integer(0, 25); i > 0; --i) {
        switch (random.integer(0, tame ? 6 : 10)) {
        case 0:
            stream.word(1);
            numbers(2);
            break;
        case 1:
            stream.word(3);
            numbers(4);
            break;
        case 2:
            stream.word(4);
            numbers(6);
            break;
        case 3:
            stream.close();
            if (tame)
                stream.move(number(), number());
            break;
        case 7:
            stream.arc(number(), number(), number(), number(), number(), random.word(), random.word());
            break;
        case 8:
            stream.zeros(random.integer(1, 3));
            break;
        case 9: {
            const int32_t n = random.integer(-1, 4);
            stream.word(6).word(static_cast<uint32_t>(n));
            numbers(2 * std::max(n, 0));
            break;
        }
        case 10:
            if (random.integer(0, 9) == 0)
                stream.word(random.coin() ? 9 : random.word());
            break;
        default:
            stream.word(2);
            numbers(2);
        }
    }
    return stream;
}

} // namespace

// The line's direction is (1, 0), so its positive side lies at larger y: H1 = (0, 1), H2 = (0, -1).
TEST(PathOutline, LineOfTwoPointsIsARibbonOfSixItems) {
    const Stream ribbon = Stream().move(0, -1).line(0, -1).line(10, -1).line(10, 1).line(0, 1).close();
    for (const int32_t style : {bevel, int32_t{kLxStrokeItems}, int32_t{kLxStrokeMitre}, 128})
        EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0), 2, style), ribbon) << style;
}

TEST(PathOutline, OpenLineRunsAlongTheNegativeSideAndBackAlongThePositive) {
    // Right, then down (y grows downwards): the corner's inner side is the positive one.
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0).line(10, 10), 2, bevel), Stream()
                                                                                   .move(0, -1)
                                                                                   .line(0, -1)
                                                                                   .line(10, -1)
                                                                                   .line(11, 0)
                                                                                   .line(11, 10)
                                                                                   .line(9, 10)
                                                                                   .line(9, 0)
                                                                                   .line(10, 1)
                                                                                   .line(0, 1)
                                                                                   .close());
}

TEST(PathOutline, MitreAddsOnePointOnTheOuterSideOnly) {
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0).line(10, 10), 2, kLxStrokeMitre), Stream()
                                                                                            .move(0, -1)
                                                                                            .line(0, -1)
                                                                                            .line(10, -1)
                                                                                            .line(11, -1)
                                                                                            .line(11, 0)
                                                                                            .line(11, 10)
                                                                                            .line(9, 10)
                                                                                            .line(9, 0)
                                                                                            .line(10, 1)
                                                                                            .line(0, 1)
                                                                                            .close());
    // Right, then up: the outer side is the positive one, and its corner stands where the side runs back.
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0).line(10, -10), 2, kLxStrokeMitreToo), Stream()
                                                                                                .move(0, -1)
                                                                                                .line(0, -1)
                                                                                                .line(10, -1)
                                                                                                .line(9, 0)
                                                                                                .line(9, -10)
                                                                                                .line(11, -10)
                                                                                                .line(11, 0)
                                                                                                .line(11, 1)
                                                                                                .line(10, 1)
                                                                                                .line(0, 1)
                                                                                                .close());
}

TEST(PathOutline, StraightContinuationAddsNoJoin) {
    const Stream straight = Stream().move(0, 0).line(10, 0).line(20, 0);
    EXPECT_EQ(outline(straight, 2, kLxStrokeMitre), outline(straight, 2, bevel));
    EXPECT_EQ(outline(straight, 2, kLxStrokeMitre).words.size(), 9u * 3 + 1);
}

TEST(PathOutline, ItemStyleGivesEveryItemARibbon) {
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0).line(10, 10), 2, kLxStrokeItems), Stream()
                                                                                            .move(0, -1)
                                                                                            .line(0, -1)
                                                                                            .line(10, -1)
                                                                                            .line(10, 1)
                                                                                            .line(0, 1)
                                                                                            .close()
                                                                                            .move(11, 0)
                                                                                            .line(11, 0)
                                                                                            .line(11, 10)
                                                                                            .line(9, 10)
                                                                                            .line(9, 0)
                                                                                            .close());
}

TEST(PathOutline, ItemStyleWinsOverMitres) {
    EXPECT_EQ(outline(square(), 2, kLxStrokeItems | kLxStrokeMitre | kLxStrokeMitreToo),
              outline(square(), 2, kLxStrokeItems));
    EXPECT_EQ(outline(square(), 2, kLxStrokeItems).words.size(), 4u * 16) << "the closing line too";
}

TEST(PathOutline, OtherStyleBitsMeanNothing) {
    EXPECT_EQ(outline(square(), 2, ~(16 | 64 | 128)), outline(square(), 2, bevel));
}

// The square runs clockwise as seen, so its negative side is the outer one: sharp with mitres.
TEST(PathOutline, ClosedSquareGivesTwoRings) {
    EXPECT_EQ(outline(square(), 2, kLxStrokeMitre), Stream()
                                                        .move(0, -1)
                                                        .line(0, -1)
                                                        .line(10, -1)
                                                        .line(11, -1)
                                                        .line(11, 0)
                                                        .line(11, 10)
                                                        .line(11, 11)
                                                        .line(10, 11)
                                                        .line(0, 11)
                                                        .line(-1, 11)
                                                        .line(-1, 10)
                                                        .line(-1, 0)
                                                        .line(-1, -1)
                                                        .close()
                                                        .move(0, 1)
                                                        .line(1, 0)
                                                        .line(1, 10)
                                                        .line(0, 9)
                                                        .line(10, 9)
                                                        .line(9, 10)
                                                        .line(9, 0)
                                                        .line(10, 1)
                                                        .line(0, 1)
                                                        .close());
}

TEST(PathOutline, ClosedSquareWithoutMitresHasBevelledCorners) {
    EXPECT_EQ(outline(square(), 2, bevel), Stream()
                                               .move(0, -1)
                                               .line(0, -1)
                                               .line(10, -1)
                                               .line(11, 0)
                                               .line(11, 10)
                                               .line(10, 11)
                                               .line(0, 11)
                                               .line(-1, 10)
                                               .line(-1, 0)
                                               .close()
                                               .move(0, 1)
                                               .line(1, 0)
                                               .line(1, 10)
                                               .line(0, 9)
                                               .line(10, 9)
                                               .line(9, 10)
                                               .line(9, 0)
                                               .line(10, 1)
                                               .line(0, 1)
                                               .close());
}

TEST(PathOutline, CurveHasAHeadAtItsFirstSegmentOnly) {
    const Stream result = outline(Stream().move(0, 0).qcurve(5, 5, 10, 0), 2, bevel);
    EXPECT_EQ(result.words.size(), 3u + 33 * 3 + 33 * 3 + 1);
    EXPECT_EQ(outline(Stream().move(0, 0).qcurve(5, 5, 10, 0), 2, kLxStrokeItems), result);
}

TEST(PathOutline, WidthOfZeroGivesAllItemsOnTheLine) {
    EXPECT_EQ(outline(Stream().move(1, 2).line(11, 2), 0, bevel),
              Stream().move(1, 2).line(1, 2).line(11, 2).line(11, 2).line(1, 2).close());
}

TEST(PathOutline, NegativeWidthSwapsTheSides) {
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0), -2, bevel),
              Stream().move(0, 1).line(0, 1).line(10, 1).line(10, -1).line(0, -1).close());
}

TEST(PathOutline, ZeroLengthSegmentsAddNothing) {
    EXPECT_EQ(outline(Stream().move(1, 1).line(1, 1), 2, bevel), Stream());
    EXPECT_EQ(outline(Stream().move(0, 0).line(0, 0).line(10, 0).line(10, 0), 2, bevel),
              outline(Stream().move(0, 0).line(10, 0), 2, bevel));
    // Nearer than the tolerance, though not equal.
    EXPECT_EQ(outline(Stream().move(0, 0).line(1e-16f, -1e-16f), 2, bevel), Stream());
    EXPECT_EQ(outline(Stream().move(0, 0).line(3e-16f, 0), 2, bevel).words.size(), 16u);
}

TEST(PathOutline, ArcLeavesNoStroke) {
    EXPECT_EQ(
        outline(Stream().move(0, 0).line(10, 0).arc(50, 50, 60, 60, 5, 1, 2).line(10, 10), 2, kLxStrokeMitre),
        outline(Stream().move(0, 0).line(10, 0).line(10, 10), 2, kLxStrokeMitre));
}

TEST(PathOutline, MoveFollowedByACloseLeavesACloseAndAMove) {
    EXPECT_EQ(outline(Stream().move(5, 5).close(), 2, bevel), Stream().close().move(0, 0));
    EXPECT_EQ(outline(Stream().move(5, 5).close(), 2, kLxStrokeItems), Stream());
    // The move goes to where the last subpath that had a segment began.
    const Stream ribbon = outline(Stream().move(0, 0).line(10, 0), 2, bevel);
    Stream expected = ribbon;
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0).move(5, 5).close(), 2, bevel),
              // On the way back the default move keeps the first subpath's start.
              outline(Stream().move(0, 0).line(10, 0).move(5, 5).line(0, 0).close(), 2, bevel));
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0).close().move(5, 5).close(), 2, bevel).words.size(),
              outline(Stream().move(0, 0).line(10, 0).close(), 2, bevel).words.size() + 1 + 3);
}

TEST(PathOutline, MatrixScalesTheWidth) {
    const LxMatrix scale = {3, 0, 0, 0, 3, 0, 0, 0, 1};
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0), 2, bevel, &scale),
              Stream().move(0, -3).line(0, -3).line(30, -3).line(30, 3).line(0, 3).close());
}

TEST(PathOutline, ClipIsAppliedLast) {
    const LxMatrix scale = {3, 0, 0, 0, 3, 0, 0, 0, 1};
    const LxRectD clip = {-100, -100, 15, 100};
    const PathHandle result = outlined(Stream().move(0, 0).line(10, 0), 2, bevel, &scale, &clip);
    const PathHandle whole(
        LxPath_CreateOutlined(Stream().move(0, 0).line(10, 0).path().get(), &scale, nullptr, 2, bevel));
    LxPath_Clip(whole.get(), &clip);
    EXPECT_EQ(Stream(result), Stream(whole));
    const LxRectD elsewhere = {100, 100, 200, 200};
    const Stream none = outline(Stream().move(0, 0).line(10, 0), 2, bevel, nullptr, &elsewhere);
    EXPECT_EQ(none.words.back(), 15u);
}

TEST(PathOutline, EmptyPathHasAnEmptyOutline) {
    const PathHandle result = outlined(Stream(), 2, bevel);
    EXPECT_EQ(result->words, nullptr);
    EXPECT_EQ(outline(Stream().move(1, 2), 2, bevel), Stream());
}

TEST(PathOutline, WordThatIsNoItemLosesTheOpenSubpath) {
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0).word(9), 2, bevel), Stream());
    EXPECT_EQ(outline(Stream().move(0, 0).line(10, 0).move(0, 0).line(5, 5).word(9), 2, bevel),
              outline(Stream().move(0, 0).line(10, 0), 2, bevel));
}

TEST(PathOutline, NullPathAnswersNull) {
    EXPECT_EQ(LxPath_CreateOutlined(nullptr, nullptr, nullptr, 2, bevel), nullptr);
    LxPath_Outline(nullptr, nullptr, nullptr, 2, bevel);
}

TEST(PathOutline, RandomPathsMatchThePlainStroker) {
    Random random(6);
    for (int round = 0; round < 3000; ++round) {
        const Stream stream = randomStream(random, round % 2 == 0);
        const double width = random.integer(0, 5) == 0 ? random.anyReal() : random.real(0, 20);
        for (const int32_t style : {bevel, 16, 64, 128, 16 | 64})
            ASSERT_EQ(outline(stream, width, style), plainOutline(stream, width, style))
                << stream << "width " << width << ", style " << style;
    }
}

TEST(PathOutline, AllSubpathsOfATamePathAreClosed) {
    Random random(7);
    for (int round = 0; round < 500; ++round) {
        const PathHandle result = outlined(randomStream(random, true), 3, round % 3 == 0 ? 16 : 64);
        int32_t moves = 0;
        int32_t closes = 0;
        readItems(*result, [&](uint32_t tag, int32_t, int32_t) {
            moves += tag == 1;
            closes += tag == 15;
        });
        ASSERT_EQ(moves, closes);
    }
}

TEST(PathOutline, ManySegments) {
    Stream line = Stream().move(0, 0);
    for (int i = 1; i <= 20000; ++i)
        line.line(static_cast<float>(i), static_cast<float>(i % 2));
    const Stream result = outline(line, 1, kLxStrokeMitre);
    EXPECT_EQ(result.words.size(), 3u * (1 + 4 * 20000 + 19999) + 1);
}
