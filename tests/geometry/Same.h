// Exact comparison of geometric values, for which one not-a-number is as good as another.
#pragma once

#include <cmath>
#include <ostream>

#include <oxlume/LxLine.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>

#include "tests/support/Random.h"

inline bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

inline bool operator==(const LxPointL &a, const LxPointL &b) {
    return a.x == b.x && a.y == b.y;
}

inline bool operator==(const LxPointD &a, const LxPointD &b) {
    return same(a.x, b.x) && same(a.y, b.y);
}

inline bool operator==(const LxRectL &a, const LxRectL &b) {
    return a.x0 == b.x0 && a.y0 == b.y0 && a.x1 == b.x1 && a.y1 == b.y1;
}

inline bool operator==(const LxRectD &a, const LxRectD &b) {
    return same(a.x0, b.x0) && same(a.y0, b.y0) && same(a.x1, b.x1) && same(a.y1, b.y1);
}

inline bool operator==(const LxCGRect &a, const LxCGRect &b) {
    return same(a.x, b.x) && same(a.y, b.y) && same(a.width, b.width) && same(a.height, b.height);
}

inline bool operator==(const LxLineD &a, const LxLineD &b) {
    return same(a.x0, b.x0) && same(a.y0, b.y0) && same(a.x1, b.x1) && same(a.y1, b.y1);
}

inline bool operator==(const LxMatrix &a, const LxMatrix &b) {
    return same(a.m0, b.m0) && same(a.m1, b.m1) && same(a.m2, b.m2) && same(a.m3, b.m3) && same(a.m4, b.m4) &&
           same(a.m5, b.m5) && same(a.m6, b.m6) && same(a.m7, b.m7) && same(a.m8, b.m8);
}

inline std::ostream &operator<<(std::ostream &stream, const LxPointL &p) {
    return stream << '(' << p.x << ", " << p.y << ')';
}

inline std::ostream &operator<<(std::ostream &stream, const LxPointD &p) {
    return stream << '(' << p.x << ", " << p.y << ')';
}

inline std::ostream &operator<<(std::ostream &stream, const LxRectL &r) {
    return stream << '(' << r.x0 << ", " << r.y0 << ", " << r.x1 << ", " << r.y1 << ')';
}

inline std::ostream &operator<<(std::ostream &stream, const LxRectD &r) {
    return stream << '(' << r.x0 << ", " << r.y0 << ", " << r.x1 << ", " << r.y1 << ')';
}

inline std::ostream &operator<<(std::ostream &stream, const LxCGRect &r) {
    return stream << '(' << r.x << ", " << r.y << "; " << r.width << " by " << r.height << ')';
}

inline std::ostream &operator<<(std::ostream &stream, const LxLineD &l) {
    return stream << '(' << l.x0 << ", " << l.y0 << ") to (" << l.x1 << ", " << l.y1 << ')';
}

inline std::ostream &operator<<(std::ostream &stream, const LxMatrix &m) {
    return stream << '[' << m.m0 << ' ' << m.m1 << ' ' << m.m2 << "; " << m.m3 << ' ' << m.m4 << ' ' << m.m5
                  << "; " << m.m6 << ' ' << m.m7 << ' ' << m.m8 << ']';
}

namespace lx::test {

inline LxPointD anyPoint(Random &random) {
    return {random.anyReal(), random.anyReal()};
}

inline LxLineD anyLine(Random &random) {
    return {random.anyReal(), random.anyReal(), random.anyReal(), random.anyReal()};
}

inline LxRectL anyRectL(Random &random) {
    return {random.anyInteger(), random.anyInteger(), random.anyInteger(), random.anyInteger()};
}

inline LxRectD anyRectD(Random &random) {
    return {random.anyReal(), random.anyReal(), random.anyReal(), random.anyReal()};
}

} // namespace lx::test
