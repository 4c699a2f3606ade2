#include "platform/macos/ApplicationEventLoop.hpp"

#import <AppKit/AppKit.h>

namespace corvane::ApplicationEventLoop {

void run() {
    @autoreleasepool {
        NSApplication* application = NSApplication.sharedApplication;
        application.activationPolicy = NSApplicationActivationPolicyAccessory;
        [application run];
    }
}

void stop() {
    [NSApp stop:nil];
    // The loop notices the stop only after it handled an event: hand it one.
    NSEvent* wake = [NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                       location:NSZeroPoint
                                  modifierFlags:0
                                      timestamp:0
                                   windowNumber:0
                                        context:nil
                                        subtype:0
                                          data1:0
                                          data2:0];
    [NSApp postEvent:wake atStart:YES];
}

} // namespace corvane::ApplicationEventLoop
