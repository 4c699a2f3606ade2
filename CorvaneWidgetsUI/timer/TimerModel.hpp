#pragma once

#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/widgets/timer/TimerRun.hpp"
#include "CorvaneWidgetsUI/timer/TimeKeepingServices.hpp"

#include <functional>
#include <string>
#include <string_view>

namespace corvane {

/// The live timer widget: its run, the moment the tile shows, and the end-of-run alerts. Every
/// change is saved under the widget's key and keeps the end notification in step. Main thread.
class TimerModel {
public:
    static constexpr std::string_view notificationPrefix = "dev.tessik.corvane.timer.";
    static constexpr std::string_view finishedSound = "Glass";

    /// Picks up the widget's saved run; a running countdown gets its notification back.
    TimerModel(DockWidget widget, TimeKeepingServices services);

    const DockWidget& widget() const { return widget_; }
    const TimerRun& run() const { return run_; }
    Date now() const { return now_; }
    std::string notificationIdentifier() const { return std::string(notificationPrefix) + widget_.id.string(); }

    /// Called after every change, ticks included.
    std::function<void()> onChange;

    void setWidget(DockWidget widget);
    void start();
    void pause();
    void toggle();
    void reset();
    /// A preset: a fresh countdown of `seconds`, running at once.
    void startCountdown(double seconds);
    /// Switching mode starts over, since a countdown's elapsed time means nothing to a stopwatch.
    void setMode(TimerRun::Mode mode);

    /// Once a second: ends a countdown that reached zero, rings and asks for attention.
    void tick();

private:
    template <typename Change> void change(Change&& mutate);
    void changed();

    DockWidget widget_;
    TimeKeepingServices services_;
    TimerRun run_;
    Date now_;
};

} // namespace corvane
