#include "CorvaneApp/bar/BarWidgetHost.hpp"

#include "CorvaneCore/platform/Clock.hpp"

#include <algorithm>
#include <deque>
#include <set>

namespace corvane {

/// One slow source: its reader runs on the source's own queue, one widget at a time, and the
/// models read the last result. A result that comes in is read once before the reader is asked
/// again, so the tick that picks it up does not start another fetch.
class BarWidgetHost::Feed {
public:
    Feed(ConnectedReader slow, std::unique_ptr<SerialQueue> queue, MainQueue& mainQueue,
         std::function<void(const Uuid&)> arrived)
        : slow_(std::move(slow)), queue_(std::move(queue)), mainQueue_(mainQueue), arrived_(std::move(arrived)) {}

    ~Feed() {
        *alive_ = false;
        // Runs what is queued, whose result then finds the feed gone.
        queue_.reset();
    }

    ConnectedReader reader() {
        return [this](const DockWidget& widget, Date now) { return read(widget, now); };
    }

    void forget(const Uuid& widget) {
        entries_.erase(widget);
        std::erase_if(waiting_, [&](const auto& each) { return each.first.id == widget; });
    }

private:
    struct Entry {
        WidgetReading last;
        bool fresh = false;
        bool wanted = false;
    };

    WidgetReading read(const DockWidget& widget, Date now) {
        auto& entry = entries_[widget.id];
        if (std::exchange(entry.fresh, false)) return entry.last;
        if (!entry.wanted) {
            entry.wanted = true;
            waiting_.emplace_back(widget, now);
            start();
        }
        return entry.last;
    }

    void start() {
        if (busy_ || waiting_.empty()) return;
        busy_ = true;
        auto widget = std::move(waiting_.front().first);
        auto now = waiting_.front().second;
        waiting_.pop_front();
        queue_->async([slow = slow_, widget, now, alive = alive_, this, &mainQueue = mainQueue_] {
            auto result = slow(widget, now);
            mainQueue.post([alive, this, id = widget.id, result = std::move(result)] {
                if (*alive) finish(id, result);
            });
        });
    }

    void finish(const Uuid& id, const WidgetReading& result) {
        busy_ = false;
        if (auto found = entries_.find(id); found != entries_.end()) {
            found->second = {.last = result, .fresh = true};
            arrived_(id);
        }
        start();
    }

    ConnectedReader slow_;
    std::unique_ptr<SerialQueue> queue_;
    MainQueue& mainQueue_;
    std::function<void(const Uuid&)> arrived_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    std::map<Uuid, Entry> entries_;
    std::deque<std::pair<DockWidget, Date>> waiting_;
    bool busy_ = false;
};

BarWidgetHost::BarWidgetHost(Scheduler& scheduler, MainQueue& mainQueue, const LiveWidgetPorts& ports,
                             QueueFactory makeQueue, ChangeHandler onChange)
    : scheduler_(scheduler), ports_(ports), onChange_(std::move(onChange)) {
    if (!makeQueue) return;
    for (auto* reader : {&ports_.weather, &ports_.github, &ports_.claudeUsage, &ports_.clipboard}) {
        if (!*reader) continue;
        auto& feed = feeds_.emplace_back(std::make_unique<Feed>(std::move(*reader), makeQueue(), mainQueue,
                                                                [this](const Uuid& id) { arrived(id); }));
        *reader = feed->reader();
    }
}

BarWidgetHost::~BarWidgetHost() {
    if (timer_) scheduler_.cancel(*timer_);
    // The models read through the feeds; the feeds go first so that no result reaches a model.
    feeds_.clear();
}

Date BarWidgetHost::now() const { return ports_.clock.now(); }

std::vector<WidgetKind> BarWidgetHost::sync(const WidgetsFile& widgets) {
    std::vector<WidgetKind> made;
    std::set<Uuid> present;
    auto at = now();
    for (const auto& widget : widgets.widgets) {
        present.insert(widget.id);
        auto found = live_.find(widget.id);
        if (found != live_.end() && found->second->widget().kind.which() == widget.kind.which()) {
            // An unchanged widget is left alone: the owner may well sync on every redraw.
            if (!(found->second->widget() == widget)) found->second->setWidget(widget, at);
            continue;
        }
        auto model = makeLiveWidget(widget, ports_);
        model->tick(at);
        live_[widget.id] = std::move(model);
        made.push_back(widget.kind.which());
    }
    for (auto it = live_.begin(); it != live_.end();) {
        if (present.contains(it->first)) {
            ++it;
            continue;
        }
        for (auto& feed : feeds_) feed->forget(it->first);
        it = live_.erase(it);
    }
    arm();
    return made;
}

bool BarWidgetHost::activate(const Uuid& widget) {
    auto found = live_.find(widget);
    if (found == live_.end()) return false;
    bool didChange = found->second->activate(now());
    arm();
    if (didChange) changed({widget});
    return didChange;
}

const WidgetReading* BarWidgetHost::reading(const Uuid& widget) const {
    auto found = live_.find(widget);
    return found == live_.end() ? nullptr : &found->second->reading();
}

std::optional<std::string> BarWidgetHost::caption(const Uuid& widget) const {
    const auto* shown = reading(widget);
    if (!shown) return std::nullopt;
    if (!shown->caption.empty()) return shown->caption;
    return shown->trouble;
}

void BarWidgetHost::arm() {
    std::optional<Date> earliest;
    for (const auto& [id, model] : live_)
        if (auto next = model->nextTick(); next && (!earliest || *next < *earliest)) earliest = next;
    std::optional<Date> fireAt;
    if (earliest) {
        fireAt = earliest;
        for (const auto& [id, model] : live_)
            if (auto next = model->nextTick(); next && *next <= *earliest + coalescing && *fireAt < *next) fireAt = next;
    }
    if (fireAt == armedFor_ && (timer_ || !fireAt)) return;
    if (timer_) scheduler_.cancel(*std::exchange(timer_, std::nullopt));
    armedFor_ = fireAt;
    if (!fireAt) return;
    timer_ = scheduler_.schedule(fireAt->sinceReferenceDate - now().sinceReferenceDate, [this] {
        timer_.reset();
        armedFor_.reset();
        fire();
    });
}

void BarWidgetHost::fire() {
    // A timer may fire a hair early on some systems; such a model waits for the next round.
    constexpr double early = 0.001;
    auto at = now();
    std::vector<Uuid> ids;
    for (auto& [id, model] : live_)
        if (auto next = model->nextTick(); next && next->sinceReferenceDate <= at.sinceReferenceDate + early)
            if (model->tick(at)) ids.push_back(id);
    arm();
    if (!ids.empty()) changed(std::move(ids));
}

void BarWidgetHost::arrived(const Uuid& widget) {
    auto found = live_.find(widget);
    if (found == live_.end()) return;
    bool didChange = found->second->tick(now());
    arm();
    if (didChange) changed({widget});
}

void BarWidgetHost::changed(std::vector<Uuid> ids) {
    if (onChange_) onChange_(ids);
}

} // namespace corvane
