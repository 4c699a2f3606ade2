// The timer, stopwatch and pomodoro runs kept in the user defaults. The first byte picks the
// record.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/timer/PomodoroRun.hpp"
#include "CorvaneCore/widgets/timer/TimerRun.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

namespace {

template <typename Decode, typename Encode> void roundTrip(std::string_view text, Decode decode, Encode encode) {
    decltype(decode(text)) value;
    try {
        value = decode(text);
    } catch (const DecodingError&) {
        return;
    }
    FUZZ_CHECK(decode(encode(value)) == value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    auto text = fuzz::text(data + 1, size - 1);
    switch (data[0] % 3) {
    case 0: roundTrip(text, decodeTimerRun, encodeTimerRun); break;
    case 1: roundTrip(text, decodeStopwatchRun, encodeStopwatchRun); break;
    default: roundTrip(text, decodePomodoroRun, encodePomodoroRun); break;
    }
    return 0;
}
