#include <oxlume/LxThread.h>

#include <cerrno>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <oxlume/LxMem.h>

#include "foundation/Memory.h"
#include "foundation/Mutex.h"

namespace {

int one = 1;
int two = 2;

} // namespace

TEST(Thread, IdIsThePosixThread) {
    EXPECT_TRUE(pthread_equal(LxThread_ID(), pthread_self()));
    std::thread([caller = LxThread_ID()] { EXPECT_FALSE(pthread_equal(LxThread_ID(), caller)); }).join();
}

TEST(ThreadData, ReadingAZeroedKeyCreatesItAndGivesNull) {
    static LxThreadKey key;
    EXPECT_EQ(LxThread_Data(&key), nullptr);
    EXPECT_EQ(key.magic, 0x11223344u);
    LxThread_SetData(&key, &one);
    std::thread([] {
        EXPECT_EQ(LxThread_Data(&key), nullptr) << "a second thread has stored nothing yet";
        LxThread_SetData(&key, &two);
        EXPECT_EQ(LxThread_Data(&key), &two);
    }).join();
    EXPECT_EQ(LxThread_Data(&key), &one);
}

TEST(ThreadData, StoringInAZeroedKeyCreatesIt) {
    static LxThreadKey key;
    LxThread_SetData(&key, &one);
    EXPECT_EQ(key.magic, 0x11223344u);
    EXPECT_EQ(LxThread_Data(&key), &one);
    std::thread([] { EXPECT_EQ(LxThread_Data(&key), nullptr); }).join();
}

TEST(ThreadData, AKeyWithTheMagicIsTrusted) {
    pthread_key_t made;
    pthread_key_create(&made, nullptr);
    pthread_setspecific(made, &two);
    LxThreadKey key = {made, kLxThreadKeyMagic};
    EXPECT_EQ(LxThread_Data(&key), &two);
    EXPECT_EQ(key.key, made);
}

TEST(ThreadData, InitOnAUsedKeyMakesANewOneAndLosesTheValues) {
    static LxThreadKey key;
    LxThread_SetData(&key, &one);
    const pthread_key_t before = key.key;
    LxThread_InitData(&key);
    EXPECT_NE(key.key, before);
    EXPECT_EQ(key.magic, 0x11223344u);
    EXPECT_EQ(LxThread_Data(&key), nullptr);
}

TEST(ThreadData, RunningOutOfKeysPrintsALineAndExits) {
    EXPECT_EXIT(
        {
            std::vector<LxThreadKey> keys(PTHREAD_KEYS_MAX + 1);
            for (LxThreadKey &key : keys)
                LxThread_InitData(&key);
        },
        testing::ExitedWithCode(255), "^LxThread: failed to allocate key for thread specific data: ");
}

TEST(ThreadData, StoringUnderADeadKeyPrintsALineAndExits) {
    LxThreadKey key;
    key.key = PTHREAD_KEYS_MAX + 1;
    key.magic = kLxThreadKeyMagic;
    EXPECT_EXIT(LxThread_SetData(&key, &one), testing::ExitedWithCode(255),
                "^LxThread: thread failed to set thread specific data: ");
}

TEST(Mutex, RecursiveOneIsTakenTwiceAndReleasedTwice) {
    LxMutex mutex;
    LxMutex_Init(&mutex, 1);
    LxMutex_Lock(&mutex);
    LxMutex_Lock(&mutex);
    const auto tryFromAnotherThread = [&mutex] {
        int result = 0;
        std::thread([&] {
            result = pthread_mutex_trylock(&mutex);
            if (result == 0)
                pthread_mutex_unlock(&mutex);
        }).join();
        return result;
    };
    LxMutex_Unlock(&mutex);
    EXPECT_EQ(tryFromAnotherThread(), EBUSY);
    LxMutex_Unlock(&mutex);
    EXPECT_EQ(tryFromAnotherThread(), 0);
    pthread_mutex_destroy(&mutex);
}

TEST(Mutex, OtherOneChecksForErrors) {
    LxMutex mutex;
    LxMutex_Init(&mutex, 0);
    LxMutex_Lock(&mutex);
    EXPECT_EQ(pthread_mutex_lock(&mutex), EDEADLK);
    LxMutex_Lock(&mutex); // ignored, and does not block
    LxMutex_Unlock(&mutex);
    EXPECT_EQ(pthread_mutex_unlock(&mutex), EPERM);
    pthread_mutex_destroy(&mutex);
}

TEST(Mutex, DestroyReleasesItsMemoryAndClearsTheHolder) {
    const int32_t before = lx::allocationCount();
    auto *mutex = static_cast<LxMutex *>(LxMem_malloc(sizeof(LxMutex)));
    LxMutex_Init(mutex, 1);
    LxMutex_Destroy(&mutex);
    EXPECT_EQ(mutex, nullptr);
    EXPECT_EQ(lx::allocationCount(), before);
}

TEST(Condition, SignalAndBroadcastWakeWaiters) {
    for (const bool broadcast : {false, true}) {
        LxMutex mutex;
        LxCond cond;
        LxMutex_Init(&mutex, 0);
        LxCond_Init(&cond);
        bool waiting = false, ready = false;
        std::thread waiter([&] {
            LxMutex_Lock(&mutex);
            waiting = true;
            while (!ready)
                LxCond_Wait(&cond, &mutex);
            LxMutex_Unlock(&mutex);
        });
        for (bool isReady = false; !isReady;) {
            LxMutex_Lock(&mutex); // once it is waiting, only its wait has let go of the mutex
            isReady = ready = waiting;
            LxMutex_Unlock(&mutex);
        }
        broadcast ? LxCond_Broadcast(&cond) : LxCond_Signal(&cond);
        waiter.join();
        pthread_cond_destroy(&cond);
        pthread_mutex_destroy(&mutex);
    }
}

TEST(Processors, AreAlwaysTwo) {
    EXPECT_EQ(lx::processorCount(), 2);
}
