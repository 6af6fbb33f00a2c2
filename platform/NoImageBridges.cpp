// Images and CGImages in a library without Quartz: there are none.

#include <oxlume/LxNativeImage.h>

LxImage *LxImage_NativeCGImage(int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t) {
    return nullptr;
}

LxImage *LxImage_CreateNative(int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t) {
    return nullptr;
}

CGImage *LxImage_CreateCGImageRef(const LxImage *, int32_t) {
    return nullptr;
}
