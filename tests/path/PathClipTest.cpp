// Clipping paths to rectangles.
#include "path/PathOperations.h"

#include <cmath>
#include <optional>

#include <gtest/gtest.h>

#include "path/PathIndex.h"
#include "path/PathReader.h"
#include "tests/path/PathStream.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr LxRectD box = {0, 0, 100, 100};

Stream clipped(const Stream &stream, const LxRectD &clip = box) {
    const PathHandle path = stream.path();
    LxPath_Clip(path.get(), &clip);
    EXPECT_LE(path->count, path->capacity);
    EXPECT_EQ(path->capacity % 256, 0);
    return Stream(path);
}

Stream polygon(const std::vector<LxPointD> &points) {
    Stream stream;
    for (size_t i = 0; i < points.size(); ++i) {
        const auto x = static_cast<float>(points[i].x);
        const auto y = static_cast<float>(points[i].y);
        i == 0 ? stream.move(x, y) : stream.line(x, y);
    }
    return stream.close();
}

// The rules for one edge, one after the other.
void clipEdgePlainly(const LxPointD &from, const LxPointD &to, const LxRectD &r, Stream &out, bool &emitted) {
    constexpr double e = 2.220446049250313e-16;
    const auto emit = [&](double px, double py) {
        const auto fx = static_cast<float>(px);
        const auto fy = static_cast<float>(py);
        emitted ? out.line(fx, fy) : out.move(fx, fy);
        emitted = true;
    };
    const double x = from.x;
    const double y = from.y;
    double dx = to.x - x;
    if (dx == 0)
        dx = x <= r.x0 ? e : -e;
    double dy = to.y - y;
    if (dy == 0)
        dy = y <= r.y0 ? e : -e;
    const double xIn = dx > 0 ? r.x0 : r.x1;
    const double xOut = dx > 0 ? r.x1 : r.x0;
    const double yIn = dy > 0 ? r.y0 : r.y1;
    const double yOut = dy > 0 ? r.y1 : r.y0;
    const double tInX = (xIn - x) / dx;
    const double tInY = (yIn - y) / dy;
    double tIn1 = tInX;
    double tIn2 = tInY;
    if (tInY <= tInX)
        std::swap(tIn1, tIn2);
    if (tIn1 > 1)
        return;
    if (tIn1 > 0)
        emit(xIn, yIn);
    if (tIn2 > 1)
        return;
    const double tOutX = (xOut - x) / dx;
    const double tOutY = (yOut - y) / dy;
    const double tOut1 = tOutY <= tOutX ? tOutY : tOutX;
    if (!(tIn2 > 0) && !(tOut1 > 0))
        return;
    if (tOut1 < tIn2) {
        if (tInX <= tInY)
            emit(xOut, yIn);
        else
            emit(xIn, yOut);
        return;
    }
    if (tIn2 > 0) {
        if (tInX <= tInY)
            emit(x + dx * tInY, yIn);
        else
            emit(xIn, y + dy * tInX);
    }
    if (tOut1 < 1) {
        if (tOutY <= tOutX)
            emit(x + dx * tOutY, yOut);
        else
            emit(xOut, y + dy * tOutX);
    } else {
        emit(to.x, to.y);
    }
}

// A path of moves, lines, closes and things to step over, with the vertices of each subpath in a list.
Stream clipPlainly(const Stream &stream, const LxRectD &clip) {
    const PathHandle path = stream.path();
    Stream out;
    bool closed = false;
    std::optional<LxPointD> start;
    std::vector<LxPointD> vertices;
    for (int32_t at = 0; at < path->count;) {
        const uint32_t tag = path->words[at];
        const int32_t size = tag == 6 ? indexStep(*path, at) : itemSize(tag);
        if (size == 0)
            return stream;
        if (at + size > path->count)
            break;
        if (tag == 1) {
            start = pointAt(path->words + at + 1);
            vertices = {*start};
        } else if (tag == 2) {
            vertices.push_back(pointAt(path->words + at + 1));
        } else if (tag == 15) {
            closed = true;
            if (!start) {
                out.close();
            } else {
                if (vertices.back().x != vertices[0].x || vertices.back().y != vertices[0].y)
                    vertices.push_back(vertices[0]);
                bool emitted = false;
                if (vertices.size() > 2) {
                    for (size_t i = 1; i < vertices.size(); ++i)
                        clipEdgePlainly(vertices[i - 1], vertices[i], clip, out, emitted);
                    out.close();
                }
                vertices = {*start};
            }
        }
        at += size;
    }
    return closed ? out : stream;
}

double area(const Stream &stream) {
    double twice = 0;
    LxPointD start = {};
    LxPointD last = {};
    for (size_t i = 0; i < stream.words.size();) {
        const uint32_t tag = stream.words[i];
        LxPointD p = start;
        if (tag != 15)
            p = pointAt(stream.words.data() + i + 1);
        if (tag == 1)
            start = p;
        else
            twice += last.x * p.y - last.y * p.x;
        last = p;
        i += tag == 15 ? 1 : 3;
    }
    return twice / 2;
}

} // namespace

TEST(PathClip, TriangleInsideStartsAtItsSecondVertex) {
    EXPECT_EQ(clipped(Stream().move(10, 20).line(50, 30).line(40, 60).close()),
              Stream().move(50, 30).line(40, 60).line(10, 20).close());
}

// Each edge runs outside along one side and turns around the corner by which it passes first.
TEST(PathClip, SurroundingPolygonGivesTheFourCorners) {
    EXPECT_EQ(clipped(Stream().move(-50, -60).line(150, -60).line(150, 160).line(-50, 160).close()),
              Stream().move(0, 0).line(100, 0).line(100, 100).line(0, 100).close());
}

TEST(PathClip, PolygonAboveCollapsesOntoTheBorderOrToAClose) {
    const Stream above = clipped(Stream().move(10, -50).line(90, -50).line(50, -10).close());
    EXPECT_EQ(above.words.back(), 15u);
    EXPECT_EQ(area(above), 0);
}

// The first edge ends before it would enter in x; the other two run away from the rectangle.
TEST(PathClip, PolygonOnTheLeftCollapsesToAClose) {
    EXPECT_EQ(clipped(Stream().move(-50, 20).line(-10, 30).line(-30, 60).close()), Stream().close());
}

TEST(PathClip, HalfOutsidePolygonIsCutAtTheSide) {
    // The first edge leaves at x = 100; the second lies outside and adds nothing; the third comes back in.
    EXPECT_EQ(clipped(Stream().move(50, 10).line(150, 20).line(150, 40).line(50, 30).close()),
              Stream().move(100, 15).line(100, 35).line(50, 30).line(50, 10).close());
}

TEST(PathClip, TwoDistinctPointsAreADegeneratePolygon) {
    EXPECT_EQ(clipped(Stream().move(10, 10).line(20, 30).close()),
              Stream().move(20, 30).line(10, 10).close());
    EXPECT_EQ(clipped(Stream().move(10, 10).line(20, 30).line(10, 10).close()),
              Stream().move(20, 30).line(10, 10).close());
}

TEST(PathClip, TwoEqualPointsAddNothing) {
    const PathHandle path = Stream().move(10, 10).line(10, 10).close().path();
    LxPath_Clip(path.get(), &box);
    EXPECT_EQ(path->count, 0);
    EXPECT_EQ(path->words, nullptr);
}

TEST(PathClip, MoveAndCloseAloneEmptyThePath) {
    const PathHandle path = Stream().move(10, 10).close().path();
    LxPath_Clip(path.get(), &box);
    EXPECT_EQ(path->words, nullptr);
    EXPECT_EQ(path->capacity, 0);
}

TEST(PathClip, OpenSubpathsAloneStayAsTheyAre) {
    const Stream open = Stream().move(-10, -10).line(500, 500).move(1, 1).curve(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(clipped(open), open);
    EXPECT_EQ(clipped(Stream()), Stream());
}

TEST(PathClip, OpenSubpathIsLostBesideAClosedOne) {
    const Stream triangle = Stream().move(10, 20).line(50, 30).line(40, 60).close();
    const Stream expected = Stream().move(50, 30).line(40, 60).line(10, 20).close();
    Stream before = Stream().move(1, 1).line(2, 2);
    before.words.insert(before.words.end(), triangle.words.begin(), triangle.words.end());
    EXPECT_EQ(clipped(before), expected);
    EXPECT_EQ(clipped(Stream(triangle).move(1, 1).line(2, 2).line(3, 1)), expected);
}

TEST(PathClip, CurvesAndArcsAreSteppedOver) {
    EXPECT_EQ(clipped(Stream()
                          .move(10, 20)
                          .curve(1, 2, 3, 4, 5, 6)
                          .line(50, 30)
                          .qcurve(1, 2, 3, 4)
                          .zeros(2)
                          .arc(1, 2, 3, 4, 5, 6, 7)
                          .line(40, 60)
                          .close()),
              Stream().move(50, 30).line(40, 60).line(10, 20).close());
    EXPECT_EQ(clipped(Stream().move(10, 20).curve(1, 2, 3, 4, 5, 6).close()), Stream());
}

TEST(PathClip, PolygonItemsAreSteppedOverByTheIndexWalk) {
    // The x of 0.0 makes a step of one word, and the words behind read as items: two that are nothing, and a
    // line.
    const Stream polygonItem =
        Stream().move(10, 20).word(6).word(0).zeros(1).line(50, 30).line(40, 60).close();
    EXPECT_EQ(clipped(polygonItem), Stream().move(50, 30).line(40, 60).line(10, 20).close());
    // An x of 1.0 steps over all that is left: no close is found.
    const Stream lost = Stream().move(10, 20).word(6).word(1).number(1).number(1).close();
    EXPECT_EQ(clipped(lost), lost);
}

TEST(PathClip, WordThatIsNoItemLeavesThePathUntouched) {
    for (const uint32_t tag : {7u, 8u, 9u, 14u, 16u, 0xFFFFFFFFu}) {
        const Stream stream = Stream().move(-10, 20).line(50, 30).line(40, 60).close().word(tag);
        EXPECT_EQ(clipped(stream), stream) << tag;
    }
}

TEST(PathClip, CutOffItemEndsTheScan) {
    EXPECT_EQ(clipped(Stream().move(10, 20).line(50, 30).line(40, 60).close().word(2).number(1)),
              Stream().move(50, 30).line(40, 60).line(10, 20).close());
}

TEST(PathClip, LinesBehindACloseStartFromTheLastMove) {
    EXPECT_EQ(
        clipped(Stream().move(10, 20).line(50, 30).line(40, 60).close().line(70, 70).line(60, 90).close()),
        Stream()
            .move(50, 30)
            .line(40, 60)
            .line(10, 20)
            .close()
            .move(70, 70)
            .line(60, 90)
            .line(10, 20)
            .close());
    EXPECT_EQ(clipped(Stream().move(10, 20).line(50, 30).line(40, 60).close().close()),
              Stream().move(50, 30).line(40, 60).line(10, 20).close());
}

TEST(PathClip, CloseBeforeAnyMoveStaysAlone) {
    EXPECT_EQ(clipped(Stream().close()), Stream().close());
    EXPECT_EQ(clipped(Stream().line(1, 2).line(3, 4).line(5, 5).close()), Stream().close());
}

// An upright edge on the left side counts as running right, so that it enters at once; one further right
// counts as running left. Both keep its points.
TEST(PathClip, UprightAndLevelEdges) {
    EXPECT_EQ(clipped(Stream().move(0, 10).line(0, 50).line(30, 50).line(30, 10).close()),
              clipPlainly(Stream().move(0, 10).line(0, 50).line(30, 50).line(30, 10).close(), box));
    EXPECT_EQ(clipped(Stream().move(0, 0).line(100, 0).line(100, 100).line(0, 100).close()),
              Stream().move(100, 0).line(100, 100).line(0, 100).line(0, 0).close());
    // Left of the rectangle: dx = +tiny, the way to it takes a t far above 1.
    EXPECT_EQ(clipped(Stream().move(-5, 10).line(-5, 50).line(-6, 50).line(-6, 10).close()).words.back(),
              15u);
}

TEST(PathClip, RandomPathsMatchThePlainRules) {
    Random random(8);
    const auto number = [&] {
        switch (random.integer(0, 4)) {
        case 0:
            return static_cast<float>(random.integer(-1, 5) * 25);
        case 4: // as small as what stands for a difference of 0
            return static_cast<float>(random.integer(-8, 8) * 0x1p-54);
        case 1:
            return static_cast<float>(random.real(-50, 150));
        case 2:
            return static_cast<float>(random.real(-1e6, 1e6));
        default:
            return static_cast<float>(random.real(0, 100));
        }
    };
    for (int round = 0; round < 20000; ++round) {
        Stream stream;
        for (int i = random.integer(0, 20); i > 0; --i) {
            switch (random.integer(0, 9)) {
            case 0:
                stream.move(number(), number());
                break;
            case 1:
                stream.close();
                break;
            case 2:
                if (random.integer(0, 4) == 0)
                    stream.qcurve(number(), number(), number(), number());
                break;
            default:
                stream.line(number(), number());
            }
        }
        LxRectD clip = box;
        if (random.integer(0, 3) == 0)
            clip = LxRectD(number(), number(), number(), number());
        if (random.integer(0, 19) == 0)
            clip = {clip.x1, clip.y0, clip.x0, clip.y1};
        if (random.integer(0, 19) == 0)
            clip = {-INFINITY, clip.y0, INFINITY, clip.y1};
        ASSERT_EQ(clipped(stream, clip), clipPlainly(stream, clip)) << stream;
    }
}

TEST(PathClip, WildNumbersMatchThePlainRules) {
    Random random(9);
    const auto wild = [&] { return static_cast<float>(random.anyReal()); };
    for (int round = 0; round < 20000; ++round) {
        const Stream stream = Stream()
                                  .move(wild(), wild())
                                  .line(wild(), wild())
                                  .line(wild(), wild())
                                  .line(wild(), wild())
                                  .close();
        const LxRectD clip = {random.anyReal(), random.anyReal(), random.anyReal(), random.anyReal()};
        ASSERT_EQ(clipped(stream, clip), clipPlainly(stream, clip)) << stream;
    }
}

TEST(PathClip, ResultsLieInsideAndKeepTheAreaInside) {
    Random random(10);
    for (int round = 0; round < 2000; ++round) {
        std::vector<LxPointD> points;
        for (int i = random.integer(3, 12); i > 0; --i)
            points.push_back({random.real(-50, 150), random.real(-50, 150)});
        const Stream whole = polygon(points);
        const Stream part = clipped(whole);
        ASSERT_EQ(part.words.back(), 15u);
        for (size_t i = 0; i + 1 < part.words.size(); i += 3) {
            const LxPointD p = pointAt(part.words.data() + i + 1);
            // Points of the crossing are on the side itself in one coordinate, and rounded in the other.
            ASSERT_TRUE(p.x >= -1e-4 && p.x <= 100 + 1e-4 && p.y >= -1e-4 && p.y <= 100 + 1e-4);
        }
        // A strip of quarters adds up to the whole.
        double sum = 0;
        for (const LxRectD &quarter : {LxRectD{-50, -50, 50, 50}, LxRectD{50, -50, 150, 50},
                                       LxRectD{-50, 50, 50, 150}, LxRectD{50, 50, 150, 150}})
            sum += area(clipped(whole, quarter));
        ASSERT_NEAR(sum, area(whole), 0.05);
    }
}

TEST(PathClip, ClipThatContainsThePathTurnsItByAVertex) {
    Random random(11);
    for (int round = 0; round < 500; ++round) {
        std::vector<LxPointD> points;
        for (int i = random.integer(3, 12); i > 0; --i)
            points.push_back({random.real(1, 99), random.real(1, 99)});
        std::vector<LxPointD> turned(points.begin() + 1, points.end());
        turned.push_back(points[0]);
        ASSERT_EQ(clipped(polygon(points)), polygon(turned));
    }
}

TEST(PathClip, NullIsIgnored) {
    LxPath_Clip(nullptr, &box);
    const PathHandle path = Stream().move(-10, 20).line(50, 30).line(40, 60).close().path();
    LxPath_Clip(path.get(), nullptr);
    EXPECT_EQ(path->count, 10);
}
