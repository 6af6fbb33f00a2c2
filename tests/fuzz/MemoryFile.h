// A file that exists in memory alone, for readers that want a path.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace lx::fuzz {

class MemoryFile {
public:
    MemoryFile() : descriptor_(memfd_create("input", 0)) {}
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile() { close(descriptor_); }

    // Replaces what the file holds. Answers its path.
    const std::string &store(const uint8_t *data, size_t size) {
        if (ftruncate(descriptor_, 0) != 0 ||
            pwrite(descriptor_, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
        return path_;
    }

private:
    int descriptor_;
    std::string path_ = "/proc/self/fd/" + std::to_string(descriptor_);
};

} // namespace lx::fuzz
