#pragma once

#include <functional>

namespace corvane {

/// Background work run one item at a time, in order, off the main thread. Destroying the queue
/// runs what was queued before it returns, so queued work may use objects that outlive the queue.
/// Tests use a manual queue that runs only when told.
class SerialQueue {
public:
    virtual ~SerialQueue() = default;
    /// Any thread, work included.
    virtual void async(std::function<void()> work) = 0;
};

} // namespace corvane
