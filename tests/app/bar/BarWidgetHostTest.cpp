// The bar's live widgets: each ticks only when its tile can change, one timer is armed at a time,
// nothing is redrawn when no reading changed, slow sources work off the main thread one at a
// time, and a click does the kind's action.

#include "CorvaneApp/bar/BarContent.hpp"
#include "CorvaneApp/bar/BarWidgetHost.hpp"
#include "CorvaneCore/widgets/WidgetPlacement.hpp"
#include "CorvaneWidgetsUI/timer/TimerModel.hpp"
#include "fakes/FakeSystemLoad.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/ManualSerialQueue.hpp"
#include "fakes/RecordingUserAlerts.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

DockWidget widgetOf(WidgetKind kind, std::string name = "W") {
    return DockWidget(Uuid::generate(), std::move(name), std::nullopt, DockWidgetKind::defaults(kind));
}

DockWidget clockWidget(bool seconds) {
    auto widget = widgetOf(WidgetKind::clock, seconds ? "Seconds" : "Minutes");
    widget.setSettings(std::optional(ClockSettings{.timeZoneID = "UTC", .showsSeconds = seconds, .uses24Hour = true}));
    return widget;
}

struct Bar {
    // Thirty seconds past a whole minute.
    ManualClock clock{Date{600000030}};
    ManualScheduler scheduler{clock};
    FixedOffsetCalendar calendar;
    RecordingUserAlerts alerts;
    InMemoryUserDefaults defaults;
    FakeSystemLoad load;
    std::vector<std::vector<Uuid>> changes;

    LiveWidgetPorts ports() {
        return {.clock = clock, .calendar = calendar, .alerts = &alerts, .defaults = &defaults, .machine = {.load = &load}};
    }
    /// How many times each widget was reported changed.
    int changesOf(const Uuid& id) const {
        int count = 0;
        for (const auto& each : changes) count += static_cast<int>(std::count(each.begin(), each.end(), id));
        return count;
    }
};

} // namespace

TEST(BarWidgetHost, TicksEachWidgetOnlyWhenItsTileCanChangeWithOneTimerArmed) {
    Bar bar;
    bar.load.cpuValue = 0.25;
    bar.load.memoryValue = 0.5;
    auto minutes = clockWidget(false), seconds = clockWidget(true);
    auto activity = widgetOf(WidgetKind::activity), note = widgetOf(WidgetKind::note);
    BarWidgetHost host(bar.scheduler, bar.scheduler, bar.ports(), {},
                       [&](const std::vector<Uuid>& ids) { bar.changes.push_back(ids); });
    WidgetsFile widgets;
    widgets.widgets = {minutes, seconds, activity, note};
    host.sync(widgets);
    EXPECT_TRUE(bar.changes.empty()) << "the owner of a sync redraws anyway";
    EXPECT_EQ(host.caption(minutes.id), "10:40");
    EXPECT_EQ(bar.scheduler.pendingCount(), 1u);

    // A minute and a half: the seconds clock every second, activity every two seconds, the
    // minutes clock once at the whole minute, the note never.
    int readings = bar.load.cpuReadings;
    for (int second = 1; second <= 90; ++second) {
        bar.scheduler.advance(1);
        EXPECT_LE(bar.scheduler.pendingCount(), 1u);
    }
    EXPECT_EQ(bar.changesOf(seconds.id), 90);
    EXPECT_EQ(bar.load.cpuReadings - readings, 45);
    EXPECT_EQ(bar.changesOf(activity.id), 0) << "an unchanged reading redraws nothing";
    EXPECT_EQ(bar.changesOf(minutes.id), 2) << "10:41 and 10:42";
    EXPECT_EQ(host.caption(minutes.id), "10:42");
    EXPECT_EQ(bar.changesOf(note.id), 0);

    // Without the seconds clock and with a steady load, a minute passes in 30 wake-ups and no redraw
    // but the minute's.
    widgets.widgets = {minutes, activity, note};
    host.sync(widgets);
    bar.changes.clear();
    int wakeUps = 0;
    while (bar.clock.now().sinceReferenceDate < 600000030 + 150) {
        auto due = host.armedFor();
        ASSERT_TRUE(due);
        bar.scheduler.advance(due->sinceReferenceDate - bar.clock.now().sinceReferenceDate);
        ++wakeUps;
    }
    EXPECT_EQ(wakeUps, 30);
    ASSERT_EQ(bar.changes.size(), 1u);
    EXPECT_EQ(bar.changes[0], std::vector<Uuid>{minutes.id});

    // A note alone arms nothing.
    widgets.widgets = {note};
    host.sync(widgets);
    EXPECT_EQ(host.armedFor(), std::nullopt);
    EXPECT_EQ(bar.scheduler.pendingCount(), 0u);
}

TEST(BarWidgetHost, TimeKeepingTicksWhileRunningRingsAtTheEndAndAClickPausesIt) {
    Bar bar;
    auto timer = widgetOf(WidgetKind::timer, "Tea");
    auto water = widgetOf(WidgetKind::water);
    TimerModel(timer, {bar.clock, bar.calendar, bar.alerts, &bar.defaults}).startCountdown(120);
    WidgetsFile widgets;
    widgets.widgets = {timer, water};
    // The owner redraws on every change and syncs again as it does: that must not loop.
    std::function<void()> redraw;
    BarWidgetHost host(bar.scheduler, bar.scheduler, bar.ports(), {}, [&](const std::vector<Uuid>& ids) {
        bar.changes.push_back(ids);
        redraw();
    });
    redraw = [&] { host.sync(widgets); };
    host.sync(widgets);
    EXPECT_EQ(host.liveCount(), 2u);
    EXPECT_EQ(host.caption(timer.id), "2:00");
    EXPECT_EQ(host.caption(water.id), "not available here") << "no data folder given";

    bar.scheduler.advance(1);
    EXPECT_EQ(host.caption(timer.id), "1:59");
    Profile work{.id = Uuid::generate(), .name = "Work"};
    work = WidgetPlacement::setting(timer, true, work, "/Applications/Helper.app");
    auto content = barContent(&work, widgets, DockStyle{}, {.captions = [&](const Uuid& id) { return host.caption(id); }});
    auto tile = std::find_if(content.scene.tiles.begin(), content.scene.tiles.end(),
                             [](const BarTile& each) { return each.widgetKind == WidgetKind::timer; });
    ASSERT_NE(tile, content.scene.tiles.end());
    EXPECT_EQ(tile->caption, "1:59");

    // A click pauses it: the tile says so at once and the host stops ticking it.
    bar.changes.clear();
    EXPECT_TRUE(host.activate(timer.id));
    ASSERT_EQ(bar.changes.size(), 1u);
    EXPECT_EQ(bar.changes[0], std::vector<Uuid>{timer.id});
    EXPECT_EQ(host.reading(timer.id)->detail, "Paused");
    EXPECT_EQ(host.armedFor(), std::nullopt);
    EXPECT_FALSE(host.activate(Uuid::generate()));

    host.activate(timer.id);
    bar.scheduler.advance(119);
    EXPECT_EQ(host.caption(timer.id), "0:00");
    EXPECT_FALSE(bar.alerts.sounds.empty()) << "the end rings";
    EXPECT_EQ(host.armedFor(), std::nullopt);

    widgets.widgets.clear();
    host.sync(widgets);
    EXPECT_EQ(host.liveCount(), 0u);
    EXPECT_EQ(host.caption(timer.id), std::nullopt);
}

TEST(BarWidgetHost, SlowSourcesReadOffTheMainThreadOneAtATimeAndRedrawWhatTheyChanged) {
    Bar bar;
    std::vector<ManualSerialQueue*> queues;
    int fetches = 0;
    std::string temperature = "12°";
    auto ports = bar.ports();
    ports.weather = [&](const DockWidget& widget, Date) {
        ++fetches;
        return WidgetReading{.caption = temperature, .detail = widget.name};
    };
    auto oslo = widgetOf(WidgetKind::weather, "Oslo"), bergen = widgetOf(WidgetKind::weather, "Bergen");
    auto github = widgetOf(WidgetKind::github);
    std::unique_ptr<BarWidgetHost> host = std::make_unique<BarWidgetHost>(
        bar.scheduler, bar.scheduler, ports,
        [&] {
            auto queue = std::make_unique<ManualSerialQueue>();
            queues.push_back(queue.get());
            return queue;
        },
        [&](const std::vector<Uuid>& ids) { bar.changes.push_back(ids); });
    ASSERT_EQ(queues.size(), 1u) << "one queue for each source given";
    auto& queue = *queues[0];
    WidgetsFile widgets;
    widgets.widgets = {oslo, bergen, github};
    host->sync(widgets);
    EXPECT_EQ(fetches, 0) << "nothing slow on the main thread";
    EXPECT_EQ(host->caption(oslo.id), std::nullopt);
    EXPECT_EQ(host->caption(github.id), "not connected");
    EXPECT_EQ(queue.pendingCount(), 1u) << "one operation at a time";

    queue.runAll();
    EXPECT_EQ(fetches, 1);
    EXPECT_TRUE(bar.changes.empty()) << "results are published on the main queue";
    bar.scheduler.runPending();
    EXPECT_EQ(host->caption(oslo.id), "12°");
    ASSERT_EQ(bar.changes.size(), 1u);
    EXPECT_EQ(bar.changes[0], std::vector<Uuid>{oslo.id});
    EXPECT_EQ(queue.pendingCount(), 1u) << "the next widget's turn, and no second fetch for the first";
    queue.runAll();
    bar.scheduler.runPending();
    EXPECT_EQ(host->reading(bergen.id)->detail, "Bergen");
    EXPECT_EQ(queue.pendingCount(), 0u);
    EXPECT_EQ(fetches, 2);

    // On the refresh timer the tiles keep the last result until the new one comes; an equal
    // result redraws nothing.
    bar.changes.clear();
    bar.scheduler.advance(host->armedFor()->sinceReferenceDate - bar.clock.now().sinceReferenceDate);
    EXPECT_EQ(host->caption(oslo.id), "12°");
    queue.runAll();
    bar.scheduler.runPending();
    queue.runAll();
    bar.scheduler.runPending();
    EXPECT_EQ(fetches, 4);
    EXPECT_TRUE(bar.changes.empty());

    // A result that arrives after the host is gone reaches nothing.
    bar.scheduler.advance(host->armedFor()->sinceReferenceDate - bar.clock.now().sinceReferenceDate);
    host.reset();
    bar.scheduler.runPending();
    EXPECT_EQ(fetches, 5);
}
