// A progress bar for work that can take over a second. Shown on standard error, and only where that is a
// terminal.
#pragma once

#include <cstdio>
#include <string>
#include <unistd.h>

namespace tool {

class Progress {
public:
    explicit Progress(int steps) : steps_(steps), isShown_(isatty(STDERR_FILENO) != 0) {}
    ~Progress() {
        if (isShown_)
            std::fputs("\r\033[K", stderr); // leaves an empty line
    }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    // One more step is done.
    void advance() {
        ++done_;
        if (!isShown_)
            return;
        constexpr int width = 40;
        const int filled = steps_ > 0 ? done_ * width / steps_ : width;
        const std::string bar = std::string(static_cast<size_t>(filled), '=') +
                                std::string(static_cast<size_t>(width - filled), ' ');
        std::fprintf(stderr, "\r[%s] %d of %d", bar.c_str(), done_, steps_);
    }

private:
    const int steps_;
    const bool isShown_;
    int done_ = 0;
};

} // namespace tool
