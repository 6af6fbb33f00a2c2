// Strangers' files that are no drawings, or drawn up to do harm.

#include <algorithm>

#include "tests/support/BadSvg.h"
#include "tests/tools/SvgProgram.h"

using namespace lx::test;

namespace {

class SvgBadInput : public SvgProgram {
protected:
    // One line that names the file and the cause.
    void expectRefused(const std::string &text, const std::string &cause) {
        const ProgramResult result = drawWhole(text);
        EXPECT_EQ(result.status, 2);
        EXPECT_NE(result.errors.find("in.svg: " + cause), std::string::npos) << result.errors;
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
    }

    // A red square over the whole of 16 by 16 behind some content.
    void expectSquareBehind(const std::string &content) {
        expectPixel(pictureOf(content + square), 8, 8, rgba(255, 0, 0));
    }

    const std::string square = "<rect width='16' height='16' fill='red'/>";
};

} // namespace

TEST_F(SvgBadInput, AMissingFileIsRefused) {
    const ProgramResult result = runProgram("svg /no/such.svg -o " + (folder_ / "out.png").string());
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.errors.find("/no/such.svg: "), std::string::npos) << result.errors;
}

TEST_F(SvgBadInput, AnEmptyFileIsRefused) {
    expectRefused("", "cannot be read as XML");
}

TEST_F(SvgBadInput, WhatIsNoXmlIsRefused) {
    expectRefused("no XML", "cannot be read as XML");
    expectRefused("\x89PNG\r\n\x1a\n", "cannot be read as XML");
}

TEST_F(SvgBadInput, WhatIsNoDrawingIsRefused) {
    expectRefused("<html/>", "no SVG drawing");
}

TEST_F(SvgBadInput, AFileCutOffIsRefused) {
    expectRefused("<svg><g", "cannot be read as XML");
    expectRefused("<svg>" + square, "cannot be read as XML");
}

TEST_F(SvgBadInput, AHundredThousandLevelsAreRefused) {
    expectRefused(nestedSvg(100'000, square), "elements are nested deeper than 500");
}

TEST_F(SvgBadInput, AnAttributeOfTenMegabytesIsDrawn) {
    expectSquareBehind("<path d='" + longPathData() + "' fill='blue'/>");
    expectSquareBehind("<g style='" + std::string(1'000'000, ';') + "'/>");
}

TEST_F(SvgBadInput, EntitiesThatReferToThemselvesAreNotReplaced) {
    const std::string text = std::string(hostileEntities) + "<svg viewBox='0 0 16 16'><text>&a;&b;</text>" +
                             "<path d='&a;&b;'/>" + square + "</svg>";
    EXPECT_EQ(drawWhole(text).status, 0);
    expectPixel(picture(), 8, 8, rgba(255, 0, 0));
}

TEST_F(SvgBadInput, Utf16IsRead) {
    for (const bool bigEndian : {false, true}) {
        const std::string text = inUtf16("<svg viewBox='0 0 16 16'>" + square + "</svg>", bigEndian);
        EXPECT_EQ(drawWhole(text).status, 0);
        expectPixel(picture(), 8, 8, rgba(255, 0, 0));
        EXPECT_EQ(drawWhole(text.substr(0, text.size() / 2)).status, 2);
    }
}

TEST_F(SvgBadInput, ElementsUsedInACircleAreRefused) {
    expectRefused("<svg><g id='a'><use href='#a'/></g></svg>", "elements are nested deeper than 500");
}

TEST_F(SvgBadInput, ElementsUsedOverAndOverAreRefused) {
    std::string text = "<svg><defs><g id='a0'/>";
    for (int i = 0; i < 40; ++i) {
        const std::string use = "<use href='#a" + std::to_string(i) + "'/>";
        text += "<g id='a" + std::to_string(i + 1) + "'>" + use + use + "</g>";
    }
    expectRefused(text + "</defs><use href='#a40'/></svg>", "more than 400000 elements");
}

TEST_F(SvgBadInput, TooManyShapesAreRefused) {
    std::string shapes;
    for (int i = 0; i < 200'001; ++i)
        shapes += "<path d='M0 0H1'/>";
    expectRefused("<svg>" + shapes + "</svg>", "more than 200000 shapes");
}

TEST_F(SvgBadInput, DashesWithoutEndAreRefused) {
    expectRefused("<svg viewBox='0 0 9 9'><path d='M0 0H9' stroke='red' stroke-dasharray='1e-9'/></svg>",
                  "too many points");
}

TEST_F(SvgBadInput, ClipPathsDeepInsideEachOtherAreRefused) {
    std::string text = "<svg><clipPath id='c'><rect width='1' height='1'/></clipPath>", end;
    for (int i = 0; i < 20; ++i) {
        text += "<g clip-path='url(#c)'>";
        end += "</g>";
    }
    expectRefused(text + end + "</svg>", "clip paths are nested deeper than 16");
}

TEST_F(SvgBadInput, ACircleOfGradientsIsNoPaint) {
    expectSquareBehind("<linearGradient id='a' href='#b'/><linearGradient id='b' href='#a'/>"
                       "<path fill='url(#a)' d='M0 0H9V9'/>");
}
