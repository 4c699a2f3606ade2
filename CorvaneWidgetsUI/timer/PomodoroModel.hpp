#pragma once

#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/widgets/timer/PomodoroRun.hpp"
#include "CorvaneWidgetsUI/timer/TimeKeepingServices.hpp"

#include <functional>
#include <string>
#include <string_view>

namespace corvane {

/// The live pomodoro widget: its run under the widget's settings, the phase ends and their
/// alerts. Every change is saved under the widget's key and keeps the end-of-phase notification
/// in step. Main thread.
class PomodoroModel {
public:
    static constexpr std::string_view notificationPrefix = "dev.tessik.corvane.pomodoro.";
    static constexpr std::string_view focusEndSound = "Glass";
    static constexpr std::string_view breakEndSound = "Submarine";

    PomodoroModel(DockWidget widget, TimeKeepingServices services);

    const DockWidget& widget() const { return widget_; }
    /// The widget's settings, or the defaults for a widget of another kind.
    const PomodoroSettings& settings() const { return settings_; }
    const PomodoroRun& run() const { return run_; }
    Date now() const { return now_; }
    std::string notificationIdentifier() const { return std::string(notificationPrefix) + widget_.id.string(); }

    std::function<void()> onChange;

    /// New settings apply to the running phase at once; its end notification moves with them.
    void setWidget(DockWidget widget);
    void toggle();
    /// Moves on without counting a focus session.
    void skip();
    /// Ends the phase as completed.
    void finish(Date at);
    void reset();
    void resetEverything();

    /// Once a second: ends a phase whose time is up, rings when the settings say so, and asks
    /// for attention.
    void tick();

private:
    template <typename Change> void change(Change&& mutate);
    void changed();

    DockWidget widget_;
    PomodoroSettings settings_;
    TimeKeepingServices services_;
    PomodoroRun run_;
    Date now_;
};

} // namespace corvane
