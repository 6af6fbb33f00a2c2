// The demonstration view: a five-piece bar with each of its end caps.

#import <AppKit/NSBitmapImageRep.h>
#import <AppKit/NSGraphics.h>
#import <AppKit/NSImage.h>
#import <AppKit/NSSlider.h>
#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/LxNSRect.h>
#import <oxlume/cocoa/LxScaledView.h>

#include <oxlume/LxBlend.h>

#include "foundation/Numeric.h"
#include "platform/cocoa/Focus.h"

namespace lx {
namespace {

// The pieces of the bar that a round draws, as the six switches, and where its bar lies.
struct Round {
    int32_t y;
    int32_t switches[6];
};

constexpr Round rounds[] = {
    {0, {1, 1, 1, 0, 0, 0}},
    {44, {1, 1, 0, 0, 0, 1}},
    {88, {0, 1, 1, 1, 0, 0}},
    {132, {0, 1, 0, 1, 0, 1}},
};

void drawBars(LxImage *target, LxImage *bar, LxRectL area) {
    constexpr int32_t burn = 13;
    LxBlend blend = LxBlend(burn, 255);
    for (const Round &round : rounds) {
        const int32_t *s = round.switches;
        LxRectL_moveTo(&area, 0, round.y);
        LxImage_SetSegmentFlag(bar, s[0], s[1], s[2], s[3], s[4], s[5]);
        LxBlend_Image_Image(&blend, target, bar, nullptr, &area);
    }
}

} // namespace
} // namespace lx

@implementation LxScaledView

- (IBAction)Refresh:(id)sender {
    (void)sender;
    [self setNeedsDisplay:YES];
}

- (void)drawRect:(NSRect)rect {
    if (!lx::hasFocus())
        return;
    NSRectClip(rect);
    NSBitmapImageRep *rep = lx::newGrab(rect);
    LxImage *target = LxImage_CreateFromNSBitmapImageRep(rep, 1);
    NSImage *picture = [NSImage imageNamed:@"Region_R__1N"];
    LxImage *bar = LxImage_CreateFromNSImage(picture);
    LxImage_SetFlipped(bar, 1);
    // On purpose: the second picture is looked up and then not used; it is the first that is taken again.
    [NSImage imageNamed:@"df_region_a_03"];
    LxImage *unused = LxImage_CreateFromNSImage(picture);
    if (target != nullptr && bar != nullptr && unused != nullptr) {
        LxRectL area = LxRectL_fromNSRect([self frame]);
        area.x1 = lx::wrappingAdd(area.x0, [m_XSlider intValue]);
        lx::drawBars(target, bar, area);
        [rep drawAtPoint:rect.origin];
    }
    LxImage_Delete(target);
    LxImage_Delete(bar);
    LxImage_Delete(unused);
    [rep release];
}

@end
