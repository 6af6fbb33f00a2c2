// Random input for property tests: seeded, repeatable, biased toward the values at which arithmetic breaks.
#pragma once

#include <cstdint>
#include <random>

namespace lx::test {

// The seed of this run: the environment variable OXLUME_TEST_SEED, or else a fixed one. Printed at the start.
uint64_t testSeed();

class Random {
public:
    // Two generators of one run differ by their `stream`.
    explicit Random(uint64_t stream = 0) : engine_(testSeed() + stream * 0x9E3779B97F4A7C15u) {}

    uint32_t word() { return static_cast<uint32_t>(engine_()); }
    int32_t integer(int32_t low, int32_t high) {
        return std::uniform_int_distribution<int32_t>(low, high)(engine_);
    }
    double real(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    bool coin() { return (word() & 1) != 0; }

    // Half of them 0, 1, 127, 128, 254 or 255.
    uint8_t byte();

    // Any integer, often one at or near the ends of the range or near zero.
    int32_t anyInteger();

    // Any double: ordinary, huge, tiny, halves, infinite, not a number.
    double anyReal();

private:
    std::mt19937_64 engine_;
};

} // namespace lx::test
