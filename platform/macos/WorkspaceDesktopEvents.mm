#include "platform/macos/WorkspaceDesktopEvents.hpp"

#include "platform/macos/WorkspaceObservers.h"

#import <AppKit/AppKit.h>

namespace corvane {

struct WorkspaceDesktopEvents::Token {
    NSArray* observers;
};

WorkspaceDesktopEvents::WorkspaceDesktopEvents() = default;

WorkspaceDesktopEvents::~WorkspaceDesktopEvents() { removeObserver(); }

void WorkspaceDesktopEvents::removeObserver() {
    if (!observer_) return;
    stopObservingWorkspace(observer_->observers);
    observer_.reset();
}

void WorkspaceDesktopEvents::onActiveDesktopChange(std::function<void()> handler) {
    removeObserver();
    if (!handler) return;
    auto shared = std::make_shared<std::function<void()>>(std::move(handler));
    observer_ = std::make_unique<Token>(Token{observeWorkspace(@[ NSWorkspaceActiveSpaceDidChangeNotification ],
                                                               ^(NSNotification*) {
                                                                 (*shared)();
                                                               })});
}

} // namespace corvane
