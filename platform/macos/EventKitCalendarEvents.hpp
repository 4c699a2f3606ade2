#pragma once

#include "CorvaneCore/platform/CalendarEvents.hpp"

#include <memory>

namespace corvane {

/// The user's calendars and reminder lists through EventKit, once the user has granted access.
/// Reminders arrive only asynchronously from EventKit: a read answers with the last lists fetched
/// and fetches them again, so a reminder edited elsewhere shows at the next read after that.
class EventKitCalendarEvents final : public CalendarEvents {
  public:
    EventKitCalendarEvents();
    ~EventKitCalendarEvents() override;
    EventKitCalendarEvents(const EventKitCalendarEvents&) = delete;
    EventKitCalendarEvents& operator=(const EventKitCalendarEvents&) = delete;

    std::optional<std::vector<CalendarEvent>> events(Date from, Date to) override;
    std::optional<std::vector<ReminderItem>> reminders() override;

    /// Asks the user for full access to events (or to reminders), where not decided yet.
    static void requestAccess(bool toReminders);

  private:
    struct Store;
    std::unique_ptr<Store> store_;
};

} // namespace corvane
