#include "CorvaneApp/bar/BarWatch.hpp"

#include <utility>

namespace corvane {

BarWatch::BarWatch(Scheduler& scheduler, RunningApplications& applications, WindowList& windows, Callbacks callbacks)
    : scheduler_(scheduler), applications_(applications), windows_(windows), callbacks_(std::move(callbacks)),
      running_(applications.regularApplications()), shown_(windows.windows()), front_(windows.frontApplication()) {
    applications_.onLaunchOrTermination(
        [this] { schedule(applicationsRead_, applicationsSettle, &BarWatch::readApplications); });
    windows_.onArrangementChange([this] {
        readWindows();
        // Read once more after the slide: the new front application's windows move into place
        // during it.
        if (arrangementRead_) scheduler_.cancel(*std::exchange(arrangementRead_, std::nullopt));
        schedule(arrangementRead_, arrangementSettle, &BarWatch::readWindows);
    });
}

BarWatch::~BarWatch() {
    applications_.onLaunchOrTermination(nullptr);
    windows_.onArrangementChange(nullptr);
    for (auto* slot : {&applicationsRead_, &pointerRead_, &arrangementRead_, &coverTimer_})
        if (*slot) scheduler_.cancel(**slot);
}

void BarWatch::schedule(std::optional<Scheduler::Token>& slot, double delay, void (BarWatch::*read)()) {
    if (slot) return;
    slot = scheduler_.schedule(delay, [this, &slot, read] {
        slot.reset();
        (this->*read)();
    });
}

void BarWatch::readApplications() {
    auto running = applications_.regularApplications();
    if (running == running_) return;
    running_ = std::move(running);
    if (callbacks_.onApplicationsChange) callbacks_.onApplicationsChange();
}

void BarWatch::readWindows() {
    auto shown = windows_.windows();
    auto front = windows_.frontApplication();
    if (shown == shown_ && front == front_) return;
    shown_ = std::move(shown);
    front_ = front;
    if (callbacks_.onWindowsChange) callbacks_.onWindowsChange();
}

ScreenWindows::Reading BarWatch::windowsOn(const Rect& screen, double primaryTop) const {
    return ScreenWindows::read(screen, primaryTop, shown_, front_);
}

void BarWatch::pointerActivity() {
    if (watchesCovering_) schedule(pointerRead_, pointerSettle, &BarWatch::readWindows);
}

void BarWatch::scheduleCoverTimer() {
    coverTimer_ = scheduler_.schedule(coverInterval, [this] {
        coverTimer_.reset();
        readWindows();
        scheduleCoverTimer();
    });
}

void BarWatch::watchCovering(bool watches) {
    if (watches == watchesCovering_) return;
    watchesCovering_ = watches;
    if (watches) {
        readWindows();
        scheduleCoverTimer();
        return;
    }
    for (auto* slot : {&pointerRead_, &coverTimer_})
        if (*slot) scheduler_.cancel(*std::exchange(*slot, std::nullopt));
}

} // namespace corvane
