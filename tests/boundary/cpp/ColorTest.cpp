#include <oxlume/cpp/Color.hpp>

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

using namespace oxlume;

static_assert(sizeof(Color) == sizeof(LxColor) && std::is_trivially_copyable_v<Color>);
static_assert(sizeof(Blend) == sizeof(LxBlend) && std::is_trivially_copyable_v<Blend>);
static_assert(Color(1, 2, 3).pixelType() == PixelType::RGBA);

TEST(CppColor, IsTheBoundarysTaggedValue) {
    EXPECT_EQ(Color(1, 2, 3, 4), Color(LxColor_RGBA(1, 2, 3, 4)));
    EXPECT_EQ(Color(1, 2, 3), Color(1, 2, 3, 255));
    EXPECT_EQ(Color(), Color(LxColor_RGBA_Black));
    EXPECT_NE(Color(1, 2, 3), Color::rgb(1, 2, 3)) << "of another type";
    EXPECT_NE(Color(1, 2, 3), Color(1, 2, 4));
    EXPECT_EQ(Color::gray(7).pixelType(), PixelType::A);
    EXPECT_EQ(Color::rgb(1, 2, 3).pixelType(), PixelType::RGB);
    EXPECT_EQ(Color::number(0.5f).content.f, 0.5f);
    EXPECT_EQ(Color::integer(-3).content.l, -3);
    EXPECT_EQ(Color(1, 2, 3, 4).rgba().b, 3);
}

TEST(CppBlend, KeepsModeOpacityAndChannel) {
    const Blend blend(Mode::Multiply, 128, Channel::RGB);
    EXPECT_EQ(LxBlend_Mode(&blend), 8);
    EXPECT_EQ(LxBlend_Opacity(&blend), 128);
    EXPECT_EQ(LxBlend_Channel(&blend), 5);
    EXPECT_EQ(Blend(), Blend(Mode::SrcOver, 255, Channel::RGBA));
    EXPECT_NE(Blend(), Blend(Mode::Multiply));
    const LxBlend c = blend;
    EXPECT_EQ(Blend(c), blend);
}

TEST(CppBlend, TheModesAreInTheBoundarysOrder) {
    EXPECT_STREQ(nameOf(Mode::Clear), "Clear");
    EXPECT_STREQ(nameOf(Mode::SrcOver), "SrcOver");
    EXPECT_STREQ(nameOf(Mode::HardLight), "HardLight");
    EXPECT_STREQ(nameOf(Mode::Dissolve), "Dissolve");
    EXPECT_STREQ(nameOf(Mode::NoName10), "NoName10");
    EXPECT_EQ(static_cast<int>(Mode::NoName10), 43);
    EXPECT_STREQ(nameOf(Channel::Red), "red");
    EXPECT_STREQ(nameOf(Channel::RGBA), "rgba");
}
