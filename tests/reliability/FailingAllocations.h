// Memory that runs out on demand: every allocation that the library's own code makes is counted, and the one
// that the test names fails. The library allocates in three ways, and all of them come here: LxMem_*, C++'s
// operator new, and pugixml's functions for its trees. Memory that other libraries take for themselves is not
// counted.
#pragma once

#include <cstdint>

namespace lx::test {

// While one lives, allocations are counted from 0. One object at a time.
class FailingAllocations {
public:
    static constexpr int64_t never = -1;

    // The allocation of this number fails, and with `onwards` all after it too.
    explicit FailingAllocations(int64_t failing, bool onwards = false);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations &) = delete;
    FailingAllocations &operator=(const FailingAllocations &) = delete;

    int64_t asked() const; // how many allocations there were so far
};

// Blocks handed out in the three ways and not yet returned.
int64_t blocksAlive();

} // namespace lx::test
