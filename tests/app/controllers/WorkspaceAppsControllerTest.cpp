#include "CorvaneApp/controllers/WorkspaceAppsController.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakeRunningApplications.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

Profile workspace(std::string name, OtherWorkspaceApps rule, std::vector<std::string> bundleIds) {
    Profile profile;
    profile.id = Uuid::generate();
    profile.name = std::move(name);
    profile.otherWorkspaceApps = rule;
    for (auto& id : bundleIds) profile.items.push_back(AppEntry{"/Applications/" + id + ".app", id});
    return profile;
}

class WorkspaceApps : public ::testing::Test {
protected:
    WorkspaceApps() {
        apps.launch(1, "com.apple.finder");
        apps.launch(2, "com.apple.dock");
        apps.launch(3, "dev.tessik.Corvane");
        apps.launch(10, "com.code.editor");
        apps.launch(11, "com.chat.app");
        apps.launch(12, "com.music.player");
    }
    void switchTo(const Profile& target) {
        active = target;
        controller.workspaceDidSwitch(target, {work, play});
    }

    FakeRunningApplications apps;
    CapturingLog log;
    Profile work = workspace("Work", OtherWorkspaceApps::hide, {"com.code.editor"});
    Profile play = workspace("Play", OtherWorkspaceApps::hide, {"com.music.player", "com.apple.finder"});
    std::optional<Profile> active;
    WorkspaceAppsController controller{apps, log, [this] {
                                           return std::pair{active, std::vector<Profile>{work, play}};
                                       }};
};

} // namespace

TEST_F(WorkspaceApps, HidingSparesProtectedAppsAndBringsBackOnlyWhatItHid) {
    apps.hidden.insert(11); // the user hid the chat app before
    switchTo(work);
    EXPECT_EQ(apps.hidden, (std::set<std::int32_t>{11, 12}));
    EXPECT_EQ(controller.hiddenByCorvane, std::set<std::int32_t>{12});
    EXPECT_TRUE(log.contains("switched to Work: 2 outside, 0 back"));

    switchTo(play);
    EXPECT_EQ(apps.unhidden, std::vector<std::int32_t>{12});
    EXPECT_TRUE(apps.hidden.contains(11)) << "an app the user hid stays hidden";
    EXPECT_TRUE(apps.hidden.contains(10));
    EXPECT_FALSE(apps.hidden.contains(1) || apps.hidden.contains(2) || apps.hidden.contains(3));
}

TEST_F(WorkspaceApps, KeepChangesNothingAndQuitAsksOutsidersToQuit) {
    work.otherWorkspaceApps = OtherWorkspaceApps::keep;
    switchTo(work);
    EXPECT_TRUE(apps.hidden.empty());
    EXPECT_TRUE(apps.terminated.empty());

    work.otherWorkspaceApps = OtherWorkspaceApps::quit;
    switchTo(work);
    EXPECT_EQ(apps.terminated, (std::vector<std::int32_t>{11, 12}));
    EXPECT_TRUE(apps.hidden.empty());
}

TEST_F(WorkspaceApps, AnAppUsedInAWorkspaceIsNotHiddenWhenSwitchingBack) {
    switchTo(work);
    apps.activate(11); // the user opens the chat app while in Work
    EXPECT_TRUE(controller.ownership.ownersOf(11).contains(work.id));
    apps.activate(10); // pinned in Work already: no ownership needed
    EXPECT_TRUE(controller.ownership.ownersOf(10).empty());
    switchTo(play);
    switchTo(work);
    EXPECT_FALSE(apps.hidden.contains(11));
}

TEST_F(WorkspaceApps, RefusedHidesAreNotRecordedAndOtherDisplaysKeepTheirApps) {
    apps.refusesToHide.insert(12);
    WorkspaceAppsController twoDisplays{apps, log, [this] { return std::pair{active, std::vector<Profile>{}}; },
                                        [] { return std::set<std::int32_t>{11}; }};
    twoDisplays.workspaceDidSwitch(work, {work, play});
    EXPECT_TRUE(twoDisplays.hiddenByCorvane.empty());
    EXPECT_FALSE(apps.hidden.contains(11));
}
