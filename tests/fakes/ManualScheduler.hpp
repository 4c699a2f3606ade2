#pragma once

#include "CorvaneCore/platform/Scheduler.hpp"
#include "fakes/ManualClock.hpp"

#include <map>
#include <utility>

namespace corvane {

/// Runs scheduled work only when the test moves time on, in due order.
class ManualScheduler final : public Scheduler, public MainQueue {
public:
    explicit ManualScheduler(ManualClock& clock) : clock_(clock) {}

    Token schedule(double seconds, std::function<void()> work) override {
        auto token = ++last_;
        pending_.emplace(std::pair{clock_.now().sinceReferenceDate + std::max(seconds, 0.0), token}, std::move(work));
        return token;
    }
    void cancel(Token token) override {
        std::erase_if(pending_, [&](const auto& entry) { return entry.first.second == token; });
    }
    void post(std::function<void()> work) override { schedule(0, std::move(work)); }

    /// Moves the clock by `seconds`, running everything that falls due on the way.
    void advance(double seconds) {
        auto end = clock_.now().sinceReferenceDate + seconds;
        while (!pending_.empty() && pending_.begin()->first.first <= end) {
            auto node = pending_.extract(pending_.begin());
            clock_.set(Date{std::max(clock_.now().sinceReferenceDate, node.key().first)});
            node.mapped()();
        }
        clock_.set(Date{end});
    }
    void runPending() { advance(0); }
    std::size_t pendingCount() const { return pending_.size(); }

private:
    ManualClock& clock_;
    Token last_ = 0;
    std::map<std::pair<double, Token>, std::function<void()>> pending_;
};

} // namespace corvane
