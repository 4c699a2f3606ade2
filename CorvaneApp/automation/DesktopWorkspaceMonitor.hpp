#pragma once

#include "CorvaneCore/automation/DesktopSpace.hpp"
#include "CorvaneCore/platform/DesktopEvents.hpp"
#include "CorvaneCore/platform/DesktopServer.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

namespace corvane {

/// Follows the desktop in front on each display. A desktop slides in with a burst of system
/// notices; the desktops are read once, `debounce` seconds after the last of them. Main thread.
class DesktopWorkspaceMonitor {
public:
    static constexpr double debounce = 0.35;
    using Desktops = std::map<std::uint32_t, DesktopSpace>;

    DesktopWorkspaceMonitor(DesktopServer& server, DesktopEvents& events, Scheduler& scheduler)
        : server_(server), events_(events), scheduler_(scheduler) {}
    ~DesktopWorkspaceMonitor() { stop(); }
    DesktopWorkspaceMonitor(const DesktopWorkspaceMonitor&) = delete;
    DesktopWorkspaceMonitor& operator=(const DesktopWorkspaceMonitor&) = delete;

    /// At once on every notice, before the desktops are read.
    std::function<void()> onDesktopWillChange;
    /// With the desktop in front of every display, once a burst of notices has settled.
    std::function<void(const Desktops&)> onDesktopChange;

    void start();
    void stop();
    /// One system notice.
    void noticeChange();

    /// The desktop in front of each display that has one, as the window server tells now.
    static Desktops current(DesktopServer& server);

private:
    void evaluate();

    DesktopServer& server_;
    DesktopEvents& events_;
    Scheduler& scheduler_;
    std::optional<Scheduler::Token> pending_;
    bool started_ = false;
};

} // namespace corvane
