// Kinds that follow the clock: clock, countdown, time progress, and the time-keeping models.

#include "CorvaneCore/support/TimeZoneCalendar.hpp"
#include "CorvaneCore/widgets/time/ClockFace.hpp"
#include "CorvaneCore/widgets/time/Countdown.hpp"
#include "CorvaneCore/widgets/time/TimeProgressPeriod.hpp"
#include "CorvaneWidgetsUI/live/LiveKinds.hpp"
#include "CorvaneWidgetsUI/timer/PomodoroModel.hpp"
#include "CorvaneWidgetsUI/timer/StopwatchModel.hpp"
#include "CorvaneWidgetsUI/timer/TimerModel.hpp"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace corvane::live {

namespace {

class ClockWidget final : public LiveWidget {
  public:
    ClockWidget(DockWidget widget, const Calendar& calendar)
        : LiveWidget(std::move(widget)), calendar_(calendar) {
        settingsChanged();
    }

  protected:
    void settingsChanged() override {
        const auto& settings = *widget_.settings<ClockSettings>();
        zone_ =
            settings.timeZoneID ? TimeZoneCalendar::named(*settings.timeZoneID) : TimeZoneCalendar::current();
    }

    WidgetReading read(Date now) override {
        const auto& settings = *widget_.settings<ClockSettings>();
        if (!zone_) return troubled("unknown time zone");
        // Where the system's 12/24-hour choice cannot be asked, the 24-hour clock is the
        // unambiguous one.
        WidgetReading reading{.caption =
                                  ClockFace::time(now, zone_->utcOffset(now),
                                                  settings.uses24Hour.value_or(true), settings.showsSeconds)};
        if (settings.timeZoneID) {
            std::string detail = ClockFace::city(zone_->name());
            if (auto day =
                    ClockFace::relativeDay(zone_->day(now).dayNumber(), calendar_.day(now).dayNumber()))
                detail += ", " + *day;
            reading.detail = detail;
        }
        return reading;
    }

    std::optional<Date> plan(Date now) const override {
        if (!zone_) return std::nullopt;
        return ClockFace::nextChange(now, zone_->utcOffset(now),
                                     widget_.settings<ClockSettings>()->showsSeconds);
    }

  private:
    const Calendar& calendar_;
    std::optional<TimeZoneCalendar> zone_;
};

class CountdownWidget final : public LiveWidget {
  public:
    using LiveWidget::LiveWidget;

  protected:
    WidgetReading read(Date now) override {
        const auto& settings = *widget_.settings<CountdownSettings>();
        // The reference date is what a countdown holds before the user picks a target.
        if (settings.target.sinceReferenceDate == 0) return {.caption = "No date", .detail = "Choose a date"};
        return {.caption = Countdown::text(settings.target, now, settings.countsUpAfter),
                .detail = settings.target > now ? std::optional<std::string>("to go") : std::nullopt};
    }
    std::optional<Date> plan(Date now) const override {
        const auto& settings = *widget_.settings<CountdownSettings>();
        if (settings.target.sinceReferenceDate == 0) return std::nullopt;
        return Countdown::nextChange(settings.target, now, settings.countsUpAfter);
    }
};

class TimeProgressWidget final : public LiveWidget {
  public:
    TimeProgressWidget(DockWidget widget, const Calendar& calendar)
        : LiveWidget(std::move(widget)), calendar_(calendar) {}

  protected:
    WidgetReading read(Date now) override {
        auto scope = widget_.settings<TimeProgressSettings>()->scope;
        auto period = TimeProgress::period(scope, now, calendar_);
        auto fraction = period.fraction(now);
        return {.caption = TimeProgress::percentText(fraction),
                .detail = std::string(TimeProgress::title(scope)),
                .progress = fraction};
    }
    std::optional<Date> plan(Date now) const override {
        auto period = TimeProgress::period(widget_.settings<TimeProgressSettings>()->scope, now, calendar_);
        return TimeProgress::nextChange(period, now);
    }

  private:
    const Calendar& calendar_;
};

/// Wraps one of the time-keeping models; it ticks once a second while its run runs.
template <typename Model> class RunWidget final : public LiveWidget {
  public:
    RunWidget(DockWidget widget, TimeKeepingServices services)
        : LiveWidget(widget), model_(std::make_unique<Model>(std::move(widget), services)) {}

  protected:
    void settingsChanged() override {
        if constexpr (requires { model_->setWidget(widget_); }) model_->setWidget(widget_);
    }
    void act(Date) override { model_->toggle(); }

    WidgetReading read(Date now) override {
        model_->tick();
        const auto& run = model_->run();
        WidgetReading reading;
        if constexpr (std::is_same_v<Model, TimerModel>) {
            reading.caption = TimerRun::format(run.displayedSeconds(now));
            if (run.mode == TimerRun::Mode::countdown && run.duration > 0)
                reading.progress = std::clamp(run.remaining(now) / run.duration, 0.0, 1.0);
        } else if constexpr (std::is_same_v<Model, StopwatchModel>) {
            reading.caption = StopwatchRun::text(run.elapsed(now), false);
        } else {
            const auto& settings = model_->settings();
            reading.caption = PomodoroRun::format(run.displayedSeconds(now, settings));
            reading.detail = run.isBreak() ? "Break" : "Focus";
            reading.progress = std::clamp(run.elapsed(now) / run.length(settings), 0.0, 1.0);
        }
        if (!reading.detail)
            reading.detail = run.isRunning() ? "Running" : run.hasStarted() ? "Paused" : "Ready";
        return reading;
    }

    std::optional<Date> plan(Date now) const override {
        if (!model_->run().isRunning()) return std::nullopt;
        // Whole seconds of the run turn over one second apart from its start.
        double elapsed = model_->run().elapsed(now);
        return now + (std::floor(elapsed) + 1 - elapsed);
    }

  private:
    std::unique_ptr<Model> model_;
};

} // namespace

std::unique_ptr<LiveWidget> makeTimeWidget(const DockWidget& widget, const LiveWidgetPorts& ports) {
    auto timeKeeping = [&]<typename Model>() -> std::unique_ptr<LiveWidget> {
        if (!ports.alerts) return std::make_unique<MissingWidget>(widget, WidgetTrouble::notAvailableHere);
        return std::make_unique<RunWidget<Model>>(
            widget, TimeKeepingServices{ports.clock, ports.calendar, *ports.alerts, ports.defaults});
    };
    switch (widget.kind.which()) {
    case WidgetKind::clock:
        return std::make_unique<ClockWidget>(widget, ports.calendar);
    case WidgetKind::countdown:
        return std::make_unique<CountdownWidget>(widget);
    case WidgetKind::timeProgress:
        return std::make_unique<TimeProgressWidget>(widget, ports.calendar);
    case WidgetKind::timer:
        return timeKeeping.operator()<TimerModel>();
    case WidgetKind::stopwatch:
        return timeKeeping.operator()<StopwatchModel>();
    case WidgetKind::pomodoro:
        return timeKeeping.operator()<PomodoroModel>();
    default:
        return nullptr;
    }
}

} // namespace corvane::live
