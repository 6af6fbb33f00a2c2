/* A view that shows a five-piece bar with each of its end caps, stretched to a slider's width. The bar is the
 * picture named "Region_R__1N" in the application's resources. */
#ifndef OXLUME_COCOA_LXSCALEDVIEW_H
#define OXLUME_COCOA_LXSCALEDVIEW_H

#import <AppKit/NSNibDeclarations.h>
#import <AppKit/NSView.h>

@class NSSlider;

@interface LxScaledView : NSView {
    IBOutlet NSSlider *m_XSlider; /* its whole number is the bar's width in pixels */
}

- (IBAction)Refresh:(id)sender; /* Draws the view anew. */

@end

#endif
