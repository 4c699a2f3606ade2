#include "platform/macos/CFCalendarAdapter.hpp"

#include "platform/macos/CFRef.hpp"

#include <cmath>

namespace corvane {

CalendarDay CFCalendarAdapter::day(Date date) const {
    // Always the Gregorian calendar in the user's time zone: day keys are Gregorian dates even
    // for a user whose calendar is another one.
    auto calendar = adoptCF(CFCalendarCreateWithIdentifier(kCFAllocatorDefault, kCFGregorianCalendar));
    auto zone = adoptCF(CFTimeZoneCopyDefault());
    int year = 0, month = 0, day = 0;
    if (calendar && zone) {
        CFCalendarSetTimeZone(calendar.get(), zone.get());
        if (CFCalendarDecomposeAbsoluteTime(calendar.get(), date.sinceReferenceDate, "yMd", &year, &month,
                                            &day))
            return CalendarDay{year, month, day};
    }
    double days = std::floor(date.unixTime() / 86400);
    return CalendarDay::fromDayNumber(static_cast<std::int64_t>(std::isfinite(days) ? days : 0));
}

} // namespace corvane
