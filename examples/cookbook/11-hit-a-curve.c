/* Asks whether a curve passes near a point, how far along it does, and how long it is. */
#include "picture.h"

int main(void) {
    Oxlume_Init();
    const LxPointD p0 = {20, 140}, p1 = {20, 20}, p2 = {220, 140}, p3 = {220, 20};

    double t = -1;
    /* The middle of this curve is the middle of its ends: it turns the same way round both. */
    printf("hit at its middle: %d", LxCubicBezier_HitTest(p0, p1, p2, p3, 120, 80, 3, &t));
    printf(", about half way: %d\n", t > 0.4 && t < 0.6);
    printf("hit at its end: %d", LxCubicBezier_HitTest(p0, p1, p2, p3, 219, 21, 3, &t));
    printf(", at t = %g\n", t);
    printf("hit beside it: %d\n", LxCubicBezier_HitTest(p0, p1, p2, p3, 60, 30, 3, &t));

    /* A curve is at least as long as the line between its ends, and at most as the way over its points. */
    const double length = LxCubicBezier_Length(p0, p1, p2, p3);
    const double line = V2DistanceBetween2Points(&p0, &p3);
    const double way = V2DistanceBetween2Points(&p0, &p1) + V2DistanceBetween2Points(&p1, &p2) +
                       V2DistanceBetween2Points(&p2, &p3);
    printf("longer than %.1f: %d, shorter than %.1f: %d\n", line, length > line, way, length < way);

    LxImage *image = LxImage_Create(kLxPixelRGBA, 0, 0, 240, 160, 0, 0);
    LxImage_Fill(image, LxColor_RGBA_White);
    LxGC *gc = LxImage_GC(image);
    LxPath *path = LxPath_Create();
    LxPath_AddMoveTo(path, p0.x, p0.y);
    LxPath_AddCurveTo(path, p1.x, p1.y, p2.x, p2.y, p3.x, p3.y);
    LxGC_SetStrokeWidth(gc, 3);
    LxGC_Path(gc, path);
    LxGC_SetStrokeColor(gc, LxColor_RGBA(220, 60, 40, 255));
    LxGC_Circle(gc, 120, 80, 6);
    savePicture(image, "11-hit-a-curve.pam");
    LxPath_Delete(path);
    LxImage_Delete(image);
    return 0;
}
