/// @file
/// Images and their pixels.
#ifndef OXLUME_CPP_IMAGE_HPP
#define OXLUME_CPP_IMAGE_HPP

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include <oxlume/LxExtras.h>
#include <oxlume/LxImage.h>
#include <oxlume/cpp/Color.hpp>
#include <oxlume/cpp/Values.hpp>

namespace oxlume {

class ContextRef;

/// A run of elements in memory that somebody else owns.
template <class T>
class Span {
public:
    /// No elements.
    constexpr Span() noexcept = default;
    /// `size` elements from `data` on.
    constexpr Span(T *data, std::size_t size) noexcept : data_(data), size_(size) {}

    constexpr T *data() const noexcept { return data_; }                       ///< The first element.
    constexpr std::size_t size() const noexcept { return size_; }              ///< How many.
    constexpr bool empty() const noexcept { return size_ == 0; }               ///< True for none.
    constexpr T &operator[](std::size_t i) const noexcept { return data_[i]; } ///< Element i < size().
    constexpr T *begin() const noexcept { return data_; }                      ///< The first element.
    constexpr T *end() const noexcept { return data_ + size_; }                ///< Behind the last.

private:
    T *data_ = nullptr;
    std::size_t size_ = 0;
};

/// An image's pixels as elements of type T, row 0 being the top one however rows are stored. Valid as long as
/// the image.
template <class T>
class Pixels {
public:
    /// No pixels.
    constexpr Pixels() noexcept = default;
    /// Rows `stride` bytes apart, which may be negative, from `top` on.
    Pixels(T *top, int32_t width, int32_t height, std::ptrdiff_t stride) noexcept
        : top_(top), width_(width), height_(height), stride_(stride) {}

    int32_t width() const noexcept { return width_; }          ///< Pixels in a row.
    int32_t height() const noexcept { return height_; }        ///< Rows.
    std::ptrdiff_t stride() const noexcept { return stride_; } ///< Bytes from a row to the one below.
    bool empty() const noexcept { return top_ == nullptr; }    ///< True for none.

    /// Row y, 0 to height() - 1.
    Span<T> operator[](int32_t y) const noexcept { return {row(y), static_cast<std::size_t>(width_)}; }
    /// The pixel at (x, y), both inside.
    T &operator()(int32_t x, int32_t y) const noexcept { return row(y)[x]; }

private:
    T *row(int32_t y) const noexcept {
        return reinterpret_cast<T *>(reinterpret_cast<std::uintptr_t>(top_) +
                                     static_cast<std::uintptr_t>(y * stride_));
    }

    T *top_ = nullptr;
    int32_t width_ = 0, height_ = 0;
    std::ptrdiff_t stride_ = 0;
};

namespace detail {

/// Whether pixels of a type are elements of type T.
template <class T>
constexpr bool holds(int32_t type) noexcept = delete;
template <>
constexpr bool holds<uint8_t>(int32_t type) noexcept {
    return type == kLxPixelA;
}
template <>
constexpr bool holds<LxRGB>(int32_t type) noexcept {
    return type == kLxPixelRGB;
}
template <>
constexpr bool holds<LxRGBA>(int32_t type) noexcept {
    return type == kLxPixelRGBA || type == kLxPixelRGBAPremultiplied;
}
template <>
constexpr bool holds<float>(int32_t type) noexcept {
    return type == kLxPixelF;
}
template <>
constexpr bool holds<int32_t>(int32_t type) noexcept {
    return type == kLxPixelL;
}

} // namespace detail

/// An image that somebody else owns, by its address: copying one copies no pixel. All calls take an ImageRef
/// of nothing and then answer 0 or do nothing.
class ImageRef {
public:
    /// Nothing.
    constexpr ImageRef() noexcept : image_(nullptr) {}
    /// The image of the C boundary, or null.
    constexpr ImageRef(LxImage *image) noexcept : image_(image) {}

    /// The image of the C boundary.
    LxImage *get() const noexcept { return image_; }
    /// False for nothing.
    explicit operator bool() const noexcept { return image_ != nullptr; }

    PixelType type() const noexcept {
        return static_cast<PixelType>(LxImage_Type(image_));
    }                                                                          ///< Of its pixels.
    int32_t width() const noexcept { return LxImage_w(image_); }               ///< Columns of pixels.
    int32_t height() const noexcept { return LxImage_h(image_); }              ///< Rows of pixels.
    IntRect rect() const noexcept { return LxImage_RectL(image_); }            ///< Its place.
    int32_t rowBytes() const noexcept { return LxImage_BytesPerRow(image_); }  ///< From a row to the next.
    int32_t dataSize() const noexcept { return LxImage_DataSize(image_); }     ///< Bytes of all rows.
    bool isFlipped() const noexcept { return LxImage_isFlipped(image_) != 0; } ///< Rows stored bottom-up?

    /// Says how rows are stored; moves no pixel.
    void setFlipped(bool flipped) noexcept { LxImage_SetFlipped(image_, flipped ? 1 : 0); }
    /// Moves the place; pixels stay.
    void moveTo(IntPoint place) noexcept { LxImage_MoveTo(image_, place.x, place.y); }

    /// The pixels as uint8_t (type A), LxRGB (RGB), LxRGBA (RGBA and premultiplied), float or int32_t; none
    /// if that is not the image's type.
    template <class T>
    Pixels<T> pixels() noexcept {
        return pixelsAs<T>(static_cast<T *>(LxImage_Data(image_)));
    }
    /// The same, to read.
    template <class T>
    Pixels<const T> pixels() const noexcept {
        return pixelsAs<T>(static_cast<const T *>(LxImage_ConstData(image_)));
    }

    /// The colour at (x, y) in the image's type; all zero outside.
    Color pixel(int32_t x, int32_t y) const noexcept {
        if (LxImage_Type(image_) == kLxPixelA) {
            const void *byte = LxImage_ConstPointer(image_, x, y);
            return Color::gray(byte != nullptr ? *static_cast<const uint8_t *>(byte) : uint8_t{0});
        }
        Color color(0, 0, 0, 0);
        LxImage_PixelAt(image_, x, y, &color);
        return color;
    }
    /// Stores a colour's bytes. False outside.
    bool setPixel(int32_t x, int32_t y, const Color &color) noexcept {
        return LxImage_SetPixelAt(image_, x, y, color) != 0;
    }
    /// Blends a colour into a pixel. False outside.
    bool blendPixel(int32_t x, int32_t y, const Color &color, const Blend &blend = {}) noexcept {
        return LxImage_BlendPixelAt(image_, x, y, color, blend) != 0;
    }

    /// Stores the colour in every pixel.
    void fill(const Color &color) noexcept { LxImage_Fill(image_, color); }
    /// Makes every byte 0.
    void clear() noexcept { LxImage_Clear(image_); }
    /// Blends a colour into every pixel.
    void blendColor(const Color &color, const Blend &blend = {}) noexcept {
        LxImage_BlendColor(image_, color, blend);
    }
    /// Brightens by 0 to 1 of full scale.
    void add(double amount) noexcept { LxImage_Add(image_, amount); }
    /// Multiplies colours by alpha and opacity; the type becomes RGBAPremultiplied.
    void premultiply(uint8_t opacity = 255) noexcept { LxImage_PremultiplyAlpha(image_, opacity); }
    /// Squares of two colours, of a size that is a power of two.
    void chequerboard(int32_t size, const Color &first, const Color &second) noexcept {
        LxImage_GenerateChequerboard(image_, size, first, second);
    }
    /// Mirrors left and right.
    void flipHorizontal() noexcept { LxImage_FlipHorizontal(image_); }
    /// Mirrors top and bottom.
    void flipVertical() noexcept { LxImage_FlipVertical(image_); }

    /// Lays another image on this one where their places meet. A mask (type A) and a rectangle limit it.
    void draw(ImageRef source, Blend blend = {}, ImageRef mask = {},
              const IntRect *limit = nullptr) noexcept {
        LxBlend_Image_Image(&blend, image_, source.image_, mask.image_, limit);
    }

    /// The context that draws into the image, which owns it. Of nothing where none can be made.
    ContextRef context() noexcept;

    /// Reads the segments or tiles that marker pixels tell.
    void readSegmentMarks() noexcept { LxImage_ReadSegmentMarks(image_); }
    /// True for a picture cut into the pieces of a frame.
    bool isSegmented() const noexcept { return LxImage_isSegmented(image_) != 0; }
    /// True for a sheet of equal cells.
    bool isTiled() const noexcept { return LxImage_isTiled(image_) != 0; }
    /// The layout of the segments, 1 to 7, or 0.
    int32_t segmentLayout() const noexcept { return LxImage_SegmentType(image_); }
    /// The piece of a column and row, 0 to 2; its second corner is its last pixel.
    IntRect segment(int32_t column, int32_t row) const noexcept {
        return LxImage_SegmentRectL(image_, column, row);
    }
    /// Makes a tile the current one. False for an image without tiles.
    bool setTile(int32_t column, int32_t row) noexcept { return LxImage_SetTile(image_, column, row) != 0; }
    /// The columns and rows of tiles.
    IntPoint tileCount() const noexcept {
        IntPoint count;
        LxImage_TileNum(image_, &count.x, &count.y);
        return count;
    }
    /// The current tile.
    IntRect tile() const noexcept { return LxImage_TileRectL(image_); }

    /// Takes the image's own recursive mutex, which no operation takes by itself.
    void lock() noexcept { LxImage_Lock(image_); }
    /// Releases it.
    void unlock() noexcept { LxImage_Unlock(image_); }

protected:
    LxImage *image_; ///< The image.

private:
    template <class T, class Element>
    Pixels<Element> pixelsAs(Element *first) const noexcept {
        if (!detail::holds<T>(LxImage_Type(image_)) || first == nullptr)
            return {};
        const std::ptrdiff_t stride = rowBytes();
        const Pixels<Element> stored(first, width(), height(), stride);
        return isFlipped() ? Pixels<Element>(&stored(0, height() - 1), width(), height(), -stride) : stored;
    }
};

/// An image that it owns.
class Image : public ImageRef {
public:
    /// Nothing.
    constexpr Image() noexcept {}
    /// Takes over an image of the C boundary, or null.
    explicit Image(LxImage *image) noexcept : ImageRef(image) {}
    /// An image of zeroes at (0, 0); nothing for one without width or height. Throws std::bad_alloc.
    Image(PixelType type, int32_t width, int32_t height)
        : Image(type, LxRectL{0, 0, width < 0 ? 0 : width, height < 0 ? 0 : height}) {}
    /// An image of zeroes at its place, its rows stored bottom-up if told. Throws std::bad_alloc.
    Image(PixelType type, const IntRect &rect, bool flipped = false)
        : ImageRef(LxImage_Create(static_cast<int32_t>(type), rect.x0, rect.y0, rect.x1, rect.y1, 1,
                                  flipped ? 1 : 0)) {
        if (image_ == nullptr && !rect.isEmpty())
            throw std::bad_alloc();
    }
    /// An image over the caller's memory, which must outlive it: rows `rowBytes` apart, zeroed by nobody.
    /// Throws std::bad_alloc.
    static Image over(void *memory, PixelType type, int32_t width, int32_t height, int32_t rowBytes,
                      bool flipped = false) {
        if (width <= 0 || height <= 0)
            return Image();
        LxImage *image = LxImage_CreateEx(static_cast<int32_t>(type), 0, 0, width, height, memory, rowBytes,
                                          0, 0, flipped ? 1 : 0);
        if (image == nullptr)
            throw std::bad_alloc();
        return Image(image);
    }
    /// Takes the image of another, which is left with nothing.
    Image(Image &&other) noexcept : ImageRef(other.release()) {}
    /// Deletes its image and takes that of another.
    Image &operator=(Image &&other) noexcept {
        reset(other.release());
        return *this;
    }
    Image(const Image &) = delete;
    Image &operator=(const Image &) = delete;
    ~Image() { LxImage_Delete(image_); }

    /// An image with the same pixels; of nothing nothing. Throws std::bad_alloc.
    Image copy() const {
        LxImage *copied = LxImage_Copy(image_);
        if (copied == nullptr && image_ != nullptr)
            throw std::bad_alloc();
        return Image(copied);
    }
    /// Hands the image of the C boundary over to the caller.
    LxImage *release() noexcept { return std::exchange(image_, nullptr); }
    /// Deletes its image and takes over another, or null.
    void reset(LxImage *image = nullptr) noexcept { LxImage_Delete(std::exchange(image_, image)); }
};

static_assert(sizeof(Image) == sizeof(LxImage *), "a handle is a pointer");

} // namespace oxlume

#endif
