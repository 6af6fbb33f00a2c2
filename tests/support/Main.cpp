// The main function of all test programs.
//
// OXLUME_TEST_SEED sets the seed of random input. OXLUME_VECTOR_LEVEL caps the instruction set ("baseline" or
// "avx2"), so that one machine can test every level; the library itself reads no environment variable.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

#include "foundation/VectorLevel.h"
#include "tests/support/Random.h"

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (const char *name = std::getenv("OXLUME_VECTOR_LEVEL"); name != nullptr) {
        lx::capVectorLevel(std::strcmp(name, "baseline") == 0 ? lx::VectorLevel::baseline
                                                              : lx::VectorLevel::avx2);
    }
    if (!testing::GTEST_FLAG(list_tests)) {
        std::printf("seed %llu, vector level %s\n", static_cast<unsigned long long>(lx::test::testSeed()),
                    lx::vectorLevelName(lx::vectorLevel()));
    }
    return RUN_ALL_TESTS();
}
