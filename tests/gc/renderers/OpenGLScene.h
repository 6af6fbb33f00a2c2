// A scene that two renderers draw.
#pragma once

#include <algorithm>
#include <cmath>
#include <memory>

#include <oxlume/oxlume.h>

#include "tests/support/ImageHandle.h"
#include "tests/support/PictureDifference.h"

namespace lx::test {

struct DeleteScenePath {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using ScenePath = std::unique_ptr<LxPath, DeleteScenePath>;

constexpr int32_t sceneWidth = 320;
constexpr int32_t sceneHeight = 240;

// The five corners of a star and the five between them.
inline ScenePath starPath(double x, double y, double radius) {
    LxPointD corners[10];
    for (int i = 0; i < 10; ++i) {
        const double r = i % 2 == 0 ? radius : radius * 0.45;
        const double angle = i * 0.62831853071795865 - 1.5707963267948966;
        corners[i] = {x + r * std::cos(angle), y + r * std::sin(angle)};
    }
    ScenePath path(LxPath_Create());
    LxPath_AddPoly(path.get(), corners, 10);
    return path;
}

// A square with a square inside, which is a hole if it runs the other way round.
inline ScenePath nestedSquares(double x, double y, bool hole) {
    const LxPointD outer[] = {{x, y}, {x + 50, y}, {x + 50, y + 50}, {x, y + 50}};
    LxPointD inner[] = {{x + 15, y + 15}, {x + 35, y + 15}, {x + 35, y + 35}, {x + 15, y + 35}};
    if (hole)
        std::reverse(inner, inner + 4);
    ScenePath path(LxPath_Create());
    LxPath_AddPoly(path.get(), outer, 4);
    LxPath_AddPoly(path.get(), inner, 4);
    return path;
}

// Polygons that are drawn as they stand.
inline void drawShortFills(LxGC *gc) {
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(200, 40, 40, 255));
    LxGC_Frame(gc, 10, 10, 90, 60);
    LxGC_SetFillColor(gc, LxColor_RGBA(40, 40, 200, 128));
    const LxPointD triangle[] = {{60, 30}, {120, 50}, {70, 90}};
    LxGC_Poly(gc, triangle, 3);
}

// Curves, a concave shape, a hole, crossing edges.
inline void drawTessellatedFills(LxGC *gc) {
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_SetFillColor(gc, LxColor_RGBA(30, 140, 60, 255));
    LxGC_RoundFrame(gc, 130, 10, 200, 60, 12, 12);
    LxGC_SetFillColor(gc, LxColor_RGBA(220, 160, 20, 180));
    LxGC_Ellipse(gc, 200, 60, 30, 45);
    LxGC_SetFillColor(gc, LxColor_RGBA(120, 30, 150, 255));
    LxGC_Path(gc, starPath(275, 55, 40).get());
    LxGC_SetFillColor(gc, LxColor_RGBA(20, 120, 140, 200));
    LxGC_Path(gc, nestedSquares(15, 100, true).get());
    LxGC_Path(gc, nestedSquares(75, 100, false).get());
    const LxPointD pentagram[] = {{160, 105}, {175, 155}, {132, 124}, {188, 124}, {145, 155}};
    LxGC_Poly(gc, pentagram, 5);
}

// Each style, a curve, a clip.
inline void drawStrokes(LxGC *gc) {
    LxGC_SetRenderMode(gc, kLxRenderStroke);
    LxGC_SetStrokeWidth(gc, 5);
    LxGC_SetStrokeColor(gc, LxColor_RGBA(0, 0, 0, 160));
    LxGC_SetStrokeStyle(gc, kLxStrokeMitre);
    LxGC_Path(gc, starPath(225, 140, 30).get());
    LxGC_SetStrokeStyle(gc, 0);
    LxGC_Frame(gc, 265, 110, 310, 170);
    LxGC_SetStrokeStyle(gc, kLxStrokeItems);
    const ScenePath wave(LxPath_Create());
    LxPath_AddMoveTo(wave.get(), 15, 190);
    LxPath_AddCurveTo(wave.get(), 60, 150, 80, 250, 130, 190);
    LxPath_AddMoveTo(wave.get(), 140, 190);
    LxPath_AddQCurveTo(wave.get(), 160, 160, 180, 220);
    LxGC_Path(gc, wave.get());
    LxGC_SetClipRectD(gc, 0, 0, 40, sceneHeight);
    LxGC_Frame(gc, 25, 205, 60, 230);
    LxGC_SetClipRectD(gc, 0, 0, sceneWidth, sceneHeight);
}

// Fill and stroke under a matrix. OpenGL clips strokes in the path's own coordinates, the software renderer
// those of the picture: here neither clip cuts anything.
inline void drawTurned(LxGC *gc) {
    LxGC_SetRenderMode(gc, kLxRenderFill | kLxRenderStroke);
    LxGC_SetFillColor(gc, LxColor_RGBA(250, 220, 120, 255));
    LxGC_SetStrokeColor(gc, LxColor_RGBA(160, 60, 20, 255));
    LxGC_SetStrokeStyle(gc, kLxStrokeMitre);
    LxGC_SetStrokeWidth(gc, 2);
    LxGC_MatrixScale(gc, 1.5, 1);
    LxGC_MatrixRotateDeg(gc, 20);
    LxGC_MatrixTranslate(gc, 205, 165);
    LxGC_Frame(gc, 5, 5, 35, 35);
    LxGC_Path(gc, starPath(55, 20, 18).get());
    LxGC_MatrixIdentity(gc);
}

inline void drawScene(LxGC *gc) {
    LxGC_Fill(gc, LxColor_RGBA(255, 255, 255, 255));
    drawShortFills(gc);
    drawTessellatedFills(gc);
    drawStrokes(gc);
    drawTurned(gc);
}

} // namespace lx::test
