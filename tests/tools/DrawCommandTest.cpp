#include <chrono>
#include <cstring>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/Program.h"
#include "tools/DrawScript.h"
#include "tools/Failure.h"
#include "tools/PngFile.h"

using namespace lx::test;
using tool::ImageHandle;

namespace {

constexpr int32_t side = 32;

// The images that scripts find here: "mask" is grey, all others have colours.
ImageHandle loadImage(const std::string &file) {
    if (file == "missing")
        throw tool::Failure("missing: no such file");
    const bool isMask = file == "mask";
    ImageHandle image(LxImage_Create(isMask ? kLxPixelA : kLxPixelRGBA, 0, 0, 8, 8, 1, 0));
    for (int32_t y = 0; y < 8; ++y)
        for (int32_t x = 0; x < 8; ++x)
            if (isMask)
                lx::rowAddress(*image, y)[x] = static_cast<uint8_t>(x * 36);
            else
                std::memset(lx::rowAddress(*image, y) + ptrdiff_t{4} * x, 0x80 + 8 * y + x, 4);
    return image;
}

void append(std::string &to, LxColor color) {
    to.append(reinterpret_cast<const char *>(color.content.bytes), 4);
}

void append(std::string &to, LxBlend blend) {
    for (const int32_t field : {LxBlend_Mode(&blend), LxBlend_Opacity(&blend), LxBlend_Channel(&blend)})
        to += ' ' + std::to_string(field);
}

// All that a call can change: the context's attributes, and the pixels behind them.
std::string stateOf(LxGC *gc, const LxImage &image) {
    std::string state;
    for (const LxColor color : {LxGC_StrokeColor(gc), LxGC_FillColor(gc), LxGC_TextColor(gc)})
        append(state, color);
    for (const LxBlend blend :
         {LxGC_StrokeBlend(gc), LxGC_FillBlend(gc), LxGC_ImageBlend(gc), LxGC_TextBlend(gc)})
        append(state, blend);
    const LxRectD &bounds = *LxGC_BoundsRectPtr(gc), &clip = *LxGC_ClipRectPtr(gc);
    const LxMatrix &m = *LxGC_Matrix(gc);
    for (const double number : {LxGC_StrokeWidth(gc),
                                double(LxGC_StrokeStyle(gc)),
                                LxGC_TextSize(gc),
                                double(LxGC_TextFont(gc)),
                                double(LxGC_TextJust(gc)),
                                double(LxGC_RenderMode(gc)),
                                bounds.x0,
                                bounds.y0,
                                bounds.x1,
                                bounds.y1,
                                clip.x0,
                                clip.y0,
                                clip.x1,
                                clip.y1,
                                m.m0,
                                m.m1,
                                m.m2,
                                m.m3,
                                m.m4,
                                m.m5,
                                m.m6,
                                m.m7,
                                m.m8})
        state += ' ' + std::to_string(number);
    for (const LxGradient *gradient : {LxGC_StrokeGradient(gc), LxGC_FillGradient(gc), LxGC_TextGradient(gc)})
        state += gradient != nullptr ? 'g' : '-';
    for (uint32_t id = 0; id <= 22; ++id)
        state += std::to_string(LxGC_TestAttrFlag(gc, id));
    for (int32_t y = 0; y < side; ++y)
        state.append(reinterpret_cast<const char *>(lx::rowAddress(image, y)), size_t{4} * side);
    return state;
}

std::string stateAfterScript(const std::string &body) {
    tool::Drawing drawing(loadImage);
    tool::drawScript("size 32 32\n" + body, "script", drawing);
    LxGC *gc = drawing.context();
    const ImageHandle picture = drawing.finish();
    return stateOf(gc, *picture);
}

std::string stateAfterCalls(void (*calls)(LxGC *)) {
    const ImageHandle picture(LxImage_Create(kLxPixelRGBA, 0, 0, side, side, 1, 0));
    LxGC *gc = LxImage_GC(picture.get());
    calls(gc);
    return stateOf(gc, *picture);
}

enum Effect { isSeen, isNotSeen };

struct Case {
    const char *script;
    void (*calls)(LxGC *);
    Effect effect = isSeen;
};

void withGradient(LxGC *gc, void (*calls)(LxGC *, LxGradient *)) {
    static LxGradient *gradient = LxGradient_Create(); // contexts refer to it while they are looked at
    LxGradient_SetType(gradient, kLxGradientDiagonal, kLxGradientSine);
    LxGradient_AddColor(gradient, LxColor_RGBA(255, 0, 0, 255), 0, 0, 0.5);
    LxGradient_AddColor(gradient, LxColor_RGBA(0, 0, 255, 128), 1, 1, 0.25);
    calls(gc, gradient);
}

#define GRADIENT                                                                                             \
    "gradient g diagonal sine\ngradientColor g 0 255 0 0 255 0 0.5\ngradientColor g 1 0 0 255 128 1 0.25\n"

const Case attributeCases[] = {
    {"strokeColor 1 2 3 4", [](LxGC *gc) { LxGC_SetStrokeColor(gc, LxColor_RGBA(1, 2, 3, 4)); }},
    {"strokeWidth 2.5", [](LxGC *gc) { LxGC_SetStrokeWidth(gc, 2.5); }},
    {"strokeStyle mitre", [](LxGC *gc) { LxGC_SetStrokeStyle(gc, 64); }},
    {"strokeStyle 128", [](LxGC *gc) { LxGC_SetStrokeStyle(gc, 128); }},
    {"strokeBlend 5 100 rgb", [](LxGC *gc) { LxGC_SetStrokeBlend(gc, LxBlend_WithChannel(5, 100, 5)); }},
    {"strokeBlendMode 6", [](LxGC *gc) { LxGC_SetStrokeBlendMode(gc, 6); }},
    {"strokeBlendOpacity 7", [](LxGC *gc) { LxGC_SetStrokeBlendOpacity(gc, 7); }},
    {"strokeBlendChannel green", [](LxGC *gc) { LxGC_SetStrokeBlendChannel(gc, 2); }},
    {GRADIENT "fillGradient g", [](LxGC *gc) { withGradient(gc, LxGC_SetFillGradient); }},
    {GRADIENT "strokeGradient g", [](LxGC *gc) { withGradient(gc, LxGC_SetStrokeGradient); }},
    {GRADIENT "fillGradient g\nfillGradient none", [](LxGC *) {}, isNotSeen},
    {"fillColor 1 2 3 4", [](LxGC *gc) { LxGC_SetFillColor(gc, LxColor_RGBA(1, 2, 3, 4)); }},
    {"fillBlend Multiply 100 6",
     [](LxGC *gc) {
         int32_t mode = 0;
         while (std::strcmp(LxBlend_ModeName(mode), "Multiply") != 0)
             ++mode;
         LxGC_SetFillBlend(gc, LxBlend_WithChannel(mode, 100, 6));
     }},
    {"fillBlendMode 6", [](LxGC *gc) { LxGC_SetFillBlendMode(gc, 6); }},
    {"fillBlendOpacity 7", [](LxGC *gc) { LxGC_SetFillBlendOpacity(gc, 7); }},
    {"fillBlendChannel 3", [](LxGC *gc) { LxGC_SetFillBlendChannel(gc, 3); }},
    {"imageBlend 5 100 1", [](LxGC *gc) { LxGC_SetImageBlend(gc, LxBlend_WithChannel(5, 100, 1)); }},
    {"imageBlendMode 6", [](LxGC *gc) { LxGC_SetImageBlendMode(gc, 6); }},
    {"imageBlendOpacity 7", [](LxGC *gc) { LxGC_SetImageBlendOpacity(gc, 7); }},
    {"imageBlendChannel 3", [](LxGC *gc) { LxGC_SetImageBlendChannel(gc, 3); }},
    {"textSize 12.5", [](LxGC *gc) { LxGC_SetTextSize(gc, 12.5); }},
    {"textFont 3", [](LxGC *gc) { LxGC_SetTextFont(gc, 3); }},
    {"textColor 9 8 7 6", [](LxGC *gc) { LxGC_SetTextColor(gc, LxColor_RGBA(9, 8, 7, 6)); }},
    {"textJust 2", [](LxGC *gc) { LxGC_SetTextJust(gc, 2); }},
    {"textBlend 5 100 1", [](LxGC *gc) { LxGC_SetTextBlend(gc, LxBlend_WithChannel(5, 100, 1)); }},
    {"textBlendMode 6", [](LxGC *gc) { LxGC_SetTextBlendMode(gc, 6); }},
    {"textBlendOpacity 7", [](LxGC *gc) { LxGC_SetTextBlendOpacity(gc, 7); }},
    {"textBlendChannel 3", [](LxGC *gc) { LxGC_SetTextBlendChannel(gc, 3); }},
    {GRADIENT "textGradient g", [](LxGC *gc) { withGradient(gc, LxGC_SetTextGradient); }},
    {"attrFlag 22 1", [](LxGC *gc) { LxGC_SetAttrFlag(gc, 22, 1); }},
    {"renderMode 3", [](LxGC *gc) { LxGC_SetRenderMode(gc, 3); }},
    {"renderMode fill", [](LxGC *gc) { LxGC_SetRenderMode(gc, 1); }},
    {"boundsRect 1.5 2 30 31", [](LxGC *gc) { LxGC_SetBoundsRectD(gc, 1.5, 2, 30, 31); }},
    {"boundsRectL 1 2 30 31", [](LxGC *gc) { LxGC_SetBoundsRectL(gc, 1, 2, 30, 31); }},
    {"clipRect 1.5 2 30 31", [](LxGC *gc) { LxGC_SetClipRectD(gc, 1.5, 2, 30, 31); }},
    {"clipRectL 1 2 30 31", [](LxGC *gc) { LxGC_SetClipRectL(gc, 1, 2, 30, 31); }},
    {"clip 1.5 2 30 31", [](LxGC *gc) { LxGC_SetClip(gc, 1.5, 2, 30, 31); }},
    {"matrix 1 2 3 4 5 6 7 8 9", [](LxGC *gc) { *LxGC_Matrix(gc) = {1, 2, 3, 4, 5, 6, 7, 8, 9}; }},
    {"origin 3 4", [](LxGC *gc) { LxGC_SetOrigin(gc, 3, 4); }},
    {"origin 3 4\nmatrixScale 2 2\nmatrixIdentity", [](LxGC *gc) { LxGC_SetOrigin(gc, 3, 4); }},
    {"matrixMul 1 2 3 4 5 6 7 8 9",
     [](LxGC *gc) {
         const LxMatrix other = {1, 2, 3, 4, 5, 6, 7, 8, 9};
         LxGC_MatrixMul(gc, &other);
     }},
    {"matrixScale 2 -3e0", [](LxGC *gc) { LxGC_MatrixScale(gc, 2, -3); }},
    {"matrixTranslate 2 3", [](LxGC *gc) { LxGC_MatrixTranslate(gc, 2, 3); }},
    {"matrixRotate 0.5", [](LxGC *gc) { LxGC_MatrixRotate(gc, 0.5); }},
    {"matrixRotateDeg 30", [](LxGC *gc) { LxGC_MatrixRotateDeg(gc, 30); }},
};

const Case drawingCases[] = {
    {"background 1 2 3 4", [](LxGC *gc) { LxGC_Fill(gc, LxColor_RGBA(1, 2, 3, 4)); }},
    {"line 1 2 30 20", [](LxGC *gc) { LxGC_Line(gc, 1, 2, 30, 20); }},
    {"frame 1 2 30 20", [](LxGC *gc) { LxGC_Frame(gc, 1, 2, 30, 20); }},
    {"roundFrame 1 2 30 20 5 6", [](LxGC *gc) { LxGC_RoundFrame(gc, 1, 2, 30, 20, 5, 6); }},
    {"ellipse 16 15 10 8", [](LxGC *gc) { LxGC_Ellipse(gc, 16, 15, 10, 8); }},
    {"circle 16 15 10", [](LxGC *gc) { LxGC_Circle(gc, 16, 15, 10); }},
    {"poly 1,2 30,5 12,28",
     [](LxGC *gc) {
         const LxPointD points[] = {{1, 2}, {30, 5}, {12, 28}};
         LxGC_Poly(gc, points, 3);
     }},
    {"path \"M 1 2 Q 30 5 12 28 Z\"",
     [](LxGC *gc) {
         LxPath *path = LxPath_Create();
         LxPath_AddMoveTo(path, 1, 2);
         LxPath_AddQCurveTo(path, 30, 5, 12, 28);
         LxPath_AddClose(path);
         LxGC_Path(gc, path);
         LxPath_Delete(path);
     }},
    {"path M1,2L30,5 # without quotes too", [](LxGC *gc) { LxGC_Line(gc, 1, 2, 30, 5); }},
    {GRADIENT "renderMode 1\nfillGradient g\ncircle 16 16 12",
     [](LxGC *gc) {
         withGradient(gc, LxGC_SetFillGradient);
         LxGC_SetRenderMode(gc, 1);
         LxGC_Circle(gc, 16, 16, 12);
     }},
    {"hLineL 3 20 7", [](LxGC *gc) { LxGC_HLineL(gc, 3, 20, 7); }},
    {"vLineL 3 4 20", [](LxGC *gc) { LxGC_VLineL(gc, 3, 4, 20); }, isNotSeen},
    {"lineL 3 4 20 27", [](LxGC *gc) { LxGC_LineL(gc, 3, 4, 20, 27); }},
    {"aLineL 3 4 20 27", [](LxGC *gc) { LxGC_ALineL(gc, 3, 4, 20, 27); }},
    {"frameL 3 4 20 27", [](LxGC *gc) { LxGC_FrameL(gc, 3, 4, 20, 27); }},
    {"ellipseL 3 4 20 27", [](LxGC *gc) { LxGC_EllipseL(gc, 3, 4, 20, 27); }, isNotSeen},
    {"fill 9 8 7 6", [](LxGC *gc) { LxGC_Fill(gc, LxColor_RGBA(9, 8, 7, 6)); }},
    {"fill 9 8 7 6\nclear", [](LxGC *gc) { LxGC_Clear(gc); }, isNotSeen},
    {"sync", [](LxGC *gc) { LxGC_Sync(gc); }, isNotSeen},
    {"flush", [](LxGC *gc) { LxGC_Flush(gc); }, isNotSeen},
    {"image photo", [](LxGC *gc) { LxGC_DrawImage(gc, loadImage("photo").get()); }},
    {"image photo 5 -3", [](LxGC *gc) { LxGC_DrawImageAt(gc, 5, -3, loadImage("photo").get()); }},
    {"imageWithMask photo 5 6 mask",
     [](LxGC *gc) { LxGC_DrawImageWithMask(gc, 5, 6, loadImage("photo").get(), loadImage("mask").get()); }},
    {"imageClipped photo 5 6 7 8 10 11",
     [](LxGC *gc) {
         LxGC_DrawImageClipped(gc, 5, 6, loadImage("photo").get(), LxRectL{7, 8, 10, 11});
     }},
    {"imageClippedWithMask photo 5 4 mask 6 5 10 11",
     [](LxGC *gc) {
         LxGC_DrawImageClippedWithMask(gc, 5, 4, loadImage("photo").get(), loadImage("mask").get(),
                                       LxRectL{6, 5, 10, 11});
     }},
    {"text 3 4 \"a # text\"", [](LxGC *gc) { LxGC_DrawText(gc, 3, 4, "a # text"); }, isNotSeen},
    {"textWithLength 3 4 \"text\" 2", [](LxGC *gc) { LxGC_DrawTextWithLength(gc, 3, 4, "text", 2); },
     isNotSeen},
};

template <size_t n>
void expectSameAsCalls(const Case (&cases)[n]) {
    const std::string untouched = stateAfterCalls([](LxGC *) {});
    for (const Case &each : cases) {
        const std::string state = stateAfterScript(each.script);
        EXPECT_TRUE(state == stateAfterCalls(each.calls)) << each.script;
        EXPECT_EQ(state != untouched, each.effect == isSeen) << each.script;
    }
}

template <size_t n>
void collectNames(const Case (&cases)[n], std::set<std::string> &names) {
    for (const Case &each : cases) {
        std::istringstream lines(each.script);
        for (std::string line; std::getline(lines, line);)
            names.insert(line.substr(0, line.find(' ')));
    }
}

std::string errorOf(const std::string &script, const tool::DrawLimits &limits = {}) {
    try {
        tool::Drawing drawing(loadImage);
        tool::drawScript(script, "script", drawing, limits);
        return "";
    } catch (const tool::Failure &failure) {
        return failure.what();
    }
}

std::string errorAfterSize(const std::string &line) {
    return errorOf("# a comment\nsize 32 32\n\n" + line + "\n");
}

} // namespace

TEST(DrawScript, SetsAttributesAsTheCallsDo) {
    expectSameAsCalls(attributeCases);
}

TEST(DrawScript, DrawsAsTheCallsDo) {
    expectSameAsCalls(drawingCases);
}

TEST(DrawScript, EveryCommandIsTried) {
    std::set<std::string> tried = {"size"};
    collectNames(attributeCases, tried);
    collectNames(drawingCases, tried);
    std::set<std::string> all;
    for (const tool::DrawForm &form : tool::drawForms())
        EXPECT_TRUE(all.emplace(form.name).second) << form.name;
    EXPECT_EQ(tried, all);
}

TEST(DrawScript, SuggestsTheNearestCommand) {
    EXPECT_EQ(errorAfterSize("fillColour 1 2 3 4"),
              "script:4: unknown command 'fillColour', did you mean 'fillColor'?");
    EXPECT_EQ(errorAfterSize("Circle 1 2 3"), "script:4: unknown command 'Circle', did you mean 'circle'?");
    EXPECT_EQ(errorAfterSize("somethingElse"), "script:4: unknown command 'somethingElse'");
    EXPECT_EQ(errorAfterSize(std::string(100000, 'x')),
              "script:4: unknown command '" + std::string(40, 'x') + "...'");
    EXPECT_EQ(errorAfterSize("a\x1b[2Jb"), "script:4: unknown command 'a?[2Jb'");
}

TEST(DrawScript, NamesTheArgumentsThatItWants) {
    EXPECT_EQ(errorAfterSize("line 1 2 3"), "script:4: expected line X1 Y1 X2 Y2");
    EXPECT_EQ(errorAfterSize("clear 1"), "script:4: expected clear");
    EXPECT_EQ(errorAfterSize("image photo 1"), "script:4: expected image FILE [X Y]");
    EXPECT_EQ(errorAfterSize("poly 1 2 3"), "script:4: expected poly X Y ...");
    EXPECT_EQ(errorAfterSize("poly"), "script:4: expected poly X Y ...");
    EXPECT_EQ(errorAfterSize("path"), "script:4: expected path PATH");
}

TEST(DrawScript, NamesBadArguments) {
    EXPECT_EQ(errorAfterSize("strokeWidth wide"), "script:4: WIDTH is no number: 'wide'");
    EXPECT_EQ(errorAfterSize("strokeWidth 1x"), "script:4: WIDTH is no number: '1x'");
    EXPECT_EQ(errorAfterSize("strokeWidth inf"), "script:4: WIDTH is no number: 'inf'");
    EXPECT_EQ(errorAfterSize("strokeWidth nan"), "script:4: WIDTH is no number: 'nan'");
    EXPECT_EQ(errorAfterSize("strokeWidth 1e999"), "script:4: WIDTH is no number: '1e999'");
    EXPECT_EQ(errorAfterSize("strokeWidth \"\""), "script:4: WIDTH is no number: ''");
    EXPECT_EQ(errorAfterSize("fillColor 1 2 256 4"), "script:4: B is no whole number of 0 to 255: '256'");
    EXPECT_EQ(errorAfterSize("fillColor 1 2 0.5 4"), "script:4: B is no whole number of 0 to 255: '0.5'");
    EXPECT_EQ(errorAfterSize("lineL 1 2 16385 4"),
              "script:4: X2 is no whole number of -16384 to 16384: '16385'");
    EXPECT_EQ(errorAfterSize("clip 1 2 -16384.5 4"),
              "script:4: X1 is no number of -16384 to 16384: '-16384.5'");
    EXPECT_EQ(errorAfterSize("gradient g down round"),
              "script:4: 'round' is no CURVE; there are linear, curved, sine, sphereInc, sphereDec");
    EXPECT_EQ(errorAfterSize("gradient none down linear"), "script:4: a gradient cannot be called none");
    EXPECT_EQ(errorAfterSize("fillGradient g"), "script:4: there is no gradient \"g\" yet");
    EXPECT_EQ(errorAfterSize("gradient g 0 0\ngradientColor g 10 1 2 3 4 0 0.5"),
              "script:5: INDEX is no whole number of 0 to 9: '10'");
    EXPECT_EQ(errorAfterSize("fillBlendMode Fog").find("script:4: Fog is no mode; there are "), 0U);
    EXPECT_EQ(errorAfterSize("path M 1 2 X"), "script:4: \"X\" is no item of a path");
    EXPECT_EQ(errorAfterSize("text 1 2 \"open"), "script:4: a quote is not closed");
    EXPECT_EQ(errorAfterSize("textWithLength 1 2 four 5"), "script:4: the text has 4 bytes");
    EXPECT_EQ(errorAfterSize("image missing"), "script:4: missing: no such file");
    EXPECT_EQ(errorAfterSize("imageWithMask photo 1 2 photo"),
              "script:4: photo: a mask is a grey picture, and this one has colours or transparency");
}

TEST(DrawScript, WantsTheSizeFirstAndTheBackgroundNext) {
    EXPECT_EQ(errorOf(""), "script: no commands");
    EXPECT_EQ(errorOf("# nothing\n\n"), "script: no commands");
    EXPECT_EQ(errorOf("\nclear"), "script:2: the first command must be size W H");
    EXPECT_EQ(errorAfterSize("size 1 2"), "script:4: size stands only at the beginning");
    EXPECT_EQ(errorAfterSize("clear\nbackground 1 2 3 4"),
              "script:5: background stands only behind size; fill stores a colour everywhere later on");
    EXPECT_EQ(errorOf("size 0 5"), "script:1: W is no whole number of 1 to 8192: '0'");
    EXPECT_EQ(errorOf("size 5 8193"), "script:1: H is no whole number of 1 to 8192: '8193'");
}

TEST(DrawScript, HoldsToItsLimits) {
    EXPECT_EQ(errorOf("size 8 8 #", {.bytes = 9}), "script: longer than 9 bytes");
    EXPECT_EQ(errorOf("size 8 8 ", {.bytes = 9}), "");
    std::string script = "size 8 8\n";
    for (int i = 0; i < 257; ++i)
        script += "gradient g" + std::to_string(i) + " down linear\n";
    EXPECT_EQ(errorOf(script), "script:258: more than 256 gradients");
}

TEST(DrawScript, ReadsLinesOfEverySystem) {
    EXPECT_EQ(errorOf("size 8 8\r\n\tclear\r\n# end"), "");
}

class DrawCommand : public testing::Test {
protected:
    ProgramResult draw(const std::string &script, const std::string &options = "") {
        writeFile(folder_ / "a.draw", script);
        return runProgram("draw " + (folder_ / "a.draw").string() + " -o " + output_.string() + ' ' +
                          options);
    }

    TemporaryFolder folder_;
    std::filesystem::path output_ = folder_ / "out.png";
};

TEST_F(DrawCommand, WritesThePictureWithImagesFromBesideTheScript) {
    tool::writePng((folder_ / "photo.png").string(), *loadImage("photo"));
    const ProgramResult result = draw("size 40 20\nbackground 10 20 30 255\nimage photo.png 32 0\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    const ImageHandle picture = tool::readPng(output_.string());
    EXPECT_EQ(lx::width(*picture), 40);
    EXPECT_EQ(lx::height(*picture), 20);
    LxColor color = {};
    LxImage_PixelAt(picture.get(), 0, 0, &color);
    EXPECT_EQ(color.content.rgba.g, 20);
    LxImage_PixelAt(picture.get(), 39, 7, &color);
    EXPECT_NE(color.content.rgba.g, 20);
}

TEST_F(DrawCommand, AnErrorLeavesNoPictureAndAStatusOfTwo) {
    const ProgramResult result = draw("size 40 20\nimage photo.png 0 0\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.errors.find("a.draw:2: "), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("photo.png"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(output_));
    EXPECT_EQ(runProgram("draw /no/such/script -o " + output_.string()).status, 2);
    EXPECT_EQ(runProgram("draw " + folder_.path().string() + " -o " + output_.string()).status, 2);
}

TEST_F(DrawCommand, RefusesALongScriptAndGivesUpOnASlowOne) {
    EXPECT_EQ(draw(std::string((size_t{1} << 20) + 1, '#')).errors,
              "oxlume: " + (folder_ / "a.draw").string() + ": longer than 1048576 bytes\n");
    std::string script = "size 4096 4096\n";
    for (int i = 0; i < 50000; ++i)
        script += "fill 1 2 3 4\n";
    const auto start = std::chrono::steady_clock::now();
    const ProgramResult result = draw(script, "--seconds 1");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "oxlume: " + (folder_ / "a.draw").string() + ": takes longer than 1 seconds\n");
    EXPECT_FALSE(std::filesystem::exists(output_));
}

TEST_F(DrawCommand, HelpListsTheCommands) {
    const std::string help = runProgram("draw --help").output;
    EXPECT_NE(help.find("roundFrame X1 Y1 X2 Y2 RX RY"), std::string::npos);
}
