#include "gc/Context.h"

#include <cstdlib>

#include <gtest/gtest.h>
#include <oxlume/LxMem.h>

#include "foundation/Memory.h"
#include "tests/gc/Recorder.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

namespace {

void expectRect(const LxRectD &rect, const LxRectD &expected) {
    EXPECT_EQ(rect.x0, expected.x0);
    EXPECT_EQ(rect.y0, expected.y0);
    EXPECT_EQ(rect.x1, expected.x1);
    EXPECT_EQ(rect.y1, expected.y1);
}

int allocationsLeft = 0;

bool failsNow() {
    return allocationsLeft-- <= 0;
}

constexpr SystemAllocator scarce = {
    [](size_t size) { return failsNow() ? nullptr : std::malloc(size); },
    [](size_t count, size_t size) { return failsNow() ? nullptr : std::calloc(count, size); },
    [](void *pointer, size_t size) { return failsNow() ? nullptr : std::realloc(pointer, size); },
};

} // namespace

TEST(ContextCreate, ANewContextStrokesAndHasNeitherRectanglesNorRenderers) {
    const ContextHandle gc(LxGC_Create());
    ASSERT_NE(gc, nullptr);
    EXPECT_EQ(LxGC_RenderMode(gc.get()), 2u);
    expectRect(LxGC_BoundsRect(gc.get()), {0, 0, 0, 0});
    expectRect(LxGC_ClipRect(gc.get()), {0, 0, 0, 0});
    EXPECT_EQ(LxMatrix_isEqual(LxGC_Matrix(gc.get()), &LxMatrix_0), 1);
    EXPECT_EQ(LxMatrix_isEqual(&gc->spareMatrix, &LxMatrix_0), 1);
    EXPECT_EQ(gc->rendererCount, 0);
    EXPECT_EQ(gc->originX, 0);
    EXPECT_EQ(gc->originY, 0);
}

TEST(ContextCreate, KeepsTheBoundsAsGivenAndDerivesTheClip) {
    const ContextHandle inside(LxGC_CreateWithRect({0, 0, 100, 50}, {10, -5, 200, 20}));
    expectRect(LxGC_BoundsRect(inside.get()), {0, 0, 100, 50});
    expectRect(LxGC_ClipRect(inside.get()), {10, 0, 100, 20});

    const ContextHandle outside(LxGC_CreateWithRect({0, 0, 100, 50}, {100, 0, 200, 50}));
    expectRect(LxGC_ClipRect(outside.get()), {0, 0, 100, 50});

    // Swapped corners stay swapped, and no rectangle meets them.
    const ContextHandle swapped(LxGC_CreateWithRect({100, 50, 0, 0}, {10, 10, 20, 20}));
    expectRect(LxGC_BoundsRect(swapped.get()), {100, 50, 0, 0});
    expectRect(LxGC_ClipRect(swapped.get()), {100, 50, 0, 0});
}

namespace {

// A kind for images that only remembers its target.
void *seenTarget = nullptr;

constexpr RendererKind imageKind = {
    [](LxRenderer &, void *target) {
        seenTarget = target;
        return target != nullptr;
    },
    [](LxRenderer *renderer) { LxMem_free(renderer); },
    [] { return 1; },
    [] {},
};

class ImageContext : public testing::Test {
protected:
    ImageContext() : replaced_(registerRendererKind(RendererFamily::software, &imageKind)) {}
    ~ImageContext() override { registerRendererKind(RendererFamily::software, replaced_); }

private:
    const RendererKind *replaced_;
};

} // namespace

TEST_F(ImageContext, HasBoundsAtTheOriginAndAClipDerivedFromItsArgument) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, 30, 40, 130, 90, 1, 0));
    const ContextHandle gc(LxGC_CreateWithImage(image.get(), {10, 10, 20, 20}));
    ASSERT_NE(gc, nullptr);
    expectRect(LxGC_BoundsRect(gc.get()), {0, 0, 100, 50});
    expectRect(LxGC_ClipRect(gc.get()), {10, 10, 20, 20});
    EXPECT_EQ(gc->rendererCount, 1);
    EXPECT_EQ(gc->renderers[0]->kind, 0);
    EXPECT_EQ(gc->renderers[0]->gc, gc.get());
    EXPECT_EQ(seenTarget, image.get());
    EXPECT_EQ(LxGC_GetImage(gc.get()), nullptr);
}

// The image's own context is clipped to its rectangle where it lies, which its bounds do not know of.
TEST_F(ImageContext, OfTheImageItselfIsMadeOnceAndClippedWhereItLies) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, 30, 20, 130, 70, 1, 0));
    LxGC *gc = LxImage_GC(image.get());
    ASSERT_NE(gc, nullptr);
    EXPECT_EQ(LxImage_GC(image.get()), gc);
    expectRect(LxGC_BoundsRect(gc), {0, 0, 100, 50});
    expectRect(LxGC_ClipRect(gc), {30, 20, 100, 50});
}

TEST_F(ImageContext, IsNotMadeWithoutAnImage) {
    EXPECT_EQ(LxGC_CreateWithImage(nullptr, {0, 0, 10, 10}), nullptr);
}

TEST(ContextCreate, OnAPlatformContextTheRectangleIsBoundsAndClip) {
    const RecordingKinds kinds;
    Recorder recorder;
    const ContextHandle quartz(LxGC_CreateWithCGContextRef(&recorder, {1, 2, 30, 40}));
    ASSERT_NE(quartz, nullptr);
    EXPECT_EQ(quartz->renderers[0]->kind, 6);
    expectRect(LxGC_BoundsRect(quartz.get()), {1, 2, 30, 40});
    expectRect(LxGC_ClipRect(quartz.get()), {1, 2, 30, 40});

    const ContextHandle openGL(LxGC_CreateWithOpenGLContext(&recorder, {1, 2, 30, 40}));
    ASSERT_NE(openGL, nullptr);
    EXPECT_EQ(openGL->renderers[0]->kind, 3);
    expectRect(LxGC_ClipRect(openGL.get()), {1, 2, 30, 40});
}

TEST(ContextCreate, IsNullWhereTheRendererRefuses) {
    const RecordingKinds kinds;
    Recorder recorder;
    recorder.refuses = true;
    EXPECT_EQ(LxGC_CreateWithCGContextRef(&recorder, {0, 0, 1, 1}), nullptr);
    EXPECT_EQ(LxGC_CreateWithOpenGLContext(&recorder, {0, 0, 1, 1}), nullptr);
}

TEST(ContextCreate, ViewsNeedTheBridgesAndPortsAreNotSupported) {
    int view = 0;
    EXPECT_EQ(LxGC_CreateWithNSView(&view), nullptr);
    EXPECT_EQ(LxGC_CreateWithNSOpenGLView(&view), nullptr);
    EXPECT_EQ(LxGC_CreateWithQuickDrawPort(&view), nullptr);

    registerViewContexts({[](void *) {
                              return LxGC_CreateWithRect({0, 0, 1, 1}, {0, 0, 1, 1});
                          },
                          [](void *) {
                              return LxGC_CreateWithRect({0, 0, 2, 2}, {0, 0, 2, 2});
                          }});
    const ContextHandle openGL(LxGC_CreateWithNSOpenGLView(&view));
    const ContextHandle plain(LxGC_CreateWithNSView(&view));
    registerViewContexts({nullptr, nullptr});
    expectRect(LxGC_BoundsRect(openGL.get()), {0, 0, 1, 1});
    expectRect(LxGC_BoundsRect(plain.get()), {0, 0, 2, 2});
}

// Each creation makes two blocks, the context and the renderer; whichever is lacking, nothing is left behind.
TEST(ContextCreate, IsNullForLackOfMemory) {
    const RecordingKinds kinds;
    Recorder recorder;
    const int32_t before = allocationCount();
    for (const int available : {0, 1}) {
        allocationsLeft = available;
        setSystemAllocator(&scarce);
        LxGC *gc = LxGC_CreateWithOpenGLContext(&recorder, {0, 0, 1, 1});
        setSystemAllocator(nullptr);
        EXPECT_EQ(gc, nullptr);
    }
    EXPECT_EQ(allocationCount(), before);
}

TEST(ContextRenderers, AreAtMostTwo) {
    const RecordingKinds kinds;
    Recorder recorder;
    const ContextHandle gc(LxGC_Create());
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), 3, &recorder, nullptr), 1);
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), 6, &recorder, nullptr), 1);
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), 3, &recorder, nullptr), 0);
    EXPECT_EQ(gc->rendererCount, 2);
    EXPECT_EQ(gc->renderers[0]->kind, 3);
    EXPECT_EQ(gc->renderers[1]->kind, 6);
}

TEST(ContextRenderers, ARefusedOneLeavesThePlaceFree) {
    const RecordingKinds kinds;
    Recorder refusing;
    refusing.refuses = true;
    Recorder recorder;
    const ContextHandle gc(LxGC_Create());
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), 3, &refusing, nullptr), 0);
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), 7, &recorder, nullptr), 0);
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), -1, &recorder, nullptr), 0);
    EXPECT_EQ(gc->rendererCount, 0);
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), 3, &recorder, nullptr), 1);
    EXPECT_EQ(LxGC_AddRenderer(nullptr, 3, &recorder, nullptr), 0);
}

TEST(ContextDelete, ReleasesTheRenderersInOrderOfAttachment) {
    const RecordingKinds kinds;
    Recorder recorder;
    const int32_t before = allocationCount();
    LxGC *gc = LxGC_Create();
    LxGC_AddRenderer(gc, 6, &recorder, nullptr);
    LxGC_AddRenderer(gc, 4, &recorder, nullptr);
    LxGC_Delete(gc);
    EXPECT_EQ(recorder.calls, (Calls{"delete 6", "delete 4"}));
    EXPECT_EQ(allocationCount(), before);
    LxGC_Delete(nullptr);
}

TEST(ContextReshape, DoesNothing) {
    const RecordingKinds kinds;
    Recorder recorder;
    const ContextHandle gc = makeContext({0, 0, 10, 10}, recordsAll, recorder);
    LxGC_Reshape(gc.get(), 100, 50);
    expectRect(LxGC_BoundsRect(gc.get()), {0, 0, 10, 10});
    EXPECT_EQ(recorder.calls, Calls());
    LxGC_Reshape(nullptr, 1, 1);
}
