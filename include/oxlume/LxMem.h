/* The library's allocator with its out-of-memory policy, and utilities on raw bytes and bits. */
#ifndef OXLUME_LXMEM_H
#define OXLUME_LXMEM_H

#include <oxlume/LxBase.h>

LX_BEGIN_DECLS

/* What to do when the system has no memory left. A value above 4 makes the failing call spin for ever. */
typedef enum LxMemFail {
    kLxMemFailExit = 0,       /* exit(1) */
    kLxMemFailExitToo = 1,    /* exit(1) */
    kLxMemFailReturnNull = 2, /* the call answers null; the default */
    kLxMemFailCallHandler =
        3,              /* the client's handler is called and answers what to do, for this failure only */
    kLxMemFailRetry = 4 /* the allocation is tried again until it succeeds */
} LxMemFail;

/* A client's answer to a failed allocation: returns an LxMemFail. */
typedef int32_t (*LxMemFailHandler)(void);

/* Sets the out-of-memory policy of the process; may be called before Oxlume_Init and survives Oxlume_Term.
 * `handler` is kept only with kLxMemFailCallHandler; that mode with a null handler acts as
 * kLxMemFailReturnNull. Not synchronised with allocations on other threads. */
LX_API void LxMem_SetException(uint32_t mode, LxMemFailHandler handler);

/* A block of `size` bytes, owned by the caller until LxMem_free, or null. Size 0 gives null. */
LX_API void *LxMem_malloc(uint32_t size);

/* A zeroed block of count * size bytes, or null. A product whose low 32 bits are all 0 gives null. */
LX_API void *LxMem_calloc(uint32_t count, uint32_t size);

/* Resizes a block. A null `pointer` allocates; size 0 frees and answers null. When null is answered for lack
 * of memory, the old block stays valid. */
LX_API void *LxMem_realloc(void *pointer, uint32_t size);

/* A copy of a string, owned by the caller until LxMem_free, or null. A null string gives null, and so does
 * one of 4,294,967,295 bytes or more. */
LX_API char *LxMem_strdup(const char *string);

/* Releases a block of the functions above. Null is ignored. */
LX_API void LxMem_free(void *pointer);

/* Fills `length` bytes with the low byte of `value`. */
LX_API void LxMemset(void *destination, int32_t value, uint32_t length);

/* Replaces each of `length` bytes by its complement. */
LX_API void LxMemInvert(void *buffer, uint32_t length);

/* Reserved: copies nothing and answers 0. */
LX_API int32_t LxMemCopy(void *destination, const void *source, uint32_t length);

/* Reserved: answers 0 for every input, equal buffers included. */
LX_API int32_t LxMemIsEqual(const void *a, const void *b, uint32_t length);

/* Bit arrays. A buffer is one string of bits, the most significant bit of each byte first: bit n is the bit
 * of value 1 << (7 - n % 8) in byte n / 8. */

/* 1 if bit n is set, else 0. */
LX_API int32_t LxTestBit(const void *buffer, uint32_t n);

LX_API void LxSetBit(void *buffer, uint32_t n);    /* Sets bit n. */
LX_API void LxClearBit(void *buffer, uint32_t n);  /* Clears bit n. */
LX_API void LxInvertBit(void *buffer, uint32_t n); /* Inverts bit n. */

LX_END_DECLS

#endif
