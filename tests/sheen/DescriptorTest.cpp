#include "sheen/Descriptor.h"

#include <cmath>
#include <cstring>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/Random.h"

using namespace lx;

namespace {

float heightAt(const ImageHandle &heights, int x, int y) {
    return reinterpret_cast<const float *>(rowAddress(*heights, y))[x];
}

LxRGBA colorAt(const ImageHandle &colors, int x, int y) {
    return reinterpret_cast<const LxRGBA *>(rowAddress(*colors, y))[x];
}

bool sameBytes(const ImageHandle &a, const ImageHandle &b) {
    return LxImage_DataSize(a.get()) == LxImage_DataSize(b.get()) &&
           std::memcmp(LxImage_Data(a.get()), LxImage_Data(b.get()),
                       static_cast<size_t>(LxImage_DataSize(a.get()))) == 0;
}

LxSheenLayer colored(LxRGBA color, uint32_t mode = compositeAdd) {
    LxSheenLayer layer;
    layer.color = color;
    layer.compositeMode = mode;
    return layer;
}

// A plateau over the whole picture.
LxSheenLayer sheet(double height, LxRGBA color, uint32_t mode = compositeAdd) {
    LxSheenLayer layer = colored(color, mode);
    layer.SetValue(kInnerSize0, 1.0);
    layer.SetValue(kInnerSize1, 1.0);
    layer.SetValue(kBorderSize0, 0.0);
    layer.SetValue(kBorderSize1, 0.0);
    layer.SetValue(kHeight, height);
    return layer;
}

constexpr LxRGBA red = {255, 0, 0, 255};
constexpr LxRGBA blue = {0, 0, 255, 255};

} // namespace

TEST(Layer, DefaultsOfANewOneAndOfAReset) {
    LxSheenLayer layer("rim");
    EXPECT_EQ(layer.name, "rim");
    EXPECT_TRUE(layer.isEnabled());
    EXPECT_EQ(layer.color.r, 255);
    EXPECT_EQ(layer.opacity, 1.0);
    layer.SetValue(kHeight, 0.9);
    layer.setEnabled(false);
    layer.opacity = 0.25;
    layer.compositeMode = 5;
    layer.bounds = {1, 2, 3, 4};
    layer.Reset();
    EXPECT_EQ(layer.Value(kHeight), 0.5);
    EXPECT_TRUE(layer.isEnabled());
    EXPECT_EQ(layer.opacity, 1.0);
    EXPECT_EQ(layer.compositeMode, 0u);
    EXPECT_EQ(layer.color.r, 128);
    EXPECT_EQ(layer.color.a, 255);
    EXPECT_EQ(layer.bounds.x1, 0.0);
    EXPECT_EQ(layer.name, "rim");
}

TEST(Layer, AssignmentCopiesAllButTheImage) {
    LxSheenLayer from("from");
    from.SetValue(kHeight, 0.75);
    from.links[3] = 9;
    from.color = red;
    from.opacity = 0.5;
    from.compositeMode = 4;
    from.reserved = 77;
    from.setEnabled(false);
    from.bounds = {1, 2, 3, 4};
    from.Prepare();
    from.image.reset(LxImage_Create(kLxPixelF, 0, 0, 4, 4, 1, 0));
    LxSheenLayer to;
    to.image.reset(LxImage_Create(kLxPixelF, 0, 0, 4, 4, 1, 0));
    to = from;
    EXPECT_EQ(to.image, nullptr);
    EXPECT_NE(from.image, nullptr);
    EXPECT_EQ(to.Value(kHeight), 0.75);
    EXPECT_EQ(to.links[3], 9u);
    EXPECT_TRUE(to.prepared);
    EXPECT_EQ(to.inner[0], from.inner[0]);
    EXPECT_EQ(to.name, "from");
    EXPECT_EQ(to.opacity, 0.5);
    EXPECT_EQ(to.compositeMode, 4u);
    EXPECT_EQ(to.reserved, 77u);
    EXPECT_FALSE(to.isEnabled());
    EXPECT_EQ(to.bounds.y1, 4.0);
    LxSheenLayer &self = from;
    from = self;
    EXPECT_NE(from.image, nullptr) << "assigning to itself does nothing";
}

TEST(Descriptor, Defaults) {
    const LxSheenDescriptor d(1, -5);
    EXPECT_EQ(d.width, 1);
    EXPECT_EQ(d.height, 1);
    EXPECT_EQ(d.currentLayer, -1);
    EXPECT_EQ(d.scale, 1.0);
    EXPECT_EQ(d.blurRadius, 2.75);
    EXPECT_EQ(d.blurEnabled, 0);
    EXPECT_EQ(d.alphaThreshold, 0.009999999776482582);
    EXPECT_EQ(d.light.azimuth, 2.356194490192345);
    EXPECT_EQ(d.light.elevation, 0.7853981633974483);
    EXPECT_EQ(d.light.ambient, 0.20000000298023224);
    EXPECT_EQ(d.light.shadowOpacity, 130);
    EXPECT_EQ(d.light.shadowStep, 5);
}

TEST(Descriptor, WithoutLayersARenderTouchesNothing) {
    LxSheenDescriptor d(16, 16);
    EXPECT_EQ(d.Render(), 1);
    EXPECT_EQ(d.image, nullptr);
    EXPECT_EQ(d.colorImage, nullptr);
}

TEST(Descriptor, ASingleLayerIsItsOwnComposite) {
    LxSheenDescriptor d(32, 32);
    d.AddLayer(colored(red));
    ASSERT_EQ(d.Render(), 1);
    EXPECT_TRUE(sameBytes(d.floatImage, d.Layer(0)->image));
    for (int i = 0; i < 32; ++i)
        EXPECT_EQ(colorAt(d.colorImage, i, 31 - i).r, 255) << "inside and outside the shape";
    EXPECT_EQ(LxImage_w(d.image.get()), 32);
    EXPECT_EQ(LxImage_isFlipped(d.image.get()), 0);
    EXPECT_EQ(LxImage_isFlipped(d.colorImage.get()), 1);
}

TEST(Descriptor, ASecondLayerPaintsWhereItRaises) {
    LxSheenDescriptor d(32, 32);
    d.AddLayer(sheet(0.25, red));
    d.AddLayer(colored(blue));
    ASSERT_EQ(d.Render(), 1);
    EXPECT_EQ(heightAt(d.floatImage, 16, 16), 0.75f);
    EXPECT_EQ(colorAt(d.colorImage, 16, 16).b, 255);
    EXPECT_EQ(heightAt(d.floatImage, 1, 1), 0.25f);
    EXPECT_EQ(colorAt(d.colorImage, 1, 1).r, 255);
}

// Colours belong to the heights at the same place, though the rows of one of the two images are flipped.
TEST(Descriptor, ColoursLieAtTheirHeights) {
    LxSheenDescriptor d(33, 33);
    d.AddLayer(sheet(0.25, red));
    LxSheenLayer spot = colored(blue);
    spot.SetValue(kCenter1, 0.25);
    spot.SetValue(kInnerSize0, 0.2);
    spot.SetValue(kInnerSize1, 0.2);
    d.AddLayer(spot);
    ASSERT_EQ(d.Render(), 1);
    LxColor color;
    ASSERT_EQ(LxImage_PixelAt(d.colorImage.get(), 16, 8, &color), 1);
    EXPECT_EQ(color.content.rgba.b, 255);
    ASSERT_EQ(LxImage_PixelAt(d.image.get(), 16, 8, &color), 1);
    EXPECT_EQ(color.content.rgba.r, 0);
    EXPECT_GT(color.content.rgba.b, 100);
    ASSERT_EQ(LxImage_PixelAt(d.image.get(), 16, 24, &color), 1);
    EXPECT_GT(color.content.rgba.r, 100);
}

TEST(Descriptor, OnlyDisabledLayersClearTheImages) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(sheet(0.5, red));
    ASSERT_EQ(d.Render(), 1);
    const LxImage *picture = d.image.get();
    d.Layer(0)->setEnabled(false);
    EXPECT_EQ(d.Render(), 0);
    EXPECT_EQ(d.image.get(), picture) << "cleared in place";
    EXPECT_EQ(colorAt(d.image, 8, 8).a, 0);
    EXPECT_EQ(heightAt(d.floatImage, 8, 8), 0.0f);
    EXPECT_EQ(colorAt(d.colorImage, 8, 8).a, 0);
    LxSheenDescriptor fresh(16, 16);
    fresh.AddLayer(*d.Layer(0));
    EXPECT_EQ(fresh.Render(), 0) << "with images that were never made";
}

TEST(Descriptor, ADisabledLayerIsLeftOutButSampledWhenDirty) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(sheet(0.5, red));
    LxSheenLayer off = sheet(0.5, blue);
    off.setEnabled(false);
    d.AddLayer(off);
    ASSERT_EQ(d.Render(), 1);
    EXPECT_EQ(heightAt(d.floatImage, 8, 8), 0.5f);
    EXPECT_NE(d.Layer(1)->image, nullptr) << "its values were dirty";
    LxSheenLayer prepared = off;
    prepared.Prepare();
    d.AddLayer(prepared);
    ASSERT_EQ(d.Render(), 1);
    EXPECT_EQ(d.Layer(2)->image, nullptr) << "clean and disabled";
}

TEST(Descriptor, OnlyChangedLayersAreSampledAgain) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(sheet(0.25, red));
    d.AddLayer(sheet(0.25, blue));
    ASSERT_EQ(d.Render(), 1);
    // A mark in the layer's image survives a render as long as its values stay.
    reinterpret_cast<float *>(rowAddress(*d.Layer(0)->image, 8))[8] = 0.5f;
    d.Layer(1)->SetValue(kHeight, 0.125);
    ASSERT_EQ(d.Render(), 1);
    EXPECT_EQ(heightAt(d.floatImage, 8, 8), 0.625f);
    EXPECT_EQ(heightAt(d.floatImage, 7, 8), 0.375f);
    d.Layer(0)->SetValue(kHeight, 0.25);
    ASSERT_EQ(d.Render(), 1);
    EXPECT_EQ(heightAt(d.floatImage, 8, 8), 0.375f);
}

TEST(Descriptor, PreparingElsewhereHidesAChangeFromTheRender) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(sheet(0.25, red));
    ASSERT_EQ(d.Render(), 1);
    d.Layer(0)->SetValue(kHeight, 0.75);
    EXPECT_EQ(d.LayerAt({8.0, 8.0}), 0);
    ASSERT_EQ(d.Render(), 1);
    EXPECT_EQ(heightAt(d.floatImage, 8, 8), 0.25f) << "the one mark serves both";
}

TEST(Descriptor, AReplacedPictureStaysAliveAndUnchanged) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(sheet(0.5, red));
    ASSERT_EQ(d.Render(), 1);
    const LxImage *old = d.image.get();
    d.Layer(0)->color = blue;
    ASSERT_EQ(d.Render(), 1);
    EXPECT_NE(d.image.get(), old);
    LxColor color;
    ASSERT_EQ(LxImage_PixelAt(old, 8, 8, &color), 1);
    EXPECT_GT(color.content.rgba.r, 100);
}

TEST(Descriptor, RemovingMovesLaterLayersDown) {
    LxSheenDescriptor d(16, 16);
    for (const char *name : {"a", "b", "c"})
        d.AddLayer(LxSheenLayer(name));
    EXPECT_EQ(d.currentLayer, 2);
    d.RemoveLayer(3);
    d.RemoveLayer(-1);
    EXPECT_EQ(d.LayerCount(), 3);
    d.RemoveLayer(0);
    EXPECT_EQ(d.LayerCount(), 2);
    EXPECT_EQ(d.Layer(0)->name, "b");
    EXPECT_EQ(d.Layer(1)->name, "c");
    EXPECT_EQ(d.currentLayer, 1);
    d.RemoveAllLayers();
    EXPECT_EQ(d.currentLayer, -1);
    EXPECT_EQ(d.CurrentLayerRecord(), nullptr);
}

TEST(Descriptor, SwappingExchangesLayersAndDropsTheirImages) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(LxSheenLayer("a"));
    d.AddLayer(LxSheenLayer("b"));
    ASSERT_EQ(d.Render(), 1);
    d.SwapLayers(1, 0);
    EXPECT_EQ(d.Layer(0)->name, "b");
    EXPECT_EQ(d.Layer(1)->name, "a");
    EXPECT_EQ(d.Layer(0)->image, nullptr);
    EXPECT_EQ(d.Layer(1)->image, nullptr);
    EXPECT_EQ(d.currentLayer, 0);
    d.SwapLayers(0, 2);
    d.SwapLayers(1, 1);
    EXPECT_EQ(d.currentLayer, 0);
}

TEST(Descriptor, LayersStayInPlaceWhenOthersAreAdded) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(LxSheenLayer("first"));
    const LxSheenLayer *layer = d.Layer(0);
    const char *name = layer->name.c_str();
    for (int i = 0; i < 200; ++i)
        d.AddLayer(LxSheenLayer("more"));
    EXPECT_EQ(d.Layer(0), layer);
    EXPECT_EQ(d.Layer(0)->name.c_str(), name);
}

TEST(Descriptor, BoundsCoverThePixelsAboveZero) {
    LxSheenDescriptor d(11, 11);
    LxSheenLayer layer;
    layer.SetValue(kInnerSize0, 0.28);
    layer.SetValue(kInnerSize1, 0.28);
    d.AddLayer(layer);
    ASSERT_EQ(d.Render(), 1);
    LxRectD bounds = {};
    d.LayerBounds(0, bounds);
    // 0.28 around 0.5 in steps of 0.1: columns 3 to 7.
    EXPECT_EQ(bounds.x0, 3.0);
    EXPECT_EQ(bounds.x1, 8.0);
    EXPECT_EQ(bounds.y0, 3.0);
    EXPECT_EQ(bounds.y1, 8.0);
    d.LayerBounds(1, bounds);
    EXPECT_EQ(bounds.x0, 3.0) << "an index out of range leaves the result alone";
}

TEST(Descriptor, ScaleIsHeldAndSizeTaken) {
    LxSheenDescriptor d(8, 8);
    d.AddLayer(LxSheenLayer());
    d.SetScale(0.001);
    EXPECT_EQ(d.scale, 0.01);
    EXPECT_NE(d.image, nullptr) << "a change of scale renders";
    d.SetScale(NAN);
    EXPECT_EQ(d.scale, 0.01);
    d.SetSize(20, 0.5);
    EXPECT_EQ(d.scale, 0.5);
    EXPECT_EQ(LxImage_w(d.image.get()), 20);
    d.SetSize(0, 0.0);
    EXPECT_EQ(d.image, nullptr);
    EXPECT_EQ(d.Render(), 0);
    d.SetSize(-7, 0.0);
    EXPECT_EQ(d.Render(), 0);
}

TEST(Descriptor, LayerAtCountsFromTheFirstEnabledLayer) {
    LxSheenDescriptor d(16, 16);
    EXPECT_EQ(d.LayerAt({8, 8}), -1) << "no layer";
    d.AddLayer(sheet(0.5, red));
    d.AddLayer(sheet(0.5, red));
    d.AddLayer(sheet(0.5, red));
    EXPECT_EQ(d.LayerAt({8, 8}), 2) << "each raises the height";
    EXPECT_EQ(d.LayerAt({0, 8}), -1);
    EXPECT_EQ(d.LayerAt({16, 8}), -1);
    EXPECT_EQ(d.LayerAt({NAN, 8}), -1);
    d.Layer(1)->setEnabled(false);
    EXPECT_EQ(d.LayerAt({8, 8}), 2) << "disabled ones after it count, too";
    d.Layer(1)->setEnabled(true);
    d.Layer(0)->setEnabled(false);
    EXPECT_EQ(d.LayerAt({8, 8}), 1) << "counted from the second layer";
    d.Layer(1)->SetValue(kHeight, -2.0);
    d.Layer(2)->compositeMode = compositePaint;
    EXPECT_EQ(d.LayerAt({8, 8}), -1) << "a first height not above -1 is nobody's";
    d.Layer(2)->compositeMode = compositeLarger;
    EXPECT_EQ(d.LayerAt({8, 8}), 1);
    d.Layer(1)->setEnabled(false);
    d.Layer(2)->setEnabled(false);
    EXPECT_EQ(d.LayerAt({8, 8}), -1) << "none is enabled";
}

TEST(Descriptor, AssignedToItselfKeepsItsPicture) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(sheet(0.5, red));
    ASSERT_EQ(d.Render(), 1);
    const LxImage *const picture = d.image.get();
    const LxSheenDescriptor &same = d;
    d = same;
    EXPECT_EQ(d.image.get(), picture);
    EXPECT_EQ(d.LayerCount(), 1);
}

TEST(Descriptor, CopiesHaveTheLayersAndNotThePictures) {
    LxSheenDescriptor d(16, 16);
    d.AddLayer(sheet(0.5, red));
    d.light.ambient = 0.5;
    ASSERT_EQ(d.Render(), 1);
    LxSheenDescriptor copy(d);
    EXPECT_EQ(copy.image, nullptr);
    EXPECT_EQ(copy.light.ambient, 0.5);
    EXPECT_EQ(copy.LayerCount(), 1);
    ASSERT_EQ(copy.Render(), 1);
    EXPECT_TRUE(sameBytes(copy.image, d.image));
    copy.Reset();
    EXPECT_EQ(copy.LayerCount(), 0);
    EXPECT_EQ(copy.width, 1);
    EXPECT_EQ(copy.light.ambient, 0.20000000298023224);
}
