#include "platform/posix/SerialWorkQueue.hpp"

namespace corvane {

SerialWorkQueue::~SerialWorkQueue() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    queued_.notify_all();
    if (thread_.joinable()) thread_.join();
}

void SerialWorkQueue::async(std::function<void()> work) {
    std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(work));
    if (!thread_.joinable()) thread_ = std::thread([this] { drain(); });
    queued_.notify_one();
}

void SerialWorkQueue::drain() {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(mutex_);
            queued_.wait(lock, [this] { return stopping_ || !jobs_.empty(); });
            if (jobs_.empty()) return;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        // A job that throws would end the program from this thread; outside sources already turn
        // their failures into results, so anything else is dropped with the job.
        try {
            job();
        } catch (...) {
        }
    }
}

} // namespace corvane
