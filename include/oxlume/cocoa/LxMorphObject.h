/* A picture with a list of control points, for an editor of morphs. */
#ifndef OXLUME_COCOA_LXMORPHOBJECT_H
#define OXLUME_COCOA_LXMORPHOBJECT_H

#import <Foundation/NSGeometry.h>
#import <Foundation/NSObject.h>

@class NSCoder, NSImage, NSMutableArray, NSURL;

/* Its coded form is that of the picture followed by that of the array, without keys of its own. */
@interface LxMorphObject : NSObject <NSCoding> {
    NSImage *image;
    NSMutableArray *points; /* NSValue objects that hold an NSPoint */
}

/* With the picture at `url`, or with none where it cannot be read, and no points. */
- (id)initWithImageURL:(NSURL *)url;

- (void)addPoint:(NSPoint)point;
- (void)removePoint:(NSPoint)point; /* Does nothing. */
- (void)clearPoints;

/* The object's own, not retained for the caller. */
- (NSImage *)image;
- (NSMutableArray *)points;

@end

#endif
