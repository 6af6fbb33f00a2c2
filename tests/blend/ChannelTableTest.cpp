// What each channel selects in the cells that tell channels apart, worked out by hand.
#include "blend/ChannelTable.h"

#include "tests/blend/OnePixel.h"

using namespace lx;
using namespace lx::test;

namespace {

struct Expected {
    Channel channel;
    Bytes result;
};

// Blends at full opacity onto `out`, which is not `a`, so that what is not written shows.
void expectChannels(Mode mode, const Bytes &out, const Bytes &a, const Bytes &b,
                    const std::vector<Expected> &table, int mask = unmasked) {
    for (const Expected &expected : table) {
        EXPECT_EQ(blended(blendOf(mode, 255, expected.channel), out, a, b, mask), expected.result)
            << traitsOf(mode).name << ", channel " << channelName(static_cast<int32_t>(expected.channel));
    }
}

using enum Channel;

} // namespace

TEST(BlendChannels, OneByteFromThree) {
    const std::vector<Expected> table = {{red, {20}},  {green, {40}}, {blue, {60}},
                                         {alpha, {9}}, {rgb, {20}},   {rgba, {20}}};
    expectChannels(Mode::add, {9}, {10}, {10, 30, 50}, table);
    expectChannels(Mode::add, {9}, {10}, {10, 30, 50}, table, 255);
    expectChannels(Mode::srcOver, {9}, {10}, {10, 30, 50},
                   {{red, {10}}, {green, {30}}, {blue, {50}}, {alpha, {9}}, {rgb, {10}}, {rgba, {10}}});
    expectChannels(Mode::clear, {9}, {10}, {10, 30, 50},
                   {{red, {0}}, {green, {0}}, {alpha, {9}}, {rgba, {0}}});
    expectChannels(Mode::src, {9}, {10}, {10, 30, 50},
                   {{red, {10}}, {blue, {50}}, {alpha, {9}}, {rgb, {10}}});
}

TEST(BlendChannels, OneByteFromFour) {
    // Without alpha in the weight: rgb is full although b's alpha is 127.
    expectChannels(Mode::add, {9}, {10}, {10, 30, 50, 127},
                   {{red, {9}}, {green, {9}}, {blue, {9}}, {alpha, {255}}, {rgb, {20}}, {rgba, {9}}});
    // With a mask the no-ops become a.
    expectChannels(Mode::add, {9}, {10}, {10, 30, 50, 127},
                   {{red, {10}}, {green, {10}}, {blue, {10}}, {alpha, {255}}, {rgb, {20}}, {rgba, {10}}},
                   255);
    // SrcOver at weight 127: (f + 1) * 127 + 11 * 128, >> 8.
    expectChannels(Mode::srcOver, {9}, {10}, {10, 30, 50, 127},
                   {{red, {10}}, {green, {20}}, {blue, {30}}, {alpha, {69}}, {rgb, {10}}, {rgba, {10}}});
    expectChannels(Mode::src, {9}, {10}, {10, 30, 50, 127},
                   {{red, {10}}, {green, {30}}, {blue, {50}}, {rgb, {10}}, {rgba, {10}}});
    expectChannels(
        Mode::select, {9}, {10}, {10, 30, 50, 127},
        {{red, {255}}, {green, {255}}, {blue, {255}}, {alpha, {255}}, {rgb, {255}}, {rgba, {255}}});
    EXPECT_EQ(blended(blendOf(Mode::add, 0, alpha), {9}, {10}, {1, 2, 3, 4}), (Bytes{9}));
}

TEST(BlendChannels, ThreeBytesFromOne) {
    expectChannels(Mode::add, {9, 9, 9}, {1, 2, 3}, {10},
                   {{red, {11, 9, 9}},
                    {green, {9, 11, 9}},
                    {blue, {9, 9, 11}},
                    {alpha, {9, 9, 255}},
                    {rgb, {11, 11, 11}},
                    {rgba, {11, 11, 11}}});
    EXPECT_EQ(blended(blendOf(Mode::add, 0, alpha), {9, 9, 9}, {1, 2, 3}, {10}), (Bytes{9, 9, 9}));
    expectChannels(Mode::dstIn, {9, 9, 9}, {1, 2, 3}, {10},
                   {{red, {0, 9, 9}}, {blue, {9, 9, 255}}, {rgb, {0, 0, 255}}});
}

TEST(BlendChannels, ThreeBytesFromThree) {
    expectChannels(Mode::add, {9, 9, 9}, {1, 2, 3}, {10, 20, 30},
                   {{red, {11, 9, 9}},
                    {green, {9, 22, 9}},
                    {blue, {9, 9, 33}},
                    {alpha, {9, 9, 9}},
                    {rgb, {11, 22, 33}},
                    {rgba, {11, 22, 33}}});
    expectChannels(Mode::select, {9, 9, 9}, {1, 2, 3}, {10, 20, 30},
                   {{red, {255, 9, 9}}, {green, {9, 0, 9}}, {alpha, {9, 9, 9}}});
    expectChannels(Mode::value, {9, 9, 9}, {255, 0, 0}, {200, 200, 200},
                   {{red, {255, 9, 9}}, {green, {9, 145, 9}}, {alpha, {9, 9, 9}}});
}

TEST(BlendChannels, ThreeBytesFromFour) {
    // b's alpha of 127 counts with rgba only: (f + 1) * 127 + (c + 1) * 128, >> 8.
    expectChannels(
        Mode::add, {9, 9, 9}, {1, 2, 3}, {10, 20, 30, 127},
        {{red, {9, 9, 9}},
         {green, {9, 9, 9}},
         {blue, {9, 9, 9}},
         {alpha, {9, 9, 9}},
         {rgb, {11, 22, 33}},
         {rgba, {(12 * 127 + 2 * 128) / 256, (23 * 127 + 3 * 128) / 256, (34 * 127 + 4 * 128) / 256}}});
    const uint8_t r = (11 * 127 + 2 * 128) / 256, g = (21 * 127 + 3 * 128) / 256,
                  b = (31 * 127 + 4 * 128) / 256;
    expectChannels(Mode::srcOver, {9, 9, 9}, {1, 2, 3}, {10, 20, 30, 127},
                   {{red, {r, 9, 9}},
                    {green, {9, g, 9}},
                    {blue, {9, 9, b}},
                    {alpha, {9, 9, 9}},
                    {rgb, {r, g, b}},
                    {rgba, {r, g, b}}});
    expectChannels(Mode::src, {9, 9, 9}, {1, 2, 3}, {10, 20, 30, 0},
                   {{red, {10, 9, 9}}, {rgb, {10, 20, 30}}, {alpha, {9, 9, 9}}});
}

TEST(BlendChannels, FourBytesFromOne) {
    expectChannels(Mode::add, {9, 9, 9, 9}, {1, 2, 3, 4}, {10},
                   {{red, {11, 9, 9, 9}},
                    {green, {9, 11, 9, 9}},
                    {blue, {9, 9, 11, 9}},
                    {alpha, {9, 9, 255, 9}},
                    {rgb, {11, 11, 11, 255}},
                    {rgba, {11, 11, 11, 255}}});
    EXPECT_EQ(blended(blendOf(Mode::add, 50, alpha), {9, 9, 9, 9}, {1, 2, 3, 4}, {10}), (Bytes{9, 9, 50, 9}));
    EXPECT_EQ(blended(blendOf(Mode::add, 50, alpha), {9, 9, 9, 9}, {1, 2, 3, 80}, {10}),
              (Bytes{9, 9, 80, 9}));
    EXPECT_EQ(blended(blendOf(Mode::clear, 50, alpha), {9, 9, 9, 9}, {1, 2, 3, 80}, {10}),
              (Bytes{9, 9, 50, 9}));
}

TEST(BlendChannels, FourBytesFromThree) {
    expectChannels(Mode::add, {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30},
                   {{red, {11, 9, 9, 9}},
                    {green, {9, 22, 9, 9}},
                    {blue, {9, 9, 33, 9}},
                    {alpha, {9, 9, 9, 9}},
                    {rgb, {11, 22, 33, 255}},
                    {rgba, {11, 22, 33, 255}}});
    EXPECT_EQ(blended(blendOf(Mode::srcOver, 0, rgb), {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30}),
              (Bytes{9, 9, 9, 9}));
    EXPECT_EQ(blended(blendOf(Mode::srcOver, 64, rgb), {9, 9, 9, 9}, {1, 1, 1, 4}, {1, 1, 1}),
              (Bytes{1, 1, 1, 64}))
        << "alpha by the rule";
}

TEST(BlendChannels, FourBytesFromFour) {
    expectChannels(
        Mode::add, {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30, 127},
        {{red, {9, 9, 9, 9}},
         {green, {9, 9, 9, 9}},
         {blue, {9, 9, 9, 9}},
         {alpha, {9, 9, 9, 127}},
         {rgb, {11, 22, 33, 255}},
         {rgba, {(12 * 127 + 2 * 128) / 256, (23 * 127 + 3 * 128) / 256, (34 * 127 + 4 * 128) / 256, 127}}});
    const uint8_t r = (11 * 127 + 2 * 128) / 256, g = (21 * 127 + 3 * 128) / 256;
    expectChannels(
        Mode::srcOver, {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30, 127},
        {{red, {r, 9, 9, 255}}, {green, {9, g, 9, 255}}, {alpha, {9, 9, 9, 127}}, {rgb, {10, 20, 30, 255}}});
    expectChannels(
        Mode::src, {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30, 127},
        {{red, {10, 9, 9, 255}}, {blue, {9, 9, 30, 255}}, {alpha, {9, 9, 9, 127}}, {rgb, {10, 20, 30, 255}}});
    expectChannels(
        Mode::clear, {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30, 127},
        {{red, {0, 9, 9, 9}}, {green, {9, 0, 9, 9}}, {alpha, {9, 9, 9, 255}}, {rgb, {0, 0, 0, 255}}});
    expectChannels(Mode::grayscale, {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30, 127},
                   {{red, {9, 9, 9, 9}}, {rgb, {18, 18, 18, 255}}});
    expectChannels(Mode::hue, {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30, 127},
                   {{red, {9, 9, 9, 9}}, {alpha, {9, 9, 9, 127}}});
    expectChannels(Mode::dstOver, {9, 9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30, 127},
                   {{red, {9, 9, 9, 9}}, {alpha, {9, 9, 9, 4}}, {rgb, {1, 2, 3, 255}}});
}

TEST(BlendChannels, TheRgbChannelFoldsTheMaskOnce) {
    EXPECT_EQ(blended(blendOf(Mode::darken, 255, rgb), {9, 9, 9, 9}, {100, 100, 100, 4}, {0, 0, 0, 3}, 100),
              (Bytes{(100 + 101 * 155) / 256, 61, 61, 255}));
    EXPECT_EQ(blended(blendOf(Mode::darken, 2, rgb), {9, 9, 9, 9}, {100, 100, 100, 4}, {0, 0, 0, 3}, 100),
              (Bytes{9, 9, 9, 9}));
}

TEST(ChannelTable, AnAlphaGoesIntoAComponentOfColourOnlyAtAWeightAbove0) {
    using enum Channel;
    for (const Mode mode : {Mode::src, Mode::dstOver, Mode::userColor, Mode::srcOver, Mode::multiply}) {
        EXPECT_EQ(blended(blendOf(mode, 0, alpha), {9}, {10}, {1, 2, 3, 4}), (Bytes{9}));
        EXPECT_EQ(blended(blendOf(mode, 0, alpha), {9, 9, 9}, {1, 2, 3}, {10}), (Bytes{9, 9, 9}));
        EXPECT_EQ(blended(blendOf(mode, 0, alpha), {9, 9, 9, 9}, {1, 2, 3, 80}, {10}), (Bytes{9, 9, 9, 9}));
    }
}

TEST(BlendChannels, OtherCellsIgnoreTheChannel) {
    for (const Channel channel : {red, green, blue, alpha, rgb, rgba}) {
        const auto with = [&](Mode mode) { return blendOf(mode, 255, channel); };
        EXPECT_EQ(blended(with(Mode::add), {9}, {1}, {10}), (Bytes{11}));
        EXPECT_EQ(blended(with(Mode::add), {9}, {1, 2, 3}, {10, 20, 30}), (Bytes{11}));
        EXPECT_EQ(blended(with(Mode::add), {9}, {1, 2, 3, 4}, {10, 20, 30, 255}), (Bytes{11}));
        EXPECT_EQ(blended(with(Mode::add), {9, 9, 9}, {1}, {10, 20, 30}), (Bytes{11, 21, 31}));
        EXPECT_EQ(blended(with(Mode::add), {9, 9, 9}, {1, 2, 3, 4}, {10}), (Bytes{11, 11, 11}));
        EXPECT_EQ(blended(with(Mode::add), {9, 9, 9, 9}, {1, 2, 3}, {10, 20, 30}), (Bytes{11, 22, 33, 255}));
        EXPECT_EQ(blended(with(Mode::grayscale), {9, 9, 9}, {1, 2, 3, 4}, {10, 20, 30}), (Bytes{18, 18, 18}));
    }
}
