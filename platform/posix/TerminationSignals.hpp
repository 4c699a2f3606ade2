#pragma once

#include <atomic>
#include <csignal>
#include <functional>
#include <thread>

namespace corvane {

/// Turns SIGINT and SIGTERM into a call on a thread of its own. A signal then never lands in the
/// middle of the main thread's work: the call only asks the main loop to stop, and the loop
/// finishes what it is doing first, a save included. Make it before any other thread starts,
/// since threads inherit the signals blocked here.
class TerminationSignals {
public:
    /// `onSignal` runs at most once, on the signal thread, with the signal's number.
    explicit TerminationSignals(std::function<void(int signal)> onSignal);
    /// Ends the signal thread; the signals stay blocked, as the process is about to end.
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    sigset_t signals_;
    std::thread thread_;
    std::atomic<bool> closing_{false};
};

} // namespace corvane
