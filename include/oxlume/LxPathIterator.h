/* Walking a path item by item, with curves cut into straight segments. */
#ifndef OXLUME_LXPATHITERATOR_H
#define OXLUME_LXPATHITERATOR_H

#include <oxlume/LxBase.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxPath.h>
#include <oxlume/LxPoint.h>

LX_BEGIN_DECLS

/* Callbacks and client values of a walk. One iterator serves one walk at a time. It keeps the pen between
 * walks: lines before the first move start there, at (0, 0) in a new iterator. */
typedef struct LxPathIterator LxPathIterator;

/* The client's callbacks. The points are valid during the call only; the path must not grow meanwhile. */
typedef void (*LxPathMoveCallback)(LxPathIterator *iterator, const LxPointD *point);
typedef void (*LxPathSegmentCallback)(LxPathIterator *iterator, const LxPointD *from, const LxPointD *to);
typedef void (*LxPathEndCallback)(LxPathIterator *iterator);

/* Any of them: cast yours to this type for LxPathIterator_SetCallback. */
typedef void (*LxPathCallback)(void);

/* Which callback LxPathIterator_SetCallback sets. */
typedef enum LxPathCallbackKind {
    kLxPathOnMove = 0,      /* LxPathMoveCallback: a subpath starts */
    kLxPathOnSegment = 1,   /* LxPathSegmentCallback: one straight segment */
    kLxPathOnSubpathEnd = 2 /* LxPathEndCallback: a subpath ended; an open last one does not report it */
} LxPathCallbackKind;

/* A new iterator that reports nothing; null for lack of memory. */
LX_API LxPathIterator *LxPath_CreateIterator(void);

/* Releases an iterator. Null is ignored. */
LX_API void LxPath_DeleteIterator(LxPathIterator *iterator);

/* Sets the callback of an LxPathCallbackKind; null takes it away. Another kind changes nothing. */
LX_API void LxPathIterator_SetCallback(LxPathIterator *iterator, int32_t kind, LxPathCallback callback);

/* Two values of the client's, for its callbacks. Each walk sets both. */
LX_API void *LxPathIterator_User(const LxPathIterator *iterator);
LX_API void *LxPathIterator_Data(const LxPathIterator *iterator);
LX_API void LxPathIterator_SetUser(LxPathIterator *iterator, void *user);
LX_API void LxPathIterator_SetData(LxPathIterator *iterator, void *data);

/* Walks the path, its points transformed by `matrix` unless that is null, and calls the iterator's callbacks.
 * Stores `user` and `data` in the iterator first. */
LX_API void LxPath_IterateConst(const LxPath *path, LxPathIterator *iterator, const LxMatrix *matrix,
                                void *user, void *data);

/* Walks the path for editing in place. Only code inside the library can install callbacks of items, so from
 * outside it stores `user` and `data` and reports the ends of closed subpaths. `unused` is not looked at. */
LX_API void LxPath_Iterate(LxPath *path, LxPathIterator *iterator, const void *unused, void *user,
                           void *data);

LX_END_DECLS

#endif
