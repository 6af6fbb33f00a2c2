#include "gc/Context.h"

#include <set>

#include <gtest/gtest.h>

#include "tests/gc/Recorder.h"
#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

bool same(const LxColor &a, const LxColor &b) {
    return a.type == b.type && a.content.l == b.content.l;
}

bool same(const LxBlend &a, const LxBlend &b) {
    return a.mode == b.mode && a.opacity == b.opacity && a.channel == b.channel && a.pointer == b.pointer;
}

bool same(double a, double b) {
    return a == b;
}

bool same(int32_t a, int32_t b) {
    return a == b;
}

bool same(const LxGradient *a, const LxGradient *b) {
    return a == b;
}

const LxColor black = LxColor_RGBA(0, 0, 0, 255);
const LxBlend over = LxBlend_Make(2, 255);

// Two different values that no attribute starts with.
const LxColor colors[] = {LxColor_RGB(1, 2, 3), LxColor_F(0.5f)};
const double numbers[] = {-3.25, 1e300};
const int32_t integers[] = {192, -7};
const LxBlend blends[] = {LxBlend_WithChannel(17, 99, 3), LxBlend_Make(43, 0)};
int gradientMemory[2];
LxGradient *const gradients[] = {reinterpret_cast<LxGradient *>(&gradientMemory[0]),
                                 reinterpret_cast<LxGradient *>(&gradientMemory[1])};

// An attribute's pair of functions: what a new context and no context answer, and that each setter reaches
// this one attribute and its mark.
template <class Value>
void expectAttribute(uint32_t id, void (*set)(LxGC *, Value), Value (*get)(const LxGC *),
                     const Value &initial, const Value &absent, const Value (&values)[2]) {
    SCOPED_TRACE(id);
    const ContextHandle gc(LxGC_Create());
    EXPECT_TRUE(same(get(gc.get()), initial));
    EXPECT_TRUE(same(get(nullptr), absent));
    EXPECT_EQ(LxGC_TestAttrFlag(gc.get(), id), 1);

    for (uint32_t other = 0; other < attributeCount; ++other)
        LxGC_SetAttrFlag(gc.get(), other, 0);
    for (const Value &value : values) {
        set(gc.get(), value);
        EXPECT_TRUE(same(get(gc.get()), value));
    }
    for (uint32_t other = 0; other < attributeCount; ++other)
        EXPECT_EQ(LxGC_TestAttrFlag(gc.get(), other), other == id ? 1 : 0) << other;
    EXPECT_EQ(gc->attributes[id].id, static_cast<int32_t>(id));

    // The mark says nothing about the value; the attribute's own number does.
    LxGC_SetAttrFlag(gc.get(), id, 0);
    EXPECT_TRUE(same(get(gc.get()), values[1]));
    gc->attributes[id].id = 0;
    EXPECT_TRUE(same(get(gc.get()), absent));
    set(nullptr, values[0]);
}

struct BlendFunctions {
    uint32_t id;
    struct _LxBlend (*get)(const LxGC *);
    void (*setMode)(LxGC *, int32_t);
    void (*setChannel)(LxGC *, int32_t);
    void (*setOpacity)(LxGC *, int32_t);
    int32_t (*mode)(const LxGC *);
    int32_t (*channel)(const LxGC *);
    int32_t (*opacity)(const LxGC *);
};

constexpr BlendFunctions blendFunctions[] = {
    {4, LxGC_StrokeBlend, LxGC_SetStrokeBlendMode, LxGC_SetStrokeBlendChannel, LxGC_SetStrokeBlendOpacity,
     LxGC_StrokeBlendMode, LxGC_StrokeBlendChannel, LxGC_StrokeBlendOpacity},
    {10, LxGC_FillBlend, LxGC_SetFillBlendMode, LxGC_SetFillBlendChannel, LxGC_SetFillBlendOpacity,
     LxGC_FillBlendMode, LxGC_FillBlendChannel, LxGC_FillBlendOpacity},
    {13, LxGC_ImageBlend, LxGC_SetImageBlendMode, LxGC_SetImageBlendChannel, LxGC_SetImageBlendOpacity,
     LxGC_ImageBlendMode, LxGC_ImageBlendChannel, LxGC_ImageBlendOpacity},
    {20, LxGC_TextBlend, LxGC_SetTextBlendMode, LxGC_SetTextBlendChannel, LxGC_SetTextBlendOpacity,
     LxGC_TextBlendMode, LxGC_TextBlendChannel, LxGC_TextBlendOpacity},
};

} // namespace

TEST(Attributes, Colors) {
    expectAttribute(1, LxGC_SetStrokeColor, LxGC_StrokeColor, black, black, colors);
    expectAttribute(9, LxGC_SetFillColor, LxGC_FillColor, black, black, colors);
    expectAttribute(18, LxGC_SetTextColor, LxGC_TextColor, black, black, colors);
}

TEST(Attributes, Numbers) {
    expectAttribute(2, LxGC_SetStrokeWidth, LxGC_StrokeWidth, 1.0, 1.0, numbers);
    expectAttribute(15, LxGC_SetTextSize, LxGC_TextSize, 9.0, 9.0, numbers);
}

TEST(Attributes, Integers) {
    expectAttribute(3, LxGC_SetStrokeStyle, LxGC_StrokeStyle, 16, 0, integers);
    expectAttribute(16, LxGC_SetTextFont, LxGC_TextFont, 1, 0, integers);
    expectAttribute(19, LxGC_SetTextJust, LxGC_TextJust, 5, 5, integers);
}

TEST(Attributes, Blends) {
    expectAttribute(4, LxGC_SetStrokeBlend, LxGC_StrokeBlend, over, over, blends);
    expectAttribute(10, LxGC_SetFillBlend, LxGC_FillBlend, over, over, blends);
    expectAttribute(13, LxGC_SetImageBlend, LxGC_ImageBlend, over, over, blends);
    expectAttribute(20, LxGC_SetTextBlend, LxGC_TextBlend, over, over, blends);
    EXPECT_EQ(over.channel, 6u);
}

TEST(Attributes, Gradients) {
    LxGradient *const none = nullptr;
    expectAttribute(5, LxGC_SetStrokeGradient, LxGC_StrokeGradient, none, none, gradients);
    expectAttribute(11, LxGC_SetFillGradient, LxGC_FillGradient, none, none, gradients);
    expectAttribute(21, LxGC_SetTextGradient, LxGC_TextGradient, none, none, gradients);
}

TEST(AttributeBlends, FieldsAreSetOneByOneAndKeptToEightBits) {
    for (const BlendFunctions &f : blendFunctions) {
        SCOPED_TRACE(f.id);
        const ContextHandle gc(LxGC_Create());
        LxGC_SetAttrFlag(gc.get(), f.id, 0);
        f.setMode(gc.get(), 0x12B);
        EXPECT_EQ(LxGC_TestAttrFlag(gc.get(), f.id), 1);
        EXPECT_TRUE(same(f.get(gc.get()), LxBlend_WithChannel(0x2B, 255, 6)));
        f.setChannel(gc.get(), 0x103);
        EXPECT_TRUE(same(f.get(gc.get()), LxBlend_WithChannel(0x2B, 255, 3)));
        f.setOpacity(gc.get(), -1 - 100);
        EXPECT_TRUE(same(f.get(gc.get()), LxBlend_WithChannel(0x2B, 155, 3)));
        EXPECT_EQ(f.mode(gc.get()), 0x2B);
        EXPECT_EQ(f.channel(gc.get()), 3);
        EXPECT_EQ(f.opacity(gc.get()), 155);

        // Only this blend has changed.
        for (const BlendFunctions &other : blendFunctions)
            if (other.id != f.id) {
                EXPECT_TRUE(same(other.get(gc.get()), over));
            }
    }
}

TEST(AttributeBlends, FieldsOfNoContextAndOfAnUnsetBlendAreTheDefaults) {
    for (const BlendFunctions &f : blendFunctions) {
        const ContextHandle gc(LxGC_Create());
        f.setMode(gc.get(), 9);
        f.setOpacity(gc.get(), 9);
        f.setChannel(gc.get(), 1);
        gc->attributes[f.id].id = 0;
        for (const LxGC *context : {static_cast<LxGC *>(nullptr), gc.get()}) {
            EXPECT_EQ(f.mode(context), 2);
            EXPECT_EQ(f.channel(context), 6);
            EXPECT_EQ(f.opacity(context), 255);
        }
        // Setting one field makes the blend count again, with the others as they were stored.
        f.setMode(gc.get(), 11);
        EXPECT_TRUE(same(f.get(gc.get()), LxBlend_WithChannel(11, 9, 1)));
        f.setMode(nullptr, 1);
        f.setChannel(nullptr, 1);
        f.setOpacity(nullptr, 1);
    }
}

TEST(AttributeFlags, StandForAllNumbersTo22) {
    const ContextHandle gc(LxGC_Create());
    const std::set<uint32_t> named = {1, 2, 3, 4, 5, 9, 10, 11, 13, 15, 16, 18, 19, 20, 21};
    for (uint32_t id = 0; id <= 22; ++id) {
        EXPECT_EQ(LxGC_TestAttrFlag(gc.get(), id), named.count(id) != 0 ? 1 : 0) << id;
        LxGC_SetAttrFlag(gc.get(), id, -5 - static_cast<int32_t>(id));
        EXPECT_EQ(LxGC_TestAttrFlag(gc.get(), id), -5 - static_cast<int32_t>(id));
    }
}

TEST(AttributeFlags, OtherNumbersReadAsZeroAndAreNotWritten) {
    const ContextHandle gc(LxGC_Create());
    const LxRectD clip = {1, 2, 3, 4};
    gc->bounds = clip;
    for (const uint32_t id : {23u, 24u, 0x80000000u, 0xFFFFFFFFu}) {
        LxGC_SetAttrFlag(gc.get(), id, 77);
        EXPECT_EQ(LxGC_TestAttrFlag(gc.get(), id), 0);
    }
    EXPECT_EQ(gc->bounds.x0, 1);
    EXPECT_EQ(LxGC_TestAttrFlag(nullptr, 1), 0);
    LxGC_SetAttrFlag(nullptr, 1, 1);
}

TEST(RenderMode, IsStoredAsItStands) {
    const ContextHandle gc(LxGC_Create());
    for (const uint32_t mode : {0u, 1u, 3u, 0xFFFFFFFFu}) {
        LxGC_SetRenderMode(gc.get(), mode);
        EXPECT_EQ(LxGC_RenderMode(gc.get()), mode);
    }
    EXPECT_EQ(LxGC_RenderMode(nullptr), 1u);
    LxGC_SetRenderMode(nullptr, 3);
}
