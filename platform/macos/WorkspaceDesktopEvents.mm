#include "platform/macos/WorkspaceDesktopEvents.hpp"

#import <AppKit/AppKit.h>

// Compiled with ARC: the token is a strong reference.

namespace corvane {

struct WorkspaceDesktopEvents::Token {
    id value;
};

WorkspaceDesktopEvents::WorkspaceDesktopEvents() = default;

WorkspaceDesktopEvents::~WorkspaceDesktopEvents() { removeObserver(); }

void WorkspaceDesktopEvents::removeObserver() {
    if (!observer_) return;
    [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:observer_->value];
    observer_.reset();
}

void WorkspaceDesktopEvents::onActiveDesktopChange(std::function<void()> handler) {
    removeObserver();
    if (!handler) return;
    auto shared = std::make_shared<std::function<void()>>(std::move(handler));
    id token = [NSWorkspace.sharedWorkspace.notificationCenter
        addObserverForName:NSWorkspaceActiveSpaceDidChangeNotification
                    object:nil
                     queue:NSOperationQueue.mainQueue
                usingBlock:^(NSNotification*) {
                  (*shared)();
                }];
    observer_ = std::make_unique<Token>(Token{token});
}

} // namespace corvane
