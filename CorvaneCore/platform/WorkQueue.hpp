#pragma once

#include <functional>

namespace corvane {

/// A serial queue off the main thread: jobs run one at a time, in the order given, so a source
/// that reads files, the network or a tool never has two reads under way at once.
class WorkQueue {
  public:
    virtual ~WorkQueue() = default;
    /// Queues `work` and returns at once. Any thread.
    virtual void async(std::function<void()> work) = 0;
};

} // namespace corvane
