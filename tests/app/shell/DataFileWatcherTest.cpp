#include "CorvaneApp/shell/DataFileWatcher.hpp"
#include "fakes/ManualScheduler.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(DataFileWatcher, EveryKindOfChangeIsSeenOnceAndNothingAfterStop) {
    TemporaryDirectory dir;
    ManualClock clock;
    ManualScheduler scheduler{clock};
    DataFileWatcher watcher(scheduler);
    auto file = dir / "profiles.json", other = dir / "widgets.json";
    writeText(file, "{}");
    int changes = 0, otherChanges = 0;
    watcher.watch(file, [&] { ++changes; });
    watcher.watch(other, [&] { ++otherChanges; }); // missing at first
    watcher.start();
    watcher.start(); // once is enough
    auto tick = [&] { scheduler.advance(DataFileWatcher::defaultInterval); };

    tick();
    EXPECT_EQ(changes, 0) << "the file as it was when watched counts as seen";
    writeText(file, "{\"profiles\": []}");
    tick();
    tick();
    EXPECT_EQ(changes, 1);
    // Replaced whole, as the atomic writer does.
    writeText(dir / "staging", "{\"profiles\": [1]}");
    std::filesystem::rename(dir / "staging", file);
    tick();
    EXPECT_EQ(changes, 2);
    std::filesystem::remove(file);
    writeText(other, "{}");
    tick();
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(otherChanges, 1);

    watcher.stop();
    EXPECT_FALSE(watcher.isRunning());
    writeText(file, "again");
    scheduler.advance(60);
    EXPECT_EQ(changes, 3);
    watcher.poll();
    EXPECT_EQ(changes, 4) << "a look asked for directly still sees it";
}
