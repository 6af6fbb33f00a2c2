/* Start and stop of the library. */
#ifndef OXLUME_LXLIBRARY_H
#define OXLUME_LXLIBRARY_H

#include <oxlume/LxBase.h>

LX_BEGIN_DECLS

/* Starts the library: adopts the environment's locale for the whole process (setlocale), prepares the
 * renderers and registers Oxlume_Term with atexit. Does nothing while started. Always answers 1.
 * To be called from one thread, before other threads use the library. */
LX_API int32_t Oxlume_Init(void);

/* Stops the library and releases what it keeps for reuse: the pools of image buffers and the rasteriser's
 * store. Does nothing unless started; a client need not call it. Delete images first: the memory of those
 * still alive is released only as they are deleted. A later Oxlume_Init makes the library whole again. */
LX_API void Oxlume_Term(void);

LX_END_DECLS

#endif
