#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/Program.h"

using namespace lx::test;

namespace {

ProgramResult path(const std::string &arguments) {
    return runProgram("path " + arguments);
}

} // namespace

TEST(PathCommand, PrintsItemsOneALine) {
    const ProgramResult result = path("\"M 0.5,1 L10,0 Q15,5 10,10C5,15 0,5 -1,1e-3 Z\"");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "move 0.5 1\n"
                             "line 10 0\n"
                             "qcurve 15 5 10 10\n"
                             "curve 5 15 0 5 -1 0.001\n"
                             "close\n");
    EXPECT_EQ(result.errors, "");
}

TEST(PathCommand, ReadsWhatItPrints) {
    const std::string printed = path("'move 0 0; line 10 0; curve 1 2 3 4 5 6; close'").output;
    EXPECT_EQ(printed, "move 0 0\n"
                       "line 10 0\n"
                       "curve 1 2 3 4 5 6\n"
                       "close\n");
    const TemporaryFolder folder;
    const std::string file = folder / "items";
    writeFile(file, printed);
    EXPECT_EQ(path("- <" + file).output, printed);
}

TEST(PathCommand, Outlines) {
    EXPECT_EQ(path("'M 0,0 L 10,0' --outline 2").output, "move 0 -1\n"
                                                         "line 0 -1\n"
                                                         "line 10 -1\n"
                                                         "line 10 1\n"
                                                         "line 0 1\n"
                                                         "close\n");
    const auto lines = [](const std::string &style) {
        const std::string text = path("'M 0,0 L 10,0 L 10,10' --outline 2 --style " + style).output;
        return std::count(text.begin(), text.end(), '\n');
    };
    EXPECT_EQ(lines("bevel"), 10);
    EXPECT_EQ(lines("mitre"), 11);
    EXPECT_EQ(lines("items"), 12);
}

TEST(PathCommand, FlattensAndClips) {
    const std::string flat = path("'M 0,0 C 0,0 0,32 0,96' --flatten").output;
    EXPECT_EQ(std::count(flat.begin(), flat.end(), '\n'), 11);
    EXPECT_EQ(path("'M 10,20 L 50,30 L 40,60 Z' --clip 0,0,100,100").output, "move 50 30\n"
                                                                             "line 40 60\n"
                                                                             "line 10 20\n"
                                                                             "close\n");
}

TEST(PathCommand, NamesWhatItCannotRead) {
    EXPECT_EQ(path("'M 1,2 X 3,4'").errors, "oxlume: \"X\" is no item of a path\n");
    EXPECT_EQ(path("'M 1,2..3'").errors, "oxlume: \"2..3\" is no number of a path\n");
    EXPECT_EQ(path("'M 1'").errors, "oxlume: the path ends where a number should be\n");
    EXPECT_EQ(path("'M 1'").status, 2);
    EXPECT_NE(path("'M 1,2' --style round").status, 0);
    EXPECT_NE(path("'M 1,2' --clip 1,2,3").status, 0);
    EXPECT_EQ(path("''").output, "");
}
