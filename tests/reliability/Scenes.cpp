#include "tests/reliability/Scenes.h"

#include <oxlume/LxExtras.h>
#include <oxlume/oxlume.h>

namespace lx::test {
namespace {

constexpr int32_t side = 64;

LxImage *newPicture(int32_t type = kLxPixelRGBA) {
    return LxImage_Create(type, 0, 0, side, side, 1, 0);
}

LxColor paint(uint8_t r, uint8_t g, uint8_t b, uint8_t a) {
    return LxColor_RGBA(r, g, b, a);
}

LxImage *imageOperations() {
    LxImage *image = newPicture();
    LxImage_GenerateChequerboard(image, 8, paint(200, 10, 10, 255), paint(10, 10, 200, 128));
    LxImage *copy = LxImage_Copy(image);
    LxImage_Delete(image);
    LxImage_FlipVertical(copy);
    LxImage_Add(copy, 0.25);
    LxImage_BlendColor(copy, paint(0, 255, 0, 255), LxBlend_WithChannel(6, 100, 6));
    uint8_t memory[4 * 4 * 4];
    LxImage *view = LxImage_CreateEx(kLxPixelRGBA, 0, 0, 4, 4, memory, 16, 0, 1, 0);
    LxBlend over = LxBlend_Make(2, 255);
    LxBlend_Image_Image(&over, copy, view, nullptr, nullptr);
    LxImage_Delete(view);
    return copy;
}

LxImage *compositing() {
    LxImage *below = newPicture();
    LxImage *above = newPicture(kLxPixelRGB);
    LxImage *mask = newPicture(kLxPixelA);
    LxImage_Fill(below, paint(40, 80, 120, 255));
    LxImage_Fill(above, LxColor_RGB(250, 200, 10));
    LxImage_Fill(mask, LxColor_A(90));
    for (int32_t mode = 0; mode < 44; ++mode) {
        LxBlend blend = LxBlend_WithChannel(mode, 200, 6);
        LxBlend_Image_Image(&blend, below, above, mask, nullptr);
    }
    LxImage_Delete(above);
    LxImage_Delete(mask);
    return below;
}

LxImage *segmentedFrame() {
    LxImage *frame = LxImage_Create(kLxPixelRGBA, 0, 0, 24, 24, 1, 0);
    LxImage_SetPixelAt(frame, 0, 0, paint(0, 255, 255, 255));
    for (const int32_t place : {6, 16}) {
        LxImage_SetPixelAt(frame, place, 2, paint(0, 255, 255, 255));
        LxImage_SetPixelAt(frame, 2, place, paint(0, 255, 255, 255));
    }
    LxImage_ReadSegmentMarks(frame);
    LxImage *picture = newPicture();
    LxBlend blend = LxBlend_Make(2, 255);
    LxBlend_Image_Image(&blend, picture, frame, nullptr, nullptr);
    LxImage_Delete(frame);
    return picture;
}

LxImage *fillsAndStrokes() {
    LxImage *picture = newPicture();
    LxGC *gc = LxImage_GC(picture);
    LxGC_SetRenderMode(gc, kLxRenderFill | kLxRenderStroke);
    LxGC_SetStrokeWidth(gc, 5);
    LxGC_MatrixRotateDeg(gc, 10);
    LxGC_Circle(gc, 30, 30, 20);
    LxGC_RoundFrame(gc, 4, 4, 60, 40, 6, 6);
    LxGC_Line(gc, 0, 0, 64, 60);
    LxGC_EllipseL(gc, 10, 30, 50, 60);
    return picture;
}

LxImage *gradients() {
    LxImage *picture = newPicture();
    LxGC *gc = LxImage_GC(picture);
    LxGradient *gradient = LxGradient_Create();
    LxGradient_AddColor(gradient, paint(255, 0, 0, 255), 0, 0, 0.5);
    LxGradient_AddColor(gradient, paint(0, 0, 255, 128), 1, 1, 0.5);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillGradient(gc, gradient);
    for (int32_t type = 0; type < 6; ++type) {
        LxGradient_SetType(gradient, type, 0);
        LxGC_Ellipse(gc, 32, 10.0 * type, 30, 12);
    }
    LxGC_SetFillGradient(gc, nullptr);
    LxGradient_Delete(gradient);
    return picture;
}

LxImage *pathEditing() {
    LxPath *path = LxPath_Create();
    for (const double x : {10.0, 30.0}) {
        LxPath_AddMoveTo(path, x, 10);
        LxPath_AddLineTo(path, x + 15, 12);
        LxPath_AddLineTo(path, x, 50);
    }
    LxPath_Close(path, 1);
    const LxRectD box = {5, 5, 50, 40};
    const LxPointD points[] = {{3, 3}, {20, 50}, {60, 12}, {33, 30}};
    LxPath_AddRect(path, &box, 4, 4);
    LxPath_AddPoly(path, points, 4);
    LxPath_AddPolyRing(path, 30, 30, 20, 10, 0, 270, 8, 1);
    LxPath_InsertMoveTo(path, 2, 7, 7);
    LxPath_ReplaceByPolygonTo(path, 3, points, 4);
    LxPath_RemoveItem(path, 1);
    LxPath_Close(path, 1);
    LxCubicBezier_Fit(points, 4, 0.5, path);
    LxPath *clipped = LxPath_CreateClipped(path, &box);
    LxPath *outlined = LxPath_CreateOutlined(clipped, nullptr, nullptr, 3, 16);
    LxPath *flat = LxPath_CreateDecomposed(outlined, nullptr);
    LxPath *turned = LxPath_CreateTransformed(path, nullptr, &box);
    LxPath_Add(path, flat);
    LxImage *picture = newPicture();
    LxGC *gc = LxImage_GC(picture);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_Path(gc, path);
    for (LxPath *each : {path, clipped, outlined, flat, turned})
        LxPath_Delete(each);
    return picture;
}

LxImage *imagesThroughContext() {
    LxImage *picture = newPicture();
    LxImage *stamp = LxImage_Create(kLxPixelRGBA, 0, 0, 20, 20, 1, 1);
    LxImage_Fill(stamp, paint(10, 200, 90, 128));
    LxGC *gc = LxImage_GC(picture);
    LxGC_DrawImageAt(gc, 5, 5, stamp);
    LxGC_DrawImageWithMask(gc, 30, 30, stamp, nullptr);
    LxGC_DrawImageClipped(gc, 50, 50, stamp, LxRectL{4, 4, 12, 12});
    LxImage_Delete(stamp);
    return picture;
}

LxImage *sheen() {
    LxSheen *sheen = LxSheen_Create(side);
    for (const char *name : {"ground", "rim", "grain"}) {
        const int32_t layer = LxSheen_AddLayer(sheen, name);
        for (uint32_t parameter = 0; parameter < 76; parameter += 5)
            LxSheen_SetLayerValue(sheen, layer, parameter, 0.5);
        LxSheen_SetLayerColor(sheen, layer, LxRGBA{200, 150, 100, 255});
    }
    LxSheen_RemoveLayer(sheen, 1);
    LxSheen_RenderDescriptor(sheen, 0, 1);
    LxImage *result = LxSheen_Image(sheen);
    LxImage *picture = result != nullptr ? LxImage_Copy(result) : nullptr;
    LxSheen_Delete(sheen);
    return picture;
}

LxImage *svgDrawing() {
    static constexpr char drawing[] =
        "<?xml version=\"1.0\"?><svg><g fill=\"#102030\" stroke=\"#ff0000\" stroke-width=\"2\">"
        "<path d=\"M 5,5 C 10,60 50,60 60,5 L 30,30 z\"/><line x1=\"0\" y1=\"0\" x2=\"60\" "
        "y2=\"60\"/></g></svg>";
    LxImage *picture = newPicture();
    LxSVG_ReadText(LxImage_GC(picture), drawing, sizeof drawing - 1);
    return picture;
}

LxImage *morphing() {
    LxImage *source = newPicture(kLxPixelRGB);
    LxImage *result = newPicture(kLxPixelRGB);
    const LxMorphLine from = LxMorphLine(10, 10, 50, 10);
    const LxMorphLine to = LxMorphLine(12, 20, 52, 20);
    LxMorph_Frame(source, result, &from, &to, 1, 0.5);
    LxImage_Delete(source);
    return result;
}

} // namespace

const std::vector<Scene> &scenes() {
    static const std::vector<Scene> all = {
        {"image operations", imageOperations},
        {"compositing in every mode", compositing},
        {"a segmented frame", segmentedFrame},
        {"fills and strokes", fillsAndStrokes},
        {"gradients", gradients},
        {"path editing", pathEditing},
        {"images through a context", imagesThroughContext},
        {"a sheen", sheen},
        {"an SVG drawing", svgDrawing, true},
        {"a morph", morphing},
    };
    return all;
}

} // namespace lx::test
