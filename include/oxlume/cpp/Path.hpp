/// @file
/// Vector paths.
#ifndef OXLUME_CPP_PATH_HPP
#define OXLUME_CPP_PATH_HPP

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include <oxlume/LxCubicBezier.h>
#include <oxlume/LxPath.h>
#include <oxlume/LxPathIterator.h>
#include <oxlume/cpp/Values.hpp>

namespace oxlume {

/// How a stroke's pieces are joined: bits of LxStrokeStyle.
enum class StrokeStyle : int32_t {
    Bevel = 0,              ///< one ribbon per subpath, bevelled joins
    Items = kLxStrokeItems, ///< each item gets a ribbon of its own, without joins
    Mitre = kLxStrokeMitre  ///< mitre joins without a limit
};

namespace detail {

/// Answers what a creation has answered, or throws std::bad_alloc for null.
template <class Record>
Record *orThrow(Record *record) {
    if (record == nullptr)
        throw std::bad_alloc();
    return record;
}

} // namespace detail

/// A vector path that it owns: moves, lines, curves and closes. Calls that build it can be chained. A path
/// that was moved from takes every call and does nothing.
class Path {
public:
    /// An empty path. Throws std::bad_alloc.
    Path() : path_(detail::orThrow(LxPath_Create())) {}
    /// Takes over a path of the C boundary, or null.
    explicit Path(LxPath *path) noexcept : path_(path) {}

    /// A path with the same items. Throws std::bad_alloc.
    Path copy() const { return Path(detail::orThrow(LxPath_CreateCopy(get()))); }

    /// The path of the C boundary, still owned.
    LxPath *get() const noexcept { return path_.get(); }
    /// Hands the path of the C boundary over to the caller.
    LxPath *release() noexcept { return path_.release(); }
    /// False once the path was moved from or released.
    explicit operator bool() const noexcept { return path_ != nullptr; }

    /// Removes all items.
    Path &clear() noexcept {
        LxPath_MakeEmpty(get());
        return *this;
    }
    /// Appends all items of another path.
    Path &add(const Path &other) noexcept {
        LxPath_Add(get(), other.get());
        return *this;
    }

    /// Starts a subpath.
    Path &moveTo(Point to) noexcept {
        LxPath_AddMoveTo(get(), to.x, to.y);
        return *this;
    }
    /// Appends a line.
    Path &lineTo(Point to) noexcept {
        LxPath_AddLineTo(get(), to.x, to.y);
        return *this;
    }
    /// Appends a quadratic curve.
    Path &curveTo(Point control, Point to) noexcept {
        LxPath_AddQCurveTo(get(), control.x, control.y, to.x, to.y);
        return *this;
    }
    /// Appends a cubic curve.
    Path &curveTo(Point control1, Point control2, Point to) noexcept {
        LxPath_AddCurveTo(get(), control1.x, control1.y, control2.x, control2.y, to.x, to.y);
        return *this;
    }
    /// Ends the subpath with a line back to its start.
    Path &close() noexcept {
        LxPath_AddClose(get());
        return *this;
    }

    /// Appends a move and a line.
    Path &addLine(Point from, Point to) noexcept {
        LxPath_AddLine(get(), from.x, from.y, to.x, to.y);
        return *this;
    }
    /// Appends a rectangle, its corners rounded if a radius is told.
    Path &addRect(const Rect &rect, double radiusX = 0.0, double radiusY = 0.0) noexcept {
        LxPath_AddRect(get(), &rect, radiusX, radiusY);
        return *this;
    }
    /// Appends a circle.
    Path &addCircle(Point center, double radius) noexcept {
        LxPath_AddCircle(get(), center.x, center.y, radius);
        return *this;
    }
    /// Appends an ellipse.
    Path &addEllipse(Point center, double radiusX, double radiusY) noexcept {
        LxPath_AddEllipse(get(), center.x, center.y, radiusX, radiusY);
        return *this;
    }
    /// Appends a closed polygon of `count` points.
    Path &addPolygon(const Point *points, int32_t count) noexcept {
        LxPath_AddPoly(get(), points, count);
        return *this;
    }
    /// Appends a slice of `steps` chords; angles in degrees, counterclockwise unless told.
    Path &addPie(Point center, double radius, double startAngle, double endAngle, int32_t steps,
                 bool clockwise = false) noexcept {
        LxPath_AddPolyPie(get(), center.x, center.y, radius, startAngle, endAngle, steps, clockwise ? 1 : 0);
        return *this;
    }
    /// Appends a piece of a ring between two radii, of `steps` chords.
    Path &addRing(Point center, double radius1, double radius2, double startAngle, double endAngle,
                  int32_t steps, bool clockwise = false) noexcept {
        LxPath_AddPolyRing(get(), center.x, center.y, radius1, radius2, startAngle, endAngle, steps,
                           clockwise ? 1 : 0);
        return *this;
    }
    /// Appends a move and cubic curves fitted to `count` points, none further away than the root of `error`.
    Path &addFitted(const Point *points, int32_t count, double error) noexcept {
        LxCubicBezier_Fit(points, count, error, get());
        return *this;
    }
    /// Removes the item at `index`, counted from 0, if there is one.
    Path &removeItem(int32_t index) noexcept {
        LxPath_RemoveItem(get(), index);
        return *this;
    }

    /// True if every subpath comes back to its start.
    bool isClosed() const noexcept { return LxPath_isClosed(get()) != 0; }
    /// Inserts the missing lines back to the starts. True if every subpath has come back then.
    bool mend() noexcept { return LxPath_Close(get(), 1) != 0; }

    /// Moves all points.
    Path &transform(const Matrix &matrix) noexcept {
        LxPath_Transform(get(), &matrix);
        return *this;
    }
    /// Replaces curves by lines, fine enough behind `matrix`, which is applied unless null.
    Path &flatten(const Matrix *matrix = nullptr) noexcept {
        LxPath_Decompose(get(), matrix);
        return *this;
    }
    /// Replaces the path by the outline of its stroke, then transformed and clipped unless null.
    Path &outline(double width, StrokeStyle style = StrokeStyle::Bevel, const Matrix *matrix = nullptr,
                  const Rect *clip = nullptr) noexcept {
        LxPath_Outline(get(), matrix, clip, width, static_cast<int32_t>(style));
        return *this;
    }
    /// Clips a flattened path to a rectangle, closed subpath by closed subpath; open ones are lost.
    Path &clip(const Rect &rect) noexcept {
        LxPath_Clip(get(), &rect);
        return *this;
    }
    /// Counts what flattening would give.
    LxPathInfo info(const Matrix *matrix = nullptr) const noexcept { return LxPath_Info(get(), matrix); }

    /// Walks the flattened path: onMove(Point) where a subpath starts, onSegment(Point from, Point to),
    /// onEnd() where a subpath ends, but for an open last one. Points are transformed by `matrix` unless
    /// null. What throws in a callback ends the program. Throws std::bad_alloc.
    template <class OnMove, class OnSegment, class OnEnd>
    void walk(OnMove &&onMove, OnSegment &&onSegment, OnEnd &&onEnd, const Matrix *matrix = nullptr) const {
        Walk<OnMove, OnSegment, OnEnd> walk{onMove, onSegment, onEnd};
        const std::unique_ptr<LxPathIterator, DeleteIterator> iterator(
            detail::orThrow(LxPath_CreateIterator()));
        walk.install(iterator.get());
        LxPath_IterateConst(get(), iterator.get(), matrix, &walk, nullptr);
    }

private:
    struct Delete {
        void operator()(LxPath *path) const noexcept { LxPath_Delete(path); }
    };
    struct DeleteIterator {
        void operator()(LxPathIterator *iterator) const noexcept { LxPath_DeleteIterator(iterator); }
    };

    template <class OnMove, class OnSegment, class OnEnd>
    struct Walk {
        OnMove &onMove;
        OnSegment &onSegment;
        OnEnd &onEnd;

        static Walk &of(LxPathIterator *iterator) noexcept {
            return *static_cast<Walk *>(LxPathIterator_User(iterator));
        }
        static void move(LxPathIterator *iterator, const LxPointD *point) noexcept {
            of(iterator).onMove(Point(*point));
        }
        static void segment(LxPathIterator *iterator, const LxPointD *from, const LxPointD *to) noexcept {
            of(iterator).onSegment(Point(*from), Point(*to));
        }
        static void end(LxPathIterator *iterator) noexcept { of(iterator).onEnd(); }

        void install(LxPathIterator *iterator) const noexcept {
            const auto set = [iterator](LxPathCallbackKind kind, auto *callback) {
                LxPathIterator_SetCallback(iterator, kind, reinterpret_cast<LxPathCallback>(callback));
            };
            set(kLxPathOnMove, &move);
            set(kLxPathOnSegment, &segment);
            set(kLxPathOnSubpathEnd, &end);
        }
    };

    std::unique_ptr<LxPath, Delete> path_;
};

static_assert(sizeof(Path) == sizeof(LxPath *), "a handle is a pointer");

} // namespace oxlume

#endif
