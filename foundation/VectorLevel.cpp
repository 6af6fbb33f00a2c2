#include "foundation/VectorLevel.h"

#include <algorithm>
#include <atomic>

namespace lx {
namespace {

constinit std::atomic<int> chosen = -1;

} // namespace

VectorLevel bestVectorLevel() {
#if defined(__x86_64__)
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi2"))
        return VectorLevel::avx2;
#endif
    return VectorLevel::baseline;
}

VectorLevel vectorLevel() {
    int level = chosen.load(std::memory_order_relaxed);
    if (level < 0) {
        level = static_cast<int>(bestVectorLevel());
        chosen.store(level, std::memory_order_relaxed);
    }
    return static_cast<VectorLevel>(level);
}

void capVectorLevel(VectorLevel cap) {
    chosen.store(static_cast<int>(std::min(cap, bestVectorLevel())), std::memory_order_relaxed);
}

const char *vectorLevelName(VectorLevel level) {
    return level == VectorLevel::avx2 ? "avx2" : "baseline";
}

} // namespace lx
