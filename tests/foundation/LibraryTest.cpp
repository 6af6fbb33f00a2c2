#include <clocale>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <oxlume/LxLibrary.h>
#include <oxlume/LxMem.h>

#include "foundation/Library.h"
#include "foundation/Memory.h"

using namespace lx;

namespace {

std::vector<std::string> calls;

// Puts recording hooks in place of the modules' own, which then do not run; in a process of its own, since
// ctest starts one for each test.
void recordHooks() {
    calls.clear();
    registerModule(Module::images,
                   {[] { calls.emplace_back("images start"); }, [] { calls.emplace_back("images end"); }});
    registerModule(Module::rasteriser, {[] { calls.emplace_back("rasteriser start"); },
                                        [] { calls.emplace_back("rasteriser end"); }});
    registerModule(Module::renderers, {[] { calls.emplace_back("renderers start"); },
                                       [] { calls.emplace_back("renderers end"); }});
}

} // namespace

TEST(Library, HooksRunOnceEachHoweverOftenItIsStartedAndStopped) {
    recordHooks();
    EXPECT_EQ(Oxlume_Init(), 1);
    EXPECT_EQ(Oxlume_Init(), 1);
    Oxlume_Term();
    Oxlume_Term();
    const std::vector<std::string> expected = {"images start", "rasteriser start", "renderers start",
                                               "images end",   "rasteriser end",   "renderers end"};
    EXPECT_EQ(calls, expected);
}

TEST(Library, StartsAgainAfterItsEnd) {
    recordHooks();
    Oxlume_Init();
    Oxlume_Term();
    Oxlume_Init();
    EXPECT_EQ(calls.size(), 9u);
    Oxlume_Term();
}

TEST(Library, TermWithoutInitDoesNothing) {
    recordHooks();
    Oxlume_Term();
    EXPECT_TRUE(calls.empty());
}

TEST(Library, StartZeroesTheAllocationCount) {
    recordHooks(); // so that nothing else allocates
    void *block = LxMem_malloc(8);
    EXPECT_EQ(allocationCount(), 1);
    Oxlume_Init();
    EXPECT_EQ(allocationCount(), 0);
    void *second = LxMem_malloc(8);
    Oxlume_Init();
    EXPECT_EQ(allocationCount(), 1) << "a second start changes nothing";
    LxMem_free(second);
    Oxlume_Term();
    LxMem_free(block);
}

TEST(Library, InitAdoptsTheEnvironmentsLocale) {
    setenv("LC_ALL", "C.UTF-8", 1);
    std::setlocale(LC_ALL, "C");
    Oxlume_Init();
    EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C.UTF-8");
    Oxlume_Term();
    std::setlocale(LC_ALL, "C");
}

TEST(Library, InitRegistersTermWithAtexit) {
    EXPECT_EXIT(
        {
            registerModule(Module::images, {nullptr, [] { fputs("images end\n", stderr); }});
            Oxlume_Init();
            std::exit(7);
        },
        testing::ExitedWithCode(7), "^images end\n$");
}
