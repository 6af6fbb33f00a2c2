// What the blend benchmark measures with.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace bench {

// Megapixels a second, the best of several tries of a few milliseconds each.
template <class Work>
double rateOf(size_t pixels, Work work) {
    using Clock = std::chrono::steady_clock;
    const auto seconds = [&](int times) {
        const auto start = Clock::now();
        for (int i = 0; i < times; ++i)
            work();
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    int times = 1;
    while (seconds(times) < 0.001)
        times *= 2;
    double best = 1e9;
    for (int i = 0; i < 21; ++i)
        best = std::min(best, seconds(times) / times);
    return static_cast<double>(pixels) / best / 1e6;
}

// Random pixels of every alpha, straight or, in four bytes, premultiplied.
inline std::vector<uint8_t> makePixels(size_t count, int bytes, unsigned seed, bool premultiplied = false) {
    std::mt19937 random(seed);
    std::vector<uint8_t> pixels(count * static_cast<size_t>(bytes) + 64);
    for (uint8_t &byte : pixels)
        byte = static_cast<uint8_t>(random());
    for (size_t i = 0; premultiplied && i < 4 * count; ++i) {
        if (i % 4 != 3)
            pixels[i] = static_cast<uint8_t>(pixels[i] * pixels[i | 3] / 255);
    }
    return pixels;
}

} // namespace bench
