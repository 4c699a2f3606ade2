#pragma once

#include "CorvaneCore/support/Date.hpp"

#include <optional>
#include <string>

namespace corvane {

/// What a countdown tile shows on its way to the target date and after it.
namespace Countdown {

/// "3d 4h", "4h 12m", "12:30" (minutes and seconds in the last hour), "Now" once the target
/// has passed; counting up afterwards, "+4h 12m" and so on.
std::string text(Date target, Date now, bool countsUpAfter);

/// The next moment `text` changes; none once it no longer does.
std::optional<Date> nextChange(Date target, Date now, bool countsUpAfter);

} // namespace Countdown

} // namespace corvane
