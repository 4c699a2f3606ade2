#include "platform/macos/EventKitCalendarEvents.hpp"

#import <EventKit/EKCalendar.h>
#import <EventKit/EKEvent.h>
#import <EventKit/EKEventStore.h>
#import <EventKit/EKReminder.h>
#import <EventKit/EKSource.h>
#import <Foundation/Foundation.h>
#import <objc/message.h>

namespace corvane {

namespace {

std::string text(NSString* value) { return value.UTF8String ? value.UTF8String : ""; }

bool hasAccess(EKEntityType type) {
    // The macOS 14 full-access status has the old "authorized" value.
    return [EKEventStore authorizationStatusForEntityType:type] == EKAuthorizationStatusAuthorized;
}

} // namespace

struct EventKitCalendarEvents::Store {
    EKEventStore* store = [[EKEventStore alloc] init];
    /// A store made before access was granted lists no calendars until it is reset.
    bool hadAccess = false;
    std::optional<std::vector<ReminderItem>> lastReminders;
    bool fetching = false;
    /// Cleared when the adapter goes, so that a late fetch stores nothing.
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);

    bool ready(EKEntityType type) {
        if (!hasAccess(type)) return false;
        if (!std::exchange(hadAccess, true)) [store reset];
        return true;
    }
};

EventKitCalendarEvents::EventKitCalendarEvents() : store_(std::make_unique<Store>()) {}

EventKitCalendarEvents::~EventKitCalendarEvents() { *store_->alive = false; }

std::optional<std::vector<CalendarEvent>> EventKitCalendarEvents::events(Date from, Date to) {
    if (!store_->ready(EKEntityTypeEvent)) return std::nullopt;
    EKEventStore* store = store_->store;
    NSPredicate* range = [store predicateForEventsWithStartDate:[NSDate dateWithTimeIntervalSinceReferenceDate:from.sinceReferenceDate]
                                                        endDate:[NSDate dateWithTimeIntervalSinceReferenceDate:to.sinceReferenceDate]
                                                      calendars:nil];
    NSArray<EKEvent*>* found = [[store eventsMatchingPredicate:range] sortedArrayUsingSelector:@selector(compareStartDateWithEvent:)];
    std::vector<CalendarEvent> events;
    for (EKEvent* event in found)
        events.push_back({.title = text(event.title),
                          .start = Date{event.startDate.timeIntervalSinceReferenceDate},
                          .end = Date{event.endDate.timeIntervalSinceReferenceDate},
                          .isAllDay = static_cast<bool>(event.allDay),
                          .calendarID = text(event.calendar.calendarIdentifier),
                          .accountID = text(event.calendar.source.sourceIdentifier)});
    return events;
}

std::optional<std::vector<ReminderItem>> EventKitCalendarEvents::reminders() {
    auto& state = *store_;
    if (!state.ready(EKEntityTypeReminder)) return std::nullopt;
    if (!state.fetching) {
        state.fetching = true;
        std::weak_ptr<bool> alive = state.alive;
        Store* target = &state;
        [state.store fetchRemindersMatchingPredicate:[state.store predicateForRemindersInCalendars:nil]
                                          completion:^(NSArray<EKReminder*>* found) {
                                            std::vector<ReminderItem> items;
                                            NSCalendar* calendar = NSCalendar.currentCalendar;
                                            for (EKReminder* reminder in found) {
                                                ReminderItem item{.title = text(reminder.title),
                                                                  .isCompleted = static_cast<bool>(reminder.completed),
                                                                  .listID = text(reminder.calendar.calendarIdentifier)};
                                                if (reminder.dueDateComponents)
                                                    if (NSDate* due = [calendar dateFromComponents:reminder.dueDateComponents])
                                                        item.due = Date{due.timeIntervalSinceReferenceDate};
                                                items.push_back(std::move(item));
                                            }
                                            // EventKit answers on a queue of its own; the lists are kept on the main one.
                                            dispatch_async(dispatch_get_main_queue(), ^{
                                              auto living = alive.lock();
                                              if (!living || !*living) return;
                                              target->lastReminders = items;
                                              target->fetching = false;
                                            });
                                          }];
    }
    if (!state.lastReminders) return std::vector<ReminderItem>{};
    return state.lastReminders;
}

void EventKitCalendarEvents::requestAccess(bool toReminders) {
    // One store for the questions; the answers apply to the whole application.
    static EKEventStore* asking = [[EKEventStore alloc] init];
    EKEntityType type = toReminders ? EKEntityTypeReminder : EKEntityTypeEvent;
    if ([EKEventStore authorizationStatusForEntityType:type] != EKAuthorizationStatusNotDetermined) return;
    EKEventStoreRequestAccessCompletionHandler ignore = ^(BOOL, NSError*) {};
    // macOS 14 replaced the old request with full-access ones. They are found and sent at run
    // time, so that the file builds with SDKs older than them and the older request stays the
    // fallback on older systems.
    SEL full = NSSelectorFromString(toReminders ? @"requestFullAccessToRemindersWithCompletion:"
                                                : @"requestFullAccessToEventsWithCompletion:");
    if ([asking respondsToSelector:full]) {
        using Request = void (*)(id, SEL, EKEventStoreRequestAccessCompletionHandler);
        reinterpret_cast<Request>(objc_msgSend)(asking, full, ignore);
        return;
    }
    [asking requestAccessToEntityType:type completion:ignore];
}

} // namespace corvane
