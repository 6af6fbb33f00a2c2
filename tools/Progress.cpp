#include "tools/Progress.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <unistd.h>

namespace tool {
namespace {

using namespace std::chrono_literals;

constexpr auto pause = 100ms;

// Shorter work shows nothing. Tests ask for other milliseconds, and with 0 for all work to be shown.
std::chrono::milliseconds patience() {
    const char *const wanted = std::getenv("OXLUME_PROGRESS_DELAY");
    return wanted != nullptr ? std::chrono::milliseconds(std::atoi(wanted)) : 300ms;
}

int alive = 0;

bool isFirstOnTerminal() {
    return ++alive == 1 && isatty(STDERR_FILENO) != 0;
}

} // namespace

Progress::Progress(const std::string &what, int64_t steps)
    : what_(what.size() <= 30 ? what : what.substr(0, 27) + "..."), isShown_(isFirstOnTerminal()),
      steps_(steps) {
    if (!isShown_)
        return;
    try {
        thread_ = std::thread([this] { show(); });
    } catch (const std::system_error &) { // the work does not depend on its display
    }
}

Progress::~Progress() {
    --alive;
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        isEnded_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

std::string Progress::line() const {
    constexpr size_t width = 30;
    const int64_t seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start_).count();
    std::string text = "\r\033[K";
    if (const int64_t steps = steps_.load(std::memory_order_relaxed); steps > 0) {
        const int64_t done = std::min(done_.load(std::memory_order_relaxed), steps);
        const auto filled = static_cast<size_t>(done) * width / static_cast<size_t>(steps);
        text.append("[").append(filled, '=').append(width - filled, ' ').append("] ");
        text.append(std::to_string(done * 100 / steps)).append(" % ");
    }
    return text.append(what_).append(", ").append(std::to_string(seconds)).append(" s");
}

void Progress::show() {
    std::unique_lock lock(mutex_);
    const auto isEnded = [this] { return isEnded_; };
    if (const auto delay = patience(); delay > 0ms && ended_.wait_for(lock, delay, isEnded))
        return;
    do {
        std::fputs(line().c_str(), stderr);
    } while (!ended_.wait_for(lock, pause, isEnded));
    std::fputs("\r\033[K", stderr); // leaves an empty line
}

} // namespace tool
