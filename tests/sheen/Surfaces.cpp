#include "tests/sheen/Surfaces.h"

namespace lx::test {
namespace {

bool isNoise(uint32_t index) {
    return index >= kNoiseAmount && index <= kNoiseHorCurve;
}

bool spoilsSymmetry(uint32_t index) {
    switch (index) {
    case kCenter0:
    case kCenter1:
    case kRotation:
    case kCenterRotation:
    case kCenterRotationPeriod:
    case kSwirl:
    case kJitter:
    case kJitter2:
    case kVertSheer:
    case kHorSheer:
    case kVertPerspect:
    case kHorPerspect:
    case kElevationAmount:
        return true;
    default:
        return false;
    }
}

double someValue(uint32_t index, Random &random) {
    const LxSheenParameter &row = sheenParameters[index];
    switch (random.word() % 6) {
    case 0:
        return row.minimum;
    case 1:
        return row.maximum;
    case 2:
        return random.integer(-1, 3);
    case 3:
        return random.real(row.minimum - 0.5, row.maximum + 0.5);
    default:
        return random.real(row.minimum, row.maximum);
    }
}

} // namespace

void randomize(LxSheenSurface &surface, Random &random, SurfaceKind kind) {
    // Few active parameters reach the plain paths, many their combinations.
    const uint32_t rarity = 1 + random.word() % 8;
    for (uint32_t i = 0; i < kAlphaBlur; ++i) {
        if (random.word() % rarity != 0)
            continue;
        if (!kind.noisy && isNoise(i))
            continue;
        if (kind.symmetrical && spoilsSymmetry(i) && random.word() % 8 != 0)
            continue;
        surface.SetValue(i, kind.wild && random.word() % 4 == 0 ? random.anyReal() : someValue(i, random));
    }
    if (random.coin())
        surface.SetValue(kSymmetry, random.integer(0, 7));
    if (kind.symmetrical && random.coin())
        surface.SetValue(kSymmetry, 2 * random.integer(0, 4));
}

} // namespace lx::test
