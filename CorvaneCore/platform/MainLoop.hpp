#pragma once

#include "CorvaneCore/platform/Scheduler.hpp"

namespace corvane {

/// The main thread's loop, for a host that runs the application without an application
/// object of the system's own: its queue and delayed work, run until stopped.
class MainLoop : public Scheduler, public MainQueue {
public:
    /// Runs queued and delayed work on the calling thread, which is the main thread, until `stop`.
    virtual void run() = 0;
    /// Any thread: `run` returns once the work it is doing is done.
    virtual void stop() = 0;
};

} // namespace corvane
