#pragma once

#include "CorvaneCore/platform/Scheduler.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

namespace corvane {

/// The once-a-second tick of the live time-keeping models. It runs only while something listens,
/// so an idle bar schedules no work. Main thread.
class SecondTicker {
public:
    using Handle = std::uint64_t;

    explicit SecondTicker(Scheduler& scheduler) : scheduler_(scheduler) {}
    ~SecondTicker();
    SecondTicker(const SecondTicker&) = delete;
    SecondTicker& operator=(const SecondTicker&) = delete;

    /// `tick` runs once a second from a second after this call, until removed.
    Handle add(std::function<void()> tick);
    /// Removing from inside a tick is fine; the removed tick does not run again.
    void remove(Handle handle);

    bool isTicking() const { return pending_.has_value(); }

private:
    void fire();

    Scheduler& scheduler_;
    std::map<Handle, std::function<void()>> ticks_;
    Handle lastHandle_ = 0;
    std::optional<Scheduler::Token> pending_;
};

} // namespace corvane
