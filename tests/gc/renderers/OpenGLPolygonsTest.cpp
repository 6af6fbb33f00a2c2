// How paths become polygons, call by call.

#include "gc/renderers/OpenGLPolygons.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <set>

#include <gtest/gtest.h>

#include <oxlume/oxlume.h>

#include "foundation/Memory.h"
#include "tests/gc/renderers/OpenGLRecorder.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

struct DeletePath {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using PathHandle = std::unique_ptr<LxPath, DeletePath>;

PathHandle emptyPath() {
    return PathHandle(LxPath_Create());
}

struct DeleteTessellator {
    void operator()(GLUtesselator *tessellator) const { gluDeleteTess(tessellator); }
};
using TessellatorHandle = std::unique_ptr<GLUtesselator, DeleteTessellator>;

// What drawing the path asks for.
GLCalls callsOf(const PathHandle &path) {
    const TessellatorHandle tessellator(createTessellator());
    GLRecorder recorder;
    drawPolygons(tessellator.get(), *path);
    return recorder.take();
}

bool isTessellated(const PathHandle &path) {
    const GLCalls calls = callsOf(path);
    return !calls.empty() && calls.front() == glCall("gluTessBeginPolygon", 0);
}

// The calls to the tessellator, without what it then draws.
GLCalls tessellationOf(const PathHandle &path) {
    GLCalls calls = callsOf(path);
    std::erase_if(calls, [](const std::string &call) { return call.rfind("gluTess", 0) != 0; });
    return calls;
}

std::string tessVertex(double x, double y) {
    return glCall("gluTessVertex", x, y, 0);
}

// An open path of so many lines.
PathHandle zigzag(int lines) {
    PathHandle path = emptyPath();
    LxPath_AddMoveTo(path.get(), 1, 1);
    for (int i = 1; i <= lines; ++i)
        LxPath_AddLineTo(path.get(), 1 + 5 * i, i % 2 == 0 ? 1 : 9);
    return path;
}

PathHandle randomPath(Random &random, bool anyNumbers) {
    PathHandle path = emptyPath();
    const auto p = [&] { return anyNumbers ? random.anyReal() : random.real(-20, 80); };
    for (int i = random.integer(1, 4); i > 0; --i) {
        if (random.integer(0, 4) != 0)
            LxPath_AddMoveTo(path.get(), p(), p());
        for (int k = random.integer(0, 6); k > 0; --k) {
            switch (random.integer(0, 3)) {
            case 0:
                LxPath_AddQCurveTo(path.get(), p(), p(), p(), p());
                break;
            case 1:
                // Unbounded curves have a million steps each, which proves nothing more.
                if (!anyNumbers)
                    LxPath_AddCurveTo(path.get(), p(), p(), p(), p(), p(), p());
                break;
            default:
                LxPath_AddLineTo(path.get(), p(), p());
                break;
            }
        }
        if (random.integer(0, 2) != 0)
            LxPath_AddClose(path.get());
    }
    return path;
}

void *noMemory(size_t) {
    return nullptr;
}

} // namespace

TEST(OpenGLPolygons, FewerThanFiveLinesAreDrawnAsTheyStand) {
    EXPECT_EQ(callsOf(zigzag(4)),
              (GLCalls{glCall("glBegin", GL_POLYGON), glCall("glVertex2d", 1, 1), glCall("glVertex2d", 6, 9),
                       glCall("glVertex2d", 11, 1), glCall("glVertex2d", 16, 9), glCall("glVertex2d", 21, 1),
                       "glEnd"}));
    EXPECT_FALSE(isTessellated(zigzag(4)));
    EXPECT_TRUE(isTessellated(zigzag(5)));
}

TEST(OpenGLPolygons, TheWayBackToTheStartCountsAsALine) {
    const PathHandle square = emptyPath();
    const LxPointD corners[] = {{1, 1}, {9, 1}, {9, 9}, {1, 9}, {5, 12}};
    LxPath_AddPoly(square.get(), corners, 4);
    EXPECT_FALSE(isTessellated(square));
    const PathHandle pentagon = emptyPath();
    LxPath_AddPoly(pentagon.get(), corners, 5);
    EXPECT_TRUE(isTessellated(pentagon));
    // The estimate measures the way back to the origin: there is none from there.
    const PathHandle toOrigin = zigzag(3);
    LxPath_AddLineTo(toOrigin.get(), 0, 0);
    LxPath_AddClose(toOrigin.get());
    EXPECT_FALSE(isTessellated(toOrigin));
}

TEST(OpenGLPolygons, AMoveIsNoBreakInAShortPath) {
    const PathHandle path = zigzag(1);
    LxPath_AddMoveTo(path.get(), 30, 40);
    LxPath_AddLineTo(path.get(), 50, 60);
    EXPECT_EQ(callsOf(path),
              (GLCalls{glCall("glBegin", GL_POLYGON), glCall("glVertex2d", 1, 1), glCall("glVertex2d", 6, 9),
                       glCall("glVertex2d", 30, 40), glCall("glVertex2d", 50, 60), "glEnd"}));
    EXPECT_EQ(callsOf(emptyPath()), (GLCalls{glCall("glBegin", GL_POLYGON), "glEnd"}));
}

TEST(OpenGLPolygons, AContourIsOpenedByAMoveAndEndedByAClose) {
    const PathHandle path = emptyPath();
    const LxPointD corners[] = {{1, 1}, {9, 1}, {9, 9}, {5, 5}, {1, 9}};
    LxPath_AddPoly(path.get(), corners, 5);
    EXPECT_EQ(tessellationOf(path),
              (GLCalls{glCall("gluTessBeginPolygon", 0), "gluTessBeginContour", tessVertex(1, 1),
                       tessVertex(9, 1), tessVertex(9, 9), tessVertex(5, 5), tessVertex(1, 9),
                       tessVertex(1, 1), "gluTessEndContour", "gluTessEndPolygon"}));
}

TEST(OpenGLPolygons, AnOpenContourIsNotEnded) {
    const PathHandle path = zigzag(3);
    LxPath_AddMoveTo(path.get(), 40, 1);
    LxPath_AddLineTo(path.get(), 50, 2);
    LxPath_AddLineTo(path.get(), 45, 8);
    EXPECT_EQ(tessellationOf(path),
              (GLCalls{glCall("gluTessBeginPolygon", 0), "gluTessBeginContour", tessVertex(1, 1),
                       tessVertex(6, 9), tessVertex(11, 1), tessVertex(16, 9), "gluTessBeginContour",
                       tessVertex(40, 1), tessVertex(50, 2), tessVertex(45, 8), "gluTessEndPolygon"}));
    // The tessellator ends it itself, and draws all the same.
    const GLCalls calls = callsOf(path);
    EXPECT_NE(std::find(calls.begin(), calls.end(), glCall("glVertex2dv", 50, 2, 0)), calls.end());
}

TEST(OpenGLPolygons, TheVerticesAreThoseOfTheFlattenedPath) {
    Random random(1);
    for (int i = 0; i < 300; ++i) {
        const PathHandle path = randomPath(random, false);
        if (LxPath_Info(path.get(), nullptr).lines < 5)
            continue;
        GLCalls expected = {glCall("gluTessBeginPolygon", 0)};
        const std::unique_ptr<LxPathIterator, void (*)(LxPathIterator *)> iterator(LxPath_CreateIterator(),
                                                                                   LxPath_DeleteIterator);
        const LxPathMoveCallback onMove = [](LxPathIterator *self, const LxPointD *point) {
            auto &calls = *static_cast<GLCalls *>(LxPathIterator_User(self));
            calls.push_back("gluTessBeginContour");
            calls.push_back(tessVertex(point->x, point->y));
        };
        const LxPathSegmentCallback onSegment = [](LxPathIterator *self, const LxPointD *,
                                                   const LxPointD *to) {
            static_cast<GLCalls *>(LxPathIterator_User(self))->push_back(tessVertex(to->x, to->y));
        };
        LxPathIterator_SetCallback(iterator.get(), kLxPathOnMove, reinterpret_cast<LxPathCallback>(onMove));
        LxPathIterator_SetCallback(iterator.get(), kLxPathOnSegment,
                                   reinterpret_cast<LxPathCallback>(onSegment));
        LxPath_IterateConst(path.get(), iterator.get(), nullptr, &expected, nullptr);
        expected.push_back("gluTessEndPolygon");
        GLCalls actual = tessellationOf(path);
        std::erase(actual, "gluTessEndContour");
        ASSERT_EQ(actual, expected) << i;
    }
}

TEST(OpenGLPolygons, TheArrayHasRoomWhereTheEstimateIsShort) {
    // Each way back from the origin is missing in the estimate.
    const PathHandle path = emptyPath();
    for (int i = 0; i < 40; ++i) {
        LxPath_AddMoveTo(path.get(), 5 + i, 5);
        LxPath_AddLineTo(path.get(), 9 + i, 1);
        LxPath_AddLineTo(path.get(), 0, 0);
        LxPath_AddClose(path.get());
    }
    const int32_t estimate = LxPath_Info(path.get(), nullptr).points;
    GLCalls calls = tessellationOf(path);
    std::erase_if(calls, [](const std::string &call) { return call.rfind("gluTessVertex", 0) != 0; });
    EXPECT_EQ(estimate, 120);
    EXPECT_EQ(calls.size(), 160u);
}

TEST(OpenGLPolygons, CrossingEdgesGetNewVertices) {
    const PathHandle path = emptyPath();
    const LxPointD corners[] = {{0, 0}, {10, 10}, {10, 0}, {0, 10}, {-5, 5}};
    LxPath_AddPoly(path.get(), corners, 5);
    const int32_t before = allocationCount();
    const GLCalls calls = callsOf(path);
    EXPECT_NE(std::find(calls.begin(), calls.end(), glCall("glVertex2dv", 5, 5, 0)), calls.end());
    EXPECT_EQ(allocationCount(), before);
}

TEST(OpenGLPolygons, NothingIsDrawnWithoutMemory) {
    const TessellatorHandle tessellator(createTessellator());
    const PathHandle path = zigzag(5);
    const SystemAllocator lacking = {noMemory, std::calloc, std::realloc};
    GLRecorder recorder;
    setSystemAllocator(&lacking);
    drawPolygons(tessellator.get(), *path);
    setSystemAllocator(nullptr);
    EXPECT_EQ(recorder.take(), GLCalls{});
}

TEST(OpenGLPolygons, VerticesThatAreNoNumbersAreLeftOut) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const PathHandle path = zigzag(4);
    LxPath_AddLineTo(path.get(), std::nan(""), 3);
    LxPath_AddLineTo(path.get(), 3, -infinite);
    LxPath_AddLineTo(path.get(), 8, 8);
    EXPECT_EQ(tessellationOf(path),
              (GLCalls{glCall("gluTessBeginPolygon", 0), "gluTessBeginContour", tessVertex(1, 1),
                       tessVertex(6, 9), tessVertex(11, 1), tessVertex(16, 9), tessVertex(21, 1),
                       tessVertex(8, 8), "gluTessEndPolygon"}));
}

TEST(OpenGLPolygons, AnyNumbersAreDrawnSafely) {
    Random random(2);
    const TessellatorHandle tessellator(createTessellator());
    const int32_t before = allocationCount();
    for (int i = 0; i < 2000; ++i)
        drawPolygons(tessellator.get(), *randomPath(random, true));
    EXPECT_EQ(allocationCount(), before);
}
