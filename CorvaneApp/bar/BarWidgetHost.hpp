#pragma once

#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/platform/SerialQueue.hpp"
#include "CorvaneCore/widgets/WidgetsFile.hpp"
#include "CorvaneWidgetsUI/live/LiveWidget.hpp"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The bar's live widgets: one `LiveWidget` for each widget of the widgets file, ticked each at
/// its own `nextTick` by one timer armed for the earliest of them, so an idle bar wakes only as
/// often as some tile's content can change. The slow readers of the connected kinds (weather,
/// GitHub, coding-assistant usage, clipboard) run off the main thread, one operation at a time per
/// source, and the models read their last result. Main thread.
class BarWidgetHost {
public:
    /// Ticks due within this many seconds of each other run together, a little late rather than
    /// each on a wake-up of its own.
    static constexpr double coalescing = 0.1;

    using ChangeHandler = std::function<void(const std::vector<Uuid>& changed)>;
    /// Makes the background queue of one slow source.
    using QueueFactory = std::function<std::unique_ptr<SerialQueue>()>;

    /// `ports` are handed to every model, except that its connected readers are the slow ones,
    /// called on a queue from `makeQueue`; without a factory they are called on the main thread.
    /// `onChange` hears which widgets' tiles show something new after a tick, a click or a slow
    /// result; never from `sync`, whose caller redraws anyway.
    BarWidgetHost(Scheduler& scheduler, MainQueue& mainQueue, const LiveWidgetPorts& ports, QueueFactory makeQueue,
                  ChangeHandler onChange);
    ~BarWidgetHost();
    BarWidgetHost(const BarWidgetHost&) = delete;
    BarWidgetHost& operator=(const BarWidgetHost&) = delete;

    /// Makes models for the widgets that have none, hands changed settings to the others, and
    /// lets those of widgets no longer in the file go. Returns the kinds of the models made.
    std::vector<WidgetKind> sync(const WidgetsFile& widgets);
    /// The kind's main click action; true, and `onChange` told, when the tile shows something new.
    bool activate(const Uuid& widget);

    /// What a widget's tile shows; none for a widget the host does not hold.
    const WidgetReading* reading(const Uuid& widget) const;
    /// The tile's text: the caption, else the trouble; none while there is nothing to show.
    std::optional<std::string> caption(const Uuid& widget) const;
    std::size_t liveCount() const { return live_.size(); }
    /// When the one timer fires next; none while no model will change by itself.
    std::optional<Date> armedFor() const { return armedFor_; }

private:
    class Feed;

    Date now() const;
    void arm();
    void fire();
    /// A slow result for `widget` came in.
    void arrived(const Uuid& widget);
    void changed(std::vector<Uuid> ids);

    Scheduler& scheduler_;
    LiveWidgetPorts ports_;
    ChangeHandler onChange_;
    std::vector<std::unique_ptr<Feed>> feeds_;
    std::map<Uuid, std::unique_ptr<LiveWidget>> live_;
    std::optional<Scheduler::Token> timer_;
    std::optional<Date> armedFor_;
};

} // namespace corvane
