// A progress display for work that can take over a second: on standard error where that is a terminal, and
// nothing elsewhere. It appears when the work has lasted a while, and goes when it is done or fails.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace tool {

// Shown for as long as it lives, from a thread of its own, so that it moves on also within a long step. Of
// several that live at a time the first is shown, so that work may consist of other work; all belong to one
// thread.
class Progress {
public:
    // `steps` is 0 as long as nobody knows how far the work is: then only the time passes.
    Progress(const std::string &what, int64_t steps);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    // One more step is done.
    void advance() { done_.fetch_add(1, std::memory_order_relaxed); }

    // So many steps of so many are done.
    void report(int64_t done, int64_t steps) {
        steps_.store(steps, std::memory_order_relaxed);
        done_.store(done, std::memory_order_relaxed);
    }

private:
    using Clock = std::chrono::steady_clock;

    void show();
    std::string line() const;

    const std::string what_;
    const bool isShown_;
    const Clock::time_point start_ = Clock::now();
    std::atomic<int64_t> steps_;
    std::atomic<int64_t> done_ = 0;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool isEnded_ = false;
    std::thread thread_;
};

} // namespace tool
