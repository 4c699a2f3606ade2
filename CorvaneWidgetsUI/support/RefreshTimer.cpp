#include "CorvaneWidgetsUI/support/RefreshTimer.hpp"

namespace corvane {

void RefreshTimer::start(double interval, std::function<void()> tick) {
    stop();
    interval_ = interval;
    tick_ = std::move(tick);
    pending_ = scheduler_.schedule(interval_, [this] { fire(); });
}

void RefreshTimer::stop() {
    if (pending_) scheduler_.cancel(*pending_);
    pending_.reset();
}

void RefreshTimer::setInterval(double interval) {
    interval_ = interval;
    if (!pending_) return;
    scheduler_.cancel(*pending_);
    pending_ = scheduler_.schedule(interval_, [this] { fire(); });
}

void RefreshTimer::fire() {
    pending_ = scheduler_.schedule(interval_, [this] { fire(); });
    // The tick may stop the timer; the copy keeps it alive while it runs.
    auto tick = tick_;
    if (tick) tick();
}

} // namespace corvane
