// A context's attributes: their first values, their setters and getters.

#include "gc/Context.h"

namespace lx {
namespace {

constexpr LxColor black = {kLxPixelRGBA, {.rgba = {0, 0, 0, 255}}};

// Mode 2 lays a picture over another by its alpha; channel 6 is all four components.
constexpr LxBlend over = {2, 255, 6, 0, nullptr};

constexpr AttributeValue color(LxColor value) {
    return {.color = value};
}
constexpr AttributeValue number(double value) {
    return {.number = value};
}
constexpr AttributeValue integer(int32_t value) {
    return {.integer = value};
}
constexpr AttributeValue blend(LxBlend value) {
    return {.blend = value};
}
constexpr AttributeValue gradient(LxGradient *value) {
    return {.gradient = value};
}

// An attribute's value in a new context, and where there is no context or the attribute is not set.
struct AttributeDefault {
    LxAttribute id;
    AttributeValue initial;
    AttributeValue absent;
};

constexpr AttributeDefault defaults[] = {
    {kLxStrokeColor, color(black), color(black)},
    {kLxStrokeWidth, number(1), number(1)},
    {kLxStrokeStyle, integer(kLxStrokeItems), integer(0)},
    {kLxStrokeBlend, blend(over), blend(over)},
    {kLxStrokeGradient, gradient(nullptr), gradient(nullptr)},
    {kLxFillColor, color(black), color(black)},
    {kLxFillBlend, blend(over), blend(over)},
    {kLxFillGradient, gradient(nullptr), gradient(nullptr)},
    {kLxImageBlend, blend(over), blend(over)},
    {kLxTextSize, number(9), number(9)},
    {kLxTextFont, integer(1), integer(0)},
    {kLxTextColor, color(black), color(black)},
    {kLxTextJust, integer(5), integer(5)},
    {kLxTextBlend, blend(over), blend(over)},
    {kLxTextGradient, gradient(nullptr), gradient(nullptr)},
};

// The last columns of the table by number, so that a getter finds its own without a search.
constexpr std::array<AttributeValue, attributeCount> absentValues = [] {
    std::array<AttributeValue, attributeCount> values = {};
    for (const AttributeDefault &attribute : defaults)
        values[attribute.id] = attribute.absent;
    return values;
}();

void mark(Attribute &attribute, LxAttribute id) {
    attribute.id = id;
    attribute.flag = 1;
}

// Reads and writes the member that belongs to the attribute.
template <class Value>
Value get(const LxGC *gc, LxAttribute id, Value AttributeValue::*member) {
    if (gc == nullptr || gc->attributes[id].id == 0)
        return absentValues[id].*member;
    return gc->attributes[id].value.*member;
}

template <class Value>
void set(LxGC *gc, LxAttribute id, Value AttributeValue::*member, Value value) {
    if (gc == nullptr)
        return;
    gc->attributes[id].value.*member = value;
    mark(gc->attributes[id], id);
}

// One field of a blend, through the blend's own functions.
int32_t getField(const LxGC *gc, LxAttribute id, int32_t (*read)(const LxBlend *)) {
    const LxBlend blend = get(gc, id, &AttributeValue::blend);
    return read(&blend);
}

void setField(LxGC *gc, LxAttribute id, void (*write)(LxBlend *, int32_t), int32_t value) {
    if (gc == nullptr)
        return;
    write(&gc->attributes[id].value.blend, value);
    mark(gc->attributes[id], id);
}

} // namespace

void setInitialAttributes(LxGC &gc) {
    for (const AttributeDefault &attribute : defaults)
        gc.attributes[attribute.id] = {1, attribute.id, attribute.initial};
}

} // namespace lx

using namespace lx;

// ---- Stroke ----

void LxGC_SetStrokeColor(LxGC *gc, LxColor color) {
    set(gc, kLxStrokeColor, &AttributeValue::color, color);
}

LxColor LxGC_StrokeColor(const LxGC *gc) {
    return get(gc, kLxStrokeColor, &AttributeValue::color);
}

void LxGC_SetStrokeWidth(LxGC *gc, double width) {
    set(gc, kLxStrokeWidth, &AttributeValue::number, width);
}

double LxGC_StrokeWidth(const LxGC *gc) {
    return get(gc, kLxStrokeWidth, &AttributeValue::number);
}

void LxGC_SetStrokeStyle(LxGC *gc, int32_t style) {
    set(gc, kLxStrokeStyle, &AttributeValue::integer, style);
}

int32_t LxGC_StrokeStyle(const LxGC *gc) {
    return get(gc, kLxStrokeStyle, &AttributeValue::integer);
}

void LxGC_SetStrokeBlend(LxGC *gc, LxBlend blend) {
    set(gc, kLxStrokeBlend, &AttributeValue::blend, blend);
}

LxBlend LxGC_StrokeBlend(const LxGC *gc) {
    return get(gc, kLxStrokeBlend, &AttributeValue::blend);
}

void LxGC_SetStrokeGradient(LxGC *gc, LxGradient *gradient) {
    set(gc, kLxStrokeGradient, &AttributeValue::gradient, gradient);
}

LxGradient *LxGC_StrokeGradient(const LxGC *gc) {
    return get(gc, kLxStrokeGradient, &AttributeValue::gradient);
}

void LxGC_SetStrokeBlendMode(LxGC *gc, int32_t mode) {
    setField(gc, kLxStrokeBlend, LxBlend_SetMode, mode);
}

int32_t LxGC_StrokeBlendMode(const LxGC *gc) {
    return getField(gc, kLxStrokeBlend, LxBlend_Mode);
}

void LxGC_SetStrokeBlendChannel(LxGC *gc, int32_t channel) {
    setField(gc, kLxStrokeBlend, LxBlend_SetChannel, channel);
}

int32_t LxGC_StrokeBlendChannel(const LxGC *gc) {
    return getField(gc, kLxStrokeBlend, LxBlend_Channel);
}

void LxGC_SetStrokeBlendOpacity(LxGC *gc, int32_t opacity) {
    setField(gc, kLxStrokeBlend, LxBlend_SetOpacity, opacity);
}

int32_t LxGC_StrokeBlendOpacity(const LxGC *gc) {
    return getField(gc, kLxStrokeBlend, LxBlend_Opacity);
}

// ---- Fill ----

void LxGC_SetFillColor(LxGC *gc, LxColor color) {
    set(gc, kLxFillColor, &AttributeValue::color, color);
}

LxColor LxGC_FillColor(const LxGC *gc) {
    return get(gc, kLxFillColor, &AttributeValue::color);
}

void LxGC_SetFillBlend(LxGC *gc, LxBlend blend) {
    set(gc, kLxFillBlend, &AttributeValue::blend, blend);
}

LxBlend LxGC_FillBlend(const LxGC *gc) {
    return get(gc, kLxFillBlend, &AttributeValue::blend);
}

void LxGC_SetFillGradient(LxGC *gc, LxGradient *gradient) {
    set(gc, kLxFillGradient, &AttributeValue::gradient, gradient);
}

LxGradient *LxGC_FillGradient(const LxGC *gc) {
    return get(gc, kLxFillGradient, &AttributeValue::gradient);
}

void LxGC_SetFillBlendMode(LxGC *gc, int32_t mode) {
    setField(gc, kLxFillBlend, LxBlend_SetMode, mode);
}

int32_t LxGC_FillBlendMode(const LxGC *gc) {
    return getField(gc, kLxFillBlend, LxBlend_Mode);
}

void LxGC_SetFillBlendChannel(LxGC *gc, int32_t channel) {
    setField(gc, kLxFillBlend, LxBlend_SetChannel, channel);
}

int32_t LxGC_FillBlendChannel(const LxGC *gc) {
    return getField(gc, kLxFillBlend, LxBlend_Channel);
}

void LxGC_SetFillBlendOpacity(LxGC *gc, int32_t opacity) {
    setField(gc, kLxFillBlend, LxBlend_SetOpacity, opacity);
}

int32_t LxGC_FillBlendOpacity(const LxGC *gc) {
    return getField(gc, kLxFillBlend, LxBlend_Opacity);
}

// ---- Image ----

void LxGC_SetImageBlend(LxGC *gc, LxBlend blend) {
    set(gc, kLxImageBlend, &AttributeValue::blend, blend);
}

LxBlend LxGC_ImageBlend(const LxGC *gc) {
    return get(gc, kLxImageBlend, &AttributeValue::blend);
}

void LxGC_SetImageBlendMode(LxGC *gc, int32_t mode) {
    setField(gc, kLxImageBlend, LxBlend_SetMode, mode);
}

int32_t LxGC_ImageBlendMode(const LxGC *gc) {
    return getField(gc, kLxImageBlend, LxBlend_Mode);
}

void LxGC_SetImageBlendChannel(LxGC *gc, int32_t channel) {
    setField(gc, kLxImageBlend, LxBlend_SetChannel, channel);
}

int32_t LxGC_ImageBlendChannel(const LxGC *gc) {
    return getField(gc, kLxImageBlend, LxBlend_Channel);
}

void LxGC_SetImageBlendOpacity(LxGC *gc, int32_t opacity) {
    setField(gc, kLxImageBlend, LxBlend_SetOpacity, opacity);
}

int32_t LxGC_ImageBlendOpacity(const LxGC *gc) {
    return getField(gc, kLxImageBlend, LxBlend_Opacity);
}

// ---- Text ----

void LxGC_SetTextSize(LxGC *gc, double size) {
    set(gc, kLxTextSize, &AttributeValue::number, size);
}

double LxGC_TextSize(const LxGC *gc) {
    return get(gc, kLxTextSize, &AttributeValue::number);
}

void LxGC_SetTextFont(LxGC *gc, int32_t font) {
    set(gc, kLxTextFont, &AttributeValue::integer, font);
}

int32_t LxGC_TextFont(const LxGC *gc) {
    return get(gc, kLxTextFont, &AttributeValue::integer);
}

void LxGC_SetTextColor(LxGC *gc, LxColor color) {
    set(gc, kLxTextColor, &AttributeValue::color, color);
}

LxColor LxGC_TextColor(const LxGC *gc) {
    return get(gc, kLxTextColor, &AttributeValue::color);
}

void LxGC_SetTextJust(LxGC *gc, int32_t justification) {
    set(gc, kLxTextJust, &AttributeValue::integer, justification);
}

int32_t LxGC_TextJust(const LxGC *gc) {
    return get(gc, kLxTextJust, &AttributeValue::integer);
}

void LxGC_SetTextBlend(LxGC *gc, LxBlend blend) {
    set(gc, kLxTextBlend, &AttributeValue::blend, blend);
}

LxBlend LxGC_TextBlend(const LxGC *gc) {
    return get(gc, kLxTextBlend, &AttributeValue::blend);
}

void LxGC_SetTextGradient(LxGC *gc, LxGradient *gradient) {
    set(gc, kLxTextGradient, &AttributeValue::gradient, gradient);
}

LxGradient *LxGC_TextGradient(const LxGC *gc) {
    return get(gc, kLxTextGradient, &AttributeValue::gradient);
}

void LxGC_SetTextBlendMode(LxGC *gc, int32_t mode) {
    setField(gc, kLxTextBlend, LxBlend_SetMode, mode);
}

int32_t LxGC_TextBlendMode(const LxGC *gc) {
    return getField(gc, kLxTextBlend, LxBlend_Mode);
}

void LxGC_SetTextBlendChannel(LxGC *gc, int32_t channel) {
    setField(gc, kLxTextBlend, LxBlend_SetChannel, channel);
}

int32_t LxGC_TextBlendChannel(const LxGC *gc) {
    return getField(gc, kLxTextBlend, LxBlend_Channel);
}

void LxGC_SetTextBlendOpacity(LxGC *gc, int32_t opacity) {
    setField(gc, kLxTextBlend, LxBlend_SetOpacity, opacity);
}

int32_t LxGC_TextBlendOpacity(const LxGC *gc) {
    return getField(gc, kLxTextBlend, LxBlend_Opacity);
}

// ---- Marks and the render mode ----

int32_t LxGC_TestAttrFlag(const LxGC *gc, uint32_t id) {
    return gc != nullptr && id < attributeCount ? gc->attributes[id].flag : 0;
}

void LxGC_SetAttrFlag(LxGC *gc, uint32_t id, int32_t value) {
    if (gc != nullptr && id < attributeCount)
        gc->attributes[id].flag = value;
}

void LxGC_SetRenderMode(LxGC *gc, uint32_t mode) {
    if (gc != nullptr)
        gc->renderMode = mode;
}

// On purpose: no context fills, while a new context strokes.
uint32_t LxGC_RenderMode(const LxGC *gc) {
    return gc != nullptr ? gc->renderMode : uint32_t{kLxRenderFill};
}
