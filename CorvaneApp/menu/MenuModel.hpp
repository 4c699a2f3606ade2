#pragma once

#include "CorvaneApp/preferences/AppPreferences.hpp"
#include "CorvaneCore/automation/WorkspaceHotkeys.hpp"
#include "CorvaneCore/platform/Calendar.hpp"
#include "CorvaneCore/platform/FocusStatusProvider.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/workspace/Profile.hpp"
#include "CorvaneStorage/backup/WorkspaceBackupStore.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class AppState;

/// What choosing a menu item does. Only the kinds that carry something fill it in.
struct MenuAction {
    enum class Kind {
        switchWorkspace,
        nextWorkspace,
        previousWorkspace,
        captureDock,
        undoLastChange,
        newWorkspace,
        editWorkspaces,
        takeBackup,
        restoreBackup,
        exportWorkspaces,
        importWorkspaces,
        toggleOwnDock,
        toggleLaunchAtLogin,
        editWidget,
        showWidgetGallery,
        showSettings,
        /// Ask the system to let the Focus be read.
        allowFocusAccess,
        /// Access was refused: only System Settings can give it now.
        openFocusSettings,
        quit,
    };

    Kind kind = Kind::quit;
    /// The workspace to switch to, or the widget to edit.
    std::optional<Uuid> target;
    /// The workspace backup to restore, and its title for the confirmation.
    std::optional<WorkspaceBackup> backup;

    bool operator==(const MenuAction&) const = default;
};

/// A key equivalent as the menu shows it: the key's label ("1", "Q", ",") and its modifiers.
struct MenuKey {
    std::string key;
    HotkeyModifiers modifiers;

    bool operator==(const MenuKey&) const = default;
};

/// One line of the menu, everything the menu bar draws: no text is made outside this model.
struct MenuItem {
    std::string title;
    /// None for a separator or a line that only says something.
    std::optional<MenuAction> action;
    bool isSeparator = false;
    bool isEnabled = true;
    bool isChecked = false;
    /// A workspace's colour, drawn as a dot: "#RRGGBB".
    std::optional<std::string> colorHex;
    std::optional<MenuKey> keyEquivalent;
    std::vector<MenuItem> submenu;

    static MenuItem separator() { return {.isSeparator = true, .isEnabled = false}; }
    /// A line that says something and does nothing.
    static MenuItem note(std::string text) { return {.title = std::move(text), .isEnabled = false}; }

    bool operator==(const MenuItem&) const = default;
};

/// The state the menu is built from, taken when it opens.
struct MenuSnapshot {
    std::vector<Profile> profiles;
    std::optional<Uuid> activeProfileId;
    std::optional<std::string> lastError;
    AppSettings settings;
    /// The hotkeys as they are registered: what precedence dropped is not shown.
    std::vector<std::pair<HotkeyAction, Hotkey>> hotkeys;
    /// Newest first.
    std::vector<WorkspaceBackup> backups;
    bool hasDockBackup = false;
    std::vector<DockWidget> widgets;
    bool isDegraded = false;
    /// Whether the host has Corvane's window, which settings, the workspace editor and the widget
    /// gallery open in; without it those items are left out rather than doing nothing.
    bool hasWindow = false;
    /// Whether the workspaces bound to a Focus can see it; none when none is bound.
    std::optional<FocusAuthorization> focusAccess;
};

namespace MenuModel {

/// The number of workspace backups the restore submenu lists; older ones are on the backups page.
inline constexpr std::size_t listedBackups = 12;

/// The menu-bar menu for `snapshot`, top to bottom. Backup dates are written in `calendar`'s
/// time zone.
std::vector<MenuItem> build(const MenuSnapshot& snapshot, const Calendar& calendar);

/// The state's part of the snapshot, now: workspaces, settings, registered hotkeys, backups and
/// widgets. A backups folder that cannot be listed lists none.
MenuSnapshot snapshot(AppState& state);

/// "2026-11-24 14:38 · launch": the backup's moment in the calendar's time zone and why it was taken.
std::string backupTitle(const WorkspaceBackup& backup, const Calendar& calendar);

/// The character a menu item's key equivalent holds for a key's label, as UTF-8: a letter in
/// lower case, " " for Space, a control character for Return, Tab, Delete and Escape, the
/// function-key characters for the arrows. None for a key a menu cannot show ("Key105").
std::optional<std::string> keyEquivalentCharacter(const std::string& label);

} // namespace MenuModel

} // namespace corvane
