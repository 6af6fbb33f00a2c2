#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <memory>
#include <regex>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <oxlume/LxExtras.h>
#include <oxlume/LxMem.h>

#include "image/Image.h"
#include "sheen/Preset.h"
#include "sheen/Sheen.h"
#include "tests/sheen/Surfaces.h"

using namespace lx;
using namespace lx::test;

namespace {

struct DeleteSheen {
    void operator()(LxSheen *sheen) const { LxSheen_Delete(sheen); }
};
using Sheen = std::unique_ptr<LxSheen, DeleteSheen>;

Sheen make(int32_t size) {
    return Sheen(LxSheen_Create(size));
}

std::string pixels(const LxImage *image) {
    return {static_cast<const char *>(LxImage_ConstData(image)),
            static_cast<size_t>(LxImage_DataSize(image))};
}

int32_t load(const Sheen &sheen, uint32_t descriptor, const std::string &text) {
    return LxSheen_LoadPreset(sheen.get(), descriptor, text.data(), text.size(), nullptr, 0);
}

std::string complaint(const Sheen &sheen, const std::string &text) {
    char message[256] = "untouched";
    LxSheen_LoadPreset(sheen.get(), 0, text.data(), text.size(), message, sizeof message);
    return message;
}

std::string stored(const Sheen &sheen, uint32_t descriptor) {
    char *text = LxSheen_CreatePreset(sheen.get(), descriptor);
    std::string copy = text;
    LxMem_free(text);
    return copy;
}

} // namespace

// ---- Parameters ----

TEST(SheenExtras, TheIndicesOfTheHeaderAreThoseOfTheKeys) {
    std::ifstream header(OXLUME_EXTRAS_HEADER);
    const std::regex entry(R"(\s+kLxSheen(\w+) = (\d+),.*)");
    std::set<uint32_t> seen;
    std::smatch match;
    bool isInEnum = false;
    for (std::string line; std::getline(header, line);) {
        isInEnum = (isInEnum || line == "typedef enum LxSheenIndex {") && line != "} LxSheenIndex;";
        if (!isInEnum || !std::regex_match(line, match, entry))
            continue;
        const auto index = static_cast<uint32_t>(std::stoul(match[2]));
        seen.insert(index);
        EXPECT_STREQ(LxSheen_ParameterKey(index) + 1, match[1].str().c_str());
    }
    EXPECT_EQ(seen.size(), 76u);
    EXPECT_EQ(kLxSheenParameterCount, 76);
}

TEST(SheenExtras, KeysAndIndicesLeadToEachOther) {
    for (uint32_t i = 0; i < 76; ++i)
        EXPECT_EQ(LxSheen_ParameterIndex(LxSheen_ParameterKey(i)), static_cast<int32_t>(i));
    EXPECT_EQ(LxSheen_ParameterIndex("kHeight"), 1);
    EXPECT_EQ(LxSheen_ParameterIndex("kheight"), -1);
    EXPECT_EQ(LxSheen_ParameterIndex(""), -1);
    EXPECT_EQ(LxSheen_ParameterIndex(nullptr), -1);
    EXPECT_EQ(LxSheen_ParameterKey(76), nullptr);
}

TEST(SheenExtras, DefaultsAreANewLayersValues) {
    const Sheen sheen = make(4);
    for (uint32_t i = 0; i < 76; ++i)
        EXPECT_EQ(LxSheen_ParameterDefault(i), LxSheen_LayerValue(sheen.get(), 0, i)) << i;
    EXPECT_EQ(LxSheen_ParameterDefault(76), 0.0);
}

// ---- Layers ----

TEST(SheenExtras, ANewLayerAddsItsHeightAtFullOpacity) {
    const Sheen sheen = make(4);
    EXPECT_EQ(LxSheen_LayerMode(sheen.get(), 0), kLxSheenAdd);
    EXPECT_EQ(LxSheen_LayerOpacity(sheen.get(), 0), 1.0);
    EXPECT_EQ(LxSheen_isLayerEnabled(sheen.get(), 0), 1);
    const LxRGBA color = LxSheen_LayerColor(sheen.get(), 0);
    EXPECT_TRUE(color.r == 255 && color.g == 255 && color.b == 255 && color.a == 255);
}

TEST(SheenExtras, ALayersValuesBelongToTheCurrentDescriptor) {
    const Sheen sheen = make(4);
    LxSheen_AddLayer(sheen.get(), "second");
    LxSheen_SetCurrentLayer(sheen.get(), 1);
    LxSheen_SetCurrentDescriptor(sheen.get(), 1);
    EXPECT_EQ(LxSheen_SetLayerMode(sheen.get(), -1, kLxSheenLarger), 1) << "the current layer";
    EXPECT_EQ(LxSheen_SetLayerOpacity(sheen.get(), 1, 0.25), 1);
    EXPECT_EQ(LxSheen_SetLayerEnabled(sheen.get(), 1, 0), 1);
    LxSheen_SetLayerColor(sheen.get(), 1, LxRGBA{1, 2, 3, 4});
    EXPECT_EQ(LxSheen_LayerMode(sheen.get(), 1), kLxSheenLarger);
    EXPECT_EQ(LxSheen_LayerOpacity(sheen.get(), 1), 0.25);
    EXPECT_EQ(LxSheen_isLayerEnabled(sheen.get(), 1), 0);
    EXPECT_EQ(LxSheen_LayerColor(sheen.get(), 1).g, 2);
    EXPECT_EQ(LxSheen_LayerMode(sheen.get(), 0), kLxSheenAdd);
    LxSheen_SetCurrentDescriptor(sheen.get(), 0);
    EXPECT_EQ(LxSheen_LayerMode(sheen.get(), 1), kLxSheenAdd);
    EXPECT_EQ(LxSheen_LayerOpacity(sheen.get(), 1), 1.0);
    EXPECT_EQ(LxSheen_isLayerEnabled(sheen.get(), 1), 1);
}

TEST(SheenExtras, ALayersModeShowsInTheHeights) {
    // Two equal plateaus: their middle is 0.4 + 0.4, 0.4 - 0.4, 0.4 * 0.4, 0.4.
    const Sheen sheen = make(16);
    LxSheen_AddLayer(sheen.get(), "second");
    for (int32_t layer = 0; layer < 2; ++layer)
        LxSheen_SetLayerValue(sheen.get(), layer, kLxSheenHeight, 0.4);
    const auto middle = [&] {
        LxSheen_RenderDescriptor(sheen.get(), 0, 1);
        return *static_cast<const float *>(LxImage_ConstPointer(LxSheen_FloatImage(sheen.get()), 8, 8));
    };
    EXPECT_FLOAT_EQ(middle(), 0.8f);
    LxSheen_SetLayerMode(sheen.get(), 1, kLxSheenSubtract);
    EXPECT_FLOAT_EQ(middle(), 0.0f);
    LxSheen_SetLayerMode(sheen.get(), 1, kLxSheenMultiply);
    EXPECT_FLOAT_EQ(middle(), 0.16f);
    LxSheen_SetLayerMode(sheen.get(), 1, kLxSheenSmaller);
    EXPECT_FLOAT_EQ(middle(), 0.4f);
    LxSheen_SetLayerMode(sheen.get(), 1, kLxSheenAdd);
    LxSheen_SetLayerEnabled(sheen.get(), 1, 0);
    EXPECT_FLOAT_EQ(middle(), 0.4f) << "left out";
    LxSheen_SetLayerEnabled(sheen.get(), 1, 5);
    EXPECT_FLOAT_EQ(middle(), 0.8f) << "on again";
}

TEST(SheenExtras, WhatIsOutOfRangeIsRefused) {
    const Sheen sheen = make(4);
    EXPECT_EQ(LxSheen_SetLayerMode(sheen.get(), 0, 12), 0);
    EXPECT_EQ(LxSheen_SetLayerMode(sheen.get(), 0, UINT32_MAX), 0);
    EXPECT_EQ(LxSheen_LayerMode(sheen.get(), 0), kLxSheenAdd);
    for (const double opacity : {-0.1, 1.1, double(NAN), double(INFINITY)})
        EXPECT_EQ(LxSheen_SetLayerOpacity(sheen.get(), 0, opacity), 0);
    EXPECT_EQ(LxSheen_LayerOpacity(sheen.get(), 0), 1.0);
    for (const int32_t layer : {1, INT32_MAX}) {
        EXPECT_EQ(LxSheen_SetLayerMode(sheen.get(), layer, 0), 0);
        EXPECT_EQ(LxSheen_SetLayerOpacity(sheen.get(), layer, 1.0), 0);
        EXPECT_EQ(LxSheen_SetLayerEnabled(sheen.get(), layer, 1), 0);
        EXPECT_EQ(LxSheen_LayerMode(sheen.get(), layer), 0u);
        EXPECT_EQ(LxSheen_LayerOpacity(sheen.get(), layer), 0.0);
        EXPECT_EQ(LxSheen_isLayerEnabled(sheen.get(), layer), 0);
        EXPECT_EQ(LxSheen_LayerColor(sheen.get(), layer).a, 0);
    }
    EXPECT_EQ(LxSheen_SetLayerMode(nullptr, 0, 0), 0);
    EXPECT_EQ(LxSheen_SetLayerOpacity(nullptr, 0, 1.0), 0);
    EXPECT_EQ(LxSheen_SetLayerEnabled(nullptr, 0, 1), 0);
    EXPECT_EQ(LxSheen_isLayerEnabled(nullptr, 0), 0);
}

// ---- Light ----

TEST(SheenExtras, TheLightIsTheDescriptorsOwn) {
    const Sheen sheen = make(32);
    LxSheenLight light = LxSheen_Light(sheen.get(), 1);
    EXPECT_EQ(light.azimuth, 2.356194490192345);
    EXPECT_EQ(light.width, 255.0);
    EXPECT_EQ(light.shadowOpacity, 130);
    light.brilliance = 0.0;
    light.ambient = 0.5;
    EXPECT_EQ(LxSheen_SetLight(sheen.get(), 1, light), 1);
    EXPECT_EQ(LxSheen_SetAlphaThreshold(sheen.get(), 1, 2.0), 1);
    EXPECT_EQ(LxSheen_Light(sheen.get(), 1).ambient, 0.5);
    EXPECT_EQ(LxSheen_Light(sheen.get(), 0).ambient, 0.20000000298023224);
    EXPECT_EQ(LxSheen_AlphaThreshold(sheen.get(), 0), 0.009999999776482582);
    const auto middle = [&](uint32_t descriptor) {
        return *static_cast<LxRGBA *>(
            LxImage_Pointer(LxSheen_RenderDescriptor(sheen.get(), descriptor, 1), 16, 16));
    };
    EXPECT_EQ(middle(1).a, 0) << "no height reaches 2";
    EXPECT_EQ(LxSheen_SetAlphaThreshold(sheen.get(), 1, 0.25), 1);
    EXPECT_EQ(middle(1).r, 127) << "half of white: only ambient light";
    EXPECT_EQ(middle(0).r, 180) << "the sine of 45 degrees";
}

TEST(SheenExtras, ALightThatIsNotFiniteIsRefused) {
    const Sheen sheen = make(8);
    double LxSheenLight::*const fields[] = {&LxSheenLight::azimuth,      &LxSheenLight::elevation,
                                            &LxSheenLight::width,        &LxSheenLight::ambient,
                                            &LxSheenLight::brilliance,   &LxSheenLight::shadowSoftness,
                                            &LxSheenLight::shadowLength, &LxSheenLight::shadowDisplacement};
    for (double LxSheenLight::*const field : fields)
        for (const double number : {double(NAN), double(INFINITY)}) {
            LxSheenLight light = LxSheen_Light(sheen.get(), 0);
            light.*field = number;
            EXPECT_EQ(LxSheen_SetLight(sheen.get(), 0, light), 0);
            EXPECT_TRUE(std::isfinite(LxSheen_Light(sheen.get(), 0).*field));
        }
    EXPECT_EQ(LxSheen_SetAlphaThreshold(sheen.get(), 0, NAN), 0);
    EXPECT_EQ(LxSheen_SetLight(sheen.get(), 2, LxSheen_Light(sheen.get(), 0)), 0);
    EXPECT_EQ(LxSheen_SetLight(nullptr, 0, LxSheen_Light(sheen.get(), 0)), 0);
    EXPECT_EQ(LxSheen_SetAlphaThreshold(sheen.get(), 2, 0.5), 0);
    EXPECT_EQ(LxSheen_Light(sheen.get(), 2).width, 0.0);
    EXPECT_EQ(LxSheen_Light(nullptr, 0).width, 0.0);
    EXPECT_EQ(LxSheen_AlphaThreshold(nullptr, 0), 0.0);
}

TEST(SheenExtras, AnyFiniteLightIsSafe) {
    Random random;
    const Sheen sheen = make(12);
    for (int round = 0; round < 300; ++round) {
        LxSheenLight light = LxSheen_Light(sheen.get(), 0);
        light.azimuth = random.anyReal();
        light.elevation = random.anyReal();
        light.width = random.anyReal();
        light.ambient = random.anyReal();
        light.brilliance = random.anyReal();
        light.shadowDisplacement = random.coin() ? random.real(-50, 50) : 1e300;
        LxSheen_SetLight(sheen.get(), 0, light);
        LxSheen_RenderDescriptor(sheen.get(), 0, 1);
    }
}

// ---- Between two descriptors ----

TEST(SheenExtras, BetweenTwoDescriptorsLiesTheInterpolatingConstructorsResult) {
    Random random;
    const Sheen sheen = make(24);
    LxSheen_AddLayer(sheen.get(), "second");
    for (LxSheenDescriptor &descriptor : sheen->descriptors)
        for (LxSheenLayer &layer : descriptor.layers)
            randomize(layer, random);
    LxSheen_SetLayerMode(sheen.get(), 1, kLxSheenLarger);
    LxSheenDescriptor expected(0.3, sheen->descriptors[0], sheen->descriptors[1]);
    ASSERT_EQ(expected.Render(), 1);
    const Sheen between(LxSheen_CreateBetween(0.3, sheen.get(), 0, sheen.get(), 1));
    EXPECT_EQ(LxSheen_Size(between.get()), 24);
    EXPECT_EQ(LxSheen_Image(between.get()), nullptr) << "not rendered yet";
    for (const uint32_t descriptor : {0u, 1u}) {
        LxSheen_SetCurrentDescriptor(between.get(), descriptor);
        EXPECT_STREQ(LxSheen_LayerName(between.get(), 1), "second");
        EXPECT_EQ(LxSheen_LayerMode(between.get(), 1), kLxSheenLarger);
        const LxImage *image = LxSheen_RenderDescriptor(between.get(), descriptor, 1);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(pixels(image), pixels(expected.image.get()));
    }
}

TEST(SheenExtras, BetweenTwoObjectsTheFirstTellsSizeAndNames) {
    const Sheen a = make(10);
    const Sheen b = make(20);
    LxSheen_SetLayerName(a.get(), 0, "from a");
    LxSheen_AddLayer(a.get(), "only in a");
    LxSheen_SetLayerValue(b.get(), 0, kLxSheenHeight, 0.0);
    const double height = LxSheen_LayerValue(a.get(), 0, kLxSheenHeight);
    const Sheen between(LxSheen_CreateBetween(0.5, a.get(), 0, b.get(), 1));
    EXPECT_EQ(LxSheen_LayerValue(between.get(), 0, kLxSheenHeight), height)
        << "descriptor 1 of b is not changed";
    const Sheen half(LxSheen_CreateBetween(0.5, a.get(), 0, b.get(), 0));
    EXPECT_EQ(LxSheen_LayerValue(half.get(), 0, kLxSheenHeight), height / 2);
    EXPECT_EQ(LxSheen_Size(half.get()), 10);
    EXPECT_STREQ(LxSheen_LayerName(half.get(), 0), "from a");
    EXPECT_STREQ(LxSheen_LayerName(half.get(), 1), "only in a");
    const Sheen beyond(LxSheen_CreateBetween(7.0, a.get(), 0, b.get(), 0));
    EXPECT_EQ(LxSheen_LayerValue(beyond.get(), 0, kLxSheenHeight), 0.0) << "held to 1";
}

TEST(SheenExtras, BetweenNothingThereIsNothing) {
    const Sheen sheen = make(4);
    EXPECT_EQ(LxSheen_CreateBetween(0.5, nullptr, 0, sheen.get(), 0), nullptr);
    EXPECT_EQ(LxSheen_CreateBetween(0.5, sheen.get(), 0, nullptr, 0), nullptr);
    EXPECT_EQ(LxSheen_CreateBetween(0.5, sheen.get(), 2, sheen.get(), 0), nullptr);
    EXPECT_EQ(LxSheen_CreateBetween(0.5, sheen.get(), 0, sheen.get(), 2), nullptr);
    EXPECT_EQ(LxSheen_CreateBetween(NAN, sheen.get(), 0, sheen.get(), 1), nullptr);
}

// ---- Presets ----

TEST(SheenExtras, APresetReplacesLayersAndLightOfOneDescriptor) {
    const Sheen sheen = make(16);
    EXPECT_EQ(
        load(sheen, 1, "[light]\nambient = 0.75\n[layer one]\nkSymmetry = 5\n[layer two]\nopacity = 0.5\n"),
        1);
    EXPECT_EQ(LxSheen_NumberOfLayers(sheen.get()), 1) << "the other descriptor";
    EXPECT_EQ(LxSheen_Light(sheen.get(), 0).ambient, 0.20000000298023224);
    LxSheen_SetCurrentDescriptor(sheen.get(), 1);
    EXPECT_EQ(LxSheen_NumberOfLayers(sheen.get()), 2);
    EXPECT_STREQ(LxSheen_LayerName(sheen.get(), 0), "one");
    EXPECT_EQ(LxSheen_LayerValue(sheen.get(), 0, kLxSheenSymmetry), 5.0);
    EXPECT_EQ(LxSheen_LayerOpacity(sheen.get(), 1), 0.5);
    EXPECT_EQ(LxSheen_Light(sheen.get(), 1).ambient, 0.75);
    EXPECT_EQ(LxSheen_Size(sheen.get()), 16);
}

TEST(SheenExtras, LoadedPicturesAreThoseOfTheProgramsPresets) {
    for (const std::string name : {"gem", "screw", "stone"}) {
        std::ifstream file(std::string(OXLUME_PRESETS) + "/" + name + ".sheen", std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        LxSheenDescriptor expected(40, 40);
        readPreset(text, expected);
        expected.Render();
        const Sheen sheen = make(40);
        ASSERT_EQ(load(sheen, 0, text), 1);
        EXPECT_EQ(pixels(LxSheen_RenderDescriptor(sheen.get(), 0, 1)), pixels(expected.image.get())) << name;
    }
}

TEST(SheenExtras, APictureLivesOnThroughALoadAndTheNextRender) {
    const Sheen sheen = make(16);
    const LxImage *before = LxSheen_Image(sheen.get());
    const std::string content = pixels(before);
    EXPECT_EQ(load(sheen, 0, "[layer]\nkHeight = 0.2\ncolor = 1, 2, 3\n"), 1);
    EXPECT_EQ(LxSheen_Image(sheen.get()), before);
    EXPECT_NE(pixels(LxSheen_RenderDescriptor(sheen.get(), 0, 1)), content);
    EXPECT_EQ(pixels(before), content);
}

TEST(SheenExtras, WhatIsStoredLoadsAsTheSame) {
    const Sheen sheen = make(8);
    const std::string text =
        "[light]\nwidth = 100\n\n[layer a b]\ncolor = 1, 2, 3, 4\nmode = larger\nopacity = 0.5\n"
        "enabled = no\nkHeight = 0.125\n\n[layer]\ncolor = 255, 255, 255\n";
    ASSERT_EQ(load(sheen, 1, text), 1);
    EXPECT_EQ(stored(sheen, 1), text);
    EXPECT_EQ(stored(sheen, 0), "[layer no name]\ncolor = 255, 255, 255\n");
    EXPECT_EQ(LxSheen_CreatePreset(sheen.get(), 2), nullptr);
    EXPECT_EQ(LxSheen_CreatePreset(nullptr, 0), nullptr);
}

TEST(SheenExtras, WhatCannotBeReadChangesNothingAndIsToldWithItsLine) {
    const Sheen sheen = make(8);
    LxSheen_SetLayerValue(sheen.get(), 0, kLxSheenHeight, 0.5);
    const std::string before = stored(sheen, 0);
    EXPECT_EQ(complaint(sheen, "[layer x]\nkHeight = 1\nkHeigth = 2"),
              "line 3: unknown parameter \"kHeigth\"; the nearest is \"kHeight\"");
    EXPECT_EQ(complaint(sheen, ""), "no [layer NAME]");
    EXPECT_EQ(stored(sheen, 0), before);
    EXPECT_EQ(complaint(sheen, "[layer]"), "");
    EXPECT_EQ(LxSheen_LoadPreset(sheen.get(), 0, nullptr, 0, nullptr, 0), 0);
    EXPECT_EQ(LxSheen_LoadPreset(sheen.get(), 2, "[layer]", 7, nullptr, 0), 0);
    EXPECT_EQ(LxSheen_LoadPreset(nullptr, 0, "[layer]", 7, nullptr, 0), 0);
}

TEST(SheenExtras, AMessageIsCutToItsRoom) {
    const Sheen sheen = make(8);
    char message[8] = "1234567";
    EXPECT_EQ(LxSheen_LoadPreset(sheen.get(), 0, "x", 1, message, 5), 0);
    EXPECT_STREQ(message, "line");
    EXPECT_EQ(message[5], '6');
    EXPECT_EQ(LxSheen_LoadPreset(sheen.get(), 0, "x", 1, message, 0), 0);
    EXPECT_STREQ(message, "line");
}

TEST(SheenExtras, NoByteBehindAPresetIsRead) {
    const Sheen sheen = make(8);
    const std::string text = "[layer a]\nkHeight = 1";
    const std::vector<char> bytes(text.begin(), text.end());
    EXPECT_EQ(LxSheen_LoadPreset(sheen.get(), 0, bytes.data(), bytes.size(), nullptr, 0), 1);
    EXPECT_EQ(LxSheen_LoadPreset(sheen.get(), 0, "[layer a]\nkHeight = 1x", text.size(), nullptr, 0), 1);
}
