// Pictures by OpenGL beside those of the software renderer.

#include <gtest/gtest.h>

#include "tests/gc/Recorder.h"
#include "tests/gc/renderers/OpenGLScene.h"
#include "tools/OffscreenGL.h"

using namespace lx;
using namespace lx::test;
using tool::OffscreenGL;

namespace {

// One context draws on an OpenGL buffer and on an image, both white at first.
class OpenGLPicture : public testing::Test {
protected:
    void SetUp() override {
        if (!context)
            GTEST_SKIP() << "no OpenGL context without a display can be had";
        ASSERT_EQ(LxGC_AddRenderer(gc, kLxRendererOpenGL, nullptr, nullptr), 1);
        LxGC_Fill(gc, LxColor_RGBA(255, 255, 255, 255));
    }

    void expectSamePictures() const {
        LxGC_Flush(gc);
        const PictureDifference difference = compare(software.get(), context->read().get());
        EXPECT_TRUE(difference.isSmall())
            << difference.largestInside << " levels inside shapes, " << difference.largestAtEdges
            << " at edges; gl_check FOLDER leaves the pictures of the scene";
        EXPECT_LT(difference.share, 0.05);
    }

    // The red of OpenGL's own picture.
    int redAt(const ImageHandle &picture, int32_t x, int32_t y) const {
        return *static_cast<const uint8_t *>(LxImage_ConstPointer(picture.get(), x, y));
    }

    std::optional<OffscreenGL> context = OffscreenGL::open(sceneWidth, sceneHeight);
    ImageHandle software = makeImage(kLxPixelRGBA, sceneWidth, sceneHeight);
    LxGC *gc = LxImage_GC(software.get());
};

} // namespace

TEST_F(OpenGLPicture, OfShortPathsIsTheSoftwareRenderersButForEdges) {
    drawShortFills(gc);
    expectSamePictures();
}

TEST_F(OpenGLPicture, OfTessellatedPathsIsTheSoftwareRenderersButForEdges) {
    drawTessellatedFills(gc);
    expectSamePictures();
}

TEST_F(OpenGLPicture, OfStrokesIsTheSoftwareRenderersButForEdges) {
    drawStrokes(gc);
    expectSamePictures();
}

TEST_F(OpenGLPicture, UnderAMatrixIsTheSoftwareRenderersButForEdges) {
    drawTurned(gc);
    expectSamePictures();
}

TEST_F(OpenGLPicture, OfTheWholeSceneIsTheSoftwareRenderersButForEdges) {
    drawScene(gc);
    expectSamePictures();
}

// What the comparison must find: a shape that is missing, a colour that is off, a shape two pixels away.
TEST_F(OpenGLPicture, ThatDiffersIsFound) {
    const auto differs = [&](LxColor color, double x) {
        const ImageHandle other = makeImage(kLxPixelRGBA, sceneWidth, sceneHeight);
        LxGC *otherContext = LxImage_GC(other.get());
        LxGC_Fill(otherContext, LxColor_RGBA(255, 255, 255, 255));
        LxGC_SetRenderMode(otherContext, kLxRenderFill);
        LxGC_SetFillColor(otherContext, color);
        LxGC_Frame(otherContext, x, 20, x + 40, 60);
        return !compare(other.get(), context->read().get()).isSmall();
    };
    EXPECT_TRUE(differs(LxColor_RGBA(200, 0, 0, 255), 20));
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(200, 0, 0, 255));
    LxGC_Frame(gc, 20, 20, 60, 60);
    EXPECT_FALSE(differs(LxColor_RGBA(200, 0, 0, 255), 20));
    EXPECT_FALSE(differs(LxColor_RGBA(200, 0, 0, 255), 20.5));
    EXPECT_TRUE(differs(LxColor_RGBA(204, 0, 0, 255), 20));
    EXPECT_TRUE(differs(LxColor_RGBA(200, 0, 0, 255), 22));
}

TEST_F(OpenGLPicture, HasItsFirstRowAtTheBottom) {
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_Frame(gc, 10, 0, 20, 5);
    // glReadPixels counts rows from the bottom too.
    const ImageHandle picture = context->read();
    EXPECT_EQ(redAt(picture, 15, 0), 0);
    EXPECT_EQ(redAt(picture, 15, 4), 0);
    EXPECT_EQ(redAt(picture, 15, 5), 255);
    EXPECT_EQ(redAt(picture, 15, sceneHeight - 1), 255);
    EXPECT_EQ(redAt(picture, 9, 0), 255);
    EXPECT_EQ(redAt(picture, 10, 0), 0);
    EXPECT_EQ(redAt(picture, 19, 0), 0);
    EXPECT_EQ(redAt(picture, 20, 0), 255);
}

TEST_F(OpenGLPicture, IsClearedEntirelyByAFill) {
    LxGC_SetClipRectD(gc, 10, 10, 20, 20);
    LxGC_MatrixScale(gc, 0.1, 0.1);
    LxGC_Fill(gc, LxColor_RGBA(70, 80, 90, 255));
    const ImageHandle picture = context->read();
    for (const LxPointL place : {LxPointL{0, 0}, LxPointL{sceneWidth - 1, sceneHeight - 1}, LxPointL{15, 15}})
        EXPECT_EQ(redAt(picture, place.x, place.y), 70);
}

TEST_F(OpenGLPicture, ShowsFillsOutsideTheClipAndStrokesInside) {
    LxGC_SetClipRectD(gc, 0, 0, 50, sceneHeight);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_Frame(gc, 20, 20, 100, 40);
    LxGC_SetRenderMode(gc, kLxRenderStroke);
    LxGC_SetStrokeWidth(gc, 6);
    LxGC_Line(gc, 20, 60, 100, 60);
    const ImageHandle picture = context->read();
    EXPECT_EQ(redAt(picture, 80, 30), 0);
    EXPECT_EQ(redAt(picture, 30, 60), 0);
    EXPECT_EQ(redAt(picture, 80, 60), 255);
}

TEST_F(OpenGLPicture, HasNoErrors) {
    drawScene(gc);
    const ImageHandle image = makeImage(kLxPixelF, 9, 9);
    LxGC_DrawImage(gc, image.get());
    LxGC_Flush(gc);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
