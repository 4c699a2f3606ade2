#include "platform/macos/WidgetPermissions.hpp"

#include "platform/macos/EventKitCalendarEvents.hpp"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace corvane::WidgetPermissions {

void request(WidgetKind kind) {
    switch (kind) {
    case WidgetKind::calendar:
        EventKitCalendarEvents::requestAccess(false);
        return;
    case WidgetKind::reminders:
        EventKitCalendarEvents::requestAccess(true);
        return;
    case WidgetKind::music:
        // The question waits for the user's answer: off the main thread. Music that is not
        // running cannot be asked about; the widget's first question to it asks then.
        dispatch_async(dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), ^{
          NSAppleEventDescriptor* music = [NSAppleEventDescriptor descriptorWithBundleIdentifier:@"com.apple.Music"];
          AEDeterminePermissionToAutomateTarget(music.aeDesc, typeWildCard, typeWildCard, true);
        });
        return;
    case WidgetKind::keyboardLock:
        AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef) @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES});
        return;
    default:
        return;
    }
}

} // namespace corvane::WidgetPermissions
