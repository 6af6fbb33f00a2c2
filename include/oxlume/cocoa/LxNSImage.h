/* A picture from a file whose marker pixels may cut it into tiles. */
#ifndef OXLUME_COCOA_LXNSIMAGE_H
#define OXLUME_COCOA_LXNSIMAGE_H

#import <AppKit/NSImage.h>

#include <oxlume/LxImage.h>

@interface LxNSImage : NSImage {
    LxImage *m_pImage; /* over the first representation; null where that is no bitmap */
}

/* The picture of the file at a path, or null where there is none. Reads its marker pixels. */
- (id)initWithContentsOfTiledFile:(NSString *)path;

/* Draws the picture on the focused view with its corner at that of `rect`. A tiled one is not drawn yet: what
 * the view shows in `rect` is grabbed and drawn back. */
- (void)fillInRect:(NSRect)rect;

@end

#endif
