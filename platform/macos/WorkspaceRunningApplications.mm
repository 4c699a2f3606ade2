#include "platform/macos/WorkspaceRunningApplications.hpp"

#include "platform/macos/WorkspaceObservers.h"

#import <AppKit/AppKit.h>

namespace corvane {

namespace {

NSRunningApplication* application(std::int32_t pid) {
    return [NSRunningApplication runningApplicationWithProcessIdentifier:pid];
}

std::optional<std::string> text(NSString* value) {
    if (value == nil) return std::nullopt;
    return std::string(value.UTF8String);
}

} // namespace

struct WorkspaceRunningApplications::Token {
    NSArray* observers;
};

WorkspaceRunningApplications::WorkspaceRunningApplications() = default;

WorkspaceRunningApplications::~WorkspaceRunningApplications() {
    removeObserver(observer_);
    removeObserver(lifecycle_);
}

std::vector<RunningApp> WorkspaceRunningApplications::regularApplications() {
    std::vector<RunningApp> apps;
    for (NSRunningApplication* app in NSWorkspace.sharedWorkspace.runningApplications) {
        if (app.activationPolicy != NSApplicationActivationPolicyRegular) continue;
        RunningApp entry;
        entry.pid = app.processIdentifier;
        entry.bundleIdentifier = text(app.bundleIdentifier);
        entry.path = text(app.bundleURL.path);
        entry.name = text(app.localizedName).value_or("");
        apps.push_back(std::move(entry));
    }
    return apps;
}

bool WorkspaceRunningApplications::isHidden(std::int32_t pid) { return application(pid).hidden; }

bool WorkspaceRunningApplications::hide(std::int32_t pid) { return [application(pid) hide]; }

void WorkspaceRunningApplications::unhide(std::int32_t pid) { [application(pid) unhide]; }

void WorkspaceRunningApplications::terminate(std::int32_t pid) { [application(pid) terminate]; }

void WorkspaceRunningApplications::removeObserver(std::unique_ptr<Token>& observer) {
    if (!observer) return;
    stopObservingWorkspace(observer->observers);
    observer.reset();
}

void WorkspaceRunningApplications::onActivation(std::function<void(std::int32_t pid)> handler) {
    removeObserver(observer_);
    if (!handler) return;
    auto shared = std::make_shared<std::function<void(std::int32_t)>>(std::move(handler));
    observer_ = std::make_unique<Token>(Token{observeWorkspace(@[ NSWorkspaceDidActivateApplicationNotification ],
                                                               ^(NSNotification* notification) {
                                                                 NSRunningApplication* app =
                                                                     notification.userInfo[NSWorkspaceApplicationKey];
                                                                 if (app != nil) (*shared)(app.processIdentifier);
                                                               })});
}

void WorkspaceRunningApplications::onLaunchOrTermination(std::function<void()> handler) {
    removeObserver(lifecycle_);
    if (!handler) return;
    auto shared = std::make_shared<std::function<void()>>(std::move(handler));
    NSArray* names = @[ NSWorkspaceDidLaunchApplicationNotification, NSWorkspaceDidTerminateApplicationNotification ];
    lifecycle_ = std::make_unique<Token>(Token{observeWorkspace(names, ^(NSNotification*) {
                                                 (*shared)();
                                               })});
}

} // namespace corvane
