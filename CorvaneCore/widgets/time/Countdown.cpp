#include "CorvaneCore/widgets/time/Countdown.hpp"

#include <cmath>
#include <cstdio>

namespace corvane::Countdown {

namespace {

constexpr double kMinute = 60, kHour = 3600, kDay = 86400;

// Whole seconds of a span shown counting down round up (a tile never says 0:00 before the
// moment), counting up they round down.
std::string span(long long seconds) {
    char buffer[48];
    if (seconds >= kDay)
        std::snprintf(buffer, sizeof buffer, "%lldd %lldh", seconds / 86400, seconds % 86400 / 3600);
    else if (seconds >= kHour)
        std::snprintf(buffer, sizeof buffer, "%lldh %lldm", seconds / 3600, seconds % 3600 / 60);
    else
        std::snprintf(buffer, sizeof buffer, "%lld:%02lld", seconds / 60, seconds % 60);
    return buffer;
}

// The smallest unit `span` shows for that many whole seconds.
double unit(double seconds) {
    if (seconds >= kDay) return kHour;
    if (seconds >= kHour) return kMinute;
    return 1;
}

} // namespace

std::string text(Date target, Date now, bool countsUpAfter) {
    double left = target - now;
    if (!std::isfinite(left)) return "Now";
    if (left > 0) return span(static_cast<long long>(std::ceil(left)));
    if (!countsUpAfter) return "Now";
    return "+" + span(static_cast<long long>(std::floor(-left)));
}

std::optional<Date> nextChange(Date target, Date now, bool countsUpAfter) {
    double left = target - now;
    if (!std::isfinite(left)) return std::nullopt;
    if (left > 0) {
        // The shown seconds are rounded up, so the text turns as soon as they drop below the
        // shown unit's multiple: one second before `left` reaches it.
        double shown = std::ceil(left), step = unit(shown);
        double turn = std::floor(shown / step) * step - 1;
        return now + (left - turn);
    }
    if (!countsUpAfter) return std::nullopt;
    double past = -left, shown = std::floor(past), step = unit(shown);
    return now + ((std::floor(shown / step) + 1) * step - past);
}

} // namespace corvane::Countdown
