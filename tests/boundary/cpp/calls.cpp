// Pairs of functions that do the same through the C++ header and through the C boundary: the compiler must
// make the same calls of both and little else.
#include <oxlume/oxlume.hpp>

using namespace oxlume;

extern "C" {

void cpp_attributes(LxGC *gc) {
    ContextRef(gc).setStrokeWidth(2.0).setRenderMode(RenderMode::Fill).circle({10, 20}, 5);
}
void c_attributes(LxGC *gc) {
    LxGC_SetStrokeWidth(gc, 2.0);
    LxGC_SetRenderMode(gc, kLxRenderFill);
    LxGC_Circle(gc, 10, 20, 5);
}

void cpp_path(LxPath *path) {
    Path owner(path);
    owner.moveTo({1, 2}).lineTo({3, 4}).close();
    owner.release();
}
void c_path(LxPath *path) {
    LxPath_AddMoveTo(path, 1, 2);
    LxPath_AddLineTo(path, 3, 4);
    LxPath_AddClose(path);
}

LxPointD cpp_point(LxPointD a, LxPointD b) {
    return (Point(a) + Point(b)) * 2.0;
}
LxPointD c_point(LxPointD a, LxPointD b) {
    return LxPointD{(a.x + b.x) * 2.0, (a.y + b.y) * 2.0};
}

void cpp_delete(LxImage *image) {
    Image owner(image);
}
void c_delete(LxImage *image) {
    LxImage_Delete(image);
}

void cpp_layer(LxSheen *sheen) {
    SheenLayer(sheen, 1).set(kLxSheenHeight, 0.5).setOpacity(0.25);
}
void c_layer(LxSheen *sheen) {
    LxSheen_SetLayerValue(sheen, 1, kLxSheenHeight, 0.5);
    LxSheen_SetLayerOpacity(sheen, 1, 0.25);
}

} // extern "C"
