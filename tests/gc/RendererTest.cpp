#include "gc/Renderer.h"

#include <gtest/gtest.h>
#include <oxlume/LxLibrary.h>
#include <oxlume/LxMem.h>

#include "foundation/Memory.h"
#include "tests/gc/Recorder.h"

using namespace lx;
using namespace lx::test;

namespace {

const RendererKind *none(RendererFamily family) {
    return registerRendererKind(family, nullptr);
}

} // namespace

TEST(RendererCreate, KnowsTheNumbersZeroToSix) {
    const RecordingKinds kinds(true);
    Recorder recorder;
    const ContextHandle gc(LxGC_Create());
    for (int32_t kind = 0; kind <= 6; ++kind) {
        LxRenderer *renderer = LxRenderer_Create(gc.get(), kind, &recorder);
        ASSERT_NE(renderer, nullptr) << kind;
        EXPECT_EQ(renderer->gc, gc.get());
        EXPECT_EQ(renderer->kind, kind);
        EXPECT_EQ(renderer->privateState, &recorder);
        LxRenderer_Delete(renderer);
        EXPECT_EQ(recorder.take(), (Calls{"delete " + std::to_string(kind)}));
    }
    for (const int32_t kind : {7, 8, -1, INT32_MIN, INT32_MAX})
        EXPECT_EQ(LxRenderer_Create(gc.get(), kind, &recorder), nullptr);
}

TEST(RendererCreate, FailsForAFamilyThatIsNotInTheLibrary) {
    const RecordingKinds kinds(true);
    Recorder recorder;
    const RendererKind *quartz = none(RendererFamily::quartz);
    EXPECT_EQ(LxRenderer_Create(nullptr, 6, &recorder), nullptr);
    registerRendererKind(RendererFamily::quartz, quartz);
}

TEST(RendererCreate, GivesBackTheRecordWhenTheKindRefuses) {
    const RecordingKinds kinds(true);
    Recorder recorder;
    recorder.refuses = true;
    const int32_t before = allocationCount();
    EXPECT_EQ(LxRenderer_Create(nullptr, 3, &recorder), nullptr);
    EXPECT_EQ(LxRenderer_Create(nullptr, 3, nullptr), nullptr);
    EXPECT_EQ(allocationCount(), before);
}

TEST(RendererDelete, LeavesNullAndUnknownKindsAlone) {
    const RecordingKinds kinds(true);
    Recorder recorder;
    LxRenderer_Delete(nullptr);
    LxRenderer *renderer = LxRenderer_Create(nullptr, 5, &recorder);
    renderer->kind = 7;
    LxRenderer_Delete(renderer);
    EXPECT_EQ(recorder.take(), Calls());
    renderer->kind = 5;
    LxRenderer_Delete(renderer);
    EXPECT_EQ(recorder.take(), (Calls{"delete 5"}));
}

TEST(RendererKinds, StartAndEndInTheirTwoOrders) {
    const RecordingKinds kinds(true);
    EXPECT_EQ(Oxlume_Init(), 1);
    EXPECT_EQ(Oxlume_Init(), 1); // Once.
    EXPECT_EQ(std::exchange(RecordingKinds::libraryCalls, {}), (Calls{"start Q", "start O", "start S"}));
    Oxlume_Term();
    Oxlume_Term();
    EXPECT_EQ(std::exchange(RecordingKinds::libraryCalls, {}), (Calls{"end O", "end Q", "end S"}));
}

TEST(RendererKinds, ThatAreMissingAreSteppedOver) {
    const RecordingKinds kinds(true);
    const RendererKind *quartz = none(RendererFamily::quartz);
    Oxlume_Init();
    Oxlume_Term();
    registerRendererKind(RendererFamily::quartz, quartz);
    EXPECT_EQ(RecordingKinds::libraryCalls, (Calls{"start O", "start S", "end O", "end S"}));
}
