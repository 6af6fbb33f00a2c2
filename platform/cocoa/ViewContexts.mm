// Contexts that draw on the platform's views.

#import <AppKit/NSGraphicsContext.h>
#import <AppKit/NSOpenGL.h>
#import <AppKit/NSOpenGLView.h>
#import <AppKit/NSView.h>
#import <Foundation/NSAffineTransform.h>
#import <oxlume/cocoa/LxNSRect.h>

#include <cairo.h>
#include <objc/runtime.h>

#include <cstring>

#include <oxlume/LxGC.h>
#include <oxlume/LxQuartz.h>

#include "platform/Siblings.h"
#include "platform/cocoa/Focus.h"

// What GNUstep's contexts answer, but its headers do not tell.
@interface NSGraphicsContext (LxSupplements)
- (id)currentGState;
- (NSAffineTransform *)GSCurrentCTM;
@end

namespace lx {
namespace {

// What a drawing state of GNUstep's cairo backend draws with; null in another backend.
cairo_t *cairoOf(id state) {
    if (state == nil)
        return nullptr;
    const Ivar variable = class_getInstanceVariable(object_getClass(state), "_ct");
    constexpr char encoding[] = "^{_cairo=";
    if (variable == nullptr ||
        std::strncmp(ivar_getTypeEncoding(variable), encoding, sizeof encoding - 1) != 0)
        return nullptr;
    const char *field = reinterpret_cast<const char *>(state) + ivar_getOffset(variable);
    return *reinterpret_cast<cairo_t *const *>(field);
}

LxCGAffineTransform narrowed(const NSAffineTransformStruct &t) {
    return {static_cast<float>(t.m11), static_cast<float>(t.m12), static_cast<float>(t.m21),
            static_cast<float>(t.m22), static_cast<float>(t.tX),  static_cast<float>(t.tY)};
}

// A new Quartz context on the surface that holds the focused view, in the view's coordinates. GNUstep's own
// `graphicsPort` is null, or the object of another library.
CGContextRef newGraphicsPort() {
    NSGraphicsContext *context = [NSGraphicsContext currentContext];
    if (![context respondsToSelector:@selector(currentGState)])
        return nullptr;
    cairo_t *cairo = cairoOf([context currentGState]);
    if (cairo == nullptr)
        return nullptr;
    // The backend lays the platform's upward y on the surface by this transform, and points of the view on
    // that by the state's own.
    cairo_matrix_t base;
    cairo_get_matrix(cairo, &base);
    CGContextRef port = LxQuartz_CreateWithSurfaceYUp(cairo_get_target(cairo), static_cast<float>(base.y0));
    CGContextConcatCTM(port, narrowed([[context GSCurrentCTM] transformStruct]));
    return port;
}

LxGC *createForFocusedView(const LxRectD &bounds) {
    LxGC *gc = LxGC_CreateWithRect(bounds, bounds);
    if (gc == nullptr)
        return nullptr;
    CGContextRef port = newGraphicsPort();
    const bool added = LxGC_AddRenderer(gc, kLxRendererQuartz, port, nullptr) != 0;
    CGContextRelease(port); // the renderer keeps it
    if (added)
        return gc;
    LxGC_Delete(gc);
    return nullptr;
}

LxGC *createForView(void *target) {
    auto *view = static_cast<NSView *>(target);
    if (!canFocus(view))
        return nullptr;
    LxRectD bounds = LxRectD_fromNSRect([view frame]);
    LxRectD_moveTo(&bounds, 0, 0);
    if ([NSView focusView] == view)
        return createForFocusedView(bounds);
    [view lockFocus];
    LxGC *gc = createForFocusedView(bounds);
    [view unlockFocus]; // which gives the focus back to the view that had it
    return gc;
}

LxGC *createForOpenGLView(void *target) {
    auto *view = static_cast<NSOpenGLView *>(target);
    if (view == nil)
        return nullptr;
    return LxGC_CreateWithOpenGLContext([[view openGLContext] CGLContextObj],
                                        LxRectD_fromNSRect([view bounds]));
}

const bool registered =
    (LxPrivate_RegisterViewContexts({.forOpenGLView = createForOpenGLView, .forView = createForView}), true);

} // namespace
} // namespace lx
