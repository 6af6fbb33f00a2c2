#include "foundation/Memory.h"

#include <cstdlib>
#include <cstring>
#include <thread>

#include <sys/resource.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <oxlume/LxMem.h>

using namespace lx;

namespace {

int failuresLeft;
int handlerCalls;

bool failsNow() {
    return failuresLeft > 0 && failuresLeft-- > 0;
}

constexpr SystemAllocator failing = {
    [](size_t size) { return failsNow() ? nullptr : std::malloc(size); },
    [](size_t count, size_t size) { return failsNow() ? nullptr : std::calloc(count, size); },
    [](void *pointer, size_t size) { return failsNow() ? nullptr : std::realloc(pointer, size); },
};

// The allocator fails as often as told; the policy is the default one at the start and at the end.
class FailingMemory : public testing::Test {
protected:
    void SetUp() override {
        failuresLeft = 0;
        handlerCalls = 0;
        setSystemAllocator(&failing);
        LxMem_SetException(kLxMemFailReturnNull, nullptr);
    }
    void TearDown() override {
        setSystemAllocator(nullptr);
        LxMem_SetException(kLxMemFailReturnNull, nullptr);
    }
};

int32_t answerNull() {
    ++handlerCalls;
    return kLxMemFailReturnNull;
}

int32_t answerRetry() {
    ++handlerCalls;
    return kLxMemFailRetry;
}

int32_t answerExit() {
    return kLxMemFailExitToo;
}

int32_t answerHandlerTwiceThenNull() {
    return ++handlerCalls < 3 ? kLxMemFailCallHandler : kLxMemFailReturnNull;
}

int32_t answerUndefined() {
    ++handlerCalls;
    return 5;
}

} // namespace

TEST(Memory, NothingAskedForGivesNullAndTouchesNothing) {
    const int32_t before = allocationCount();
    LxMem_SetException(kLxMemFailCallHandler, answerNull);
    handlerCalls = 0;
    EXPECT_EQ(LxMem_malloc(0), nullptr);
    EXPECT_EQ(LxMem_calloc(0, 8), nullptr);
    EXPECT_EQ(LxMem_calloc(8, 0), nullptr);
    EXPECT_EQ(LxMem_realloc(nullptr, 0), nullptr);
    EXPECT_EQ(LxMem_strdup(nullptr), nullptr);
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(handlerCalls, 0);
    LxMem_SetException(kLxMemFailReturnNull, nullptr);
}

TEST(Memory, FreeOfNullIsIgnored) {
    const int32_t before = allocationCount();
    LxMem_free(nullptr);
    EXPECT_EQ(allocationCount(), before);
}

TEST(Memory, CountsBlocksHandedOut) {
    const int32_t before = allocationCount();
    void *a = LxMem_malloc(10);
    void *b = LxMem_calloc(3, 5);
    char *c = LxMem_strdup("three");
    void *d = LxMem_realloc(nullptr, 7);
    EXPECT_EQ(allocationCount(), before + 4);
    d = LxMem_realloc(d, 7000);
    EXPECT_EQ(allocationCount(), before + 4) << "resizing hands out no further block";
    EXPECT_EQ(LxMem_realloc(d, 0), nullptr);
    EXPECT_EQ(allocationCount(), before + 3);
    LxMem_free(a);
    LxMem_free(b);
    LxMem_free(c);
    EXPECT_EQ(allocationCount(), before);
}

TEST(Memory, ASecondStartKeepsTheCount) {
    endMemory();
    startMemory();
    EXPECT_EQ(allocationCount(), 0) << "the first start after an end counts anew";
    void *const block = LxMem_malloc(1);
    startMemory();
    EXPECT_EQ(allocationCount(), 1);
    LxMem_free(block);
}

TEST(Memory, CallocZeroesBlocksOfEverySize) {
    for (const uint32_t size : {1u, 16u, 1024u, 1025u, 100000u}) {
        void *dirty = LxMem_malloc(size);
        std::memset(dirty, 0xEE, size);
        LxMem_free(dirty);
        auto *block = static_cast<uint8_t *>(LxMem_calloc(1, size));
        for (uint32_t i = 0; i < size; ++i)
            ASSERT_EQ(block[i], 0) << "byte " << i << " of " << size;
        LxMem_free(block);
    }
}

TEST(Memory, CallocsProductIsZeroWhenItsLow32BitsAre) {
    EXPECT_EQ(LxMem_calloc(0x10000, 0x10000), nullptr);
    EXPECT_EQ(LxMem_calloc(0x80000000, 2), nullptr);
}

TEST(Memory, CallocAllocatesAProductBeyond32BitsInFull) {
    static size_t asked;
    static constexpr SystemAllocator spy = {
        [](size_t size) { return std::malloc(size); },
        [](size_t count, size_t size) -> void * {
            asked = count * size;
            return nullptr;
        },
        [](void *pointer, size_t size) { return std::realloc(pointer, size); },
    };
    setSystemAllocator(&spy);
    EXPECT_EQ(LxMem_calloc(0x10000, 0x10001), nullptr);
    EXPECT_EQ(asked, 0x100010000u);
    setSystemAllocator(nullptr);
}

TEST(Memory, StrdupCopiesTheString) {
    const char text[] = "sheen";
    char *copy = LxMem_strdup(text);
    EXPECT_STREQ(copy, text);
    EXPECT_NE(copy, text);
    LxMem_free(copy);
    char *empty = LxMem_strdup("");
    ASSERT_NE(empty, nullptr);
    EXPECT_STREQ(empty, "");
    LxMem_free(empty);
}

TEST_F(FailingMemory, ByDefaultGivesNull) {
    const int32_t before = allocationCount();
    failuresLeft = 1;
    EXPECT_EQ(LxMem_malloc(8), nullptr);
    failuresLeft = 1;
    EXPECT_EQ(LxMem_calloc(1, 8), nullptr);
    failuresLeft = 1;
    EXPECT_EQ(LxMem_calloc(1, 100000), nullptr);
    failuresLeft = 1;
    EXPECT_EQ(LxMem_strdup("x"), nullptr);
    EXPECT_EQ(allocationCount(), before);
}

TEST_F(FailingMemory, FailedReallocLeavesTheOldBlockValidAndCounted) {
    char *block = LxMem_strdup("kept");
    const int32_t before = allocationCount();
    failuresLeft = 1;
    EXPECT_EQ(LxMem_realloc(block, 1000), nullptr);
    EXPECT_STREQ(block, "kept");
    EXPECT_EQ(allocationCount(), before);
    LxMem_free(block);
}

TEST_F(FailingMemory, RetryTriesUntilItSucceeds) {
    LxMem_SetException(kLxMemFailRetry, nullptr);
    failuresLeft = 1000;
    void *block = LxMem_malloc(8);
    EXPECT_NE(block, nullptr);
    EXPECT_EQ(failuresLeft, 0);
    LxMem_free(block);
}

TEST_F(FailingMemory, HandlerThatAnswersRetryGetsTheBlock) {
    LxMem_SetException(kLxMemFailCallHandler, answerRetry);
    failuresLeft = 3;
    void *block = LxMem_malloc(8);
    EXPECT_NE(block, nullptr);
    EXPECT_EQ(handlerCalls, 3) << "the mode stays, and every failure asks again";
    LxMem_free(block);
}

TEST_F(FailingMemory, HandlerThatAnswersNullLeavesTheModeForTheNextFailure) {
    LxMem_SetException(kLxMemFailCallHandler, answerNull);
    failuresLeft = 1;
    EXPECT_EQ(LxMem_malloc(8), nullptr);
    EXPECT_EQ(handlerCalls, 1);
    failuresLeft = 1;
    EXPECT_EQ(LxMem_calloc(2, 8), nullptr);
    EXPECT_EQ(handlerCalls, 2);
}

TEST_F(FailingMemory, HandlerThatAnswersItselfIsCalledAgainAtOnce) {
    LxMem_SetException(kLxMemFailCallHandler, answerHandlerTwiceThenNull);
    failuresLeft = 1;
    EXPECT_EQ(LxMem_malloc(8), nullptr);
    EXPECT_EQ(handlerCalls, 3);
}

TEST_F(FailingMemory, HandlerIsKeptOnlyWithItsMode) {
    LxMem_SetException(kLxMemFailReturnNull, answerRetry);
    failuresLeft = 1;
    EXPECT_EQ(LxMem_malloc(8), nullptr);
    LxMem_SetException(kLxMemFailCallHandler, nullptr);
    failuresLeft = 1;
    EXPECT_EQ(LxMem_malloc(8), nullptr) << "without a handler the mode acts as null";
    EXPECT_EQ(handlerCalls, 0);
}

TEST_F(FailingMemory, UndefinedModeSpinsForEver) {
    // The child's own alarm ends it: SIGALRM, not an exit.
    for (const uint32_t mode : {5u, 0xFFFFFFFFu}) {
        EXPECT_EXIT(
            {
                LxMem_SetException(mode, nullptr);
                failuresLeft = 1;
                alarm(1);
                LxMem_malloc(8);
            },
            testing::KilledBySignal(SIGALRM), "");
    }
    EXPECT_EXIT(
        {
            LxMem_SetException(kLxMemFailCallHandler, answerUndefined);
            failuresLeft = 1;
            alarm(1);
            LxMem_malloc(8);
        },
        testing::KilledBySignal(SIGALRM), "");
}

TEST_F(FailingMemory, ExitModesExitWithOne) {
    for (const uint32_t mode : {kLxMemFailExit, kLxMemFailExitToo}) {
        EXPECT_EXIT(
            {
                LxMem_SetException(mode, nullptr);
                failuresLeft = 1;
                LxMem_malloc(8);
            },
            testing::ExitedWithCode(1), "^$");
    }
    EXPECT_EXIT(
        {
            LxMem_SetException(kLxMemFailCallHandler, answerExit);
            failuresLeft = 1;
            LxMem_malloc(8);
        },
        testing::ExitedWithCode(1), "^$");
}

// Under AddressSanitizer address space cannot be limited: it reserves terabytes of its own.
#ifndef OXLUME_SANITIZED

namespace {

// Lets the process have that much address space, so that the system's allocator really fails.
void limitMemory(rlim_t bytes) {
    const rlimit limit = {bytes, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limit);
}

// Really takes the process's memory away, then asks for more than is left.
void exhaustMemory() {
    limitMemory(64u << 20);
    for (int i = 0; i < 64; ++i)
        LxMem_malloc(16u << 20);
}

} // namespace

TEST(ExhaustedMemory, DefaultPolicyGivesNull) {
    EXPECT_EXIT(
        {
            exhaustMemory();
            std::_Exit(LxMem_malloc(64u << 20) == nullptr && LxMem_calloc(64, 1u << 20) == nullptr ? 0 : 3);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST(ExhaustedMemory, ExitPolicyExits) {
    EXPECT_EXIT(
        {
            LxMem_SetException(kLxMemFailExit, nullptr);
            exhaustMemory();
            std::_Exit(3);
        },
        testing::ExitedWithCode(1), "^$");
}

TEST(ExhaustedMemory, HandlerThatReleasesMemoryLetsTheCallSucceed) {
    EXPECT_EXIT(
        {
            static void *reserve;
            reserve = LxMem_malloc(32u << 20);
            LxMem_SetException(kLxMemFailCallHandler, [] {
                const int32_t answer = reserve != nullptr ? kLxMemFailRetry : kLxMemFailReturnNull;
                LxMem_free(reserve);
                reserve = nullptr;
                return answer;
            });
            limitMemory(96u << 20);
            void *last = nullptr;
            while (reserve != nullptr)
                last = LxMem_malloc(8u << 20);
            std::_Exit(last != nullptr ? 0 : 3);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST(ExhaustedMemory, RetryPolicyWaitsForMemory) {
    EXPECT_EXIT(
        {
            LxMem_SetException(kLxMemFailRetry, nullptr);
            std::thread relief([] {
                usleep(100000);
                limitMemory(RLIM_INFINITY);
            });
            limitMemory(64u << 20);
            alarm(20);
            const void *block = LxMem_malloc(128u << 20);
            relief.join();
            std::_Exit(block != nullptr ? 0 : 3);
        },
        testing::ExitedWithCode(0), "");
}

#endif
