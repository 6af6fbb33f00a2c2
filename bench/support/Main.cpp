// The main function of all benchmark programs. OXLUME_VECTOR_LEVEL in the environment caps the instruction
// set
// ("baseline" or "avx2").

#include <cstdlib>
#include <cstring>

#include <benchmark/benchmark.h>

#include "foundation/VectorLevel.h"

int main(int argc, char **argv) {
    if (const char *name = std::getenv("OXLUME_VECTOR_LEVEL");
        name != nullptr && std::strcmp(name, "baseline") == 0)
        lx::capVectorLevel(lx::VectorLevel::baseline);
    benchmark::AddCustomContext("vector level", lx::vectorLevelName(lx::vectorLevel()));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
