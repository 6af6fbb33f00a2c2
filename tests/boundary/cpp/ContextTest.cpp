#include <oxlume/oxlume.hpp>

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

using namespace oxlume;

static_assert(sizeof(Context) == sizeof(void *) && sizeof(Gradient) == sizeof(void *));
static_assert(!std::is_copy_constructible_v<Context> && !std::is_copy_constructible_v<Gradient>);

namespace {

const Color red(255, 0, 0), blue(0, 0, 255), nothing(0, 0, 0, 0);

} // namespace

TEST(CppContext, DrawsIntoItsImage) {
    Image image(PixelType::RGBA, 40, 30);
    ContextRef gc = image.context();
    ASSERT_TRUE(gc);
    EXPECT_EQ(gc.bounds(), Rect(0, 0, 40, 30));
    gc.setRenderMode(RenderMode::Fill).setFillColor(red).circle({20, 15}, 8);
    EXPECT_EQ(image.pixel(20, 15), red);
    EXPECT_EQ(image.pixel(5, 5), nothing);
    gc.setFillColor(blue).rect({0, 0, 4, 4});
    EXPECT_EQ(image.pixel(2, 2), blue);
    gc.setClip({30, 20, 35, 25}).ellipse({32, 22}, 30, 30);
    EXPECT_EQ(image.pixel(32, 22), blue);
    EXPECT_EQ(image.pixel(28, 22), nothing);
    EXPECT_EQ(gc.clip(), Rect(30, 20, 35, 25));
}

TEST(CppContext, KeepsItsAttributes) {
    Image image(PixelType::RGBA, 4, 4);
    ContextRef gc = image.context();
    EXPECT_EQ(gc.renderMode(), RenderMode::Stroke);
    EXPECT_EQ(gc.setRenderMode(RenderMode::Both).renderMode(), RenderMode::Both);
    EXPECT_EQ(gc.setFillColor(red).fillColor(), red);
    EXPECT_EQ(gc.setStrokeColor(blue).strokeColor(), blue);
    EXPECT_EQ(gc.setStrokeWidth(2.5).strokeWidth(), 2.5);
    EXPECT_EQ(gc.setStrokeStyle(StrokeStyle::Mitre).strokeStyle(), StrokeStyle::Mitre);
    EXPECT_EQ(gc.setFillBlend(Mode::Multiply).fillBlend(), Blend(Mode::Multiply));
    EXPECT_EQ(gc.setStrokeBlend(Mode::Screen).strokeBlend(), Blend(Mode::Screen));
    EXPECT_EQ(gc.setImageBlend(Mode::Src).imageBlend(), Blend(Mode::Src));
}

TEST(CppContext, ItsMatrixIsAppliedToPaths) {
    Image image(PixelType::RGBA, 40, 40);
    ContextRef gc = image.context();
    gc.setRenderMode(RenderMode::Fill).setFillColor(red).translate(20, 20).rect({0, 0, 4, 4});
    EXPECT_EQ(image.pixel(22, 22), red);
    EXPECT_EQ(gc.matrix(), Matrix::translation(20, 20));
    gc.setMatrix(Matrix::scaling(2, 2)).multiply(Matrix::translation(1, 2));
    EXPECT_EQ(gc.matrix(), Matrix(2, 0, 2, 0, 2, 4));
    gc.resetMatrix().rotate(0).scale(3, 3);
    EXPECT_EQ(gc.matrix(), Matrix::scaling(3, 3));
    EXPECT_EQ(gc.resetMatrix({5, 6}).matrix(), Matrix::translation(5, 6));
    EXPECT_EQ(ContextRef().matrix(), Matrix());
}

TEST(CppContext, StrokesAndDrawsPathsAndImages) {
    Image image(PixelType::RGBA, 40, 40);
    ContextRef gc = image.context();
    gc.setStrokeColor(blue).setStrokeWidth(4).line({0, 20}, {40, 20});
    EXPECT_EQ(image.pixel(10, 20), blue);
    gc.fill(red);
    EXPECT_EQ(image.pixel(39, 39), red);
    gc.clear();
    EXPECT_EQ(image.pixel(39, 39), nothing);
    Path triangle;
    triangle.moveTo({0, 0}).lineTo({20, 0}).lineTo({0, 20}).lineTo({0, 0}).close();
    gc.setRenderMode(RenderMode::Fill).setFillColor(red).draw(triangle);
    EXPECT_EQ(image.pixel(4, 4), red);
    EXPECT_EQ(image.pixel(19, 19), nothing);
    const Point corners[] = {{20, 20}, {40, 20}, {40, 40}, {20, 40}};
    gc.polygon(corners, 4);
    EXPECT_EQ(image.pixel(30, 30), red);
    gc.roundRect({25, 0, 40, 15}, 2, 2);
    EXPECT_EQ(image.pixel(32, 8), red);
    Image stamp(PixelType::RGBA, 3, 3);
    stamp.fill(blue);
    gc.draw(stamp, 30, 30);
    EXPECT_EQ(image.pixel(31, 31), blue);
    EXPECT_EQ(image.pixel(33, 33), red);
}

TEST(CppContext, FillsWithGradients) {
    Image image(PixelType::RGBA, 100, 10);
    Gradient gradient(GradientType::Across);
    gradient.setStop(0, red, 0).setStop(1, blue, 1);
    ContextRef gc = image.context();
    gc.setRenderMode(RenderMode::Fill).setFillGradient(&gradient).rect({0, 0, 100, 10});
    EXPECT_GT(image.pixel(3, 5).rgba().r, 240);
    EXPECT_GT(image.pixel(96, 5).rgba().b, 240);
    EXPECT_EQ(gradient.colorAt(3, 5), image.pixel(3, 5));
    gc.setFillGradient(nullptr).setStrokeGradient(&gradient).setStrokeGradient(nullptr);
    EXPECT_EQ(LxGC_FillGradient(gc.get()), nullptr);
    Gradient moved = std::move(gradient);
    EXPECT_FALSE(gradient);
    EXPECT_TRUE(moved);
    LxGradient_Delete(moved.release());
}

TEST(CppContext, OneOfItsOwnDrawsBesideTheImages) {
    Image image(PixelType::RGBA, {5, 5, 15, 15});
    Context gc(image);
    EXPECT_NE(gc.get(), image.context().get());
    EXPECT_EQ(gc.clip(), Rect(0, 0, 10, 10));
    gc.setRenderMode(RenderMode::Fill).setFillColor(red).rect({0, 0, 10, 10});
    EXPECT_EQ(image.pixel(5, 5), red);
    Context moved = std::move(gc);
    EXPECT_FALSE(gc);
    gc.fill(blue);
    moved = Context();
    EXPECT_TRUE(moved);
    EXPECT_EQ(image.pixel(5, 5), red);
    EXPECT_FALSE(Context(ImageRef()));
    LxGC_Delete(moved.release());
}

TEST(CppContext, PlaysSvg) {
    Image image(PixelType::RGBA, 10, 10);
    LxSVG_SetPaintFlags(0);
    EXPECT_TRUE(image.context().readSvg("<svg viewBox='0 0 10 10'><path fill='#ff0000' "
                                        "d='M0 0L10 0L10 10L0 10Z'/></svg>"));
    EXPECT_EQ(image.pixel(5, 5), red);
    EXPECT_FALSE(image.context().readSvg("no XML"));
    EXPECT_FALSE(image.context().readSvgFile("/no/such/file.svg"));
}
