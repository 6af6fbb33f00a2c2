/* A drawing context for applications of the platform: an LxGC, and an image for it to draw into.
 *
 * Its attributes can be read. What would draw or change something is reserved, so that clients bind: those
 * operations do nothing. Use the LxGC functions for that. */
#ifndef OXLUME_COCOA_LXGCONTEXT_H
#define OXLUME_COCOA_LXGCONTEXT_H

#import <Foundation/NSGeometry.h>
#import <Foundation/NSObject.h>

#include <oxlume/LxBlend.h>
#include <oxlume/LxColor.h>
#include <oxlume/LxGC.h>
#include <oxlume/LxGradient.h>
#include <oxlume/LxImage.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxPath.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>

@class NSString;
struct CGContext;

@interface LxGContext : NSObject {
    LxGC *m_pGC;       /* owned */
    LxImage *m_pImage; /* owned; null until prepareDraw: makes it */
}

/* A context without a target. */
- (id)init;

/* A context on the caller's image, clipped to the image's rectangle as it lies. */
- (id)initWithImage:(LxImage *)image;

/* Without an LxGC: the argument is not used. */
- (id)initWithCGContext:(struct CGContext *)context;

/* Gives a context that has no image of its own one to draw into, of the size of `rect` rounded up, and its
 * bounds. The pixels are as the memory was. Does nothing the second time. */
- (void)prepareDraw:(NSRect)rect;

/* ---- The context's attributes, as the LxGC functions of these names answer them ---- */

- (LxColor)lineColor; /* A line's attributes are LxGC_StrokeColor and its kin. */
- (double)lineWidth;
- (int32_t)lineStyle;
- (LxBlend)lineBlend;
- (int32_t)lineBlendMode;
- (int32_t)lineBlendChannel;
- (int32_t)lineBlendOpacity;
- (LxGradient *)lineGradient;

- (LxColor)fillColor;
- (LxBlend)fillBlend;
- (int32_t)fillBlendMode;
- (int32_t)fillBlendChannel;
- (int32_t)fillBlendOpacity;
- (LxGradient *)fillGradient;

- (LxBlend)imageBlend;
- (int32_t)imageBlendMode;
- (int32_t)imageBlendChannel;
- (int32_t)imageBlendOpacity;

- (double)textSize;
- (int32_t)textFont;
- (LxColor)textColor;
- (int32_t)textJust;
- (LxBlend)textBlend;
- (int32_t)textBlendMode;
- (int32_t)textBlendChannel;
- (int32_t)textBlendOpacity;
- (LxGradient *)textGradient;

/* ---- Reserved: 0, and LxRectD_0 for the rectangles ---- */

- (double)originX;
- (double)originY;
- (LxMatrix *)matrix;
- (LxMatrix *)inverseMatrix;
- (uint32_t)renderMode;
- (LxImage *)Image:(LxImage *)image with:(LxImage *)mask;
- (LxRectD)clipRect;
- (LxRectD)boundsRect;

/* ---- Reserved: no effect ---- */

- (void)drawLine:(double)x1:(double)y1:(double)x2:(double)y2;
- (void)drawFrame:(double)x1:(double)y1:(double)x2:(double)y2;
- (void)drawRoundFrame:(double)x1:(double)y1:(double)x2:(double)y2:(double)radiusX:(double)radiusY;
- (void)drawEllipse:(double)cx:(double)cy:(double)radiusX:(double)radiusY;
- (void)drawCircle:(double)cx:(double)cy:(double)radius;
- (void)drawPoly:(const LxPointD *)points:(int32_t)count;
- (void)drawPath:(const LxPath *)path;
- (void)drawImage:(LxImage *)image;
- (void)drawImage:(LxImage *)image at:(LxPointD)point;
- (void)drawImage:(LxImage *)image at:(LxPointD)point withMask:(LxImage *)mask;
- (void)sync;
- (void)flush;
- (void)clear;
- (void)fillWith:(LxColor)color;

- (void)setOrigin:(double)x:(double)y;
- (void)matrixIdentity;
- (void)matrixMul:(const LxMatrix *)other;
- (void)matrixScale:(double)sx:(double)sy;
- (void)matrixTranslate:(double)x:(double)y;
- (void)matrixRotate:(double)radians;
- (void)matrixRotateDeg:(double)degrees;

- (void)setClipRect:(LxRectD)rect;
- (void)setBoundsRect:(LxRectD)rect;
- (void)setRenderMode:(uint32_t)mode;

- (void)setStrokeColor:(LxColor)color;
- (void)setStrokeWidth:(double)width;
- (void)setStrokeStyle:(int32_t)style;
- (void)setStrokeBlend:(LxBlend)blend;
- (void)setStrokeBlendMode:(int32_t)mode;
- (void)setStrokeBlendChannel:(int32_t)channel;
- (void)setStrokeBlendOpacity:(int32_t)opacity;
- (void)setStrokeGradient:(LxGradient *)gradient;

- (void)setFillColor:(LxColor)color;
- (void)setFillBlend:(LxBlend)blend;
- (void)setFillBlendMode:(int32_t)mode;
- (void)setFillBlendChannel:(int32_t)channel;
- (void)setFillBlendOpacity:(int32_t)opacity;
- (void)setFillGradient:(LxGradient *)gradient;

- (void)setImageBlend:(LxBlend)blend;
- (void)setImageBlendMode:(int32_t)mode;
- (void)setImageBlendChannel:(int32_t)channel;
- (void)setImageBlendOpacity:(int32_t)opacity;

- (void)setTextSize:(double)size;
- (void)setTextFont:(int32_t)font;
- (void)setTextColor:(LxColor)color;
- (void)setTextJust:(int32_t)justification;
- (void)setTextBlend:(LxBlend)blend;
- (void)setTextBlendMode:(int32_t)mode;
- (void)setTextBlendChannel:(int32_t)channel;
- (void)setTextBlendOpacity:(int32_t)opacity;
- (void)setTextGradient:(LxGradient *)gradient;

/* From a control of the user interface. */
- (void)setFillModeFromControl:(id)control;
- (void)setFillChannelFromControl:(id)control;
- (void)setFillOpacityFromControl:(id)control;
- (void)setStrokeModeFromControl:(id)control;
- (void)setStrokeChannelFromControl:(id)control;
- (void)setStrokeOpacityFromControl:(id)control;
- (void)setStrokeWidthFromControl:(id)control;
- (void)setTextModeFromControl:(id)control;
- (void)setTextChannelFromControl:(id)control;
- (void)setTextOpacityFromControl:(id)control;
- (void)setImageModeFromControl:(id)control;
- (void)setImageChannelFromControl:(id)control;
- (void)setImageOpacityFromControl:(id)control;

@end

#endif
