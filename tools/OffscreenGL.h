// An OpenGL context without a display, and what was drawn in it as an image.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>

#include "tools/ImageHandle.h"

namespace tool {

// All displays that need no window system: the software one first, then those of graphics processors. They
// stay open until the program ends.
inline const std::vector<EGLDisplay> &offscreenDisplays() {
    static const std::vector<EGLDisplay> displays = [] {
        std::vector<EGLDisplay> opened;
        const auto open = [&](EGLenum platform, void *native) {
            const EGLDisplay display = eglGetPlatformDisplay(platform, native, nullptr);
            if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) == EGL_TRUE)
                opened.push_back(display);
        };
        open(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY);
        const auto queryDevices =
            reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
        EGLDeviceEXT devices[16];
        EGLint count = 0;
        if (queryDevices != nullptr && queryDevices(std::size(devices), devices, &count) == EGL_TRUE)
            for (EGLint i = 0; i < count; ++i)
                open(EGL_PLATFORM_DEVICE_EXT, devices[i]);
        return opened;
    }();
    return displays;
}

// A current context with a buffer of its own, until it is destroyed.
class OffscreenGL {
public:
    // On the first display that offers one; nothing where none does.
    static std::optional<OffscreenGL> open(int32_t width, int32_t height) {
        for (const EGLDisplay display : offscreenDisplays())
            if (std::optional<OffscreenGL> context = open(display, width, height))
                return context;
        return std::nullopt;
    }

    static std::optional<OffscreenGL> open(EGLDisplay display, int32_t width, int32_t height) {
        const EGLint wanted[] = {EGL_SURFACE_TYPE,
                                 EGL_PBUFFER_BIT,
                                 EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,
                                 8,
                                 EGL_GREEN_SIZE,
                                 8,
                                 EGL_BLUE_SIZE,
                                 8,
                                 EGL_ALPHA_SIZE,
                                 8,
                                 EGL_NONE};
        const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
        EGLConfig config;
        EGLint count = 0;
        if (eglBindAPI(EGL_OPENGL_API) != EGL_TRUE ||
            eglChooseConfig(display, wanted, &config, 1, &count) != EGL_TRUE || count == 0)
            return std::nullopt;
        OffscreenGL made(display, width, height);
        made.surface_ = eglCreatePbufferSurface(display, config, size);
        made.context_ = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
        if (made.surface_ == EGL_NO_SURFACE || made.context_ == EGL_NO_CONTEXT ||
            eglMakeCurrent(display, made.surface_, made.surface_, made.context_) != EGL_TRUE)
            return std::nullopt;
        return made;
    }

    OffscreenGL(OffscreenGL &&other) noexcept
        : display_(other.display_), width_(other.width_), height_(other.height_),
          surface_(std::exchange(other.surface_, EGL_NO_SURFACE)),
          context_(std::exchange(other.context_, EGL_NO_CONTEXT)) {}
    OffscreenGL &operator=(OffscreenGL &&) = delete;

    ~OffscreenGL() {
        if (context_ != EGL_NO_CONTEXT) {
            eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
            eglDestroyContext(display_, context_);
        }
        if (surface_ != EGL_NO_SURFACE)
            eglDestroySurface(display_, surface_);
    }

    // Who draws: GL_VENDOR, GL_RENDERER, GL_VERSION.
    static std::string text(GLenum name) {
        const GLubyte *value = glGetString(name);
        return value != nullptr ? reinterpret_cast<const char *>(value) : "";
    }

    // The picture, row y being OpenGL's own row y, counted from the bottom. Null for lack of memory.
    ImageHandle read() const {
        ImageHandle image(LxImage_Create(kLxPixelRGBA, 0, 0, width_, height_, 1, 0));
        if (image == nullptr)
            return nullptr;
        glPixelStorei(GL_PACK_ALIGNMENT, 4); // as an image's rows are
        glReadPixels(0, 0, width_, height_, GL_RGBA, GL_UNSIGNED_BYTE, LxImage_Data(image.get()));
        return image;
    }

private:
    OffscreenGL(EGLDisplay display, int32_t width, int32_t height)
        : display_(display), width_(width), height_(height) {}

    EGLDisplay display_;
    int32_t width_, height_;
    EGLSurface surface_ = EGL_NO_SURFACE;
    EGLContext context_ = EGL_NO_CONTEXT;
};

} // namespace tool
