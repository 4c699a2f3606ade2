#include "CorvaneCore/automation/FocusModeMonitor.hpp"

#include <cstdio>
#include <mutex>
#include <optional>

namespace corvane {

struct FocusModeMonitor::State : std::enable_shared_from_this<State> {
    State(FocusStatusProvider& p, Scheduler& q, Log& l, double i) : provider(p), queue(q), log(l), interval(i) {}

    void scheduleTick(std::uint64_t forGeneration) {
        std::lock_guard lock(mutex);
        if (generation != forGeneration) return;
        std::weak_ptr<State> weak = shared_from_this();
        timer = queue.schedule(interval, [weak, forGeneration] {
            auto state = weak.lock();
            if (!state) return;
            {
                std::lock_guard guard(state->mutex);
                if (state->generation != forGeneration) return;
            }
            state->tick();
            state->scheduleTick(forGeneration);
        });
    }

    void tick() {
        auto reading = provider.isFocused();
        std::function<void(bool)> report;
        {
            std::lock_guard lock(mutex);
            if (!reading) {
                lastValue.reset();
                return;
            }
            if (lastValue == reading) return;
            lastValue = reading;
            report = handler;
        }
        if (!report) return;
        log.info("focus", std::string("focus changed: isFocused=") + (*reading ? "true" : "false"));
        report(*reading);
    }

    /// Cancels the timer; true when there was one.
    bool cancel() {
        std::lock_guard lock(mutex);
        ++generation;
        if (!timer) return false;
        queue.cancel(*timer);
        timer.reset();
        return true;
    }

    FocusStatusProvider& provider;
    Scheduler& queue;
    Log& log;
    const double interval;
    mutable std::mutex mutex;
    std::function<void(bool)> handler;
    std::optional<bool> lastValue;
    std::optional<Scheduler::Token> timer;
    /// Bumped by every start and stop, so that a poll already under way when the timer is
    /// cancelled does not schedule the next one.
    std::uint64_t generation = 0;
};

FocusModeMonitor::FocusModeMonitor(FocusStatusProvider& provider, Scheduler& queue, Log& log, double interval)
    : state_(std::make_shared<State>(provider, queue, log, interval)) {}

FocusModeMonitor::~FocusModeMonitor() { state_->cancel(); }

void FocusModeMonitor::start(std::function<void(bool)> handler) {
    stop();
    std::uint64_t generation = 0;
    {
        std::lock_guard lock(state_->mutex);
        state_->handler = std::move(handler);
        generation = state_->generation;
    }
    state_->scheduleTick(generation);
    char message[64];
    std::snprintf(message, sizeof message, "focus monitor started (interval=%fs)", state_->interval);
    state_->log.info("focus", message);
}

void FocusModeMonitor::stop() {
    if (state_->cancel()) state_->log.info("focus", "focus monitor stopped");
}

void FocusModeMonitor::tick() { state_->tick(); }

bool FocusModeMonitor::isRunning() const {
    std::lock_guard lock(state_->mutex);
    return state_->timer.has_value();
}

double FocusModeMonitor::interval() const { return state_->interval; }

} // namespace corvane
