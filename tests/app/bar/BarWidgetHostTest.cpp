// The bar's live time-keeping widgets: they tick on the main queue, ring where they end, show
// their time on their tiles, and go with their widgets.

#include "CorvaneApp/bar/BarContent.hpp"
#include "CorvaneApp/bar/BarWidgetHost.hpp"
#include "CorvaneCore/widgets/WidgetPlacement.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/RecordingUserAlerts.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(BarWidgetHost, CountdownsTickOnTheMainQueueRingAtTheEndAndGoWithTheirWidget) {
    ManualClock clock;
    ManualScheduler scheduler{clock};
    FixedOffsetCalendar calendar;
    RecordingUserAlerts alerts;
    InMemoryUserDefaults defaults;
    TimeKeepingServices services{clock, calendar, alerts, &defaults};
    DockWidget timer(Uuid::generate(), "Tea", std::nullopt, DockWidgetKind::defaults(WidgetKind::timer));
    DockWidget stopwatch(Uuid::generate(), "Run", std::nullopt, DockWidgetKind::defaults(WidgetKind::stopwatch));
    DockWidget water(Uuid::generate(), "Water", std::nullopt, DockWidgetKind::defaults(WidgetKind::water));
    TimerModel(timer, services).startCountdown(120); // started elsewhere: the host picks the run up

    int changes = 0;
    WidgetsFile widgets;
    widgets.widgets = {timer, stopwatch, water};
    // The owner redraws on every change and syncs again as it does: that must not loop.
    std::function<void()> redraw;
    BarWidgetHost host(scheduler, services, [&] { ++changes; redraw(); });
    redraw = [&] { host.sync(widgets); };
    host.sync(widgets);
    EXPECT_EQ(host.liveCount(), 2u);
    EXPECT_EQ(host.caption(timer.id), "2:00");
    EXPECT_EQ(host.caption(stopwatch.id), "00:00");
    EXPECT_EQ(host.caption(water.id), std::nullopt);

    scheduler.advance(1);
    EXPECT_GT(changes, 0);
    EXPECT_EQ(host.caption(timer.id), "1:59");

    // Its tile shows it.
    Profile work{.id = Uuid::generate(), .name = "Work"};
    work = WidgetPlacement::setting(timer, true, work, "/Applications/Helper.app");
    auto content = barContent(&work, widgets, DockStyle{}, {.captions = [&](const Uuid& id) { return host.caption(id); }});
    auto tile = std::find_if(content.scene.tiles.begin(), content.scene.tiles.end(),
                             [](const BarTile& each) { return each.widgetKind == WidgetKind::timer; });
    ASSERT_NE(tile, content.scene.tiles.end());
    EXPECT_EQ(tile->caption, "1:59");

    scheduler.advance(119);
    EXPECT_EQ(host.caption(timer.id), "0:00");
    EXPECT_FALSE(alerts.sounds.empty()) << "the end rings";

    widgets.widgets = {stopwatch};
    host.sync(widgets);
    EXPECT_EQ(host.liveCount(), 1u);
    EXPECT_EQ(host.caption(timer.id), std::nullopt);
    widgets.widgets.clear();
    host.sync(widgets);
    changes = 0;
    scheduler.advance(5);
    EXPECT_EQ(changes, 0) << "nothing is left to tick";
}
