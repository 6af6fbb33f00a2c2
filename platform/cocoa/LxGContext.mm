// A drawing context for applications of the platform.

#import <oxlume/cocoa/LxGContext.h>

#include "foundation/Numeric.h"
#include "platform/cocoa/Rects.h"

namespace lx {
namespace {

// Rounds up in single precision: truncates, and adds 1 if the value was positive and not whole.
int32_t roundedUp(double length) {
    const double value = narrowed(length);
    const int32_t whole = truncateToInt32(value);
    return value > 0 && whole != value ? wrappingAdd(whole, 1) : whole;
}

} // namespace
} // namespace lx

// An attribute that is read from the LxGC.
#define LX_READ(type, name, accessor)                                                                        \
    -(type)name {                                                                                            \
        return accessor(m_pGC);                                                                              \
    }

// A reserved operation of one argument.
#define LX_RESERVED(name, type)                                                                              \
    -(void)name : (type)value {                                                                              \
        (void)value;                                                                                         \
    }

@implementation LxGContext

- (id)init {
    self = [super init];
    if (self != nil)
        m_pGC = LxGC_Create();
    return self;
}

- (id)initWithImage:(LxImage *)image {
    self = [super init];
    if (self != nil)
        m_pGC = LxGC_CreateWithImage(image, LxImage_RectD(image));
    return self;
}

- (id)initWithCGContext:(struct CGContext *)context {
    (void)context;
    return [super init];
}

- (void)dealloc {
    LxGC_Delete(m_pGC);
    LxImage_Delete(m_pImage);
    [super dealloc];
}

- (void)prepareDraw:(NSRect)rect {
    if (m_pImage != nullptr)
        return;
    const int32_t width = lx::roundedUp(rect.size.width);
    const int32_t height = lx::roundedUp(rect.size.height);
    m_pImage = LxImage_Create(kLxPixelRGBA, 0, 0, width, height, 0, 0);
    LxGC_AddRenderer(m_pGC, kLxRendererSoftware, m_pImage, nullptr);
    const LxRectD bounds = LxImage_RectD(m_pImage);
    LxGC_SetBoundsRectD(m_pGC, bounds.x0, bounds.y0, bounds.x1, bounds.y1);
    LxGC_SetClipRectD(m_pGC, bounds.x0, bounds.y0, bounds.x1, bounds.y1);
}

LX_READ(LxColor, lineColor, LxGC_StrokeColor)
LX_READ(double, lineWidth, LxGC_StrokeWidth)
LX_READ(int32_t, lineStyle, LxGC_StrokeStyle)
LX_READ(LxBlend, lineBlend, LxGC_StrokeBlend)
LX_READ(int32_t, lineBlendMode, LxGC_StrokeBlendMode)
LX_READ(int32_t, lineBlendChannel, LxGC_StrokeBlendChannel)
LX_READ(int32_t, lineBlendOpacity, LxGC_StrokeBlendOpacity)
LX_READ(LxGradient *, lineGradient, LxGC_StrokeGradient)
LX_READ(LxColor, fillColor, LxGC_FillColor)
LX_READ(LxBlend, fillBlend, LxGC_FillBlend)
LX_READ(int32_t, fillBlendMode, LxGC_FillBlendMode)
LX_READ(int32_t, fillBlendChannel, LxGC_FillBlendChannel)
LX_READ(int32_t, fillBlendOpacity, LxGC_FillBlendOpacity)
LX_READ(LxGradient *, fillGradient, LxGC_FillGradient)
LX_READ(LxBlend, imageBlend, LxGC_ImageBlend)
LX_READ(int32_t, imageBlendMode, LxGC_ImageBlendMode)
LX_READ(int32_t, imageBlendChannel, LxGC_ImageBlendChannel)
LX_READ(int32_t, imageBlendOpacity, LxGC_ImageBlendOpacity)
LX_READ(double, textSize, LxGC_TextSize)
LX_READ(int32_t, textFont, LxGC_TextFont)
LX_READ(LxColor, textColor, LxGC_TextColor)
LX_READ(int32_t, textJust, LxGC_TextJust)
LX_READ(LxBlend, textBlend, LxGC_TextBlend)
LX_READ(int32_t, textBlendMode, LxGC_TextBlendMode)
LX_READ(int32_t, textBlendChannel, LxGC_TextBlendChannel)
LX_READ(int32_t, textBlendOpacity, LxGC_TextBlendOpacity)
LX_READ(LxGradient *, textGradient, LxGC_TextGradient)

- (double)originX {
    return 0;
}

- (double)originY {
    return 0;
}

- (LxMatrix *)matrix {
    return nullptr;
}

- (LxMatrix *)inverseMatrix {
    return nullptr;
}

- (uint32_t)renderMode {
    return 0;
}

- (LxImage *)Image:(LxImage *)image with:(LxImage *)mask {
    (void)image;
    (void)mask;
    return nullptr;
}

- (LxRectD)clipRect {
    return LxRectD_0;
}

- (LxRectD)boundsRect {
    return LxRectD_0;
}

- (void)drawLine:(double)x1:(double)y1:(double)x2:(double)y2 {
    (void)x1;
    (void)y1;
    (void)x2;
    (void)y2;
}

- (void)drawFrame:(double)x1:(double)y1:(double)x2:(double)y2 {
    (void)x1;
    (void)y1;
    (void)x2;
    (void)y2;
}

- (void)drawRoundFrame:(double)x1:(double)y1:(double)x2:(double)y2:(double)radiusX:(double)radiusY {
    (void)x1;
    (void)y1;
    (void)x2;
    (void)y2;
    (void)radiusX;
    (void)radiusY;
}

- (void)drawEllipse:(double)cx:(double)cy:(double)radiusX:(double)radiusY {
    (void)cx;
    (void)cy;
    (void)radiusX;
    (void)radiusY;
}

- (void)drawCircle:(double)cx:(double)cy:(double)radius {
    (void)cx;
    (void)cy;
    (void)radius;
}

- (void)drawPoly:(const LxPointD *)points:(int32_t)count {
    (void)points;
    (void)count;
}

LX_RESERVED(drawPath, const LxPath *)
LX_RESERVED(drawImage, LxImage *)

- (void)drawImage:(LxImage *)image at:(LxPointD)point {
    (void)image;
    (void)point;
}

- (void)drawImage:(LxImage *)image at:(LxPointD)point withMask:(LxImage *)mask {
    (void)image;
    (void)point;
    (void)mask;
}

- (void)sync {
}
- (void)flush {
}
- (void)clear {
}
LX_RESERVED(fillWith, LxColor)

- (void)setOrigin:(double)x:(double)y {
    (void)x;
    (void)y;
}

- (void)matrixIdentity {
}
LX_RESERVED(matrixMul, const LxMatrix *)

- (void)matrixScale:(double)sx:(double)sy {
    (void)sx;
    (void)sy;
}

- (void)matrixTranslate:(double)x:(double)y {
    (void)x;
    (void)y;
}

LX_RESERVED(matrixRotate, double)
LX_RESERVED(matrixRotateDeg, double)

LX_RESERVED(setClipRect, LxRectD)
LX_RESERVED(setBoundsRect, LxRectD)
LX_RESERVED(setRenderMode, uint32_t)

LX_RESERVED(setStrokeColor, LxColor)
LX_RESERVED(setStrokeWidth, double)
LX_RESERVED(setStrokeStyle, int32_t)
LX_RESERVED(setStrokeBlend, LxBlend)
LX_RESERVED(setStrokeBlendMode, int32_t)
LX_RESERVED(setStrokeBlendChannel, int32_t)
LX_RESERVED(setStrokeBlendOpacity, int32_t)
LX_RESERVED(setStrokeGradient, LxGradient *)

LX_RESERVED(setFillColor, LxColor)
LX_RESERVED(setFillBlend, LxBlend)
LX_RESERVED(setFillBlendMode, int32_t)
LX_RESERVED(setFillBlendChannel, int32_t)
LX_RESERVED(setFillBlendOpacity, int32_t)
LX_RESERVED(setFillGradient, LxGradient *)

LX_RESERVED(setImageBlend, LxBlend)
LX_RESERVED(setImageBlendMode, int32_t)
LX_RESERVED(setImageBlendChannel, int32_t)
LX_RESERVED(setImageBlendOpacity, int32_t)

LX_RESERVED(setTextSize, double)
LX_RESERVED(setTextFont, int32_t)
LX_RESERVED(setTextColor, LxColor)
LX_RESERVED(setTextJust, int32_t)
LX_RESERVED(setTextBlend, LxBlend)
LX_RESERVED(setTextBlendMode, int32_t)
LX_RESERVED(setTextBlendChannel, int32_t)
LX_RESERVED(setTextBlendOpacity, int32_t)
LX_RESERVED(setTextGradient, LxGradient *)

LX_RESERVED(setFillModeFromControl, id)
LX_RESERVED(setFillChannelFromControl, id)
LX_RESERVED(setFillOpacityFromControl, id)
LX_RESERVED(setStrokeModeFromControl, id)
LX_RESERVED(setStrokeChannelFromControl, id)
LX_RESERVED(setStrokeOpacityFromControl, id)
LX_RESERVED(setStrokeWidthFromControl, id)
LX_RESERVED(setTextModeFromControl, id)
LX_RESERVED(setTextChannelFromControl, id)
LX_RESERVED(setTextOpacityFromControl, id)
LX_RESERVED(setImageModeFromControl, id)
LX_RESERVED(setImageChannelFromControl, id)
LX_RESERVED(setImageOpacityFromControl, id)

@end
