// Field morphing pixel by pixel, as its formulas stand: the form that the library's is compared with, in
// tests to the byte and in benchmarks by its speed.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "morph/Morph.h"

namespace lx::test {

inline int32_t plainTruncation(float value) {
    return value > -2147483904.0f && value < 2147483648.0f ? static_cast<int32_t>(value)
                                                           : std::numeric_limits<int32_t>::min();
}

// A line with all its fields.
inline LxMorphLine morphLine(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    const int32_t dx = x1 - x0;
    const int32_t dy = y1 - y0;
    const int32_t lengthSquared = dx * dx + dy * dy;
    return {x0, y0, x1, y1, dx, dy, std::sqrt(static_cast<float>(lengthSquared)), lengthSquared};
}

inline LxMorphLine plainLineBetween(const LxMorphLine &s, const LxMorphLine &d, float t) {
    const auto between = [t](int32_t a, int32_t b) {
        return plainTruncation(static_cast<float>(a) + static_cast<float>(b - a) * t);
    };
    return morphLine(between(s.x0, d.x0), between(s.y0, d.y0), between(s.x1, d.x1), between(s.y1, d.y1));
}

// The last of the frames, over rows of `bytes` a pixel without gaps.
inline void plainMorph(const uint8_t *source, uint8_t *destination, int32_t width, int32_t height,
                       int32_t bytes, const std::vector<LxMorphLine> &sourceLines,
                       const std::vector<LxMorphLine> &targetLines) {
    std::vector<LxMorphLine> frame;
    for (size_t i = 0; i < sourceLines.size(); ++i)
        frame.push_back(plainLineBetween(sourceLines[i], targetLines[i], 1.0f));
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x) {
            float sumX = 0;
            float sumY = 0;
            float sumW = 0;
            for (size_t i = 0; i < frame.size(); ++i) {
                const LxMorphLine &f = frame[i];
                const LxMorphLine &s = sourceLines[i];
                const int32_t ex = x - f.x0;
                const int32_t ey = y - f.y0;
                const float u =
                    static_cast<float>(ex * f.dx + ey * f.dy) / static_cast<float>(f.lengthSquared);
                const float v = static_cast<float>(f.dx * ey - f.dy * ex) / f.length;
                float distance = std::fabs(v);
                if (u <= 0)
                    distance = std::sqrt(static_cast<float>(ex * ex + ey * ey));
                else if (u >= 1)
                    distance =
                        std::sqrt(static_cast<float>((x - f.x1) * (x - f.x1) + (y - f.y1) * (y - f.y1)));
                const double root = std::pow(static_cast<double>(f.length), 0.75) /
                                    (static_cast<double>(distance) + 0.0010000000474974513);
                const float weight = static_cast<float>(root * root);
                const float px = static_cast<float>(s.x0) + static_cast<float>(s.dx) * u -
                                 static_cast<float>(s.dy) * v / s.length;
                const float py = static_cast<float>(s.y0) + static_cast<float>(s.dy) * u +
                                 v * static_cast<float>(s.dx) / s.length;
                sumX += (px - static_cast<float>(x)) * weight;
                sumY += (py - static_cast<float>(y)) * weight;
                sumW += weight;
            }
            int32_t fromX = x;
            int32_t fromY = y;
            if (sumW != 0 && sumW == sumW) {
                fromX = std::clamp(plainTruncation(sumX / sumW + static_cast<float>(x) + 0.5f), 0, width - 1);
                fromY =
                    std::clamp(plainTruncation(sumY / sumW + static_cast<float>(y) + 0.5f), 0, height - 1);
            }
            for (int32_t i = 0; i < bytes; ++i)
                destination[(y * width + x) * bytes + i] = source[(fromY * width + fromX) * bytes + i];
        }
}

} // namespace lx::test
