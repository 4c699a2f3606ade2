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

// The common shape, "2026-11-23T05:17:33.120Z" or with "+hh:mm", read by hand: transcripts hold
// one per line and the stream parser below costs microseconds each. Anything else, including
// what this reads differently from date.h (leap seconds, more than six fraction digits), is
// left to the stream parser, so both paths agree on every value.
std::optional<std::chrono::microseconds> quickInternetDateTime(std::string_view text) {
    auto digits = [&](std::size_t at, std::size_t count) -> int {
        int value = 0;
        for (std::size_t i = at; i < at + count; ++i) {
            if (i >= text.size() || text[i] < '0' || text[i] > '9') return -1;
            value = value * 10 + (text[i] - '0');
        }
        return value;
    };
    auto is = [&](std::size_t at, char c) { return at < text.size() && text[at] == c; };
    const int year = digits(0, 4), month = digits(5, 2), day = digits(8, 2);
    const int hour = digits(11, 2), minute = digits(14, 2), second = digits(17, 2);
    if (year < 0 || month < 1 || month > 12 || day < 1 || hour < 0 || hour > 23 || minute < 0 || minute > 59 ||
        second < 0 || second > 59 || !is(4, '-') || !is(7, '-') || !is(10, 'T') || !is(13, ':') || !is(16, ':'))
        return std::nullopt;
    const date::year_month_day ymd{date::year{year}, date::month{static_cast<unsigned>(month)},
                                   date::day{static_cast<unsigned>(day)}};
    if (!ymd.ok()) return std::nullopt;
    std::size_t at = 19;
    std::int64_t micros = 0;
    if (is(at, '.')) {
        std::size_t count = 0;
        while (at + 1 + count < text.size() && text[at + 1 + count] >= '0' && text[at + 1 + count] <= '9') ++count;
        if (count < 1 || count > 6) return std::nullopt;
        micros = digits(at + 1, count);
        for (auto i = count; i < 6; ++i) micros *= 10;
        at += 1 + count;
    }
    std::int64_t offset = 0;
    if (is(at, 'Z')) {
        at += 1;
    } else if (is(at, '+') || is(at, '-')) {
        const int hours = digits(at + 1, 2), minutes = digits(at + 4, 2);
        if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59 || !is(at + 3, ':')) return std::nullopt;
        offset = (hours * 3600 + minutes * 60) * (text[at] == '+' ? 1 : -1);
        at += 6;
    } else {
        return std::nullopt;
    }
    if (at != text.size()) return std::nullopt;
    const std::int64_t seconds = date::sys_days{ymd}.time_since_epoch().count() * 86400LL + hour * 3600 +
                                 minute * 60 + second - offset;
    return std::chrono::microseconds{seconds * 1'000'000 + micros};
}

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

namespace {

// An offset can carry a time of year 9999 past its end; four-digit years are all a date is
// written with, so such a time is refused rather than read into one that cannot be written back.
std::optional<Date> withinFourDigitYears(Date date) {
    constexpr double first = -62167219200, pastLast = 253402300800; // 0000-01-01, 10000-01-01
    if (!(date.unixTime() >= first && date.unixTime() < pastLast)) return std::nullopt;
    return date;
}

} // namespace

std::optional<Date> parseIso8601(std::string_view text) {
    using namespace std::chrono;
    if (auto moment = quickInternetDateTime(text))
        return withinFourDigitYears(Date::fromUnixTime(duration<double>(*moment).count()));
    if (!isInternetDateTime(text)) return std::nullopt;
    for (const char* format : {"%FT%T%Ez", "%FT%TZ"}) {
        std::istringstream stream{std::string(text)};
        date::sys_time<microseconds> moment;
        stream >> date::parse(format, moment);
        if (!stream.fail() && stream.peek() == std::char_traits<char>::eof())
            return withinFourDigitYears(Date::fromUnixTime(duration<double>(moment.time_since_epoch()).count()));
    }
    return std::nullopt;
}

} // namespace corvane
