#pragma once

#include <cstdint>
#include <functional>

namespace corvane {

/// Delayed, cancelable work on the main queue. Tests drive a manual scheduler with its clock.
class Scheduler {
public:
    using Token = std::uint64_t;

    virtual ~Scheduler() = default;
    /// Runs `work` on the main queue after `seconds` (as soon as possible for zero or less).
    /// Any thread.
    virtual Token schedule(double seconds, std::function<void()> work) = 0;
    /// Cancelling work that already ran, or an unknown token, does nothing. Any thread.
    virtual void cancel(Token token) = 0;
};

/// The main thread's queue of work.
class MainQueue {
public:
    virtual ~MainQueue() = default;
    /// Runs `work` on the main thread, after what is queued already. Any thread.
    virtual void post(std::function<void()> work) = 0;
};

} // namespace corvane
