#include "CorvaneWidgetsUI/timer/TimerModel.hpp"

#include <cmath>

namespace corvane {

TimerModel::TimerModel(DockWidget widget, TimeKeepingServices services)
    : widget_(std::move(widget)), services_(services), now_(services.clock.now()) {
    if (auto saved = loadRun<TimerRun>(services_.defaults, TimerRun::defaultsKey(widget_.id), decodeTimerRun))
        run_ = *saved;
    else if (auto settings = widget_.timerSettings(); settings && !settings->presets.empty())
        run_.duration = settings->presets.front();
    if (run_.endDate()) changed();
}

void TimerModel::setWidget(DockWidget widget) {
    widget_ = std::move(widget);
    if (onChange) onChange();
}

template <typename Change> void TimerModel::change(Change&& mutate) {
    now_ = services_.clock.now();
    mutate(run_);
    changed();
}

void TimerModel::start() {
    change([&](TimerRun& run) { run.start(now_); });
}

void TimerModel::pause() {
    change([&](TimerRun& run) { run.pause(now_); });
}

void TimerModel::toggle() {
    change([&](TimerRun& run) { run.isRunning() ? run.pause(now_) : run.start(now_); });
}

void TimerModel::reset() {
    change([](TimerRun& run) { run.reset(); });
}

void TimerModel::startCountdown(double seconds) {
    change([&](TimerRun& run) { run.startCountdown(now_, seconds); });
}

void TimerModel::setMode(TimerRun::Mode mode) {
    if (run_.mode == mode) return;
    change([&](TimerRun& run) {
        run.mode = mode;
        run.reset();
    });
}

void TimerModel::tick() {
    now_ = services_.clock.now();
    if (run_.isRunning() && run_.isFinished(now_)) {
        run_.pause(now_);
        changed();
        services_.alerts.playSound(std::string(finishedSound));
        services_.alerts.requestAttention(UserAlerts::Attention::critical);
        return;
    }
    if (onChange) onChange();
}

void TimerModel::changed() {
    storeRun(services_.defaults, TimerRun::defaultsKey(widget_.id), encodeTimerRun(run_));
    if (auto end = run_.endDate()) {
        services_.alerts.scheduleNotification(
            {notificationIdentifier(), "Time's up",
             "Your " + TimerRun::format(static_cast<std::int64_t>(std::ceil(run_.duration))) + " timer has finished.",
             notificationDelay(*end, now_)});
    } else {
        services_.alerts.withdrawNotification(notificationIdentifier());
    }
    if (onChange) onChange();
}

} // namespace corvane
