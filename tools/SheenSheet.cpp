#include "tools/SheenSheet.h"

#include <algorithm>
#include <string_view>

#include "image/Image.h"
#include "tools/Failure.h"
#include "tools/Progress.h"

namespace tool {
namespace {

constexpr int pictures = 5;
constexpr LxRGBA ground = {58, 60, 66, 255};

uint8_t over(uint8_t color, uint8_t alpha, uint8_t under) {
    return static_cast<uint8_t>((color * alpha + under * (255 - alpha) + 127) / 255);
}

// Lays a picture over the sheet at column `left`.
void place(const LxImage &picture, LxImage &sheet, int32_t left, int32_t top) {
    for (int32_t y = 0; y < lx::height(picture); ++y) {
        const auto *from = reinterpret_cast<const LxRGBA *>(lx::rowAddress(picture, y));
        auto *to = reinterpret_cast<LxRGBA *>(lx::rowAddress(sheet, y + top)) + left;
        for (int32_t x = 0; x < lx::width(picture); ++x) {
            const LxRGBA c = from[x];
            to[x] = {over(c.r, c.a, to[x].r), over(c.g, c.a, to[x].g), over(c.b, c.a, to[x].b), 255};
        }
    }
}

constexpr std::string_view shapedPreset = "[light]\nbrilliance = 1.25\nambient = 0.3\n[layer]\ncolor = 214, "
                                          "170, 92\nkInnerSize0 = 0.36\nkInnerSize1 = 0.3\n"
                                          "kBorderSize0 = -0.4\nkBorderSize1 = -0.4\nkCornerType = 1\n";

struct Companion {
    lx::SheenIndex first, last;
    std::string_view settings; // added to the shape above
};

// What some parameters need in order to do anything.
constexpr Companion companions[] = {
    {lx::kRotationPeriod, lx::kRotationPeriod,
     "kSymmetry = 1\nkInnerSize0 = 0.25\nkInnerSize1 = 0.5\n"
     "kBorderSize1 = -0.6\n"},
    {lx::kCenterPeriod0, lx::kCenterPeriod1, "kCentralArch = 0.9\nkCentralArchShape = 1\nkHeight = 0.3\n"},
    {lx::kSwirl, lx::kSwirl, "kSymmetry = 5\n"},
    {lx::kJitter, lx::kJitterSpeed, "kSymmetry = 5\nkJitter = 0.12\nkJitterSpeed = 0.2\n"},
    {lx::kJitter2, lx::kJitter2Speed, "kSymmetry = 5\nkJitter2 = -0.3\nkJitter2Speed = 0.2\n"},
    {lx::kVertCurve, lx::kVertShape, "kVertCurve = 0.7\n"},
    {lx::kVertBorderCurve, lx::kVertBorderShape, "kVertBorderCurve = 0.9\n"},
    {lx::kHorCurve, lx::kHorShape, "kHorCurve = 0.7\n"},
    {lx::kHorBorderCurve, lx::kHorBorderShape, "kHorBorderCurve = 0.9\n"},
    {lx::kVertArch, lx::kVertArchShape, "kVertArch = 0.7\nkHeight = 0.4\n"},
    {lx::kHorArch, lx::kHorArchShape, "kHorArch = 0.7\nkHeight = 0.4\n"},
    {lx::kCentralArch, lx::kCentralArchShape, "kCentralArch = 0.8\nkHeight = 0.4\n"},
    {lx::kNoiseAmount, lx::kNoiseNegClip,
     "kNoiseAmount = 0.2\nkNoiseZoom = -12\nkHeight = 0.6\nkInnerSize0 = 0.9\nkInnerSize1 = 0.9\n"
     "kCenter0 = 0\nkCenter1 = 0\n"},
    {lx::kNoiseVertCurve, lx::kNoiseHorCurve, "kNoiseZoom = -9\n"},
    {lx::kCenterRotationPeriod, lx::kCenterRotationPeriod,
     "kInnerSize0 = 0.6\nkInnerSize1 = 0.6\nkCenter0 = 0.6\n"},
    {lx::kProfileType, lx::kProfilePar3, "kBorderSize0 = -0.9\nkBorderSize1 = -0.9\n"},
    {lx::kElevationDirection, lx::kElevationAmount, "kHeight = 0.5\n"},
};

} // namespace

ImageHandle contactSheet(const lx::LxSheenDescriptor &descriptor, uint32_t parameter) {
    const int32_t size = descriptor.width;
    const int32_t margin = std::max(size / 16, 2);
    const int64_t width = int64_t{margin} + int64_t{pictures} * (size + margin);
    if (width > INT32_MAX)
        throw Failure("too large for a sheet: " + std::to_string(size));
    ImageHandle sheet(
        LxImage_Create(kLxPixelRGBA, 0, 0, static_cast<int32_t>(width), size + 2 * margin, 0, 0));
    if (sheet == nullptr)
        throw Failure("too large for a sheet: " + std::to_string(size));
    for (int32_t y = 0; y < lx::height(*sheet); ++y)
        std::fill_n(reinterpret_cast<LxRGBA *>(lx::rowAddress(*sheet, y)), width, ground);
    const lx::LxSheenParameter &row = lx::sheenParameters[parameter];
    Progress progress("rendering", pictures);
    for (int i = 0; i < pictures; ++i) {
        lx::LxSheenDescriptor drawn(descriptor);
        drawn.CurrentLayerRecord()->SetValue(parameter,
                                             row.minimum + (row.maximum - row.minimum) * i / (pictures - 1));
        if (drawn.Render() == 0)
            throw Failure("no picture of this size: " + std::to_string(size));
        place(*drawn.image, *sheet, margin + i * (size + margin), margin);
        progress.advance();
    }
    return sheet;
}

std::string sheetPreset(uint32_t parameter) {
    std::string text(shapedPreset);
    for (const Companion &companion : companions) {
        if (parameter >= companion.first && parameter <= companion.last)
            text += companion.settings;
    }
    return text;
}

} // namespace tool
