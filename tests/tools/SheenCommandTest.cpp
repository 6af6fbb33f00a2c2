#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/Program.h"
#include "tools/PngFile.h"

using namespace lx::test;
using tool::ImageHandle;

namespace {

// `sheen` in a folder of its own, with the names in its arguments relative to that.
struct SheenRun {
    TemporaryFolder folder;
    ProgramResult result;

    explicit SheenRun(const std::string &arguments)
        : result(runProgram("sheen " + replaced(arguments, folder.path().string()))) {}

    ImageHandle picture(const std::string &name) const { return tool::readPng((folder / name).string()); }

    // DIR stands for the folder.
    static std::string replaced(std::string text, const std::string &path) {
        for (size_t at; (at = text.find("DIR")) != std::string::npos;)
            text.replace(at, 3, path);
        return text;
    }
};

LxRGBA pixel(const ImageHandle &image, int x, int y) {
    return reinterpret_cast<const LxRGBA *>(lx::rowAddress(*image, y))[x];
}

} // namespace

TEST(SheenCommand, DrawsTheDefaultLayer) {
    const SheenRun run("-o DIR/a.png --size 64 --color 200,100,50");
    EXPECT_EQ(run.result.status, 0);
    EXPECT_EQ(run.result.errors, "");
    const ImageHandle picture = run.picture("a.png");
    EXPECT_EQ(LxImage_w(picture.get()), 64);
    EXPECT_EQ(pixel(picture, 32, 32).r, 141) << "the sine of 45 degrees";
    EXPECT_EQ(pixel(picture, 32, 32).b, 35);
    EXPECT_EQ(pixel(picture, 1, 1).a, 0);
}

TEST(SheenCommand, OptionsBelongToTheLayerBeforeThem) {
    const SheenRun run(
        "--layer kHeight=0.25,kSymmetry=0 --color 1,2,3 --name under --layer kHeight=0.5 --mode larger "
        "--color 4,5,6 --opacity 0.75 --save DIR/a.sheen");
    EXPECT_EQ(run.result.status, 0);
    EXPECT_EQ(readFile(run.folder / "a.sheen"),
              "[layer under]\ncolor = 1, 2, 3\nkSymmetry = 0\nkHeight = 0.25\n\n"
              "[layer]\ncolor = 4, 5, 6\nmode = larger\nopacity = 0.75\n");
}

TEST(SheenCommand, ASavedPresetDrawsTheSamePicture) {
    const SheenRun first("gem -o DIR/a.png --heights DIR/h.png --size 80 --save DIR/a.sheen");
    EXPECT_EQ(first.result.status, 0);
    const ProgramResult second = runProgram("sheen " + (first.folder / "a.sheen").string() +
                                            " --size 80 -o " + (first.folder / "b.png").string());
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(readFile(first.folder / "a.png"), readFile(first.folder / "b.png"));
    EXPECT_EQ(LxImage_Type(first.picture("h.png").get()), kLxPixelA);
}

TEST(SheenCommand, HeightsAreGrey) {
    const SheenRun run("--heights DIR/h.png --size 32 --layer kHeight=0.2");
    const ImageHandle heights = run.picture("h.png");
    EXPECT_EQ(lx::rowAddress(*heights, 16)[16], 51);
    EXPECT_EQ(lx::rowAddress(*heights, 1)[1], 0);
}

TEST(SheenCommand, WarnsOfValuesBeyondTheirLimitsAndTakesThem) {
    const SheenRun run("--layer kHeight=3 --name top -o DIR/a.png --size 16");
    EXPECT_EQ(run.result.status, 0);
    EXPECT_EQ(run.result.errors, "oxlume: warning: layer \"top\": kHeight = 3 lies beyond 0 to 1\n");
    EXPECT_EQ(runProgram("sheen stone --size 8 -o " + (run.folder / "b.png").string()).errors, "")
        << "a preset that comes with the program knows what it does";
}

TEST(SheenCommand, ListsTheTable) {
    const ProgramResult result = runProgram("sheen --list");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 77)
        << "a heading and 76 parameters";
    EXPECT_NE(result.output.find("   22  kProfilePar3           Profile Steps "), std::string::npos);
}

TEST(SheenCommand, ListsThePresets) {
    const ProgramResult result = runProgram("sheen --presets");
    EXPECT_GE(std::count(result.output.begin(), result.output.end(), '\n'), 24);
    EXPECT_NE(result.output.find("gem\n"), std::string::npos);
}

TEST(SheenCommand, DrawsAContactSheet) {
    const SheenRun run("--sheet kHeight -o DIR/s.png --size 64");
    EXPECT_EQ(run.result.status, 0);
    const ImageHandle sheet = run.picture("s.png");
    EXPECT_EQ(LxImage_w(sheet.get()), 5 * 64 + 6 * 4);
    EXPECT_EQ(LxImage_h(sheet.get()), 64 + 2 * 4);
}

TEST(SheenCommand, NamesWhatItDoesNotKnow) {
    const auto complaint = [](const std::string &arguments) {
        const ProgramResult result = runProgram("sheen " + arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_EQ(result.output, "");
        return result.errors;
    };
    EXPECT_EQ(complaint("-o a.png --layer kHeigt=1"),
              "oxlume: unknown parameter \"kHeigt\"; the nearest is \"kHeight\"\n");
    EXPECT_EQ(complaint("-o a.png --layer kHeight=x"), "oxlume: kHeight: not a number: \"x\"\n");
    EXPECT_EQ(complaint("-o a.png --layer kHeight"), "oxlume: not of the form key=value: \"kHeight\"\n");
    EXPECT_EQ(complaint("-o a.png --mode addd"), "oxlume: unknown mode \"addd\"; the nearest is \"add\"\n");
    EXPECT_EQ(complaint("-o a.png --sheet kHeigt"),
              "oxlume: unknown parameter \"kHeigt\"; the nearest is \"kHeight\"\n");
    EXPECT_EQ(complaint(""), "oxlume: nothing to do: give -o, --heights, --save, --list or --presets\n");
    EXPECT_EQ(complaint("nonsense -o a.png"),
              "oxlume: nonsense: neither a file that can be read nor a preset (--presets lists them)\n");
    EXPECT_NE(complaint("-o a.png --size 0").find("--size"), std::string::npos);
    EXPECT_EQ(complaint("-o /nonexistent/a.png --size 8").find("oxlume: /nonexistent/a.png: "), 0u);
}
