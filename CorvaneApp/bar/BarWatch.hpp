#pragma once

#include "CorvaneCore/bar/RunningApp.hpp"
#include "CorvaneCore/bar/ScreenWindows.hpp"
#include "CorvaneCore/platform/RunningApplications.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/platform/WindowList.hpp"

#include <functional>
#include <optional>
#include <vector>

namespace corvane {

/// Keeps the own Dock bar's view of the system current: which applications run, and what the
/// other applications' windows do to the screen. The system says when applications start, quit
/// or come to the front, and when another desktop slides in; nothing says when a window moves,
/// so while windows may hide the bar the list is read again after pointer activity and on a
/// slow timer, and never otherwise. Main thread.
class BarWatch {
public:
    /// Starts and quits come in bursts (a login, a workspace switch quitting apps): one reading
    /// after the burst settles.
    static constexpr double applicationsSettle = 0.2;
    /// A window dragged or resized follows the pointer; one reading per this stretch of pointer
    /// activity is enough to hide the bar in time.
    static constexpr double pointerSettle = 0.25;
    /// Windows a program moves by itself are seen within this while covering is watched.
    static constexpr double coverInterval = 1.5;
    /// A full-screen window takes its final frame only once its desktop has slid in.
    static constexpr double arrangementSettle = 1;

    struct Callbacks {
        /// The running applications differ from what `applications()` gave before.
        std::function<void()> onApplicationsChange;
        /// The windows, or the application in front, differ from the last reading.
        std::function<void()> onWindowsChange;
    };

    BarWatch(Scheduler& scheduler, RunningApplications& applications, WindowList& windows, Callbacks callbacks);
    ~BarWatch();
    BarWatch(const BarWatch&) = delete;
    BarWatch& operator=(const BarWatch&) = delete;

    const std::vector<RunningApp>& applications() const { return running_; }
    /// The last reading of the windows, for the screen at `screen` (global, y up); `primaryTop`
    /// is the maximum y of the screen with the menu bar.
    ScreenWindows::Reading windowsOn(const Rect& screen, double primaryTop) const;

    /// The pointer moved or a button went up somewhere on screen.
    void pointerActivity();
    /// Whether windows covering the bar matter (the user's setting, while the own Dock is on).
    void watchCovering(bool watches);

private:
    void readApplications();
    void readWindows();
    void schedule(std::optional<Scheduler::Token>& slot, double delay, void (BarWatch::*read)());
    void scheduleCoverTimer();

    Scheduler& scheduler_;
    RunningApplications& applications_;
    WindowList& windows_;
    Callbacks callbacks_;
    std::vector<RunningApp> running_;
    std::vector<WindowList::Window> shown_;
    std::optional<std::int32_t> front_;
    bool watchesCovering_ = false;
    std::optional<Scheduler::Token> applicationsRead_, pointerRead_, arrangementRead_, coverTimer_;
};

} // namespace corvane
