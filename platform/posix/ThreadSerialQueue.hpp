#pragma once

#include "CorvaneCore/platform/SerialQueue.hpp"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace corvane {

/// One worker thread that runs queued work in order. Destruction waits for the queue to empty.
class ThreadSerialQueue final : public SerialQueue {
public:
    ThreadSerialQueue();
    ~ThreadSerialQueue() override;
    ThreadSerialQueue(const ThreadSerialQueue&) = delete;
    ThreadSerialQueue& operator=(const ThreadSerialQueue&) = delete;

    void async(std::function<void()> work) override;

private:
    void run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> pending_;
    bool stopping_ = false;
    std::thread worker_;
};

} // namespace corvane
