#pragma once

#include "CorvaneCore/support/Date.hpp"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// One event of the user's calendars.
struct CalendarEvent {
    std::string title;
    Date start;
    Date end;
    bool isAllDay = false;
    std::string calendarID;
    std::string accountID;

    bool operator==(const CalendarEvent&) const = default;
};

/// One reminder of the user's lists.
struct ReminderItem {
    std::string title;
    /// None for a reminder without a due date.
    std::optional<Date> due;
    bool isCompleted = false;
    std::string listID;

    bool operator==(const ReminderItem&) const = default;
};

/// The user's calendars and reminder lists, for the calendar and reminders widgets. Each read
/// is none when the user has not granted access (the widget then says so, it never guesses).
/// Main thread.
class CalendarEvents {
  public:
    virtual ~CalendarEvents() = default;
    /// Events that overlap [from, to), in start order, of every calendar.
    virtual std::optional<std::vector<CalendarEvent>> events(Date from, Date to) = 0;
    /// Reminders of every list, completed ones included, in the system's order.
    virtual std::optional<std::vector<ReminderItem>> reminders() = 0;
};

} // namespace corvane
