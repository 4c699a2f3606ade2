#include "CorvaneStorage/widgets/WidgetStore.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"
#include "CorvaneStorage/storage/DataFileError.hpp"
#include "fakes/RecordingNotifier.hpp"
#include "fakes/TemporaryDirectory.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using namespace corvane;
namespace fs = std::filesystem;
using Json = nlohmann::json;

namespace {

std::string dataFile(const std::string& name) {
    return readText(std::string(CORVANE_TEST_DATA) + "/widgets/" + name);
}

DockWidget note(std::string name, std::optional<int> slot = {}) {
    return DockWidget(Uuid::generate(), std::move(name), slot, NoteSettings{});
}

/// The entries of the file on disk that this build cannot read, by their position at the end.
std::vector<Json> trailingEntries(const fs::path& file, std::size_t count) {
    auto widgets = Json::parse(readText(file))["widgets"];
    return std::vector<Json>(widgets.end() - static_cast<long>(count), widgets.end());
}

} // namespace

TEST(WidgetStore, MissingFileLoadsEmptyAndWritesNothingUntilTheFirstChange) {
    TemporaryDirectory dir;
    RecordingNotifier notifier;
    WidgetStore store(dir / "widgets.json", dir / "collections.json", &notifier);
    EXPECT_FALSE(store.fileExistedOnLoad());
    EXPECT_EQ(store.file(), WidgetsFile::empty());
    EXPECT_FALSE(fs::exists(dir / "widgets.json"));
    EXPECT_TRUE(notifier.posted.empty());

    auto created = store.create(note("Hello"));
    EXPECT_EQ(notifier.posted, std::vector<std::string>{"dev.tessik.corvane.widgetsChanged"});
    EXPECT_EQ(WidgetStore(dir / "widgets.json").widget(WidgetAddress::id(created.id))->name, "Hello");
}

TEST(WidgetStore, EntriesOfNewerBuildsSurviveEverySaveAndKeepTheirSlots) {
    TemporaryDirectory dir;
    writeText(dir / "widgets.json", dataFile("mixed.json"));
    const auto original = Json::parse(dataFile("mixed.json"))["widgets"];
    const std::vector<Json> unreadable = {original[1], original[3], original[4]};

    WidgetStore store(dir / "widgets.json");
    ASSERT_EQ(store.file().unrecognized.size(), 3u);
    const std::vector<std::function<void()>> changes = {
        [&] { store.save(); },
        [&] {
            auto created = store.create(note("New"));
            // Slots 2 (a widget), 3 and 5 (newer builds' entries) are taken.
            EXPECT_EQ(store.claimSlot(created.id), 1);
            EXPECT_EQ(store.claimSlot(store.create(note("Next")).id), 4);
            EXPECT_EQ(store.claimSlot(store.create(note("Third")).id), 6);
        },
        [&] {
            auto tea = *store.widget(WidgetAddress::slot(2));
            tea.name = "Green tea";
            store.update(tea);
            store.releaseSlot(tea.id);
        },
        [&] { store.remove(store.file().widgets.front().id); },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        changes[i]();
        EXPECT_EQ(trailingEntries(dir / "widgets.json", 3), unreadable) << "after change " << i;
        WidgetStore reopened(dir / "widgets.json");
        EXPECT_EQ(reopened.file().unrecognized.size(), 3u);
        EXPECT_EQ(reopened.file(), store.file()) << "after change " << i;
    }
}

TEST(WidgetStore, MigratesTheLegacyCollectionsOnceAndLeavesThemInPlace) {
    TemporaryDirectory dir;
    writeText(dir / "collections.json", dataFile("collections.json"));
    RecordingNotifier notifier;
    WidgetStore store(dir / "widgets.json", dir / "collections.json", &notifier);
    EXPECT_FALSE(store.fileExistedOnLoad());
    ASSERT_EQ(store.file().widgets.size(), 2u);
    EXPECT_EQ(store.file().widgets[0].name, "Browsers");
    EXPECT_EQ(store.file().widgets[0].slot, 4);
    EXPECT_TRUE(fs::exists(dir / "widgets.json"));
    EXPECT_TRUE(fs::exists(dir / "collections.json"));
    EXPECT_EQ(notifier.posted.size(), 1u);

    // Later changes to the legacy file are no longer read.
    writeText(dir / "collections.json", R"({"collections": []})");
    WidgetStore reopened(dir / "widgets.json", dir / "collections.json", &notifier);
    EXPECT_TRUE(reopened.fileExistedOnLoad());
    EXPECT_EQ(reopened.file(), store.file());
    EXPECT_EQ(notifier.posted.size(), 1u);
}

TEST(WidgetStore, AnUnreadableLegacyFileFailsAndWritesNothing) {
    TemporaryDirectory dir;
    writeText(dir / "collections.json", dataFile("collections-without-slot.json"));
    auto error = thrown<DataFileError>([&] { WidgetStore(dir / "widgets.json", dir / "collections.json"); }).value();
    EXPECT_EQ(error.operation, DataFileError::Operation::decode);
    EXPECT_EQ(error.path, dir / "collections.json");
    EXPECT_FALSE(fs::exists(dir / "widgets.json"));
}

TEST(WidgetStore, ChangesStartFromWhatAnotherProcessSaved) {
    TemporaryDirectory dir;
    WidgetStore first(dir / "widgets.json");
    WidgetStore second(dir / "widgets.json");
    auto a = first.create(note("A"));
    auto b = second.create(note("B"));
    EXPECT_EQ(second.file().widgets, (std::vector<DockWidget>{a, b}));
    // The second store's slot claim sees the first store's widget and its slot.
    a.slot = 1;
    first.update(a);
    EXPECT_EQ(second.claimSlot(b.id), 2);
}

TEST(WidgetStore, SlotsAreClaimedOnceAndReleased) {
    TemporaryDirectory dir;
    WidgetStore store(dir / "widgets.json");
    std::vector<Uuid> ids;
    for (int i = 0; i < DockSlot::count; ++i) {
        ids.push_back(store.create(note("W")).id);
        EXPECT_EQ(store.claimSlot(ids.back()), i + 1);
    }
    EXPECT_EQ(store.claimSlot(ids[3]), 4);
    auto late = store.create(note("Late"));
    auto before = readText(dir / "widgets.json");
    EXPECT_EQ(store.claimSlot(late.id), std::nullopt);
    EXPECT_EQ(readText(dir / "widgets.json"), before);

    store.releaseSlot(ids[3]);
    EXPECT_EQ(store.claimSlot(late.id), 4);
}

TEST(WidgetStore, UpdatesClampSpansAndUnknownWidgetsFail) {
    TemporaryDirectory dir;
    WidgetStore store(dir / "widgets.json");
    auto clipboard = store.create(DockWidget(Uuid::generate(), "Clips", {}, ClipboardSettings{}));
    clipboard.span = 4;
    store.update(clipboard);
    EXPECT_EQ(store.widget(WidgetAddress::id(clipboard.id))->span, 1);

    auto stranger = note("Stranger");
    EXPECT_THROW(store.update(stranger), WidgetNotFoundError);
    EXPECT_THROW(store.claimSlot(stranger.id), WidgetNotFoundError);
    EXPECT_THROW(store.releaseSlot(stranger.id), WidgetNotFoundError);
    store.remove(stranger.id);
    EXPECT_EQ(store.file().widgets.size(), 1u);
    store.remove(clipboard.id);
    EXPECT_TRUE(WidgetStore(dir / "widgets.json").file().widgets.empty());
}
