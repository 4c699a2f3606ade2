#include "platform/posix/RunLoop.hpp"

namespace corvane {

Scheduler::Token RunLoop::schedule(double seconds, std::function<void()> work) {
    auto due = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(std::max(seconds, 0.0)));
    std::lock_guard lock(mutex_);
    auto token = ++last_;
    pending_.emplace(std::pair{due, token}, std::move(work));
    changed_.notify_all();
    return token;
}

void RunLoop::cancel(Token token) {
    std::lock_guard lock(mutex_);
    std::erase_if(pending_, [&](const auto& entry) { return entry.first.second == token; });
}

void RunLoop::run() {
    std::unique_lock lock(mutex_);
    while (!stopped_) {
        if (pending_.empty()) {
            changed_.wait(lock);
            continue;
        }
        auto due = pending_.begin()->first.first;
        if (Clock::now() < due) {
            changed_.wait_until(lock, due);
            continue;
        }
        auto node = pending_.extract(pending_.begin());
        lock.unlock();
        node.mapped()();
        lock.lock();
    }
}

void RunLoop::stop() {
    std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
}

} // namespace corvane
