#include "platform/posix/TerminationSignals.hpp"

#include <pthread.h>

namespace corvane {

TerminationSignals::TerminationSignals(std::function<void(int signal)> onSignal) {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGINT);
    sigaddset(&signals_, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
    thread_ = std::thread([this, onSignal = std::move(onSignal)] {
        int signal = 0;
        if (sigwait(&signals_, &signal) != 0 || closing_) return;
        onSignal(signal);
    });
}

TerminationSignals::~TerminationSignals() {
    // A signal of our own wakes the thread if nothing else did; it sees `closing_` and ends.
    closing_ = true;
    pthread_kill(thread_.native_handle(), SIGTERM);
    thread_.join();
}

} // namespace corvane
