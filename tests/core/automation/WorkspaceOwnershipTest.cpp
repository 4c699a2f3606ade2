#include "CorvaneCore/automation/WorkspaceOwnership.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(WorkspaceOwnership, AdoptsUnpinnedUnownedAppsIntoPlacedOrActiveWorkspace) {
    Profile work;
    work.id = Uuid::generate();
    work.items.push_back(AppEntry{"/Applications/Editor.app"});
    work.items.push_back(AppEntry{"/elsewhere/Chat.app", std::string("com.chat")});
    auto other = Uuid::generate(), active = Uuid::generate();

    RunningApp editor{1, std::nullopt, "/Applications/Editor.app"};
    RunningApp chat{2, "com.chat", "/Applications/Chat.app"};
    RunningApp music{3, "com.music"}, notes{4, "com.notes"}, mail{5, "com.mail"};

    WorkspaceOwnership ownership;
    ownership.assign(5, other);
    ownership.adopt({editor, chat, music, notes, mail}, {work}, active, {{4, other}});
    EXPECT_TRUE(ownership.ownersOf(1).empty()) << "pinned by path";
    EXPECT_TRUE(ownership.ownersOf(2).empty()) << "pinned by bundle identifier";
    EXPECT_EQ(ownership.ownersOf(3), std::set<Uuid>{active});
    EXPECT_EQ(ownership.ownersOf(4), std::set<Uuid>{other});
    EXPECT_EQ(ownership.ownersOf(5), std::set<Uuid>{other}) << "an owned app keeps its owners";

    ownership.assign(3, other);
    EXPECT_EQ(ownership.ownersOf(3).size(), 2u);
    ownership.remove(3);
    EXPECT_TRUE(ownership.ownersOf(3).empty());
}
