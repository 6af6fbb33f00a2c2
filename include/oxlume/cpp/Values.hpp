/// @file
/// The value types of the plane: points, rectangles and matrices with their operators.
///
/// Each is the structure of the C boundary under another name: it converts to and from it by itself and has
/// its size.
#ifndef OXLUME_CPP_VALUES_HPP
#define OXLUME_CPP_VALUES_HPP

#include <oxlume/LxMatrix.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>

namespace oxlume {

/// A point of the plane, or a vector, in double precision.
struct Point : LxPointD {
    /// The origin.
    constexpr Point() noexcept : Point(0.0, 0.0) {}
    /// The point at (x, y).
    constexpr Point(double px, double py) noexcept : LxPointD{px, py} {}
    /// The point of the C boundary.
    constexpr Point(LxPointD point) noexcept : LxPointD{point} {}

    /// Adds a vector.
    constexpr Point &operator+=(Point other) noexcept { return *this = {x + other.x, y + other.y}; }
    /// Takes a vector away.
    constexpr Point &operator-=(Point other) noexcept { return *this = {x - other.x, y - other.y}; }
    /// Stretches the vector.
    constexpr Point &operator*=(double s) noexcept { return *this = {x * s, y * s}; }
    /// Shrinks the vector; a division by 0 gives infinite coordinates or none.
    constexpr Point &operator/=(double s) noexcept { return *this = {x / s, y / s}; }

    /// The distance from the origin.
    double length() const noexcept { return V2Length(this); }
};

/// The sum of two vectors.
constexpr Point operator+(Point a, Point b) noexcept {
    return a += b;
}
/// The vector from `b` to `a`.
constexpr Point operator-(Point a, Point b) noexcept {
    return a -= b;
}
/// The vector the other way round.
constexpr Point operator-(Point v) noexcept {
    return {-v.x, -v.y};
}
/// The vector, stretched.
constexpr Point operator*(Point v, double s) noexcept {
    return v *= s;
}
/// The vector, stretched.
constexpr Point operator*(double s, Point v) noexcept {
    return v *= s;
}
/// The vector, shrunk.
constexpr Point operator/(Point v, double s) noexcept {
    return v /= s;
}
/// True if both coordinates are equal.
constexpr bool operator==(Point a, Point b) noexcept {
    return a.x == b.x && a.y == b.y;
}
/// True if a coordinate differs.
constexpr bool operator!=(Point a, Point b) noexcept {
    return !(a == b);
}
/// The dot product.
constexpr double dot(Point a, Point b) noexcept {
    return a.x * b.x + a.y * b.y;
}
/// The distance between two points.
inline double distance(Point a, Point b) noexcept {
    return V2DistanceBetween2Points(&a, &b);
}
/// The point at `t` on the way from `a` (0) to `b` (1), or beyond.
inline Point lerp(double t, Point a, Point b) noexcept {
    return LxPointD_Lerp(t, a, b);
}

/// A pixel's place: a point with 32-bit integer coordinates. Sums beyond 32 bits are the caller's to avoid.
struct IntPoint : LxPointL {
    /// The origin.
    constexpr IntPoint() noexcept : IntPoint(0, 0) {}
    /// The point at (x, y).
    constexpr IntPoint(int32_t px, int32_t py) noexcept : LxPointL{px, py} {}
    /// The point of the C boundary.
    constexpr IntPoint(LxPointL point) noexcept : LxPointL{point} {}
    /// Both coordinates truncated toward zero; one beyond 32 bits gives INT32_MIN.
    explicit IntPoint(Point point) noexcept : LxPointL{LxPointD_ToL(point)} {}

    /// Both coordinates widened.
    constexpr operator Point() const noexcept { return {double(x), double(y)}; }
};

/// The sum of two vectors.
constexpr IntPoint operator+(IntPoint a, IntPoint b) noexcept {
    return {a.x + b.x, a.y + b.y};
}
/// The vector from `b` to `a`.
constexpr IntPoint operator-(IntPoint a, IntPoint b) noexcept {
    return {a.x - b.x, a.y - b.y};
}
/// True if both coordinates are equal.
constexpr bool operator==(IntPoint a, IntPoint b) noexcept {
    return a.x == b.x && a.y == b.y;
}
/// True if a coordinate differs.
constexpr bool operator!=(IntPoint a, IntPoint b) noexcept {
    return !(a == b);
}

/// A rectangle in double precision, from its first corner to the second, which counts as outside. One without
/// width or height is empty.
struct Rect : LxRectD {
    /// The empty rectangle at the origin.
    constexpr Rect() noexcept : LxRectD{0.0, 0.0, 0.0, 0.0} {}
    /// The rectangle between two corners, sorted.
    constexpr Rect(double ax, double ay, double bx, double by) noexcept
        : LxRectD{ax < bx ? ax : bx, ay < by ? ay : by, ax < bx ? bx : ax, ay < by ? by : ay} {}
    /// The rectangle between two corners, sorted.
    constexpr Rect(Point a, Point b) noexcept : Rect(a.x, a.y, b.x, b.y) {}
    /// The rectangle of the C boundary, as it stands.
    constexpr Rect(LxRectD rect) noexcept : LxRectD{rect} {}

    /// The way from x0 to x1.
    constexpr double width() const noexcept { return x1 - x0; }
    /// The way from y0 to y1.
    constexpr double height() const noexcept { return y1 - y0; }
    /// True for a rectangle without width or height.
    constexpr bool isEmpty() const noexcept { return x0 >= x1 || y0 >= y1; }
    /// The middle.
    constexpr Point center() const noexcept { return {(x0 + x1) / 2.0, (y0 + y1) / 2.0}; }
    /// True for points inside; the sides of the second corner are outside.
    constexpr bool contains(Point p) const noexcept { return p.x >= x0 && p.y >= y0 && p.x < x1 && p.y < y1; }
};

/// The rectangle, moved.
constexpr Rect operator+(Rect rect, Point by) noexcept {
    return LxRectD{rect.x0 + by.x, rect.y0 + by.y, rect.x1 + by.x, rect.y1 + by.y};
}
/// The rectangle, moved back.
constexpr Rect operator-(Rect rect, Point by) noexcept {
    return rect + -by;
}
/// The common part, as LxRectD_intersect: empty where there is none, the other one where one is empty.
inline Rect operator&(Rect a, Rect b) noexcept {
    return LxRectD_intersect(a, b);
}
/// The smallest rectangle around both; an empty one does not count.
inline Rect operator|(Rect a, Rect b) noexcept {
    return LxRectD_union(a, b);
}
/// True if all four sides are equal.
constexpr bool operator==(Rect a, Rect b) noexcept {
    return a.x0 == b.x0 && a.y0 == b.y0 && a.x1 == b.x1 && a.y1 == b.y1;
}
/// True if a side differs.
constexpr bool operator!=(Rect a, Rect b) noexcept {
    return !(a == b);
}

/// A rectangle of pixels.
struct IntRect : LxRectL {
    /// The empty rectangle at the origin.
    constexpr IntRect() noexcept : LxRectL{0, 0, 0, 0} {}
    /// The rectangle between two corners, sorted.
    constexpr IntRect(int32_t ax, int32_t ay, int32_t bx, int32_t by) noexcept
        : LxRectL{ax < bx ? ax : bx, ay < by ? ay : by, ax < bx ? bx : ax, ay < by ? by : ay} {}
    /// The rectangle of the C boundary, as it stands.
    constexpr IntRect(LxRectL rect) noexcept : LxRectL{rect} {}
    /// The smallest rectangle of whole pixels that covers `rect`.
    explicit IntRect(Rect rect) noexcept : LxRectL{LxRectL_fromD(rect)} {}

    /// The number of columns, in 32 bits that wrap.
    constexpr int32_t width() const noexcept { return int32_t(uint32_t(x1) - uint32_t(x0)); }
    /// The number of rows, in 32 bits that wrap.
    constexpr int32_t height() const noexcept { return int32_t(uint32_t(y1) - uint32_t(y0)); }
    /// True for a rectangle without pixels.
    constexpr bool isEmpty() const noexcept { return x0 >= x1 || y0 >= y1; }
    /// True for pixels inside.
    constexpr bool contains(IntPoint p) const noexcept {
        return p.x >= x0 && p.y >= y0 && p.x < x1 && p.y < y1;
    }
    /// The same in double precision.
    constexpr operator Rect() const noexcept {
        return LxRectD{double(x0), double(y0), double(x1), double(y1)};
    }
};

/// The rectangle, moved.
constexpr IntRect operator+(IntRect rect, IntPoint by) noexcept {
    return LxRectL{rect.x0 + by.x, rect.y0 + by.y, rect.x1 + by.x, rect.y1 + by.y};
}
/// The rectangle, moved back.
constexpr IntRect operator-(IntRect rect, IntPoint by) noexcept {
    return LxRectL{rect.x0 - by.x, rect.y0 - by.y, rect.x1 - by.x, rect.y1 - by.y};
}
/// The common part, as LxRectL_intersect: empty where there is none, the other one where one is empty.
inline IntRect operator&(IntRect a, IntRect b) noexcept {
    return LxRectL_intersect(a, b);
}
/// The smallest rectangle around both; an empty one does not count.
inline IntRect operator|(IntRect a, IntRect b) noexcept {
    return LxRectL_union(a, b);
}
/// True if all four sides are equal.
constexpr bool operator==(IntRect a, IntRect b) noexcept {
    return a.x0 == b.x0 && a.y0 == b.y0 && a.x1 == b.x1 && a.y1 == b.y1;
}
/// True if a side differs.
constexpr bool operator!=(IntRect a, IntRect b) noexcept {
    return !(a == b);
}

/// A transform of the plane: a point goes to (x*m0 + y*m1 + m2, x*m3 + y*m4 + m5).
struct Matrix : LxMatrix {
    /// The identity.
    constexpr Matrix() noexcept : LxMatrix{1, 0, 0, 0, 1, 0, 0, 0, 1} {}
    /// The transform of these six numbers.
    constexpr Matrix(double a, double b, double c, double d, double e, double f) noexcept
        : LxMatrix{a, b, c, d, e, f, 0, 0, 1} {}
    /// The matrix of the C boundary.
    constexpr Matrix(const LxMatrix &matrix) noexcept : LxMatrix{matrix} {}

    /// A stretching from the origin.
    static constexpr Matrix scaling(double sx, double sy) noexcept { return {sx, 0, 0, 0, sy, 0}; }
    /// A shift.
    static constexpr Matrix translation(double dx, double dy) noexcept { return {1, 0, dx, 0, 1, dy}; }
    /// A rotation by radians around a point, from x towards y.
    static Matrix rotation(double radians, Point center = {}) noexcept {
        Matrix matrix;
        LxMatrix_SetRotate(&matrix, center.x, center.y, radians);
        return matrix;
    }

    /// As LxMatrix_Scale, which scales the linear part as if it came first and the shift as if it came last.
    Matrix &scale(double sx, double sy) noexcept {
        LxMatrix_Scale(this, sx, sy);
        return *this;
    }
    /// Shifts what the matrix gives.
    Matrix &translate(double dx, double dy) noexcept {
        LxMatrix_Translate(this, dx, dy);
        return *this;
    }
    /// Rotates what the matrix gives by radians around the origin.
    Matrix &rotate(double radians) noexcept {
        LxMatrix_Rotate(this, radians);
        return *this;
    }
    /// The way back; a singular matrix has infinite elements and such as are no number.
    Matrix inverse() const noexcept {
        Matrix result;
        LxMatrix_GetInverse(&result, this);
        return result;
    }

    /// Multiplies from the right: `other` is applied first.
    Matrix &operator*=(const Matrix &other) noexcept {
        LxMatrix_MulMat(this, &other);
        return *this;
    }
    /// Multiplies all nine elements.
    Matrix &operator*=(double s) noexcept {
        LxMatrix_MulScalar(this, s);
        return *this;
    }
    /// Adds element by element.
    Matrix &operator+=(const Matrix &other) noexcept {
        LxMatrix_AddMatrix(this, &other);
        return *this;
    }
    /// Subtracts element by element.
    Matrix &operator-=(const Matrix &other) noexcept {
        LxMatrix_SubMatrix(this, &other);
        return *this;
    }
};

/// The transform that applies `b` first, then `a`.
inline Matrix operator*(Matrix a, const Matrix &b) noexcept {
    return a *= b;
}
/// All nine elements multiplied.
inline Matrix operator*(Matrix a, double s) noexcept {
    return a *= s;
}
/// The sum, element by element.
inline Matrix operator+(Matrix a, const Matrix &b) noexcept {
    return a += b;
}
/// The difference, element by element.
inline Matrix operator-(Matrix a, const Matrix &b) noexcept {
    return a -= b;
}
/// The transformed point.
inline Point operator*(const Matrix &matrix, Point point) noexcept {
    return LxMatrix_MulPointD(&matrix, &point);
}
/// True if all nine elements are equal.
inline bool operator==(const Matrix &a, const Matrix &b) noexcept {
    return LxMatrix_isEqual(&a, &b) != 0;
}
/// True if an element differs.
inline bool operator!=(const Matrix &a, const Matrix &b) noexcept {
    return !(a == b);
}

} // namespace oxlume

#endif
