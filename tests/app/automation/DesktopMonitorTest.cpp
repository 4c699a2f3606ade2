#include "CorvaneApp/automation/AppDesktopAssigner.hpp"
#include "CorvaneApp/automation/DesktopWorkspaceMonitor.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakeDesktopServer.hpp"
#include "fakes/FakeRunningApplications.hpp"
#include "fakes/ManualScheduler.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(DesktopWorkspaceMonitor, ABurstOfNoticesGivesOneEvaluationAfterTheLastOne) {
    ManualClock clock;
    ManualScheduler scheduler(clock);
    FakeDesktopServer server;
    server.show(1, {11, "DESK-A", 1});
    server.screens.push_back({2, std::nullopt, {}}); // a display the window server says nothing about
    DesktopWorkspaceMonitor monitor(server, server, scheduler);
    int warnings = 0;
    std::vector<DesktopWorkspaceMonitor::Desktops> seen;
    monitor.onDesktopWillChange = [&] { ++warnings; };
    monitor.onDesktopChange = [&](const auto& desktops) { seen.push_back(desktops); };
    monitor.start();

    for (int i = 0; i < 5; ++i) {
        server.notice();
        scheduler.advance(0.1);
    }
    EXPECT_EQ(warnings, 5) << "every notice is passed on at once";
    EXPECT_TRUE(seen.empty());
    server.show(1, {12, "DESK-B", 2});
    scheduler.advance(0.25);
    ASSERT_EQ(seen.size(), 1u) << "0.35 s after the last notice";
    EXPECT_EQ(seen[0], (DesktopWorkspaceMonitor::Desktops{{1, DesktopSpace{12, "DESK-B", 2}}}));
    EXPECT_EQ(server.queries, 1);

    server.notice();
    monitor.stop();
    scheduler.advance(1);
    server.notice();
    scheduler.advance(1);
    EXPECT_EQ(seen.size(), 1u) << "a stopped monitor drops its pending evaluation and hears nothing";
}

TEST(AppDesktopAssigner, WritesTheSettingAndMovesRunningWindowsWhenTheWindowServerCan) {
    FakeDesktopServer server;
    server.show(1, {11, "DESK-A", 1});
    server.show(1, {12, "DESK-B", 2});
    server.bindings = {{"com.other.app", "AllSpaces"}, {"Com.Example.Editor", "DESK-A"}};
    FakeRunningApplications apps;
    apps.launch(40, "com.example.editor");
    apps.launch(41, "com.other.app");
    CapturingLog log;
    AppDesktopAssigner assigner(server, server, apps, log);

    EXPECT_EQ(assigner.assignment("com.example.EDITOR"), (AppDesktopAssignment{AppDesktopAssignment::Desktop{"DESK-A"}}));
    assigner.assign(AppDesktopAssignment{AppDesktopAssignment::Desktop{"DESK-B"}}, "com.example.Editor");
    EXPECT_EQ(server.bindings, (std::map<std::string, std::string>{{"com.example.editor", "DESK-B"},
                                                                   {"com.other.app", "AllSpaces"}}));
    EXPECT_EQ(server.assigned, (std::vector<std::pair<std::int32_t, std::optional<std::uint64_t>>>{{40, 12}}));

    assigner.assign(AppDesktopAssignment{AppDesktopAssignment::AllDesktops{}}, "com.other.app");
    EXPECT_EQ(server.assigned.back(), (std::pair<std::int32_t, std::optional<std::uint64_t>>{41, std::nullopt}));

    server.assignable = false;
    assigner.assign(std::nullopt, "com.other.app");
    assigner.assign(AppDesktopAssignment{AppDesktopAssignment::Desktop{"DESK-A"}}, "com.example.editor");
    EXPECT_EQ(server.bindings, (std::map<std::string, std::string>{{"com.example.editor", "DESK-A"}}));
    EXPECT_EQ(server.assigned.size(), 2u);
    EXPECT_TRUE(log.contains("SkyLight space assignment unavailable; the Dock applies it on restart"));
}
