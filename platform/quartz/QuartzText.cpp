// Text on contexts of the Quartz layer, through cairo's own selection of fonts.

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

#include "platform/quartz/QuartzContext.h"

namespace lx {
namespace {

// The upper half of MacRoman, in Unicode.
constexpr uint16_t macRoman[128] = {
    0x00c4, 0x00c5, 0x00c7, 0x00c9, 0x00d1, 0x00d6, 0x00dc, 0x00e1, 0x00e0, 0x00e2, 0x00e4, 0x00e3, 0x00e5,
    0x00e7, 0x00e9, 0x00e8, 0x00ea, 0x00eb, 0x00ed, 0x00ec, 0x00ee, 0x00ef, 0x00f1, 0x00f3, 0x00f2, 0x00f4,
    0x00f6, 0x00f5, 0x00fa, 0x00f9, 0x00fb, 0x00fc, 0x2020, 0x00b0, 0x00a2, 0x00a3, 0x00a7, 0x2022, 0x00b6,
    0x00df, 0x00ae, 0x00a9, 0x2122, 0x00b4, 0x00a8, 0x2260, 0x00c6, 0x00d8, 0x221e, 0x00b1, 0x2264, 0x2265,
    0x00a5, 0x00b5, 0x2202, 0x2211, 0x220f, 0x03c0, 0x222b, 0x00aa, 0x00ba, 0x03a9, 0x00e6, 0x00f8, 0x00bf,
    0x00a1, 0x00ac, 0x221a, 0x0192, 0x2248, 0x2206, 0x00ab, 0x00bb, 0x2026, 0x00a0, 0x00c0, 0x00c3, 0x00d5,
    0x0152, 0x0153, 0x2013, 0x2014, 0x201c, 0x201d, 0x2018, 0x2019, 0x00f7, 0x25ca, 0x00ff, 0x0178, 0x2044,
    0x20ac, 0x2039, 0x203a, 0xfb01, 0xfb02, 0x2021, 0x00b7, 0x201a, 0x201e, 0x2030, 0x00c2, 0x00ca, 0x00c1,
    0x00cb, 0x00c8, 0x00cd, 0x00ce, 0x00cf, 0x00cc, 0x00d3, 0x00d4, 0xf8ff, 0x00d2, 0x00da, 0x00db, 0x00d9,
    0x0131, 0x02c6, 0x02dc, 0x00af, 0x02d8, 0x02d9, 0x02da, 0x00b8, 0x02dd, 0x02db, 0x02c7};

// More text than this in one call is cut.
constexpr size_t maxLength = 1 << 20;
constexpr size_t maxBytesPerCharacter = 3;

uint32_t codePointOf(uint8_t byte, int32_t encoding) {
    return encoding == kCGEncodingMacRoman && byte >= 128 ? macRoman[byte - 128] : byte;
}

char *putUtf8(uint32_t code, char *out) {
    const auto continuation = [](uint32_t bits) { return static_cast<char>(0x80 | (bits & 0x3f)); };
    if (code < 0x80) {
        *out++ = static_cast<char>(code);
    } else if (code < 0x800) {
        *out++ = static_cast<char>(0xc0 | code >> 6);
        *out++ = continuation(code);
    } else {
        *out++ = static_cast<char>(0xe0 | code >> 12);
        *out++ = continuation(code >> 6);
        *out++ = continuation(code);
    }
    return out;
}

struct Utf8 {
    std::unique_ptr<char[]> bytes; // null for lack of memory
    int length = 0;
};

Utf8 utf8From(const char *text, size_t length, int32_t encoding) {
    length = std::min(length, maxLength);
    Utf8 result = {std::unique_ptr<char[]>(new (std::nothrow) char[length * maxBytesPerCharacter + 1]), 0};
    if (result.bytes == nullptr)
        return result;
    char *out = result.bytes.get();
    for (size_t i = 0; i < length; ++i) {
        const auto byte = static_cast<uint8_t>(text[i]);
        if (byte >= ' ')
            out = putUtf8(codePointOf(byte, encoding), out);
    }
    *out = 0;
    result.length = static_cast<int>(out - result.bytes.get());
    return result;
}

struct FreeGlyphs {
    void operator()(cairo_glyph_t *glyphs) const { cairo_glyph_free(glyphs); }
};
using GlyphHandle = std::unique_ptr<cairo_glyph_t, FreeGlyphs>;

// Grey smoothing, since a surface may have red and blue exchanged, and shapes that do not depend on the place
// and the scale.
void setFontOptions(cairo_t *cairo) {
    cairo_font_options_t *options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_set_font_options(cairo, options);
    cairo_font_options_destroy(options);
}

void drawGlyphs(CGContext &context, const cairo_glyph_t *glyphs, int count) {
    cairo_t *cairo = context.cairo.get();
    const int32_t mode = context.state().textMode;
    if (mode == kCGTextFill || mode == kCGTextFillStroke) {
        context.setInk(context.state().fill);
        cairo_show_glyphs(cairo, glyphs, count);
    }
    if (mode == kCGTextStroke || mode == kCGTextFillStroke) {
        cairo_glyph_path(cairo, glyphs, count);
        context.stroke();
    }
}

// Whether glyphs of a size have a size on the target that fonts can be scaled to: from about a thirtieth of a
// pixel to 4,096. An error of cairo's would make the face useless for the whole process.
bool isWithinReach(const LxCGAffineTransform &transform, double size) {
    constexpr double minSize = 1.0 / 32, maxSize = 4096;
    const auto extent = [&](double x, double y) { return std::hypot(x, y) * std::abs(size); };
    const double largest = std::max(extent(transform.a, transform.b), extent(transform.c, transform.d));
    const double area = std::abs(double{transform.a} * transform.d - double{transform.b} * transform.c);
    return largest <= maxSize && area * size * size >= largest * minSize && largest >= minSize;
}

void showText(CGContext &context, double x, double y, const char *text, size_t length) {
    const GraphicsState &state = context.state();
    double placeX = x, placeY = y;
    if (state.font.face.get() == nullptr || !hasInverse(state.transform) ||
        !isWithinReach(state.transform, state.font.size) || !context.locate(placeX, placeY))
        return;
    const Utf8 utf8 = utf8From(text, length, state.font.encoding);
    if (utf8.length == 0)
        return;
    const UserSpace userSpace(context);
    cairo_t *cairo = context.cairo.get();
    const double size = state.font.size;
    const cairo_matrix_t shape = {size, 0, 0, context.target.yGrowsUp ? -size : size, 0, 0};
    cairo_set_font_face(cairo, state.font.face.get());
    cairo_set_font_matrix(cairo, &shape);
    setFontOptions(cairo);
    cairo_glyph_t *array = nullptr;
    int count = 0;
    const cairo_status_t status =
        cairo_scaled_font_text_to_glyphs(cairo_get_scaled_font(cairo), x, y, utf8.bytes.get(), utf8.length,
                                         &array, &count, nullptr, nullptr, nullptr);
    const GlyphHandle glyphs(array);
    if (status == CAIRO_STATUS_SUCCESS)
        drawGlyphs(context, glyphs.get(), count);
}

} // namespace
} // namespace lx

using namespace lx;

void CGContextSelectFont(CGContextRef context, const char *name, float size, int32_t encoding) {
    if (context == nullptr || name == nullptr || !std::isfinite(size))
        return;
    FontFace face(cairo_toy_font_face_create(name, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL));
    if (cairo_font_face_status(face.get()) == CAIRO_STATUS_SUCCESS)
        context->state().font = {face, size, encoding};
}

void CGContextSetTextDrawingMode(CGContextRef context, int32_t mode) {
    if (context != nullptr && mode >= kCGTextFill && mode <= kCGTextInvisible)
        context->state().textMode = mode;
}

void CGContextShowTextAtPoint(CGContextRef context, float x, float y, const char *text, size_t length) {
    if (context != nullptr && text != nullptr)
        showText(*context, x, y, text, length);
}
