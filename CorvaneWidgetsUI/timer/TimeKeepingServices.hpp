#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/UserAlerts.hpp"
#include "CorvaneCore/platform/UserDefaults.hpp"
#include "CorvaneCore/widgets/timer/PomodoroRun.hpp"
#include "CorvaneCore/widgets/timer/TimerRun.hpp"

#include <algorithm>
#include <exception>
#include <optional>
#include <string>

namespace corvane {

/// What the time-keeping models need from the platform. Everything must outlive the models.
struct TimeKeepingServices {
    const Clock& clock;
    const Calendar& calendar;
    UserAlerts& alerts;
    /// Where run records persist; none keeps them in memory only.
    UserDefaults* defaults = nullptr;
};

/// The run stored under `key`, or none when there is none or it no longer decodes (a fresh run
/// is better than a widget stuck on a record it cannot read).
template <typename Run, typename Decode>
std::optional<Run> loadRun(const UserDefaults* defaults, const std::string& key, Decode decode) {
    if (!defaults) return std::nullopt;
    std::string text;
    if (auto data = defaults->dataValue(key))
        text.assign(data->begin(), data->end());
    else if (auto string = defaults->stringValue(key))
        text = *string;
    else
        return std::nullopt;
    try {
        return decode(text);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

/// Stores the run's JSON as data, the form the platform's defaults keep coded records in.
inline void storeRun(UserDefaults* defaults, const std::string& key, const std::string& json) {
    if (defaults) defaults->setData(key, Bytes(json.begin(), json.end()));
}

/// Removes every run record kept for the widget, once the widget itself is gone.
inline void forgetRuns(UserDefaults& defaults, const Uuid& widgetId) {
    for (const auto& key : {TimerRun::defaultsKey(widgetId), StopwatchRun::defaultsKey(widgetId),
                            PomodoroRun::defaultsKey(widgetId)})
        defaults.remove(key);
}

/// The notification's delay for an end at `end`: never under a second, so an end that is all but
/// here still gets delivered instead of being refused as already past.
inline double notificationDelay(Date end, Date now) { return std::max(1.0, end - now); }

} // namespace corvane
