#pragma once

#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/platform/Clock.hpp"
#include "CorvaneCore/platform/Scheduler.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsage.hpp"
#include "CorvaneCore/widgets/usage/ClaudeUsageLimits.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageBridge.hpp"
#include "CorvaneWidgetsUI/usage/ClaudeUsageSource.hpp"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string_view>

namespace corvane {

/// What the usage model needs from the platform. Everything must outlive the model and any
/// refresh it started.
struct ClaudeUsageServices {
    const Clock& clock;
    const Calendar& calendar;
    /// Drives the repeating refresh.
    Scheduler& scheduler;
    /// Where results are published.
    MainQueue& mainQueue;
    /// Runs file work off the main thread at utility priority.
    std::function<void(std::function<void()>)> runInBackground;
};

/// The live coding-assistant usage widget: token totals for every period and the plan limits,
/// refreshed every minute (every five while saving energy). A refresh reads the week once and
/// computes every period from it, so switching periods needs no reading. Main thread.
class ClaudeUsageModel {
public:
    static constexpr double refreshSeconds = 60;
    static constexpr double energySavingRefreshSeconds = 300;

    ClaudeUsageModel(DockWidget widget, std::shared_ptr<ClaudeUsageSource> source, ClaudeUsageBridge bridge,
                     ClaudeUsageServices services);
    ~ClaudeUsageModel();
    ClaudeUsageModel(const ClaudeUsageModel&) = delete;
    ClaudeUsageModel& operator=(const ClaudeUsageModel&) = delete;

    const DockWidget& widget() const { return widget_; }
    /// New settings pick their period from what was read already.
    void setWidget(DockWidget widget);
    ClaudeUsageSettings settings() const;

    /// Totals of the period the settings choose.
    const ClaudeUsageTotals& totals() const { return totals_; }
    const std::map<ClaudeUsageScope, ClaudeUsageTotals>& byScope() const { return byScope_; }
    const std::optional<ClaudeUsageLimits>& limits() const { return limits_; }
    bool isConnected() const { return isConnected_; }
    bool isAvailable() const { return isAvailable_; }
    bool hasRead() const { return hasRead_; }
    bool isReading() const { return isReading_; }
    const ClaudeUsageSource& source() const { return *source_; }

    /// The plan-limit window the tile shows at `now`, if any.
    std::optional<ClaudeUsageWindow> shownWindow(Date now) const;
    /// The tile's text when it has nothing to show.
    std::optional<std::string_view> trouble(Date now) const;

    bool savesEnergy() const { return savesEnergy_; }
    void setSavesEnergy(bool savesEnergy);

    /// Called after every published refresh and settings change.
    std::function<void()> onChange;

    /// Reads now and then on every tick of the repeating timer.
    void start();
    void stop();
    /// Does nothing while a refresh is under way.
    void refresh();

private:
    struct Reading;
    void publish(Reading reading);
    void schedule();
    void changed();

    DockWidget widget_;
    std::shared_ptr<ClaudeUsageSource> source_;
    ClaudeUsageBridge bridge_;
    ClaudeUsageServices services_;
    ClaudeUsageTotals totals_;
    std::map<ClaudeUsageScope, ClaudeUsageTotals> byScope_;
    std::optional<ClaudeUsageLimits> limits_;
    bool isConnected_ = false;
    bool isAvailable_ = false;
    bool hasRead_ = false;
    bool isReading_ = false;
    bool savesEnergy_ = false;
    std::optional<Scheduler::Token> timer_;
    // Results of a refresh that ends after the model is gone are dropped, not published.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace corvane
