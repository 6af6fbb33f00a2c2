// The record, its growth, copies, and appended items.
#include "path/Path.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "foundation/Memory.h"
#include "tests/path/PathStream.h"
#include "tests/support/NoMemory.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr LxPointD triangle[] = {{1, 2}, {3, 4}, {5, 6}};

// Appends `n` closes, of one word each.
void addCloses(LxPath *path, int n) {
    for (int i = 0; i < n; ++i)
        LxPath_AddClose(path);
}

// The words behind the count, up to the capacity.
std::vector<uint32_t> behind(const LxPath &path) {
    return {path.words + path.count, path.words + path.capacity};
}

} // namespace

TEST(Path, RecordHoldsWordsCountAndCapacityInThisOrder) {
    EXPECT_EQ(offsetof(LxPath, words), 0u);
    EXPECT_EQ(offsetof(LxPath, count), sizeof(void *));
    EXPECT_EQ(offsetof(LxPath, capacity), sizeof(void *) + 4);
}

TEST(Path, StartsWithoutAnArray) {
    const PathHandle path = emptyPath();
    EXPECT_EQ(path->words, nullptr);
    EXPECT_EQ(path->count, 0);
    EXPECT_EQ(path->capacity, 0);
}

TEST(Path, AppendedItemsAreATagAndFloats) {
    const PathHandle path = emptyPath();
    LxPath_AddMoveTo(path.get(), 1, 2);
    LxPath_AddLineTo(path.get(), 3, 4);
    LxPath_AddQCurveTo(path.get(), 5, 6, 7, 8);
    LxPath_AddCurveTo(path.get(), 9, 10, 11, 12, 13, 14);
    LxPath_AddArcTo(path.get(), 15, 16, 17, 18, 19.5, 0xFFFFFFFF, 7);
    LxPath_AddClose(path.get());
    const Stream expected = Stream()
                                .move(1, 2)
                                .line(3, 4)
                                .qcurve(5, 6, 7, 8)
                                .curve(9, 10, 11, 12, 13, 14)
                                .arc(15, 16, 17, 18, 19.5, 0xFFFFFFFF, 7)
                                .close();
    EXPECT_EQ(Stream(path), expected);
    EXPECT_EQ(path->count, 3 + 3 + 5 + 7 + 8 + 1);
}

TEST(Path, CoordinatesAreRoundedToSinglePrecision) {
    const PathHandle path = emptyPath();
    LxPath_AddLineTo(path.get(), 0.1, 16777217.0);
    EXPECT_EQ(Stream(path), Stream().line(0.1f, 16777216.0f));
    LxPath_MakeEmpty(path.get());
    LxPath_AddLineTo(path.get(), 1e300, -1e300);
    EXPECT_EQ(Stream(path), Stream().line(INFINITY, -INFINITY));
}

TEST(Path, FullPathDoesNotGrowAndOneWordMoreRaisesTheCapacityByABlock) {
    const PathHandle path = emptyPath();
    addCloses(path.get(), 1);
    EXPECT_EQ(path->capacity, 256);
    addCloses(path.get(), 255);
    EXPECT_EQ(path->count, 256);
    EXPECT_EQ(path->capacity, 256);
    addCloses(path.get(), 1);
    EXPECT_EQ(path->count, 257);
    EXPECT_EQ(path->capacity, 512);
    for (int32_t i = 0; i < path->count; ++i)
        ASSERT_EQ(path->words[i], 15u);
    EXPECT_EQ(behind(*path), std::vector<uint32_t>(255, 0));
}

TEST(Path, CapacityFollowsTheWordsNeededForEveryItem) {
    Random random(1);
    const PathHandle path = emptyPath();
    int32_t capacity = 0;
    for (int i = 0; i < 2000; ++i) {
        const int32_t before = path->count;
        switch (random.integer(0, 3)) {
        case 0:
            LxPath_AddCurveTo(path.get(), 1, 2, 3, 4, 5, 6);
            break;
        case 1:
            LxPath_AddArcTo(path.get(), 1, 2, 3, 4, 5, 6, 7);
            break;
        case 2:
            LxPath_AddQCurveTo(path.get(), 1, 2, 3, 4);
            break;
        default:
            LxPath_AddClose(path.get());
        }
        while (path->count > capacity)
            capacity += 256;
        ASSERT_EQ(path->capacity, capacity) << before;
    }
}

TEST(Path, MakeEmptyReleasesTheArray) {
    const PathHandle path = emptyPath();
    const int32_t blocks = allocationCount();
    addCloses(path.get(), 300);
    EXPECT_EQ(allocationCount(), blocks + 1);
    LxPath_MakeEmpty(path.get());
    EXPECT_EQ(allocationCount(), blocks);
    EXPECT_EQ(path->words, nullptr);
    EXPECT_EQ(path->count, 0);
    EXPECT_EQ(path->capacity, 0);
}

TEST(Path, DeleteReleasesRecordAndArray) {
    const int32_t blocks = allocationCount();
    LxPath *path = LxPath_Create();
    addCloses(path, 3);
    LxPath_Delete(path);
    EXPECT_EQ(allocationCount(), blocks);
    LxPath_Delete(nullptr);
}

TEST(Path, AddAppendsAllWordsAndGrows) {
    const PathHandle path = emptyPath();
    LxPath_AddMoveTo(path.get(), 1, 2);
    const PathHandle other = emptyPath();
    addCloses(other.get(), 254);
    LxPath_Add(path.get(), other.get());
    EXPECT_EQ(path->count, 257);
    EXPECT_EQ(path->capacity, 512);
    EXPECT_EQ(path->words[3], 15u);
    EXPECT_EQ(path->words[256], 15u);
    EXPECT_EQ(behind(*path), std::vector<uint32_t>(255, 0));
}

TEST(Path, AddOfAnEmptyPathChangesNothing) {
    const PathHandle path = emptyPath();
    const PathHandle empty = emptyPath();
    LxPath_Add(path.get(), empty.get());
    EXPECT_EQ(path->words, nullptr);
    EXPECT_EQ(path->capacity, 0);
    LxPath_AddMoveTo(path.get(), 1, 2);
    LxPath_Add(path.get(), empty.get());
    EXPECT_EQ(Stream(path), Stream().move(1, 2));
}

TEST(Path, AddToItselfDoubles) {
    const PathHandle path = Stream().move(1, 2).line(3, 4).path();
    LxPath_Add(path.get(), path.get());
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(3, 4).move(1, 2).line(3, 4));
    const PathHandle large = emptyPath();
    addCloses(large.get(), 200);
    LxPath_Add(large.get(), large.get());
    EXPECT_EQ(Stream(large).words, std::vector<uint32_t>(400, 15));
}

TEST(Path, CopyReplacesTheContentAndStartsTheCapacityAnew) {
    const PathHandle path = emptyPath();
    addCloses(path.get(), 600);
    const PathHandle source = Stream().move(1, 2).close().path();
    LxPath_Copy(path.get(), source.get());
    EXPECT_EQ(Stream(path), Stream(source));
    EXPECT_EQ(path->capacity, 256);
    EXPECT_NE(path->words, source->words);
}

TEST(Path, CopyOfAPathOntoItselfChangesNothing) {
    const PathHandle path = Stream().move(1, 2).close().path();
    const uint32_t *words = path->words;
    LxPath_Copy(path.get(), path.get());
    EXPECT_EQ(path->words, words);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).close());
}

TEST(Path, CreatedCopyAndCreatedClipAreThePathItself) {
    const PathHandle source = Stream().move(1, 2).line(300, -400).close().path();
    const LxRectD clip = {0, 0, 10, 10};
    EXPECT_EQ(Stream(PathHandle(LxPath_CreateCopy(source.get()))), Stream(source));
    EXPECT_EQ(Stream(PathHandle(LxPath_CreateClipped(source.get(), &clip))), Stream(source));
    EXPECT_EQ(Stream(PathHandle(LxPath_CreateClipped(source.get(), nullptr))), Stream(source));
    const PathHandle empty = emptyPath();
    const PathHandle copy(LxPath_CreateCopy(empty.get()));
    EXPECT_EQ(copy->words, nullptr);
}

TEST(Path, CopyDropsWhatEditingLeftBehindTheCount) {
    const PathHandle path = Stream().move(1, 2).line(3, 4).path();
    LxPath_RemoveItem(path.get(), 1);
    EXPECT_NE(behind(*path), std::vector<uint32_t>(253, 0));
    const PathHandle copy(LxPath_CreateCopy(path.get()));
    EXPECT_EQ(Stream(copy), Stream().move(1, 2));
    EXPECT_EQ(behind(*copy), std::vector<uint32_t>(253, 0));
}

TEST(Path, PolygonCountsShortOfTheWordsItWrites) {
    const PathHandle path = emptyPath();
    LxPath_AddMoveTo(path.get(), 0, 0);
    LxPath_PolygonTo(path.get(), triangle, 2);
    EXPECT_EQ(path->count, 3 + 3);
    const std::vector<uint32_t> all(path->words, path->words + 9);
    EXPECT_EQ(all, Stream().move(0, 0).word(6).word(2).number(1).number(2).number(3).number(4).words);
    EXPECT_EQ(path->words[9], 0u);
}

TEST(Path, PolygonWithoutPointsCountsOneWordAndWritesTwo) {
    for (const int32_t n : {0, -1, std::numeric_limits<int32_t>::min()}) {
        const PathHandle path = emptyPath();
        LxPath_PolygonTo(path.get(), triangle, n);
        EXPECT_EQ(path->count, 1);
        EXPECT_EQ(path->words[0], 6u);
        EXPECT_EQ(path->words[1], static_cast<uint32_t>(n));
        EXPECT_EQ(path->words[2], 0u);
        const PathHandle pointless = emptyPath();
        LxPath_PolygonTo(pointless.get(), nullptr, n);
        EXPECT_EQ(Stream(pointless), Stream(path));
    }
}

TEST(Path, ItemBehindAPolygonLandsOnItsPoints) {
    const PathHandle path = emptyPath();
    LxPath_PolygonTo(path.get(), triangle, 3);
    EXPECT_EQ(path->count, 4);
    LxPath_AddLineTo(path.get(), 8, 9);
    const std::vector<uint32_t> all(path->words, path->words + 8);
    EXPECT_EQ(all, Stream().word(6).word(3).number(1).number(2).line(8, 9).number(6).words);
}

TEST(Path, ArrayHasRoomForAllPointsOfAPolygon) {
    std::vector<LxPointD> points(1000);
    for (size_t i = 0; i < points.size(); ++i)
        points[i] = {static_cast<double>(i), -static_cast<double>(i)};
    const PathHandle path = emptyPath();
    LxPath_PolygonTo(path.get(), points.data(), 1000);
    EXPECT_EQ(path->count, 1001);
    EXPECT_GE(path->capacity, 2002);
    EXPECT_EQ(path->words[2001], std::bit_cast<uint32_t>(-999.0f));
}

TEST(Path, CopyTakesTheLastPolygonsPointsAlong) {
    std::vector<LxPointD> points(200, {7, 8});
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_PolygonTo(path.get(), points.data(), 200);
    const PathHandle copy(LxPath_CreateCopy(path.get()));
    EXPECT_EQ(copy->count, 3 + 201);
    const std::vector<uint32_t> all(path->words, path->words + 3 + 402);
    EXPECT_EQ(std::vector<uint32_t>(copy->words, copy->words + 3 + 402), all);
    // Doubled, the second copy of the polygon is whole, as it is the last item.
    LxPath_Add(copy.get(), copy.get());
    EXPECT_EQ(copy->count, 2 * 204);
    EXPECT_EQ(std::vector<uint32_t>(copy->words + 204, copy->words + 204 + 405), all);
}

TEST(Path, PolygonBeyondAllMemoryChangesNothing) {
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_PolygonTo(path.get(), triangle, std::numeric_limits<int32_t>::max());
    EXPECT_EQ(Stream(path), Stream().move(1, 2));
    for (const int32_t n : {1, 2}) {
        LxPath_PolygonTo(path.get(), nullptr, n);
        EXPECT_EQ(Stream(path), Stream().move(1, 2));
    }
}

TEST(Path, NullPathsAreIgnored) {
    LxPath_MakeEmpty(nullptr);
    const PathHandle path = Stream().move(1, 2).path();
    LxPath_Add(path.get(), nullptr);
    LxPath_Add(nullptr, path.get());
    LxPath_Copy(path.get(), nullptr);
    LxPath_Copy(nullptr, path.get());
    EXPECT_EQ(Stream(path), Stream().move(1, 2));
    EXPECT_EQ(LxPath_CreateCopy(nullptr), nullptr);
    EXPECT_EQ(LxPath_CreateClipped(nullptr, nullptr), nullptr);
    LxPath_AddMoveTo(nullptr, 0, 0);
    LxPath_AddLineTo(nullptr, 0, 0);
    LxPath_AddQCurveTo(nullptr, 0, 0, 0, 0);
    LxPath_AddCurveTo(nullptr, 0, 0, 0, 0, 0, 0);
    LxPath_AddArcTo(nullptr, 0, 0, 0, 0, 0, 0, 0);
    LxPath_PolygonTo(nullptr, triangle, 3);
    LxPath_AddClose(nullptr);
}

TEST(Path, ItemsForWhichThereIsNoMemoryAreNotAdded) {
    const PathHandle path = emptyPath();
    addCloses(path.get(), 255);
    const NoMemory shortage;
    addCloses(path.get(), 1);
    EXPECT_EQ(path->count, 256);
    addCloses(path.get(), 1);
    LxPath_AddCurveTo(path.get(), 1, 2, 3, 4, 5, 6);
    LxPath_PolygonTo(path.get(), triangle, 3);
    EXPECT_EQ(path->count, 256);
    EXPECT_EQ(path->capacity, 256);
    EXPECT_EQ(LxPath_Create(), nullptr);
    EXPECT_EQ(LxPath_CreateCopy(path.get()), nullptr);
    EXPECT_EQ(LxPath_InsertClose(path.get(), 0), nullptr);
    EXPECT_EQ(LxPath_ReplaceByClose(path.get(), 0), nullptr);
    EXPECT_EQ(Stream(path).words, std::vector<uint32_t>(256, 15));
}
