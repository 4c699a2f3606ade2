#include "platform/macos/WindowServerWindowList.hpp"

#import <AppKit/AppKit.h>
#include <CoreGraphics/CoreGraphics.h>
#include <unistd.h>

// Compiled with ARC: the tokens are strong references.

namespace corvane {

namespace {

std::int32_t number(NSDictionary* info, CFStringRef key) {
    id value = info[(__bridge NSString*)key];
    return [value isKindOfClass:NSNumber.class] ? [(NSNumber*)value intValue] : 0;
}

} // namespace

struct WindowServerWindowList::Tokens {
    id activation;
    id desktop;
};

WindowServerWindowList::WindowServerWindowList() = default;

WindowServerWindowList::~WindowServerWindowList() { removeObservers(); }

std::vector<WindowList::Window> WindowServerWindowList::windows() {
    std::vector<Window> found;
    CFArrayRef list = CGWindowListCopyWindowInfo(kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements,
                                                 kCGNullWindowID);
    if (list == nullptr) return found;
    std::int32_t self = getpid();
    for (NSDictionary* info in (__bridge NSArray*)list) {
        std::int32_t owner = number(info, kCGWindowOwnerPID);
        if (owner == self) continue;
        // Fully transparent windows (overlays that only catch events) show nothing to hide.
        id alpha = info[(__bridge NSString*)kCGWindowAlpha];
        if ([alpha isKindOfClass:NSNumber.class] && [(NSNumber*)alpha doubleValue] <= 0) continue;
        CGRect bounds;
        id description = info[(__bridge NSString*)kCGWindowBounds];
        if (![description isKindOfClass:NSDictionary.class] ||
            !CGRectMakeWithDictionaryRepresentation((__bridge CFDictionaryRef)description, &bounds))
            continue;
        found.push_back({.ownerPid = owner,
                         .layer = number(info, kCGWindowLayer),
                         .bounds = {bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height}});
    }
    CFRelease(list);
    return found;
}

std::optional<std::int32_t> WindowServerWindowList::frontApplication() {
    NSRunningApplication* front = NSWorkspace.sharedWorkspace.frontmostApplication;
    if (front == nil) return std::nullopt;
    return front.processIdentifier;
}

void WindowServerWindowList::removeObservers() {
    if (!observers_) return;
    NSNotificationCenter* center = NSWorkspace.sharedWorkspace.notificationCenter;
    [center removeObserver:observers_->activation];
    [center removeObserver:observers_->desktop];
    observers_.reset();
}

void WindowServerWindowList::onArrangementChange(std::function<void()> handler) {
    removeObservers();
    if (!handler) return;
    auto shared = std::make_shared<std::function<void()>>(std::move(handler));
    NSNotificationCenter* center = NSWorkspace.sharedWorkspace.notificationCenter;
    void (^forward)(NSNotification*) = ^(NSNotification*) {
      (*shared)();
    };
    id activation = [center addObserverForName:NSWorkspaceDidActivateApplicationNotification
                                        object:nil
                                         queue:NSOperationQueue.mainQueue
                                    usingBlock:forward];
    id desktop = [center addObserverForName:NSWorkspaceActiveSpaceDidChangeNotification
                                     object:nil
                                      queue:NSOperationQueue.mainQueue
                                 usingBlock:forward];
    observers_ = std::make_unique<Tokens>(Tokens{activation, desktop});
}

} // namespace corvane
