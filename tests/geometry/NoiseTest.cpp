#include "geometry/Noise.h"

#include <cmath>
#include <cstdlib>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/Random.h"

namespace {

// The lattice as the definition gives it, drawn from the platform's own generator.
std::vector<double> latticeOf(uint32_t seed) {
    std::srand(seed);
    std::vector<double> lattice;
    for (int i = 0; i < 256; ++i) {
        const int bits = std::rand() & 0x7fff;
        lattice.push_back((bits + bits * 32768.0) / 1073741823.0 * -2.0 + 1.0);
    }
    return lattice;
}

// The plane's noise from the lattice, without tables or cache.
double planeNoise(const std::vector<double> &lattice, double x, double y) {
    const auto spline = [](double p0, double p1, double p2, double p3, double f) {
        const double a = p1 * 1.5 + p0 * -0.5 + p2 * -1.5 + p3 * 0.5;
        const double b = p1 * -2.5 + p0 + (p2 + p2) + p3 * -0.5;
        const double c = p0 * -0.5 + p2 * 0.5;
        return ((a * f + b) * f + c) * f + p1;
    };
    const int ix = static_cast<int>(x);
    const int iy = static_cast<int>(y);
    double columns[4];
    for (int k = 0; k < 4; ++k) {
        const int place = lx::noisePermutation()[(ix - 1 + k) & 255] + iy;
        columns[k] = spline(lattice[place & 255], lattice[(place + 1) & 255], lattice[(place + 2) & 255],
                            lattice[(place + 3) & 255], y - iy);
    }
    return spline(columns[0], columns[1], columns[2], columns[3], x - ix);
}

} // namespace

// Each test is a process of its own under ctest; run in one process, only the first test to evaluate the
// noise could see the empty cache, so this one asks whether it is.
TEST(Noise, AnswersFromTheEmptyCacheBeforeTheFirstEvaluation) {
    if (lx::noiseCacheIsCurrent())
        GTEST_SKIP() << "the cache has been used in this process";
    LxNoise_Seed(0);
    EXPECT_EQ(LxNoise_2D(0.5, 0.0), 0.0);
    EXPECT_EQ(LxNoise_2D(-0.75, 0.0), 0.0);
    EXPECT_FALSE(lx::noiseCacheIsCurrent());
    EXPECT_NE(LxNoise_2D(1.5, 0.0), 0.0) << "another cell, so a real evaluation";
    EXPECT_NE(LxNoise_2D(0.5, 0.0), 0.0);
}

TEST(Noise, PermutationHoldsEveryByteOnce) {
    std::vector<int> seen(256);
    for (int i = 0; i < 256; ++i)
        ++seen[lx::noisePermutation()[i]];
    EXPECT_EQ(seen, std::vector<int>(256, 1));
    EXPECT_EQ(lx::noisePermutation()[0], 225);
    EXPECT_EQ(lx::noisePermutation()[127], 202);
    EXPECT_EQ(lx::noisePermutation()[255], 52);
}

TEST(Noise, SeedingDrawsTheLatticeFromTheCommonGenerator) {
    for (const uint32_t seed : {0u, 2u, 77u}) {
        const std::vector<double> lattice = latticeOf(seed);
        const int next = std::rand();
        LxNoise_Seed(seed);
        EXPECT_EQ(std::rand(), next) << "256 draws, no more and no less, also for a lattice that stands";
        LxNoise_Seed(seed);
        EXPECT_EQ(std::rand(), next);
        for (int i = 0; i < 256; ++i)
            EXPECT_EQ(LxNoise_1D(i), lattice[(i + 1) & 255]) << "at whole numbers the lattice shows through";
    }
}

TEST(Noise, AxisRunsThroughTheCubicOfItsCell) {
    LxNoise_Seed(5);
    const std::vector<double> lattice = latticeOf(5);
    const double *p = &lattice[10];
    const double a = p[1] * 1.5 + p[0] * -0.5 + p[2] * -1.5 + p[3] * 0.5;
    const double b = p[1] * -2.5 + p[0] + (p[2] + p[2]) + p[3] * -0.5;
    const double c = p[0] * -0.5 + p[2] * 0.5;
    EXPECT_EQ(LxNoise_1D(10.25), 0.25 * ((0.25 * a + b) * 0.25 + c) + p[1]);
    EXPECT_EQ(LxNoise_1D(-245.75), LxNoise_1D(10.25)) << "-245.75 lies in cell -246, and the lattice wraps";
}

TEST(Noise, ANegativeWholeNumberLiesAtTheEndOfTheCellBelow) {
    LxNoise_Seed(0);
    const lx::NoiseRow &row = lx::noiseRows()[(-4) & 255];
    EXPECT_EQ(LxNoise_1D(-3.0), 1.0 * ((1.0 * row.a + row.b) * 1.0 + row.c) + row.d);
}

TEST(Noise, PlaneAgreesWithTheFormWithoutTables) {
    lx::test::Random random(3);
    LxNoise_Seed(9);
    const std::vector<double> lattice = latticeOf(9);
    LxNoise_2D(400.5, 400.5);
    for (int i = 0; i < 20000; ++i) {
        const double x = random.real(-300, 300);
        const double y = random.real(-300, 300);
        EXPECT_EQ(LxNoise_2D(x, y), planeNoise(lattice, x, y)) << x << ' ' << y;
    }
}

TEST(Noise, PlaneScansFromItsCache) {
    LxNoise_Seed(9);
    const std::vector<double> lattice = latticeOf(9);
    for (double y = -2.25; y < 2; y += 0.5) {
        for (double x = -3; x < 3; x += 0.01)
            ASSERT_EQ(LxNoise_2D(x, y), planeNoise(lattice, x, y)) << x << ' ' << y;
    }
}

TEST(Noise, ASeedLeavesTheCachedColumns) {
    LxNoise_Seed(1);
    const double before = LxNoise_2D(3.25, 1.5);
    LxNoise_Seed(2);
    EXPECT_FALSE(lx::noiseCacheIsCurrent());
    EXPECT_EQ(LxNoise_2D(3.25, 1.5), before) << "the same cell and y: still the old columns";
    EXPECT_FALSE(lx::noiseCacheIsCurrent());
    EXPECT_EQ(LxNoise_2D(3.25, 1.75), planeNoise(latticeOf(2), 3.25, 1.75));
    EXPECT_TRUE(lx::noiseCacheIsCurrent());
    EXPECT_EQ(LxNoise_2D(3.25, 1.5), planeNoise(latticeOf(2), 3.25, 1.5));
}

TEST(Noise, StaysAboutInRange) {
    lx::test::Random random(4);
    LxNoise_Seed(0);
    for (int i = 0; i < 100000; ++i) {
        EXPECT_LT(std::fabs(LxNoise_1D(random.real(-1000, 1000))), 1.5);
        EXPECT_LT(std::fabs(LxNoise_2D(random.real(0, 1000), random.real(0, 1000))), 2.0)
            << "below zero the plane's cubics run on beyond their cells";
    }
}

TEST(Noise, EveryNumberIsTaken) {
    lx::test::Random random(5);
    LxNoise_Seed(0);
    for (int i = 0; i < 100000; ++i) {
        LxNoise_1D(random.anyReal());
        LxNoise_2D(random.anyReal(), random.anyReal());
    }
}
