#include "CorvaneWidgetsUI/usage/ClaudeUsageModel.hpp"

#include <exception>

namespace corvane {

struct ClaudeUsageModel::Reading {
    bool isAvailable = false;
    /// None when the totals could not be computed; the last ones stay.
    std::optional<std::map<ClaudeUsageScope, ClaudeUsageTotals>> byScope;
    std::optional<ClaudeUsageLimits> limits;
    bool isConnected = false;
};

ClaudeUsageModel::ClaudeUsageModel(DockWidget widget, std::shared_ptr<ClaudeUsageSource> source,
                                   ClaudeUsageBridge bridge, ClaudeUsageServices services)
    : widget_(std::move(widget)), source_(std::move(source)), bridge_(std::move(bridge)), services_(std::move(services)) {}

ClaudeUsageModel::~ClaudeUsageModel() { stop(); }

ClaudeUsageSettings ClaudeUsageModel::settings() const {
    if (const auto* settings = widget_.claudeUsageSettings()) return *settings;
    return {};
}

void ClaudeUsageModel::setWidget(DockWidget widget) {
    widget_ = std::move(widget);
    if (auto it = byScope_.find(settings().scope); it != byScope_.end()) totals_ = it->second;
    changed();
}

std::optional<ClaudeUsageWindow> ClaudeUsageModel::shownWindow(Date now) const {
    return ClaudeUsageLimitsFormat::shownWindow(limits_, settings().shows, now);
}

std::optional<std::string_view> ClaudeUsageModel::trouble(Date now) const {
    return ClaudeUsage::trouble(isAvailable_, hasRead_, settings().shows, shownWindow(now).has_value());
}

void ClaudeUsageModel::setSavesEnergy(bool savesEnergy) {
    if (savesEnergy == savesEnergy_) return;
    savesEnergy_ = savesEnergy;
    if (timer_) {
        services_.scheduler.cancel(*timer_);
        schedule();
    }
}

void ClaudeUsageModel::start() {
    if (timer_) return;
    schedule();
    refresh();
}

void ClaudeUsageModel::stop() {
    if (!timer_) return;
    services_.scheduler.cancel(*timer_);
    timer_.reset();
}

void ClaudeUsageModel::schedule() {
    timer_ = services_.scheduler.schedule(savesEnergy_ ? energySavingRefreshSeconds : refreshSeconds, [this] {
        schedule();
        refresh();
    });
}

void ClaudeUsageModel::refresh() {
    if (isReading_) return;
    isReading_ = true;
    std::weak_ptr<bool> alive = alive_;
    services_.runInBackground([this, alive, source = source_, bridge = bridge_, &clock = services_.clock,
                               &calendar = services_.calendar, &mainQueue = services_.mainQueue] {
        // Only values captured here are touched off the main thread; `this` is used once the
        // result is back on it and the model is known to be alive.
        Reading reading;
        const auto now = clock.now();
        reading.isAvailable = source->isAvailable();
        if (reading.isAvailable) {
            try {
                auto entries = source->entries(corvane::start(ClaudeUsageScope::week, now, calendar));
                std::map<ClaudeUsageScope, ClaudeUsageTotals> byScope;
                for (auto scope : allClaudeUsageScopes) byScope[scope] = ClaudeUsage::totals(entries, scope, now, calendar);
                reading.byScope = std::move(byScope);
            } catch (const std::exception&) {
                // Counts beyond 64 bits: keep showing the last good totals rather than wrapped ones.
            }
        } else {
            reading.byScope.emplace();
        }
        reading.limits = bridge.limits(now);
        reading.isConnected = bridge.isConnected();
        mainQueue.post([this, alive, reading = std::move(reading)]() mutable {
            if (alive.lock()) publish(std::move(reading));
        });
    });
}

void ClaudeUsageModel::publish(Reading reading) {
    isReading_ = false;
    isAvailable_ = reading.isAvailable;
    if (reading.byScope) {
        byScope_ = std::move(*reading.byScope);
        auto it = byScope_.find(settings().scope);
        totals_ = it != byScope_.end() ? it->second : ClaudeUsageTotals{};
    }
    limits_ = std::move(reading.limits);
    isConnected_ = reading.isConnected;
    hasRead_ = true;
    changed();
}

void ClaudeUsageModel::changed() {
    if (onChange) onChange();
}

} // namespace corvane
