#include "sheen/Surface.h"

#include <cmath>
#include <cstdlib>

#include <gtest/gtest.h>

#include "geometry/Noise.h"
#include "tests/sheen/PlainSurface.h"
#include "tests/sheen/Surfaces.h"

using namespace lx;

namespace {

double heightAt(LxSheenSurface &surface, double x, double y) {
    double height = NAN;
    surface.Evaluate(&height, &x, &y);
    return height;
}

uint32_t maskWith(std::initializer_list<std::pair<SheenIndex, double>> values) {
    LxSheenSurface surface;
    for (const auto &[index, value] : values)
        surface.SetValue(index, value);
    return surface.SymmetryMask();
}

// The profile's S-curve on one side of a knee: what u*u*(3 - 2u) gives.
double smooth(double u) {
    return u * u * (u * -2.0 + 3.0);
}

// The height in the middle of the right rim, at distance `d` of its width: H * profile(d).
double rimHeight(LxSheenSurface &surface, double d) {
    surface.Prepare();
    return heightAt(surface, 0.5 + surface.inner[0] + d * surface.border[0], 0.5);
}

// What rand gives next where the noise was seeded with 0.
int nextOfSeededNoise() {
    std::srand(0);
    for (int i = 0; i < 256; ++i)
        std::rand();
    return std::rand();
}

} // namespace

TEST(Surface, WholeNumberedParametersRound) {
    LxSheenSurface surface;
    surface.SetValue(kSymmetry, 2.5);
    EXPECT_EQ(surface.Value(kSymmetry), 3.0);
    surface.SetValue(kSymmetry, -2.5);
    EXPECT_EQ(surface.Value(kSymmetry), -2.0) << "truncated toward zero after adding one half";
    surface.SetValue(kSymmetry, -0.7);
    EXPECT_EQ(surface.Value(kSymmetry), 0.0);
    EXPECT_FALSE(std::signbit(surface.Value(kSymmetry)));
    surface.SetValue(kHeight, 2.5);
    EXPECT_EQ(surface.Value(kHeight), 2.5);
}

TEST(Surface, ValuesAreNeverClamped) {
    LxSheenSurface surface;
    surface.SetValue(kHeight, 100.0);
    EXPECT_EQ(surface.Value(kHeight), 100.0);
    EXPECT_EQ(surface.Maximum(kHeight), 1.0);
}

TEST(Surface, ConstructionTakesTheDefaultsAndSeedsTheNoise) {
    const int next = nextOfSeededNoise();
    std::srand(99);
    LxSheenSurface surface;
    EXPECT_EQ(std::rand(), next);
    for (uint32_t i = 0; i < kSheenParameterCount; ++i) {
        EXPECT_EQ(surface.Value(i), sheenParameters[i].defaultValue);
        EXPECT_EQ(surface.links[i], 0u);
    }
    EXPECT_FALSE(surface.prepared);
}

TEST(Surface, ACopyIsAConstructionAndAnAssignment) {
    LxSheenSurface surface;
    surface.SetValue(kHeight, 0.25);
    const int next = nextOfSeededNoise();
    std::srand(99);
    const LxSheenSurface copy(surface); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(std::rand(), next);
    EXPECT_EQ(copy.Value(kHeight), 0.25);
}

TEST(Surface, SettingAValueMarksItDirtyAndReadingTheMaskPrepares) {
    LxSheenSurface surface;
    EXPECT_EQ(surface.SymmetryMask(), 15u);
    EXPECT_TRUE(surface.prepared);
    surface.SetValue(kHeight, 0.5);
    EXPECT_FALSE(surface.prepared);
}

TEST(Surface, ANegativeBorderIsCarvedOutOfTheInnerSize) {
    LxSheenSurface surface;
    surface.SetValue(kBorderSize1, 0.25);
    surface.Prepare();
    EXPECT_EQ(surface.border[0], 0.3 * 0.2);
    EXPECT_EQ(surface.inner[0], 0.3 - 0.3 * 0.2);
    EXPECT_DOUBLE_EQ(surface.inner[0], 0.24);
    EXPECT_DOUBLE_EQ(surface.total[0], 0.3);
    EXPECT_EQ(surface.inner[1], 0.3);
    EXPECT_EQ(surface.border[1], 0.25);
    EXPECT_EQ(surface.total[1], 0.3 + 0.25);
    EXPECT_EQ(surface.borderScale[1], 4.0);
}

TEST(Surface, TheReciprocalOfZeroIsALargeNumber) {
    LxSheenSurface surface;
    surface.SetValue(kInnerSize0, 0.0);
    surface.SetValue(kBorderSize1, 0.0);
    surface.Prepare();
    EXPECT_EQ(surface.innerScale[0], 10000000000.0);
    EXPECT_EQ(surface.totalScale[0], 10000000000.0);
    EXPECT_EQ(surface.borderScale[1], 10000000000.0);
}

TEST(Surface, TheCentreTurnsAroundTheMiddle) {
    LxSheenSurface surface;
    surface.SetValue(kCenter0, 0.75);
    surface.SetValue(kCenterRotation, 90.0);
    surface.Prepare();
    EXPECT_NEAR(surface.centerX, 0.5, 1e-15);
    EXPECT_NEAR(surface.centerY, 0.75, 1e-15);
    surface.SetValue(kRotationPeriod, 1.0);
    surface.Prepare();
    EXPECT_EQ(surface.centerX, 0.75);
    EXPECT_EQ(surface.centerY, 0.5);
}

TEST(Surface, SectorsDivideTheTurn) {
    LxSheenSurface surface;
    surface.SetValue(kSymmetry, 4.0);
    surface.Prepare();
    EXPECT_EQ(surface.sector, tau / 4.0);
    EXPECT_EQ(surface.sectorRemainder, 0.0);
    EXPECT_EQ(surface.sectorsPerRadian, inverseTau * 4.0);
    surface.SetValue(kSymmetry, 0.0);
    surface.Prepare();
    EXPECT_EQ(surface.sector, 0.0);
}

TEST(Surface, JitterAndNoiseAreScaled) {
    LxSheenSurface surface;
    surface.SetValue(kJitter, 0.25);
    surface.SetValue(kJitter2Speed, 0.5);
    surface.SetValue(kNoiseAmount, -0.5);
    surface.SetValue(kNoiseRatio, 0.5);
    surface.Prepare();
    EXPECT_EQ(surface.jitterAmount[0], 0.5);
    EXPECT_EQ(surface.jitterAmount[1], 0.0);
    EXPECT_EQ(surface.jitterFrequency[0], 1.0);
    EXPECT_EQ(surface.jitterFrequency[1], 101.0);
    EXPECT_EQ(surface.noiseAmplitude, -0.125);
    EXPECT_EQ(surface.noiseScaleX, 0.75);
    EXPECT_EQ(surface.noiseScaleY, 0.25);
    EXPECT_EQ(surface.noiseFlags, noiseHeight);
}

TEST(Surface, TheProfileOfFullLinearityIsFlat) {
    LxSheenSurface surface;
    surface.SetValue(kProfilePar0, -1.0);
    surface.Prepare();
    EXPECT_EQ(surface.flatTop, 1.0);
    EXPECT_EQ(surface.flatTopScale, 1.0);
    for (const double d : {0.1, 0.5, 0.9})
        EXPECT_EQ(rimHeight(surface, d), 0.5) << "the cut covers the whole slope";
}

TEST(Surface, TheKneesOfTheProfile) {
    LxSheenSurface surface;
    surface.SetValue(kProfilePar0, 0.5);
    surface.SetValue(kProfilePar1, 0.5);
    surface.Prepare();
    EXPECT_EQ(surface.flatTop, 0.0);
    EXPECT_EQ(surface.lowerKnee, 0.5 * 0.5 * 0.5);
    EXPECT_EQ(surface.lowerKneeScale, 8.0);
    EXPECT_EQ(surface.upperKnee, 0.625);
    EXPECT_EQ(surface.upperKneeRaw, 0.875);
    EXPECT_EQ(surface.profileTop, 1.25);
    EXPECT_EQ(surface.profileScale, 1.0 / 1.25);
}

TEST(SymmetryMask, FollowsTheCentre) {
    EXPECT_EQ(maskWith({}), 15u);
    EXPECT_EQ(maskWith({{kCenter0, 0.4}}), 2u);
    EXPECT_EQ(maskWith({{kCenter1, 0.4}}), 1u);
    EXPECT_EQ(maskWith({{kCenter0, 0.4}, {kCenter1, 0.4}}), 0u);
}

TEST(SymmetryMask, FollowsTheFold) {
    EXPECT_EQ(maskWith({{kSymmetry, 3}}), 2u);
    EXPECT_EQ(maskWith({{kSymmetry, 4}}), 15u);
    EXPECT_EQ(maskWith({{kSymmetry, 0}, {kRotation, 45}}), 15u) << "a circle may turn";
    EXPECT_EQ(maskWith({{kRotation, 45}}), 12u);
    EXPECT_EQ(maskWith({{kSwirl, 1}}), 12u);
    EXPECT_EQ(maskWith({{kJitter, 0.1}}), 12u);
    EXPECT_EQ(maskWith({{kJitter2, 0.1}, {kSymmetry, 5}}), 0u);
    EXPECT_EQ(maskWith({{kInnerSize0, 0.4}}), 7u);
    EXPECT_EQ(maskWith({{kInnerSize0, 0.4}, {kSymmetry, 4}}), 15u);
    EXPECT_EQ(maskWith({{kCenterRotationPeriod, 3}}), 0u);
}

TEST(SymmetryMask, FollowsNoiseSheerAndPerspective) {
    EXPECT_EQ(maskWith({{kNoiseAmount, 0.1}}), 0u);
    EXPECT_EQ(maskWith({{kNoiseHorCurve, 0.1}}), 0u);
    EXPECT_EQ(maskWith({{kNoiseZoom, 0.1}}), 15u) << "noise that is not active does not count";
    EXPECT_EQ(maskWith({{kVertSheer, 0.1}}), 12u);
    EXPECT_EQ(maskWith({{kHorSheer, 0.1}}), 12u);
    EXPECT_EQ(maskWith({{kVertPerspect, 0.1}}), 10u);
    EXPECT_EQ(maskWith({{kHorPerspect, 0.1}}), 9u);
}

TEST(Evaluate, PlateauRimAndOutsideOfTheDefaults) {
    LxSheenSurface surface;
    EXPECT_EQ(heightAt(surface, 0.5, 0.5), 0.5);
    EXPECT_EQ(heightAt(surface, 0.9, 0.5), 0.0);
    EXPECT_EQ(heightAt(surface, 0.5, 0.9), 0.0);
    // Half way down the rim: q is 0.5, which is at the upper knee of 0.5, where u is 0.5 and the curve half
    // way.
    EXPECT_NEAR(heightAt(surface, 0.77, 0.5), 0.5 * 0.5, 1e-12);
    EXPECT_NEAR(heightAt(surface, 0.5, 0.23), 0.5 * 0.5, 1e-12);
    // A quarter down: q = 0.75, u = -0.25 * 0.5 / 0.5 + 1 = 0.75, g = smooth(0.75) - 1, 2 g / 2 + 1.
    EXPECT_NEAR(rimHeight(surface, 0.25), 0.5 * smooth(0.75), 1e-12);
    // Three quarters down: q = 0.25, u = 0.5 * 2 * 0.25, and smooth(u) times twice the knee.
    EXPECT_NEAR(rimHeight(surface, 0.75), 0.5 * smooth(0.25), 1e-12);
}

TEST(Evaluate, CornersByTheirType) {
    const auto corner = [](double type, double dx, double dy) {
        LxSheenSurface surface;
        surface.SetValue(kInnerSize0, 0.25);
        surface.SetValue(kInnerSize1, 0.25);
        surface.SetValue(kBorderSize0, 0.125);
        surface.SetValue(kBorderSize1, 0.125);
        surface.SetValue(kHeight, 1.0);
        surface.values[kCornerType] = type; // between the whole numbers, as interpolation in a record would
        return heightAt(surface, 0.75 + dx * 0.125, 0.75 + dy * 0.125);
    };
    EXPECT_EQ(corner(0, 0.6, 0.6), 0.0) << "a distance of 1.2";
    EXPECT_NEAR(corner(0, 0.25, 0.25), 0.5, 1e-12);
    EXPECT_NEAR(corner(-3, 0.25, 0.25), 0.5, 1e-12);
    EXPECT_NEAR(corner(1, 0.3, 0.4), 0.5, 1e-12) << "the distance is 0.5";
    EXPECT_NEAR(corner(2, 0.3, 0.5), 0.5, 1e-12) << "the larger is 0.5";
    EXPECT_NEAR(corner(0.5, 0.3, 0.4), smooth(1 - (0.5 * 0.7 + 0.5 * 0.5)), 1e-12);
    EXPECT_NEAR(corner(1.5, 0.3, 0.4), smooth(1 - (0.5 * 0.5 + 0.5 * 0.4)), 1e-12);
    EXPECT_NEAR(corner(3, 0.3, 0.4), smooth(1 - (-1.0 * 0.5 + 2.0 * 0.4)), 1e-12) << "overshoots the square";
}

TEST(Evaluate, StepsRepeatTheProfile) {
    LxSheenSurface surface;
    surface.SetValue(kProfilePar3, 2.0);
    EXPECT_NEAR(rimHeight(surface, 0.25), 0.5 * (0.5 * 0.5 + 0.5), 1e-12) << "half way down the upper step";
    EXPECT_NEAR(rimHeight(surface, 0.75), 0.5 * (0.5 * 0.5), 1e-12);
    EXPECT_NEAR(rimHeight(surface, 0.5 + 1e-9), 0.5 * 0.5, 1e-6) << "the second step starts at its top";
}

TEST(Evaluate, GrooveBulgesTheMiddleOfTheSlope) {
    LxSheenSurface surface;
    surface.SetValue(kProfilePar2, 0.5);
    // w = 0.5, so g = 0 and w - 0.5 * (0 - 1) = 1.
    EXPECT_NEAR(rimHeight(surface, 0.5), 0.5 * 1.0, 1e-9);
}

TEST(Evaluate, FlatTopStretchesTheRest) {
    LxSheenSurface surface;
    surface.SetValue(kProfilePar0, -0.5);
    EXPECT_EQ(rimHeight(surface, 0.4), 0.5);
    EXPECT_NEAR(rimHeight(surface, 0.75), 0.5 * 0.5, 1e-9) << "(0.75 - 0.5) * 2 is half way";
}

TEST(Evaluate, LinearPartBetweenTheKnees) {
    LxSheenSurface surface;
    surface.SetValue(kProfilePar0, 0.5);
    // Knees at 0.25 and 0.75, highest raw value 1.25; q = 0.5 gives 0.25 * 1.5 + 0.25 = 0.625.
    EXPECT_NEAR(rimHeight(surface, 0.5), 0.5 * 0.625 / 1.25, 1e-9);
}

TEST(Evaluate, TheCircleHasOneCoordinate) {
    LxSheenSurface surface;
    surface.SetValue(kSymmetry, 0.0);
    for (int i = 0; i < 16; ++i) {
        const double angle = i * 0.4;
        EXPECT_NEAR(heightAt(surface, 0.5 + 0.27 * std::cos(angle), 0.5 + 0.27 * std::sin(angle)), 0.25,
                    1e-9);
    }
}

TEST(Evaluate, ThreeLobesAreEqual) {
    LxSheenSurface surface;
    surface.SetValue(kSymmetry, 3.0);
    surface.SetValue(kInnerSize1, 0.1);
    for (int i = 0; i < 40; ++i) {
        const double angle = i * 0.1571 + 0.01;
        const double r = 0.05 + 0.01 * (i % 23);
        const double first = heightAt(surface, 0.5 + r * std::cos(angle), 0.5 + r * std::sin(angle));
        for (const double turn : {tau / 3, -tau / 3}) {
            EXPECT_NEAR(heightAt(surface, 0.5 + r * std::cos(angle + turn), 0.5 + r * std::sin(angle + turn)),
                        first, 1e-9);
        }
    }
}

TEST(Evaluate, TiltIsASlopeAndShiftRaisesTheShapeAlone) {
    LxSheenSurface surface;
    surface.SetValue(kElevationAmount, 2.0);
    surface.SetValue(kElevationDirection, 77.0);
    surface.SetValue(kCenter2, 0.125);
    EXPECT_EQ(heightAt(surface, 0.625, 0.5), 0.25 + (0.5 + 0.125));
    EXPECT_EQ(heightAt(surface, 0.9, 0.5), 0.0) << "outside the height is exactly zero";
}

TEST(Evaluate, BendsCrossOver) {
    LxSheenSurface surface;
    surface.SetValue(kHorCurve, 0.5);
    // At v = 0 the weight is 1 and the divisor 1.5 * 1 * 0.5 * 0.5 + 1 = 1.375: the side moves out to 0.33.
    EXPECT_EQ(heightAt(surface, 0.5 + 0.24 * 1.374, 0.5), 0.5);
    EXPECT_LT(heightAt(surface, 0.5 + 0.24 * 1.376, 0.5), 0.5);
    EXPECT_EQ(heightAt(surface, 0.5, 0.5 + 0.31), 0.0) << "the vertical extent stays";
}

TEST(Evaluate, ANegativeBendOutwardsToo) {
    LxSheenSurface surface;
    surface.SetValue(kVertCurve, -0.5);
    // (-1.5) * 1 * -0.5 * -0.5 + 1 = 0.625
    EXPECT_EQ(heightAt(surface, 0.5, 0.5 + 0.24 * 0.624), 0.5);
    EXPECT_LT(heightAt(surface, 0.5, 0.5 + 0.24 * 0.626), 0.5);
}

TEST(Evaluate, ArchesScaleTheHeight) {
    LxSheenSurface surface;
    surface.SetValue(kHorArch, 1.0);
    EXPECT_EQ(heightAt(surface, 0.5, 0.5), 2.0 * 1.0 * 1.0 * 0.5 * 0.5 + 0.5) << "twice the height at u = 0";
    EXPECT_EQ(heightAt(surface, 0.5, 0.6), 1.0) << "shaped along x alone";
    surface.SetValue(kHorArchShape, 3.0);
    EXPECT_EQ(heightAt(surface, 0.5, 0.5), 0.5) << "an unknown shape is the position itself";
}

TEST(Evaluate, CentralArchActsOnThePlateau) {
    LxSheenSurface surface;
    surface.SetValue(kCentralArch, 1.0);
    EXPECT_EQ(heightAt(surface, 0.5, 0.5), (1.0 * 1.0 + 1.0) * 0.5);
    surface.SetValue(kCentralArch, -1.0);
    // Bend(-1, 1) - 1 = (-2) * 1 * -1 * -0.5 = -1 on both axes, so g = 1.
    EXPECT_EQ(heightAt(surface, 0.5, 0.5), 0.5 * (1.0 - 1.0));
}

TEST(Evaluate, TheVerticalRepeatOfThePlateauFlipsItsSign) {
    LxSheenSurface surface;
    surface.SetValue(kInnerSize1, 0.5);
    surface.SetValue(kBorderSize1, 0.0);
    surface.SetValue(kCentralArch, 1.0);
    surface.SetValue(kCentralArchShape, 3.0); // the position itself, sign kept
    surface.SetValue(kCenterPeriod1, 2.0);
    // y = 0.125 / 0.5 = 0.25; q = 1.25 * 2 * 0.5 = 1.25, its fraction 0.25, so Repeat is -0.5 and y 0.5.
    // Bend(1, 0.5) - 1 = 2 * 0.5 * 1 * 0.5 = 0.5.
    const double x = 0.12 / (0.3 - 0.3 * 0.2);
    EXPECT_NEAR(heightAt(surface, 0.62, 0.625), (x * 0.5 + 1.0) * 0.5, 1e-12);
}

TEST(Evaluate, HeightNoiseScalesOrAdds) {
    LxSheenSurface surface;
    surface.SetValue(kNoiseAmount, 0.5);
    LxNoise_2D(77.5, 77.5);
    const double n = LxNoise_2D(0.5 * 0.1, 0.5 * 0.05);
    EXPECT_NEAR(heightAt(surface, 0.6, 0.55), 0.125 * 0.5 * n + 0.5, 1e-12);
    surface.SetValue(kNoiseAmount, -0.5);
    EXPECT_NEAR(heightAt(surface, 0.6, 0.55), -0.125 * n + 0.5, 1e-12);
}

TEST(Evaluate, TakesEveryNumber) {
    lx::test::Random random(7);
    for (int i = 0; i < 20000; ++i) {
        LxSheenSurface surface;
        for (uint32_t k = 0; k < kAlphaBlur; ++k) {
            if (random.word() % 3 == 0)
                surface.SetValue(k, random.anyReal());
        }
        heightAt(surface, random.anyReal(), random.anyReal());
    }
}

TEST(Evaluate, AgreesWithThePlainForm) {
    lx::test::Random random(8);
    int inside = 0;
    for (int i = 0; i < 20000; ++i) {
        LxSheenSurface surface;
        randomize(surface, random, {.wild = i % 4 == 0});
        surface.Prepare();
        ASSERT_EQ(surface.symmetryMask, lx::test::plainSymmetryMask(surface.values)) << "surface " << i;
        for (int k = 0; k < 20; ++k) {
            const double x = random.real(0, 1);
            const double y = random.real(0, 1);
            LxNoise_2D(-321.5, 77.25); // both forms start from the same cache
            const double ours = heightAt(surface, x, y);
            LxNoise_2D(-321.5, 77.25);
            const double plain = lx::test::plainHeight(surface.values, x, y);
            const bool isSame = ours == plain || (std::isnan(ours) && std::isnan(plain));
            ASSERT_TRUE(isSame) << "surface " << i << " at " << x << ", " << y << ": " << ours << ", plain "
                                << plain;
            inside += ours != 0.0;
        }
    }
    EXPECT_GT(inside, 50000) << "enough of the points have a height";
}
