#pragma once

#include "CorvaneCore/platform/WorkQueue.hpp"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace corvane {

/// A work queue on a thread of its own, started with the first job. Destroying the queue waits
/// for the jobs already queued.
class SerialWorkQueue final : public WorkQueue {
  public:
    /// `label` names the queue in crash reports and logs ("dev.tessik.corvane.github").
    explicit SerialWorkQueue(std::string label) : label_(std::move(label)) {}
    ~SerialWorkQueue() override;
    SerialWorkQueue(const SerialWorkQueue&) = delete;
    SerialWorkQueue& operator=(const SerialWorkQueue&) = delete;

    void async(std::function<void()> work) override;
    const std::string& label() const { return label_; }

  private:
    void drain();

    std::string label_;
    std::mutex mutex_;
    std::condition_variable queued_;
    std::deque<std::function<void()>> jobs_;
    bool stopping_ = false;
    std::thread thread_;
};

} // namespace corvane
