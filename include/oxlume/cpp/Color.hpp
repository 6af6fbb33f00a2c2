/// @file
/// Pixel types, colours, and how pictures are blended.
#ifndef OXLUME_CPP_COLOR_HPP
#define OXLUME_CPP_COLOR_HPP

#include <oxlume/LxBlend.h>
#include <oxlume/LxColor.h>
#include <oxlume/LxPixelType.h>

namespace oxlume {

/// The type of an image's pixels.
enum class PixelType : int32_t {
    A = kLxPixelA,                                 ///< one byte: masks and grey pictures
    RGB = kLxPixelRGB,                             ///< three bytes r, g, b
    RGBA = kLxPixelRGBA,                           ///< four bytes r, g, b, a, straight alpha
    RGBAPremultiplied = kLxPixelRGBAPremultiplied, ///< four bytes, colour multiplied by alpha
    Float = kLxPixelF,                             ///< one 32-bit float, nominally 0 to 1
    Long = kLxPixelL                               ///< one 32-bit integer
};

/// A colour of one of the pixel types.
struct Color : LxColor {
    /// Opaque black.
    constexpr Color() noexcept : Color(0, 0, 0) {}
    /// A colour with alpha, each component 0 to 255.
    constexpr Color(uint8_t r, uint8_t g, uint8_t b, uint8_t a = 255) noexcept : Color(LxRGBA{r, g, b, a}) {}
    /// The colour of a pixel with alpha.
    constexpr Color(LxRGBA rgba) noexcept : LxColor{kLxPixelRGBA, {rgba}} {}
    /// The colour of the C boundary.
    constexpr Color(const LxColor &color) noexcept : LxColor(color) {}

    /// A colour of one byte.
    static Color gray(uint8_t value) noexcept { return LxColor_A(value); }
    /// A colour of three bytes, without alpha.
    static Color rgb(uint8_t r, uint8_t g, uint8_t b) noexcept { return LxColor_RGB(r, g, b); }
    /// A number for images of floats.
    static Color number(float value) noexcept { return LxColor_F(value); }
    /// A number for images of integers.
    static Color integer(int32_t value) noexcept { return LxColor_L(value); }

    /// What member of `content` counts.
    constexpr PixelType pixelType() const noexcept { return static_cast<PixelType>(type); }
    /// The four bytes as they stand.
    LxRGBA rgba() const noexcept {
        return LxRGBA{content.bytes[0], content.bytes[1], content.bytes[2], content.bytes[3]};
    }
};

/// True for the same type and the same in all bytes that count in it.
inline bool operator==(const Color &a, const Color &b) noexcept {
    const int bytes = a.type == kLxPixelA ? 1 : a.type == kLxPixelRGB ? 3 : 4;
    bool equal = a.type == b.type;
    for (int i = 0; i < bytes; ++i)
        equal = equal && a.content.bytes[i] == b.content.bytes[i];
    return equal;
}
/// True for another type or another colour.
inline bool operator!=(const Color &a, const Color &b) noexcept {
    return !(a == b);
}

/// How two pictures are combined, by the numbers of LxBlend.h.
enum class Mode : uint8_t {
    Clear = 0,  ///< 0
    Src,        ///< 1
    SrcOver,    ///< 2: b laid on: the usual mode
    DstOver,    ///< 3
    SrcIn,      ///< 4
    DstIn,      ///< 5
    SrcOut,     ///< 6
    DstOut,     ///< 7
    Multiply,   ///< 8: darker: the product
    Screen,     ///< 9: brighter: the inverse product
    Overlay,    ///< 10
    Divide,     ///< 11
    Dodge,      ///< 12
    Burn,       ///< 13
    Add,        ///< 14: the sum
    Subtract,   ///< 15: the difference, 0 at least
    Difference, ///< 16: the distance
    Darken,     ///< 17: the darker
    Lighten,    ///< 18: the lighter
    SoftLight,  ///< 19
    HardLight,  ///< 20
    Hue,        ///< 21: the hue of b
    Saturation, ///< 22: the saturation of b
    Value,      ///< 23: the lightness of b
    Color,      ///< 24
    Grayscale,  ///< 25
    UserColor,  ///< 26
    Not,        ///< 27
    Or,         ///< 28
    Xor,        ///< 29
    Select,     ///< 30
    Select2,    ///< 31
    Flip,       ///< 32
    Dissolve,   ///< 33: random pixels of b
    NoName01,   ///< 34
    NoName02,   ///< 35
    NoName03,   ///< 36
    NoName04,   ///< 37
    NoName05,   ///< 38
    NoName06,   ///< 39
    NoName07,   ///< 40
    NoName08,   ///< 41
    NoName09,   ///< 42
    NoName10    ///< 43
};

/// What of a picture a blend writes.
enum class Channel : uint8_t {
    Red = 1,   ///< red alone
    Green = 2, ///< green alone
    Blue = 3,  ///< blue alone
    Alpha = 4, ///< alpha alone
    RGB = 5,   ///< all but alpha
    RGBA = 6   ///< everything
};

/// A mode, an opacity and a choice of channels.
struct Blend : LxBlend {
    /// Laying on at full opacity, all channels.
    Blend() noexcept : Blend(Mode::SrcOver) {}
    /// A blend; the opacity goes from 0 (nothing) to 255.
    Blend(Mode newMode, uint8_t newOpacity = 255, Channel newChannel = Channel::RGBA) noexcept
        : LxBlend{LxBlend_WithChannel(static_cast<int32_t>(newMode), newOpacity,
                                      static_cast<int32_t>(newChannel))} {}
    /// The blend of the C boundary.
    Blend(const LxBlend &blend) noexcept : LxBlend{blend} {}
};

/// True for the same mode, opacity and channels.
inline bool operator==(const Blend &a, const Blend &b) noexcept {
    return a.mode == b.mode && a.opacity == b.opacity && a.channel == b.channel;
}
/// True if the mode, the opacity or the channels differ.
inline bool operator!=(const Blend &a, const Blend &b) noexcept {
    return !(a == b);
}

/// The name of a mode, which lives as long as the library.
inline const char *nameOf(Mode mode) noexcept {
    return LxBlend_ModeName(static_cast<int32_t>(mode));
}
/// The name of a channel, which lives as long as the library.
inline const char *nameOf(Channel channel) noexcept {
    return LxBlend_ChannelName(static_cast<int32_t>(channel));
}

} // namespace oxlume

#endif
