#include "CorvaneCore/automation/WorkspaceCycle.hpp"
#include "CorvaneCore/automation/WorkspaceHotkeys.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {
std::vector<Profile> workspaces(int count) {
    std::vector<Profile> list(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        list[static_cast<std::size_t>(i)].id = Uuid::generate();
        list[static_cast<std::size_t>(i)].name = "W" + std::to_string(i + 1);
    }
    return list;
}
const HotkeyModifiers kCtrlOpt{6};
} // namespace

TEST(WorkspaceCycle, WrapsBothWaysAndStartsFromTheFirstWhenTheCurrentIsUnknown) {
    auto one = workspaces(1);
    EXPECT_FALSE(WorkspaceCycle::next(one[0].id, one, 1));
    auto three = workspaces(3);
    EXPECT_FALSE(WorkspaceCycle::next(three[0].id, three, 0));
    EXPECT_EQ(WorkspaceCycle::next(std::nullopt, three, 1)->id, three[1].id);
    EXPECT_EQ(WorkspaceCycle::next(Uuid::generate(), three, -1)->id, three[2].id);
    EXPECT_EQ(WorkspaceCycle::next(three[0].id, three, 4)->id, three[1].id);
    EXPECT_EQ(WorkspaceCycle::next(three[0].id, three, -7)->id, three[2].id);
    EXPECT_FALSE(WorkspaceCycle::next(three[1].id, three, 3)) << "a full turn lands where it started";
}

TEST(WorkspaceHotkeys, DigitsFollowTheKeyboardNotTheCodeOrder) {
    EXPECT_EQ(WorkspaceHotkeys::numbered(4, kCtrlOpt)->keyCode, 23);
    EXPECT_EQ(WorkspaceHotkeys::numbered(5, kCtrlOpt)->displayString(), "⌃⌥6");
    EXPECT_EQ(WorkspaceHotkeys::numbered(8, kCtrlOpt)->displayString(), "⌃⌥9");
    EXPECT_FALSE(WorkspaceHotkeys::numbered(9, kCtrlOpt));
    EXPECT_FALSE(WorkspaceHotkeys::numbered(-1, kCtrlOpt));
}

TEST(WorkspaceHotkeys, OwnHotkeysWinFirstComeAndDigitsFillTheRest) {
    auto list = workspaces(10);
    Hotkey k{40, {HotkeyModifiers::command | HotkeyModifiers::shift}};
    list[3].hotkey = k;
    list[5].hotkey = k;                                 // same as the fourth: loses it
    list[1].hotkey = *WorkspaceHotkeys::numbered(2, kCtrlOpt); // takes the third one's digit
    auto own = WorkspaceHotkeys::bindings(list, std::nullopt);
    EXPECT_EQ(own.size(), 2u);
    EXPECT_FALSE(own.contains(list[5].id));

    auto all = WorkspaceHotkeys::bindings(list, kCtrlOpt);
    EXPECT_EQ(all.at(list[0].id).displayString(), "⌃⌥1");
    EXPECT_EQ(all.at(list[1].id).displayString(), "⌃⌥3");
    EXPECT_FALSE(all.contains(list[2].id)) << "its digit is taken by an own hotkey";
    EXPECT_EQ(all.at(list[3].id), k);
    EXPECT_EQ(all.at(list[5].id).displayString(), "⌃⌥6");
    EXPECT_EQ(all.at(list[8].id).displayString(), "⌃⌥9");
    EXPECT_FALSE(all.contains(list[9].id)) << "the tenth gets no digit";
}

TEST(HotkeyRegistry, LaterWishesForBoundCombinationsAreDroppedWithTheirReason) {
    auto list = workspaces(2);
    Hotkey taken{18, kCtrlOpt};
    list[0].hotkey = taken;
    list[1].hotkey = taken;
    HotkeyRegistry::Wanted wanted;
    wanted.nextWorkspace = taken;
    wanted.previousWorkspace = Hotkey{123, kCtrlOpt};
    wanted.focusDock = Hotkey{2, kCtrlOpt};
    auto picker = Uuid::generate();
    wanted.colourPickers = {{picker, Hotkey{2, kCtrlOpt}}};
    auto registry = HotkeyRegistry::build(list, wanted);

    ASSERT_EQ(registry.bindings.size(), 3u);
    EXPECT_EQ(registry.bindings[0].first, HotkeyAction::profile(list[0].id));
    EXPECT_EQ(registry.bindings[1].first, HotkeyAction::focusDock());
    EXPECT_EQ(registry.bindings[2].first, HotkeyAction::previousWorkspace());
    ASSERT_EQ(registry.dropped.size(), 3u);
    EXPECT_EQ(registry.dropped[0].action, HotkeyAction::profile(list[1].id));
    EXPECT_EQ(registry.dropped[0].reason, "already used by workspace \"W1\"");
    EXPECT_EQ(registry.dropped[1].action, HotkeyAction::nextWorkspace());
    EXPECT_EQ(registry.dropped[2].reason, "already used by focusDock");
}
