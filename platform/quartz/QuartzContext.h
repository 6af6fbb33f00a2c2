// The context of the Quartz layer: a state of Core Graphics' kind over one of cairo's.
//
// The path lives in cairo in coordinates of the target, so that cairo's transform stays the identity but for
// the moments in which something is drawn in user space.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

#include <cairo.h>

#include <oxlume/LxQuartz.h>

#include "platform/quartz/Counted.h"
#include "platform/quartz/QuartzImage.h"

namespace lx {

// cairo's coordinates are fixed-point numbers below 2^23; ours on the target stay far enough within.
inline constexpr double maxCoordinate = 1 << 21;

inline constexpr LxCGAffineTransform identityTransform = {1, 0, 0, 1, 0, 0};

// The transform that applies `first` and then `second`.
LxCGAffineTransform concatenate(const LxCGAffineTransform &first, const LxCGAffineTransform &second);

bool isFinite(const LxCGAffineTransform &transform);

// By the same products as LxMatrix_GetInverse, so that what has no inverse here gives numbers that are not
// finite there.
bool hasInverse(const LxCGAffineTransform &transform);

struct QuartzColor {
    double red = 0, green = 0, blue = 0, alpha = 1;
};

// Components outside 0 to 1 are cut; what is not a number is 0.
QuartzColor quartzColor(float red, float green, float blue, float alpha);

// A reference to a face of cairo's.
class FontFace {
public:
    FontFace() = default;
    explicit FontFace(cairo_font_face_t *owned) : face_(owned) {}
    FontFace(const FontFace &other)
        : face_(other.face_ != nullptr ? cairo_font_face_reference(other.face_) : nullptr) {}
    FontFace &operator=(FontFace other) {
        std::swap(face_, other.face_);
        return *this;
    }
    ~FontFace() { cairo_font_face_destroy(face_); }

    cairo_font_face_t *get() const { return face_; }

private:
    cairo_font_face_t *face_ = nullptr;
};

struct QuartzFont {
    FontFace face;
    double size = 0;
    int32_t encoding = kCGEncodingFontSpecific;
};

// What CGContextSaveGState keeps.
struct GraphicsState {
    LxCGAffineTransform transform = identityTransform;
    cairo_matrix_t toTarget = {}; // the same from user space to the target, in cairo's form
    QuartzColor fill, stroke;
    double alpha = 1;
    double lineWidth = 1;
    int32_t quality = kCGInterpolationDefault;
    int32_t textMode = kCGTextFill;
    QuartzFont font;
};

// What lies between the identity and a surface.
struct QuartzTarget {
    bool yGrowsUp = false;
    double height = 0;                // where y is 0, if it grows up
    bool exchangesRedAndBlue = false; // the surface's memory is r, g, b, a
};

struct DestroyCairo {
    void operator()(cairo_t *cairo) const { cairo_destroy(cairo); }
};
using CairoHandle = std::unique_ptr<cairo_t, DestroyCairo>;

} // namespace lx

struct CGContext : lx::Counted {
    // Takes the surface over.
    CGContext(lx::SurfaceHandle surface, const lx::QuartzTarget &target);
    ~CGContext();
    CGContext(const CGContext &) = delete;
    CGContext &operator=(const CGContext &) = delete;

    bool isUsable() const { return cairo_status(cairo.get()) == CAIRO_STATUS_SUCCESS; }

    lx::GraphicsState &state() { return states->state; }
    void save();
    void restore();

    void setTransform(const LxCGAffineTransform &transform);

    // The user space's transform to the target, in cairo's form.
    const cairo_matrix_t &matrix() { return state().toTarget; }

    // A point of user space on the target, cut to what cairo can hold; false if it is not finite.
    bool locate(double &x, double &y) {
        const cairo_matrix_t &m = matrix();
        const double targetX = m.xx * x + m.xy * y + m.x0;
        const double targetY = m.yx * x + m.yy * y + m.y0;
        const bool isWithin =
            std::abs(targetX) <= lx::maxCoordinate && std::abs(targetY) <= lx::maxCoordinate;
        if (!isWithin && (!std::isfinite(targetX) || !std::isfinite(targetY)))
            return false;
        x = isWithin ? targetX : std::clamp(targetX, -lx::maxCoordinate, lx::maxCoordinate);
        y = isWithin ? targetY : std::clamp(targetY, -lx::maxCoordinate, lx::maxCoordinate);
        return true;
    }

    void setInk(const lx::QuartzColor &color);

    // Fill and stroke cairo's path and leave it there.
    void fill(cairo_fill_rule_t rule);
    void stroke();

    // An error of cairo's ends with the operation that made it: drawing goes on with a new cairo_t and an
    // empty path.
    void recover();

    const lx::SurfaceHandle surface;
    const lx::QuartzTarget target;
    lx::CairoHandle cairo;

private:
    struct Saved {
        lx::GraphicsState state;
        Saved *below;
    };
    Saved base{{}, nullptr};
    Saved *states = &base; // the current state and those below it
};

namespace lx {

// Draws in user space for as long as it lives, and keeps the path aside.
class UserSpace {
public:
    explicit UserSpace(CGContext &context);
    ~UserSpace();
    UserSpace(const UserSpace &) = delete;
    UserSpace &operator=(const UserSpace &) = delete;

private:
    CGContext &context_;
    cairo_path_t *path_ = nullptr;
};

} // namespace lx
