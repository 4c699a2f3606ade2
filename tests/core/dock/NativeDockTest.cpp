#include "CorvaneCore/dock/NativeDockController.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/InMemoryDockSettings.hpp"
#include "fakes/InMemoryUserDefaults.hpp"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(NativeDockPreferences, TheHidingValuesAreNeverTakenForTheUsersOwn) {
    EXPECT_EQ((NativeDockPreferences{true, 1000.0, 1.0}.asUserOriginal()), NativeDockPreferences{});
    EXPECT_EQ((NativeDockPreferences{false, 100.0, 16.0}.asUserOriginal()), (NativeDockPreferences{std::nullopt, std::nullopt, 16.0}));
    EXPECT_EQ((NativeDockPreferences{true, 0.5, 15.9}.asUserOriginal()), (NativeDockPreferences{true, 0.5, std::nullopt}));
}

TEST(NativeDockMode, AutoHideHidesTheDockOnlyOnTheBarsEdge) {
    EXPECT_EQ(resolved(NativeDockMode::autoHide, DockPosition::bottom, DockPosition::bottom), NativeDockMode::hidden);
    EXPECT_EQ(resolved(NativeDockMode::autoHide, DockPosition::bottom, DockPosition::left), NativeDockMode::autoHide);
    EXPECT_EQ(resolved(NativeDockMode::unchanged, DockPosition::left, DockPosition::left), NativeDockMode::unchanged);

    NativeDockPreferences original{false, 0.2, 64.0};
    EXPECT_EQ(preferences(NativeDockMode::unchanged, original), original);
    EXPECT_EQ(preferences(NativeDockMode::autoHide, original), (NativeDockPreferences{true, 0.2, 64.0}));
    EXPECT_EQ(preferences(NativeDockMode::hidden, original), (NativeDockPreferences{true, 1000.0, 1.0}));
    EXPECT_EQ(nativeDockModeFromRaw("autoHide"), NativeDockMode::autoHide);
    EXPECT_FALSE(nativeDockModeFromRaw("auto"));
}

class NativeDockControllerTest : public ::testing::Test {
protected:
    std::optional<NativeDockPreferences> stored(const std::string& key) {
        auto data = defaults.dataValue(key);
        if (!data) return std::nullopt;
        return nativeDockPreferencesFromText(std::string(data->begin(), data->end()));
    }

    InMemoryDockSettings settings;
    InMemoryUserDefaults defaults;
    CapturingLog log;
    NativeDockController controller{settings, defaults, log};
};

TEST_F(NativeDockControllerTest, TheFirstApplyRemembersTheUsersDockAndUnchangedPutsItBack) {
    settings.values = {false, 0.3, 48.0};
    controller.apply(NativeDockMode::autoHide, DockPosition::bottom);
    EXPECT_EQ(settings.values, (NativeDockPreferences{true, 1000.0, 1.0}));
    EXPECT_EQ(stored(NativeDockController::originalKey), (NativeDockPreferences{false, 0.3, 48.0}));
    EXPECT_TRUE(log.contains("native dock autohide=true delay=1000.0 tilesize=1.0"));

    controller.apply(NativeDockMode::unchanged, DockPosition::bottom);
    EXPECT_EQ(settings.values, (NativeDockPreferences{false, 0.3, 48.0}));
}

TEST_F(NativeDockControllerTest, AutoHideKeepsTheUsersDelayAndSizeOffTheDocksEdge) {
    settings.values = {std::nullopt, std::nullopt, 48.0};
    settings.orientationValue = "left";
    controller.apply(NativeDockMode::autoHide, DockPosition::bottom);
    EXPECT_EQ(settings.values, (NativeDockPreferences{true, std::nullopt, 48.0}));
    EXPECT_TRUE(log.contains("native dock autohide=true delay=unset tilesize=48.0"));
}

TEST_F(NativeDockControllerTest, ADockLeftHiddenByAnEarlierRunIsNotRememberedAsTheUsers) {
    settings.values = {true, 1000.0, 1.0};
    controller.apply(NativeDockMode::unchanged, DockPosition::bottom);
    EXPECT_EQ(stored(NativeDockController::originalKey), NativeDockPreferences{});
    EXPECT_EQ(settings.values, NativeDockPreferences{});
}

TEST_F(NativeDockControllerTest, TheOlderKeyIsMovedToTheNewOne) {
    std::string legacy = R"({"autohide": false, "tileSize": 36})";
    defaults.setData(NativeDockController::legacyOriginalKey, Bytes(legacy.begin(), legacy.end()));
    settings.values = {true, 1000.0, 1.0};
    controller.apply(NativeDockMode::unchanged, DockPosition::bottom);
    EXPECT_EQ(settings.values, (NativeDockPreferences{false, std::nullopt, 36.0}));
    EXPECT_EQ(stored(NativeDockController::originalKey), (NativeDockPreferences{false, std::nullopt, 36.0}));
    EXPECT_FALSE(defaults.value(NativeDockController::legacyOriginalKey));
}

TEST_F(NativeDockControllerTest, ADamagedRecordIsTakenAgainFromTheDock) {
    defaults.setString(NativeDockController::originalKey, "{not json");
    settings.values = {false, std::nullopt, 40.0};
    EXPECT_EQ(controller.userOriginal(), (NativeDockPreferences{false, std::nullopt, 40.0}));
    EXPECT_EQ(stored(NativeDockController::originalKey), (NativeDockPreferences{false, std::nullopt, 40.0}));
}

TEST(UserDefaults, NumbersReadAsEitherIntegerOrReal) {
    InMemoryUserDefaults defaults;
    defaults.setInt("count", 3);
    defaults.setDouble("ratio", 2.0);
    defaults.setString("name", "x");
    EXPECT_EQ(defaults.doubleValue("count"), 3.0);
    EXPECT_EQ(defaults.intValue("ratio"), 2);
    EXPECT_FALSE(defaults.intValue("name"));
    EXPECT_FALSE(defaults.boolValue("count"));
    EXPECT_FALSE(defaults.stringValue("missing"));
}

} // namespace
} // namespace corvane
