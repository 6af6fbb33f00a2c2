// Filling, clearing, copying, and arithmetic on all pixels of an image.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "image/Image.h"
#include "image/Pixels.h"

namespace lx {
namespace {

template <size_t bytes>
void fillPixels(uint8_t *run, int64_t count, const LxColor &color) {
    for (int64_t i = 0; i < count; ++i, run += bytes)
        std::memcpy(run, color.content.bytes, bytes);
}

// Stores `count` pixels of `bytes` bytes.
void fillRun(uint8_t *run, size_t bytes, int64_t count, LxColor color) {
    switch (bytes) {
    case 1:
        return fillPixels<1>(run, count, color);
    case 3:
        return fillPixels<3>(run, count, color);
    case 4:
        return fillPixels<4>(run, count, color);
    default:
        return;
    }
}

void fill(LxImage &image, const LxColor &color) {
    const size_t bytes = storedBytes(image);
    forEachStoredRow(image, [&](uint8_t *row) { fillRun(row, bytes, width(image), color); });
}

// Copies what fits of each row. Longer rows of the source run into the next row, which is then overwritten,
// and the last one's excess is dropped; what no byte of a shorter row reaches is zero.
void copyRows(const LxImage &from, LxImage &to) {
    const uint8_t *source = firstRow(from);
    const int32_t copied = source != nullptr ? std::clamp(from.rowBytes, 0, to.rowBytes) : 0;
    int32_t y = 0;
    forEachStoredRow(to, [&](uint8_t *row) {
        if (copied > 0)
            std::memcpy(row, source + ptrdiff_t{y} * from.rowBytes, static_cast<size_t>(copied));
        std::memset(row + copied, 0, static_cast<size_t>(to.rowBytes - copied));
        ++y;
    });
}

LxImage *copyOf(const LxImage &image) {
    LxImage *copy = createImage(static_cast<int32_t>(image.type), image.rect, false, image.flipped != 0);
    if (copy == nullptr)
        return nullptr;
    copyRows(image, *copy);
    copy->cut = image.cut;
    copy->tiled = image.tiled;
    copy->segment = image.segment;
    if (image.gc != nullptr)
        LxImage_GC(copy);
    return copy;
}

using ByteTable = std::array<uint8_t, 256>;

// Replaces the first `count` of every `step` bytes of all rows by the table's.
void replace(LxImage &image, const ByteTable &table, int step, int count) {
    forEachStoredRow(image, [&](uint8_t *row) {
        for (int32_t x = 0; x < width(image); ++x, row += step) {
            for (int i = 0; i < count; ++i)
                row[i] = table[row[i]];
        }
    });
}

template <class Function>
ByteTable tableOf(Function function) {
    ByteTable table;
    for (int c = 0; c < 256; ++c)
        table[static_cast<size_t>(c)] = static_cast<uint8_t>(function(c));
    return table;
}

void add(LxImage &image, double amount) {
    // On purpose: 256 wraps to 0, so the largest amounts add nothing.
    const int value = truncateToInt32(std::floor(std::clamp(amount, 0.0, 1.0) * 256.0 + 0.5)) & 0xFF;
    const ByteTable brighter = tableOf([=](int c) { return std::min(c + value, 255); });
    switch (image.type) {
    case kLxPixelA:
        return replace(image, brighter, 1, 1);
    case kLxPixelRGB:
        return replace(image, brighter, 3, 3);
    case kLxPixelRGBA:
        return replace(image, brighter, 4, 3);
    default:
        return;
    }
}

// On purpose: three types, three roundings.
void premultiply(LxImage &image, int opacity) {
    switch (image.type) {
    case kLxPixelA:
        return replace(image, tableOf([=](int c) { return (c * opacity + 1) >> 8; }), 1, 1);
    case kLxPixelRGB:
        if (opacity != 255)
            replace(image, tableOf([=](int c) { return ((c + 1) * opacity) >> 8; }), 3, 3);
        return;
    case kLxPixelRGBA:
        forEachStoredRow(image, [&](uint8_t *pixel) {
            for (int32_t x = 0; x < width(image); ++x, pixel += 4) {
                const int k = ((pixel[3] + 1) * opacity) >> 8;
                for (int i = 0; i < 3; ++i)
                    pixel[i] = static_cast<uint8_t>(((pixel[i] + 1) * k) >> 8);
            }
        });
        image.type = kLxPixelRGBAPremultiplied;
        return;
    default:
        return;
    }
}

int32_t setSpan(LxImage &image, int32_t x0, int32_t x1, int32_t y, const LxColor &color) {
    const size_t bytes = storedBytes(image);
    y = storedRow(image, y);
    uint8_t *row = firstRow(image);
    if (bytes == 0 || row == nullptr || y < 0 || y >= height(image))
        return 0;
    const int32_t w = width(image);
    const auto [low, high] = std::minmax(x0, x1);
    const int32_t from = std::max(low, 0), to = std::min(high, w - 1);
    if (low > w || to < 0)
        return 0;
    // On purpose: in an image that lives in its record every row is the first one here.
    if (!isInline(image))
        row += ptrdiff_t{y} * image.rowBytes;
    fillRun(row + from * static_cast<ptrdiff_t>(bytes), bytes, int64_t{to} - from + 1, color);
    return 1;
}

// On purpose: a pixel of kLxPixelL is stored where single-pixel access finds it, one byte after the one
// before.
void frame(LxImage &image) {
    if (firstRow(image) == nullptr)
        return;
    const LxColor color = LxColor_RGBA(128, 128, 255, 255);
    const size_t bytes = storedBytes(image);
    const ptrdiff_t step = LxImage_BytesPerPixel(&image);
    const auto set = [&](int32_t x, int32_t y) {
        std::memcpy(rowAddress(image, y) + x * step, color.content.bytes, bytes);
    };
    const int32_t lastX = width(image) - 1, lastY = height(image) - 1;
    for (int32_t x = 0; x <= lastX; ++x) {
        set(x, 0);
        set(x, lastY);
    }
    for (int32_t y = 0; y <= lastY; ++y) {
        set(0, y);
        set(lastX, y);
    }
}

void chequerboard(LxImage &image, int32_t mask, const LxColor &first, const LxColor &second) {
    if (image.type > kLxPixelRGBAPremultiplied || firstRow(image) == nullptr)
        return;
    const size_t bytes = storedBytes(image);
    for (int32_t y = 0; y < height(image); ++y) {
        uint8_t *pixel = rowAddress(image, y);
        for (int32_t x = 0; x < width(image); ++x, pixel += bytes) {
            const bool same = ((x & mask) == 0) == ((y & mask) == 0);
            std::memcpy(pixel, (same ? first : second).content.bytes, bytes);
        }
    }
}

} // namespace
} // namespace lx

using namespace lx;

void LxImage_Fill(LxImage *image, LxColor color) {
    if (image != nullptr)
        fill(*image, color);
}

void LxImage_Clear(LxImage *image) {
    if (image == nullptr || firstRow(*image) == nullptr)
        return;
    const int64_t bytes = int64_t{height(*image)} * image->rowBytes;
    if (bytes > 0)
        std::memset(firstRow(*image), 0, static_cast<size_t>(bytes));
}

LxImage *LxImage_Copy(const LxImage *image) {
    return image != nullptr ? copyOf(*image) : nullptr;
}

void LxImage_Add(LxImage *image, double amount) {
    if (image != nullptr)
        add(*image, amount);
}

void LxImage_PremultiplyAlpha(LxImage *image, uint8_t opacity) {
    if (image != nullptr)
        premultiply(*image, opacity);
}

int32_t LxImage_SetSpan(LxImage *image, int32_t x0, int32_t x1, int32_t y, LxColor color) {
    return image != nullptr ? setSpan(*image, x0, x1, y, color) : 0;
}

void LxImage_Frame(LxImage *image) {
    if (image != nullptr)
        frame(*image);
}

void LxImage_GenerateChequerboard(LxImage *image, int32_t mask, LxColor first, LxColor second) {
    if (image != nullptr)
        chequerboard(*image, mask, first, second);
}

void LxImage_Distort(LxImage *) {}

void LxImage_Convolve(LxImage *) {}

void LxImage_Blur(LxImage *) {}

LxImage *LxImage_Resize(LxImage *image) {
    return image;
}

int32_t LxImage_BlendSpan(LxImage *, int32_t, int32_t, int32_t, LxColor, LxBlend) {
    return 0;
}
