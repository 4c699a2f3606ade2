#pragma once

#include "CorvaneCore/platform/SerialQueue.hpp"

#include <deque>
#include <functional>

namespace corvane {

/// Holds background work until the test runs it, on the test's own thread. Like the real queue,
/// it runs what is left when destroyed.
class ManualSerialQueue final : public SerialQueue {
public:
    ~ManualSerialQueue() override { runAll(); }

    void async(std::function<void()> work) override { pending_.push_back(std::move(work)); }

    /// Runs queued work, including work queued meanwhile, until none is left. Returns how much ran.
    int runAll() {
        int ran = 0;
        while (!pending_.empty()) {
            auto work = std::move(pending_.front());
            pending_.pop_front();
            work();
            ++ran;
        }
        return ran;
    }
    std::size_t pendingCount() const { return pending_.size(); }

private:
    std::deque<std::function<void()>> pending_;
};

} // namespace corvane
