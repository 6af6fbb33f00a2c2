// Inserting, replacing and removing items by their index.
#include "path/Path.h"

#include <limits>

#include <gtest/gtest.h>

#include "path/PathIndex.h"
#include "tests/path/PathStream.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr LxPointD two[] = {{1, 2}, {3, 4}};

Stream moveLineLine() {
    return Stream().move(1, 2).line(3, 4).line(5, 6);
}

} // namespace

TEST(PathEdit, IndexStepOfEveryItem) {
    const PathHandle path = emptyPath();
    LxPath_AddMoveTo(path.get(), 1, 2);
    LxPath_AddLineTo(path.get(), 1, 2);
    LxPath_AddQCurveTo(path.get(), 1, 2, 3, 4);
    LxPath_AddCurveTo(path.get(), 1, 2, 3, 4, 5, 6);
    LxPath_AddArcTo(path.get(), 1, 2, 3, 4, 5, 6, 7);
    LxPath_AddClose(path.get());
    int32_t position = 0;
    for (const int32_t step : {3, 3, 5, 7, 8, 1}) {
        EXPECT_EQ(indexStep(*path, position), step);
        position += step;
    }
    EXPECT_EQ(position, path->count);
    for (const uint32_t tag : {0u, 7u, 9u, 14u, 16u, 0xFFFFFFFFu}) {
        path->words[0] = tag;
        EXPECT_EQ(indexStep(*path, 0), 1) << tag;
    }
}

TEST(PathEdit, IndexStepOfAPolygonIsItsFirstX) {
    for (const uint32_t tag : {6u, 8u}) {
        const PathHandle path = Stream().word(tag).word(1).word(4).zeros(20).path();
        EXPECT_EQ(indexStep(*path, 0), 1 + 4) << tag;
        path->words[2] = 0; // x is 0.0
        EXPECT_EQ(indexStep(*path, 0), 1);
        path->words[2] = std::bit_cast<uint32_t>(1.0f);
        EXPECT_EQ(indexStep(*path, 0), path->count) << "not beyond the end";
        path->words[2] = 0x7FFFFFFF;
        EXPECT_EQ(indexStep(*path, 0), path->count);
        path->words[2] = std::bit_cast<uint32_t>(-1.0f);
        EXPECT_EQ(indexStep(*path, 0), 1) << "never backwards";
        path->words[2] = 0xFFFFFFFF;
        EXPECT_EQ(indexStep(*path, 0), 1) << "never standing still";
    }
}

TEST(PathEdit, IndexStepStaysInsideAFullArray) {
    const PathHandle path = emptyPath();
    for (int i = 0; i < 256; ++i)
        LxPath_AddClose(path.get());
    path->words[254] = 6;
    EXPECT_EQ(indexStep(*path, 254), 1);
    path->words[255] = 6;
    EXPECT_EQ(indexStep(*path, 255), 1);
}

TEST(PathEdit, InsertionComesInFrontOfTheItem) {
    const PathHandle path = moveLineLine().path();
    uint32_t *item = LxPath_InsertLineTo(path.get(), 1, 7, 8);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(7, 8).line(3, 4).line(5, 6));
    EXPECT_EQ(item, path->words + 3);
}

TEST(PathEdit, InsertionPastTheEndAppends) {
    for (const int32_t index : {3, 4, 1000, std::numeric_limits<int32_t>::max()}) {
        const PathHandle path = moveLineLine().path();
        EXPECT_EQ(LxPath_InsertLineTo(path.get(), index, 7, 8), path->words + 9);
        EXPECT_EQ(Stream(path), moveLineLine().line(7, 8));
    }
}

TEST(PathEdit, InsertionAtZeroOrBelowComesFirst) {
    for (const int32_t index : {0, -1, std::numeric_limits<int32_t>::min()}) {
        const PathHandle path = moveLineLine().path();
        EXPECT_EQ(LxPath_InsertLineTo(path.get(), index, 7, 8), path->words);
        EXPECT_EQ(Stream(path), Stream().line(7, 8).move(1, 2).line(3, 4).line(5, 6));
    }
}

TEST(PathEdit, EveryInsertion) {
    const PathHandle path = moveLineLine().path();
    LxPath *p = path.get();
    EXPECT_EQ(LxPath_InsertClose(p, 1), p->words + 3);
    EXPECT_EQ(LxPath_InsertArcTo(p, 1, 1, 2, 3, 4, 5, 6, 7), p->words + 3);
    EXPECT_EQ(LxPath_InsertCurveTo(p, 1, 1, 2, 3, 4, 5, 6), p->words + 3);
    EXPECT_EQ(LxPath_InsertQCurveTo(p, 1, 1, 2, 3, 4), p->words + 3);
    EXPECT_EQ(LxPath_InsertMoveTo(p, 1, 1, 2), p->words + 3);
    EXPECT_EQ(Stream(path), Stream()
                                .move(1, 2)
                                .move(1, 2)
                                .qcurve(1, 2, 3, 4)
                                .curve(1, 2, 3, 4, 5, 6)
                                .arc(1, 2, 3, 4, 5, 6, 7)
                                .close()
                                .line(3, 4)
                                .line(5, 6));
}

TEST(PathEdit, InsertionIntoAnEmptyPathAppends) {
    for (const int32_t index : {-1, 0, 5}) {
        const PathHandle path = emptyPath();
        EXPECT_EQ(LxPath_InsertMoveTo(path.get(), index, 1, 2), path->words);
        EXPECT_EQ(Stream(path), Stream().move(1, 2));
    }
}

TEST(PathEdit, InsertionGrowsTheArrayWhenItIsFull) {
    const PathHandle path = emptyPath();
    for (int i = 0; i < 256; ++i)
        LxPath_AddClose(path.get());
    LxPath_InsertLineTo(path.get(), 255, 1, 2);
    EXPECT_EQ(path->capacity, 512);
    EXPECT_EQ(path->count, 259);
    EXPECT_EQ(path->words[254], 15u);
    EXPECT_EQ(path->words[255], 2u);
    EXPECT_EQ(path->words[258], 15u);
    EXPECT_EQ(path->words[259], 0u);
}

TEST(PathEdit, InsertedPolygonMovesTheRestByLessThanItWrites) {
    const PathHandle path = moveLineLine().path();
    uint32_t *behind = LxPath_InsertPolygonTo(path.get(), 1, two, 2);
    EXPECT_EQ(behind, path->words + 3 + 6) << "the word after the last pair";
    EXPECT_EQ(path->count, 9 + 3);
    // The lines moved by three words, and the polygon's last three words lie on the first of them.
    EXPECT_EQ(Stream(path),
              Stream().move(1, 2).word(6).word(2).number(1).number(2).number(3).number(4).line(5, 6));
}

TEST(PathEdit, InsertedPolygonStaysInsideTheArray) {
    std::vector<LxPointD> points(300, {1, 1});
    const PathHandle path = moveLineLine().path();
    uint32_t *behind = LxPath_InsertPolygonTo(path.get(), 3, points.data(), 300);
    EXPECT_EQ(behind - path->words, 9 + 602);
    EXPECT_LE(behind, path->words + path->capacity);
    EXPECT_EQ(path->count, 9 + 301);
}

TEST(PathEdit, ReplacementBySameSizeKeepsTheTailAndRaisesTheCount) {
    const PathHandle path = moveLineLine().close().path();
    uint32_t *item = LxPath_ReplaceByLineTo(path.get(), 1, 7, 8);
    EXPECT_EQ(item, path->words + 3);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(7, 8).line(5, 6).close().zeros(3));
}

TEST(PathEdit, ReplacementByALargerItemMovesTheTail) {
    const PathHandle path = moveLineLine().close().path();
    LxPath_ReplaceByCurveTo(path.get(), 1, 1, 2, 3, 4, 5, 6);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).curve(1, 2, 3, 4, 5, 6).line(5, 6).close().zeros(3));
}

TEST(PathEdit, ReplacementByASmallerItemLeavesOldWordsBehind) {
    const PathHandle path = moveLineLine().path();
    EXPECT_EQ(LxPath_ReplaceByClose(path.get(), 0), path->words);
    // The two words at the end are those of the line before it moved.
    EXPECT_EQ(Stream(path), Stream().close().line(3, 4).line(5, 6).number(5).number(6).zeros(1));
}

TEST(PathEdit, ReplacementOfTheLastItemLeavesItsOwnWordsBehind) {
    const PathHandle path = moveLineLine().path();
    LxPath_ReplaceByClose(path.get(), 2);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(3, 4).close().number(5).number(6).zeros(1));
}

TEST(PathEdit, EveryReplacement) {
    const PathHandle path = Stream().close().path();
    LxPath *p = path.get();
    EXPECT_EQ(LxPath_ReplaceByMoveTo(p, -5, 1, 2), p->words);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).zeros(1));
    EXPECT_EQ(LxPath_ReplaceByQCurveTo(p, 0, 1, 2, 3, 4), p->words);
    EXPECT_EQ(Stream(path), Stream().qcurve(1, 2, 3, 4).zeros(1 + 3));
    EXPECT_EQ(LxPath_ReplaceByArcTo(p, 0, 1, 2, 3, 4, 5, 6, 7), p->words);
    EXPECT_EQ(Stream(path), Stream().arc(1, 2, 3, 4, 5, 6, 7).zeros(1 + 3 + 5));
}

TEST(PathEdit, ReplacementPastTheEndAnswersNullAndChangesNothing) {
    for (const int32_t index : {3, 4, std::numeric_limits<int32_t>::max()}) {
        const PathHandle path = moveLineLine().path();
        EXPECT_EQ(LxPath_ReplaceByClose(path.get(), index), nullptr);
        EXPECT_EQ(LxPath_ReplaceByPolygonTo(path.get(), index, two, 2), nullptr);
        EXPECT_EQ(Stream(path), moveLineLine());
    }
    const PathHandle empty = emptyPath();
    for (const int32_t index : {-1, 0, 1})
        EXPECT_EQ(LxPath_ReplaceByClose(empty.get(), index), nullptr);
    EXPECT_EQ(empty->words, nullptr);
}

TEST(PathEdit, ReplacementByAPolygonAnswersTheItem) {
    const PathHandle path = moveLineLine().path();
    EXPECT_EQ(LxPath_ReplaceByPolygonTo(path.get(), 2, two, 2), path->words + 6);
    EXPECT_EQ(path->count, 9 + 3);
    EXPECT_EQ(Stream(path),
              Stream().move(1, 2).line(3, 4).word(6).word(2).number(1).number(2).number(3).number(4));
}

TEST(PathEdit, CountNeverExceedsTheCapacityHoweverOftenItemsAreReplaced) {
    const PathHandle path = moveLineLine().path();
    for (int i = 0; i < 1000; ++i) {
        LxPath_ReplaceByLineTo(path.get(), 1, i, i);
        ASSERT_EQ(path->count, 9 + 3 * (i + 1));
        ASSERT_LE(path->count, path->capacity);
    }
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(999, 999).line(5, 6).zeros(3000));
}

TEST(PathEdit, RemovalClosesTheGap) {
    const PathHandle path = moveLineLine().close().path();
    LxPath_RemoveItem(path.get(), 1);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(5, 6).close());
    LxPath_RemoveItem(path.get(), 2);
    EXPECT_EQ(Stream(path), Stream().move(1, 2).line(5, 6));
    LxPath_RemoveItem(path.get(), -1);
    EXPECT_EQ(Stream(path), Stream().line(5, 6));
    LxPath_RemoveItem(path.get(), 0);
    EXPECT_EQ(path->count, 0);
    EXPECT_EQ(path->capacity, 256);
    LxPath_RemoveItem(path.get(), 0);
    EXPECT_EQ(path->count, 0);
}

TEST(PathEdit, RemovalPastTheEndChangesNothing) {
    const PathHandle path = moveLineLine().path();
    LxPath_RemoveItem(path.get(), 3);
    LxPath_RemoveItem(path.get(), std::numeric_limits<int32_t>::max());
    EXPECT_EQ(Stream(path), moveLineLine());
    const PathHandle empty = emptyPath();
    LxPath_RemoveItem(empty.get(), 0);
    LxPath_RemoveItem(empty.get(), 7);
    EXPECT_EQ(empty->count, 0);
}

TEST(PathEdit, NullPathsAreIgnored) {
    EXPECT_EQ(LxPath_InsertMoveTo(nullptr, 0, 1, 2), nullptr);
    EXPECT_EQ(LxPath_InsertPolygonTo(nullptr, 0, two, 2), nullptr);
    EXPECT_EQ(LxPath_ReplaceByMoveTo(nullptr, 0, 1, 2), nullptr);
    EXPECT_EQ(LxPath_ReplaceByPolygonTo(nullptr, 0, two, 2), nullptr);
    LxPath_RemoveItem(nullptr, 0);
    const PathHandle path = moveLineLine().path();
    for (const int32_t n : {1, 2}) {
        EXPECT_EQ(LxPath_InsertPolygonTo(path.get(), 0, nullptr, n), nullptr);
        EXPECT_EQ(LxPath_ReplaceByPolygonTo(path.get(), 0, nullptr, n), nullptr);
    }
    EXPECT_EQ(Stream(path), moveLineLine());
}

// The same edits on a list of items, of which one is what the path's index means, and a plain array for the
// words that the counts leave behind.
TEST(PathEdit, RandomEditsMatchAnArrayOfWords) {
    Random random(2);
    for (int round = 0; round < 200; ++round) {
        const PathHandle path = emptyPath();
        std::vector<uint32_t> words; // all words ever reached; zero behind
        size_t count = 0;
        const auto step = [&](size_t at) -> size_t {
            static constexpr size_t steps[] = {1, 3, 3, 5, 7, 8};
            return std::min<size_t>(words[at] < 6 ? steps[words[at]] : 1, count - at);
        };
        for (int edit = 0; edit < 30; ++edit) {
            const auto x = static_cast<float>(random.integer(-9, 9));
            const auto y = static_cast<float>(random.integer(-9, 9));
            const int32_t index = random.integer(-1, 8);
            size_t at = 0;
            bool found = count > 0;
            for (int32_t i = 0; i < index; ++i) {
                if (at < count)
                    at += step(at);
                found = at < count;
            }
            words.resize(std::max(words.size(), count + 64));
            const bool small = random.coin();
            const Stream item = small ? Stream().line(x, y) : Stream().curve(x, y, y, x, x, y);
            const size_t size = item.words.size();
            const auto putAt = [&] {
                std::copy(item.words.begin(), item.words.end(), words.begin() + static_cast<ptrdiff_t>(at));
            };
            const int32_t capacity = path->capacity;
            switch (random.integer(0, 2)) {
            case 0: {
                small ? LxPath_InsertLineTo(path.get(), index, x, y)
                      : LxPath_InsertCurveTo(path.get(), index, x, y, y, x, x, y);
                if (path->capacity != capacity) // a new array is zero behind the count
                    std::fill(words.begin() + static_cast<ptrdiff_t>(count), words.end(), 0);
                std::copy_backward(words.begin() + static_cast<ptrdiff_t>(at),
                                   words.begin() + static_cast<ptrdiff_t>(count),
                                   words.begin() + static_cast<ptrdiff_t>(count + size));
                putAt();
                count += size;
                break;
            }
            case 1: {
                uint32_t *answer = small ? LxPath_ReplaceByLineTo(path.get(), index, x, y)
                                         : LxPath_ReplaceByCurveTo(path.get(), index, x, y, y, x, x, y);
                ASSERT_EQ(answer != nullptr, found);
                if (!found)
                    break;
                if (path->capacity != capacity)
                    std::fill(words.begin() + static_cast<ptrdiff_t>(count), words.end(), 0);
                const std::vector<uint32_t> tail(words.begin() + static_cast<ptrdiff_t>(at + step(at)),
                                                 words.begin() + static_cast<ptrdiff_t>(count));
                std::copy(tail.begin(), tail.end(), words.begin() + static_cast<ptrdiff_t>(at + size));
                putAt();
                count += size;
                break;
            }
            default:
                LxPath_RemoveItem(path.get(), index);
                if (!found)
                    break;
                const size_t size = step(at);
                std::copy(words.begin() + static_cast<ptrdiff_t>(at + size),
                          words.begin() + static_cast<ptrdiff_t>(count),
                          words.begin() + static_cast<ptrdiff_t>(at));
                count -= size;
            }
            ASSERT_EQ(Stream(path).words,
                      std::vector<uint32_t>(words.begin(), words.begin() + static_cast<ptrdiff_t>(count)));
        }
    }
}
