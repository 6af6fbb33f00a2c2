#include <oxlume/oxlume.hpp>

#include <cmath>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

using namespace oxlume;

static_assert(sizeof(Sheen) == sizeof(void *));
static_assert(!std::is_copy_constructible_v<Sheen> && std::is_nothrow_move_constructible_v<Sheen>);

TEST(CppSheen, RendersItsLayers) {
    Sheen sheen(32);
    EXPECT_EQ(sheen.size(), 32);
    EXPECT_EQ(sheen.layerCount(), 1);
    sheen.layer(0).set(kLxSheenHeight, 0.75).setColor({200, 100, 50}).setName("base");
    const ImageRef image = sheen.render();
    EXPECT_EQ(image.get(), sheen.image().get());
    EXPECT_EQ(image.pixel(16, 16).rgba().a, 255);
    EXPECT_EQ(image.pixel(16, 16).rgba().r, 141) << "200 at the sine of 45 degrees";
    EXPECT_EQ(sheen.heights().pixel(16, 16), Color::number(0.75f));
    EXPECT_STREQ(sheen.layer(0).name(), "base");
    EXPECT_EQ(sheen.layer(0).get(kLxSheenHeight), 0.75);
    EXPECT_EQ(sheen.layer(0).color(), Color(200, 100, 50));
    sheen.setSize(16);
    EXPECT_EQ(sheen.image().width(), 16);
}

TEST(CppSheen, LayersHaveModesOpacitiesAndSwitches) {
    Sheen sheen(8);
    SheenLayer layer = sheen.addLayer("top");
    EXPECT_STREQ(layer.name(), "top");
    EXPECT_EQ(layer.mode(), SheenMode::Add);
    layer.setMode(SheenMode::Larger).setOpacity(0.5).setEnabled(false);
    EXPECT_EQ(sheen.layer(1).mode(), SheenMode::Larger);
    EXPECT_EQ(sheen.layer(1).opacity(), 0.5);
    EXPECT_FALSE(sheen.layer(1).isEnabled());
    EXPECT_EQ(sheen.layer(9).name(), nullptr);
}

TEST(CppSheen, DescriptorsHaveALightEach) {
    Sheen sheen(8);
    SheenLight light = sheen.light();
    light.ambient = 0.5;
    EXPECT_TRUE(sheen.setLight(light, 1));
    EXPECT_EQ(sheen.light(1).ambient, 0.5);
    EXPECT_NE(sheen.light(0).ambient, 0.5);
    light.ambient = NAN;
    EXPECT_FALSE(sheen.setLight(light));
    EXPECT_TRUE(sheen.setAlphaThreshold(0.25, 1));
    EXPECT_EQ(sheen.alphaThreshold(1), 0.25);
}

TEST(CppSheen, BetweenTwoDescriptorsLiesAnother) {
    Sheen sheen(8);
    sheen.layer(0).set(kLxSheenHeight, 0.0);
    sheen.setCurrentDescriptor(1);
    EXPECT_EQ(sheen.currentDescriptor(), 1u);
    sheen.layer(0).set(kLxSheenHeight, 1.0);
    Sheen between = sheen.between(0.25);
    EXPECT_EQ(between.layer(0).get(kLxSheenHeight), 0.25);
    EXPECT_TRUE(between.render());
    EXPECT_FALSE(Sheen::between(0.5, sheen, 2, sheen, 0));
    EXPECT_FALSE(sheen.between(NAN));
}

TEST(CppSheen, LoadsAndStoresPresets) {
    Sheen sheen(8);
    std::string message = "before";
    EXPECT_FALSE(sheen.loadPreset("[layer]\nkHeigth = 1", 0, &message));
    EXPECT_EQ(message, "line 2: unknown parameter \"kHeigth\"; the nearest is \"kHeight\"");
    const std::string text = "[layer base]\ncolor = 1, 2, 3\nkHeight = 0.125\n";
    EXPECT_TRUE(sheen.loadPreset(text, 1, &message));
    EXPECT_EQ(message, "");
    EXPECT_EQ(sheen.preset(1), text);
    EXPECT_EQ(sheen.preset(0), "[layer no name]\ncolor = 255, 255, 255\n");
    EXPECT_EQ(sheen.preset(2), "");
}

TEST(CppSheen, OwnsAndMoves) {
    Sheen sheen(8);
    Sheen moved = std::move(sheen);
    EXPECT_FALSE(sheen);
    EXPECT_TRUE(moved);
    EXPECT_EQ(sheen.layerCount(), 0);
    EXPECT_FALSE(sheen.render());
    EXPECT_FALSE(sheen.loadPreset("[layer]"));
    EXPECT_EQ(sheen.preset(), "");
    LxSheen_Delete(moved.release());
}
