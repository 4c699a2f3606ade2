#include "CorvaneApp/preferences/AppPreferences.hpp"
#include "fakes/InMemoryUserDefaults.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

std::string key(const char* name) { return AppPreferences::key(name); }

} // namespace

TEST(AppPreferences, AbsentAndDamagedValuesReadAsTheirDefaults) {
    InMemoryUserDefaults defaults;
    AppPreferences preferences(defaults);
    EXPECT_EQ(preferences.load(), AppSettings{});
    EXPECT_EQ(key("usesOwnDock"), "dev.tessik.corvane.preferences.usesOwnDock");

    defaults.setString(key("nativeDockMode"), "sideways");
    defaults.setString(key("usesOwnDock"), "yes"); // wrong type
    defaults.setData(key("nextWorkspaceHotkey"), Bytes{'{'});
    defaults.setData(key("stackOptions"), Bytes{'[', ']'});
    auto settings = preferences.load();
    EXPECT_EQ(settings.nativeDockMode, NativeDockMode::autoHide);
    EXPECT_TRUE(settings.usesOwnDock);
    EXPECT_EQ(settings.nextWorkspaceHotkey, std::nullopt);
    EXPECT_NE(settings.stackOptions.object(), nullptr);
    EXPECT_EQ(settings.workspaceHotkeyModifiers.rawValue, 6u);
    EXPECT_EQ(settings.focusDockHotkey, AppSettings::defaultFocusDockHotkey);

    defaults.setString(key("nativeDockMode"), "hidden");
    EXPECT_EQ(preferences.load().nativeDockMode, NativeDockMode::hidden);
}

TEST(AppPreferences, StoringWritesOnlyChangesAndRoundTrips) {
    InMemoryUserDefaults defaults;
    AppPreferences preferences(defaults);
    auto before = preferences.load();
    auto after = before;
    after.usesOwnDock = false;
    after.dockRevealDelay = 0.25;
    after.nextWorkspaceHotkey = Hotkey{124, HotkeyModifiers{HotkeyModifiers::control}};
    after.dockStyle.showsTrash = false;
    after.downloadsSeenAt = Date{12345};
    after.onboardingPage = 3;
    preferences.store(before, after);
    EXPECT_EQ(defaults.keys().size(), 6u) << "unchanged settings are not written";
    EXPECT_EQ(preferences.load(), after);

    auto cleared = after;
    cleared.dockRevealDelay.reset();
    cleared.onboardingPage.reset();
    preferences.store(after, cleared);
    EXPECT_FALSE(defaults.value(key("dockRevealDelay")));
    EXPECT_FALSE(defaults.value(key("onboardingPage")));
    EXPECT_EQ(preferences.load(), cleared);
}

TEST(AppPreferences, FocusDockHotkeyStaysOffOnceSwitchedOffAndResetBringsDefaultsBack) {
    InMemoryUserDefaults defaults;
    defaults.setBool("someOtherApp.setting", true);
    AppPreferences preferences(defaults);
    preferences.setHotkey("focusDockHotkey", std::nullopt);
    EXPECT_EQ(preferences.load().focusDockHotkey, std::nullopt);
    EXPECT_EQ(defaults.boolValue(key("focusDockHotkeyOff")), true);

    Hotkey custom{40, HotkeyModifiers{HotkeyModifiers::command | HotkeyModifiers::shift}};
    preferences.setHotkey("focusDockHotkey", custom);
    EXPECT_EQ(preferences.hotkey("focusDockHotkey"), custom);
    EXPECT_FALSE(defaults.value(key("focusDockHotkeyOff")));

    preferences.setHotkey("focusDockHotkey", std::nullopt);
    preferences.resetSettings();
    EXPECT_EQ(preferences.load(), AppSettings{});
    EXPECT_EQ(defaults.keys(), std::vector<std::string>{"someOtherApp.setting"});
}
