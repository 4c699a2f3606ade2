#include "CorvaneApp/automation/DesktopWorkspaceMonitor.hpp"

namespace corvane {

void DesktopWorkspaceMonitor::start() {
    if (started_) return;
    started_ = true;
    events_.onActiveDesktopChange([this] { noticeChange(); });
}

void DesktopWorkspaceMonitor::stop() {
    if (pending_) scheduler_.cancel(*pending_);
    pending_.reset();
    if (started_) events_.onActiveDesktopChange(nullptr);
    started_ = false;
}

void DesktopWorkspaceMonitor::noticeChange() {
    if (onDesktopWillChange) onDesktopWillChange();
    if (pending_) scheduler_.cancel(*pending_);
    pending_ = scheduler_.schedule(debounce, [this] {
        pending_.reset();
        evaluate();
    });
}

void DesktopWorkspaceMonitor::evaluate() {
    if (onDesktopChange) onDesktopChange(current(server_));
}

DesktopWorkspaceMonitor::Desktops DesktopWorkspaceMonitor::current(DesktopServer& server) {
    Desktops desktops;
    for (const auto& display : server.displays())
        if (display.current) desktops.emplace(display.id, *display.current);
    return desktops;
}

} // namespace corvane
