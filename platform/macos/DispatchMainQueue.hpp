#pragma once

#include "CorvaneCore/platform/MainLoop.hpp"

#include <map>
#include <memory>
#include <mutex>

namespace corvane {

/// The main dispatch queue as the application's main queue. Delayed work goes through
/// `dispatch_after_f`, which cannot be withdrawn, so a cancelled item stays queued and finds
/// itself gone from the table when it comes due. `run` and `stop` drive an application event loop
/// for a host without an application object of its own (`corvane agent`), so that its hotkeys
/// arrive; the app bundle runs its application object instead.
class DispatchMainQueue final : public MainLoop {
public:
    DispatchMainQueue();
    ~DispatchMainQueue() override;
    DispatchMainQueue(const DispatchMainQueue&) = delete;
    DispatchMainQueue& operator=(const DispatchMainQueue&) = delete;

    Token schedule(double seconds, std::function<void()> work) override;
    void cancel(Token token) override;
    void post(std::function<void()> work) override;
    void run() override;
    void stop() override;

    /// Shared with every queued item, which may come due after the queue is gone.
    struct Table {
        std::mutex mutex;
        std::map<Token, std::function<void()>> pending;
        Token last = 0;
    };

private:
    std::shared_ptr<Table> table_;
};

} // namespace corvane
