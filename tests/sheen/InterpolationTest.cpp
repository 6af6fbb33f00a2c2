#include <cstring>

#include <gtest/gtest.h>

#include "sheen/Descriptor.h"

using namespace lx;

namespace {

LxSheenDescriptor descriptorOf(std::initializer_list<LxSheenLayer> layers) {
    LxSheenDescriptor descriptor(16, 16);
    for (const LxSheenLayer &layer : layers)
        descriptor.AddLayer(layer);
    return descriptor;
}

} // namespace

TEST(Interpolation, BlendsTheParametersThatTheTableNames) {
    LxSheenLayer from("from"), to("to");
    from.SetValue(kHeight, 0.0);
    to.SetValue(kHeight, 1.0);
    from.SetValue(kSymmetry, 2);
    to.SetValue(kSymmetry, 8);
    from.SetValue(kRotation, 0);
    to.SetValue(kRotation, 90);
    from.compositeMode = 4;
    to.compositeMode = 5;
    from.opacity = 0.0;
    to.setEnabled(false);
    LxSheenDescriptor half(0.25, descriptorOf({from}), descriptorOf({to}));
    ASSERT_EQ(half.LayerCount(), 1);
    LxSheenLayer &layer = *half.Layer(0);
    EXPECT_EQ(layer.Value(kHeight), 0.25);
    EXPECT_EQ(layer.Value(kSymmetry), 2.0) << "copied from the first";
    EXPECT_EQ(layer.Value(kRotation), 23.0) << "22.5 rounds up";
    EXPECT_EQ(layer.compositeMode, 4u);
    EXPECT_EQ(layer.opacity, 0.25);
    EXPECT_TRUE(layer.isEnabled());
    EXPECT_FALSE(layer.prepared);
    EXPECT_EQ(layer.name, "from");
}

TEST(Interpolation, HoldsTheWayAndTheOpacity) {
    LxSheenLayer from, to;
    from.opacity = 0.5;
    to.opacity = 3.0;
    to.SetValue(kHeight, 1.0);
    LxSheenDescriptor end(7.0, descriptorOf({from}), descriptorOf({to}));
    EXPECT_EQ(end.Layer(0)->Value(kHeight), 1.0);
    EXPECT_EQ(end.Layer(0)->opacity, 1.0);
    LxSheenDescriptor start(-7.0, descriptorOf({from}), descriptorOf({to}));
    EXPECT_EQ(start.Layer(0)->Value(kHeight), 0.5);
    EXPECT_EQ(start.Layer(0)->opacity, 0.5);
}

TEST(Interpolation, ColoursGoThroughHueSaturationAndValue) {
    LxSheenLayer from, to;
    from.color = {255, 0, 0, 255};
    to.color = {0, 0, 255, 55};
    const LxRGBA expected = LxRGBA_LerpHSV(0.5, from.color, to.color);
    LxSheenDescriptor half(0.5, descriptorOf({from}), descriptorOf({to}));
    EXPECT_EQ(std::memcmp(&half.Layer(0)->color, &expected, 4), 0);
}

TEST(Interpolation, LightMovesAndItsColourIsWhite) {
    LxSheenDescriptor from(16, 16), to(16, 16);
    from.light.width = 100.0;
    to.light.width = 300.0;
    from.light.shadowStep = 1;
    to.light.shadowStep = 4;
    from.light.shadowOpacity = 200;
    to.light.shadowOpacity = 100;
    from.light.color = to.light.color = {1, 2, 3, 4};
    const LxSheenDescriptor half(0.5, from, to);
    EXPECT_EQ(half.light.width, 200.0);
    EXPECT_EQ(half.light.shadowStep, 3) << "2.5 rounds up";
    EXPECT_EQ(half.light.shadowOpacity, 150);
    EXPECT_EQ(half.light.color.r, 255);
    EXPECT_EQ(half.light.color.a, 255);
}

TEST(Interpolation, LayersThatTheSecondLacksStay) {
    LxSheenLayer only;
    only.SetValue(kHeight, 0.75);
    LxSheenDescriptor half(0.5, descriptorOf({LxSheenLayer(), only}), descriptorOf({LxSheenLayer()}));
    ASSERT_EQ(half.LayerCount(), 2);
    EXPECT_EQ(half.Layer(1)->Value(kHeight), 0.75);
    const LxSheenDescriptor fewer(0.5, descriptorOf({}), descriptorOf({only}));
    EXPECT_EQ(fewer.LayerCount(), 0);
}
