#include "sheen/Preset.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/sheen/Surfaces.h"

using namespace lx;

namespace {

LxSheenDescriptor read(std::string_view text) {
    LxSheenDescriptor descriptor(8, 8);
    readPreset(text, descriptor);
    return descriptor;
}

std::string complaint(std::string_view text) {
    try {
        read(text);
    } catch (const PresetError &error) {
        return error.what();
    }
    return "no complaint";
}

std::vector<std::filesystem::path> presetFiles() {
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(OXLUME_PRESETS)) {
        if (entry.path().extension() == ".sheen")
            files.push_back(entry.path());
    }
    return files;
}

std::string contentOf(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool hasEffect(uint32_t index) {
    static const std::set<uint32_t> without = {kElevationDirection, kVertSheerShape,   kHorSheerShape,
                                               kVertPerspectShape,  kHorPerspectShape, kProfileType};
    return index < kAlphaBlur && without.count(index) == 0;
}

} // namespace

TEST(Preset, ReadsLayersAndLight) {
    const LxSheenDescriptor d =
        read("# comment\n\n[light]\r\nwidth = 100\nalphaThreshold=0.5\n[layer  big one ]\n"
             "color = 1, 2,3\nmode = larger\nopacity = .5\nenabled = no\nkSymmetry = 5\n"
             "kHeight=1e-1\n[layer]\nmode = 77\ncolor = 9,8,7,6\n");
    ASSERT_EQ(d.LayerCount(), 2);
    EXPECT_EQ(d.light.width, 100.0);
    EXPECT_EQ(d.alphaThreshold, 0.5);
    const LxSheenLayer &layer = d.layers[0];
    EXPECT_EQ(layer.name, "big one");
    EXPECT_EQ(layer.color.g, 2);
    EXPECT_EQ(layer.color.a, 255);
    EXPECT_EQ(layer.compositeMode, 4u);
    EXPECT_EQ(layer.opacity, 0.5);
    EXPECT_FALSE(layer.isEnabled());
    EXPECT_EQ(layer.Value(kSymmetry), 5.0);
    EXPECT_EQ(layer.Value(kHeight), 0.1);
    EXPECT_EQ(d.layers[1].name, "");
    EXPECT_EQ(d.layers[1].compositeMode, 77u);
    EXPECT_EQ(d.layers[1].color.a, 6);
}

TEST(Preset, ANameEndsAtAZeroByteAndIsTrimmedThere) {
    using namespace std::string_literals;
    LxSheenDescriptor d(4, 4), back(4, 4);
    readPreset("[layer middle \0 petals]\n"s, d);
    EXPECT_EQ(d.layers[0].name, "middle");
    readPreset(writePreset(d), back);
    EXPECT_EQ(back.layers[0].name, "middle");
}

TEST(Preset, NamesTheLineTheCulpritAndTheNearestKey) {
    EXPECT_EQ(complaint("[layer]\nkHeigth = 1\n"),
              "line 2: unknown parameter \"kHeigth\"; the nearest is \"kHeight\"");
    EXPECT_EQ(complaint("[layer]\nmode = ad\n"), "line 2: unknown mode \"ad\"; the nearest is \"add\"");
    EXPECT_EQ(complaint("[light]\nwith = 1\n"),
              "line 2: unknown setting of the light \"with\"; the nearest is \"width\"");
    EXPECT_EQ(complaint("[layer]\n\nkHeight = high\n"), "line 3: kHeight: not a number: \"high\"");
    EXPECT_EQ(complaint("[layer]\nkHeight = 1,5\n"), "line 2: kHeight: not a number: \"1,5\"");
    EXPECT_EQ(complaint("[layer]\nkHeight\n"), "line 2: neither a section nor a setting: \"kHeight\"");
    EXPECT_EQ(complaint("kHeight = 1\n"), "line 1: a setting before the first section: \"kHeight\"");
    EXPECT_EQ(complaint("[layers]\n"), "line 1: neither [light] nor [layer NAME]: \"[layers]\"");
    EXPECT_EQ(complaint("[layer\n"), "line 1: neither [light] nor [layer NAME]: \"[layer\"");
    EXPECT_EQ(complaint("[\n"), "line 1: neither [light] nor [layer NAME]: \"[\"");
    EXPECT_EQ(complaint("[layer]\ncolor = 1, 2\n"),
              "line 2: color: not three or four numbers from 0 to 255: \"1, 2\"");
    EXPECT_EQ(complaint("[layer]\ncolor = 1, 2, 256\n"),
              "line 2: color: not three or four numbers from 0 to 255: \"1, 2, 256\"");
    EXPECT_EQ(complaint("[layer]\nenabled = maybe\n"), "line 2: enabled: neither yes nor no: \"maybe\"");
    EXPECT_EQ(complaint(""), "no [layer NAME]");
}

TEST(Preset, WhatIsWrittenReadsBack) {
    lx::test::Random random(51);
    for (int round = 0; round < 200; ++round) {
        LxSheenDescriptor d(8, 8);
        for (int i = random.integer(1, 3); i > 0; --i) {
            LxSheenLayer layer(random.coin() ? "some name" : "");
            randomize(layer, random);
            layer.color = {random.byte(), random.byte(), random.byte(), random.byte()};
            layer.compositeMode = random.word() % 14;
            layer.opacity = random.real(0, 1);
            layer.setEnabled(random.coin());
            d.AddLayer(layer);
        }
        d.light.width = random.coin() ? random.real(1, 300) : d.light.width;
        d.alphaThreshold = random.coin() ? random.real(0, 1) : d.alphaThreshold;
        const std::string text = writePreset(d);
        const LxSheenDescriptor back = read(text);
        ASSERT_EQ(writePreset(back), text);
        ASSERT_EQ(back.LayerCount(), d.LayerCount());
        EXPECT_EQ(back.light.width, d.light.width);
        EXPECT_EQ(back.alphaThreshold, d.alphaThreshold);
        for (size_t i = 0; i < d.layers.size(); ++i) {
            EXPECT_EQ(back.layers[i].name, d.layers[i].name);
            EXPECT_EQ(back.layers[i].compositeMode, d.layers[i].compositeMode);
            EXPECT_EQ(back.layers[i].opacity, d.layers[i].opacity);
            EXPECT_EQ(back.layers[i].isEnabled(), d.layers[i].isEnabled());
            EXPECT_EQ(back.layers[i].color.a, d.layers[i].color.a);
            for (uint32_t k = 0; k < kSheenParameterCount; ++k)
                ASSERT_EQ(back.layers[i].Value(k), d.layers[i].Value(k)) << sheenParameters[k].key;
        }
    }
}

TEST(Preset, AZeroKeepsItsSign) {
    LxSheenDescriptor d(8, 8);
    LxSheenLayer layer("a");
    layer.SetValue(kSwirl, -0.0);
    d.AddLayer(layer);
    EXPECT_TRUE(std::signbit(read(writePreset(d)).layers[0].Value(kSwirl)));
}

TEST(Preset, NamesValuesBeyondTheirLimits) {
    LxSheenDescriptor d = read("[layer a]\nkHeight = 2\nkSwirl = -11\nkInnerSize0 = 1\nkNoiseZoom = nan\n");
    const std::vector<std::string> expected = {"layer \"a\": kHeight = 2 lies beyond 0 to 1",
                                               "layer \"a\": kSwirl = -11 lies beyond -10 to 10",
                                               "layer \"a\": kNoiseZoom = nan lies beyond -1 to 1"};
    EXPECT_EQ(valuesBeyondLimits(d), expected);
    EXPECT_TRUE(valuesBeyondLimits(read("[layer]\n")).empty()) << "a default below its minimum is no warning";
}

TEST(Preset, AnyTextEndsInADescriptorOrAComplaint) {
    lx::test::Random random(52);
    const std::string whole = "[light]\nwidth = 1\n[layer a]\ncolor = 1,2,3\nmode = add\nkSymmetry = 3\n";
    for (int i = 0; i < 3000; ++i) {
        std::string broken = whole;
        for (int n = random.integer(1, 6); n > 0; --n)
            broken[random.word() % broken.size()] =
                static_cast<char>(random.coin() ? "[]=\n, "[random.word() % 6] : random.byte());
        complaint(broken);
    }
}

TEST(Presets, AllReadAndDraw) {
    EXPECT_GE(presetFiles().size(), 24u);
    for (const std::filesystem::path &file : presetFiles()) {
        LxSheenDescriptor d(96, 96);
        ASSERT_NO_THROW(readPreset(contentOf(file), d)) << file;
        ASSERT_EQ(d.Render(), 1) << file;
        int opaque = 0;
        for (int i = 0; i < 96 * 96; ++i)
            opaque += reinterpret_cast<const LxRGBA *>(rowAddress(*d.image, i / 96))[i % 96].a == 255;
        EXPECT_GT(opaque, 96 * 96 / 20) << file << " is all but empty";
    }
}

TEST(Presets, EveryParameterWithAnEffectIsUsed) {
    std::set<uint32_t> used;
    for (const std::filesystem::path &file : presetFiles()) {
        const LxSheenDescriptor d = read(contentOf(file));
        for (const LxSheenLayer &layer : d.layers) {
            for (uint32_t i = 0; i < kSheenParameterCount; ++i) {
                if (layer.Value(i) != sheenParameters[i].defaultValue)
                    used.insert(i);
            }
        }
    }
    for (uint32_t i = 0; i < kSheenParameterCount; ++i) {
        if (hasEffect(i)) {
            EXPECT_EQ(used.count(i), 1u) << sheenParameters[i].key;
        }
    }
}

TEST(Preset, TooLongATextAndTooManyLayersAreRefused) {
    std::string text = "[layer]\n";
    text.resize(maxPresetBytes, '\n');
    EXPECT_EQ(complaint(text), "no complaint");
    text += '\n';
    EXPECT_EQ(complaint(text), "longer than 1048576 bytes");
    std::string layers;
    for (int i = 0; i < maxPresetLayers; ++i)
        layers += "[layer]\n";
    EXPECT_EQ(complaint(layers), "no complaint");
    EXPECT_EQ(complaint(layers + "[layer]\n"), "line 257: more than 256 layers");
}

TEST(Preset, ALongWordIsCutShortInTheMessage) {
    EXPECT_EQ(complaint("[layer]\n" + std::string(100000, 'x') + " = 1"),
              "line 2: unknown parameter \"" + std::string(80, 'x') + "...\"");
}
