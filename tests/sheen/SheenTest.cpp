#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <oxlume/LxSheen.h>

#include "sheen/Parameters.h"
#include "tests/support/Random.h"

using namespace lx;

namespace {

struct DeleteSheen {
    void operator()(LxSheen *sheen) const { LxSheen_Delete(sheen); }
};
using Sheen = std::unique_ptr<LxSheen, DeleteSheen>;

Sheen make(int32_t size) {
    return Sheen(LxSheen_Create(size));
}

LxRGBA pixel(const LxImage *image, int32_t x, int32_t y) {
    LxColor color = {};
    LxImage_PixelAt(image, x, y, &color);
    return color.content.rgba;
}

} // namespace

TEST(Sheen, ANewOneHasALayerAndAPicture) {
    const Sheen sheen = make(64);
    for (const uint32_t descriptor : {1u, 0u}) {
        LxSheen_SetCurrentDescriptor(sheen.get(), descriptor);
        EXPECT_EQ(LxSheen_NumberOfLayers(sheen.get()), 1);
        EXPECT_STREQ(LxSheen_LayerName(sheen.get(), 0), "no name");
        ASSERT_NE(LxSheen_Image(sheen.get()), nullptr);
        EXPECT_EQ(LxImage_w(LxSheen_Image(sheen.get())), 64);
        EXPECT_EQ(LxImage_h(LxSheen_Image(sheen.get())), 64);
        EXPECT_EQ(LxImage_Type(LxSheen_Image(sheen.get())), kLxPixelRGBA);
        EXPECT_EQ(LxImage_Type(LxSheen_FloatImage(sheen.get())), kLxPixelF);
    }
    EXPECT_EQ(LxSheen_Size(sheen.get()), 64);
    EXPECT_EQ(LxSheen_Scale(sheen.get()), 1.0);
    EXPECT_EQ(pixel(LxSheen_Image(sheen.get()), 32, 32).a, 255);
    EXPECT_EQ(pixel(LxSheen_Image(sheen.get()), 32, 32).r, 180) << "white at the sine of 45 degrees";
    EXPECT_EQ(pixel(LxSheen_Image(sheen.get()), 2, 2).a, 0);
}

TEST(Sheen, AnySizeIsTaken) {
    for (const int32_t size : {0, 1, 2, 3, -1, INT32_MIN, INT32_MAX, 60000}) {
        const Sheen sheen = make(size);
        ASSERT_NE(sheen, nullptr) << size;
        EXPECT_EQ(LxSheen_Size(sheen.get()), size);
        EXPECT_EQ(LxSheen_Scale(sheen.get()), size >= 1 ? 1.0 : 0.01);
        const bool drawn = size >= 1 && size <= 3;
        EXPECT_EQ(LxSheen_Image(sheen.get()) != nullptr, drawn) << size;
        EXPECT_EQ(LxSheen_RenderDescriptor(sheen.get(), 0, 1) != nullptr, drawn) << size;
    }
    const Sheen two = make(2);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(pixel(LxSheen_Image(two.get()), i % 2, i / 2).a, 0) << "transparent";
}

TEST(Sheen, AddedLayersLandInBothDescriptors) {
    const Sheen sheen = make(8);
    EXPECT_EQ(LxSheen_AddLayer(sheen.get(), "one"), 1);
    EXPECT_EQ(LxSheen_AddLayer(sheen.get(), nullptr), 2);
    EXPECT_EQ(LxSheen_CurrentLayer(sheen.get()), 2) << "the descriptor's own";
    EXPECT_STREQ(LxSheen_LayerName(sheen.get(), -1), "no name") << "the object's stays";
    LxSheen_SetCurrentDescriptor(sheen.get(), 1);
    EXPECT_EQ(LxSheen_NumberOfLayers(sheen.get()), 3);
    EXPECT_STREQ(LxSheen_LayerName(sheen.get(), 1), "one");
    EXPECT_STREQ(LxSheen_LayerName(sheen.get(), 2), "");
}

TEST(Sheen, RemoveLayerRemovesNothing) {
    const Sheen sheen = make(8);
    LxSheen_AddLayer(sheen.get(), "one");
    EXPECT_NE(LxSheen_RemoveLayer(sheen.get(), 1), nullptr);
    EXPECT_EQ(LxSheen_RemoveLayer(sheen.get(), 2), nullptr);
    EXPECT_EQ(LxSheen_RemoveLayer(sheen.get(), -1), nullptr);
    EXPECT_EQ(LxSheen_NumberOfLayers(sheen.get()), 2);
}

TEST(Sheen, CurrentDescriptorIsBelowTwo) {
    const Sheen sheen = make(8);
    LxSheen_SetCurrentDescriptor(sheen.get(), 1);
    LxSheen_SetCurrentDescriptor(sheen.get(), 2);
    LxSheen_SetCurrentDescriptor(sheen.get(), 0xffffffffu);
    EXPECT_EQ(LxSheen_CurrentDescriptor(sheen.get()), 1u);
}

TEST(Sheen, CurrentLayerIsThatOfTheFirstDescriptor) {
    const Sheen sheen = make(8);
    LxSheen_AddLayer(sheen.get(), "one");
    LxSheen_SetCurrentDescriptor(sheen.get(), 1);
    EXPECT_EQ(LxSheen_SetCurrentLayer(sheen.get(), 0), 0);
    EXPECT_EQ(LxSheen_CurrentLayer(sheen.get()), 1);
    EXPECT_EQ(LxSheen_SetCurrentLayer(sheen.get(), 1), 1);
    EXPECT_STREQ(LxSheen_LayerName(sheen.get(), -1), "one");
    EXPECT_EQ(LxSheen_SetCurrentLayer(sheen.get(), 9), 1) << "ignored";
    EXPECT_EQ(LxSheen_SetCurrentLayer(sheen.get(), -1), 1) << "ignored";
}

TEST(Sheen, ValuesBelongToTheCurrentDescriptor) {
    const Sheen sheen = make(8);
    LxSheen_SetCurrentDescriptor(sheen.get(), 1);
    LxSheen_SetLayerValue(sheen.get(), 0, kHeight, 0.75);
    EXPECT_EQ(LxSheen_LayerValue(sheen.get(), -1, kHeight), 0.75);
    LxSheen_SetCurrentDescriptor(sheen.get(), 0);
    EXPECT_EQ(LxSheen_LayerValue(sheen.get(), 0, kHeight), 0.5);
}

TEST(Sheen, ParametersReportHeldValuesAndTheirRows) {
    const Sheen sheen = make(8);
    LxSheen_SetLayerValue(sheen.get(), 0, kHeight, 100.0);
    EXPECT_EQ(LxSheen_LayerValue(sheen.get(), 0, kHeight), 100.0);
    double value = -1, minimum = -1, maximum = -1;
    int32_t continuous = -1;
    EXPECT_STREQ(
        LxSheen_LayerValueParameter(sheen.get(), 0, kHeight, &value, &minimum, &maximum, &continuous),
        "Depth");
    EXPECT_EQ(value, 1.0);
    EXPECT_EQ(minimum, 0.0);
    EXPECT_EQ(maximum, 1.0);
    EXPECT_EQ(continuous, 1);
    EXPECT_STREQ(
        LxSheen_LayerValueParameter(sheen.get(), -1, kProfilePar3, &value, &minimum, &maximum, &continuous),
        "Profile Steps");
    EXPECT_EQ(value, 1.0) << "the default of 0 lies below the minimum";
    EXPECT_EQ(maximum, 32.0);
    EXPECT_EQ(continuous, 0);
    value = -1;
    EXPECT_EQ(LxSheen_LayerValueParameter(sheen.get(), 1, 0, &value, &minimum, &maximum, &continuous),
              nullptr);
    EXPECT_EQ(LxSheen_LayerValueParameter(sheen.get(), 0, 76, &value, &minimum, &maximum, &continuous),
              nullptr);
    EXPECT_EQ(value, -1.0) << "nothing stored";
    EXPECT_STREQ(LxSheen_LayerValueParameter(sheen.get(), 0, 0, nullptr, nullptr, nullptr, nullptr),
                 "Angular Symmetry");
}

TEST(Sheen, NamesAreCopied) {
    const Sheen sheen = make(8);
    std::string name = "a name longer than any small string is";
    LxSheen_SetLayerName(sheen.get(), 0, name.c_str());
    name.clear();
    EXPECT_STREQ(LxSheen_LayerName(sheen.get(), 0), "a name longer than any small string is");
    LxSheen_SetLayerName(sheen.get(), 0, nullptr);
    EXPECT_STREQ(LxSheen_LayerName(sheen.get(), 0), "");
}

TEST(Sheen, AColourShowsAtTheNextRender) {
    const Sheen sheen = make(32);
    LxSheen_SetLayerColor(sheen.get(), 0, {200, 0, 0, 255});
    LxImage *old = LxSheen_RenderDescriptor(sheen.get(), 0, 0);
    EXPECT_EQ(old, LxSheen_Image(sheen.get()));
    EXPECT_EQ(pixel(old, 16, 16).g, 180) << "no work without the flag";
    LxImage *lit = LxSheen_RenderDescriptor(sheen.get(), 0, 1);
    EXPECT_EQ(pixel(lit, 16, 16).g, 0);
    EXPECT_EQ(pixel(lit, 16, 16).r, 141);
    EXPECT_EQ(pixel(old, 16, 16).g, 180) << "the replaced picture stays as it was";
    EXPECT_EQ(LxSheen_RenderDescriptor(sheen.get(), 2, 1), nullptr);
}

TEST(Sheen, SizeOverwritesTheScale) {
    const Sheen sheen = make(8);
    LxSheen_SetScale(sheen.get(), 0.001);
    EXPECT_EQ(LxSheen_Scale(sheen.get()), 0.01);
    LxSheen_SetScale(sheen.get(), 5.0);
    EXPECT_EQ(LxSheen_Scale(sheen.get()), 1.0);
    LxSheen_SetScale(sheen.get(), 0.5);
    EXPECT_EQ(LxSheen_Scale(sheen.get()), 0.5);
    LxSheen_SetSize(sheen.get(), 10);
    EXPECT_EQ(LxSheen_Scale(sheen.get()), 1.0);
    EXPECT_EQ(LxSheen_Size(sheen.get()), 10);
    EXPECT_EQ(LxImage_w(LxSheen_Image(sheen.get())), 10);
    LxSheen_SetSize(sheen.get(), 0);
    EXPECT_EQ(LxSheen_Scale(sheen.get()), 0.01);
    EXPECT_EQ(LxSheen_Image(sheen.get()), nullptr);
}

TEST(Sheen, InterpolationStepsSeedOnlyWhenTheStoreChanges) {
    const Sheen sheen = make(8);
    LxSheen_SetInterpolationStep(sheen.get(), 3);
    std::srand(5);
    const int first = std::rand();
    std::srand(5);
    LxSheen_SetInterpolationStep(sheen.get(), 3);
    EXPECT_EQ(std::rand(), first) << "the store was not touched, so nothing seeded";
    std::srand(5);
    LxSheen_SetInterpolationStep(sheen.get(), -3);
    EXPECT_EQ(std::rand(), first) << "an empty store makes no layer";
    std::srand(5);
    LxSheen_SetInterpolationStep(sheen.get(), 2);
    EXPECT_NE(std::rand(), first);
    LxSheen_SetInterpolationStep(sheen.get(), 5);
    LxSheen_SetSize(sheen.get(), 9);
    std::srand(5);
    LxSheen_SetInterpolationStep(sheen.get(), 0);
    EXPECT_EQ(std::rand(), first) << "a change of size empties the store";
}

TEST(Sheen, ANullObjectIsTakenEverywhere) {
    double value = 7;
    LxSheen_Delete(nullptr);
    EXPECT_EQ(LxSheen_AddLayer(nullptr, "a"), 0);
    EXPECT_EQ(LxSheen_RemoveLayer(nullptr, 0), nullptr);
    EXPECT_EQ(LxSheen_NumberOfLayers(nullptr), 0);
    LxSheen_SetCurrentDescriptor(nullptr, 1);
    EXPECT_EQ(LxSheen_CurrentDescriptor(nullptr), 0u);
    EXPECT_EQ(LxSheen_SetCurrentLayer(nullptr, 0), 0);
    EXPECT_EQ(LxSheen_CurrentLayer(nullptr), 0);
    LxSheen_SetLayerValue(nullptr, 0, 0, 1);
    EXPECT_EQ(LxSheen_LayerValue(nullptr, 0, 0), 0.0);
    EXPECT_EQ(LxSheen_LayerValueParameter(nullptr, 0, 0, &value, &value, &value, nullptr), nullptr);
    LxSheen_SetLayerColor(nullptr, 0, {1, 2, 3, 4});
    LxSheen_SetLayerName(nullptr, 0, "a");
    EXPECT_EQ(LxSheen_LayerName(nullptr, 0), nullptr);
    LxSheen_SetSize(nullptr, 5);
    EXPECT_EQ(LxSheen_Size(nullptr), 0);
    LxSheen_SetScale(nullptr, 1);
    EXPECT_EQ(LxSheen_Scale(nullptr), 0.0);
    LxSheen_SetInterpolationStep(nullptr, 4);
    EXPECT_EQ(LxSheen_RenderDescriptor(nullptr, 0, 1), nullptr);
    EXPECT_EQ(LxSheen_FloatImage(nullptr), nullptr);
    EXPECT_EQ(LxSheen_Image(nullptr), nullptr);
}

TEST(Sheen, LayersAndParametersOutOfRangeAreTaken) {
    const Sheen sheen = make(8);
    for (const int32_t layer : {1, 100, INT32_MAX}) {
        LxSheen_SetLayerValue(sheen.get(), layer, 0, 1.0);
        EXPECT_EQ(LxSheen_LayerValue(sheen.get(), layer, 0), 0.0);
        LxSheen_SetLayerColor(sheen.get(), layer, {1, 2, 3, 4});
        LxSheen_SetLayerName(sheen.get(), layer, "x");
        EXPECT_EQ(LxSheen_LayerName(sheen.get(), layer), nullptr);
    }
    for (const uint32_t parameter : {76u, 0xffffffffu}) {
        LxSheen_SetLayerValue(sheen.get(), 0, parameter, 1.0);
        EXPECT_EQ(LxSheen_LayerValue(sheen.get(), 0, parameter), 0.0);
    }
}

TEST(Sheen, AnyValuesEndInAPicture) {
    lx::test::Random random(41);
    const Sheen sheen = make(16);
    LxSheen_AddLayer(sheen.get(), "more");
    for (int round = 0; round < 2000; ++round) {
        for (int i = 0; i < 6; ++i) {
            LxSheen_SetLayerValue(sheen.get(), random.integer(0, 1), random.word() % kSheenParameterCount,
                                  random.anyReal());
        }
        ASSERT_NE(LxSheen_RenderDescriptor(sheen.get(), 0, 1), nullptr);
    }
}
