#include "CorvaneWidgetsUI/usage/ClaudeUsageModel.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/ManualScheduler.hpp"
#include "widgetsui/usage/TranscriptFixtures.hpp"

#include <gtest/gtest.h>

#include <deque>

using namespace corvane;

namespace {

struct UsageHarness {
    TemporaryDirectory home;
    ManualClock clock{june(10)};
    ManualScheduler scheduler{clock};
    FixedOffsetCalendar calendar;
    /// Background work waits here until the test lets it run.
    std::deque<std::function<void()>> background;
    std::filesystem::path session = home / ".claude/projects/-Users-ann-atlas/s.jsonl";

    ClaudeUsageServices services() {
        return {clock, calendar, scheduler, scheduler, [this](std::function<void()> work) { background.push_back(std::move(work)); }};
    }
    std::unique_ptr<ClaudeUsageModel> model(ClaudeUsageSettings settings = {}) {
        return std::make_unique<ClaudeUsageModel>(
            DockWidget{Uuid::generate(), "Claude", std::nullopt, settings},
            std::make_shared<ClaudeUsageSource>(home / ".claude/projects"),
            ClaudeUsageBridge(home.path(), home / "support"), services());
    }
    /// Lets queued background work run, then what it posted to the main queue.
    void settle() {
        while (!background.empty()) {
            auto work = std::move(background.front());
            background.pop_front();
            work();
        }
        scheduler.runPending();
    }
};

} // namespace

TEST(ClaudeUsageModel, ReadsTheWeekOnceAndServesEveryPeriodFromIt) {
    UsageHarness h;
    // 22:00 UTC on June 10: one message an hour ago, one late yesterday, one eight days ago.
    writeText(h.session, assistantLine("older", june(-8 * 24), 3, 0) + assistantLine("yesterday", june(-13), 20, 0) +
                             assistantLine("now", june(9), 100, 0));
    setModified(h.session, june(9));
    auto model = h.model({ClaudeUsageShows::tokens, ClaudeUsageScope::block, 5'000'000});
    int changes = 0;
    model->onChange = [&] { ++changes; };

    model->start();
    EXPECT_TRUE(model->isReading());
    model->refresh(); // one refresh at a time
    EXPECT_EQ(h.background.size(), 1u);
    h.settle();
    EXPECT_FALSE(model->isReading());
    EXPECT_TRUE(model->hasRead());
    EXPECT_TRUE(model->isAvailable());
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(model->totals().tokens, 100);
    EXPECT_EQ(model->byScope().at(ClaudeUsageScope::today).tokens, 100);
    EXPECT_EQ(model->byScope().at(ClaudeUsageScope::week).tokens, 120);
    EXPECT_EQ(model->trouble(h.clock.now()), std::nullopt);

    model->setWidget(DockWidget{model->widget().id, "Claude", std::nullopt,
                                ClaudeUsageSettings{ClaudeUsageShows::tokens, ClaudeUsageScope::week}});
    EXPECT_TRUE(h.background.empty()) << "a new period reads nothing";
    EXPECT_EQ(model->totals().tokens, 120);

    // The minute's tick reads what was appended since.
    append(h.session, assistantLine("later", june(10), 7, 0));
    h.scheduler.advance(59);
    EXPECT_TRUE(h.background.empty());
    h.scheduler.advance(1);
    h.settle();
    EXPECT_EQ(model->totals().tokens, 127);
    EXPECT_EQ(model->totals().messages, 3);

    // Saving energy stretches the interval to five minutes.
    model->setSavesEnergy(true);
    h.scheduler.advance(299);
    EXPECT_TRUE(h.background.empty());
    h.scheduler.advance(1);
    EXPECT_EQ(h.background.size(), 1u);
    h.settle();
    model->stop();
    h.scheduler.advance(3600);
    EXPECT_TRUE(h.background.empty());
}

TEST(ClaudeUsageModel, TroublesAndLimitsAsTheTileShowsThem) {
    UsageHarness h;
    auto model = h.model({ClaudeUsageShows::fiveHourLimit});
    EXPECT_EQ(model->trouble(h.clock.now()), "Waiting for Claude Code");
    model->refresh();
    h.settle();
    EXPECT_FALSE(model->isAvailable());
    EXPECT_EQ(model->trouble(h.clock.now()), "Claude Code has not run here");

    std::filesystem::create_directories(h.home / ".claude/projects");
    writeText(h.home / "support/claude-usage.json",
              R"({"rate_limits": {"five_hour": {"used_percentage": 12, "resets_at": )" +
                  std::to_string(june(12).unixTime()) + "}}}");
    setModified(h.home / "support/claude-usage.json", june(10));
    model->refresh();
    h.settle();
    EXPECT_FALSE(model->isConnected());
    ASSERT_TRUE(model->shownWindow(h.clock.now()));
    EXPECT_EQ(model->shownWindow(h.clock.now())->usedPercentage, 12);
    EXPECT_EQ(model->trouble(h.clock.now()), std::nullopt);
    EXPECT_EQ(model->trouble(june(12)), "Waiting for Claude Code") << "the window has reset";
}

TEST(ClaudeUsageModel, ARefreshThatEndsAfterTheModelIsGoneIsDropped) {
    UsageHarness h;
    std::filesystem::create_directories(h.home / ".claude/projects");
    auto model = h.model();
    model->start();
    model.reset();
    h.settle();
    EXPECT_EQ(h.scheduler.pendingCount(), 0u);
}
