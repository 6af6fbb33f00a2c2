// What stands behind an image, in any build.

#include <oxlume/LxNativeImage.h>

#include "image/Image.h"

int32_t LxImage_isNative(const LxImage *image) {
    return LxImage_NativeType(image) != kLxNativeNone;
}

int32_t LxImage_NativeType(const LxImage *image) {
    return image != nullptr ? static_cast<int32_t>(image->native) : kLxNativeNone;
}

void *LxImage_NativeHandle(const LxImage *image) {
    const int32_t type = LxImage_NativeType(image);
    return type >= kLxNativeCGImage && type <= kLxNativeNSBitmapImageRep ? image->nativeHandle : nullptr;
}

LxImage *LxImage_CreateNativeFromCGImage(CGImage *, int32_t) {
    return nullptr;
}
