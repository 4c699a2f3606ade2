#include "CorvaneWidgetsUI/live/LiveWidget.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneWidgetsUI/live/SharedSystemLoad.hpp"
#include "fakes/FakeLiveSources.hpp"
#include "fakes/FakeSystemLoad.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/RecordingUserAlerts.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

#include <set>

using namespace corvane;

namespace {

class LiveWidgets : public ::testing::Test {
  protected:
    /// 2026-03-10 (a Tuesday) 09:00 in the user's calendar, one hour east of UTC.
    Date start = FixedOffsetCalendar(3600).at({2026, 3, 10}, 9);
    ManualClock clock{start};
    FixedOffsetCalendar calendar{3600};
    LiveWidgetPorts bare{.clock = clock, .calendar = calendar};

    template <typename Settings> static DockWidget widget(Settings settings) {
        return DockWidget(Uuid::generate(), "W", std::nullopt, DockWidget::Kind(std::move(settings)));
    }
    static DockWidget widget(WidgetKind kind) {
        return DockWidget(Uuid::generate(), "W", std::nullopt, DockWidget::Kind::defaults(kind));
    }
    /// The model's reading after its first tick.
    static const WidgetReading& first(LiveWidget& model, Date now) {
        model.tick(now);
        return model.reading();
    }
};

} // namespace

TEST_F(LiveWidgets, EveryKindHasAModelAndKindsWithoutTheirSourceSaySo) {
    std::set<WidgetKind> missing, unconnected, working;
    for (std::size_t i = 0; i < EnumCases<WidgetKind>::names.size(); ++i) {
        auto kind = static_cast<WidgetKind>(i);
        auto model = makeLiveWidget(widget(kind), bare);
        ASSERT_TRUE(model) << caseName(kind);
        EXPECT_TRUE(model->tick(start)) << caseName(kind) << ": the first tick gives a reading";
        const auto& reading = model->reading();
        if (reading.trouble == WidgetTrouble::notAvailableHere)
            missing.insert(kind);
        else if (reading.trouble == WidgetTrouble::notConnected)
            unconnected.insert(kind);
        else if (!reading.trouble && !reading.caption.empty())
            working.insert(kind);
        if (reading.trouble) {
            EXPECT_TRUE(reading.caption.empty()) << caseName(kind) << ": no value beside a trouble";
        }
    }
    using enum WidgetKind;
    EXPECT_EQ(working,
              (std::set{collection, clock, countdown, timeProgress, note, bookmarks, shelf, converter}));
    EXPECT_EQ(unconnected, (std::set{weather, claudeUsage, github, clipboard}));
    EXPECT_EQ(missing.size() + unconnected.size() + working.size(), EnumCases<WidgetKind>::names.size());
}

TEST_F(LiveWidgets, ClockShowsItsZoneAndTurnsOnTheMinuteOrSecond) {
    // 09:00 for the user is 08:00 UTC, already 17:00 in Tokyo: same day there.
    auto tokyo = makeLiveWidget(widget(ClockSettings{.timeZoneID = "Asia/Tokyo"}), bare);
    EXPECT_EQ(first(*tokyo, start + 30), (WidgetReading{.caption = "17:00", .detail = "Tokyo"}));
    EXPECT_EQ(tokyo->nextTick(), start + 60);
    // At 23:30 for the user Tokyo has passed midnight.
    auto late = calendar.at({2026, 3, 10}, 23, 30);
    EXPECT_TRUE(tokyo->tick(late));
    EXPECT_EQ(tokyo->reading(), (WidgetReading{.caption = "07:30", .detail = "Tokyo, Tomorrow"}));

    auto seconds = makeLiveWidget(
        widget(ClockSettings{.timeZoneID = "UTC", .showsSeconds = true, .uses24Hour = false}), bare);
    EXPECT_EQ(first(*seconds, start + 5.5).caption, "8:00:05 AM");
    EXPECT_EQ(seconds->nextTick(), start + 6);
    EXPECT_FALSE(seconds->tick(start + 5.9)) << "nothing changed within the second";

    auto unknown = makeLiveWidget(widget(ClockSettings{.timeZoneID = "Mars/Olympus"}), bare);
    EXPECT_EQ(first(*unknown, start).trouble, "unknown time zone");
    EXPECT_EQ(unknown->nextTick(), std::nullopt);
}

TEST_F(LiveWidgets, CountdownAndProgressPlanTheirNextChange) {
    auto unset = makeLiveWidget(widget(CountdownSettings{}), bare);
    EXPECT_EQ(first(*unset, start).caption, "No date");
    EXPECT_EQ(unset->nextTick(), std::nullopt);

    auto countdown = makeLiveWidget(widget(CountdownSettings{.target = start + 90}), bare);
    EXPECT_EQ(first(*countdown, start).caption, "1:30");
    EXPECT_EQ(countdown->nextTick(), start + 1);
    EXPECT_EQ(first(*countdown, start + 100).caption, "Now");
    EXPECT_EQ(countdown->nextTick(), std::nullopt);

    auto week = makeLiveWidget(widget(TimeProgressSettings{.scope = TimeProgress::Scope::week}), bare);
    // Tuesday 09:00: a day and nine hours of the week's seven days.
    EXPECT_EQ(first(*week, start).caption, "19%");
    EXPECT_NEAR(*week->reading().progress, 33.0 / 168, 1e-12);
    EXPECT_GT(*week->nextTick(), start);
    EXPECT_TRUE(week->tick(*week->nextTick()));
    EXPECT_EQ(week->reading().caption, "20%");
}

TEST_F(LiveWidgets, ActivityAndNetworkMeasureBetweenTicks) {
    FakeSystemLoad load;
    load.memoryValue = 0.5;
    auto ports = bare;
    ports.machine.load = &load;
    auto activity = makeLiveWidget(widget(ActivitySettings{}), ports);
    EXPECT_EQ(first(*activity, start), (WidgetReading{.caption = "CPU measuring", .detail = "Memory 50%"}));
    EXPECT_EQ(activity->nextTick(), start + 2);
    load.cpuValue = 0.123;
    EXPECT_TRUE(activity->tick(start + 2));
    EXPECT_EQ(activity->reading(),
              (WidgetReading{.caption = "CPU 12%", .detail = "Memory 50%", .progress = 0.123}));

    FakeNetworkCounters counters;
    counters.interfaces = {{"wlan0", 0, 0, false}, {"eth0", 1000, 500, true}};
    ports.machine.network = &counters;
    auto network = makeLiveWidget(widget(NetworkSettings{}), ports);
    EXPECT_EQ(first(*network, start), (WidgetReading{.caption = "measuring", .detail = "eth0"}));
    counters.interfaces[1] = {"eth0", 5000, 2500, true};
    network->tick(start + 2);
    EXPECT_EQ(network->reading(), (WidgetReading{.caption = "↓ 2.0 KB/s", .detail = "↑ 1.0 KB/s  eth0"}));
    // The interface came up again: its counters restarted, so this interval tells nothing.
    counters.interfaces[1] = {"eth0", 0x1'0000'0000ull, 0x1'0000'0000ull, true};
    network->tick(start + 4);
    counters.interfaces[1] = {"eth0", 100, 50, true};
    network->tick(start + 6);
    EXPECT_EQ(network->reading().caption, "measuring");
    network->tick(start + 8);
    EXPECT_EQ(network->reading().caption, "↓ 0 B/s");

    auto chosen = makeLiveWidget(widget(NetworkSettings{.interface = "en9"}), ports);
    EXPECT_EQ(first(*chosen, start).trouble, "no interface en9");
}

TEST_F(LiveWidgets, BatteryMusicAndActionsGoThroughTheirPorts) {
    FakePowerSource power;
    FakeNowPlaying music;
    RecordingDesktopActions desktop;
    auto ports = bare;
    ports.machine.power = &power;
    ports.machine.music = &music;
    ports.machine.desktop = &desktop;

    auto battery = makeLiveWidget(widget(BatterySettings{}), ports);
    EXPECT_EQ(first(*battery, start).trouble, "no battery");
    power.reading =
        PowerReading{.level = 0.5, .isCharging = true, .isOnExternalPower = true, .minutesRemaining = 125};
    EXPECT_TRUE(battery->tick(start + 60));
    EXPECT_EQ(battery->reading(),
              (WidgetReading{.caption = "50%", .detail = "Charging, 2:05 to full", .progress = 0.5}));

    auto player = makeLiveWidget(widget(MusicSettings{}), ports);
    EXPECT_EQ(first(*player, start).caption, "Not playing");
    music.track = PlayingTrack{
        .title = "So What", .artist = "Miles Davis", .isPlaying = true, .position = 30, .duration = 120};
    EXPECT_TRUE(player->tick(start + 5));
    EXPECT_EQ(player->reading(),
              (WidgetReading{.caption = "So What", .detail = "Miles Davis", .progress = 0.25}));
    EXPECT_TRUE(player->activate(start + 6));
    EXPECT_EQ(player->reading().detail, "Miles Davis (paused)");

    auto shortcut = makeLiveWidget(widget(ShortcutSettings{.name = "Morning"}), ports);
    desktop.refuses = true;
    first(*shortcut, start);
    EXPECT_TRUE(shortcut->activate(start));
    EXPECT_EQ(shortcut->reading().trouble, "could not run");
    EXPECT_EQ(desktop.requests, (std::vector<std::string>{"shortcut Morning"}));
}

TEST_F(LiveWidgets, KeyboardLockLiftsItselfAfterItsMinutes) {
    RecordingDesktopActions desktop;
    auto ports = bare;
    ports.machine.desktop = &desktop;
    auto lock = makeLiveWidget(widget(KeyboardLockSettings{.autoUnlockMinutes = 2}), ports);
    EXPECT_EQ(first(*lock, start).caption, "Unlocked");
    EXPECT_EQ(lock->nextTick(), std::nullopt);
    lock->activate(start);
    EXPECT_EQ(lock->reading().caption, "Locked");
    EXPECT_EQ(lock->nextTick(), start + 120);
    lock->tick(start + 120);
    EXPECT_EQ(lock->reading().caption, "Unlocked");
    EXPECT_EQ(desktop.requests, (std::vector<std::string>{"lock keyboard", "unlock"}));
}

TEST_F(LiveWidgets, CalendarAndRemindersShowTodayForTheChosenCalendars) {
    FakeCalendarEvents events;
    auto ports = bare;
    ports.machine.events = &events;
    auto at = [&](int day, int hour, int minute = 0) { return calendar.at({2026, 3, day}, hour, minute); };
    events.eventList = {{"Holiday", at(10, 0), at(11, 0), true, "home"},
                        {"Stand-up", at(10, 8), at(10, 8, 15), false, "work"},
                        {"Review", at(10, 14), at(10, 15), false, "work"},
                        {"Gym", at(10, 12), at(10, 13), false, "home"}};
    CalendarSettings settings{.showsAllDay = false, .style = CalendarTileStyle::dateAndNext};
    settings.calendars.calendarIDs = {"work"};
    auto agenda = makeLiveWidget(widget(settings), ports);
    EXPECT_EQ(first(*agenda, start), (WidgetReading{.caption = "Tue 10", .detail = "Review 14:00"}))
        << "the stand-up is over, the gym and the holiday are not chosen";
    settings.style = CalendarTileStyle::agenda;
    settings.calendars = {};
    agenda->setWidget(widget(settings), start);
    EXPECT_EQ(agenda->reading(), (WidgetReading{.caption = "Gym 12:00", .detail = "+1 more"}));
    events.granted = false;
    agenda->tick(start + 60);
    EXPECT_EQ(agenda->reading().trouble, "no access to calendars");

    events.granted = true;
    events.reminderList = {{"Call Ann", at(9, 17), false, "a"},
                           {"Pay rent", at(12, 9), false, "a"},
                           {"Done", at(10, 8), true, "a"},
                           {"Someday", std::nullopt, false, "a"},
                           {"Far off", at(31, 9), false, "a"}};
    auto next = makeLiveWidget(widget(ReminderSettings{.style = ReminderTileStyle::list}), ports);
    EXPECT_EQ(first(*next, start), (WidgetReading{.caption = "Call Ann", .detail = "overdue, +1 more"}));
    auto count = makeLiveWidget(
        widget(ReminderSettings{.showsCompleted = true, .style = ReminderTileStyle::count}), ports);
    EXPECT_EQ(first(*count, start).caption, "3");
}

TEST_F(LiveWidgets, TimeKeepingWaterAndFilesWrapTheirModelsAndStores) {
    RecordingUserAlerts alerts;
    InMemoryUserDefaults defaults;
    TemporaryDirectory data;
    auto ports = bare;
    ports.alerts = &alerts;
    ports.defaults = &defaults;
    ports.dataDirectory = data.path();

    auto timer = makeLiveWidget(widget(TimerSettings{}), ports);
    EXPECT_EQ(first(*timer, start).detail, "Ready");
    EXPECT_EQ(timer->nextTick(), std::nullopt) << "a timer at rest needs no ticks";
    EXPECT_TRUE(timer->activate(start));
    EXPECT_EQ(timer->reading().detail, "Running");
    EXPECT_EQ(timer->nextTick(), start + 1);

    auto water = makeLiveWidget(widget(WaterSettings{}), ports);
    EXPECT_EQ(first(*water, start).caption, "0/8");
    EXPECT_TRUE(water->activate(start));
    EXPECT_EQ(water->reading().caption, "1/8");
    EXPECT_DOUBLE_EQ(*water->reading().progress, 0.125);
    EXPECT_TRUE(std::filesystem::exists(StoragePath::waterFileURL(data.path())))
        << "the pour is shared through the file";

    writeText(data / "Downloads/old.txt", "old");
    std::filesystem::last_write_time(data / "Downloads/old.txt",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(48));
    writeText(data / "Downloads/new.txt", "new");
    writeText(data / "Downloads/.hidden", "x");
    ports.downloadsFolder = data / "Downloads";
    FilesSettings files{.seenAt = Date::fromUnixTime(std::time(nullptr) - 3600.0)};
    auto folder = makeLiveWidget(widget(files), ports);
    EXPECT_EQ(first(*folder, start), (WidgetReading{.caption = "1 new", .detail = "new.txt"}));
    files.folderPath = (data / "nowhere").string();
    folder->setWidget(widget(files), start);
    EXPECT_EQ(folder->reading().trouble, "folder not found");
}

TEST_F(LiveWidgets, ConnectedKindsReadThroughTheHostsReader) {
    auto ports = bare;
    int reads = 0;
    ports.weather = [&](const DockWidget&, Date) {
        ++reads;
        return WidgetReading{.caption = "21°"};
    };
    auto weather = makeLiveWidget(widget(WeatherSettings{}), ports);
    EXPECT_EQ(first(*weather, start).caption, "21°");
    EXPECT_EQ(reads, 1);
    EXPECT_EQ(weather->nextTick(), start + 1200) << "weather refreshes every twenty minutes";
}

TEST_F(LiveWidgets, ModelsTickedTogetherShareOneProcessorMeasurement) {
    FakeSystemLoad system;
    system.cpuValue = 0.3;
    SharedSystemLoad shared(system, clock);
    auto ports = bare;
    ports.machine.load = &shared;
    auto activity = makeLiveWidget(widget(ActivitySettings{.showsMemory = false}), ports);
    auto pet = makeLiveWidget(widget(PetSettings{}), ports);
    activity->tick(clock.now());
    pet->tick(clock.now());
    EXPECT_EQ(system.cpuReadings, 1);
    EXPECT_EQ(pet->reading().detail, "CPU 30%");
    clock.advance(2);
    activity->tick(clock.now());
    EXPECT_EQ(system.cpuReadings, 2);
}
