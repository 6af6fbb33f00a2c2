// gl_check: draws the tests' scene by OpenGL on every device that offers a context without a display, and
// compares it with the software renderer's picture. With a folder as its argument it leaves the pictures
// there. Ends with 1 if a picture differs, with 2 where there is no context.

#include <cstdio>
#include <string>

#include "tests/gc/renderers/OpenGLScene.h"
#include "tools/OffscreenGL.h"

using namespace lx::test;
using tool::OffscreenGL, tool::offscreenDisplays;

namespace {

ImageHandle softwarePicture() {
    ImageHandle image = makeImage(kLxPixelRGBA, sceneWidth, sceneHeight);
    drawScene(LxImage_GC(image.get()));
    return image;
}

ImageHandle openGLPicture(const OffscreenGL &context) {
    LxGC *gc = LxGC_CreateWithOpenGLContext(nullptr, LxRectD{0, 0, sceneWidth, sceneHeight});
    drawScene(gc);
    LxGC_Flush(gc);
    LxGC_Delete(gc);
    return context.read();
}

// A portable pixmap, which needs no library.
void save(const std::string &file, const LxImage *image) {
    std::FILE *out = std::fopen(file.c_str(), "wb");
    if (out == nullptr) {
        std::fprintf(stderr, "cannot write %s\n", file.c_str());
        return;
    }
    std::fprintf(out, "P6\n%d %d\n255\n", LxImage_w(image), LxImage_h(image));
    for (int32_t y = 0; y < LxImage_h(image); ++y)
        for (int32_t x = 0; x < LxImage_w(image); ++x)
            std::fwrite(LxImage_ConstPointer(image, x, y), 1, 3, out);
    std::fclose(out);
}

} // namespace

int main(int argc, char **argv) {
    const std::string folder = argc > 1 ? argv[1] : "";
    Oxlume_Init();
    const ImageHandle expected = softwarePicture();
    if (!folder.empty())
        save(folder + "/software.ppm", expected.get());
    int contexts = 0;
    bool same = true;
    for (const EGLDisplay display : offscreenDisplays()) {
        const auto context = OffscreenGL::open(display, sceneWidth, sceneHeight);
        if (!context)
            continue;
        const ImageHandle picture = openGLPicture(*context);
        const PictureDifference difference = compare(expected.get(), picture.get());
        same = same && difference.isSmall();
        std::printf("vendor: %s\nrenderer: %s\nversion: %s\n", context->text(GL_VENDOR).c_str(),
                    context->text(GL_RENDERER).c_str(), context->text(GL_VERSION).c_str());
        std::printf(
            "largest difference from the software picture: %d levels, %d inside shapes, %d where edges "
            "may lie a pixel off; %.2f%% of the pixels differ: %s\n\n",
            difference.largest, difference.largestInside, difference.largestAtEdges, difference.share * 100,
            difference.isSmall() ? "good" : "DIFFERENT");
        if (!folder.empty())
            save(folder + "/opengl-" + std::to_string(contexts) + ".ppm", picture.get());
        ++contexts;
    }
    if (contexts == 0) {
        std::fprintf(stderr, "no OpenGL context without a display can be had\n");
        return 2;
    }
    return same ? 0 : 1;
}
