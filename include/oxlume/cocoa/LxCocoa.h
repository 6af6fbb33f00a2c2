/* All of liboxlume-cocoa's boundary, for Objective-C and Objective-C++: bridges between Oxlume's images and
 * the platform's pictures and views, and classes that offer the library to applications of that platform. All
 * of it belongs to the thread that draws. */
#ifndef OXLUME_COCOA_LXCOCOA_H
#define OXLUME_COCOA_LXCOCOA_H

#include <oxlume/oxlume.h>

#import <oxlume/cocoa/LxCocoaImage.h>
#import <oxlume/cocoa/LxDuration.h>
#import <oxlume/cocoa/LxGContext.h>
#import <oxlume/cocoa/LxMorphObject.h>
#import <oxlume/cocoa/LxNSImage.h>
#import <oxlume/cocoa/LxNSRect.h>
#import <oxlume/cocoa/LxScaledView.h>
#import <oxlume/cocoa/Sheen.h>

#endif
