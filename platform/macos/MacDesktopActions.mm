#include "platform/macos/MacDesktopActions.hpp"

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace corvane {

namespace {

NSString* text(const std::string& value) {
    NSString* converted = [NSString stringWithUTF8String:value.c_str()];
    return converted ? converted : @"";
}

/// A path, or a URL with a scheme.
NSURL* urlFor(const std::string& pathOrURL) {
    NSString* given = text(pathOrURL);
    if ([given hasPrefix:@"/"] || [given hasPrefix:@"~"]) return [NSURL fileURLWithPath:given.stringByExpandingTildeInPath];
    NSURL* url = [NSURL URLWithString:given];
    return url.scheme ? url : nil;
}

constexpr CGEventFlags unlockKeys = kCGEventFlagMaskControl | kCGEventFlagMaskAlternate | kCGEventFlagMaskCommand;
constexpr double unlockHoldSeconds = 3;

} // namespace

/// The event tap of a keyboard lock, on the main run loop.
struct MacDesktopActions::Lock {
    CFMachPortRef tap = nullptr;
    CFRunLoopSourceRef source = nullptr;
    /// Counts the times the unlock keys went down, so a check after the hold knows whether they
    /// were let go meanwhile.
    int presses = 0;
    MacDesktopActions* owner = nullptr;

    ~Lock() {
        if (source) {
            CFRunLoopRemoveSource(CFRunLoopGetMain(), source, kCFRunLoopCommonModes);
            CFRelease(source);
        }
        if (tap) {
            CGEventTapEnable(tap, false);
            CFMachPortInvalidate(tap);
            CFRelease(tap);
        }
    }

    static CGEventRef filter(CGEventTapProxy, CGEventType type, CGEventRef event, void* context) {
        auto* lock = static_cast<Lock*>(context);
        // The system turns a slow tap off; the lock must hold.
        if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
            CGEventTapEnable(lock->tap, true);
            return event;
        }
        if (type == kCGEventFlagsChanged && (CGEventGetFlags(event) & unlockKeys) == unlockKeys) {
            int press = ++lock->presses;
            auto* owner = lock->owner;
            dispatch_after(dispatch_time(DISPATCH_TIME_NOW, static_cast<int64_t>(unlockHoldSeconds * NSEC_PER_SEC)),
                           dispatch_get_main_queue(), ^{
                             if (!owner->lock_ || owner->lock_->presses != press) return;
                             CGEventFlags held = CGEventSourceFlagsState(kCGEventSourceStateCombinedSessionState);
                             if ((held & unlockKeys) == unlockKeys) owner->unlockKeyboard();
                           });
        }
        return nullptr;
    }
};

MacDesktopActions::MacDesktopActions() = default;

MacDesktopActions::~MacDesktopActions() = default;

bool MacDesktopActions::open(const std::string& pathOrURL, const std::optional<std::string>& bundleIdentifier) {
    NSURL* url = urlFor(pathOrURL);
    if (!url) return false;
    NSWorkspace* workspace = NSWorkspace.sharedWorkspace;
    if (!bundleIdentifier) return [workspace openURL:url];
    NSURL* application = [workspace URLForApplicationWithBundleIdentifier:text(*bundleIdentifier)];
    if (!application) return [workspace openURL:url];
    [workspace openURLs:@[ url ]
        withApplicationAtURL:application
               configuration:[NSWorkspaceOpenConfiguration configuration]
           completionHandler:nil];
    return true;
}

bool MacDesktopActions::reveal(const std::string& path) {
    NSURL* url = urlFor(path);
    if (!url || !url.fileURL) return false;
    [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ url ]];
    return true;
}

bool MacDesktopActions::runShortcut(const std::string& name) {
    if (name.empty()) return false;
    NSError* error = nil;
    NSTask* task = [NSTask launchedTaskWithExecutableURL:[NSURL fileURLWithPath:@"/usr/bin/shortcuts"]
                                               arguments:@[ @"run", text(name) ]
                                                   error:&error
                                      terminationHandler:nil];
    return task != nil && error == nil;
}

bool MacDesktopActions::openAirDrop() {
    // The Finder's AirDrop window, as its Go menu opens it.
    NSURL* airDrop =
        [NSURL fileURLWithPath:@"/System/Library/CoreServices/Finder.app/Contents/Applications/AirDrop.app"];
    return [NSWorkspace.sharedWorkspace openURL:airDrop];
}

bool MacDesktopActions::lockKeyboard(bool includesPointer) {
    if (lock_) return true;
    if (!AXIsProcessTrusted()) return false;
    CGEventMask mask = CGEventMaskBit(kCGEventKeyDown) | CGEventMaskBit(kCGEventKeyUp) |
                       CGEventMaskBit(kCGEventFlagsChanged) | CGEventMaskBit(NX_SYSDEFINED);
    if (includesPointer)
        mask |= CGEventMaskBit(kCGEventLeftMouseDown) | CGEventMaskBit(kCGEventLeftMouseUp) |
                CGEventMaskBit(kCGEventRightMouseDown) | CGEventMaskBit(kCGEventRightMouseUp) |
                CGEventMaskBit(kCGEventMouseMoved) | CGEventMaskBit(kCGEventLeftMouseDragged) |
                CGEventMaskBit(kCGEventRightMouseDragged) | CGEventMaskBit(kCGEventScrollWheel);
    auto lock = std::make_unique<Lock>();
    lock->owner = this;
    lock->tap = CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault, mask,
                                 &Lock::filter, lock.get());
    if (!lock->tap) return false;
    lock->source = CFMachPortCreateRunLoopSource(kCFAllocatorDefault, lock->tap, 0);
    CFRunLoopAddSource(CFRunLoopGetMain(), lock->source, kCFRunLoopCommonModes);
    CGEventTapEnable(lock->tap, true);
    lock_ = std::move(lock);
    return true;
}

void MacDesktopActions::unlockKeyboard() { lock_.reset(); }

} // namespace corvane
