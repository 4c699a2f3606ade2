#pragma once

#include "CorvaneCore/platform/FocusStatusProvider.hpp"
#include "CorvaneCore/platform/Log.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"

#include <functional>
#include <memory>

namespace corvane {

/// Polls the Focus state on a timer of its own and reports each change. The timer runs on
/// `queue`, a serial queue apart from the main one; the handler is called there, so it must
/// move its work to the main thread. `start` and `stop` are called from the main thread.
class FocusModeMonitor {
public:
    static constexpr const char* queueLabel = "dev.tessik.corvane.focus-monitor";

    FocusModeMonitor(FocusStatusProvider& provider, Scheduler& queue, Log& log, double interval = 5.0);
    ~FocusModeMonitor();
    FocusModeMonitor(const FocusModeMonitor&) = delete;
    FocusModeMonitor& operator=(const FocusModeMonitor&) = delete;

    /// Stops any earlier run, then polls every `interval` seconds, the first time one interval
    /// from now.
    void start(std::function<void(bool isFocused)> handler);
    void stop();
    /// One poll: an unknown reading forgets the last value without a report, so a reading
    /// that comes back is reported again; a known reading is reported when it differs.
    void tick();

    bool isRunning() const;
    double interval() const;

private:
    struct State;
    // The timer holds the state weakly and never the monitor, so a poll under way on the queue
    // when the monitor goes away finishes on state that is still alive.
    std::shared_ptr<State> state_;
};

} // namespace corvane
