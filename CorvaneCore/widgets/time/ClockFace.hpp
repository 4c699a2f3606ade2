#pragma once

#include "CorvaneCore/support/Date.hpp"

#include <optional>
#include <string>

namespace corvane {

/// What a clock tile shows: the time of day in its zone, and, for a zone other than the user's,
/// where it is and whether its day is the user's.
namespace ClockFace {

/// "14:05", "2:05 PM", with ":07" seconds when asked. `utcOffset` is the zone's offset at `now`
/// in seconds east of UTC.
std::string time(Date now, double utcOffset, bool uses24Hour, bool showsSeconds);

/// The city of an IANA zone name, spaces for underscores: "Europe/Oslo" → "Oslo",
/// "America/Argentina/Buenos_Aires" → "Buenos Aires".
std::string city(const std::string& zoneID);

/// "Tomorrow" or "Yesterday" when the zone's day (as a day number) differs from the user's,
/// none when it is the same day.
std::optional<std::string> relativeDay(long long zoneDay, long long userDay);

/// The next moment the text changes: the next whole second or minute.
Date nextChange(Date now, double utcOffset, bool showsSeconds);

} // namespace ClockFace

} // namespace corvane
