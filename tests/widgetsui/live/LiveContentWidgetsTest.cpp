// The kinds that show the user's own things: folders, the shelf, links, notes, conversions and
// the shared data files, and the settings and click paths every model shares.

#include "CorvaneCore/platform/FanSensors.hpp"
#include "CorvaneStorage/storage/StoragePath.hpp"
#include "CorvaneStorage/widgets/ColourStore.hpp"
#include "CorvaneStorage/widgets/EmojiStore.hpp"
#include "CorvaneWidgetsUI/live/LiveWidget.hpp"
#include "CorvaneWidgetsUI/live/RecentFiles.hpp"
#include "fakes/FakeLiveSources.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/InMemoryUserDefaults.hpp"
#include "fakes/ManualClock.hpp"
#include "fakes/RecordingUserAlerts.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

#include <chrono>

using namespace corvane;

namespace {

struct FakeFanSensors final : FanSensors {
    std::vector<FanReading> fans;
    std::vector<FanReading> read() override { return fans; }
};

class LiveContent : public ::testing::Test {
  protected:
    Date now = Date{800000000};
    ManualClock clock{now};
    FixedOffsetCalendar calendar;
    TemporaryDirectory folder;
    RecordingDesktopActions desktop;
    LiveWidgetPorts ports{.clock = clock, .calendar = calendar, .machine = {.desktop = &desktop}};

    template <typename Settings> static DockWidget widget(Settings settings, int span = 1) {
        return DockWidget(Uuid::generate(), "W", std::nullopt, DockWidget::Kind(std::move(settings)), span);
    }
    const WidgetReading& read(const DockWidget& widget) {
        model = makeLiveWidget(widget, ports);
        model->tick(now);
        return model->reading();
    }
    /// A file whose modification time is `hoursAgo` before the real now.
    void file(const std::string& name, int hoursAgo) {
        writeText(folder / name, name);
        std::filesystem::last_write_time(folder / name, std::filesystem::file_time_type::clock::now() -
                                                            std::chrono::hours(hoursAgo));
    }

    std::unique_ptr<LiveWidget> model;
};

} // namespace

TEST_F(LiveContent, RecentFilesListsTheNewestVisibleEntriesOfOneFolder) {
    file("Screenshot 1.png", 3);
    file("Recording.mov", 2);
    file("notes.txt", 1);
    file(".DS_Store", 0);
    std::filesystem::create_directories(folder / "Sub.png");
    auto names = [](const std::vector<RecentFiles::Entry>& entries) {
        std::vector<std::string> list;
        for (const auto& entry : entries)
            list.push_back(entry.path.filename().string());
        return list;
    };
    auto any = RecentFiles::newest(folder.path(), 10, RecentFiles::Filter::any);
    ASSERT_TRUE(any);
    EXPECT_EQ(names(*any).size(), 4u) << "hidden files are left out, folders are not";
    EXPECT_EQ(names(*any)[1], "notes.txt");
    auto shots = RecentFiles::newest(folder.path(), 1, RecentFiles::Filter::screenshots);
    EXPECT_EQ(names(*shots), std::vector<std::string>{"Recording.mov"})
        << "only pictures and recordings, newest first";
    EXPECT_EQ(RecentFiles::newest(folder / "missing", 10, RecentFiles::Filter::any), std::nullopt);
}

TEST_F(LiveContent, ScreenshotsShowTheLatestAndAClickFollowsTheSetting) {
    file("Screenshot 1.png", 3);
    file("Screenshot 2.png", 1);
    ports.screenshotsFolder = folder.path();
    EXPECT_EQ(read(widget(ScreenshotSettings{})),
              (WidgetReading{.caption = "Screenshot 2.png", .detail = "2 screenshots"}));
    model->activate(now);
    EXPECT_EQ(read(widget(ScreenshotSettings{
                  .shownCount = 1, .click = ScreenshotClick::reveal, .tileShowsLatest = false})),
              (WidgetReading{.caption = "1 screenshot"}));
    model->activate(now);
    EXPECT_EQ(desktop.requests,
              (std::vector<std::string>{"open " + (folder / "Screenshot 2.png").string(),
                                        "reveal " + (folder / "Screenshot 2.png").string()}));
    ports.screenshotsFolder.clear();
    EXPECT_EQ(read(widget(ScreenshotSettings{})).trouble, WidgetTrouble::notAvailableHere)
        << "no folder chosen and none known for the system";
}

TEST_F(LiveContent, ShelfLinksNotesAndConversions) {
    file("Plan.pdf", 1);
    ShelfSettings shelf;
    shelf.shelf.paths = {(folder / "Gone.txt").string(), (folder / "Plan.pdf").string()};
    EXPECT_EQ(read(widget(shelf)), (WidgetReading{.caption = "1 item", .detail = "Plan.pdf"}))
        << "a moved file drops out";
    model->activate(now);

    BookmarkSettings links{.links = {{Uuid::generate(), "https://example.org", std::nullopt},
                                     {Uuid::generate(), "https://tessik.dev", "Tessik"}},
                           .browserBundleIdentifier = "org.mozilla.firefox"};
    EXPECT_EQ(read(widget(links)), (WidgetReading{.caption = "2 links", .detail = "https://example.org"}));
    model->activate(now);
    EXPECT_EQ(desktop.requests,
              (std::vector<std::string>{"open " + (folder / "Plan.pdf").string(),
                                        "open https://example.org with org.mozilla.firefox"}));

    EXPECT_EQ(read(widget(NoteSettings{.text = "\n  \nBuy milk\nand eggs\nand bread"})),
              (WidgetReading{.caption = "Buy milk", .detail = "and eggs"}));
    EXPECT_EQ(model->nextTick(), std::nullopt) << "a note never changes by itself";

    ConverterSettings converter{
        .category = ConversionCategory::temperature, .from = "°C", .to = "°F", .value = 21};
    EXPECT_EQ(read(widget(converter)),
              (WidgetReading{.caption = "21 °C = 69.8 °F", .detail = "temperature"}));
    auto same = model->widget();
    EXPECT_FALSE(model->setWidget(same, now)) << "unchanged settings, unchanged tile";
    converter.to = "ft";
    EXPECT_TRUE(model->setWidget(widget(converter), now));
    EXPECT_EQ(model->reading(), (WidgetReading{.trouble = "unknown unit"}));
    EXPECT_FALSE(model->setWidget(widget(NoteSettings{}), now)) << "another kind needs a model of its own";
    EXPECT_EQ(model->widget().kind.which(), WidgetKind::converter);
}

TEST_F(LiveContent, ColoursAndEmojiComeFromTheSharedFiles) {
    ports.dataDirectory = folder.path();
    EXPECT_EQ(read(widget(ColourPickerSettings{})).caption, "No colour yet");
    ColourStore(StoragePath::coloursFileURL(folder.path()))
        .add(PickedColour{.id = Uuid::generate(), .red = 10, .green = 132, .blue = 255}, 24);
    EXPECT_TRUE(model->tick(now + 30)) << "another process picked a colour";
    EXPECT_EQ(model->reading(), (WidgetReading{.caption = "#0A84FF", .detail = "1 colour"}));

    EmojiStore emoji(StoragePath::emojiFileURL(folder.path()));
    for (auto symbol : {"🍵", "🎉", "🚀"})
        emoji.add(symbol);
    EXPECT_EQ(read(widget(EmojiSettings{}, 1)).caption, "🚀 🎉") << "as many as a one-tile card holds";
}

TEST_F(LiveContent, FansAirDropAndTheBatteryWithoutPercentage) {
    FakeFanSensors fans;
    FakePowerSource power;
    ports.machine.fans = &fans;
    ports.machine.power = &power;
    EXPECT_EQ(read(widget(DockWidget::Kind::defaults(WidgetKind::fans).value)).trouble, "no fans");
    fans.fans = {{"Left", 1800, 1200, 6000}, {"Right", 2400, 1200, 6000}};
    model->tick(now + 2);
    EXPECT_EQ(model->reading(), (WidgetReading{.caption = "2400 rpm", .detail = "2 fans", .progress = 0.25}));

    desktop.refuses = true;
    EXPECT_EQ(read(widget(DockWidget::Kind::defaults(WidgetKind::airdrop).value)).caption, "AirDrop");
    EXPECT_TRUE(model->activate(now));
    EXPECT_EQ(model->reading().trouble, "could not open");

    power.reading = PowerReading{.level = 0.8, .isOnExternalPower = true};
    EXPECT_EQ(read(widget(BatterySettings{.showsPercentage = false})),
              (WidgetReading{.caption = "On power", .progress = 0.8}));
}

TEST_F(LiveContent, StopwatchAndPomodoroTickOnlyWhileRunning) {
    RecordingUserAlerts alerts;
    InMemoryUserDefaults defaults;
    ports.alerts = &alerts;
    ports.defaults = &defaults;
    auto stopwatch = makeLiveWidget(widget(DockWidget::Kind::defaults(WidgetKind::stopwatch).value), ports);
    stopwatch->tick(now);
    EXPECT_TRUE(stopwatch->activate(now));
    clock.advance(61.5);
    EXPECT_TRUE(stopwatch->tick(clock.now()));
    EXPECT_EQ(stopwatch->reading().caption, "01:01");
    EXPECT_EQ(stopwatch->nextTick(), clock.now() + 0.5) << "on the run's next whole second";

    auto pomodoro = makeLiveWidget(widget(PomodoroSettings{.focus = 600}), ports);
    pomodoro->tick(clock.now());
    EXPECT_EQ(pomodoro->reading(), (WidgetReading{.caption = "10:00", .detail = "Focus", .progress = 0.0}));
    EXPECT_EQ(pomodoro->nextTick(), std::nullopt);
    pomodoro->activate(clock.now());
    clock.advance(150);
    pomodoro->tick(clock.now());
    EXPECT_EQ(pomodoro->reading(), (WidgetReading{.caption = "7:30", .detail = "Focus", .progress = 0.25}));
}
