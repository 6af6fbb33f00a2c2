#include "gc/RendererDefaults.h"

#include <cstdlib>
#include <set>
#include <utility>

#include <gtest/gtest.h>

#include "foundation/Memory.h"
#include "gc/Context.h"
#include "tests/gc/Recorder.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

// A context whose renderer has the defaults and records `pixel` and `path`.
class Defaults : public testing::Test {
protected:
    Defaults() {
        LxGC_SetStrokeColor(gc_, LxColor_RGBA(1, 2, 3, 4));
        LxGC_SetStrokeBlend(gc_, LxBlend_WithChannel(9, 8, 7));
        LxGC_SetFillColor(gc_, LxColor_RGBA(5, 6, 7, 8));
    }

    // The calls of `pixel` at the places in order, in the stroke's colour and blend.
    static Calls pixels(const std::vector<std::pair<int64_t, int64_t>> &places) {
        Calls calls;
        for (const auto &[x, y] : places)
            calls.push_back("pixel " + std::to_string(x) + " " + std::to_string(y) +
                            " color 2: 1 2 3 4 blend 9 8 7");
        return calls;
    }

    LxRenderer *renderer() { return gc_->renderers[0]; }

    RecordingKinds kinds_;
    Recorder recorder_;
    ContextHandle handle_ = makeContext({0, 0, 20, 10}, recordsBasics, recorder_);
    LxGC *gc_ = handle_.get();
};

std::string pathCall(LxPath *path) {
    const std::string call = "path (" + describe(path) + ")";
    LxPath_Delete(path);
    return call;
}

// The places of a walk from (x1, y1) to (x2, y2), by the steps as they are told for the two cases.
std::vector<std::pair<int64_t, int64_t>> walked(int64_t x1, int64_t y1, int64_t x2, int64_t y2) {
    std::vector<std::pair<int64_t, int64_t>> places;
    const int64_t dx2 = 2 * std::abs(x2 - x1), dy2 = 2 * std::abs(y2 - y1);
    const int64_t sx = x2 >= x1 ? 1 : -1, sy = y2 >= y1 ? 1 : -1;
    int64_t x = x1, y = y1;
    if (dx2 > dy2) {
        int64_t error = dy2 - (dx2 >> 1);
        while (true) {
            places.emplace_back(x, y);
            if (x == x2)
                break;
            if (error >= 0) {
                y += sy;
                error -= dx2;
            }
            error += dy2;
            x += sx;
        }
    } else {
        int64_t error = dx2 - (dy2 >> 1);
        while (true) {
            places.emplace_back(x, y);
            if (y == y2)
                break;
            if (error >= 0) {
                x += sx;
                error -= dy2;
            }
            error += dx2;
            y += sy;
        }
    }
    return places;
}

} // namespace

TEST_F(Defaults, ShapesGoThroughThePathSlot) {
    LxPath *line = LxPath_Create();
    LxPath_SetLine(line, 1, 2, 3.5, 4);
    LxGC_Line(gc_, 1, 2, 3.5, 4);
    EXPECT_EQ(recorder_.take(), (Calls{pathCall(line)}));

    const LxRectD rect = {1, 2, 8, 9};
    for (const auto &[radiusX, radiusY] : {std::pair{0.0, 0.0}, std::pair{2.0, 3.0}}) {
        LxPath *frame = LxPath_Create();
        LxPath_SetRect(frame, &rect, radiusX, radiusY);
        LxGC_RoundFrame(gc_, 8, 9, 1, 2, radiusX, radiusY); // The corners are sorted.
        EXPECT_EQ(recorder_.take(), (Calls{pathCall(frame)}));
    }

    LxPath *ellipse = LxPath_Create();
    LxPath_SetEllipse(ellipse, 5, 6, 3, 2);
    LxGC_Ellipse(gc_, 5, 6, 3, 2);
    EXPECT_EQ(recorder_.take(), (Calls{pathCall(ellipse)}));

    const LxPointD points[] = {{1, 2}, {3, 4}, {5, 1}};
    LxGC_Poly(gc_, points, 3);
    EXPECT_EQ(recorder_.take(), (Calls{"path (M 1 2, L 3 4, L 5 1, Z)"}));
    LxGC_Poly(gc_, nullptr, 3);
    EXPECT_EQ(recorder_.take(), (Calls{"path ()"}));
}

TEST_F(Defaults, AreDrawnWhateverTheRenderMode) {
    for (const uint32_t mode : {0u, 1u, 2u, 3u}) {
        LxGC_SetRenderMode(gc_, mode);
        LxGC_Line(gc_, 1, 2, 3, 4);
        EXPECT_EQ(recorder_.take(), (Calls{"path (M 1 2, L 3 4)"}));
    }
}

TEST_F(Defaults, TheirPathsShareMemoryThatGoesWithTheContext) {
    const int32_t before = allocationCount();
    LxGC_Line(gc_, 1, 2, 3, 4);
    LxGC_Frame(gc_, 1, 2, 3, 4);
    LxGC_Circle(gc_, 1, 2, 3);
    EXPECT_EQ(allocationCount(), before + 1);
    handle_.reset();
    EXPECT_EQ(allocationCount(), before - 2); // the renderer and the context go too
}

TEST_F(Defaults, WithoutMemoryForAPathNothingIsDrawn) {
    static constexpr SystemAllocator barren = {[](size_t) -> void * { return nullptr; },
                                               [](size_t, size_t) -> void * { return nullptr; },
                                               [](void *, size_t) -> void * { return nullptr; }};
    setSystemAllocator(&barren);
    LxGC_Line(gc_, 1, 2, 3, 4);
    LxGC_Frame(gc_, 1, 2, 3, 4);
    LxGC_Ellipse(gc_, 1, 2, 3, 4);
    setSystemAllocator(nullptr);
    EXPECT_EQ(recorder_.take(), Calls());
}

TEST_F(Defaults, ARowIsClippedAndTakesTheStrokesColour) {
    LxGC_SetClipRectD(gc_, 3, 2, 7, 5);
    LxGC_SetRenderMode(gc_, 1);
    const auto row = [&](int32_t x1, int32_t x2, int32_t y) {
        renderer()->hLine(renderer(), x1, x2, y);
        return recorder_.take();
    };
    EXPECT_EQ(row(4, 5, 2), pixels({{4, 2}, {5, 2}}));
    EXPECT_EQ(row(5, 4, 4), pixels({{4, 4}, {5, 4}}));
    EXPECT_EQ(row(-100, 100, 3), pixels({{3, 3}, {4, 3}, {5, 3}, {6, 3}}));
    EXPECT_EQ(row(6, 7, 3), pixels({{6, 3}}));
    EXPECT_EQ(row(7, 9, 3), Calls());
    EXPECT_EQ(row(8, 9, 3), Calls());
    EXPECT_EQ(row(0, 2, 3), Calls());
    EXPECT_EQ(row(4, 5, 1), Calls());
    EXPECT_EQ(row(4, 5, 5), Calls());

    // Gradients do not matter here.
    int gradient = 0;
    LxGC_SetStrokeGradient(gc_, reinterpret_cast<LxGradient *>(&gradient));
    EXPECT_EQ(row(4, 4, 2), pixels({{4, 2}}));
}

// The context hands on a row that begins at the clip's right side, turned around, and the row draws the last
// pixel inside.
TEST_F(Defaults, ARowFromTheRightSideOnDrawsThePixelBefore) {
    LxGC_HLineL(gc_, 20, 30, 4);
    EXPECT_EQ(recorder_.take(), pixels({{19, 4}}));
    LxGC_HLineL(gc_, 21, 30, 4);
    EXPECT_EQ(recorder_.take(), Calls());
    LxGC_HLineL(gc_, -9, -2, 4); // The other side has no such pixel: -2 rounds to -1.
    EXPECT_EQ(recorder_.take(), Calls());
}

TEST_F(Defaults, ARowEndsBeforeTheRightSideAndAboveTheBottom) {
    LxGC_HLineL(gc_, 18, 20, 9);
    EXPECT_EQ(recorder_.take(), pixels({{18, 9}, {19, 9}}));
    LxGC_HLineL(gc_, 18, 20, 10);
    EXPECT_EQ(recorder_.take(), Calls());
}

TEST_F(Defaults, ALineIncludesBothEnds) {
    const auto line = [&](int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
        renderer()->lineL(renderer(), x1, y1, x2, y2);
        return recorder_.take();
    };
    EXPECT_EQ(line(5, 5, 5, 5), pixels({{5, 5}}));
    EXPECT_EQ(line(1, 1, 4, 1), pixels({{1, 1}, {2, 1}, {3, 1}, {4, 1}}));
    EXPECT_EQ(line(1, 4, 1, 2), pixels({{1, 4}, {1, 3}, {1, 2}}));
    EXPECT_EQ(line(0, 0, 3, 3), pixels({{0, 0}, {1, 1}, {2, 2}, {3, 3}}));
    // dx2 = 8, dy2 = 4: the error runs 0, -4, 0, -4, so y steps after the first and the third pixel.
    EXPECT_EQ(line(0, 0, 4, 2), pixels({{0, 0}, {1, 1}, {2, 1}, {3, 2}, {4, 2}}));
    // Nothing is clipped here.
    EXPECT_EQ(line(-2, -1, 0, -1), pixels({{-2, -1}, {-1, -1}, {0, -1}}));
}

TEST_F(Defaults, RandomLinesFollowTheWalk) {
    Random random;
    for (int i = 0; i < 2000; ++i) {
        const int32_t x1 = random.integer(-30, 30), y1 = random.integer(-30, 30);
        const int32_t x2 = random.integer(-30, 30), y2 = random.integer(-30, 30);
        renderer()->lineL(renderer(), x1, y1, x2, y2);
        ASSERT_EQ(recorder_.take(), pixels(walked(x1, y1, x2, y2)));
    }
}

TEST_F(Defaults, ALineAtTheEndsOfTheIntegersDoesNotOverflow) {
    renderer()->lineL(renderer(), INT32_MAX - 2, INT32_MIN, INT32_MAX, INT32_MIN + 1);
    EXPECT_EQ(recorder_.take(), pixels(walked(INT32_MAX - 2, INT32_MIN, INT32_MAX, int64_t{INT32_MIN} + 1)));
}

TEST_F(Defaults, ALineWithAGradientDrawsNothing) {
    int gradient = 0;
    LxGC_SetStrokeGradient(gc_, reinterpret_cast<LxGradient *>(&gradient));
    LxGC_LineL(gc_, 1, 1, 5, 5);
    EXPECT_EQ(recorder_.take(), Calls());
    LxGC_SetStrokeGradient(gc_, nullptr);
    LxGC_LineL(gc_, 1, 1, 1, 1);
    EXPECT_EQ(recorder_.take(), pixels({{1, 1}}));
}

TEST_F(Defaults, AFrameIsFilledWithRowsThenOutlined) {
    // The same renderer with rows and lines recorded instead of walked.
    Recorder all;
    const ContextHandle recording = makeContext({0, 0, 20, 10}, recordsAll, all);
    LxRenderer *other = recording->renderers[0];
    other->frameL = defaultRenderer.frameL;
    const auto frame = [&](uint32_t mode) {
        LxGC_SetRenderMode(recording.get(), mode);
        LxGC_FrameL(recording.get(), 2, 3, 8, 5);
        return all.take();
    };
    const Calls rows = {"hLine 2 8 3", "hLine 2 8 4", "hLine 2 8 5"};
    const Calls lines = {"lineL 2 3 7 3", "lineL 7 4 7 4", "lineL 6 4 2 4", "lineL 2 3 2 4"};
    Calls both = rows;
    both.insert(both.end(), lines.begin(), lines.end());
    EXPECT_EQ(frame(0), Calls());
    EXPECT_EQ(frame(1), rows);
    EXPECT_EQ(frame(2), lines);
    EXPECT_EQ(frame(3), both);
    EXPECT_EQ(frame(0xFFFFFFFC), Calls());
}

// The fill has one row and one column more than the outline, and is clipped, which the outline is not.
TEST_F(Defaults, AFramesFillIsOneRowHigherThanItsOutline) {
    LxGC_SetRenderMode(gc_, 1);
    LxGC_FrameL(gc_, 4, 5, 6, 7);
    EXPECT_EQ(recorder_.take(),
              pixels({{4, 5}, {5, 5}, {6, 5}, {4, 6}, {5, 6}, {6, 6}, {4, 7}, {5, 7}, {6, 7}}));
    LxGC_SetRenderMode(gc_, 2);
    LxGC_FrameL(gc_, 4, 5, 7, 8);
    EXPECT_EQ(recorder_.take(), pixels({{4, 5}, {5, 5}, {6, 5}, {6, 6}, {6, 7}, {5, 7}, {4, 7}, {4, 6}}));
}

TEST_F(Defaults, AFrameUpsideDownHasNoRowsAndAnOutline) {
    LxGC_SetRenderMode(gc_, 1);
    LxGC_FrameL(gc_, 4, 7, 6, 5);
    EXPECT_EQ(recorder_.take(), Calls());
    LxGC_SetRenderMode(gc_, 2);
    LxGC_FrameL(gc_, 4, 4, 5, 5);
    // One pixel by one: each of the four lines, ends out of order or not, is walked.
    Calls expected;
    for (const auto &line : {walked(4, 4, 4, 4), walked(4, 5, 4, 4), walked(3, 4, 4, 4), walked(4, 3, 4, 5)})
        for (const std::string &call : pixels(line))
            expected.push_back(call);
    EXPECT_EQ(recorder_.take(), expected);
}

TEST_F(Defaults, TheOthersDoNothing) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 2, 2);
    LxGC_Fill(gc_, LxColor_RGBA(1, 2, 3, 4));
    LxGC_Clear(gc_);
    LxGC_Flush(gc_);
    LxGC_MatrixScale(gc_, 2, 2);
    LxGC_MatrixIdentity(gc_);
    LxGC_DrawImage(gc_, image.get());
    LxGC_DrawTextWithLength(gc_, 1, 1, "words", 5);
    LxGC_DrawText(gc_, 1, 1, "words");
    LxGC_VLineL(gc_, 3, 1, 5);
    LxGC_EllipseL(gc_, 1, 1, 8, 8);
    renderer()->resize(renderer(), 3, 4);
    renderer()->spare(renderer());
    EXPECT_EQ(renderer()->spare2(renderer()), 0);
    EXPECT_EQ(recorder_.take(), Calls());
    const LxColor color = renderer()->pixelColor(renderer());
    EXPECT_EQ(color.type, kLxPixelRGBA);
    EXPECT_EQ(color.content.l, -1);
    for (const uint32_t mode : {0u, 3u, 77u}) {
        LxGC_SetRenderMode(gc_, mode);
        EXPECT_EQ(renderer()->ellipseL(renderer(), 1, 1, 8, 8), mode);
    }
    defaultRenderer.pixel(renderer(), 1, 1, nullptr, nullptr);
    defaultRenderer.path(renderer(), nullptr);
    EXPECT_EQ(recorder_.take(), Calls());
}
