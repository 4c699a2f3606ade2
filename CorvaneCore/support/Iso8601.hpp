#pragma once

#include "CorvaneCore/support/Date.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// "2026-11-23T05:17:33.120Z" (UTC, milliseconds), or without the fraction.
std::string iso8601(Date date, bool fractionalSeconds = true);

/// Reads an internet date-time with or without fractional seconds, in "Z" or a "+hh:mm" offset.
std::optional<Date> parseIso8601(std::string_view text);

} // namespace corvane
