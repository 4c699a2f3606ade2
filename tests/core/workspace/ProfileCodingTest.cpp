#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/support/JsonCoding.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/workspace/ProfileCoding.hpp"
#include "fakes/Thrown.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

const char* kId = "6F1C3A52-0B7D-4E2A-9C11-2D3E4F5A6B7C";

std::string workspace(const std::string& extraKeys, const std::string& items = "[]") {
    return R"({"version": 2, "profiles": [{"id": ")" + std::string(kId) +
           R"(", "name": "Work", "color": "blue", "items": )" + items + extraKeys + "}]}";
}

Profile loadOne(const std::string& text) { return profilesFileFromText(text).profiles.at(0); }

DecodingError decodingError(const std::string& text) {
    return thrown<DecodingError>([&] { profilesFileFromText(text); })
        .value_or(DecodingError(DecodingError::Kind::dataCorrupted, "", ""));
}

} // namespace

TEST(ProfileCoding, WorkspaceWithoutOthersSplitsFilesAndLinksIntoTheDocumentsSection) {
    auto profile = loadOne(workspace("", R"([
        {"app": {"_0": {"path": "/Applications/Mail.app"}}},
        {"file": {"_0": {"path": "/Users/me/Downloads", "isDirectory": true}}},
        {"spacer": {"_0": "flex-spacer-tile"}},
        {"url": {"_0": {"url": "https://example.com"}}}])"));
    ASSERT_EQ(profile.items.size(), 2u);
    EXPECT_TRUE(profile.items[0].app());
    EXPECT_EQ(*profile.items[1].spacer(), SpacerVariant::flex);
    ASSERT_EQ(profile.others.size(), 2u);
    EXPECT_TRUE(profile.others[0].file()->isDirectory);
    EXPECT_EQ(profile.others[1].url()->url, "https://example.com");
}

TEST(ProfileCoding, PresentOthersKeepsBothListsExactlyAsStored) {
    auto profile = loadOne(workspace(R"(, "others": [])", R"([{"file": {"_0": {"path": "/tmp/a.txt"}}}])"));
    ASSERT_EQ(profile.items.size(), 1u);
    EXPECT_TRUE(profile.items[0].file());
    EXPECT_FALSE(profile.items[0].file()->isDirectory);
    EXPECT_TRUE(profile.others.empty());
}

TEST(ProfileCoding, LegacyOtherAppsRule) {
    EXPECT_EQ(loadOne(workspace(R"(, "quitsOtherWorkspaceApps": true)")).otherWorkspaceApps, OtherWorkspaceApps::quit);
    EXPECT_EQ(loadOne(workspace(R"(, "quitsOtherWorkspaceApps": false)")).otherWorkspaceApps, OtherWorkspaceApps::hide);
    EXPECT_EQ(loadOne(workspace("")).otherWorkspaceApps, OtherWorkspaceApps::hide);
    EXPECT_EQ(loadOne(workspace(R"(, "quitsOtherWorkspaceApps": true, "otherWorkspaceApps": "keep")")).otherWorkspaceApps,
              OtherWorkspaceApps::keep);
}

TEST(ProfileCoding, LegacySingleDesktopReadsAsListAndIsWrittenBackBesideIt) {
    auto profile = loadOne(workspace(R"(, "desktopUUID": "D1")"));
    EXPECT_EQ(profile.desktopUUIDs, std::vector<std::string>{"D1"});
    auto json = encodeProfile(profile);
    EXPECT_EQ(json["desktopUUIDs"], Json::array({"D1"}));
    EXPECT_EQ(json["desktopUUID"], "D1");
    EXPECT_FALSE(json.contains("quitsOtherWorkspaceApps"));

    auto both = loadOne(workspace(R"(, "desktopUUID": "OLD", "desktopUUIDs": ["A", "B"])"));
    EXPECT_EQ(both.desktopUUIDs, (std::vector<std::string>{"A", "B"}));
}

TEST(ProfileCoding, WritesOptionalKeysOnlyWhenSetAndAlwaysOthersAndRule) {
    Profile profile;
    profile.id = *Uuid::parse(kId);
    profile.name = "Work";
    auto bare = encodeProfile(profile);
    for (auto key : {"stacks", "focusModeBinding", "indicatorColorHex", "hotkey", "desktopUUIDs", "desktopUUID"})
        EXPECT_FALSE(bare.contains(key)) << key;
    EXPECT_EQ(bare["others"], Json::array());
    EXPECT_EQ(bare["otherWorkspaceApps"], "hide");
    EXPECT_EQ(bare["id"], kId);

    profile.stacks.push_back({Uuid::generate(), {Uuid::generate(), Uuid::generate()}});
    profile.focusModeBinding = "Work";
    profile.indicatorColorHex = "#112233";
    profile.hotkey = Hotkey{18, {HotkeyModifiers::control | HotkeyModifiers::option}};
    auto full = encodeProfile(profile);
    EXPECT_EQ(full["hotkey"], Json::parse(R"({"keyCode": 18, "modifiers": 6})"));
    EXPECT_EQ(decodeProfile(JsonReader(full)), profile);
}

TEST(ProfileCoding, EveryItemCaseRoundTripsInItsOneKeyWrapper) {
    std::vector<DockItem> items = {
        AppEntry{"/Applications/Safari.app", "com.apple.Safari", "Safari", Bytes{1, 2, 3}},
        AppEntry{"/Applications/Mail.app", std::nullopt, std::nullopt, std::nullopt},
        SpacerVariant::small,
        SpacerVariant::default_,
        FileEntry{"/Users/me/Documents", "Docs", true, Bytes{9}, "#EF4444"},
        URLEntry{"https://example.com/a%20b", "Example", std::nullopt},
    };
    auto json = encodeItems(items);
    EXPECT_EQ(json[0]["app"]["_0"]["tile"], "AQID");
    EXPECT_FALSE(json[1]["app"]["_0"].contains("displayName"));
    EXPECT_EQ(json[2], Json::parse(R"({"spacer": {"_0": "small-spacer-tile"}})"));
    EXPECT_EQ(json[3]["spacer"]["_0"], "spacer-tile");
    EXPECT_EQ(decodeItems(JsonReader(json)), items);
}

TEST(ProfileCoding, FileIsWrittenSortedWithUpperCaseIdsAndReadsAnyVersion) {
    auto file = profilesFileFromText(R"({"version": 1, "activeProfileId": ")" + text::lowercased(kId) +
                                     R"(", "profiles": []})");
    EXPECT_EQ(file.version, 1) << "the store, not the decoder, upgrades the version";
    EXPECT_EQ(file.activeProfileId->string(), kId);
    auto written = profilesFileText(file);
    EXPECT_LT(written.find("activeProfileId"), written.find("profiles"));
    EXPECT_LT(written.find("profiles"), written.find("version"));
    EXPECT_NE(written.find(kId), std::string::npos);
}

// Damaged documents and the error each gives: the first failing key, in the fixed order.
TEST(ProfileCoding, DamagedDocumentsNameTheFirstFailingKey) {
    struct Case {
        std::string text;
        std::string message;
    };
    const Case cases[] = {
        {"{", ""},
        {R"({"version": 1e400, "profiles": []})", ""}, // too large for a double
        {R"({"profiles": []})", "No value associated with key \"version\"."},
        {R"({"version": "2", "profiles": []})", "version: Expected to decode Int but found a string instead."},
        {R"({"version": 2})", "No value associated with key \"profiles\"."},
        {workspace("", R"([{}])"), "profiles[0].items[0]: Invalid number of keys found, expected one."},
        {workspace("", R"([{"app": {"_0": {"path": "/a"}}, "url": {"_0": {"url": "x"}}}])"),
         "profiles[0].items[0]: Invalid number of keys found, expected one."},
        {workspace("", R"([{"folder": {"_0": {}}}])"), "profiles[0].items[0]: Unknown DockItem case \"folder\"."},
        {workspace("", R"([{"spacer": {"_0": "wide-spacer-tile"}}])"),
         "profiles[0].items[0].spacer._0: Cannot initialize SpacerVariant from invalid String value wide-spacer-tile"},
        {workspace("", R"([{"app": {"_0": {"displayName": "x"}}}])"),
         "profiles[0].items[0].app._0: No value associated with key \"path\"."},
        {workspace("", R"([{"app": {"_0": {"path": "/a", "tile": "%%%"}}}])"),
         "profiles[0].items[0].app._0.tile: Encountered Data is not valid Base64."},
        {workspace(R"(, "hotkey": {"keyCode": 70000, "modifiers": 1})"),
         "profiles[0].hotkey.keyCode: Parsed JSON number <70000> does not fit."},
        {workspace(R"(, "otherWorkspaceApps": "minimise")"),
         "profiles[0].otherWorkspaceApps: Cannot initialize OtherWorkspaceApps from invalid String value minimise"},
        // items is read before id, so a bad item wins over a bad id.
        {R"({"version": 2, "profiles": [{"id": "nope", "name": "W", "color": "blue", "items": [{}]}]})",
         "profiles[0].items[0]: Invalid number of keys found, expected one."},
        {R"({"version": 2, "profiles": [{"id": "nope", "name": "W", "color": "blue", "items": []}]})",
         "profiles[0].id: Attempted to decode UUID from invalid UUID string."},
        {R"({"version": 2, "profiles": [{"id": ")" + std::string(kId) + R"(", "name": "W", "color": "teal", "items": []}]})",
         "profiles[0].color: Cannot initialize ProfileColor from invalid String value teal"},
        {R"({"version": 2, "profiles": [{"id": ")" + std::string(kId) + R"(", "color": "blue", "items": []}]})",
         "profiles[0]: No value associated with key \"name\"."},
    };
    for (const auto& c : cases) {
        auto error = decodingError(c.text);
        if (c.message.empty()) EXPECT_EQ(error.kind, DecodingError::Kind::dataCorrupted);
        else EXPECT_EQ(std::string(error.what()), c.message) << c.text;
    }
}
