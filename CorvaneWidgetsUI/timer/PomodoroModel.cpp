#include "CorvaneWidgetsUI/timer/PomodoroModel.hpp"

namespace corvane {

namespace {
PomodoroSettings settingsOf(const DockWidget& widget) {
    if (auto settings = widget.pomodoroSettings()) return *settings;
    return {};
}
} // namespace

PomodoroModel::PomodoroModel(DockWidget widget, TimeKeepingServices services)
    : widget_(std::move(widget)), settings_(settingsOf(widget_)), services_(services), now_(services.clock.now()) {
    if (auto saved =
            loadRun<PomodoroRun>(services_.defaults, PomodoroRun::defaultsKey(widget_.id), decodePomodoroRun))
        run_ = *saved;
    else
        run_.day = now_;
    if (run_.isRunning()) changed();
}

void PomodoroModel::setWidget(DockWidget widget) {
    widget_ = std::move(widget);
    settings_ = settingsOf(widget_);
    changed();
}

template <typename Change> void PomodoroModel::change(Change&& mutate) {
    now_ = services_.clock.now();
    mutate(run_);
    changed();
}

void PomodoroModel::toggle() {
    change([&](PomodoroRun& run) { run.isRunning() ? run.pause(now_) : run.start(now_, services_.calendar); });
}

void PomodoroModel::skip() {
    change([&](PomodoroRun& run) { run.advance(now_, settings_, false, services_.calendar); });
}

void PomodoroModel::finish(Date at) {
    now_ = at;
    run_.advance(at, settings_, true, services_.calendar);
    changed();
}

void PomodoroModel::reset() {
    change([](PomodoroRun& run) { run.reset(); });
}

void PomodoroModel::resetEverything() {
    change([&](PomodoroRun& run) { run.resetEverything(now_); });
}

void PomodoroModel::tick() {
    now_ = services_.clock.now();
    if (!run_.isRunning() || !run_.isFinished(now_, settings_)) {
        if (onChange) onChange();
        return;
    }
    const bool endedBreak = run_.isBreak();
    finish(now_);
    if (settings_.ringsAtTheEnd)
        services_.alerts.playSound(std::string(endedBreak ? breakEndSound : focusEndSound));
    services_.alerts.requestAttention(UserAlerts::Attention::critical);
}

void PomodoroModel::changed() {
    storeRun(services_.defaults, PomodoroRun::defaultsKey(widget_.id), encodePomodoroRun(run_));
    if (auto end = run_.endDate(settings_)) {
        std::string title = run_.isBreak() ? "Break over" : "Focus done, take a break";
        std::string body;
        if (run_.isBreak())
            body = "Ready for the next focus session?";
        else if (run_.nextPhase(settings_) == PomodoroPhase::longBreak)
            body = "You have earned a long break.";
        else
            body = "Time for a short break.";
        services_.alerts.scheduleNotification(
            {notificationIdentifier(), std::move(title), std::move(body), notificationDelay(*end, now_)});
    } else {
        services_.alerts.withdrawNotification(notificationIdentifier());
    }
    if (onChange) onChange();
}

} // namespace corvane
