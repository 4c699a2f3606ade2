#include "platform/macos/MacUserAlerts.hpp"

#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

#include <algorithm>

namespace corvane {

namespace {

NSString* toNSString(const std::string& text) {
    NSString* string = [[NSString alloc] initWithBytes:text.data()
                                                length:text.size()
                                              encoding:NSUTF8StringEncoding];
    return string != nil ? string : @"";
}

} // namespace

void MacUserAlerts::playSound(const std::string& name) {
    @autoreleasepool {
        [[NSSound soundNamed:toNSString(name)] play];
    }
}

void MacUserAlerts::requestAttention(Attention attention) {
    [NSApp
        requestUserAttention:attention == Attention::critical ? NSCriticalRequest : NSInformationalRequest];
}

void MacUserAlerts::scheduleNotification(const Notification& notification) {
    @autoreleasepool {
        UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
        // Asked on the first alert rather than at launch, so a user who never runs a timer is
        // never asked.
        if (!askedForPermission_) {
            askedForPermission_ = true;
            [center requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                                  completionHandler:^(BOOL, NSError*){
                                  }];
        }
        UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
        content.title = toNSString(notification.title);
        content.body = toNSString(notification.body);
        content.sound = [UNNotificationSound defaultSound];
        // The trigger refuses intervals that are not positive.
        UNTimeIntervalNotificationTrigger* trigger =
            [UNTimeIntervalNotificationTrigger triggerWithTimeInterval:std::max(notification.delay, 1.0)
                                                               repeats:NO];
        // A request with an identifier already pending replaces it.
        UNNotificationRequest* request =
            [UNNotificationRequest requestWithIdentifier:toNSString(notification.identifier)
                                                 content:content
                                                 trigger:trigger];
        [center addNotificationRequest:request withCompletionHandler:nil];
    }
}

void MacUserAlerts::withdrawNotification(const std::string& identifier) {
    @autoreleasepool {
        [[UNUserNotificationCenter currentNotificationCenter]
            removePendingNotificationRequestsWithIdentifiers:@[ toNSString(identifier) ]];
    }
}

} // namespace corvane
