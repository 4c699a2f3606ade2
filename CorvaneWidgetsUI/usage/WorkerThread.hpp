#pragma once

#include <cstddef>
#include <functional>
#include <memory>

namespace corvane {

/// A thread for one of the transcript scan's workers, joined when destroyed.
///
/// Linux's scheduler tends to queue a new thread on the processor of the thread that made it, and
/// a scan's caller goes straight on to tens of milliseconds of work there: the two then share one
/// processor until a balancing tick, several milliseconds later, moves one of them. So there a
/// worker starts on another processor than its creator's (the `index`th other, round the allowed
/// ones) and may move freely once it runs. Elsewhere it starts where the system puts it.
class WorkerThread {
public:
    /// Throws `std::system_error` when no thread can be started.
    WorkerThread(std::function<void()> body, std::size_t index);
    ~WorkerThread();
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace corvane
