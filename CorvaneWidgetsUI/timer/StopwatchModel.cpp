#include "CorvaneWidgetsUI/timer/StopwatchModel.hpp"

namespace corvane {

StopwatchModel::StopwatchModel(DockWidget widget, TimeKeepingServices services)
    : widget_(std::move(widget)), services_(services), now_(services.clock.now()) {
    if (auto saved =
            loadRun<StopwatchRun>(services_.defaults, StopwatchRun::defaultsKey(widget_.id), decodeStopwatchRun))
        run_ = *saved;
}

template <typename Change> void StopwatchModel::change(Change&& mutate) {
    now_ = services_.clock.now();
    mutate(run_);
    storeRun(services_.defaults, StopwatchRun::defaultsKey(widget_.id), encodeStopwatchRun(run_));
    if (onChange) onChange();
}

void StopwatchModel::toggle() {
    change([&](StopwatchRun& run) { run.toggle(now_); });
}

void StopwatchModel::lap() {
    change([&](StopwatchRun& run) { run.lap(now_); });
}

void StopwatchModel::reset() {
    change([](StopwatchRun& run) { run.reset(); });
}

void StopwatchModel::tick() {
    now_ = services_.clock.now();
    if (onChange) onChange();
}

} // namespace corvane
