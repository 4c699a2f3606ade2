#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <gtest/gtest.h>

#include <set>

using namespace corvane;

TEST(DockItem, DisplayNamesFallBackToThePathOrTheLink) {
    EXPECT_EQ(DockItem(AppEntry{"/Applications/Mail.app/"}).displayName(), "Mail.app");
    EXPECT_EQ(DockItem(AppEntry{"/Applications/Mail.app", std::nullopt, "Post"}).displayName(), "Post");
    EXPECT_EQ(DockItem(SpacerVariant::small).displayName(), "Small spacer");
    EXPECT_EQ(DockItem(SpacerVariant::flex).displayName(), "Flex spacer");
    EXPECT_EQ(DockItem(SpacerVariant::default_).displayName(), "Spacer");
    EXPECT_EQ(DockItem(FileEntry{"/Users/me/Downloads"}).displayName(), "Downloads");
    EXPECT_EQ(DockItem(URLEntry{"https://example.com/x"}).displayName(), "https://example.com/x");
    EXPECT_TRUE(DockItem(SpacerVariant::flex).belongsInAppsSection());
    EXPECT_FALSE(DockItem(URLEntry{"x"}).belongsInAppsSection());
}

TEST(FileEntry, BadgeLetterIsTheFirstLetterOrDigitUpperCased) {
    EXPECT_EQ(FileEntry{"/x/downloads"}.badgeLetter(), "D");
    EXPECT_EQ(FileEntry{"/x/_2024 taxes"}.badgeLetter(), "2");
    EXPECT_EQ((FileEntry{"/x/~~~", std::string("--é--")}.badgeLetter()), "É");
    EXPECT_EQ(FileEntry{"/x/---"}.badgeLetter(), "•");
    auto badged = FileEntry{"/x/a"}.withBadge("#22C55E");
    EXPECT_EQ(badged.badgeColorHex, "#22C55E");
    EXPECT_FALSE(badged.withBadge(std::nullopt).badgeColorHex);
}

TEST(Profile, IndicatorFallsBackToTheColourAndNewIdsDiffer) {
    Profile profile;
    profile.id = Uuid::generate();
    profile.color = ProfileColor::green;
    EXPECT_EQ(profile.indicatorHex(), "#22C55E");
    profile.indicatorColorHex = "#010203";
    EXPECT_EQ(profile.indicatorHex(), "#010203");
    auto copy = profile.withNewID();
    EXPECT_NE(copy.id, profile.id);
    copy.id = profile.id;
    EXPECT_EQ(copy, profile);
}

TEST(Uuid, ParsesAnyCaseWritesUpperCaseAndGeneratesVersionFour) {
    auto uuid = Uuid::parse("6f1c3a52-0b7d-4e2a-9c11-2d3e4f5a6b7c");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->string(), "6F1C3A52-0B7D-4E2A-9C11-2D3E4F5A6B7C");
    EXPECT_FALSE(Uuid::parse("6f1c3a52-0b7d-4e2a-9c11-2d3e4f5a6b7"));
    EXPECT_FALSE(Uuid::parse("6f1c3a52+0b7d-4e2a-9c11-2d3e4f5a6b7c"));
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        auto text = Uuid::generate().string();
        EXPECT_EQ(text[14], '4');
        seen.insert(text);
    }
    EXPECT_EQ(seen.size(), 100u);
}

TEST(Hotkey, LabelsSymbolsAndValidity) {
    Hotkey shiftA{0, {HotkeyModifiers::shift}};
    EXPECT_FALSE(shiftA.modifiers.isValidForGlobalHotkey());
    EXPECT_FALSE(HotkeyModifiers{}.isValidForGlobalHotkey());
    Hotkey controlCommandA{0, {HotkeyModifiers::control | HotkeyModifiers::command}};
    EXPECT_TRUE(controlCommandA.modifiers.isValidForGlobalHotkey());
    EXPECT_EQ(controlCommandA.displayString(), "⌃⌘A");
    EXPECT_EQ((Hotkey{18, {15}}).displayString(), "⌃⌥⇧⌘1");
    EXPECT_EQ(Hotkey::label(200), "Key200");
    EXPECT_EQ(Hotkey::label(50), "Key50");
    EXPECT_EQ(Hotkey::label(36), "Return");
    EXPECT_EQ(Hotkey::label(42), "\\");
    EXPECT_EQ(Hotkey::label(126), "↑");
    int known = 0;
    for (int code = 0; code < 256; ++code)
        if (!Hotkey::label(static_cast<std::uint16_t>(code)).starts_with("Key")) ++known;
    EXPECT_EQ(known, 55);
}

TEST(Hotkey, ConflictIsTheFirstOtherWorkspaceWithTheSameCombination) {
    Hotkey hotkey{18, {HotkeyModifiers::control | HotkeyModifiers::option}};
    std::vector<Profile> profiles(3);
    for (auto& p : profiles) p.id = Uuid::generate();
    profiles[0].hotkey = hotkey;
    profiles[1].hotkey = Hotkey{18, {HotkeyModifiers::control}};
    profiles[2].hotkey = hotkey;
    EXPECT_EQ(hotkey.conflictingProfile(profiles, profiles[0].id), &profiles[2]);
    EXPECT_EQ(hotkey.conflictingProfile(profiles, profiles[1].id), &profiles[0]);
    EXPECT_EQ(Hotkey{}.conflictingProfile(profiles, profiles[0].id), nullptr);
}

TEST(DockError, MessagesAndEquality) {
    EXPECT_STREQ(DockError::plistNotFound("/p/com.apple.dock.plist").what(),
                 "Failed to locate dock plist at /p/com.apple.dock.plist");
    EXPECT_EQ(DockError::plistMalformed("/p", "bad").errorDescription(), "Failed to decode dock plist at /p because bad");
    EXPECT_EQ(DockError::plistReadFailed("/p", "gone").errorDescription(), "Failed to read dock plist at /p because gone");
    EXPECT_EQ(DockError::plistWriteFailed("/p", "full").errorDescription(),
              "Failed to write dock plist at /p because full");
    EXPECT_EQ(DockError::unsupportedItemType("x").errorDescription(),
              "Failed to handle dock item of type x because it is not supported");
    EXPECT_EQ(DockError::dockReloadFailed("no").errorDescription(), "Failed to reload dock because no");
    EXPECT_EQ(DockError::fileNotFound("/f").errorDescription(), "Failed to find file at /f");
    EXPECT_EQ(DockError::profileNotFound("ID").errorDescription(), "Failed to find profile with id ID");
    EXPECT_EQ(DockError::noBackupAvailable().errorDescription(), "Cannot undo because there is no Dock backup yet");
    EXPECT_EQ(DockError::plistMalformed("/p", "a"), DockError::plistMalformed("/p", "a"));
    EXPECT_FALSE(DockError::plistMalformed("/p", "a") == DockError::plistReadFailed("/p", "a"));
}

TEST(Base64, RoundTripsEveryLengthAndRejectsGarbage) {
    Bytes bytes;
    for (int n = 0; n < 10; ++n) {
        EXPECT_EQ(base64Decode(base64Encode(bytes)), bytes);
        bytes.push_back(static_cast<std::uint8_t>(n * 37 + 200));
    }
    EXPECT_EQ(base64Encode(Bytes{'M', 'a'}), "TWE=");
    EXPECT_FALSE(base64Decode("TWE"));
    EXPECT_FALSE(base64Decode("T=E="));
    EXPECT_FALSE(base64Decode("TW E"));
}
