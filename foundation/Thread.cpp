#include <oxlume/LxThread.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <oxlume/LxMem.h>

#include "foundation/Mutex.h"

namespace {

[[noreturn]] void failThread(int error, const char *message) {
    errno = error; // the calls of POSIX threads answer their error and leave errno alone
    std::perror(message);
    std::exit(-1);
}

// What a mutex or condition call answered: the place where a debug build may report. Nothing is acted on.
void check(const char *, int) {}

void createIfNew(LxThreadKey &key) {
    if (key.magic != kLxThreadKeyMagic)
        LxThread_InitData(&key);
}

} // namespace

pthread_t LxThread_ID(void) {
    return pthread_self();
}

void LxThread_InitData(LxThreadKey *key) {
    if (const int error = pthread_key_create(&key->key, nullptr); error != 0)
        failThread(error, "LxThread: failed to allocate key for thread specific data");
    key->magic = kLxThreadKeyMagic;
}

void *LxThread_Data(LxThreadKey *key) {
    createIfNew(*key);
    return pthread_getspecific(key->key);
}

void LxThread_SetData(LxThreadKey *key, void *value) {
    createIfNew(*key);
    if (const int error = pthread_setspecific(key->key, value); error != 0)
        failThread(error, "LxThread: thread failed to set thread specific data");
}

void LxMutex_Init(LxMutex *mutex, int32_t recursive) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes,
                              recursive != 0 ? PTHREAD_MUTEX_RECURSIVE : PTHREAD_MUTEX_ERRORCHECK);
    check("LxMutex_Init", pthread_mutex_init(mutex, &attributes));
    pthread_mutexattr_destroy(&attributes);
}

void LxMutex_Destroy(LxMutex **holder) {
    check("LxMutex_Destroy", pthread_mutex_destroy(*holder));
    LxMem_free(*holder);
    *holder = nullptr;
}

void LxMutex_Lock(LxMutex *mutex) {
    check("LxMutex_Lock", pthread_mutex_lock(mutex));
}

void LxMutex_Unlock(LxMutex *mutex) {
    check("LxMutex_Unlock", pthread_mutex_unlock(mutex));
}

void LxCond_Init(LxCond *cond) {
    // On purpose: the label of the mutex's initialisation.
    check("LxMutex_Init", pthread_cond_init(cond, nullptr));
}

void LxCond_Wait(LxCond *cond, LxMutex *mutex) {
    check("LxCond_Wait", pthread_cond_wait(cond, mutex));
}

void LxCond_Signal(LxCond *cond) {
    check("LxCond_Signal", pthread_cond_signal(cond));
}

void LxCond_Broadcast(LxCond *cond) {
    check("LxCond_Broadcast", pthread_cond_broadcast(cond));
}

namespace lx {

int32_t processorCount() {
    return 2;
}

} // namespace lx
