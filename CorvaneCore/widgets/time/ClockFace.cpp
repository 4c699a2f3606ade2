#include "CorvaneCore/widgets/time/ClockFace.hpp"

#include <cmath>
#include <cstdio>

namespace corvane::ClockFace {

std::string time(Date now, double utcOffset, bool uses24Hour, bool showsSeconds) {
    double local = std::floor(now.unixTime() + utcOffset);
    if (!std::isfinite(local)) local = 0;
    auto secondOfDay = static_cast<long long>(local - std::floor(local / 86400) * 86400);
    int hour = static_cast<int>(secondOfDay / 3600), minute = static_cast<int>(secondOfDay / 60 % 60),
        second = static_cast<int>(secondOfDay % 60);
    char buffer[32];
    if (uses24Hour) {
        std::snprintf(buffer, sizeof buffer, "%02d:%02d", hour, minute);
    } else {
        int twelve = hour % 12 == 0 ? 12 : hour % 12;
        std::snprintf(buffer, sizeof buffer, "%d:%02d", twelve, minute);
    }
    std::string text = buffer;
    if (showsSeconds) {
        std::snprintf(buffer, sizeof buffer, ":%02d", second);
        text += buffer;
    }
    if (!uses24Hour) text += hour < 12 ? " AM" : " PM";
    return text;
}

std::string city(const std::string& zoneID) {
    auto slash = zoneID.rfind('/');
    auto name = slash == std::string::npos ? zoneID : zoneID.substr(slash + 1);
    for (auto& c : name)
        if (c == '_') c = ' ';
    return name;
}

std::optional<std::string> relativeDay(long long zoneDay, long long userDay) {
    if (zoneDay > userDay) return "Tomorrow";
    if (zoneDay < userDay) return "Yesterday";
    return std::nullopt;
}

Date nextChange(Date now, double utcOffset, bool showsSeconds) {
    // Offsets are whole minutes, so minutes turn over at the same moments in every zone; the
    // offset only matters for zones of the past with odd seconds.
    double step = showsSeconds ? 1 : 60;
    double local = now.unixTime() + utcOffset;
    double next = (std::floor(local / step) + 1) * step;
    return Date::fromUnixTime(next - utcOffset);
}

} // namespace corvane::ClockFace
