#include "platform/posix/ThreadSerialQueue.hpp"

namespace corvane {

ThreadSerialQueue::ThreadSerialQueue() : worker_([this] { run(); }) {}

ThreadSerialQueue::~ThreadSerialQueue() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_one();
    worker_.join();
}

void ThreadSerialQueue::async(std::function<void()> work) {
    {
        std::lock_guard lock(mutex_);
        pending_.push_back(std::move(work));
    }
    changed_.notify_one();
}

void ThreadSerialQueue::run() {
    for (;;) {
        std::function<void()> work;
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return stopping_ || !pending_.empty(); });
            // Work queued before the stop still runs: it may be the last save of the history.
            if (pending_.empty()) return;
            work = std::move(pending_.front());
            pending_.pop_front();
        }
        work();
    }
}

} // namespace corvane
