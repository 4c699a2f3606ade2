#pragma once

#include "CorvaneCore/platform/WorkQueue.hpp"

#include <deque>
#include <functional>

namespace corvane {

/// Holds jobs until the test runs them, so it can look at a model while its load is under way.
class ManualWorkQueue final : public WorkQueue {
  public:
    void async(std::function<void()> work) override { jobs_.push_back(std::move(work)); }

    /// Runs the queued jobs, and any they queue, in order.
    void runAll() {
        while (!jobs_.empty()) {
            auto job = std::move(jobs_.front());
            jobs_.pop_front();
            job();
        }
    }
    std::size_t pendingCount() const { return jobs_.size(); }

  private:
    std::deque<std::function<void()>> jobs_;
};

} // namespace corvane
