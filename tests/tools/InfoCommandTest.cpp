#include <gtest/gtest.h>

#include "tests/support/PngBytes.h"
#include "tests/support/Program.h"

using namespace lx::test;

namespace {

// A colour picture of zeros with marker pixels at the given places.
std::string markedPng(uint32_t width, uint32_t height, const std::vector<std::pair<int, int>> &marks) {
    std::vector<std::string> rows(height, std::string(width * 3, '\0'));
    for (const auto &[x, y] : marks)
        rows[static_cast<size_t>(y)].replace(static_cast<size_t>(x) * 3, 3, std::string("\0\xFF\xFF", 3));
    return pngFile(width, height, 8, 2, rows);
}

// `info` on a file of the given bytes; the file's name comes out as FILE.
ProgramResult info(const std::string &content, const std::string &options = "") {
    const TemporaryFolder folder;
    const std::string file = folder / "picture.png";
    writeFile(file, content);
    ProgramResult result = runProgram("info " + options + " " + file);
    for (std::string *text : {&result.output, &result.errors})
        if (const size_t at = text->find(file); at != std::string::npos)
            text->replace(at, file.size(), "FILE");
    return result;
}

const std::vector<std::pair<int, int>> threeColumns = {{0, 0},  {0, 2}, {10, 2}, {21, 2},
                                                       {31, 2}, {2, 0}, {2, 10}};

} // namespace

TEST(InfoCommand, TellsAPlainPicture) {
    const ProgramResult result = info(pngFile(2, 1, 8, 6, {std::string(8, '\x7F')}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "FILE\n"
                             "  size          2 x 1\n"
                             "  type          RGBA\n"
                             "  bytes per row 8\n"
                             "  storage       inline\n");
    EXPECT_EQ(result.errors, "");
}

TEST(InfoCommand, TellsAPlainPictureToPrograms) {
    const ProgramResult result = info(pngFile(5, 1, 8, 0, {"abcde"}), "--json");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "{\n"
                             "  \"file\": \"FILE\",\n"
                             "  \"width\": 5,\n"
                             "  \"height\": 1,\n"
                             "  \"type\": \"A\",\n"
                             "  \"bytesPerRow\": 8,\n"
                             "  \"storage\": \"inline\"\n"
                             "}\n");
}

TEST(InfoCommand, TellsSegments) {
    const ProgramResult result = info(markedPng(40, 30, threeColumns));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "FILE\n"
                             "  size          40 x 30\n"
                             "  type          RGB\n"
                             "  bytes per row 120\n"
                             "  storage       pool 4K\n"
                             "  segments      three columns\n"
                             "    column 0, row 0: x 1 to 9, y 1 to 9\n"
                             "    column 1, row 0: x 11 to 20, y 1 to 9\n"
                             "    column 2, row 0: x 22 to 30, y 1 to 9\n");
}

TEST(InfoCommand, TellsSegmentsToPrograms) {
    const ProgramResult result = info(markedPng(40, 30, threeColumns), "--json");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find("\"layout\": 2,\n    \"name\": \"three columns\""), std::string::npos);
    EXPECT_NE(
        result.output.find("\"column\": 1,\n        \"row\": 0,\n        \"x0\": 11,\n        \"y0\": 1,\n"
                           "        \"x1\": 20,\n        \"y1\": 9\n"),
        std::string::npos)
        << result.output;
}

TEST(InfoCommand, TellsTiles) {
    const std::vector<std::pair<int, int>> marks = {{0, 0},  {0, 2}, {10, 2}, {20, 2},
                                                    {30, 2}, {2, 0}, {2, 10}};
    EXPECT_NE(info(markedPng(40, 30, marks)).output.find("  tiles         3 by 1 of 8 x 8\n"),
              std::string::npos);
    EXPECT_NE(info(markedPng(40, 30, marks), "--json")
                  .output.find("\"tiles\": {\n    \"columns\": 3,\n    \"rows\": 1,\n    \"width\": 8,\n"
                               "    \"height\": 8\n  }"),
              std::string::npos);
}

TEST(InfoCommand, FailsWithOneLineThatNamesTheFile) {
    EXPECT_EQ(info("no picture").errors, "oxlume: FILE: not a PNG file\n");
    const ProgramResult huge = info(pngSignature() + pngHeader(100000, 100000, 8, 6) + pngData(""));
    EXPECT_EQ(huge.errors, "oxlume: FILE: too large: 100000 x 100000 pixels\n");
    EXPECT_EQ(huge.status, 2);
    EXPECT_EQ(huge.output, "");
    const ProgramResult missing = runProgram("info /nonexistent/a.png");
    EXPECT_EQ(missing.errors, "oxlume: /nonexistent/a.png: No such file or directory\n");
    EXPECT_EQ(missing.status, 2);
}

TEST(Program, FailsWithOneLineOnBadArguments) {
    for (const char *arguments : {"", "nonsense", "info", "info --nonsense a.png", "info a.png b.png"}) {
        const ProgramResult result = runProgram(arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
        EXPECT_EQ(result.errors.find("oxlume: "), 0u) << result.errors;
    }
}

TEST(Program, HelpsWhenAsked) {
    const ProgramResult result = runProgram("--help");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find("info"), std::string::npos);
    EXPECT_EQ(runProgram("info --help").status, 0);
}
