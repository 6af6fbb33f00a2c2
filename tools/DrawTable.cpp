#include "tools/DrawTable.h"

#include <new>
#include <tuple>
#include <type_traits>

#include "image/Image.h"
#include "tools/Failure.h"
#include "tools/PathText.h"

namespace tool {

namespace {

constexpr size_t maxGradients = 256;
constexpr size_t maxImages = 256;
constexpr int64_t maxPixels = int64_t{1} << 26; // of all images together

} // namespace

LxGradient *Drawing::makeGradient(const std::string &name) {
    if (name == "none")
        throw Failure("a gradient cannot be called none");
    auto &gradient = gradients_[name];
    if (gradients_.size() > maxGradients)
        throw Failure("more than " + std::to_string(maxGradients) + " gradients");
    if (gradient == nullptr)
        gradient.reset(LxGradient_Create());
    if (gradient == nullptr)
        throw std::bad_alloc();
    return gradient.get();
}

LxGradient *Drawing::gradient(const std::string &name) const {
    if (name == "none")
        return nullptr;
    const auto found = gradients_.find(name);
    if (found == gradients_.end())
        throw Failure("there is no gradient \"" + name + "\" yet");
    return found->second.get();
}

LxImage *Drawing::image(const std::string &file) {
    const auto known = images_.find(file);
    if (known != images_.end())
        return known->second.get();
    ImageHandle image = load_(file);
    pixels_ += int64_t{lx::width(*image)} * lx::height(*image);
    if (pixels_ > maxPixels || images_.size() == maxImages)
        throw Failure(file + ": too much to hold beside the images before it");
    return images_.emplace(file, std::move(image)).first->second.get();
}

LxImage *Drawing::mask(const std::string &file) {
    LxImage *mask = image(file);
    if (LxImage_Type(mask) != kLxPixelA)
        throw Failure(file + ": a mask is a grey picture, and this one has colours or transparency");
    return mask;
}

namespace {

// Takes a command's values in their order, as what a function of the library wants.
class Reader {
public:
    Reader(Drawing &drawing, const DrawValues &values) : drawing_(drawing), values_(values) {}

    template <class T>
    T next() {
        if constexpr (std::is_arithmetic_v<T>) {
            return static_cast<T>(values_.numbers[number_++]);
        } else if constexpr (std::is_same_v<T, LxColor>) {
            const auto r = next<uint8_t>(), g = next<uint8_t>(), b = next<uint8_t>(), a = next<uint8_t>();
            return LxColor_RGBA(r, g, b, a);
        } else if constexpr (std::is_same_v<T, LxBlend>) {
            const auto mode = next<int32_t>(), opacity = next<int32_t>(), channel = next<int32_t>();
            return LxBlend_WithChannel(mode, opacity, channel);
        } else if constexpr (std::is_same_v<T, LxRectL>) {
            const auto x0 = next<int32_t>(), y0 = next<int32_t>(), x1 = next<int32_t>(), y1 = next<int32_t>();
            return LxRectL{x0, y0, x1, y1};
        } else if constexpr (std::is_same_v<T, LxGradient *>) {
            return drawing_.gradient(text());
        } else if constexpr (std::is_same_v<T, LxImage *>) {
            return drawing_.image(text());
        } else {
            static_assert(std::is_same_v<T, const char *>);
            return text().c_str();
        }
    }

    const std::string &text() { return values_.texts[text_++]; }
    LxImage *mask() { return drawing_.mask(text()); }

private:
    Drawing &drawing_;
    const DrawValues &values_;
    size_t number_ = 0, text_ = 0;
};

template <class... Arguments>
void forward(void (*function)(LxGC *, Arguments...), Drawing &drawing, const DrawValues &values) {
    [[maybe_unused]] Reader reader(drawing, values);
    const std::tuple<Arguments...> arguments{reader.next<Arguments>()...}; // braces: from left to right
    std::apply([&](const auto &...each) { function(drawing.context(), each...); }, arguments);
}

// A command that is one call of the function, with the values as its arguments.
template <auto function>
void call(Drawing &drawing, const DrawValues &values) {
    forward(function, drawing, values);
}

LxMatrix matrixOf(const DrawValues &values) {
    const std::vector<double> &m = values.numbers;
    return {m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8]};
}

void drawPoly(Drawing &drawing, const DrawValues &values) {
    std::vector<LxPointD> points;
    for (size_t i = 0; i + 1 < values.numbers.size(); i += 2)
        points.push_back({values.numbers[i], values.numbers[i + 1]});
    LxGC_Poly(drawing.context(), points.data(), static_cast<int32_t>(points.size()));
}

void drawImage(Drawing &drawing, const DrawValues &values) {
    if (values.numbers.empty())
        call<LxGC_DrawImage>(drawing, values);
    else
        LxGC_DrawImageAt(drawing.context(), static_cast<int32_t>(values.numbers[0]),
                         static_cast<int32_t>(values.numbers[1]), drawing.image(values.texts[0]));
}

void drawImageWithMask(Drawing &drawing, const DrawValues &values) {
    Reader reader(drawing, values);
    const auto x = reader.next<int32_t>(), y = reader.next<int32_t>();
    LxImage *image = reader.next<LxImage *>();
    LxGC_DrawImageWithMask(drawing.context(), x, y, image, reader.mask());
}

void drawImageClipped(Drawing &drawing, const DrawValues &values) {
    Reader reader(drawing, values);
    const auto x = reader.next<int32_t>(), y = reader.next<int32_t>();
    LxImage *image = reader.next<LxImage *>();
    LxGC_DrawImageClipped(drawing.context(), x, y, image, reader.next<LxRectL>());
}

void drawImageClippedWithMask(Drawing &drawing, const DrawValues &values) {
    Reader reader(drawing, values);
    const auto x = reader.next<int32_t>(), y = reader.next<int32_t>();
    LxImage *image = reader.next<LxImage *>();
    LxImage *mask = reader.mask();
    LxGC_DrawImageClippedWithMask(drawing.context(), x, y, image, mask, reader.next<LxRectL>());
}

void setGradientColor(Drawing &drawing, const DrawValues &values) {
    Reader reader(drawing, values);
    LxGradient *gradient = reader.next<LxGradient *>();
    const auto index = reader.next<int32_t>();
    const auto color = reader.next<LxColor>();
    const auto position = reader.next<double>(), mid = reader.next<double>();
    LxGradient_AddColor(gradient, color, index, position, mid);
}

void drawTextWithLength(Drawing &drawing, const DrawValues &values) {
    const std::string &text = values.texts[0];
    if (values.numbers[2] < 0 || values.numbers[2] > static_cast<double>(text.size()))
        throw Failure("the text has " + std::to_string(text.size()) + " bytes");
    call<LxGC_DrawTextWithLength>(drawing, values);
}

constexpr DrawForm forms[] = {
    {"size", "W H",
     [](Drawing &drawing, const DrawValues &v) {
         drawing.begin(static_cast<int32_t>(v.numbers[0]), static_cast<int32_t>(v.numbers[1]));
     }},
    {"background", "R G B A", call<LxGC_Fill>},

    {"strokeColor", "R G B A", call<LxGC_SetStrokeColor>},
    {"strokeWidth", "WIDTH", call<LxGC_SetStrokeWidth>},
    {"strokeStyle", "STYLE", call<LxGC_SetStrokeStyle>},
    {"strokeBlend", "MODE OPACITY CHANNEL", call<LxGC_SetStrokeBlend>},
    {"strokeBlendMode", "MODE", call<LxGC_SetStrokeBlendMode>},
    {"strokeBlendOpacity", "OPACITY", call<LxGC_SetStrokeBlendOpacity>},
    {"strokeBlendChannel", "CHANNEL", call<LxGC_SetStrokeBlendChannel>},
    {"strokeGradient", "GRADIENT", call<LxGC_SetStrokeGradient>},
    {"fillColor", "R G B A", call<LxGC_SetFillColor>},
    {"fillBlend", "MODE OPACITY CHANNEL", call<LxGC_SetFillBlend>},
    {"fillBlendMode", "MODE", call<LxGC_SetFillBlendMode>},
    {"fillBlendOpacity", "OPACITY", call<LxGC_SetFillBlendOpacity>},
    {"fillBlendChannel", "CHANNEL", call<LxGC_SetFillBlendChannel>},
    {"fillGradient", "GRADIENT", call<LxGC_SetFillGradient>},
    {"imageBlend", "MODE OPACITY CHANNEL", call<LxGC_SetImageBlend>},
    {"imageBlendMode", "MODE", call<LxGC_SetImageBlendMode>},
    {"imageBlendOpacity", "OPACITY", call<LxGC_SetImageBlendOpacity>},
    {"imageBlendChannel", "CHANNEL", call<LxGC_SetImageBlendChannel>},
    {"textSize", "SIZE", call<LxGC_SetTextSize>},
    {"textFont", "FONT#", call<LxGC_SetTextFont>},
    {"textColor", "R G B A", call<LxGC_SetTextColor>},
    {"textJust", "JUSTIFICATION#", call<LxGC_SetTextJust>},
    {"textBlend", "MODE OPACITY CHANNEL", call<LxGC_SetTextBlend>},
    {"textBlendMode", "MODE", call<LxGC_SetTextBlendMode>},
    {"textBlendOpacity", "OPACITY", call<LxGC_SetTextBlendOpacity>},
    {"textBlendChannel", "CHANNEL", call<LxGC_SetTextBlendChannel>},
    {"textGradient", "GRADIENT", call<LxGC_SetTextGradient>},
    {"attrFlag", "ID VALUE#", call<LxGC_SetAttrFlag>},
    {"renderMode", "RENDER", call<LxGC_SetRenderMode>},

    {"gradient", "NAME TYPE CURVE",
     [](Drawing &drawing, const DrawValues &v) {
         LxGradient_SetType(drawing.makeGradient(v.texts[0]), static_cast<int32_t>(v.numbers[0]),
                            static_cast<int32_t>(v.numbers[1]));
     }},
    {"gradientColor", "GRADIENT INDEX R G B A POSITION MID", setGradientColor},

    {"boundsRect", "X0~ Y0~ X1~ Y1~", call<LxGC_SetBoundsRectD>},
    {"boundsRectL", "X0# Y0# X1# Y1#", call<LxGC_SetBoundsRectL>},
    {"clipRect", "X0~ Y0~ X1~ Y1~", call<LxGC_SetClipRectD>},
    {"clipRectL", "X0# Y0# X1# Y1#", call<LxGC_SetClipRectL>},
    {"clip", "X0~ Y0~ X1~ Y1~", call<LxGC_SetClip>},

    {"matrix", "M0 M1 M2 M3 M4 M5 M6 M7 M8",
     [](Drawing &drawing, const DrawValues &v) { *LxGC_Matrix(drawing.context()) = matrixOf(v); }},
    {"origin", "X Y", call<LxGC_SetOrigin>},
    {"matrixIdentity", "", call<LxGC_MatrixIdentity>},
    {"matrixMul", "M0 M1 M2 M3 M4 M5 M6 M7 M8",
     [](Drawing &drawing, const DrawValues &v) {
         const LxMatrix other = matrixOf(v);
         LxGC_MatrixMul(drawing.context(), &other);
     }},
    {"matrixScale", "SX SY", call<LxGC_MatrixScale>},
    {"matrixTranslate", "X Y", call<LxGC_MatrixTranslate>},
    {"matrixRotate", "RADIANS", call<LxGC_MatrixRotate>},
    {"matrixRotateDeg", "DEGREES", call<LxGC_MatrixRotateDeg>},

    {"line", "X1 Y1 X2 Y2", call<LxGC_Line>},
    {"frame", "X1 Y1 X2 Y2", call<LxGC_Frame>},
    {"roundFrame", "X1 Y1 X2 Y2 RX RY", call<LxGC_RoundFrame>},
    {"ellipse", "CX CY RX RY", call<LxGC_Ellipse>},
    {"circle", "CX CY RADIUS", call<LxGC_Circle>},
    {"poly", "POINTS", drawPoly},
    {"path", "PATH",
     [](Drawing &drawing, const DrawValues &v) {
         LxGC_Path(drawing.context(), parsePath(v.texts[0]).get());
     }},

    {"hLineL", "X1# X2# Y#", call<LxGC_HLineL>},
    {"vLineL", "X# Y1# Y2#", call<LxGC_VLineL>},
    {"lineL", "X1# Y1# X2# Y2#", call<LxGC_LineL>},
    {"aLineL", "X1# Y1# X2# Y2#", call<LxGC_ALineL>},
    {"frameL", "X1# Y1# X2# Y2#", call<LxGC_FrameL>},
    {"ellipseL", "X1# Y1# X2# Y2#", call<LxGC_EllipseL>},

    {"fill", "R G B A", call<LxGC_Fill>},
    {"clear", "", call<LxGC_Clear>},
    {"sync", "", call<LxGC_Sync>},
    {"flush", "", call<LxGC_Flush>},

    {"image", "FILE ? X# Y#", drawImage},
    {"imageWithMask", "FILE X# Y# MASK", drawImageWithMask},
    {"imageClipped", "FILE X# Y# X0# Y0# X1# Y1#", drawImageClipped},
    {"imageClippedWithMask", "FILE X# Y# MASK X0# Y0# X1# Y1#", drawImageClippedWithMask},
    {"text", "X Y TEXT", call<LxGC_DrawText>},
    {"textWithLength", "X Y TEXT LENGTH#", drawTextWithLength},
};

} // namespace

std::span<const DrawForm> drawForms() {
    return forms;
}

} // namespace tool
