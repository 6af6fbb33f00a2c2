// A clock face that shows ten past ten: rings, ticks turned into place by the context's matrix, and hands.
#include <memory>
#include <oxlume/oxlume.h>

#include "../c/ppm.h"

struct Deleter {
    void operator()(LxImage *image) const { LxImage_Delete(image); }
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using Image = std::unique_ptr<LxImage, Deleter>;
using Path = std::unique_ptr<LxPath, Deleter>;

// Turns what is drawn next about the middle of the face, clockwise: each call adds to what the matrix does
// already.
void turnAbout(LxGC *gc, double degrees) {
    LxGC_MatrixIdentity(gc);
    LxGC_MatrixRotateDeg(gc, degrees);
    LxGC_MatrixTranslate(gc, 120, 120);
}

int main() {
    const Image image(LxImage_Create(kLxPixelRGBA, 0, 0, 240, 240, 0, 0));
    LxGC *gc = LxImage_GC(image.get()); // the image's own
    if (gc == nullptr)
        return 1;
    LxImage_Fill(image.get(), LxColor_RGBA(240, 240, 236, 255));

    turnAbout(gc, 0);
    const Path rim(LxPath_Create());
    LxPath_AddCircle(rim.get(), 0, 0, 110);
    LxGC_SetRenderMode(gc, kLxRenderFill | kLxRenderStroke);
    LxGC_SetFillColor(gc, LxColor_RGBA(255, 255, 255, 255));
    LxGC_SetStrokeColor(gc, LxColor_RGBA(60, 60, 70, 255));
    LxGC_SetStrokeWidth(gc, 6);
    LxGC_Path(gc, rim.get());

    const Path tick(LxPath_Create());
    LxPath_AddLine(tick.get(), 0, -100, 0, -86);
    LxGC_SetRenderMode(gc, kLxRenderStroke);
    for (int hour = 0; hour < 12; ++hour) {
        turnAbout(gc, 30 * hour);
        LxGC_SetStrokeWidth(gc, hour % 3 == 0 ? 6 : 3);
        LxGC_Path(gc, tick.get());
    }

    const struct Hand { double degrees, length, width; } hands[] = {{305, 52, 8}, {60, 80, 5}};
    for (const Hand &hand : hands) {
        const Path path(LxPath_Create());
        LxPath_AddLine(path.get(), 0, 12, 0, -hand.length);
        turnAbout(gc, hand.degrees);
        LxGC_SetStrokeWidth(gc, hand.width);
        LxGC_Path(gc, path.get());
    }
    return writePpm(image.get(), "clock.ppm") ? 0 : 1;
}
