#include "CorvaneCore/widgets/timer/PomodoroRun.hpp"

#include "CorvaneCore/widgets/timer/RunCoding.hpp"
#include "CorvaneCore/widgets/timer/TimerRun.hpp"

#include <cmath>

namespace corvane {

double PomodoroRun::length(const PomodoroSettings& settings) const {
    double seconds = settings.focus;
    if (phase == PomodoroPhase::shortBreak) seconds = settings.shortBreak;
    if (phase == PomodoroPhase::longBreak) seconds = settings.longBreak;
    return std::max(seconds, 1.0);
}

double PomodoroRun::remaining(Date now, const PomodoroSettings& settings) const {
    return std::max(0.0, length(settings) - elapsed(now));
}

bool PomodoroRun::isFinished(Date now, const PomodoroSettings& settings) const {
    return length(settings) <= elapsed(now);
}

std::optional<Date> PomodoroRun::endDate(const PomodoroSettings& settings) const {
    if (!startedAt) return std::nullopt;
    return *startedAt + (length(settings) - accumulated);
}

double PomodoroRun::progress(Date now, const PomodoroSettings& settings) const {
    return std::min(elapsed(now) / length(settings), 1.0);
}

std::int64_t PomodoroRun::displayedSeconds(Date now, const PomodoroSettings& settings) const {
    return static_cast<std::int64_t>(std::ceil(remaining(now, settings)));
}

PomodoroPhase PomodoroRun::nextPhase(const PomodoroSettings& settings) const {
    if (isBreak()) return PomodoroPhase::focus;
    const int sessions = cycle + 1;
    const int perLongBreak = std::max(settings.cyclesBeforeLongBreak, 2);
    return sessions % perLongBreak == 0 ? PomodoroPhase::longBreak : PomodoroPhase::shortBreak;
}

void PomodoroRun::rollDay(Date now, const Calendar& calendar) {
    if (calendar.isSameDay(day, now)) return;
    sessionsToday = 0;
    day = now;
}

void PomodoroRun::start(Date now, const Calendar& calendar) {
    if (isRunning()) return;
    rollDay(now, calendar);
    startedAt = now;
}

void PomodoroRun::resetEverything(Date now) {
    phase = PomodoroPhase::focus;
    startedAt.reset();
    accumulated = 0;
    cycle = 0;
    sessionsToday = 0;
    day = now;
}

void PomodoroRun::advance(Date now, const PomodoroSettings& settings, bool counting, const Calendar& calendar) {
    rollDay(now, calendar);
    const auto next = nextPhase(settings);
    if (phase == PomodoroPhase::longBreak) {
        cycle = 0;
    } else if (phase == PomodoroPhase::focus && counting) {
        cycle += 1;
        sessionsToday += 1;
    }
    phase = next;
    accumulated = 0;
    if (corvane::isBreak(next) && settings.startsBreaksAutomatically)
        startedAt = now;
    else
        startedAt.reset();
}

std::string PomodoroRun::format(std::int64_t seconds) { return TimerRun::format(seconds); }

std::string encodePomodoroRun(const PomodoroRun& run) {
    Json object = Json::object({{"phase", std::string(caseName(run.phase))},
                                {"cycle", run.cycle},
                                {"sessionsToday", run.sessionsToday},
                                {"day", run.day.sinceReferenceDate}});
    putRunClock(object, run);
    return object.dump();
}

PomodoroRun decodePomodoroRun(std::string_view text) {
    auto json = parseJson(text);
    JsonReader reader(json);
    reader.object();
    PomodoroRun run;
    if (auto phase = reader.optional("phase"))
        run.phase = phase->rawValue<PomodoroPhase>(fromCaseName<PomodoroPhase>, EnumCases<PomodoroPhase>::typeName);
    readRunClock(reader, run);
    if (auto cycle = reader.optional("cycle")) run.cycle = std::max(0, cycle->integer<int>());
    if (auto sessions = reader.optional("sessionsToday")) run.sessionsToday = std::max(0, sessions->integer<int>());
    if (auto day = reader.optional("day")) run.day = Date{day->number()};
    return run;
}

} // namespace corvane
