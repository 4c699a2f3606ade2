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

namespace {

/// "YYYY-MM-DDTHH:MM:SS", an optional fraction, then "Z" or "+HH:MM" / "-HH:MM". Only text of
/// this shape reaches date's parser, whose offset reading overflows on some malformed text.
bool isInternetDateTime(std::string_view text) {
    auto digits = [&](std::size_t at, std::size_t count) {
        if (at + count > text.size()) return false;
        for (std::size_t i = at; i < at + count; ++i)
            if (text[i] < '0' || text[i] > '9') return false;
        return true;
    };
    auto is = [&](std::size_t at, char c) { return at < text.size() && text[at] == c; };
    if (!digits(0, 4) || !is(4, '-') || !digits(5, 2) || !is(7, '-') || !digits(8, 2) || !is(10, 'T') ||
        !digits(11, 2) || !is(13, ':') || !digits(14, 2) || !is(16, ':') || !digits(17, 2))
        return false;
    std::size_t at = 19;
    if (is(at, '.')) {
        if (!digits(++at, 1)) return false;
        while (digits(at, 1)) ++at;
    }
    if (is(at, 'Z')) return at + 1 == text.size();
    return (is(at, '+') || is(at, '-')) && digits(at + 1, 2) && is(at + 3, ':') && digits(at + 4, 2) &&
           at + 6 == text.size();
}

} // namespace

std::optional<Date> parseIso8601(std::string_view text) {
    using namespace std::chrono;
    if (!isInternetDateTime(text)) return std::nullopt;
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
