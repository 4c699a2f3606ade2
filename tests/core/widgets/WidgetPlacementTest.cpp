#include "CorvaneCore/widgets/WidgetPlacement.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/widgets/DockSlot.hpp"

#include <gtest/gtest.h>

using namespace corvane;
namespace WP = corvane::WidgetPlacement;

namespace {

const std::string kHelper = "/Applications/Corvane.app/Contents/Helpers/Corvane Widget.app";

DockWidget widget(std::string name, std::optional<int> slot = {}, int span = 1) {
    return DockWidget(Uuid::generate(), std::move(name), slot, NoteSettings{}, span);
}

DockItem app(std::string bundleIdentifier) {
    return AppEntry{"/Applications/X.app", std::move(bundleIdentifier), {}, {}};
}

Profile workspace(std::vector<DockItem> items, std::vector<WidgetStack> stacks = {}) {
    Profile profile;
    profile.id = Uuid::generate();
    profile.name = "Work";
    profile.items = std::move(items);
    profile.stacks = std::move(stacks);
    return profile;
}

WidgetStack stack(std::vector<Uuid> members) {
    return WidgetStack{Uuid::generate(), std::move(members)};
}

} // namespace

TEST(WidgetPlacement, EntriesUseTheSlotFormWhenSlottedAndANormalisedHelperPath) {
    auto slotted = widget("Tea", 3);
    auto entry = WP::entry(slotted, "file:///Applications/Corvane%20Slot%203.app/");
    EXPECT_EQ(entry, (AppEntry{"/Applications/Corvane Slot 3.app", "dev.tessik.Corvane.Slot3", "Tea", {}}));
    auto free = widget("Notes");
    EXPECT_EQ(WP::entry(free, kHelper + "/").bundleIdentifier, DockSlot::widgetBundleIdentifier(free.id));
    EXPECT_EQ(WP::entry(free, kHelper + "/").path, kHelper);
}

TEST(WidgetPlacement, ShowingAppendsOnceEvenWhenThePlacedEntryIsStale) {
    auto note = widget("Note");
    auto empty = workspace({app("com.apple.Safari")});
    auto shown = WP::setting(note, true, empty, kHelper);
    ASSERT_EQ(shown.items.size(), 2u);
    EXPECT_EQ(*shown.items[1].app(), WP::entry(note, kHelper));
    EXPECT_TRUE(WP::contains(note, shown));

    auto renamed = note;
    renamed.name = "Renamed";
    EXPECT_EQ(WP::setting(renamed, true, shown, "/elsewhere"), shown);
}

TEST(WidgetPlacement, HidingRemovesEveryPlaceholderAndStackMembership) {
    auto note = widget("Note", 2);
    auto other = widget("Other");
    auto third = widget("Third");
    auto profile = workspace({app(DockSlot::widgetBundleIdentifier(note.id)), app("com.apple.Safari"),
                              app("dev.tessik.Corvane.Slot2"), app("dev.tessik.Corvane.Slot13"),
                              app(DockSlot::widgetBundleIdentifier(other.id))},
                             {stack({note.id, other.id}), stack({note.id, other.id, third.id})});
    auto hidden = WP::setting(note, false, profile, kHelper);
    ASSERT_EQ(hidden.items.size(), 3u);
    EXPECT_EQ(hidden.items[0], app("com.apple.Safari"));
    EXPECT_EQ(hidden.items[1], app("dev.tessik.Corvane.Slot13"));
    ASSERT_EQ(hidden.stacks.size(), 1u);
    EXPECT_EQ(hidden.stacks[0].id, profile.stacks[1].id);
    EXPECT_EQ(hidden.stacks[0].members, (std::vector<Uuid>{other.id, third.id}));
    EXPECT_FALSE(WP::contains(note, hidden));
}

TEST(WidgetPlacement, StacksKeepTheMostCommonWidthEarliestFirst) {
    auto w2a = widget("a", {}, 2), w1a = widget("b", {}, 1), w1b = widget("c", {}, 1),
         w2b = widget("d", {}, 2);
    auto stranger = Uuid::generate();
    std::vector<DockWidget> widgets = {w2a, w1a, w1b, w2b};
    auto profile = workspace({}, {stack({w2a.id, w1a.id, w1b.id, w2b.id}), stack({w1a.id, w2a.id}),
                                  stack({w1a.id, stranger, w2a.id}), stack({w1a.id, w1b.id})});
    auto pruned = WP::pruningMismatchedWidths(profile, widgets);
    ASSERT_EQ(pruned.stacks.size(), 3u);
    EXPECT_EQ(pruned.stacks[0].members, (std::vector<Uuid>{w2a.id, w2b.id}));
    EXPECT_EQ(pruned.stacks[1].members, (std::vector<Uuid>{w1a.id, stranger}));
    EXPECT_EQ(pruned.stacks[2], profile.stacks[3]);
}

TEST(WidgetPlacement, KeepingStacksCarriesOnlyWidgetsTheTargetShows) {
    auto a = widget("a"), b = widget("b"), c = widget("c");
    auto source = workspace({}, {stack({a.id, b.id, c.id}), stack({a.id, c.id})});
    auto target =
        workspace({app(DockSlot::widgetBundleIdentifier(a.id)), app(DockSlot::widgetBundleIdentifier(b.id))});
    auto result = WP::keepingStacks(source, target, {a, b, c});
    EXPECT_EQ(result.items, target.items);
    EXPECT_EQ(result.id, target.id);
    ASSERT_EQ(result.stacks.size(), 1u);
    EXPECT_EQ(result.stacks[0].members, (std::vector<Uuid>{a.id, b.id}));
}

TEST(WidgetPlacement, ReplacedAppsComeFromShownMusicWidgetsOnly) {
    DockWidget music(Uuid::generate(), "Music", {}, MusicSettings{});
    auto note = widget("Note");
    auto profile = workspace({app(DockSlot::widgetBundleIdentifier(note.id))});
    EXPECT_TRUE(WP::replacedApps(profile, {music, note}).empty());
    profile = WP::setting(music, true, profile, kHelper);
    EXPECT_EQ(WP::replacedApps(profile, {music, note}),
              (std::set<std::string>{"com.apple.Music", "com.spotify.client"}));
}

TEST(WidgetPlacement, SyncingRefreshesKeepsAndDropsPlaceholders) {
    auto renamed = widget("New name");
    auto slotted = widget("Slotted", 5, 2);
    auto gone = widget("Gone");
    auto newerId = Uuid::generate();
    std::vector<UnrecognizedWidget> unrecognized = {
        {JSONValue::fromJson(
            Json::parse(R"({"id": ")" + newerId.string() + R"(", "slot": 7, "kind": {"x": {}}})"))},
        {JSONValue::fromJson(Json::parse(R"({"id": 12, "slot": 8.5, "kind": {"x": {}}})"))},
    };
    AppEntry stale{"/old/helper.app", DockSlot::widgetBundleIdentifier(renamed.id), "Old name", Bytes{9}};
    auto profile = workspace({app("com.apple.Safari"), stale, app(DockSlot::widgetBundleIdentifier(gone.id)),
                              app(DockSlot::widgetBundleIdentifier(slotted.id)),
                              app(DockSlot::widgetBundleIdentifier(newerId)), app("dev.tessik.Corvane.Slot7"),
                              app("dev.tessik.Corvane.Slot8"), app("dev.tessik.Corvane.Slot13")},
                             {stack({renamed.id, gone.id}), stack({renamed.id, newerId}),
                              stack({slotted.id, renamed.id, newerId})});

    std::vector<std::optional<int>> askedSlots;
    auto helperPath = [&](std::optional<int> slot) {
        askedSlots.push_back(slot);
        return slot ? "/helpers/Corvane Slot " + std::to_string(*slot) + ".app/"
                    : std::string("/helpers/Widget.app");
    };
    auto synced = WP::syncing(profile, {renamed, slotted}, unrecognized, helperPath);

    std::vector<DockItem> expected = {
        app("com.apple.Safari"),
        AppEntry{"/helpers/Widget.app", DockSlot::widgetBundleIdentifier(renamed.id), "New name", {}},
        AppEntry{"/helpers/Corvane Slot 5.app", "dev.tessik.Corvane.Slot5", "Slotted", {}},
        app(DockSlot::widgetBundleIdentifier(newerId)),
        app("dev.tessik.Corvane.Slot7"),
        app("dev.tessik.Corvane.Slot13"),
    };
    EXPECT_EQ(synced.items, expected);
    EXPECT_EQ(askedSlots, (std::vector<std::optional<int>>{std::nullopt, 5}));
    ASSERT_EQ(synced.stacks.size(), 2u);
    EXPECT_EQ(synced.stacks[0].members, (std::vector<Uuid>{renamed.id, newerId}));
    // The newer build's widget has no known width, so it stays with the two-tile majority.
    EXPECT_EQ(synced.stacks[1].members, (std::vector<Uuid>{slotted.id, newerId}));

    EXPECT_EQ(WP::syncing(synced, {renamed, slotted}, unrecognized, helperPath), synced);
}
