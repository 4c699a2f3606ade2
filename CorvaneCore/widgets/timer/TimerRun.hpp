#pragma once

#include "CorvaneCore/support/Uuid.hpp"
#include "CorvaneCore/widgets/WidgetSettings.hpp"
#include "CorvaneCore/widgets/timer/RunClock.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The timer widget's run: a countdown, or a stopwatch sweeping the minute.
struct TimerRun : RunClock {
    enum class Mode { countdown, stopwatch };
    static constexpr std::string_view defaultsKeyPrefix = "dev.tessik.corvane.timerRun.";

    Mode mode = Mode::countdown;
    /// Countdown length in seconds.
    double duration = TimerSettings::defaultPresets.front();

    static std::string defaultsKey(const Uuid& widgetId) { return std::string(defaultsKeyPrefix) + widgetId.string(); }

    double remaining(Date now) const { return std::max(0.0, duration - elapsed(now)); }
    /// A stopwatch-mode run never finishes.
    bool isFinished(Date now) const { return mode == Mode::countdown && duration <= elapsed(now); }
    /// When a running countdown reaches zero.
    std::optional<Date> endDate() const;
    /// Countdown: the share used up. Stopwatch: the sweep of the current minute.
    double progress(Date now) const;
    /// Countdown: whole seconds left, rounded up so "0:00" only shows at the end. Stopwatch:
    /// whole seconds counted.
    std::int64_t displayedSeconds(Date now) const;

    /// Starting a finished countdown starts it over.
    void start(Date now);
    void startCountdown(Date now, double seconds);

    /// "m:ss" under an hour, "h:mm:ss" from there.
    static std::string format(std::int64_t seconds);

    bool operator==(const TimerRun&) const = default;
};

template <> struct EnumCases<TimerRun::Mode> {
    static constexpr std::string_view typeName = "Mode";
    static constexpr std::array<std::string_view, 2> names = {"countdown", "stopwatch"};
};

/// The stopwatch widget's run, with laps.
struct StopwatchRun : RunClock {
    static constexpr std::string_view defaultsKeyPrefix = "dev.tessik.corvane.stopwatch.";

    /// The total elapsed at each lap, in order.
    std::vector<double> laps;

    static std::string defaultsKey(const Uuid& widgetId) { return std::string(defaultsKeyPrefix) + widgetId.string(); }

    void toggle(Date now) { isRunning() ? pause(now) : start(now); }
    void lap(Date now) { laps.push_back(elapsed(now)); }
    void reset() {
        RunClock::reset();
        laps.clear();
    }

    /// "mm:ss" or "mm:ss.t" under an hour, "h:mm:ss" from there; negative counts as zero.
    static std::string text(double seconds, bool withTenths);

    bool operator==(const StopwatchRun&) const = default;
};

/// JSON forms kept in the user defaults. Missing keys take their defaults; throws
/// `DecodingError` on anything else.
std::string encodeTimerRun(const TimerRun& run);
TimerRun decodeTimerRun(std::string_view text);
std::string encodeStopwatchRun(const StopwatchRun& run);
StopwatchRun decodeStopwatchRun(std::string_view text);

} // namespace corvane
