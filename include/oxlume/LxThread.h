/* The identity of a thread, and slots of data that each thread has for itself. */
#ifndef OXLUME_LXTHREAD_H
#define OXLUME_LXTHREAD_H

#include <pthread.h>

#include <oxlume/LxBase.h>

LX_BEGIN_DECLS

/* What `magic` holds in a slot that has been created. */
enum {
    kLxThreadKeyMagic = 0x11223344 /* its value */
};

/* A slot of per-thread data. Keep it in static memory, so that it starts zeroed; it creates itself on first
 * use. */
typedef struct LxThreadKey {
    pthread_key_t key; /* the system's */
    uint32_t magic;    /* kLxThreadKeyMagic once `key` has been created, anything else before */
} LxThreadKey;

/* The calling thread, as pthread_self tells it. */
LX_API pthread_t LxThread_ID(void);

/* Creates the key, also where there is one already, whose values are then lost. Two threads that may use a
 * slot first at the same time call this before. When the system has no key left, prints a line to standard
 * error and exits the process with -1. */
LX_API void LxThread_InitData(LxThreadKey *key);

/* The calling thread's value of the slot, or null if it has stored none. */
LX_API void *LxThread_Data(LxThreadKey *key);

/* Stores the calling thread's value of the slot, which stays the caller's: nothing is released when the
 * thread ends. On failure prints a line to standard error and exits the process with -1. */
LX_API void LxThread_SetData(LxThreadKey *key, void *value);

LX_END_DECLS

#endif
