#include "CorvaneCore/widgets/timer/TimerRun.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/timer/RunCoding.hpp"

#include <cmath>
#include <cstdio>

namespace corvane {

std::optional<Date> TimerRun::endDate() const {
    if (mode != Mode::countdown || !startedAt) return std::nullopt;
    return *startedAt + (duration - accumulated);
}

double TimerRun::progress(Date now) const {
    auto counted = elapsed(now);
    if (mode == Mode::stopwatch) return std::fmod(counted, 60) / 60;
    if (duration <= 0) return 1;
    return std::min(counted / duration, 1.0);
}

std::int64_t TimerRun::displayedSeconds(Date now) const {
    if (mode == Mode::stopwatch) return static_cast<std::int64_t>(std::floor(elapsed(now)));
    return static_cast<std::int64_t>(std::ceil(remaining(now)));
}

void TimerRun::start(Date now) {
    if (isRunning()) return;
    if (isFinished(now)) accumulated = 0;
    startedAt = now;
}

void TimerRun::startCountdown(Date now, double seconds) {
    mode = Mode::countdown;
    duration = seconds;
    accumulated = 0;
    startedAt = now;
}

std::string TimerRun::format(std::int64_t seconds) {
    seconds = std::max<std::int64_t>(seconds, 0);
    char buffer[48];
    if (seconds < 3600)
        std::snprintf(buffer, sizeof buffer, "%d:%02d", static_cast<int>(seconds / 60), static_cast<int>(seconds % 60));
    else
        std::snprintf(buffer, sizeof buffer, "%lld:%02d:%02d", static_cast<long long>(seconds / 3600),
                      static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    return buffer;
}

std::string StopwatchRun::text(double seconds, bool withTenths) {
    auto t = std::max(seconds, 0.0);
    auto whole = static_cast<long long>(std::floor(t));
    char buffer[48];
    if (whole >= 3600)
        std::snprintf(buffer, sizeof buffer, "%lld:%02d:%02d", whole / 3600, static_cast<int>(whole / 60 % 60),
                      static_cast<int>(whole % 60));
    else if (withTenths)
        std::snprintf(buffer, sizeof buffer, "%02d:%02d.%d", static_cast<int>(whole / 60), static_cast<int>(whole % 60),
                      static_cast<int>((t - std::floor(t)) * 10));
    else
        std::snprintf(buffer, sizeof buffer, "%02d:%02d", static_cast<int>(whole / 60), static_cast<int>(whole % 60));
    return buffer;
}

std::string encodeTimerRun(const TimerRun& run) {
    Json object = Json::object({{"mode", std::string(caseName(run.mode))}, {"duration", run.duration}});
    putRunClock(object, run);
    return object.dump();
}

TimerRun decodeTimerRun(std::string_view text) {
    auto json = parseJson(text);
    JsonReader reader(json);
    reader.object();
    TimerRun run;
    if (auto mode = reader.optional("mode"))
        run.mode = mode->rawValue<TimerRun::Mode>(fromCaseName<TimerRun::Mode>, EnumCases<TimerRun::Mode>::typeName);
    if (auto duration = reader.optional("duration")) run.duration = duration->number();
    readRunClock(reader, run);
    return run;
}

std::string encodeStopwatchRun(const StopwatchRun& run) {
    Json object = Json::object({{"laps", run.laps}});
    putRunClock(object, run);
    return object.dump();
}

StopwatchRun decodeStopwatchRun(std::string_view text) {
    auto json = parseJson(text);
    JsonReader reader(json);
    reader.object();
    StopwatchRun run;
    readRunClock(reader, run);
    if (auto laps = reader.optional("laps"))
        for (const auto& lap : laps->array()) run.laps.push_back(lap.number());
    return run;
}

} // namespace corvane
