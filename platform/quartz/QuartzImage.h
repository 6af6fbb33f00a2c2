// Pictures of the Quartz layer.
#pragma once

#include <memory>

#include <cairo.h>

#include <oxlume/LxQuartz.h>

#include "platform/quartz/Counted.h"

namespace lx {

struct DestroySurface {
    void operator()(cairo_surface_t *surface) const { cairo_surface_destroy(surface); }
};
using SurfaceHandle = std::unique_ptr<cairo_surface_t, DestroySurface>;

struct ImageForm {
    int32_t width, height;
    int32_t bytesPerPixel;
    size_t bytesPerRow;
    int32_t alphaInfo;
    bool isMask;
    bool interpolates;
};

// A colour of 8 bits per component, alpha not multiplied in.
struct InkBytes {
    uint8_t red, green, blue, alpha;
};

// Tells pictures of this layer from other objects that are handed to it.
inline constexpr char imageKind = 0;

} // namespace lx

struct CGDataProvider : lx::Counted {
    CGDataProvider(void *info, const void *data, size_t size, CGDataProviderReleaseDataCallback callback)
        : info(info), data(static_cast<const uint8_t *>(data)), size(size), callback(callback) {}
    ~CGDataProvider() {
        if (callback != nullptr)
            callback(info, data, size);
    }
    CGDataProvider(const CGDataProvider &) = delete;
    CGDataProvider &operator=(const CGDataProvider &) = delete;

    void *const info;
    const uint8_t *const data;
    const size_t size;
    const CGDataProviderReleaseDataCallback callback;
};

struct CGImage {
    CGImage(const lx::ImageForm &form, CGDataProvider &provider) : form(form), provider(provider) {
        provider.retain();
    }
    ~CGImage() { lx::release(&provider); }
    CGImage(const CGImage &) = delete;
    CGImage &operator=(const CGImage &) = delete;

    void retain() { references_.retain(); }
    bool releaseIsLast() { return references_.releaseIsLast(); }

    // The first word, where an object of the platform's object system has its class. Handles of such objects
    // reach us as pictures, and this word is all that is read of them.
    const char *const kind = &lx::imageKind;
    const lx::ImageForm form;
    CGDataProvider &provider;

private:
    lx::Counted references_;
};

namespace lx {

// Whether a handle is a picture of ours.
inline bool isImage(CGImageRef image) {
    return image != nullptr && image->kind == &imageKind;
}

// The picture as it is now, in cairo's form (with red and blue exchanged if asked); a mask is painted in
// `ink`. Null for lack of memory.
SurfaceHandle renderImage(const CGImage &image, const InkBytes &ink, bool exchangeRedAndBlue);

} // namespace lx
