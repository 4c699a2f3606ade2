#include "platform/macos/MacUserAlerts.hpp"

#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

#include <algorithm>

/// Lets notifications show while Corvane is frontmost, which the system otherwise keeps quiet.
@interface CorvaneNotificationPresenter : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation CorvaneNotificationPresenter

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler {
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList |
                      UNNotificationPresentationOptionSound);
}

@end

namespace corvane {

namespace {

enum class Permission { notAsked, asking, granted, refused };

/// Shared by every instance, as the notification centre is. Main thread.
struct Gate {
    Permission permission = Permission::notAsked;
    /// Made while the question is open; added once it is answered yes.
    NSMutableArray<UNNotificationRequest*>* waiting = [NSMutableArray array];
    CorvaneNotificationPresenter* presenter = [CorvaneNotificationPresenter new];
    std::function<void(UserAlerts::Attention)> attention;
};

Gate& gate() {
    static Gate shared;
    return shared;
}

NSString* toNSString(const std::string& text) {
    NSString* string = [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
    return string != nil ? string : @"";
}

void forgetWaiting(NSString* identifier) {
    NSIndexSet* same = [gate().waiting indexesOfObjectsPassingTest:^BOOL(UNNotificationRequest* request, NSUInteger, BOOL*) {
      return [request.identifier isEqualToString:identifier];
    }];
    [gate().waiting removeObjectsAtIndexes:same];
}

void askOnce() {
    auto& shared = gate();
    if (shared.permission != Permission::notAsked) return;
    shared.permission = Permission::asking;
    UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
    [center requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                          completionHandler:^(BOOL granted, NSError*) {
                            // The answer comes on a queue of the system's; the waiting list is the main thread's.
                            dispatch_async(dispatch_get_main_queue(), ^{
                              auto& answered = gate();
                              answered.permission = granted ? Permission::granted : Permission::refused;
                              if (granted)
                                  for (UNNotificationRequest* request in answered.waiting)
                                      [center addNotificationRequest:request withCompletionHandler:nil];
                              [answered.waiting removeAllObjects];
                            });
                          }];
}

} // namespace

MacUserAlerts::MacUserAlerts() {
    // The centre holds its delegate weakly; the gate keeps it alive.
    [UNUserNotificationCenter currentNotificationCenter].delegate = gate().presenter;
}

void MacUserAlerts::setAttentionHandler(std::function<void(Attention)> handler) {
    gate().attention = std::move(handler);
}

void MacUserAlerts::playSound(const std::string& name) {
    @autoreleasepool {
        [[NSSound soundNamed:toNSString(name)] play];
    }
}

void MacUserAlerts::requestAttention(Attention attention) {
    if (gate().attention) gate().attention(attention);
}

void MacUserAlerts::scheduleNotification(const Notification& notification) {
    @autoreleasepool {
        UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
        content.title = toNSString(notification.title);
        content.body = toNSString(notification.body);
        content.sound = [UNNotificationSound defaultSound];
        // The trigger refuses intervals that are not positive.
        UNTimeIntervalNotificationTrigger* trigger =
            [UNTimeIntervalNotificationTrigger triggerWithTimeInterval:std::max(notification.delay, 1.0) repeats:NO];
        UNNotificationRequest* request = [UNNotificationRequest requestWithIdentifier:toNSString(notification.identifier)
                                                                              content:content
                                                                              trigger:trigger];
        auto& shared = gate();
        switch (shared.permission) {
        case Permission::granted:
            // A request with an identifier already pending replaces it.
            [[UNUserNotificationCenter currentNotificationCenter] addNotificationRequest:request withCompletionHandler:nil];
            return;
        case Permission::notAsked:
        case Permission::asking:
            forgetWaiting(request.identifier);
            [shared.waiting addObject:request];
            askOnce();
            return;
        case Permission::refused:
            return;
        }
    }
}

void MacUserAlerts::withdrawNotification(const std::string& identifier) {
    @autoreleasepool {
        NSString* name = toNSString(identifier);
        forgetWaiting(name);
        [[UNUserNotificationCenter currentNotificationCenter] removePendingNotificationRequestsWithIdentifiers:@[ name ]];
    }
}

} // namespace corvane
