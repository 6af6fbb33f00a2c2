/* The plane's rectangles and the platform's.
 *
 * An NSRect counts as an origin and a size of single precision, whatever the platform keeps: what comes from
 * one is narrowed before its corners are added, and what goes into one is narrowed last. */
#ifndef OXLUME_COCOA_LXNSRECT_H
#define OXLUME_COCOA_LXNSRECT_H

#import <Foundation/NSGeometry.h>

#include <oxlume/LxRect.h>

LX_BEGIN_DECLS

/* The corners x, y and x + width, y + height; a negative size gives corners out of order. */
LX_API LxRectD LxRectD_fromNSRect(NSRect rect);

/* The first corner, and the differences to the second as the size; neither sorts. */
LX_API NSRect LxRectD_asNSRect(LxRectD rect);
LX_API NSRect LxRectL_asNSRect(LxRectL rect);

/* The smallest integers that cover the rectangle: the floor of its first corner, the ceiling of its second,
 * then sorted. One beyond 32 bits, or not a number, gives INT32_MIN. */
LX_API LxRectL LxRectL_fromNSRect(NSRect rect);

LX_END_DECLS

#endif
