#include "platform/posix/ThreadSleeper.hpp"

#include <chrono>
#include <thread>

namespace corvane {

void ThreadSleeper::sleep(double seconds) {
    if (seconds > 0) std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

} // namespace corvane
