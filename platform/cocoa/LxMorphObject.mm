// A picture with a list of control points.

#import <AppKit/NSImage.h>
#import <Foundation/NSArray.h>
#import <Foundation/NSCoder.h>
#import <Foundation/NSValue.h>
#import <oxlume/cocoa/LxMorphObject.h>

#import "platform/cocoa/Supplements.h"

@implementation LxMorphObject

- (id)initWithImageURL:(NSURL *)url {
    self = [super init];
    if (self == nil)
        return nil;
    image = [[NSImage alloc] initWithImageURL:url];
    points = [[NSMutableArray alloc] init];
    return self;
}

- (id)initWithCoder:(NSCoder *)coder {
    self = [super init];
    if (self == nil)
        return nil;
    image = [[NSImage alloc] initWithCoder:coder];
    points = [[NSMutableArray alloc] initWithCoder:coder];
    return self;
}

- (void)encodeWithCoder:(NSCoder *)coder {
    [image encodeWithCoder:coder];
    [points encodeWithCoder:coder];
}

- (void)dealloc {
    [image release];
    [points release];
    [super dealloc];
}

- (void)addPoint:(NSPoint)point {
    NSValue *value = [[NSValue valueWithPoint:point] retain];
    [points addObject:value];
    [value release];
}

- (void)removePoint:(NSPoint)point {
    (void)point;
}

- (void)clearPoints {
    [points removeAllObjects];
}

- (NSImage *)image {
    return image;
}

- (NSMutableArray *)points {
    return points;
}

@end
