#include "tests/support/Random.h"

#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>

namespace lx::test {

uint64_t testSeed() {
    static const uint64_t seed = [] {
        const char *text = std::getenv("OXLUME_TEST_SEED");
        return text != nullptr ? std::strtoull(text, nullptr, 0) : 20261121;
    }();
    return seed;
}

uint8_t Random::byte() {
    static constexpr uint8_t edges[] = {0, 1, 127, 128, 254, 255};
    return coin() ? edges[word() % std::size(edges)] : static_cast<uint8_t>(word());
}

int32_t Random::anyInteger() {
    switch (word() % 4) {
    case 0:
        return static_cast<int32_t>(word());
    case 1:
        return integer(-4, 4);
    case 2:
        return std::numeric_limits<int32_t>::min() + integer(0, 3);
    default:
        return std::numeric_limits<int32_t>::max() - integer(0, 3);
    }
}

double Random::anyReal() {
    static constexpr double special[] = {0.0,
                                         -0.0,
                                         0.5,
                                         -0.5,
                                         2147483647.0,
                                         2147483648.0,
                                         -2147483648.0,
                                         -2147483649.0,
                                         std::numeric_limits<double>::max(),
                                         std::numeric_limits<double>::min(),
                                         std::numeric_limits<double>::infinity(),
                                         -std::numeric_limits<double>::infinity(),
                                         std::numeric_limits<double>::quiet_NaN()};
    switch (word() % 4) {
    case 0:
        return special[word() % std::size(special)];
    case 1:
        return integer(-1000, 1000) * 0.5;
    case 2:
        return std::ldexp(real(-1, 1), integer(-60, 80));
    default:
        return real(-1000, 1000);
    }
}

} // namespace lx::test
