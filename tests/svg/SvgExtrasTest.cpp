#include <string>

#include <gtest/gtest.h>
#include <oxlume/LxExtras.h>

#include "platform/XmlTree.h"
#include "svg/SvgReader.h"
#include "tests/gc/Recorder.h"
#include "tests/support/TemporaryFolder.h"

using namespace lx;
using namespace lx::test;

namespace {

class SvgExtras : public testing::Test {
protected:
    void SetUp() override { LxSVG_SetPaintFlags(0); }
    void TearDown() override { LxSVG_SetPaintFlags(0); }

    int32_t readText(const std::string &text) { return LxSVG_ReadText(gc_, text.data(), text.size()); }

    RecordingKinds kinds_;
    Recorder recorder_;
    ContextHandle handle_ = makeContext({0, 0, 200, 100}, recordsAll, recorder_);
    LxGC *gc_ = handle_.get();
    TemporaryFolder folder_;
    std::string file_ = folder_ / "drawing.svg";
};

const std::string drawing =
    "<svg viewBox='0 0 50 50'><g stroke='#00ff00'><path fill='#ff0000' d='M0 0L10 0L10 10L0 0Z'/></g>"
    "<line x1='1' y1='2' x2='3' y2='4'/></svg>";

} // namespace

TEST_F(SvgExtras, TextAndFileDrawTheSame) {
    EXPECT_EQ(readText(drawing), 1);
    const Calls fromText = recorder_.take();
    EXPECT_EQ(LxSVG_PaintFlags(), uint32_t{kLxRenderStroke});
    LxSVG_SetPaintFlags(0);
    writeFile(file_, drawing);
    EXPECT_EQ(LxSVG_ReadFile(gc_, file_.c_str()), 1);
    EXPECT_EQ(recorder_.take(), fromText);
    LxSVG_SetPaintFlags(0);
    LxSVG_Read(gc_, file_.c_str());
    EXPECT_EQ(recorder_.take(), fromText);
    EXPECT_EQ(fromText.back(), "path (M 1 2, L 3 4, L 1 2, Z)");
}

TEST_F(SvgExtras, WhatIsNoXmlDrawsNothing) {
    for (const std::string text : {"", "hello", "<svg", "<svg><path d='M0 0L9 9'></svg>"}) {
        EXPECT_EQ(readText(text), 0) << text;
        writeFile(file_, text);
        EXPECT_EQ(LxSVG_ReadFile(gc_, file_.c_str()), 0) << text;
    }
    EXPECT_EQ(LxSVG_ReadFile(gc_, (folder_ / "none.svg").c_str()), 0);
    EXPECT_EQ(LxSVG_ReadFile(gc_, folder_.path().c_str()), 0) << "a folder";
    EXPECT_EQ(recorder_.take(), Calls());
}

TEST_F(SvgExtras, NullIsRefused) {
    EXPECT_EQ(LxSVG_ReadText(nullptr, drawing.data(), drawing.size()), 0);
    EXPECT_EQ(LxSVG_ReadText(gc_, nullptr, 0), 0);
    EXPECT_EQ(LxSVG_ReadFile(nullptr, file_.c_str()), 0);
    EXPECT_EQ(LxSVG_ReadFile(gc_, nullptr), 0);
}

TEST_F(SvgExtras, NoByteBehindTheTextIsRead) {
    // The text ends where its memory ends; what stands behind a shorter length does not count.
    const std::vector<char> bytes(drawing.begin(), drawing.end());
    EXPECT_EQ(LxSVG_ReadText(gc_, bytes.data(), bytes.size()), 1);
    const std::string two = "<svg/>" + drawing;
    recorder_.take();
    EXPECT_EQ(LxSVG_ReadText(gc_, two.data(), 6), 1);
    EXPECT_EQ(recorder_.take(), Calls()) << "an element without attributes";
}

TEST_F(SvgExtras, TheTextIsNotChanged) {
    std::string text = "<svg viewBox='0 0 &#53;0 50'/>";
    const std::string before = text;
    EXPECT_EQ(readText(text), 1);
    EXPECT_EQ(text, before);
}

TEST_F(SvgExtras, ATooLongTextIsRefused) {
    std::string text = "<svg viewBox='0 0 50 50'/>";
    text.resize(XmlTree::maxFileBytes, '\n');
    EXPECT_EQ(readText(text), 1);
    text += '\n';
    EXPECT_EQ(readText(text), 0);
}

TEST_F(SvgExtras, PaintFlagsCarryOverUntilTheyAreStored) {
    const std::string path = "<svg viewBox='0 0 50 50'><path stroke='#000000' d='M0 0L9 0L9 9Z'/></svg>";
    readText(path);
    EXPECT_EQ(LxGC_RenderMode(gc_), uint32_t{kLxRenderFill | kLxRenderStroke});
    LxSVG_SetPaintFlags(kLxRenderStroke);
    readText(path);
    EXPECT_EQ(LxGC_RenderMode(gc_), uint32_t{kLxRenderStroke});
    LxSVG_SetPaintFlags(~0u);
    EXPECT_EQ(LxSVG_PaintFlags(), 3u);
}
