#include "CorvaneStorage/storage/DataFileError.hpp"
#include "CorvaneStorage/widgets/WaterStore.hpp"
#include "fakes/FixedOffsetCalendar.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {
const FixedOffsetCalendar calendar;
const Date morning = calendar.at({2026, 5, 4}, 9);
} // namespace

TEST(WaterStore, MissingFileIsAnEmptyLogNothingIsWrittenUntilAPourAndAnUnreadableOneRefusesToOpen) {
    TemporaryDirectory dir;
    RecordingNotifier notifier;
    WaterStore store(dir / "water.json", calendar, &notifier);
    EXPECT_FALSE(store.fileExistedOnLoad());
    EXPECT_EQ(store.log(), WaterLog{});
    EXPECT_FALSE(std::filesystem::exists(dir / "water.json"));

    store.add(250, morning);
    EXPECT_EQ(notifier.posted, std::vector<std::string>{"dev.tessik.corvane.water-changed"});
    EXPECT_EQ(WaterStore(dir / "water.json", calendar).log().total(morning, calendar), 250);

    writeText(dir / "water.json", R"({"days": "many"})");
    EXPECT_THROW(WaterStore(dir / "water.json", calendar), DataFileError);
}

TEST(WaterStore, EachChangeStartsFromWhatAnotherProcessSaved) {
    TemporaryDirectory dir;
    WaterStore first(dir / "water.json", calendar);
    WaterStore second(dir / "water.json", calendar);
    first.add(250, morning);
    second.add(300, morning + 60);
    first.remove(100, morning + 120);
    EXPECT_EQ(first.log().total(morning, calendar), 450);
    second.clear(morning + 180);
    first.reload();
    EXPECT_EQ(first.log(), WaterLog{});
}
