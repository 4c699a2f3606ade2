#include "CorvaneApp/bar/BarWidgetHost.hpp"

#include <set>

namespace corvane {

BarWidgetHost::BarWidgetHost(Scheduler& scheduler, TimeKeepingServices services, std::function<void()> onChange)
    : ticker_(scheduler), services_(services), onChange_(std::move(onChange)) {}

BarWidgetHost::~BarWidgetHost() {
    for (auto& [id, live] : live_) ticker_.remove(live.tick);
}

std::optional<BarWidgetHost::Model> BarWidgetHost::make(const DockWidget& widget) {
    auto changed = [this] {
        if (onChange_) onChange_();
    };
    switch (widget.kind.which()) {
    case WidgetKind::timer: {
        auto model = std::make_unique<TimerModel>(widget, services_);
        model->onChange = changed;
        return Model(std::move(model));
    }
    case WidgetKind::stopwatch: {
        auto model = std::make_unique<StopwatchModel>(widget, services_);
        model->onChange = changed;
        return Model(std::move(model));
    }
    case WidgetKind::pomodoro: {
        auto model = std::make_unique<PomodoroModel>(widget, services_);
        model->onChange = changed;
        return Model(std::move(model));
    }
    default:
        return std::nullopt;
    }
}

void BarWidgetHost::sync(const WidgetsFile& widgets) {
    std::set<Uuid> present;
    for (const auto& widget : widgets.widgets) {
        present.insert(widget.id);
        if (auto found = live_.find(widget.id); found != live_.end()) {
            std::visit(
                [&](auto& model) {
                    // A stopwatch has no settings to follow. An unchanged widget is left alone: a
                    // change calls `onChange`, whose owner may well sync again.
                    if constexpr (requires { model->setWidget(widget); })
                        if (!(model->widget() == widget)) model->setWidget(widget);
                },
                found->second.model);
            continue;
        }
        auto model = make(widget);
        if (!model) continue;
        auto& live = live_[widget.id];
        live.model = std::move(*model);
        live.tick = ticker_.add([&live] { std::visit([](auto& each) { each->tick(); }, live.model); });
    }
    for (auto it = live_.begin(); it != live_.end();) {
        if (present.contains(it->first)) {
            ++it;
            continue;
        }
        ticker_.remove(it->second.tick);
        it = live_.erase(it);
    }
}

std::optional<std::string> BarWidgetHost::caption(const Uuid& widget) const {
    auto found = live_.find(widget);
    if (found == live_.end()) return std::nullopt;
    struct Caption {
        std::string operator()(const std::unique_ptr<TimerModel>& model) const {
            return TimerRun::format(model->run().displayedSeconds(model->now()));
        }
        std::string operator()(const std::unique_ptr<StopwatchModel>& model) const {
            return StopwatchRun::text(model->run().elapsed(model->now()), false);
        }
        std::string operator()(const std::unique_ptr<PomodoroModel>& model) const {
            const auto* settings = model->widget().pomodoroSettings();
            return PomodoroRun::format(model->run().displayedSeconds(model->now(), settings ? *settings : PomodoroSettings{}));
        }
    };
    return std::visit(Caption{}, found->second.model);
}

} // namespace corvane
