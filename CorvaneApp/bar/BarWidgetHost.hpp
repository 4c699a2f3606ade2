#pragma once

#include "CorvaneCore/widgets/WidgetsFile.hpp"
#include "CorvaneWidgetsUI/timer/PomodoroModel.hpp"
#include "CorvaneWidgetsUI/timer/SecondTicker.hpp"
#include "CorvaneWidgetsUI/timer/StopwatchModel.hpp"
#include "CorvaneWidgetsUI/timer/TimerModel.hpp"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace corvane {

/// The bar's live time-keeping widgets: one model for each timer, stopwatch and pomodoro widget
/// of the widgets file, ticked once a second on the main queue (a countdown that ends rings
/// there), and the time each of their tiles shows. Main thread.
class BarWidgetHost {
public:
    /// `onChange` runs after a tick or an edit changed what some tile shows.
    BarWidgetHost(Scheduler& scheduler, TimeKeepingServices services, std::function<void()> onChange);
    ~BarWidgetHost();
    BarWidgetHost(const BarWidgetHost&) = delete;
    BarWidgetHost& operator=(const BarWidgetHost&) = delete;

    /// Makes models for the widgets that have none, hands changed settings to the others, and
    /// lets those of widgets no longer in the file go.
    void sync(const WidgetsFile& widgets);
    /// The time a widget's tile shows ("4:59", "00:12"); none for widgets without a live model.
    std::optional<std::string> caption(const Uuid& widget) const;
    std::size_t liveCount() const { return live_.size(); }

private:
    using Model = std::variant<std::unique_ptr<TimerModel>, std::unique_ptr<StopwatchModel>, std::unique_ptr<PomodoroModel>>;
    struct Live {
        Model model;
        SecondTicker::Handle tick;
    };

    std::optional<Model> make(const DockWidget& widget);

    SecondTicker ticker_;
    TimeKeepingServices services_;
    std::function<void()> onChange_;
    std::map<Uuid, Live> live_;
};

} // namespace corvane
