// Rectangles, for use inside the library: one form for both coordinate types.
#pragma once

#include <algorithm>
#include <cmath>
#include <concepts>
#include <utility>

#include <oxlume/LxRect.h>

#include "foundation/Numeric.h"

namespace lx {

template <class R>
concept Rectangle = std::same_as<R, LxRectL> || std::same_as<R, LxRectD>;

// "The empty rectangle", its corners turned inside out. On purpose: the lower integer is one above the
// lowest, and the double is 1e18 rounded to single precision.
template <Rectangle R>
inline constexpr R emptyRect{};
template <>
inline constexpr LxRectL emptyRect<LxRectL>{2147483647, 2147483647, -2147483647, -2147483647};
template <>
inline constexpr LxRectD emptyRect<LxRectD>{999999984306749440.0, 999999984306749440.0, -999999984306749440.0,
                                            -999999984306749440.0};

// A rectangle with swapped corners is empty to this test.
template <Rectangle R>
constexpr bool isEmpty(const R &rect) {
    return rect.x0 >= rect.x1 || rect.y0 >= rect.y1;
}

// The smaller coordinates in the first corner. One that is not a number leaves its pair as it stands.
template <Rectangle R>
constexpr R sorted(R rect) {
    if (rect.x1 < rect.x0)
        std::swap(rect.x0, rect.x1);
    if (rect.y1 < rect.y0)
        std::swap(rect.y0, rect.y1);
    return rect;
}

// Whether a rectangle counts as absent in intersections and unions: the empty rectangle, or one of no width
// or height. Swapped corners are no reason to be absent: operands are sorted first.
template <Rectangle R>
constexpr bool isAbsent(const R &rect) {
    constexpr R empty = emptyRect<R>;
    return rect.x0 == rect.x1 || rect.y0 == rect.y1 ||
           (rect.x0 == empty.x0 && rect.y0 == empty.y0 && rect.x1 == empty.x1 && rect.y1 == empty.y1);
}

// What intersections and unions answer when at least one operand is absent: the other one, sorted.
template <Rectangle R>
constexpr R present(const R &a, const R &b) {
    return !isAbsent(a) ? sorted(a) : !isAbsent(b) ? sorted(b) : emptyRect<R>;
}

// The common part; crossed corners when there is none. On purpose: to intersect with an absent rectangle
// gives the other one.
template <Rectangle R>
constexpr R intersect(const R &first, const R &second) {
    if (isAbsent(first) || isAbsent(second))
        return present(first, second);
    const R a = sorted(first);
    const R b = sorted(second);
    return {std::max(a.x0, b.x0), std::max(a.y0, b.y0), std::min(a.x1, b.x1), std::min(a.y1, b.y1)};
}

// The part of `rect` inside `bounds`, both as they stand; empty when there is none.
template <Rectangle R>
constexpr R cut(const R &rect, const R &bounds) {
    return {std::max(rect.x0, bounds.x0), std::max(rect.y0, bounds.y0), std::min(rect.x1, bounds.x1),
            std::min(rect.y1, bounds.y1)};
}

// The smallest rectangle around both.
template <Rectangle R>
constexpr R unite(const R &first, const R &second) {
    if (isAbsent(first) || isAbsent(second))
        return present(first, second);
    const R a = sorted(first);
    const R b = sorted(second);
    return {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
}

// Whether the insides overlap; rectangles that only touch do not. Does not sort.
template <Rectangle R>
constexpr bool isIntersecting(const R &a, const R &b) {
    return a.x0 < b.x1 && b.x0 < a.x1 && a.y0 < b.y1 && b.y0 < a.y1;
}

// Whether a point lies inside or on any of the four sides. Does not sort.
template <Rectangle R, class Coordinate>
constexpr bool contains(const R &rect, Coordinate x, Coordinate y) {
    return rect.x0 <= x && x <= rect.x1 && rect.y0 <= y && y <= rect.y1;
}

inline int32_t width(const LxRectL &rect) {
    return distance(rect.x1, rect.x0);
}

inline int32_t height(const LxRectL &rect) {
    return distance(rect.y1, rect.y0);
}

inline double width(const LxRectD &rect) {
    return std::fabs(rect.x1 - rect.x0);
}

inline double height(const LxRectD &rect) {
    return std::fabs(rect.y1 - rect.y0);
}

// Moves by (dx, dy); integers wrap. Does not sort.
inline LxRectL moved(const LxRectL &rect, int32_t dx, int32_t dy) {
    return {wrappingAdd(rect.x0, dx), wrappingAdd(rect.y0, dy), wrappingAdd(rect.x1, dx),
            wrappingAdd(rect.y1, dy)};
}

constexpr LxRectD moved(const LxRectD &rect, double dx, double dy) {
    return {rect.x0 + dx, rect.y0 + dy, rect.x1 + dx, rect.y1 + dy};
}

// The same rectangle in doubles. Does not sort.
constexpr LxRectD widened(const LxRectL &rect) {
    return {static_cast<double>(rect.x0), static_cast<double>(rect.y0), static_cast<double>(rect.x1),
            static_cast<double>(rect.y1)};
}

// The floor of the first corner and the ceiling of the second. Does not sort.
inline LxRectD integral(const LxRectD &rect) {
    return {std::floor(rect.x0), std::floor(rect.y0), std::ceil(rect.x1), std::ceil(rect.y1)};
}

// The integer rectangle that covers a double one: see LxRectL_fromD.
LxRectL covering(const LxRectD &rect);

} // namespace lx
