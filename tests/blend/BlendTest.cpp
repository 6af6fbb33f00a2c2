#include <oxlume/LxBlend.h>

#include <gtest/gtest.h>

TEST(Blend, ConstructorsSetModeOpacityAndChannel) {
    LxBlend blend = LxBlend(2, 255);
    EXPECT_EQ(LxBlend_Mode(&blend), 2);
    EXPECT_EQ(LxBlend_Opacity(&blend), 255);
    EXPECT_EQ(LxBlend_Channel(&blend), 6);
    EXPECT_EQ(blend.premultiplied, 0u);
    const LxBlend other = LxBlend_WithChannel(43, 7, 1);
    EXPECT_EQ(LxBlend_Mode(&other), 43);
    EXPECT_EQ(LxBlend_Opacity(&other), 7);
    EXPECT_EQ(LxBlend_Channel(&other), 1);
}

TEST(Blend, SettersChangeOneByte) {
    LxBlend blend = LxBlend(2, 255);
    LxBlend_SetChannel(&blend, 0x1F3);
    EXPECT_EQ(LxBlend_Channel(&blend), 0xF3);
    EXPECT_EQ(LxBlend_Mode(&blend), 2);
    EXPECT_EQ(LxBlend_Opacity(&blend), 255);
    LxBlend_SetOpacity(&blend, 256);
    EXPECT_EQ(LxBlend_Opacity(&blend), 0);
    LxBlend_SetMode(&blend, -1);
    EXPECT_EQ(LxBlend_Mode(&blend), 255);
    EXPECT_EQ(LxBlend_Channel(&blend), 0xF3);
}

TEST(Blend, RecordIsAWordAndAPointer) {
    EXPECT_EQ(sizeof(LxBlend), 2 * sizeof(void *));
    LxBlend blend = LxBlend_WithChannel(0x12, 0x34, 0x56);
    int mine = 0;
    EXPECT_EQ(LxBlend_SetPointer(&blend, &mine), &blend);
    EXPECT_EQ(blend.pointer, &mine);
    EXPECT_EQ(LxBlend_Mode(&blend), 0x12);
}

TEST(Blend, ModesHaveTheirNames) {
    const char *const names[] = {"Mix",      "Clear",    "Src",       "SrcOver",   "DstOver",  "SrcIn",
                                 "DstIn",    "SrcOut",   "DstOut",    "Multiply",  "Screen",   "Overlay",
                                 "Divide",   "Dodge",    "Burn",      "Add",       "Subtract", "Difference",
                                 "Darken",   "Lighten",  "SoftLight", "HardLight", "Hue",      "Saturation",
                                 "Value",    "Color",    "Grayscale", "UserColor", "Not",      "Or",
                                 "Xor",      "Select",   "Select2",   "Flip",      "Dissolve", "NoName01",
                                 "NoName02", "NoName03", "NoName04",  "NoName05",  "NoName06", "NoName07",
                                 "NoName08", "NoName09", "NoName10"};
    for (int32_t mode = -1; mode < 44; ++mode)
        EXPECT_STREQ(LxBlend_ModeName(mode), names[mode + 1]);
    for (const int32_t mode : {-2, 44, 255, INT32_MIN, INT32_MAX})
        EXPECT_STREQ(LxBlend_ModeName(mode), "noname");
}

TEST(Blend, ChannelsHaveTheirNames) {
    const char *const names[] = {"noname", "red", "green", "blue", "alpha", "rgb", "rgba", "noname"};
    for (int32_t channel = 0; channel < 8; ++channel)
        EXPECT_STREQ(LxBlend_ChannelName(channel), names[channel]);
    EXPECT_STREQ(LxBlend_ChannelName(-1), "noname");
    EXPECT_STREQ(LxBlend_ChannelName(INT32_MAX), "noname");
}
