#pragma once

#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/platform/SerialQueue.hpp"

#include <functional>
#include <optional>

namespace corvane {

/// A repeating timer on the scheduler for the connected widgets' periodic refresh. Main thread.
class RefreshTimer {
  public:
    explicit RefreshTimer(Scheduler& scheduler) : scheduler_(scheduler) {}
    ~RefreshTimer() { stop(); }
    RefreshTimer(const RefreshTimer&) = delete;
    RefreshTimer& operator=(const RefreshTimer&) = delete;

    /// `tick` runs every `interval` seconds from now on, replacing any earlier timer.
    void start(double interval, std::function<void()> tick);
    void stop();
    /// Keeps the tick and starts counting the new interval from now; nothing when stopped.
    void setInterval(double interval);
    bool isRunning() const { return pending_.has_value(); }

  private:
    void fire();

    Scheduler& scheduler_;
    double interval_ = 0;
    std::function<void()> tick_;
    std::optional<Scheduler::Token> pending_;
};

/// What a connected widget's live model needs from the platform. Everything must outlive the
/// models.
struct ConnectedWidgetServices {
    Scheduler& scheduler;
    MainQueue& mainQueue;
    /// Where the model's reads run, one at a time.
    SerialQueue& work;
};

} // namespace corvane
