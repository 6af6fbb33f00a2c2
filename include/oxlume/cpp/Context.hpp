/// @file
/// Drawing: gradients and graphics contexts.
#ifndef OXLUME_CPP_CONTEXT_HPP
#define OXLUME_CPP_CONTEXT_HPP

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include <oxlume/LxExtras.h>
#include <oxlume/LxGC.h>
#include <oxlume/LxGradient.h>
#include <oxlume/cpp/Color.hpp>
#include <oxlume/cpp/Image.hpp>
#include <oxlume/cpp/Path.hpp>
#include <oxlume/cpp/Values.hpp>

namespace oxlume {

/// How a gradient's stops are laid over the bounds of the shape.
enum class GradientType : int32_t {
    Across = kLxGradientAcross,        ///< along x
    Down = kLxGradientDown,            ///< along y
    None = kLxGradientNone,            ///< opaque black
    Inward = kLxGradientInward,        ///< from the sides inward
    Diagonal = kLxGradientDiagonal,    ///< along x + y
    DiagonalUp = kLxGradientDiagonalUp ///< along y - x
};

/// How one stop of a gradient passes into the next.
enum class GradientCurve : int32_t {
    Linear = kLxGradientLinear,       ///< straight
    Curved = kLxGradientCurved,       ///< a power
    Sine = kLxGradientSine,           ///< flat at both ends
    SphereInc = kLxGradientSphereInc, ///< steep first
    SphereDec = kLxGradientSphereDec  ///< steep last
};

/// A gradient of up to ten stops that it owns. Contexts refer to it: it must live as long as they draw with
/// it.
class Gradient {
public:
    /// A gradient without stops. Throws std::bad_alloc.
    explicit Gradient(GradientType type = GradientType::Down, GradientCurve curve = GradientCurve::Linear)
        : gradient_(detail::orThrow(LxGradient_Create())) {
        setType(type, curve);
    }
    /// Takes over a gradient of the C boundary, or null.
    explicit Gradient(LxGradient *gradient) noexcept : gradient_(gradient) {}

    /// The gradient of the C boundary, still owned.
    LxGradient *get() const noexcept { return gradient_.get(); }
    /// Hands the gradient of the C boundary over to the caller.
    LxGradient *release() noexcept { return gradient_.release(); }
    /// False once the gradient was moved from or released.
    explicit operator bool() const noexcept { return gradient_ != nullptr; }

    /// Sets shape and curve.
    Gradient &setType(GradientType type, GradientCurve curve = GradientCurve::Linear) noexcept {
        LxGradient_SetType(get(), static_cast<int32_t>(type), static_cast<int32_t>(curve));
        return *this;
    }
    /// Sets stop 0 to 9: its colour, its position 0 to 1, and where between it and the next the middle lies.
    Gradient &setStop(int32_t index, const Color &color, double position, double middle = 0.5) noexcept {
        LxGradient_AddColor(get(), color, index, position, middle);
        return *this;
    }
    /// The colour at a pixel of the last shape that was filled.
    Color colorAt(int32_t x, int32_t y) const noexcept {
        Color color;
        LxGradient_Color(&color, get(), x, y);
        return color;
    }

private:
    struct Delete {
        void operator()(LxGradient *gradient) const noexcept { LxGradient_Delete(gradient); }
    };
    std::unique_ptr<LxGradient, Delete> gradient_;
};

/// What paths do.
enum class RenderMode : uint32_t {
    Nothing = 0,                           ///< neither
    Fill = kLxRenderFill,                  ///< fill alone
    Stroke = kLxRenderStroke,              ///< stroke alone: a new context's
    Both = kLxRenderFill | kLxRenderStroke ///< first fill, then stroke
};

/// A graphics context that somebody else owns, by its address: copying one copies no context. All calls take
/// a ContextRef of nothing and then do nothing. Setters can be chained.
class ContextRef {
public:
    /// Nothing.
    constexpr ContextRef() noexcept : gc_(nullptr) {}
    /// The context of the C boundary, or null.
    constexpr ContextRef(LxGC *gc) noexcept : gc_(gc) {}

    /// The context of the C boundary.
    LxGC *get() const noexcept { return gc_; }
    /// False for nothing.
    explicit operator bool() const noexcept { return gc_ != nullptr; }

    /// What paths do from now on.
    ContextRef &setRenderMode(RenderMode mode) noexcept {
        LxGC_SetRenderMode(gc_, static_cast<uint32_t>(mode));
        return *this;
    }
    RenderMode renderMode() const noexcept { return RenderMode(LxGC_RenderMode(gc_)); } ///< What paths do.

    /// The colour of fills.
    ContextRef &setFillColor(const Color &color) noexcept {
        LxGC_SetFillColor(gc_, color);
        return *this;
    }
    Color fillColor() const noexcept { return LxGC_FillColor(gc_); } ///< The colour of fills.
    /// How fills meet what is there.
    ContextRef &setFillBlend(const Blend &blend) noexcept {
        LxGC_SetFillBlend(gc_, blend);
        return *this;
    }
    Blend fillBlend() const noexcept { return LxGC_FillBlend(gc_); } ///< How fills meet what is there.
    /// Fills with a gradient, which must live as long, in place of the colour; null for none.
    ContextRef &setFillGradient(const Gradient *gradient) noexcept {
        LxGC_SetFillGradient(gc_, gradient != nullptr ? gradient->get() : nullptr);
        return *this;
    }

    /// The colour of strokes.
    ContextRef &setStrokeColor(const Color &color) noexcept {
        LxGC_SetStrokeColor(gc_, color);
        return *this;
    }
    Color strokeColor() const noexcept { return LxGC_StrokeColor(gc_); } ///< The colour of strokes.
    /// The width of strokes, in units of the path.
    ContextRef &setStrokeWidth(double width) noexcept {
        LxGC_SetStrokeWidth(gc_, width);
        return *this;
    }
    double strokeWidth() const noexcept { return LxGC_StrokeWidth(gc_); } ///< The width of strokes.
    /// How a stroke's pieces are joined.
    ContextRef &setStrokeStyle(StrokeStyle style) noexcept {
        LxGC_SetStrokeStyle(gc_, static_cast<int32_t>(style));
        return *this;
    }
    StrokeStyle strokeStyle() const noexcept {
        return StrokeStyle(LxGC_StrokeStyle(gc_));
    } ///< As they are joined.
    /// How strokes meet what is there.
    ContextRef &setStrokeBlend(const Blend &blend) noexcept {
        LxGC_SetStrokeBlend(gc_, blend);
        return *this;
    }
    Blend strokeBlend() const noexcept { return LxGC_StrokeBlend(gc_); } ///< How strokes meet what is there.
    /// Strokes with a gradient, which must live as long, in place of the colour; null for none.
    ContextRef &setStrokeGradient(const Gradient *gradient) noexcept {
        LxGC_SetStrokeGradient(gc_, gradient != nullptr ? gradient->get() : nullptr);
        return *this;
    }

    /// How drawn images meet what is there.
    ContextRef &setImageBlend(const Blend &blend) noexcept {
        LxGC_SetImageBlend(gc_, blend);
        return *this;
    }
    Blend imageBlend() const noexcept { return LxGC_ImageBlend(gc_); } ///< How images meet what is there.

    /// Limits drawing to a part of the bounds.
    ContextRef &setClip(const Rect &rect) noexcept {
        LxGC_SetClip(gc_, rect.x0, rect.y0, rect.x1, rect.y1);
        return *this;
    }
    Rect clip() const noexcept { return LxGC_ClipRect(gc_); }     ///< Where drawing is limited to.
    Rect bounds() const noexcept { return LxGC_BoundsRect(gc_); } ///< The whole target.

    /// The matrix from paths to the target; the identity for nothing.
    Matrix matrix() const noexcept {
        const LxMatrix *matrix = LxGC_Matrix(gc_);
        return matrix != nullptr ? Matrix(*matrix) : Matrix();
    }
    /// Stores the matrix.
    ContextRef &setMatrix(const Matrix &matrix) noexcept {
        return resetMatrix(LxPointD{0, 0}).multiply(matrix);
    }
    /// Back to the identity, moved to an origin.
    ContextRef &resetMatrix(Point origin = {}) noexcept {
        LxGC_SetOrigin(gc_, origin.x, origin.y);
        LxGC_MatrixIdentity(gc_);
        return *this;
    }
    /// Multiplies from the right: `matrix` is applied to paths first.
    ContextRef &multiply(const Matrix &matrix) noexcept {
        LxGC_MatrixMul(gc_, &matrix);
        return *this;
    }
    /// As Matrix::scale.
    ContextRef &scale(double sx, double sy) noexcept {
        LxGC_MatrixScale(gc_, sx, sy);
        return *this;
    }
    /// As Matrix::translate.
    ContextRef &translate(double dx, double dy) noexcept {
        LxGC_MatrixTranslate(gc_, dx, dy);
        return *this;
    }
    /// As Matrix::rotate.
    ContextRef &rotate(double radians) noexcept {
        LxGC_MatrixRotate(gc_, radians);
        return *this;
    }

    /// Draws a path by the render mode, as the shapes below do too.
    ContextRef &draw(const Path &path) noexcept {
        LxGC_Path(gc_, path.get());
        return *this;
    }
    /// Draws a line.
    ContextRef &line(Point from, Point to) noexcept {
        LxGC_Line(gc_, from.x, from.y, to.x, to.y);
        return *this;
    }
    /// Draws a rectangle.
    ContextRef &rect(const Rect &rect) noexcept {
        LxGC_Frame(gc_, rect.x0, rect.y0, rect.x1, rect.y1);
        return *this;
    }
    /// Draws a rectangle with rounded corners.
    ContextRef &roundRect(const Rect &rect, double radiusX, double radiusY) noexcept {
        LxGC_RoundFrame(gc_, rect.x0, rect.y0, rect.x1, rect.y1, radiusX, radiusY);
        return *this;
    }
    /// Draws an ellipse.
    ContextRef &ellipse(Point center, double radiusX, double radiusY) noexcept {
        LxGC_Ellipse(gc_, center.x, center.y, radiusX, radiusY);
        return *this;
    }
    /// Draws a circle.
    ContextRef &circle(Point center, double radius) noexcept {
        LxGC_Circle(gc_, center.x, center.y, radius);
        return *this;
    }
    /// Draws a closed polygon of `count` points.
    ContextRef &polygon(const Point *points, int32_t count) noexcept {
        LxGC_Poly(gc_, points, count);
        return *this;
    }
    /// Stores the colour everywhere in the target, whatever the clip.
    ContextRef &fill(const Color &color) noexcept {
        LxGC_Fill(gc_, color);
        return *this;
    }
    /// Makes the whole target 0.
    ContextRef &clear() noexcept {
        LxGC_Clear(gc_);
        return *this;
    }
    /// Draws an image at (x, y), moved by the matrix and not scaled. A mask (type A), unless of nothing, lets
    /// it through where the mask itself lies.
    ContextRef &draw(ImageRef image, int32_t x, int32_t y, ImageRef mask = {}) noexcept {
        LxGC_DrawImageWithMask(gc_, x, y, image.get(), mask.get());
        return *this;
    }

    /// Plays an SVG file. False if it could not be read.
    bool readSvgFile(const char *url) noexcept { return LxSVG_ReadFile(gc_, url) != 0; }
    /// Plays SVG text. False if it is no XML.
    bool readSvg(std::string_view text) noexcept {
        return LxSVG_ReadText(gc_, text.data(), text.size()) != 0;
    }

protected:
    LxGC *gc_; ///< The context.
};

inline ContextRef ImageRef::context() noexcept {
    return LxImage_GC(image_);
}

/// A graphics context that it owns.
class Context : public ContextRef {
public:
    /// A context that draws nowhere. Throws std::bad_alloc.
    Context() : ContextRef(detail::orThrow(LxGC_Create())) {}
    /// Takes over a context of the C boundary, or null.
    explicit Context(LxGC *gc) noexcept : ContextRef(gc) {}
    /// A context that draws into an image, which must outlive it, beside the one that the image has of its
    /// own. Nothing for an image of nothing. Throws std::bad_alloc.
    explicit Context(ImageRef image)
        : ContextRef(image ? detail::orThrow(LxGC_CreateWithImage(image.get(), wholeOf(image))) : nullptr) {}
    /// Takes the context of another, which is left with nothing.
    Context(Context &&other) noexcept : ContextRef(other.release()) {}
    /// Deletes its context and takes that of another.
    Context &operator=(Context &&other) noexcept {
        LxGC *taken = other.release();
        LxGC_Delete(std::exchange(gc_, taken));
        return *this;
    }
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;
    ~Context() { LxGC_Delete(gc_); }

    /// Hands the context of the C boundary over to the caller.
    LxGC *release() noexcept { return std::exchange(gc_, nullptr); }

private:
    static LxRectD wholeOf(ImageRef image) noexcept {
        return LxRectD{0, 0, double(image.width()), double(image.height())};
    }
};

static_assert(sizeof(Gradient) == sizeof(LxGradient *), "a handle is a pointer");
static_assert(sizeof(Context) == sizeof(LxGC *), "a handle is a pointer");

} // namespace oxlume

#endif
