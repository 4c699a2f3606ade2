#include "CorvaneCore/automation/AppDesktopBindings.hpp"
#include "CorvaneCore/automation/DesktopBinding.hpp"
#include "CorvaneCore/automation/WindowArrivals.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {
Profile boundTo(std::string name, std::vector<std::string> desktops) {
    Profile p;
    p.id = Uuid::generate();
    p.name = std::move(name);
    p.desktopUUIDs = std::move(desktops);
    return p;
}
} // namespace

TEST(DesktopBinding, FirstBoundWorkspaceWinsAndUnboundDesktopsKeepTheActiveOne) {
    std::vector<Profile> profiles = {boundTo("A", {"D1"}), boundTo("B", {"D2", "D1"}), boundTo("C", {})};
    EXPECT_EQ(DesktopBinding::profile("D1", profiles), &profiles[0]);
    EXPECT_EQ(DesktopBinding::workspace(std::string("D2"), profiles, profiles[2].id), profiles[1].id);
    EXPECT_EQ(DesktopBinding::workspace(std::string("D9"), profiles, profiles[2].id), profiles[2].id);
    EXPECT_EQ(DesktopBinding::workspace(std::nullopt, profiles, std::nullopt), std::nullopt);
    EXPECT_EQ(DesktopBinding::conflictingProfile(profiles[1], profiles), &profiles[0]);
    EXPECT_EQ(DesktopBinding::conflictingProfile(profiles[2], profiles), nullptr);
}

TEST(DisplayWorkspaces, RepeatedNoticesKeepTheUsersChoiceAndDisconnectedDisplaysAreForgotten) {
    std::vector<Profile> profiles = {boundTo("A", {"D1"}), boundTo("B", {"D2"}), boundTo("C", {})};
    DisplayWorkspaces displays;
    displays.display(1, "D1", profiles);
    EXPECT_EQ(displays.workspace(1, "D1", profiles, profiles[2].id), profiles[0].id);
    displays.choose(profiles[2].id, 1);
    displays.display(1, "D1", profiles);
    EXPECT_EQ(displays.workspace(1, "D1", profiles, std::nullopt), profiles[2].id);
    displays.display(1, "D2", profiles);
    EXPECT_EQ(displays.workspace(1, "D2", profiles, std::nullopt), profiles[1].id);

    displays.display(2, "D1", profiles);
    auto shown = displays.shown(1, profiles[1].id, profiles, std::nullopt);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].id, profiles[0].id);
    EXPECT_TRUE(displays.shown(1, profiles[0].id, profiles, std::nullopt).empty());

    displays.keep({1});
    EXPECT_FALSE(displays.chosen.contains(2));
    EXPECT_FALSE(displays.desktops.contains(2));
    auto gone = profiles;
    gone.erase(gone.begin() + 1);
    EXPECT_EQ(displays.workspace(1, std::nullopt, gone, gone[1].id), gone[1].id) << "a vanished choice falls back";
}

TEST(WindowArrivals, ReportsOnlyWindowsNotSeenBefore) {
    WindowArrivals arrivals;
    arrivals.seed({{10, {1, 2}}, {11, {3}}}, {10});
    auto fresh = arrivals.record({{10, {1, 2, 5}}, {11, {3}}, {12, {7}}});
    EXPECT_EQ(fresh, (WindowMap{{10, {5}}, {11, {3}}, {12, {7}}}));
    EXPECT_TRUE(arrivals.record({{10, {1, 2, 5}}}).empty());
    EXPECT_EQ(arrivals.record({{11, {3}}}), (WindowMap{{11, {3}}})) << "a process that left is dropped";
}

TEST(WindowDesktops, DisplayOfAWindowAndDesktopKnowledge) {
    std::vector<WindowDesktops::Display> screens = {{1, {0, 0, 1000, 800}}, {2, {1000, 0, 1000, 800}}};
    EXPECT_EQ(WindowDesktops::display({900, 100, 300, 200}, screens)->id, 2u) << "centre at 1050";
    EXPECT_EQ(WindowDesktops::display({-500, 700, 600, 200}, screens)->id, 1u) << "largest overlap";
    EXPECT_FALSE(WindowDesktops::display({5000, 5000, 10, 10}, screens));
    EXPECT_EQ(WindowDesktops::displays({{1500, 10, 10, 10}, {10, 10, 10, 10}}, screens), (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(WindowDesktops::frontDisplay({{5000, 0, 1, 1}, {1500, 10, 10, 10}}, screens), 2u);

    EXPECT_EQ(WindowDesktops::updated({6, 7}, {}, {5, 6}), (std::set<std::uint64_t>{6, 7}));
    EXPECT_EQ(WindowDesktops::updated({6, 7}, {5}, {5, 6}), (std::set<std::uint64_t>{5, 7}));
}

TEST(AppDesktopBindings, BundleIdentifiersCompareWithoutCase) {
    AppDesktopBindings bindings{{{"com.Apple.Safari", "D1"}, {"com.chat", "AllSpaces"}}};
    EXPECT_EQ(bindings.assignment("COM.apple.safari"), (AppDesktopAssignment{AppDesktopAssignment::Desktop{"D1"}}));
    EXPECT_EQ(bindings.assignment("com.chat"), (AppDesktopAssignment{AppDesktopAssignment::AllDesktops{}}));
    EXPECT_FALSE(bindings.assignment("com.other"));

    auto moved = bindings.setting(AppDesktopAssignment{AppDesktopAssignment::AllDesktops{}}, "com.apple.SAFARI");
    EXPECT_EQ(moved.values, (std::map<std::string, std::string>{{"com.apple.safari", "AllSpaces"}, {"com.chat", "AllSpaces"}}));
    EXPECT_EQ(moved.setting(std::nullopt, "Com.Chat").values.size(), 1u);
}
