// The automation commands end to end on a copy of the bundled sample Dock; nothing is restarted.

#include "app/cli/ToolFixtures.hpp"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

class AutomationTool : public SampleDockTool {
protected:
    bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

} // namespace

TEST_F(AutomationTool, SettingsAreShownChangedCheckedAndReset) {
    EXPECT_TRUE(has(ok({"prefs"}), "usesOwnDock                   true\n"));
    EXPECT_EQ(ok({"prefs", "set", "usesOwnDock", "false"}), "usesOwnDock = false\n");
    EXPECT_EQ(ok({"prefs", "set", "nextWorkspaceHotkey", "ctrl+opt+right"}), "nextWorkspaceHotkey = ⌃⌥→\n");
    EXPECT_EQ(ok({"prefs", "set", "workspaceHotkeyModifiers", "ctrl+cmd"}), "workspaceHotkeyModifiers = ⌃⌘ (ctrl+cmd)\n");
    auto shown = ok({"prefs"});
    EXPECT_TRUE(has(shown, "usesOwnDock                   false\n")) << shown;
    EXPECT_TRUE(has(ok({"prefs", "--json"}), "\"dockRevealDelay\": null"));
    auto stored = readText(dir / "data" / "dev.tessik.Corvane.plist");
    EXPECT_TRUE(has(stored, "dev.tessik.corvane.preferences.usesOwnDock"));

    auto unknown = run({"prefs", "set", "usesOwnDok", "true"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(unknown.err.starts_with("corvane: unknown setting \"usesOwnDok\"; the settings are: usesOwnDock, ")) << unknown.err;
    auto badMode = run({"prefs", "set", "nativeDockMode", "sideways"});
    EXPECT_EQ(badMode.status, 2);
    EXPECT_EQ(badMode.err, "corvane: nativeDockMode takes unchanged, autoHide or hidden, not \"sideways\"\n");
    auto badModifiers = run({"prefs", "set", "workspaceHotkeyModifiers", "shift"});
    EXPECT_EQ(badModifiers.status, 2);
    EXPECT_TRUE(has(badModifiers.err, "one of ctrl+opt, ctrl+cmd, opt+cmd, ctrl+opt+cmd, ctrl+opt+shift"));
    EXPECT_EQ(readText(dir / "data" / "dev.tessik.Corvane.plist"), stored) << "a refused value changes nothing";

    ok({"prefs", "reset"});
    EXPECT_TRUE(has(ok({"prefs"}), "usesOwnDock                   true\n"));
}

TEST_F(AutomationTool, HotkeysCyclingFocusAndDesktopsGoThroughTheWorkspaces) {
    ok({"new", "Work", "--from-dock"});
    ok({"new", "Play"});
    ok({"activate", "Work"});
    ok({"prefs", "set", "nextWorkspaceHotkey", "ctrl+opt+1"});
    auto hotkeys = ok({"hotkeys"});
    EXPECT_TRUE(has(hotkeys, "  ⌃⌥1  switch to \"Work\"\n  ⌃⌥2  switch to \"Play\"\n  ⌃⌥D  bring the Dock forward\n")) << hotkeys;
    EXPECT_TRUE(has(hotkeys, "Dropped:\n  ⌃⌥1  next workspace (already used by workspace \"Work\")\n")) << hotkeys;
    EXPECT_TRUE(has(ok({"hotkeys", "--json"}), "\"reason\": \"already used by workspace \\\"Work\\\"\""));

    // The own Dock bar is on by default: every switch only changes the active workspace.
    auto dock = readText(dir / "dock.plist");
    const std::string ownDock = "; the own Dock bar shows it and the macOS Dock is left alone (usesOwnDock is on).\n";
    EXPECT_EQ(ok({"next"}), "Activated \"Play\"" + ownDock);
    EXPECT_EQ(ok({"previous"}), "Activated \"Work\"" + ownDock);
    ok({"edit", "Play", "--focus", "Gaming"});
    EXPECT_EQ(ok({"focus", "on"}), "Activated \"Play\"" + ownDock);
    EXPECT_EQ(ok({"switch", "Work"}), "Activated \"Work\"" + ownDock);
    EXPECT_EQ(readText(dir / "dock.plist"), dock);
    EXPECT_FALSE(std::filesystem::exists(dir / "data" / "backups"));
    ok({"edit", "Play", "--no-focus"});

    ok({"prefs", "set", "usesOwnDock", "false"});
    EXPECT_EQ(ok({"next"}), "Switched to \"Play\".\n");
    EXPECT_TRUE(has(ok({"dock"}), "Applications (0):"));
    EXPECT_EQ(ok({"previous"}), "Switched to \"Work\".\n");
    EXPECT_TRUE(has(ok({"dock"}), "Applications (10):"));

    EXPECT_EQ(ok({"focus", "on"}), "No workspace is bound to a Focus; nothing to switch to.\n");
    ok({"edit", "Play", "--focus", "Gaming"});
    EXPECT_EQ(ok({"focus", "on"}), "Switched to \"Play\".\n");
    EXPECT_EQ(ok({"focus", "off"}), "Switched to \"Work\".\n");
    EXPECT_EQ(run({"focus", "maybe"}).status, 2);

    EXPECT_EQ(ok({"desktop", "bind", "Work", "DESK-1"}), "Bound \"Work\" to desktop DESK-1.\n");
    auto profiles = readText(dir / "data" / "profiles.json");
    auto conflict = run({"desktop", "bind", "Play", "DESK-1"});
    EXPECT_EQ(conflict.status, 1);
    EXPECT_EQ(conflict.err, "corvane: desktop DESK-1 is already bound to \"Work\"; unbind it there first\n");
    EXPECT_EQ(readText(dir / "data" / "profiles.json"), profiles);
    EXPECT_EQ(ok({"desktop", "unbind", "Work"}), "Unbound \"Work\" from its desktops.\n");
    EXPECT_EQ(ok({"desktop", "bind", "Play", "DESK-1"}), "Bound \"Play\" to desktop DESK-1.\n");
}
