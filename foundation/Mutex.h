// Mutexes and conditions over POSIX threads. Each wraps one call; no result is acted on.
#pragma once

#include <cstdint>
#include <pthread.h>

using LxMutex = pthread_mutex_t;
using LxCond = pthread_cond_t;

extern "C" {

// Prepares a mutex in memory of the caller's: a recursive one, or one that checks for errors.
void LxMutex_Init(LxMutex *mutex, int32_t recursive);

// Destroys the mutex at `*holder`, releases its memory, which came from LxMem_*, and sets `*holder` to null.
void LxMutex_Destroy(LxMutex **holder);

void LxMutex_Lock(LxMutex *mutex);
void LxMutex_Unlock(LxMutex *mutex);

void LxCond_Init(LxCond *cond);
void LxCond_Wait(LxCond *cond, LxMutex *mutex);
void LxCond_Signal(LxCond *cond);
void LxCond_Broadcast(LxCond *cond);

} // extern "C"

namespace lx {

// The processors that the library counts on: always 2, on any machine.
int32_t processorCount();

} // namespace lx
