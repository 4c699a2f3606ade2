#pragma once

#include "CorvaneCore/platform/MainLoop.hpp"

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>

namespace corvane {

/// A main queue and scheduler for processes without a system run loop: the thread that calls
/// `run` is the main thread.
class RunLoop final : public MainLoop {
public:
    Token schedule(double seconds, std::function<void()> work) override;
    void cancel(Token token) override;
    void post(std::function<void()> work) override { schedule(0, std::move(work)); }

    /// Runs work as it falls due until `stop`.
    void run() override;
    /// Any thread; `run` returns after the work it is doing.
    void stop() override;

private:
    using Clock = std::chrono::steady_clock;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::pair<Clock::time_point, Token>, std::function<void()>> pending_;
    Token last_ = 0;
    bool stopped_ = false;
};

} // namespace corvane
