#include "CorvaneCore/support/Iso8601.hpp"

// date.h's parser trips GCC's flow analysis (a field it fills on every successful path).
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <date/date.h>

#include <cmath>
#include <sstream>

namespace corvane {

std::string iso8601(Date date, bool fractionalSeconds) {
    using namespace std::chrono;
    auto millis = static_cast<std::int64_t>(std::llround(date.unixTime() * 1000.0));
    sys_time<milliseconds> moment{milliseconds{millis}};
    if (fractionalSeconds) return date::format("%FT%TZ", moment);
    return date::format("%FT%TZ", floor<seconds>(moment));
}

std::optional<Date> parseIso8601(std::string_view text) {
    using namespace std::chrono;
    for (const char* format : {"%FT%T%Ez", "%FT%TZ"}) {
        std::istringstream stream{std::string(text)};
        date::sys_time<microseconds> moment;
        stream >> date::parse(format, moment);
        if (!stream.fail() && stream.peek() == std::char_traits<char>::eof())
            return Date::fromUnixTime(duration<double>(moment.time_since_epoch()).count());
    }
    return std::nullopt;
}

} // namespace corvane
