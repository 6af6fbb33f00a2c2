// The kernels of all cells, and the tables that select them.
#include <oxlume/LxBlend.h>

#include <array>
#include <cstring>
#include <utility>

#include "blend/Pipeline.h"
#include "blend/Plan.h"
#include "blend/Reference.h"
#include "foundation/Numeric.h"

namespace lx {
namespace {

const uint8_t *bytes(const void *pixels) {
    return static_cast<const uint8_t *>(pixels);
}

uint8_t *bytes(void *pixels) {
    return static_cast<uint8_t *>(pixels);
}

[[gnu::noinline]] void blendPixel(Cell cell, const LxBlend &blend, void *out, const void *a, const void *b) {
    const Plan plan = planOf(cell, blend, false);
    if (!plan.isEmpty())
        blendRowByRule(plan, bytes(out), bytes(a), bytes(b), nullptr, 1);
}

[[gnu::noinline]] void blendMap(Cell cell, const LxBlend &blend, void *out, const void *a, const void *b,
                                const void *mask, int32_t outStride, int32_t aStride, int32_t bStride,
                                int32_t maskStride, uint32_t width, uint32_t height) {
    const Plan plan = planOf(cell, blend, mask != nullptr);
    if (plan.isEmpty())
        return;
    // Rows without a gap are one long row: the order of pixels is the same.
    const uint64_t pixels = uint64_t{width} * height;
    const auto isPacked = [&](int32_t stride, int bytesOfPixel) {
        return stride == int64_t{width} * bytesOfPixel;
    };
    if (pixels <= UINT32_MAX && isPacked(outStride, bytesOf(cell.out)) &&
        isPacked(aStride, bytesOf(cell.a)) && isPacked(bStride, bytesOf(cell.b)) &&
        (mask == nullptr || isPacked(maskStride, 1))) {
        width = static_cast<uint32_t>(pixels);
        height = height == 0 ? 0 : 1;
    }
    const auto eachRow = [&](auto row) {
        for (int64_t y = 0; y < height; ++y)
            row(bytes(out) + y * outStride, bytes(a) + y * aStride, bytes(b) + y * bStride,
                mask != nullptr ? bytes(mask) + y * maskStride : nullptr);
    };
    if (!Pipeline::serves(plan, width, height)) {
        eachRow([&](uint8_t *o, const uint8_t *ra, const uint8_t *rb, const uint8_t *m) {
            blendRowByRule(plan, o, ra, rb, m, width);
        });
        return;
    }
    Pipeline pipeline(plan, mask != nullptr, width);
    eachRow([&](uint8_t *o, const uint8_t *ra, const uint8_t *rb, const uint8_t *m) {
        pipeline.blendRow(o, ra, rb, m, width);
    });
}

void blendLine(Cell cell, const LxBlend &blend, void *out, const void *a, const void *b, uint32_t width) {
    blendMap(cell, blend, out, a, b, nullptr, 0, 0, 0, 0, width, 1);
}

// Writes a picture of floats as bytes: truncated, the low byte kept, the same in every colour. Neither the
// blend nor the mask matters.
template <Layout layout>
void convertFloats(const LxBlend *, void *out, const void *, const void *b, const void *, int32_t outStride,
                   int32_t, int32_t bStride, int32_t, uint32_t width, uint32_t height) {
    for (int64_t y = 0; y < height; ++y) {
        uint8_t *to = bytes(out) + y * outStride;
        const uint8_t *from = bytes(b) + y * bStride;
        for (uint32_t x = 0; x < width; ++x, from += sizeof(float)) {
            float value;
            std::memcpy(&value, from, sizeof value);
            const auto grey =
                static_cast<uint8_t>(static_cast<uint32_t>(truncateToInt32(double{value} * 255.0)));
            for (int i = 0; i < coloursOf(layout); ++i)
                *to++ = grey;
            if (layout == Layout::rgba)
                *to++ = 255;
        }
    }
}

// A kernel's cell is part of its address.
template <int out, int b>
constexpr Cell inPlace = {static_cast<Layout>(out), static_cast<Layout>(out), static_cast<Layout>(b)};

template <int outLayout, int bLayout>
void pixelKernel(const LxBlend *blend, void *out, const void *a, const void *b) {
    blendPixel(inPlace<outLayout, bLayout>, *blend, out, a, b);
}

template <int outLayout, int bLayout>
void lineKernel(const LxBlend *blend, void *out, const void *a, const void *b, uint32_t width) {
    blendLine(inPlace<outLayout, bLayout>, *blend, out, a, b, width);
}

template <int outLayout, int aLayout, int bLayout>
void mapKernel(const LxBlend *blend, void *out, const void *a, const void *b, const void *mask,
               int32_t outStride, int32_t aStride, int32_t bStride, int32_t maskStride, uint32_t width,
               uint32_t height) {
    constexpr Cell cell = {static_cast<Layout>(outLayout), static_cast<Layout>(aLayout),
                           static_cast<Layout>(bLayout)};
    blendMap(cell, *blend, out, a, b, mask, outStride, aStride, bStride, maskStride, width, height);
}

template <int... i>
constexpr std::array<LxPixelBlendFunction, 9> pixelTable(std::integer_sequence<int, i...>) {
    return {pixelKernel<i / 3, i % 3>...};
}

template <int... i>
constexpr std::array<LxLineBlendFunction, 9> lineTable(std::integer_sequence<int, i...>) {
    return {lineKernel<i / 3, i % 3>...};
}

template <int... i>
constexpr std::array<LxMapBlendFunction, 27> mapTable(std::integer_sequence<int, i...>) {
    return {mapKernel<i / 9, i / 3 % 3, i % 3>...};
}

constexpr auto pixelKernels = pixelTable(std::make_integer_sequence<int, 9>());
constexpr auto lineKernels = lineTable(std::make_integer_sequence<int, 9>());
constexpr auto mapKernels = mapTable(std::make_integer_sequence<int, 27>());

constexpr int noLayout = -1;

// The layout that blends as `type` does, for types that blend.
constexpr int layoutOf(int32_t type) {
    switch (type) {
    case kLxPixelA:
    case kLxPixelRGB:
    case kLxPixelRGBA:
        return type;
    case kLxPixelRGBAPremultiplied:
        return kLxPixelRGBA;
    default:
        return noLayout;
    }
}

// On purpose: a premultiplied picture is no first source, and so no destination in place.
constexpr int firstLayoutOf(int32_t type) {
    return type == kLxPixelRGBAPremultiplied ? noLayout : layoutOf(type);
}

LxMapBlendFunction floatKernel(int out, int a) {
    if (out != a)
        return nullptr;
    constexpr LxMapBlendFunction kernels[layoutCount] = {convertFloats<Layout::a>, convertFloats<Layout::rgb>,
                                                         convertFloats<Layout::rgba>};
    return kernels[out];
}

// Where the tables have the kernel of two layouts.
size_t cell(int first, int second) {
    return static_cast<size_t>(first) * 3 + static_cast<size_t>(second);
}

} // namespace
} // namespace lx

using namespace lx;

LxPixelBlendFunction LxBlend_SelectPixelBlendFunction(int32_t outType, int32_t bType) {
    const int out = firstLayoutOf(outType), b = layoutOf(bType);
    return out == noLayout || b == noLayout ? nullptr : pixelKernels[cell(out, b)];
}

LxLineBlendFunction LxBlend_SelectLineBlendFunction(int32_t outType, int32_t bType) {
    const int out = firstLayoutOf(outType), b = layoutOf(bType);
    return out == noLayout || b == noLayout ? nullptr : lineKernels[cell(out, b)];
}

LxMapBlendFunction LxBlend_SelectMapBlendFunction(int32_t outType, int32_t aType, int32_t bType) {
    const int out = layoutOf(outType), a = firstLayoutOf(aType), b = layoutOf(bType);
    if (out == noLayout || a == noLayout)
        return nullptr;
    if (bType == kLxPixelF)
        return floatKernel(out, a);
    return b == noLayout ? nullptr : mapKernels[cell(out, a) * 3 + static_cast<size_t>(b)];
}
