#include "CorvaneCore/support/TimeZoneCalendar.hpp"

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <date/tz.h>

#include <cmath>
#include <cstdio>
#include <exception>

namespace corvane {

namespace {

const date::time_zone* zoneOf(const void* zone) {
    return static_cast<const date::time_zone*>(zone);
}

date::sys_seconds sysSeconds(Date date) {
    return date::sys_seconds{std::chrono::seconds{static_cast<std::int64_t>(std::floor(date.unixTime()))}};
}

// Dates far outside what the zone rules cover would overflow the library's arithmetic; their
// days are the same either way, so they are taken at a fixed offset.
constexpr double kZoneRange = 1e12;

} // namespace

std::optional<TimeZoneCalendar> TimeZoneCalendar::named(std::string_view name) {
    if (name.empty()) return std::nullopt;
    try {
        auto* zone = date::locate_zone(name);
        return TimeZoneCalendar(zone, 0, std::string(zone->name()));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

TimeZoneCalendar TimeZoneCalendar::fixedOffset(double offsetSeconds) {
    if (!std::isfinite(offsetSeconds)) offsetSeconds = 0;
    auto minutes = static_cast<long long>(std::llround(std::fabs(offsetSeconds) / 60));
    char name[32];
    std::snprintf(name, sizeof name, "UTC%c%02lld:%02lld", offsetSeconds < 0 ? '-' : '+', minutes / 60,
                  minutes % 60);
    return TimeZoneCalendar(nullptr, offsetSeconds, name);
}

TimeZoneCalendar TimeZoneCalendar::current() {
    try {
        auto* zone = date::current_zone();
        return TimeZoneCalendar(zone, 0, std::string(zone->name()));
    } catch (const std::exception&) {
        return fixedOffset(0);
    }
}

double TimeZoneCalendar::utcOffset(Date date) const {
    if (!zone_ || !(std::fabs(date.unixTime()) < kZoneRange)) return offset_;
    return static_cast<double>(zoneOf(zone_)->get_info(sysSeconds(date)).offset.count());
}

CalendarDay TimeZoneCalendar::day(Date date) const {
    auto local = date.unixTime() + utcOffset(date);
    // Beyond a few million years the day number no longer fits a calendar year.
    if (!std::isfinite(local) || std::fabs(local) > 1e14) return CalendarDay{1970, 1, 1};
    return CalendarDay::fromDayNumber(static_cast<std::int64_t>(std::floor(local / 86400)));
}

Date TimeZoneCalendar::startOfDay(CalendarDay day) const {
    auto midnight = static_cast<double>(day.dayNumber()) * 86400;
    if (!zone_ || std::fabs(midnight) >= kZoneRange) return Date::fromUnixTime(midnight - offset_);
    date::local_seconds local{std::chrono::seconds{static_cast<std::int64_t>(midnight)}};
    // `earliest` takes the gap's end when the clock jumps over midnight.
    auto moment = zoneOf(zone_)->to_sys(local, date::choose::earliest);
    return Date::fromUnixTime(static_cast<double>(moment.time_since_epoch().count()));
}

} // namespace corvane
