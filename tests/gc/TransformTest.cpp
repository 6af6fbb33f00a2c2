#include "gc/Context.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/gc/Recorder.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr double degree = 0.017453292519943295;

void expectRect(const LxRectD &rect, const LxRectD &expected) {
    EXPECT_EQ(rect.x0, expected.x0);
    EXPECT_EQ(rect.y0, expected.y0);
    EXPECT_EQ(rect.x1, expected.x1);
    EXPECT_EQ(rect.y1, expected.y1);
}

void expectMatrix(const LxMatrix &m, const LxMatrix &expected) {
    EXPECT_EQ(LxMatrix_isEqual(&m, &expected), 1)
        << m.m0 << ' ' << m.m1 << ' ' << m.m2 << ' ' << m.m3 << ' ' << m.m4 << ' ' << m.m5;
}

class Transform : public testing::Test {
protected:
    RecordingKinds kinds_;
    Recorder recorder_;
    Recorder second_; // for tests that attach another renderer
    ContextHandle handle_ = makeContext({0, 0, 100, 50}, recordsAll, recorder_);
    LxGC *gc_ = handle_.get();
};

using Rectangles = Transform;

} // namespace

TEST_F(Rectangles, AClipIsThePartInsideTheBounds) {
    LxGC_SetClipRectD(gc_, 10.5, -20, 300, 20.25);
    expectRect(LxGC_ClipRect(gc_), {10.5, 0, 100, 20.25});
    expectRect(LxGC_BoundsRect(gc_), {0, 0, 100, 50});
}

TEST_F(Rectangles, AClipThatMissesTheBoundsIsAllOfThem) {
    for (const LxRectD &missing : {LxRectD{100, 0, 200, 50}, LxRectD{-10, 0, 0, 50}, LxRectD{0, 50, 100, 60},
                                   LxRectD{500, 500, 600, 600}, LxRectD{200, 10, 200, 10}}) {
        LxGC_SetClipRectD(gc_, 10, 10, 20, 20);
        LxGC_SetClipRectD(gc_, missing.x0, missing.y0, missing.x1, missing.y1);
        expectRect(LxGC_ClipRect(gc_), {0, 0, 100, 50});
    }
}

TEST_F(Rectangles, AClipOfNoSizeInsideTheBoundsIsAllOfThem) {
    // Strictly inside it meets the bounds, and the intersection with what has no width is the other operand.
    LxGC_SetClipRectD(gc_, 10, 10, 10, 20);
    expectRect(LxGC_ClipRect(gc_), {0, 0, 100, 50});
}

TEST_F(Rectangles, AClipReplacesTheOneBefore) {
    LxGC_SetClipRectD(gc_, 10, 10, 20, 20);
    LxGC_SetClipRectD(gc_, 5, 5, 90, 40);
    expectRect(LxGC_ClipRect(gc_), {5, 5, 90, 40});
    LxGC_SetClipRectD(gc_, -1, -1, 1000, 1000);
    expectRect(LxGC_ClipRect(gc_), {0, 0, 100, 50});
}

TEST_F(Rectangles, SwappedCornersAreSorted) {
    LxGC_SetClipRectD(gc_, 20, 20, 10, 10);
    expectRect(LxGC_ClipRect(gc_), {10, 10, 20, 20});
    LxGC_SetClipRectL(gc_, 21, 22, 11, 12);
    expectRect(LxGC_ClipRect(gc_), {11, 12, 21, 22});
    LxGC_SetClip(gc_, 40, 30, 6, 7);
    expectRect(LxGC_ClipRect(gc_), {6, 7, 40, 30});
    LxGC_SetBoundsRectD(gc_, 50, 40, 0, 0);
    expectRect(LxGC_BoundsRect(gc_), {0, 0, 50, 40});
    LxGC_SetBoundsRectL(gc_, 60, 30, 0, 0);
    expectRect(LxGC_BoundsRect(gc_), {0, 0, 60, 30});
}

TEST_F(Rectangles, NewBoundsDeriveTheClipFromTheOldOne) {
    LxGC_SetClipRectD(gc_, 10, 10, 80, 45);
    LxGC_SetBoundsRectD(gc_, 20, 5, 60, 40);
    expectRect(LxGC_ClipRect(gc_), {20, 10, 60, 40});
    LxGC_SetBoundsRectL(gc_, 0, 0, 1000, 1000); // What was cut off does not come back.
    expectRect(LxGC_ClipRect(gc_), {20, 10, 60, 40});
    LxGC_SetBoundsRectD(gc_, 200, 200, 300, 300);
    expectRect(LxGC_ClipRect(gc_), {200, 200, 300, 300});
}

TEST_F(Rectangles, ThePointersShowTheContextsOwn) {
    const LxRectD *clip = LxGC_ClipRectPtr(gc_);
    const LxRectD *bounds = LxGC_BoundsRectPtr(gc_);
    LxGC_SetBoundsRectD(gc_, 0, 0, 30, 30);
    expectRect(*bounds, {0, 0, 30, 30});
    expectRect(*clip, {0, 0, 30, 30});
}

TEST_F(Rectangles, OfNoContextAreZero) {
    expectRect(LxGC_ClipRect(nullptr), LxRectD_0);
    expectRect(LxGC_BoundsRect(nullptr), LxRectD_0);
    EXPECT_EQ(LxGC_ClipRectPtr(nullptr), &LxRectD_0);
    EXPECT_EQ(LxGC_BoundsRectPtr(nullptr), &LxRectD_0);
    LxGC_SetBoundsRectD(nullptr, 0, 0, 1, 1);
    LxGC_SetBoundsRectL(nullptr, 0, 0, 1, 1);
    LxGC_SetClipRectD(nullptr, 0, 0, 1, 1);
    LxGC_SetClipRectL(nullptr, 0, 0, 1, 1);
    LxGC_SetClip(nullptr, 0, 0, 1, 1);
}

TEST_F(Rectangles, RandomClipsAreDerivedByTheRule) {
    Random random;
    for (int i = 0; i < 5000; ++i) {
        const LxRectD r = {random.real(-50, 150), random.real(-50, 150), random.real(-50, 150),
                           random.real(-50, 150)};
        LxGC_SetClipRectD(gc_, r.x0, r.y0, r.x1, r.y1);
        const double left = std::min(r.x0, r.x1), right = std::max(r.x0, r.x1);
        const double top = std::min(r.y0, r.y1), bottom = std::max(r.y0, r.y1);
        if (left < 100 && right > 0 && top < 50 && bottom > 0)
            expectRect(LxGC_ClipRect(gc_), {std::max(left, 0.0), std::max(top, 0.0), std::min(right, 100.0),
                                            std::min(bottom, 50.0)});
        else
            expectRect(LxGC_ClipRect(gc_), {0, 0, 100, 50});
    }
}

TEST_F(Transform, TheOriginIsWhereTheIdentityComesBackTo) {
    LxGC_SetOrigin(gc_, 7, -3);
    expectMatrix(*LxGC_Matrix(gc_), {1, 0, 7, 0, 1, -3, 0, 0, 1});
    EXPECT_EQ(recorder_.take(), Calls()); // The renderers are not told.
    LxGC_MatrixTranslate(gc_, 5, 5);
    expectMatrix(*LxGC_Matrix(gc_), {1, 0, 12, 0, 1, 2, 0, 0, 1});
    LxGC_MatrixIdentity(gc_);
    expectMatrix(*LxGC_Matrix(gc_), {1, 0, 7, 0, 1, -3, 0, 0, 1});
    EXPECT_EQ(recorder_.take(),
              (Calls{"setMatrix matrix 1 0 12 0 1 2 0 0 1", "setMatrix matrix 1 0 7 0 1 -3 0 0 1"}));
}

TEST_F(Transform, ANewContextsIdentityHasNoOrigin) {
    LxGC_MatrixScale(gc_, 2, 2);
    LxGC_MatrixIdentity(gc_);
    expectMatrix(*LxGC_Matrix(gc_), {1, 0, 0, 0, 1, 0, 0, 0, 1});
}

TEST_F(Transform, ScalingScalesTheLinearPartByColumnAndTheTranslationByRow) {
    *LxGC_Matrix(gc_) = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    LxGC_MatrixScale(gc_, 10, 100);
    expectMatrix(*LxGC_Matrix(gc_), {10, 200, 30, 40, 500, 600, 7, 8, 9});
    EXPECT_EQ(recorder_.take(), (Calls{"setMatrix matrix 10 200 30 40 500 600 7 8 9"}));
    EXPECT_EQ(gc_->scaleX, 10);
    EXPECT_EQ(gc_->scaleY, 100);
}

TEST_F(Transform, TranslatingAddsAndKeepsTheLastValues) {
    LxGC_MatrixTranslate(gc_, 1, 2);
    LxGC_MatrixTranslate(gc_, 10, 20);
    expectMatrix(*LxGC_Matrix(gc_), {1, 0, 11, 0, 1, 22, 0, 0, 1});
    EXPECT_EQ(gc_->translateX, 10);
    EXPECT_EQ(gc_->translateY, 20);
}

TEST_F(Transform, RotatingTakesRadiansOrDegrees) {
    *LxGC_Matrix(gc_) = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    LxMatrix expected = *LxGC_Matrix(gc_);
    LxMatrix_Rotate(&expected, 0.7);
    LxGC_MatrixRotate(gc_, 0.7);
    expectMatrix(*LxGC_Matrix(gc_), expected);
    EXPECT_EQ(gc_->rotation, 0.7);

    LxMatrix_Rotate(&expected, 33 * degree);
    LxGC_MatrixRotateDeg(gc_, 33);
    expectMatrix(*LxGC_Matrix(gc_), expected);
    EXPECT_EQ(gc_->rotation, 33 * degree);
    EXPECT_EQ(recorder_.take().size(), 2u);
}

TEST_F(Transform, AQuarterTurnTakesXToY) {
    LxGC_MatrixRotateDeg(gc_, 90);
    double x = 10, y = 0;
    LxGC_TransposeD(gc_, &x, &y);
    EXPECT_NEAR(x, 0, 1e-12);
    EXPECT_NEAR(y, 10, 1e-12);
}

TEST_F(Transform, MultiplyingTakesTheOtherFromTheRight) {
    *LxGC_Matrix(gc_) = {1, 2, 0, 0, 1, 0, 0, 0, 1};
    const LxMatrix other = {1, 0, 5, 3, 1, 7, 0, 0, 1};
    LxGC_MatrixMul(gc_, &other);
    expectMatrix(*LxGC_Matrix(gc_), {7, 2, 19, 3, 1, 7, 0, 0, 1});
    EXPECT_EQ(recorder_.take(), (Calls{"setMatrix matrix 7 2 19 3 1 7 0 0 1"}));
    LxGC_MatrixMul(gc_, nullptr);
    EXPECT_EQ(recorder_.take(), Calls());
    LxGC_MatrixMul(gc_, LxGC_Matrix(gc_)); // The context's own.
    expectMatrix(*LxGC_Matrix(gc_), {55, 16, 7 * 19 + 2 * 7 + 19, 24, 7, 3 * 19 + 7 + 7, 0, 0, 1});
}

TEST_F(Transform, EveryRendererThatCanIsTold) {
    LxGC_AddRenderer(gc_, recordsAll, &second_, nullptr);
    LxGC_MatrixTranslate(gc_, 1, 2);
    EXPECT_EQ(recorder_.take(), (Calls{"setMatrix matrix 1 0 1 0 1 2 0 0 1"}));
    EXPECT_EQ(second_.take(), (Calls{"setMatrix matrix 1 0 1 0 1 2 0 0 1"}));
    gc_->renderers[0]->setMatrix = nullptr;
    LxGC_MatrixTranslate(gc_, 1, 2);
    EXPECT_EQ(recorder_.take(), Calls());
    EXPECT_EQ(second_.take(), (Calls{"setMatrix matrix 1 0 2 0 1 4 0 0 1"}));
}

TEST_F(Transform, TheInverseIsOneBufferForAll) {
    *LxGC_Matrix(gc_) = {2, 0, 6, 0, 4, 8, 0, 0, 1};
    const LxMatrix *inverse = LxGC_InverseMatrix(gc_);
    expectMatrix(*inverse, {0.5, 0, -3, 0, 0.25, -2, 0, 0, 1});
    EXPECT_EQ(LxGC_InverseMatrix(gc_), inverse);
    EXPECT_EQ(LxGC_InverseMatrix(nullptr), inverse); // As it stands.
    expectMatrix(*inverse, {0.5, 0, -3, 0, 0.25, -2, 0, 0, 1});
    const ContextHandle other(LxGC_Create());
    EXPECT_EQ(LxGC_InverseMatrix(other.get()), inverse);
    expectMatrix(*inverse, {1, 0, 0, 0, 1, 0, 0, 0, 1});
}

TEST_F(Transform, IntegerPointsAreTruncatedAfterAddingAHalf) {
    struct Case {
        double dx, dy;
        int32_t x, y;
    };
    for (const Case &c : {Case{0.4, 0.6, 10, 21}, Case{0.5, -0.5, 11, 20}, Case{-10.7, -20.4, 0, 0},
                          Case{-12, -22.6, -1, -2}}) {
        *LxGC_Matrix(gc_) = {1, 0, c.dx, 0, 1, c.dy, 0, 0, 1};
        int32_t x = 10, y = 20;
        LxGC_TransposeL(gc_, &x, &y);
        EXPECT_EQ(x, c.x);
        EXPECT_EQ(y, c.y);
    }
}

TEST_F(Transform, BothCoordinatesAreReadBeforeEitherIsWritten) {
    *LxGC_Matrix(gc_) = {0, 1, 0, 1, 0, 0, 0, 0, 1};
    int32_t x = 3, y = 8;
    LxGC_TransposeL(gc_, &x, &y);
    EXPECT_EQ(x, 8);
    EXPECT_EQ(y, 3);
    double u = 3.25, v = 8.5;
    LxGC_TransposeD(gc_, &u, &v);
    EXPECT_EQ(u, 8.5);
    EXPECT_EQ(v, 3.25);
}

TEST_F(Transform, CoordinatesOutOfRangeGiveTheLowestInteger) {
    LxGC_MatrixScale(gc_, 1e9, std::numeric_limits<double>::quiet_NaN());
    int32_t x = 3, y = 8;
    LxGC_TransposeL(gc_, &x, &y);
    EXPECT_EQ(x, std::numeric_limits<int32_t>::min());
    EXPECT_EQ(y, std::numeric_limits<int32_t>::min());
}

TEST_F(Transform, NoContextIsNoTransform) {
    EXPECT_EQ(LxGC_Matrix(nullptr), nullptr);
    LxGC_SetOrigin(nullptr, 1, 1);
    LxGC_MatrixIdentity(nullptr);
    LxGC_MatrixMul(nullptr, &LxMatrix_0);
    LxGC_MatrixScale(nullptr, 1, 1);
    LxGC_MatrixTranslate(nullptr, 1, 1);
    LxGC_MatrixRotate(nullptr, 1);
    LxGC_MatrixRotateDeg(nullptr, 1);
    int32_t x = 1, y = 2;
    LxGC_TransposeL(nullptr, &x, &y);
    EXPECT_EQ(x, 1);
    EXPECT_EQ(y, 2);
    double u = 1, v = 2;
    LxGC_TransposeD(nullptr, &u, &v);
    EXPECT_EQ(u, 1);
    EXPECT_EQ(v, 2);
}
