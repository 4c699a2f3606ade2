#pragma once

#include "CorvaneCore/platform/DesktopEvents.hpp"

#include <memory>

namespace corvane {

/// The workspace's active-Space notice, delivered on the main queue. Written without a macOS
/// compiler at hand: keep it thin.
class WorkspaceDesktopEvents final : public DesktopEvents {
public:
    WorkspaceDesktopEvents();
    ~WorkspaceDesktopEvents() override;
    WorkspaceDesktopEvents(const WorkspaceDesktopEvents&) = delete;
    WorkspaceDesktopEvents& operator=(const WorkspaceDesktopEvents&) = delete;

    void onActiveDesktopChange(std::function<void()> handler) override;

private:
    void removeObserver();
    /// The notification centre's observer token, kept without Objective-C types in this header.
    struct Token;
    std::unique_ptr<Token> observer_;
};

} // namespace corvane
