// The arrays in which paths are built: how they grow, what they keep, and where they end.
#include "path/PathBuilder.h"

#include <cstdlib>
#include <numeric>

#include <gtest/gtest.h>

#include "foundation/Memory.h"
#include "path/BackwardBuilder.h"
#include "tests/path/PathStream.h"

using namespace lx;
using namespace lx::test;

namespace {

// While one lives, the allocator says what it was asked for, and gives it unless it is told not to.
class Asked {
public:
    explicit Asked(bool gives) {
        sizes.clear();
        giving = gives;
        static constexpr SystemAllocator recording = {
            [](size_t size) { return note(size) ? std::malloc(size) : nullptr; },
            [](size_t count, size_t size) { return note(count * size) ? std::calloc(count, size) : nullptr; },
            [](void *block, size_t size) { return note(size) ? std::realloc(block, size) : nullptr; },
        };
        setSystemAllocator(&recording);
    }
    ~Asked() { setSystemAllocator(nullptr); }

    inline static std::vector<size_t> sizes; // in bytes
    inline static bool giving;

private:
    static bool note(size_t size) {
        sizes.push_back(size);
        return giving;
    }
};

using Sizes = std::vector<size_t>;

// 2^30 - 256 words, of four bytes.
constexpr size_t mostBytes = 4'294'966'272;

template <class Builder>
void addWords(Builder &builder, int n) {
    for (int i = 0; i < n; ++i)
        builder.add(Item<1>{static_cast<uint32_t>(i)});
}

} // namespace

TEST(PathBuilder, MakesRoomInWholeBlocks) {
    EXPECT_EQ(PathBuilder(0).path().capacity, 0);
    EXPECT_EQ(PathBuilder(1).path().capacity, 256);
    EXPECT_EQ(PathBuilder(256).path().capacity, 256);
    EXPECT_EQ(PathBuilder(257).path().capacity, 512);
}

TEST(PathBuilder, DoublesWhenItIsFull) {
    PathBuilder builder;
    addWords(builder, 256);
    EXPECT_EQ(builder.path().capacity, 256);
    addWords(builder, 1);
    EXPECT_EQ(builder.path().capacity, 512);
    addWords(builder, 256);
    EXPECT_EQ(builder.path().capacity, 1024);
}

TEST(PathBuilder, GrowsByAsMuchAsARunOfWordsNeeds) {
    std::vector<uint32_t> words(600);
    std::iota(words.begin(), words.end(), 7);
    PathBuilder builder;
    builder.add(words.data(), 256);
    EXPECT_EQ(builder.path().capacity, 256);
    builder.add(words.data(), 0);
    EXPECT_EQ(builder.path().capacity, 256);
    builder.add(words.data(), 600);
    EXPECT_EQ(builder.path().capacity, 1024) << "856 words in blocks of 256";
    EXPECT_EQ(builder.count(), 856);
    EXPECT_EQ(builder.path().words[255], 262u);
    EXPECT_EQ(builder.path().words[256], 7u);
    EXPECT_EQ(builder.path().words[855], 606u);
}

TEST(PathBuilder, KeepsAQuarterOfAMegabyteForTheNextPath) {
    PathBuilder builder;
    addWords(builder, 65536);
    builder.restart();
    EXPECT_EQ(builder.path().capacity, 65536);
    EXPECT_EQ(builder.count(), 0);
    addWords(builder, 65537);
    EXPECT_EQ(builder.path().capacity, 131072);
    builder.restart();
    EXPECT_EQ(builder.path().capacity, 0);
}

TEST(PathBuilder, HandsOverWholeBlocksWithZerosBehindTheWords) {
    PathBuilder builder;
    addWords(builder, 300);
    addWords(builder, 300);
    LxPath path = {};
    ASSERT_TRUE(builder.moveInto(path));
    EXPECT_EQ(path.count, 600);
    EXPECT_EQ(path.capacity, 768) << "and not the 1024 of the array";
    EXPECT_EQ(path.words[599], 299u);
    EXPECT_EQ(std::accumulate(path.words + 600, path.words + 768, 0u), 0u);
    EXPECT_EQ(builder.count(), 0);
    EXPECT_EQ(builder.path().capacity, 0);
    clear(path);

    addWords(builder, 3);
    ASSERT_TRUE(builder.moveInto(path, 513));
    EXPECT_EQ(path.capacity, 768) << "room for more than the words";
    EXPECT_EQ(std::accumulate(path.words + 3, path.words + 768, 0u), 0u);
    ASSERT_TRUE(builder.moveInto(path));
    EXPECT_EQ(path.words, nullptr);
    EXPECT_EQ(path.capacity, 0);
}

TEST(PathBuilder, AsksForTheLargestArrayAndForNoneBeyond) {
    const Asked asked(false);
    EXPECT_FALSE(PathBuilder(maxWords - 1).path().words);
    EXPECT_FALSE(PathBuilder(maxWords).path().words);
    EXPECT_FALSE(PathBuilder(int64_t{1} << 40).path().words) << "an estimate, which may be too high";
    EXPECT_EQ(Asked::sizes, Sizes(3, mostBytes));
    Asked::sizes.clear();
    LxPath path = {};
    PathBuilder builder;
    EXPECT_FALSE(builder.moveInto(path, int64_t{maxWords} + 1));
    EXPECT_TRUE(builder.failed());
    EXPECT_EQ(Asked::sizes, Sizes());
}

TEST(PathBuilder, AsksNoMoreAfterAFailureUntilItStartsAnew) {
    PathBuilder builder;
    {
        const Asked asked(false);
        addWords(builder, 3);
        EXPECT_EQ(Asked::sizes, Sizes(1, 1024));
        EXPECT_TRUE(builder.failed());
    }
    addWords(builder, 3);
    EXPECT_EQ(builder.count(), 0);
    LxPath path = {};
    EXPECT_FALSE(builder.moveInto(path));
    builder.restart();
    addWords(builder, 3);
    EXPECT_EQ(builder.count(), 3);
    EXPECT_FALSE(builder.failed());
}

TEST(Path, AsksForTheLargestArrayAndForNoneBeyond) {
    const Asked asked(false);
    LxPath path = {};
    EXPECT_FALSE(growTo(path, maxWords));
    EXPECT_EQ(Asked::sizes, Sizes(1, mostBytes));
    EXPECT_FALSE(growTo(path, int64_t{maxWords} + 1));
    EXPECT_EQ(Asked::sizes.size(), 1u);
}

TEST(BackwardBuilder, PutsItemsInFront) {
    BackwardBuilder builder;
    builder.restart(0);
    builder.add(Item<2>{1, 2});
    builder.add(Item<3>{3, 4, 5});
    EXPECT_EQ(std::vector<uint32_t>(builder.words(), builder.words() + builder.count()),
              (std::vector<uint32_t>{3, 4, 5, 1, 2}));
    addWords(builder, 600);
    ASSERT_EQ(builder.count(), 605);
    EXPECT_EQ(builder.words()[0], 599u);
    EXPECT_EQ(builder.words()[599], 0u);
    EXPECT_EQ(builder.words()[604], 2u);
    builder.makeEmpty();
    EXPECT_EQ(builder.count(), 0);
}

TEST(BackwardBuilder, MakesRoomForWhatIsExpectedAndThenDoubles) {
    const Asked asked(true);
    BackwardBuilder small, large;
    small.restart(255);
    large.restart(257);
    EXPECT_EQ(Asked::sizes, Sizes()) << "not before there is something to keep";
    addWords(small, 256);
    EXPECT_EQ(Asked::sizes, Sizes({1024})) << "a block at least";
    addWords(small, 257);
    EXPECT_EQ(Asked::sizes, Sizes({1024, 2048, 4096}));
    addWords(large, 258);
    EXPECT_EQ(Asked::sizes, Sizes({1024, 2048, 4096, 1028, 2056}));
}

TEST(BackwardBuilder, KeepsAQuarterOfAMegabyteForTheNextPath) {
    const Asked asked(true);
    BackwardBuilder builder;
    builder.restart(65536);
    addWords(builder, 65536);
    builder.restart(65536);
    addWords(builder, 65536);
    EXPECT_EQ(Asked::sizes, Sizes({262144}));
    addWords(builder, 1);
    builder.restart(0);
    EXPECT_EQ(builder.count(), 0);
    addWords(builder, 1);
    EXPECT_EQ(Asked::sizes, Sizes({262144, 524288, 1024}));
}

TEST(BackwardBuilder, AsksForTheLargestArrayAndOnce) {
    const Asked asked(false);
    BackwardBuilder builder;
    for (const int64_t expected : {int64_t{maxWords}, int64_t{1} << 40}) {
        builder.restart(expected);
        addWords(builder, 2);
        EXPECT_TRUE(builder.failed());
        EXPECT_EQ(builder.count(), 0);
    }
    EXPECT_EQ(Asked::sizes, Sizes(2, mostBytes));
}
