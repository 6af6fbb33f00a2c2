// Which of the compiled instruction sets the library calls. See cmake/VectorLevels.cmake for how a file is
// compiled once per level; its caller keeps a table of functions per level and asks vectorLevel() once per
// call:
//
//     namespace baseline { void addRow(...); }
//     namespace avx2 { void addRow(...); }
//     constexpr auto addRows = LX_VECTOR_TABLE(addRow);
//     addRows[vectorLevelIndex()](...);
#pragma once

#include <cstddef>

namespace lx {

enum class VectorLevel { baseline, avx2 };

// The best level that the processor has, or the cap if that is lower.
VectorLevel vectorLevel();

inline size_t vectorLevelIndex() {
    return static_cast<size_t>(vectorLevel());
}

// The best level that the processor has, whatever the cap.
VectorLevel bestVectorLevel();

// Calls no level above `cap`: for tests and benchmarks, which so reach every level on one machine.
void capVectorLevel(VectorLevel cap);

// "baseline", "avx2".
const char *vectorLevelName(VectorLevel level);

} // namespace lx

// One function of every compiled level, in the order of VectorLevel.
#if defined(__x86_64__)
#define LX_VECTOR_TABLE(function)                                                                            \
    { baseline::function, avx2::function }
#else
#define LX_VECTOR_TABLE(function)                                                                            \
    { baseline::function, baseline::function }
#endif
