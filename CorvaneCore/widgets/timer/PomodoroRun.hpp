#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/timer/RunClock.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

enum class PomodoroPhase { focus, shortBreak, longBreak };

template <> struct EnumCases<PomodoroPhase> {
    static constexpr std::string_view typeName = "PomodoroPhase";
    static constexpr std::array<std::string_view, 3> names = {"focus", "shortBreak", "longBreak"};
};

inline bool isBreak(PomodoroPhase phase) { return phase != PomodoroPhase::focus; }

/// The pomodoro widget's run: the current phase with its clock, and the day's count.
struct PomodoroRun : RunClock {
    static constexpr std::string_view defaultsKeyPrefix = "dev.tessik.corvane.pomodoroRun.";

    PomodoroPhase phase = PomodoroPhase::focus;
    /// Focus sessions completed since the last long break.
    int cycle = 0;
    /// Focus sessions completed on `day`.
    int sessionsToday = 0;
    Date day;

    static std::string defaultsKey(const Uuid& widgetId) { return std::string(defaultsKeyPrefix) + widgetId.string(); }

    bool isBreak() const { return corvane::isBreak(phase); }

    /// The phase's length, never under a second.
    double length(const PomodoroSettings& settings) const;
    double remaining(Date now, const PomodoroSettings& settings) const;
    bool isFinished(Date now, const PomodoroSettings& settings) const;
    std::optional<Date> endDate(const PomodoroSettings& settings) const;
    double progress(Date now, const PomodoroSettings& settings) const;
    std::int64_t displayedSeconds(Date now, const PomodoroSettings& settings) const;

    /// After a break, focus; after focus a long break every `cyclesBeforeLongBreak` sessions
    /// (taken as at least 2, so a long break never follows every session), else a short one.
    PomodoroPhase nextPhase(const PomodoroSettings& settings) const;

    void rollDay(Date now, const Calendar& calendar);
    void start(Date now, const Calendar& calendar);
    /// `reset` restarts the phase only; phase, cycle and counts stay.
    void resetEverything(Date now);
    /// Ends the phase. Only a `counting` end of focus adds a session; breaks start by themselves
    /// when the settings say so, focus never does.
    void advance(Date now, const PomodoroSettings& settings, bool counting, const Calendar& calendar);

    static std::string format(std::int64_t seconds);

    bool operator==(const PomodoroRun&) const = default;
};

/// JSON form kept in the user defaults; see `encodeTimerRun`.
std::string encodePomodoroRun(const PomodoroRun& run);
PomodoroRun decodePomodoroRun(std::string_view text);

} // namespace corvane
