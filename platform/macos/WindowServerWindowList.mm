#include "platform/macos/WindowServerWindowList.hpp"

#include "platform/macos/WorkspaceObservers.h"

#import <AppKit/AppKit.h>
#include <CoreGraphics/CoreGraphics.h>
#include <unistd.h>

namespace corvane {

namespace {

std::int32_t number(NSDictionary* info, CFStringRef key) {
    id value = info[(__bridge NSString*)key];
    return [value isKindOfClass:NSNumber.class] ? [(NSNumber*)value intValue] : 0;
}

} // namespace

struct WindowServerWindowList::Tokens {
    NSArray* observers;
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
    stopObservingWorkspace(observers_->observers);
    observers_.reset();
}

void WindowServerWindowList::onArrangementChange(std::function<void()> handler) {
    removeObservers();
    if (!handler) return;
    auto shared = std::make_shared<std::function<void()>>(std::move(handler));
    NSArray* names = @[ NSWorkspaceDidActivateApplicationNotification, NSWorkspaceActiveSpaceDidChangeNotification ];
    observers_ = std::make_unique<Tokens>(Tokens{observeWorkspace(names, ^(NSNotification*) {
                                            (*shared)();
                                          })});
}

} // namespace corvane
