#include "svg/SvgReader.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/gc/Recorder.h"
#include "tests/support/BadSvg.h"
#include "tests/support/Random.h"
#include "tests/support/TemporaryFolder.h"

using namespace lx;
using namespace lx::test;

namespace {

// Reads texts as files onto a context of 200 by 100 that records everything.
class SvgReader : public testing::Test {
protected:
    void SetUp() override { LxSVGPaintFlags = 0; }
    void TearDown() override { LxSVGPaintFlags = 0; }

    void store(const std::string &text) { writeFile(file_, text); }

    // What the renderer gets, but for the matrix.
    Calls read(const std::string &text) {
        store(text);
        LxSVG_Read(gc_, file_.c_str());
        Calls calls = recorder_.take();
        std::erase_if(calls, [](const std::string &call) { return call.starts_with("setMatrix"); });
        return calls;
    }

    // The matrix that the root's attributes give.
    LxMatrix matrixOf(const std::string &attributes) {
        read("<svg " + attributes + "/>");
        return *LxGC_Matrix(gc_);
    }

    static void expectMatrix(const LxMatrix &m, const LxMatrix &expected) {
        EXPECT_EQ(LxMatrix_isEqual(&m, &expected), 1)
            << m.m0 << ' ' << m.m1 << ' ' << m.m2 << ' ' << m.m3 << ' ' << m.m4 << ' ' << m.m5;
    }

    static void expectColor(const LxColor &color, int r, int g, int b) {
        EXPECT_EQ(color.type, kLxPixelRGBA);
        EXPECT_EQ(color.content.rgba.r, r);
        EXPECT_EQ(color.content.rgba.g, g);
        EXPECT_EQ(color.content.rgba.b, b);
        EXPECT_EQ(color.content.rgba.a, 255);
    }

    RecordingKinds kinds_;
    Recorder recorder_;
    ContextHandle handle_ = makeContext({0, 0, 200, 100}, recordsAll, recorder_);
    LxGC *gc_ = handle_.get();
    TemporaryFolder folder_;
    std::string file_ = folder_ / "drawing.svg";
};

// The triangle of most tests, once closed.
const char *const triangle = "d='M0 0L10 0L10 10L0 0Z'";
const Calls triangleDrawn = {"path (M 0 0, L 10 0, L 10 10, L 0 0, Z)"};

} // namespace

// ---- svg ----

TEST_F(SvgReader, AViewBoxAloneGivesBothSizesByItsWidth) {
    // W = H = 100: scaled by (1, 0.5), moved by -100, scaled by (2, 1), turned around.
    expectMatrix(matrixOf("viewBox='0 0 100 50'"), {2, 0, 0, 0, -0.5, 100, 0, 0, 1});
}

TEST_F(SvgReader, AViewBoxesThirdAndFourthNumbersAreTheFarCorner) {
    // A width and height of 90, the origin at (10, 10): y becomes 10 - 90, times 100 / 90, turned around.
    const double sx = 200.0 / 90, sy = 100.0 / 90;
    expectMatrix(matrixOf("viewBox='10 10 100 100'"), {sx, 0, 10 * sx, 0, -sy, 80 * sy, 0, 0, 1});
}

TEST_F(SvgReader, WidthAndHeightScaleTheViewBox) {
    // Scaled by (100 / 400, 100 / 50), moved by -50, scaled by (200 / 400, 100 / 50), turned around.
    expectMatrix(matrixOf("width='400' height='50' viewBox='0 0 100 100'"),
                 {0.125, 0, 0, 0, -4, 100, 0, 0, 1});
    expectMatrix(matrixOf("viewBox='0,0,100,100' height='50px' width='400.0mm'"),
                 {0.125, 0, 0, 0, -4, 100, 0, 0, 1});
}

TEST_F(SvgReader, WithoutAViewBoxItsSizeIsOne) {
    // No scaling by the box: moved by -50, scaled by (200 / 400, 100 / 50), turned around.
    expectMatrix(matrixOf("width='400' height='50'"), {0.5, 0, 0, 0, -2, 100, 0, 0, 1});
    // A width of 1 counts as none, and the box's is at least 1.
    expectMatrix(matrixOf("width='1' height='1'"), {200, 0, 0, 0, -100, 100, 0, 0, 1});
    expectMatrix(matrixOf("viewBox='5 5 2 2'"), {200, 0, 1000, 0, -100, -400, 0, 0, 1});
    expectMatrix(matrixOf("version='1.1'"), {200, 0, 0, 0, -100, 100, 0, 0, 1});
}

TEST_F(SvgReader, AViewBoxTakesTheFirstFourNumbers) {
    expectMatrix(matrixOf("viewBox='fill 0 0 100 50 7 7'"), {2, 0, 0, 0, -0.5, 100, 0, 0, 1});
    // The last number stands for those that are missing.
    expectMatrix(matrixOf("viewBox='0 0 100'"), {2, 0, 0, 0, -1, 100, 0, 0, 1});
}

TEST_F(SvgReader, EachStepOfTheMatrixIsTold) {
    store("<svg viewBox='10 10 60 35'/>");
    LxGC_SetOrigin(gc_, 3, 4);
    LxSVG_Read(gc_, file_.c_str());
    EXPECT_EQ(recorder_.take(),
              (Calls{"setMatrix matrix 1 0 3 0 1 4 0 0 1", "setMatrix matrix 1 0 10 0 0.5 5 0 0 1",
                     "setMatrix matrix 1 0 10 0 0.5 -45 0 0 1", "setMatrix matrix 4 0 40 0 1 -90 0 0 1",
                     "setMatrix matrix 4 -0 40 0 -1 90 0 0 1"}));
    // The origin stays set.
    LxGC_MatrixIdentity(gc_);
    expectMatrix(*LxGC_Matrix(gc_), {1, 0, 10, 0, 1, 10, 0, 0, 1});
}

TEST_F(SvgReader, AnInnerDrawingSetsTheMatrixAnew) {
    read("<svg viewBox='0 0 100 100'><svg width='400' height='50'/></svg>");
    expectMatrix(*LxGC_Matrix(gc_), {0.5, 0, 0, 0, -2, 100, 0, 0, 1});
}

TEST_F(SvgReader, AnElementWithoutAttributesIsNotHandled) {
    LxGC_MatrixTranslate(gc_, 7, 7);
    LxGC_SetFillColor(gc_, LxColor_RGBA(1, 2, 3, 255));
    EXPECT_EQ(read("<svg><g><path/></g></svg>"), Calls());
    expectMatrix(*LxGC_Matrix(gc_), {1, 0, 7, 0, 1, 7, 0, 0, 1});
    expectColor(LxGC_FillColor(gc_), 1, 2, 3);
}

// ---- Colours ----

TEST_F(SvgReader, ColoursAreSixDigitsBehindAnyCharacter) {
    const auto fill = [&](const std::string &value) {
        read("<g fill='" + value + "'/>");
        return LxGC_FillColor(gc_);
    };
    expectColor(fill("#123456"), 0x12, 0x34, 0x56);
    expectColor(fill("#12345678"), 0x12, 0x34, 0x56);
    expectColor(fill("#abCDef"), 0xAB, 0xCD, 0xEF);
    expectColor(fill("#fff"), 0x00, 0x0F, 0xFF);
    expectColor(fill("x 00ff00"), 0x00, 0xFF, 0x00);
    expectColor(fill("none"), 255, 255, 255);
    expectColor(fill("#"), 255, 255, 255);
    expectColor(fill(""), 255, 255, 255);
    expectColor(fill("red"), 0, 0, 0xED);
    expectColor(fill("url(#a)"), 255, 255, 255);
}

// ---- g ----

TEST_F(SvgReader, AGroupsAttributesStayInForce) {
    const Calls calls =
        read("<svg><g fill='#010203' stroke='#040506' stroke-width='2.5' transform='scale(2)'/>"
             "<line x1='1' y1='2' x2='3' y2='4'/></svg>");
    EXPECT_EQ(calls, (Calls{"path (M 1 2, L 3 4, L 1 2, Z)"}));
    expectColor(LxGC_FillColor(gc_), 1, 2, 3);
    expectColor(LxGC_StrokeColor(gc_), 4, 5, 6);
    EXPECT_EQ(LxGC_StrokeWidth(gc_), 2.5);
    EXPECT_EQ(LxSVGPaintFlags, 3u);
    expectMatrix(*LxGC_Matrix(gc_), LxMatrix_0);
}

TEST_F(SvgReader, AGroupMarksWhatItPaintsForAllFilesAfterIt) {
    read("<g stroke='#ff0000'/>");
    EXPECT_EQ(LxSVGPaintFlags, 2u);
    EXPECT_EQ(read(std::string("<path ") + triangle + "/>"), Calls()); // It only strokes.
    EXPECT_EQ(LxGC_RenderMode(gc_), 2u);
    read("<g fill='#ff0000'/>");
    EXPECT_EQ(LxSVGPaintFlags, 3u);
    EXPECT_EQ(read(std::string("<path ") + triangle + "/>"), triangleDrawn);
    EXPECT_EQ(LxGC_RenderMode(gc_), 3u);
}

// ---- path ----

TEST_F(SvgReader, APathIsFilledBlackUnlessItSaysOtherwise) {
    LxGC_SetFillColor(gc_, LxColor_RGBA(9, 9, 9, 9));
    EXPECT_EQ(read(std::string("<path ") + triangle + "/>"), triangleDrawn);
    expectColor(LxGC_FillColor(gc_), 0, 0, 0);
    EXPECT_EQ(LxGC_RenderMode(gc_), 1u);
    EXPECT_EQ(LxSVGPaintFlags, 0u);
}

TEST_F(SvgReader, AGroupLendsAPathItsFlagAndNotItsColour) {
    EXPECT_EQ(read(std::string("<g fill='#ff0000'><path ") + triangle + "/></g>"), triangleDrawn);
    expectColor(LxGC_FillColor(gc_), 0, 0, 0);
}

TEST_F(SvgReader, APathsOwnColoursStandForThisPathOnly) {
    EXPECT_EQ(read(std::string("<path fill='#0000ff' stroke='#00ff00' stroke-width='3' ") + triangle + "/>"),
              triangleDrawn);
    expectColor(LxGC_FillColor(gc_), 0, 0, 255);
    expectColor(LxGC_StrokeColor(gc_), 0, 255, 0);
    EXPECT_EQ(LxGC_StrokeWidth(gc_), 3);
    EXPECT_EQ(LxGC_RenderMode(gc_), 3u);
    EXPECT_EQ(LxSVGPaintFlags, 0u);
}

TEST_F(SvgReader, AStrokeAloneIsFilledTooWhereNoGroupHasPainted) {
    EXPECT_EQ(read(std::string("<path stroke='#00ff00' ") + triangle + "/>"), triangleDrawn);
    EXPECT_EQ(LxGC_RenderMode(gc_), 3u);
}

TEST_F(SvgReader, AStrokeAloneDrawsNothingWhereAGroupHasStroked) {
    EXPECT_EQ(read(std::string("<g stroke='#00ff00'><path stroke='#0000ff' ") + triangle + "/></g>"),
              Calls());
    expectColor(LxGC_StrokeColor(gc_), 0, 0, 255);
    EXPECT_EQ(LxGC_RenderMode(gc_), 2u);
}

TEST_F(SvgReader, AFillOfNoneIsWhite) {
    EXPECT_EQ(read(std::string("<path fill='none' ") + triangle + "/>"), triangleDrawn);
    expectColor(LxGC_FillColor(gc_), 255, 255, 255);
}

TEST_F(SvgReader, WhatComesBehindTheDataComesTooLate) {
    EXPECT_EQ(read(std::string("<path ") + triangle + " stroke='#00ff00'/>"), triangleDrawn);
    EXPECT_EQ(LxGC_RenderMode(gc_), 1u);
    expectColor(LxGC_StrokeColor(gc_), 0, 255, 0);
}

TEST_F(SvgReader, AFilledPathIsMended) {
    LxPath *path = LxPath_Create();
    LxPath_AddMoveTo(path, 0, 0);
    LxPath_AddLineTo(path, 10, 0);
    LxPath_AddLineTo(path, 10, 10);
    LxPath_AddClose(path);
    LxPath_Close(path, 1);
    const std::string mended = describe(path);
    LxPath_Delete(path);
    EXPECT_EQ(mended, "M 0 0, L 10 0, L 10 10, L 0 0, Z");
    EXPECT_EQ(read("<path d='M0 0L10 0L10 10Z'/>"), (Calls{"path (" + mended + ")"}));
}

TEST_F(SvgReader, AnEmptyPathIsDrawnAllTheSame) {
    EXPECT_EQ(read("<path d=''/>"), (Calls{"path ()"}));
    EXPECT_EQ(read("<path id='a'/>"), Calls());
}

TEST_F(SvgReader, AnOpacityWritesTheFillBlendBack) {
    LxGC_SetFillBlend(gc_, LxBlend_WithChannel(7, 33, 2));
    LxGC_SetAttrFlag(gc_, kLxFillBlend, 0);
    read("<path opacity='0.5'/>");
    EXPECT_EQ(LxGC_FillBlendMode(gc_), 7);
    EXPECT_EQ(LxGC_FillBlendOpacity(gc_), 33);
    EXPECT_EQ(LxGC_FillBlendChannel(gc_), 2);
    EXPECT_EQ(LxGC_TestAttrFlag(gc_, kLxFillBlend), 1);
}

TEST_F(SvgReader, TextBeyondAsciiEndsItsElementAndNotTheWalk) {
    // The attributes after it are not read, and the children are.
    EXPECT_EQ(read("<g fill='\xC3\xA9' stroke='#00ff00' stroke-width='9'>"
                   "<line x1='1' y1='2' x2='3' y2='4'/></g>"),
              (Calls{"path (M 1 2, L 3 4, L 1 2, Z)"}));
    EXPECT_EQ(LxSVGPaintFlags, 0u);
    EXPECT_EQ(LxGC_StrokeWidth(gc_), 1);
    EXPECT_EQ(read("<path d='M0 0L1 1 \xE2\x82\xAC'/>"), Calls());
    EXPECT_EQ(read("<g transform='\xC3\xA9' stroke-width='9'/>"), Calls());
    EXPECT_EQ(LxGC_StrokeWidth(gc_), 1);
    LxGC_MatrixTranslate(gc_, 5, 6);
    read("<svg viewBox='0 0 100 \xC3\xA9'/>");
    expectMatrix(*LxGC_Matrix(gc_), {1, 0, 5, 0, 1, 6, 0, 0, 1});
    // Attributes that mean nothing here may say what they like, and numbers end before such text.
    EXPECT_EQ(read("<line id='\xC3\xA9' x1='1\xC3\xA9' y1='2' x2='3' y2='4'/>"),
              (Calls{"path (M 1 2, L 3 4, L 1 2, Z)"}));
}

// ---- line ----

TEST_F(SvgReader, ALineIsThereAndBackAgain) {
    LxGC_SetRenderMode(gc_, 3);
    EXPECT_EQ(read("<line x1='1' y1='2' x2='3.5' y2='-4' stroke='#ff0000' stroke-width='8'/>"),
              (Calls{"path (M 1 2, L 3.5 -4, L 1 2, Z)"}));
    EXPECT_EQ(LxGC_RenderMode(gc_), 2u);
    expectColor(LxGC_StrokeColor(gc_), 0, 0, 0); // Its own colour and width mean nothing.
    EXPECT_EQ(LxGC_StrokeWidth(gc_), 1);
}

TEST_F(SvgReader, ALineIsDrawnAtItsY2) {
    EXPECT_EQ(read("<line y2='4' x1='1' y1='2' x2='3'/>"), (Calls{"path (M 0 0, L 0 4, L 0 0, Z)"}));
    EXPECT_EQ(read("<line x1='1' y1='2' x2='3'/>"), Calls());
}

// ---- The walk ----

TEST_F(SvgReader, ChildrenOfAnyElementAreVisitedInOrder) {
    EXPECT_EQ(read("<svg><defs><clipPath id='a'><line x2='1' y2='1'/></clipPath></defs>"
                   "<line x2='2' y2='2'><line x2='3' y2='3'/></line><!-- <line y2='9'/> -->"
                   "<?pi x?>text<a b='c'/><line x2='4' y2='4'/></svg>"),
              (Calls{"path (M 0 0, L 1 1, L 0 0, Z)", "path (M 0 0, L 2 2, L 0 0, Z)",
                     "path (M 0 0, L 3 3, L 0 0, Z)", "path (M 0 0, L 4 4, L 0 0, Z)"}));
}

TEST_F(SvgReader, NamesAreComparedWhole) {
    EXPECT_EQ(read("<x:svg><Line y2='1'/><lines y2='1'/><x:line y2='1'/><line Y2='1'/></x:svg>"), Calls());
}

TEST_F(SvgReader, AUrlIsAsGoodAsAPath) {
    store("<line y2='1'/>");
    const Calls drawn = {"path (M 0 0, L 0 1, L 0 0, Z)"};
    for (const std::string &url : {"file://" + file_, "file://localhost" + file_, "file:" + file_}) {
        LxSVG_Read(gc_, url.c_str());
        EXPECT_EQ(recorder_.take(), drawn) << url;
    }
}

// ---- Files that are no drawings ----

TEST_F(SvgReader, AMissingFileDrawsNothing) {
    LxSVG_Read(gc_, "/no/such/file.svg");
    LxSVG_Read(gc_, folder_.path().c_str());
    LxSVG_Read(gc_, "/dev/zero");
    LxSVG_Read(gc_, "");
    LxSVG_Read(gc_, nullptr);
    EXPECT_EQ(recorder_.take(), Calls());
}

TEST_F(SvgReader, AnEmptyFileDrawsNothing) {
    EXPECT_EQ(read(""), Calls());
}

TEST_F(SvgReader, WhatIsNoXmlDrawsNothing) {
    for (const char *text : {"not XML", "<svg width='1'><line y2='1'/></g>", "\x89PNG\r\n\x1a\n"})
        EXPECT_EQ(read(text), Calls()) << text;
}

TEST_F(SvgReader, AFileCutOffDrawsNothing) {
    for (const char *text : {"<svg width='1'", "<svg width='1'><line y2='1'>", "<svg"})
        EXPECT_EQ(read(text), Calls()) << text;
}

TEST_F(SvgReader, WithoutAContextItReadsAllTheSame) {
    store("<svg viewBox='0 0 9 9'><g fill='#ff0000'/><path d='M0 0L1 1'/><line y2='1'/></svg>");
    LxSVG_Read(nullptr, file_.c_str());
    EXPECT_EQ(LxSVGPaintFlags, 1u);
}

TEST_F(SvgReader, AHundredThousandLevelsCostNoStack) {
    EXPECT_EQ(read(nestedSvg(100'000, "<line y2='1'/>")), (Calls{"path (M 0 0, L 0 1, L 0 0, Z)"}));
}

TEST_F(SvgReader, AnAttributeOfTenMegabytesIsRead) {
    const Calls calls = read("<path d='" + longPathData() + "'/>");
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_TRUE(calls[0].starts_with("path (M 0 0, L 1 1, L 2 2, L 1 1"));
}

TEST_F(SvgReader, EntitiesThatReferToThemselvesAreNotReplaced) {
    EXPECT_EQ(read(std::string(hostileEntities) + "<svg><path d='M0 0L1&a; 1&b;'/><line y2='&#49;'/></svg>"),
              (Calls{"path (M 0 0, L 1 1)", "path (M 0 0, L 0 1, L 0 0, Z)"}));
}

TEST_F(SvgReader, Utf16IsRead) {
    const std::string text = "<?xml version='1.0' encoding='UTF-16'?><line x2='5' y2='1'/>";
    const Calls drawn = {"path (M 0 0, L 5 1, L 0 0, Z)"};
    const std::string little = inUtf16(text, false);
    EXPECT_EQ(read(little), drawn);
    EXPECT_EQ(read(inUtf16(text, true)), drawn);
    EXPECT_EQ(read("\xEF\xBB\xBF<line x2='5' y2='1'/>"), drawn) << "UTF-8 with a mark";
    read(little.substr(0, little.size() / 2)); // Cut off.
    read(little.substr(0, little.size() / 2 + 1));
}

// Files with random bytes changed: whatever they draw, no harm.
TEST_F(SvgReader, DamagedFilesAreHarmless) {
    const std::string whole = "<?xml version='1.0'?><svg viewBox='0 0 100 50' width='4' xmlns='x'>"
                              "<g fill='#ff0000' transform='scale(2)'><path stroke='#00ff00' opacity='.5' "
                              "d='M0 0l10 0c1 2 3 4 5 6q1 2 3 4h5v6z'/></g><line x1='1' y2='2'/></svg>";
    Random random;
    for (int i = 0; i < 500; ++i) {
        std::string text = whole;
        for (int n = random.integer(1, 4); n > 0; --n)
            text[static_cast<size_t>(random.integer(0, static_cast<int32_t>(text.size()) - 1))] =
                random.coin() ? "<>'&;\"/="[random.integer(0, 7)] : static_cast<char>(random.word());
        read(text);
    }
}
