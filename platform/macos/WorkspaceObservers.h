// Objective-C++ only: observing the shared workspace's notifications, for the adapters that
// follow applications and desktops. Compiled with ARC: the tokens are strong references.
#pragma once

#import <AppKit/AppKit.h>

namespace corvane {

/// Calls `handler` on the main queue for each notification named in `names` that the shared
/// workspace posts; hand what it returns to `stopObservingWorkspace`.
inline NSArray* observeWorkspace(NSArray<NSNotificationName>* names, void (^handler)(NSNotification*)) {
    NSNotificationCenter* center = NSWorkspace.sharedWorkspace.notificationCenter;
    NSMutableArray* tokens = [NSMutableArray array];
    for (NSNotificationName name in names)
        [tokens addObject:[center addObserverForName:name object:nil queue:NSOperationQueue.mainQueue usingBlock:handler]];
    return tokens;
}

inline void stopObservingWorkspace(NSArray* tokens) {
    for (id token in tokens) [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:token];
}

} // namespace corvane
