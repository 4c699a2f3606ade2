// The timer, stopwatch and pomodoro runs kept in the user defaults. The first byte picks the
// record.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/timer/PomodoroRun.hpp"
#include "CorvaneCore/widgets/timer/TimerRun.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    auto text = fuzz::text(data + 1, size - 1);
    switch (data[0] % 3) {
    case 0: fuzz::roundTrip(text, decodeTimerRun, encodeTimerRun); break;
    case 1: fuzz::roundTrip(text, decodeStopwatchRun, encodeStopwatchRun); break;
    default: fuzz::roundTrip(text, decodePomodoroRun, encodePomodoroRun); break;
    }
    return 0;
}
