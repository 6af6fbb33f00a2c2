// Fits smooth curves to many points, as a drawing program does with what a pen left behind.
#include <cmath>
#include <cstdio>
#include <vector>

#include "picture.h"

int main() {
    Oxlume_Init();
    std::vector<LxPointD> pen; // a wave of 200 points
    for (int i = 0; i < 200; ++i)
        pen.push_back({20.0 + i, 80.0 + 50.0 * std::sin(i * 0.06)});

    LxPath *path = LxPath_Create();
    // Every point is to lie less than 0.5 pixels away: the bound is the square of that.
    LxCubicBezier_Fit(pen.data(), static_cast<int32_t>(pen.size()), 0.25, path);

    // A fitted path holds one move and its curves; flattened, it still passes near every point.
    int hits = 0;
    LxPath *flat = LxPath_CreateDecomposed(path, nullptr);
    const LxPathInfo info = LxPath_Info(flat, nullptr);
    std::printf("moves: %d\n", info.moves);
    std::printf("fewer lines than points: %d\n", info.lines < static_cast<int>(pen.size()));

    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage_Fill(image, LxColor_RGBA_White);
    LxGC *gc = LxImage_GC(image);
    LxGC_SetStrokeWidth(gc, 5);
    LxGC_SetStrokeColor(gc, LxColor_RGBA(40, 90, 160, 255));
    LxGC_Path(gc, path);
    for (std::size_t i = 1; i + 1 < pen.size(); ++i) { // between the ends
        LxColor color;
        LxImage_PixelAt(image, static_cast<int>(pen[i].x), static_cast<int>(pen[i].y), &color);
        hits += color.content.rgba.r < 128; // the stroke is dark
    }
    std::printf("points under the stroke: %d of %d\n", hits, static_cast<int>(pen.size()) - 2);

    savePicture(image, "12-fit-a-curve.pam");
    LxImage_Delete(image);
    LxPath_Delete(flat);
    LxPath_Delete(path);
}
