// The coverage of a shape, worked out step by step: the measure for the rasteriser.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

namespace lx::test {

class NaiveShape {
public:
    std::vector<uint32_t> samples;

    void addEdge(double x0, double y0, double x1, double y1) {
        int64_t ax = static_cast<int64_t>(x0 * 32), ay = static_cast<int64_t>(y0 * 4);
        int64_t bx = static_cast<int64_t>(x1 * 32), by = static_cast<int64_t>(y1 * 4);
        if (ay == by)
            return;
        const uint32_t direction = by > ay ? 1 : 0;
        if (ay > by) {
            std::swap(ax, bx);
            std::swap(ay, by);
        }
        const int64_t step = bx > ax ? 1 : -1;
        const int64_t dx = std::abs(bx - ax), dy = by - ay;
        int64_t error = dy, x = ax, y = ay;
        if (y < 0) {
            error = dy + -y * dx;
            y = 0;
            if (error > dy) {
                const int64_t q = (error - 1) / dy;
                x += step * q;
                error -= q * dy;
            }
        }
        for (; y < by; ++y) {
            if (samples.size() * 4 > 0x80003)
                break;
            samples.push_back(static_cast<uint32_t>((y / 4) << 17) |
                              static_cast<uint32_t>(x < 0 ? 0 : 2 * x) | direction);
            error += dx;
            if (error > dy) {
                const int64_t q = (error - 1) / dy;
                x += step * q;
                error -= q * dy;
            }
        }
    }

    // Calls plot(x, y, coverage) for every pixel that is covered, in the order of painting.
    void plotAll(bool nonZero, int32_t imageWidth,
                 const std::function<void(int32_t, int32_t, int32_t)> &plot) const {
        std::vector<uint32_t> sorted = samples;
        std::sort(sorted.begin(), sorted.end());
        int32_t x = 0, y = 0, winding = 0, atStart = 0, rise = 0, fall = 0;
        const auto fold = [&](int32_t c) {
            if (nonZero)
                return std::min(std::abs(c), 255);
            if ((c >> 8 & 1) != 0)
                c = ~c;
            return c & 255;
        };
        const auto flush = [&] {
            const int32_t c = fold(fall * 256 / 124 + atStart * 64 + rise * 256 / 124);
            if (c != 0)
                plot(x, y, c);
        };
        for (const uint32_t word : sorted) {
            const auto sx = static_cast<int32_t>(word >> 6 & 2047),
                       sy = static_cast<int32_t>(word >> 17 & 2047);
            const auto fraction = static_cast<int32_t>(word >> 1 & 31);
            if (sx != x || sy != y) {
                flush();
                if (sy != y)
                    winding = 0;
                if (const int32_t c = fold(winding * 64); c != 0)
                    for (int32_t i = x + 1; i < std::min(sx, imageWidth); ++i)
                        plot(i, y, c);
                rise = fall = 0;
                atStart = winding;
                x = sx;
                y = sy;
            }
            if ((word & 1) != 0) {
                ++winding;
                rise += 31 - fraction;
            } else {
                --winding;
                fall -= 31 - fraction;
            }
        }
        flush();
    }
};

} // namespace lx::test
