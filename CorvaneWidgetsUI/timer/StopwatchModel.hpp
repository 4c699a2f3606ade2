#pragma once

#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/widgets/timer/TimerRun.hpp"
#include "CorvaneWidgetsUI/timer/TimeKeepingServices.hpp"

#include <functional>

namespace corvane {

/// The live stopwatch widget. It never ends, so it has no alerts; the tick only moves `now`.
/// Main thread.
class StopwatchModel {
public:
    StopwatchModel(DockWidget widget, TimeKeepingServices services);

    const DockWidget& widget() const { return widget_; }
    const StopwatchRun& run() const { return run_; }
    Date now() const { return now_; }

    std::function<void()> onChange;

    void toggle();
    void lap();
    void reset();
    void tick();

private:
    template <typename Change> void change(Change&& mutate);

    DockWidget widget_;
    TimeKeepingServices services_;
    StopwatchRun run_;
    Date now_;
};

} // namespace corvane
