// Images through OpenGL: what glDrawPixels is given, never beyond an image's memory, and what it draws.

#include "gc/renderers/OpenGLImages.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include <oxlume/oxlume.h>

#include "tests/gc/Recorder.h"
#include "tests/gc/renderers/OpenGLRecorder.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"
#include "tools/OffscreenGL.h"

using namespace lx;
using namespace lx::test;
using tool::OffscreenGL;

namespace {

ContextHandle contextOf(double width, double height) {
    return ContextHandle(LxGC_CreateWithOpenGLContext(nullptr, LxRectD{0, 0, width, height}));
}

std::string pixelsCall(int32_t width, int32_t height, GLenum format, GLenum type, const void *pixels) {
    return glCall("glDrawPixels", width, height, format, type, pixels);
}

// The rows of an RGBA image that are drawn for a size; 0 if nothing is.
int32_t rowsDrawn(const ImageHandle &image, int32_t width, int32_t height) {
    GLRecorder recorder;
    drawPixels(*image, width, height);
    for (const std::string &call : recorder.take()) {
        std::istringstream text(call);
        std::string name;
        int32_t drawnWidth = 0;
        int32_t rows = 0;
        if (text >> name >> drawnWidth >> rows && name == "glDrawPixels") {
            EXPECT_EQ(drawnWidth, width);
            return rows;
        }
    }
    return 0;
}

LxRGBA pixelAt(const ImageHandle &picture, int32_t x, int32_t y) {
    LxRGBA color;
    std::memcpy(&color, LxImage_ConstPointer(picture.get(), x, y), sizeof color);
    return color;
}

std::vector<int> colourAt(const ImageHandle &picture, int32_t x, int32_t y) {
    const LxRGBA color = pixelAt(picture, x, y);
    return {color.r, color.g, color.b};
}

} // namespace

TEST(OpenGLImages, GoByTheirTypeAndAsTheyAre) {
    const struct {
        int32_t type;
        GLenum format;
        GLenum dataType;
    } cases[] = {
        {kLxPixelA, GL_LUMINANCE, GL_UNSIGNED_BYTE}, {kLxPixelRGB, GL_RGB, GL_UNSIGNED_BYTE},
        {kLxPixelRGBA, GL_RGBA, GL_UNSIGNED_BYTE},   {kLxPixelRGBAPremultiplied, GL_RGBA, GL_UNSIGNED_BYTE},
        {kLxPixelF, GL_LUMINANCE, GL_FLOAT},         {kLxPixelL, GL_LUMINANCE, GL_INT},
    };
    const ContextHandle gc = contextOf(30, 20);
    for (const auto &[type, format, dataType] : cases) {
        const ImageHandle image = makeImage(type, 7, 5);
        GLRecorder recorder;
        LxGC_DrawImageAt(gc.get(), 3, 4, image.get());
        EXPECT_EQ(recorder.take(),
                  (GLCalls{glCall("glRasterPos2i", 3, 4),
                           pixelsCall(7, 5, format, dataType, LxImage_ConstPointer(image.get(), 0, 0))}));
    }
    for (const int32_t type : {6, 7}) {
        const ImageHandle image = makeImage(type, 7, 5);
        GLRecorder recorder;
        LxGC_DrawImageAt(gc.get(), 3, 4, image.get());
        EXPECT_EQ(recorder.take(), GLCalls{glCall("glRasterPos2i", 3, 4)});
    }
}

TEST(OpenGLImages, TakeTheirSizeFromTheRectangleAndStartAtTheFirstPixel) {
    const ContextHandle gc = contextOf(30, 20);
    const ImageHandle image = makeImage(kLxPixelRGBA, 7, 5);
    const ImageHandle mask = makeImage(kLxPixelA, 7, 5);
    const void *first = LxImage_ConstPointer(image.get(), 0, 0);
    GLRecorder recorder;
    LxGC_DrawImageClipped(gc.get(), 0, 0, image.get(), LxRectL{2, 1, 5, 3});
    EXPECT_EQ(recorder.take()[1], pixelsCall(3, 2, GL_RGBA, GL_UNSIGNED_BYTE, first));
    LxGC_DrawImageClippedWithMask(gc.get(), 0, 0, image.get(), mask.get(), LxRectL{2, 1, 5, 3});
    EXPECT_EQ(recorder.take()[1], pixelsCall(3, 2, GL_RGBA, GL_UNSIGNED_BYTE, first));
    LxGC_DrawImageWithMask(gc.get(), 0, 0, image.get(), mask.get());
    EXPECT_EQ(recorder.take()[1], pixelsCall(7, 5, GL_RGBA, GL_UNSIGNED_BYTE, first));
    LxImage_MoveTo(image.get(), 8, 9);
    LxGC_DrawImage(gc.get(), image.get());
    EXPECT_EQ(recorder.take(),
              (GLCalls{glCall("glRasterPos2i", 8, 9), pixelsCall(7, 5, GL_RGBA, GL_UNSIGNED_BYTE, first)}));
    LxGC_DrawImageClipped(gc.get(), 1, 2, image.get(), LxRectL{2, 1, 2, 3});
    EXPECT_EQ(recorder.take(), GLCalls{glCall("glRasterPos2i", 1, 2)});
    LxGC_DrawImageAt(gc.get(), 1, 2, nullptr);
    EXPECT_EQ(recorder.take(), GLCalls{});
}

TEST(OpenGLImages, StandWhereTheMatrixPutsThem) {
    const ContextHandle gc = contextOf(30, 20);
    const ImageHandle image = makeImage(kLxPixelRGBA, 7, 5);
    LxGC_MatrixScale(gc.get(), 2, 2);
    LxGC_MatrixTranslate(gc.get(), 1, -1);
    GLRecorder recorder;
    LxGC_DrawImageAt(gc.get(), 3, 4, image.get());
    EXPECT_EQ(recorder.take()[0], glCall("glRasterPos2i", 7, 7));
}

TEST(OpenGLImages, NeverReachBeyondTheImage) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 5, 4); // 80 bytes
    EXPECT_EQ(rowsDrawn(image, 5, 4), 4);
    EXPECT_EQ(rowsDrawn(image, 5, 9), 4);
    EXPECT_EQ(rowsDrawn(image, 8, 4), 2) << "two rows of 32 bytes";
    EXPECT_EQ(rowsDrawn(image, 20, 4), 1);
    EXPECT_EQ(rowsDrawn(image, 21, 4), 0);
    EXPECT_EQ(rowsDrawn(image, INT32_MAX, INT32_MAX), 0);
    EXPECT_EQ(rowsDrawn(image, -1, 4), 0);
    EXPECT_EQ(rowsDrawn(image, 1, 100), 20) << "a column of the packed pixels";
    const ImageHandle bytes = makeImage(kLxPixelA, 5, 4); // rows of 8, the last one of 5
    EXPECT_EQ(rowsDrawn(bytes, 5, 4), 4);
    EXPECT_EQ(rowsDrawn(bytes, 8, 4), 3);
    const ImageHandle colours = makeImage(kLxPixelRGB, 5, 4); // rows of 16, the last one of 15
    EXPECT_EQ(rowsDrawn(colours, 5, 4), 4);
    EXPECT_EQ(rowsDrawn(colours, 1, 40), 16) << "rows of 4";
    const ImageHandle inlined = makeImage(kLxPixelRGBA, 2, 2);
    EXPECT_EQ(rowsDrawn(inlined, 2, 2), 2);
    EXPECT_EQ(rowsDrawn(inlined, 2, 3), 2);
}

TEST(OpenGLImages, ShowOnlyTheFirstRowOfAFlippedImage) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 5, 4, true);
    EXPECT_EQ(rowsDrawn(image, 5, 4), 1);
    const ImageHandle inlined = makeImage(kLxPixelRGBA, 2, 2, true);
    EXPECT_EQ(rowsDrawn(inlined, 2, 2), 2) << "an image in its record starts at its memory's start";
}

TEST(OpenGLImages, OverTheCallersMemoryAreReadWithoutItsGaps) {
    std::vector<uint8_t> memory(3 * 32);
    const auto over = [&](int32_t rowBytes, uint8_t *start, bool flipped) {
        return ImageHandle(
            LxImage_CreateEx(kLxPixelRGBA, 0, 0, 5, 3, start, rowBytes, 0, 0, flipped ? 1 : 0));
    };
    EXPECT_EQ(rowsDrawn(over(32, memory.data(), false), 5, 3), 3);
    EXPECT_EQ(rowsDrawn(over(32, memory.data(), false), 5, 9), 4) << "84 bytes hold four rows of 20";
    EXPECT_EQ(rowsDrawn(over(32, memory.data(), true), 5, 3), 1);
    // Rows that run backwards through the memory.
    EXPECT_EQ(rowsDrawn(over(-32, memory.data() + 64, false), 5, 3), 1);
    EXPECT_EQ(rowsDrawn(over(-32, memory.data() + 64, true), 5, 3), 3);
}

TEST(OpenGLImages, AreCutByTheUnpackStateOfTheMoment) {
    const auto context = OffscreenGL::open(8, 8);
    if (!context)
        GTEST_SKIP() << "no OpenGL context without a display can be had";
    const ImageHandle image = makeImage(kLxPixelRGBA, 5, 4); // 80 bytes
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    EXPECT_EQ(rowsDrawn(image, 5, 4), 3) << "rows of 24 bytes";
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 10);
    EXPECT_EQ(rowsDrawn(image, 5, 4), 2);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 1);
    EXPECT_EQ(rowsDrawn(image, 5, 4), 1);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 6);
    EXPECT_EQ(rowsDrawn(image, 5, 4), 0);
}

TEST(OpenGLImages, AreDrawnFromTheirPlaceUpwards) {
    const auto context = OffscreenGL::open(31, 21);
    if (!context)
        GTEST_SKIP() << "no OpenGL context without a display can be had";
    const ContextHandle gc = contextOf(30, 20);
    LxGC_Fill(gc.get(), LxColor_RGBA(255, 255, 255, 255));
    const ImageHandle image = makeImage(kLxPixelRGB, 3, 2);
    const uint8_t rows[2][9] = {{10, 20, 30, 40, 50, 60, 70, 80, 90}, {1, 2, 3, 4, 5, 6, 7, 8, 9}};
    std::memcpy(LxImage_Pointer(image.get(), 0, 0), rows[0], 9);
    std::memcpy(LxImage_Pointer(image.get(), 0, 1), rows[1], 9);
    LxGC_DrawImageAt(gc.get(), 4, 6, image.get());
    // Under a matrix the place is moved by the library and then by OpenGL.
    LxGC_MatrixTranslate(gc.get(), 5, 3);
    LxGC_DrawImageAt(gc.get(), 4, 6, image.get());
    const ImageHandle picture = context->read();
    for (const LxPointL place : {LxPointL{4, 6}, LxPointL{14, 12}}) {
        EXPECT_EQ(colourAt(picture, place.x, place.y), (std::vector{10, 20, 30}));
        EXPECT_EQ(colourAt(picture, place.x + 2, place.y), (std::vector{70, 80, 90}));
        EXPECT_EQ(colourAt(picture, place.x, place.y + 1), (std::vector{1, 2, 3}));
        EXPECT_EQ(colourAt(picture, place.x + 2, place.y + 1), (std::vector{7, 8, 9}));
        EXPECT_EQ(colourAt(picture, place.x + 3, place.y), (std::vector{255, 255, 255}));
        EXPECT_EQ(colourAt(picture, place.x, place.y + 2), (std::vector{255, 255, 255}));
    }
    EXPECT_EQ(colourAt(picture, 9, 9), (std::vector{255, 255, 255}));
}

TEST(OpenGLImages, OfEachTypeShowTheirColours) {
    const auto context = OffscreenGL::open(31, 21);
    if (!context)
        GTEST_SKIP() << "no OpenGL context without a display can be had";
    const ContextHandle gc = contextOf(30, 20);
    LxGC_Fill(gc.get(), LxColor_RGBA(0, 0, 0, 255));
    const auto draw = [&](int32_t type, int32_t x, const auto &pixel) {
        const ImageHandle image = makeImage(type, 1, 1);
        std::memcpy(LxImage_Pointer(image.get(), 0, 0), &pixel, sizeof pixel);
        LxGC_DrawImageAt(gc.get(), x, 0, image.get());
        return colourAt(context->read(), x, 0);
    };
    EXPECT_EQ(draw(kLxPixelA, 0, uint8_t{77}), (std::vector{77, 77, 77}));
    EXPECT_EQ(draw(kLxPixelRGBA, 1, LxRGBA{255, 51, 0, 255}), (std::vector{255, 51, 0}));
    // Blended by its alpha, also where the colour is multiplied by it already: 51 of 255 is a fifth.
    EXPECT_EQ(draw(kLxPixelRGBA, 2, LxRGBA{255, 100, 0, 51}), (std::vector{51, 20, 0}));
    EXPECT_EQ(draw(kLxPixelRGBAPremultiplied, 3, LxRGBA{255, 100, 0, 51}), (std::vector{51, 20, 0}));
    EXPECT_EQ(draw(kLxPixelF, 4, 0.4f), (std::vector{102, 102, 102}));
    EXPECT_EQ(draw(kLxPixelF, 5, 7.5f), (std::vector{255, 255, 255}));
    EXPECT_EQ(draw(kLxPixelL, 6, int32_t{INT32_MAX}), (std::vector{255, 255, 255}));
    EXPECT_EQ(draw(kLxPixelL, 7, int32_t{858993459}), (std::vector{102, 102, 102}));
    EXPECT_EQ(draw(kLxPixelL, 8, int32_t{-858993459}), (std::vector{0, 0, 0}));
}

TEST(OpenGLImages, OfAnySizeAndRectangleAreDrawnSafely) {
    const auto context = OffscreenGL::open(31, 21);
    if (!context)
        GTEST_SKIP() << "no OpenGL context without a display can be had";
    const ContextHandle gc = contextOf(30, 20);
    Random random(3);
    for (int i = 0; i < 500; ++i) {
        // An exact block, so that a read behind it is seen.
        const int32_t width = random.integer(1, 40);
        const int32_t height = random.integer(1, 40);
        const int32_t type = random.integer(0, 7);
        const int32_t rowBytes = 4 * random.integer(width, width + 5);
        std::vector<uint8_t> memory((height - 1) * rowBytes + 4 * width, 200);
        const ImageHandle image(
            LxImage_CreateEx(type, 0, 0, width, height, memory.data(), rowBytes, 0, 0, random.integer(0, 1)));
        const LxRectL rect = {0, 0, random.coin() ? random.integer(-1, 60) : random.anyInteger(),
                              random.coin() ? random.integer(-1, 60) : random.anyInteger()};
        LxGC_DrawImageClipped(gc.get(), 0, 0, image.get(), rect);
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
