#include "tools/Progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <thread>

#include "tests/support/Program.h"
#include "tests/support/Terminal.h"

using namespace lx::test;
using namespace std::chrono_literals;
using tool::Progress;

namespace {

// What leaves the display's line empty, with nothing behind it.
void expectCleared(const std::string &text) {
    const std::string clear = "\r\033[K";
    ASSERT_GE(text.size(), clear.size());
    EXPECT_EQ(text.substr(text.size() - clear.size()), clear);
}

// The program on a terminal, in the shell's words; its work is shown however short it is.
TerminalResult programOnTerminal(const std::string &arguments) {
    const std::string command = "OXLUME_PROGRESS_DELAY=0 " OXLUME_PROGRAM " " + arguments;
    return onTerminal([&] { return execl("/bin/sh", "sh", "-c", command.c_str(), nullptr); });
}

} // namespace

TEST(Progress, ShowsHowFarTheWorkIsAndLeavesAnEmptyLine) {
    const TerminalResult result = onTerminal([] {
        Progress progress("counting", 3);
        progress.advance();
        std::this_thread::sleep_for(600ms);
        return 0;
    });
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.text.find("\r\033[K[==========                    ] 33 % counting, 0 s"),
              std::string::npos)
        << result.text;
    expectCleared(result.text);
}

TEST(Progress, ShowsOnlyTheTimeWhereTheStepsAreUnknown) {
    const TerminalResult result = onTerminal([] {
        const Progress progress("waiting", 0);
        std::this_thread::sleep_for(1300ms);
        return 0;
    });
    EXPECT_NE(result.text.find("\r\033[Kwaiting, 0 s"), std::string::npos);
    EXPECT_NE(result.text.find("\r\033[Kwaiting, 1 s"), std::string::npos) << "it moves on within a step";
    EXPECT_EQ(result.text.find('%'), std::string::npos);
    expectCleared(result.text);
}

TEST(Progress, ShowsTheOutermostWork) {
    const TerminalResult result = onTerminal([] {
        const Progress outer("outer", 0);
        const Progress inner("inner", 0);
        std::this_thread::sleep_for(600ms);
        return 0;
    });
    EXPECT_NE(result.text.find("outer"), std::string::npos);
    EXPECT_EQ(result.text.find("inner"), std::string::npos);
}

TEST(Progress, DoesNotGoBeyondItsSteps) {
    const TerminalResult result = onTerminal([] {
        Progress progress("much", 2);
        progress.report(5, 2);
        std::this_thread::sleep_for(600ms);
        return 0;
    });
    EXPECT_NE(result.text.find("[==============================] 100 % much"), std::string::npos);
}

TEST(Progress, ShowsNothingForShortWork) {
    const TerminalResult result = onTerminal([] {
        const Progress progress("blinking", 1);
        return 0;
    });
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.text, "");
}

TEST(Progress, ShowsNothingWhereThereIsNoTerminal) {
    const TemporaryFolder folder;
    const std::string file = (folder / "errors").string();
    const TerminalResult result = onTerminal([&] {
        dup2(open(file.c_str(), O_CREAT | O_WRONLY, 0600), STDERR_FILENO);
        Progress progress("hiding", 1);
        std::this_thread::sleep_for(600ms);
        return 0;
    });
    EXPECT_EQ(result.text, "") << "standard output is no place for it";
    EXPECT_EQ(readFile(file), "");
}

TEST(Progress, IsShownByTheCommands) {
    const TemporaryFolder folder;
    const auto path = [&](const char *name) { return (folder / name).string(); };
    const auto expectShown = [&](const std::string &arguments, const std::string &what) {
        const TerminalResult result = programOnTerminal(arguments);
        EXPECT_EQ(result.status, 0) << result.text;
        EXPECT_NE(result.text.find(what), std::string::npos) << arguments << ": " << result.text;
        expectCleared(result.text);
    };
    const std::string stone = path("stone.png");
    expectShown("sheen stone --size 64 -o " + stone, "rendering");
    expectShown("blend " + stone + " " + stone + " -o " + path("blended.png"), "writing");
    expectShown("modes " + stone + " " + stone + " --size 64 -o " + path("modes"), "blending by all modes");

    std::ofstream script(path("script.draw"));
    script << "size 64 64\nbackground 255 255 255 255\nrenderMode fill\n";
    for (int i = 0; i < 3; ++i)
        script << "circle 32 32 " << 30 - i << '\n';
    script.close();
    expectShown("draw " + path("script.draw") + " -o " + path("drawn.png"), "drawing");
}
