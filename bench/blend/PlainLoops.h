// Modes on straight alphas as anyone would write them, in loops that the compiler turns into vectors by
// itself: the floor of floors. Compiled once per instruction set, as the library's vectors are.
#pragma once

#include <cstddef>
#include <cstdint>

#include "blend/Mode.h"

namespace bench {

// Blends b onto a, pixels of four bytes in words.
using PlainLoop = void (*)(uint32_t *a, const uint32_t *b, size_t pixels);

namespace baseline {
PlainLoop plainLoop(lx::Mode mode); // null where there is none
}
namespace avx2 {
PlainLoop plainLoop(lx::Mode mode);
}

} // namespace bench
