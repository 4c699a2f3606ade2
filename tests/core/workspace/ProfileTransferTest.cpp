#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/workspace/ProfileTransfer.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {
Profile workspace(std::string name, std::optional<Hotkey> hotkey = std::nullopt, std::vector<std::string> desktops = {}) {
    Profile profile;
    profile.id = Uuid::generate();
    profile.name = std::move(name);
    profile.hotkey = hotkey;
    profile.desktopUUIDs = std::move(desktops);
    profile.items.push_back(AppEntry{"/Applications/Notes.app"});
    return profile;
}
const Hotkey kCtrlOpt1{18, {HotkeyModifiers::control | HotkeyModifiers::option}};
} // namespace

TEST(ProfileTransfer, ReimportingAnExportAddsAdjustedCopies) {
    std::vector<Profile> existing = {workspace("Work", kCtrlOpt1, {"D1"}), workspace("Play")};
    auto data = ProfileTransfer::exportData(existing);
    EXPECT_EQ(data.find("activeProfileId"), std::string::npos);
    auto imported = ProfileTransfer::profiles(data);
    ASSERT_EQ(imported, existing);

    auto merged = ProfileTransfer::merge(imported, existing, {"D1"});
    ASSERT_EQ(merged.profiles.size(), 4u);
    EXPECT_EQ(std::vector<Profile>(merged.profiles.begin(), merged.profiles.begin() + 2), existing);
    const auto& copy = merged.profiles[2];
    EXPECT_NE(copy.id, existing[0].id);
    EXPECT_EQ(copy.name, "Work (Imported)");
    EXPECT_FALSE(copy.hotkey);
    EXPECT_EQ(copy.desktopUUIDs, std::vector<std::string>{"D1"});
    EXPECT_EQ(copy.items, existing[0].items);
    EXPECT_TRUE(merged.adjustments[0].newID && merged.adjustments[0].renamed && merged.adjustments[0].hotkeyRemoved);
}

TEST(ProfileTransfer, UnknownDesktopsAreDroppedAndFreshWorkspacesKeptAsTheyAre) {
    auto stranger = workspace("Travel", kCtrlOpt1, {"OTHER-MAC", "D1"});
    auto merged = ProfileTransfer::merge({stranger}, {workspace("Work")}, {"D1"});
    const auto& added = merged.profiles.back();
    EXPECT_EQ(added.id, stranger.id);
    EXPECT_EQ(added.name, "Travel");
    EXPECT_EQ(added.hotkey, kCtrlOpt1);
    EXPECT_EQ(added.desktopUUIDs, std::vector<std::string>{"D1"});
    EXPECT_EQ(merged.adjustments[0].desktopsDropped, 1u);
}

TEST(ProfileTransfer, ImportedWorkspacesDoNotClashWithEachOther) {
    auto a = workspace("Same", kCtrlOpt1);
    auto b = a;
    auto merged = ProfileTransfer::merge({a, b}, {}, {});
    ASSERT_EQ(merged.profiles.size(), 2u);
    EXPECT_NE(merged.profiles[0].id, merged.profiles[1].id);
    EXPECT_EQ(merged.profiles[1].name, "Same (Imported)");
    EXPECT_FALSE(merged.profiles[1].hotkey);
}

TEST(ProfileTransfer, OldFilesSplitAndBadDataFails) {
    auto imported = ProfileTransfer::profiles(R"({"version": 1, "profiles": [{"id": "1A2B3C4D-0000-4000-8000-00000000000A",
        "name": "Old", "color": "green", "items": [{"url": {"_0": {"url": "https://example.com"}}}]}]})");
    ASSERT_EQ(imported.size(), 1u);
    EXPECT_TRUE(imported[0].items.empty());
    EXPECT_EQ(imported[0].others.size(), 1u);
    EXPECT_THROW(ProfileTransfer::profiles("[]"), DecodingError);
}
