#include "platform/posix/SystemClock.hpp"

#include <chrono>

namespace corvane {

Date SystemClock::now() const {
    using namespace std::chrono;
    return Date::fromUnixTime(duration<double>(system_clock::now().time_since_epoch()).count());
}

} // namespace corvane
