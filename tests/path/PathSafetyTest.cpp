// Paths of any words whatever through every function that reads them: what they do matters little, as long as
// it stays inside the path and comes to an end. The sanitizers watch.
#include "path/Path.h"

#include <gtest/gtest.h>
#include <oxlume/LxPathIterator.h>

#include "path/PathIterator.h"
#include "tests/path/PathStream.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

// Words of which many are tags, some small numbers, and few anything. The array is full where it can be, so
// that one word too far is outside.
PathHandle wildPath(Random &random) {
    Stream stream;
    const int n = random.integer(0, 3) == 0 ? 256 : random.integer(0, 60);
    for (int i = 0; i < n; ++i) {
        switch (random.integer(0, 9)) {
        case 0:
        case 1:
        case 2:
        case 3:
            stream.word(static_cast<uint32_t>(random.integer(0, 6)));
            break;
        case 4:
            stream.word(15);
            break;
        case 5:
            if (random.integer(0, 5) == 0)
                stream.word(random.word());
            break;
        default:
            stream.number(static_cast<float>(random.integer(-50, 50)));
        }
    }
    return stream.path();
}

void expectWhole(const LxPath &path) {
    ASSERT_GE(path.count, 0);
    ASSERT_LE(path.count, path.capacity);
    ASSERT_EQ(path.capacity % 256, 0);
}

void onSegment(LxPathIterator *iterator, const LxPointD *, const LxPointD *) {
    ++*static_cast<int64_t *>(LxPathIterator_Data(iterator));
}

} // namespace

TEST(PathSafety, ReadersStayInsideAnyWords) {
    Random random(16);
    const LxMatrix matrix = {0.5, 0.25, 3, -0.25, 0.5, 4, 0, 0, 1};
    const LxRectD clip = {-10, -20, 30, 40};
    LxPathIterator *iterator = LxPath_CreateIterator();
    LxPathIterator_SetCallback(iterator, kLxPathOnSegment, reinterpret_cast<LxPathCallback>(onSegment));
    for (int round = 0; round < 1000; ++round) {
        const PathHandle path = wildPath(random);
        int64_t segments = 0;
        LxPath_IterateConst(path.get(), iterator, &matrix, nullptr, &segments);
        LxPath_Iterate(path.get(), iterator, nullptr, nullptr, &segments);
        LxPath_isClosed(path.get());
        LxPath_Info(path.get(), &matrix);
        expectWhole(*PathHandle(LxPath_CreateCopy(path.get())));
        expectWhole(*PathHandle(LxPath_CreateDecomposed(path.get(), nullptr)));
        expectWhole(*PathHandle(LxPath_CreatePointArray(path.get(), &matrix)));
        expectWhole(*PathHandle(LxPath_CreateTransformed(path.get(), &matrix, nullptr)));
        expectWhole(*PathHandle(LxPath_CreateTransformed(path.get(), &matrix, &clip)));
        for (const int32_t style : {0, 16, 64})
            expectWhole(*PathHandle(LxPath_CreateOutlined(path.get(), &matrix, &clip, 3, style)));
        LxPath_Clip(path.get(), &clip);
        expectWhole(*path);
        LxPath_Transform(path.get(), &matrix);
        LxPath_Decompose(path.get(), &matrix);
        expectWhole(*path);
    }
    LxPath_DeleteIterator(iterator);
}

TEST(PathSafety, EditsStayInsideAnyWords) {
    Random random(17);
    const LxPointD points[] = {{1, 2}, {-3, -4}, {0, 0}};
    for (int round = 0; round < 3000; ++round) {
        const PathHandle path = wildPath(random);
        for (int edit = 0; edit < 10; ++edit) {
            const int32_t index = random.integer(-1, 20);
            const int32_t n = random.integer(-1, 3);
            switch (random.integer(0, 9)) {
            case 0:
                LxPath_InsertArcTo(path.get(), index, 1, 2, 3, 4, 5, 6, 7);
                break;
            case 1:
                LxPath_InsertPolygonTo(path.get(), index, points, n);
                break;
            case 2:
                LxPath_ReplaceByPolygonTo(path.get(), index, points, n);
                break;
            case 3:
                LxPath_ReplaceByClose(path.get(), index);
                break;
            case 4:
                LxPath_ReplaceByCurveTo(path.get(), index, 1, 2, 3, 4, 5, 6);
                break;
            case 5:
                LxPath_PolygonTo(path.get(), points, n);
                break;
            case 6:
                LxPath_Add(path.get(), path.get());
                break;
            case 7:
                LxPath_Close(path.get(), 1);
                break;
            default:
                LxPath_RemoveItem(path.get(), index);
            }
            expectWhole(*path);
        }
    }
}

// A polygon of 200 points fills 402 words. A path that becomes a short one on the way has but 256, from 0 to
// 255, and so the points behind the first 127, which end at word 255, are gone.
TEST(PathSafety, WalksEndWhereACallbackReplacesThePathInAPolygon) {
    static PathHandle path, shorter;
    static int calls;
    shorter = Stream().close().path();
    const auto begin = [] {
        path = emptyPath();
        LxPath_PolygonTo(path.get(), std::vector<LxPointD>(200).data(), 200);
        ASSERT_EQ(path->capacity, 512);
        calls = 0;
    };
    static const auto call = [] {
        if (++calls == 3)
            LxPath_Copy(path.get(), shorter.get());
    };
    LxPathIterator *const iterator = LxPath_CreateIterator();
    const LxPathSegmentCallback onOneSegment = [](LxPathIterator *, const LxPointD *, const LxPointD *) {
        call();
    };
    LxPathIterator_SetCallback(iterator, kLxPathOnSegment, reinterpret_cast<LxPathCallback>(onOneSegment));
    begin();
    LxPath_IterateConst(path.get(), iterator, nullptr, nullptr, nullptr);
    EXPECT_EQ(calls, 127);

    const MutablePointSlot onPoint = [](LxPathIterator *, float *, float *) { call(); };
    // Through a plain function type: the slot's own type differs from the one that it holds here.
    iterator->lineTo = reinterpret_cast<decltype(iterator->lineTo)>(reinterpret_cast<void (*)()>(onPoint));
    begin();
    LxPath_Iterate(path.get(), iterator, nullptr, nullptr, nullptr);
    EXPECT_EQ(calls, 127);
    LxPath_DeleteIterator(iterator);
    path.reset();
    shorter.reset();
}
