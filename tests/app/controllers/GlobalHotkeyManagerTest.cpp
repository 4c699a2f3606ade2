#include "CorvaneApp/automation/GlobalHotkeyManager.hpp"
#include "fakes/CapturingLog.hpp"
#include "fakes/FakeHotkeyRegistrar.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {
const HotkeyModifiers kCtrlOpt{6};
}

TEST(GlobalHotkeyManager, SameBindingsGetTheSameIdsAndFireTheirActions) {
    FakeHotkeyRegistrar registrar;
    CapturingLog log;
    GlobalHotkeyManager manager(registrar, log);
    auto work = Uuid::parse("00000000-0000-4000-8000-000000000002").value();
    std::vector<std::pair<HotkeyAction, Hotkey>> bindings = {
        {HotkeyAction::previousWorkspace(), Hotkey{123, kCtrlOpt}},
        {HotkeyAction::profile(work), Hotkey{18, {HotkeyModifiers::command | HotkeyModifiers::shift}}},
        {HotkeyAction::nextWorkspace(), Hotkey{124, kCtrlOpt}},
    };
    std::vector<HotkeyAction> fired;
    manager.setBindings(bindings, [&](const HotkeyAction& action) { fired.push_back(action); });

    ASSERT_EQ(registrar.live.size(), 3u);
    auto first = registrar.live.begin()->second;
    EXPECT_EQ(first.signature, 0x4352564Eu);
    EXPECT_EQ(first.id, 1u);
    EXPECT_EQ(first.keyCode, 124) << "nextWorkspace sorts before previousWorkspace and profile:";
    EXPECT_EQ(manager.registrations().at(3).action, HotkeyAction::profile(work));
    EXPECT_EQ(std::prev(registrar.live.end())->second.modifiers, 0x100u | 0x200u);

    manager.setBindings(bindings, [&](const HotkeyAction& action) { fired.push_back(action); });
    EXPECT_EQ(registrar.live.size(), 3u) << "a rebuild unregisters the old ones";
    EXPECT_EQ(registrar.handlersInstalled, 1);
    EXPECT_EQ(manager.registrations().at(1).action, HotkeyAction::nextWorkspace());

    registrar.press(3);
    registrar.press(42);
    ASSERT_EQ(fired.size(), 1u);
    EXPECT_EQ(fired[0], HotkeyAction::profile(work));

    manager.stop();
    registrar.press(3);
    EXPECT_EQ(fired.size(), 1u);
    EXPECT_TRUE(registrar.live.empty());
}

TEST(GlobalHotkeyManager, ACombinationHeldElsewhereIsLoggedAndSkipped) {
    FakeHotkeyRegistrar registrar;
    CapturingLog log;
    registrar.takenElsewhere.insert({18, 0x800u | 0x1000u});
    GlobalHotkeyManager manager(registrar, log);
    manager.setBindings({{HotkeyAction::focusDock(), Hotkey{18, kCtrlOpt}}, {HotkeyAction::nextWorkspace(), Hotkey{19, kCtrlOpt}}},
                        [](const HotkeyAction&) {});
    EXPECT_EQ(manager.registrations().size(), 1u);
    EXPECT_TRUE(manager.registrations().contains(2));
    EXPECT_TRUE(log.contains("hotkey ⌃⌥1 unavailable: -9878"));
}
