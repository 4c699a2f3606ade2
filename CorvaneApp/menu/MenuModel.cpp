#include "CorvaneApp/menu/MenuModel.hpp"

#include "CorvaneApp/automation/WantedHotkeys.hpp"
#include "CorvaneApp/state/AppState.hpp"
#include "CorvaneCore/widgets/WidgetPlacement.hpp"

#include <cctype>
#include <cmath>
#include <cstdio>

namespace corvane {

namespace {

using Kind = MenuAction::Kind;

MenuItem command(std::string title, MenuAction action, bool enabled = true) {
    return {.title = std::move(title), .action = std::move(action), .isEnabled = enabled};
}

MenuItem command(std::string title, Kind kind, bool enabled = true) {
    return command(std::move(title), MenuAction{.kind = kind}, enabled);
}

std::optional<MenuKey> keyFor(const MenuSnapshot& snapshot, const HotkeyAction& action) {
    for (const auto& [bound, hotkey] : snapshot.hotkeys)
        if (bound == action) return MenuKey{hotkey.keyLabel(), hotkey.modifiers};
    return std::nullopt;
}

const Profile* activeProfile(const MenuSnapshot& snapshot) {
    if (!snapshot.activeProfileId) return nullptr;
    for (const auto& profile : snapshot.profiles)
        if (profile.id == *snapshot.activeProfileId) return &profile;
    return nullptr;
}

std::string quoted(const std::string& name) { return "\u201C" + name + "\u201D"; }

std::vector<MenuItem> backupsMenu(const MenuSnapshot& snapshot, const Calendar& calendar) {
    std::vector<MenuItem> items{command("Back Up Now", Kind::takeBackup, !snapshot.isDegraded), MenuItem::separator()};
    if (snapshot.backups.empty()) {
        items.push_back(MenuItem::note("No Backups to Restore"));
        return items;
    }
    items.push_back(MenuItem::note("Restore"));
    for (std::size_t i = 0; i < snapshot.backups.size() && i < MenuModel::listedBackups; ++i) {
        const auto& backup = snapshot.backups[i];
        items.push_back(command(MenuModel::backupTitle(backup, calendar),
                                MenuAction{.kind = Kind::restoreBackup, .backup = backup}, !snapshot.isDegraded));
    }
    return items;
}

std::vector<MenuItem> widgetsMenu(const MenuSnapshot& snapshot) {
    std::vector<MenuItem> items;
    for (const auto& widget : snapshot.widgets) {
        std::string shownIn;
        for (const auto& profile : snapshot.profiles)
            if (WidgetPlacement::contains(widget, profile)) shownIn += (shownIn.empty() ? "" : ", ") + profile.name;
        auto name = widget.name.empty() ? std::string(widget.kind.name()) : widget.name;
        auto title = name + (shownIn.empty() ? " (not shown)" : " \u2014 in " + shownIn);
        // A widget's editor lives in the window; without it the line only tells where it shows.
        if (snapshot.hasWindow)
            items.push_back(command(std::move(title), MenuAction{.kind = Kind::editWidget, .target = widget.id}));
        else
            items.push_back(MenuItem::note(std::move(title)));
    }
    if (items.empty()) items.push_back(MenuItem::note("No Widgets Yet"));
    if (snapshot.hasWindow) {
        items.push_back(MenuItem::separator());
        items.push_back(command("Widget Gallery\u2026", Kind::showWidgetGallery));
    }
    return items;
}

/// The permissions line: whether Focus-bound workspaces can follow the Focus, and what gives
/// them access when they cannot.
std::optional<MenuItem> focusAccessLine(const MenuSnapshot& snapshot) {
    if (!snapshot.focusAccess) return std::nullopt;
    switch (*snapshot.focusAccess) {
    case FocusAuthorization::authorized: {
        auto line = MenuItem::note("Focus Access Allowed");
        line.isChecked = true;
        return line;
    }
    case FocusAuthorization::notDetermined:
        return command("Allow Focus Access for Focus-Bound Workspaces\u2026", Kind::allowFocusAccess);
    case FocusAuthorization::denied:
        return command("Focus Access Is Off: Open System Settings\u2026", Kind::openFocusSettings);
    case FocusAuthorization::unavailable:
        return MenuItem::note("Focus Cannot Be Read on This Mac");
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> MenuModel::keyEquivalentCharacter(const std::string& label) {
    static const std::pair<std::string_view, std::string_view> named[] = {
        {"Space", " "},       {"Return", "\r"},          {"Tab", "\t"},
        // Delete is the backspace key; AppKit's menus show it as ⌫.
        {"Delete", "\x08"},   {"Escape", "\x1b"},
        // NSUpArrowFunctionKey and its siblings, U+F700 to U+F703, in UTF-8.
        {"\u2191", "\uF700"}, {"\u2193", "\uF701"}, {"\u2190", "\uF702"}, {"\u2192", "\uF703"},
    };
    for (auto [name, character] : named)
        if (label == name) return std::string(character);
    if (label.size() != 1) return std::nullopt;
    auto c = static_cast<unsigned char>(label[0]);
    // Menus match a letter typed without shift; with shift in the modifiers AppKit adds it.
    return std::string(1, static_cast<char>(std::tolower(c)));
}

std::string MenuModel::backupTitle(const WorkspaceBackup& backup, const Calendar& calendar) {
    auto day = calendar.day(backup.date);
    auto seconds = static_cast<long>(std::floor(backup.date.sinceReferenceDate - calendar.startOfDay(day).sinceReferenceDate));
    char text[64];
    std::snprintf(text, sizeof text, "%s %02ld:%02ld \u00B7 ", day.key().c_str(), seconds / 3600 % 24, seconds / 60 % 60);
    return text + std::string(rawValue(backup.reason));
}

std::vector<MenuItem> MenuModel::build(const MenuSnapshot& snapshot, const Calendar& calendar) {
    std::vector<MenuItem> menu;
    if (snapshot.isDegraded)
        menu.push_back(MenuItem::note("The data folder cannot be used: nothing is being saved"));
    if (snapshot.lastError) menu.push_back(MenuItem::note("\u26A0\uFE0E " + *snapshot.lastError));
    if (!menu.empty()) menu.push_back(MenuItem::separator());

    for (const auto& profile : snapshot.profiles) {
        auto item = command(profile.name, MenuAction{.kind = Kind::switchWorkspace, .target = profile.id});
        item.isChecked = profile.id == snapshot.activeProfileId;
        item.colorHex = std::string(hex(profile.color));
        item.keyEquivalent = keyFor(snapshot, HotkeyAction::profile(profile.id));
        menu.push_back(std::move(item));
    }
    if (snapshot.profiles.empty()) menu.push_back(MenuItem::note("No Workspaces Yet"));
    bool canCycle = snapshot.profiles.size() >= 2;
    auto next = command("Next Workspace", Kind::nextWorkspace, canCycle);
    next.keyEquivalent = keyFor(snapshot, HotkeyAction::nextWorkspace());
    auto previous = command("Previous Workspace", Kind::previousWorkspace, canCycle);
    previous.keyEquivalent = keyFor(snapshot, HotkeyAction::previousWorkspace());
    menu.push_back(MenuItem::separator());
    menu.push_back(std::move(next));
    menu.push_back(std::move(previous));

    menu.push_back(MenuItem::separator());
    const auto* active = activeProfile(snapshot);
    menu.push_back(command(active ? "Save the Dock into " + quoted(active->name) : "Save the Dock into a Workspace",
                           Kind::captureDock, active != nullptr));
    menu.push_back(command("Undo Last Dock Change", Kind::undoLastChange, snapshot.hasDockBackup));
    menu.push_back(command("New Workspace\u2026", Kind::newWorkspace, !snapshot.isDegraded));
    if (snapshot.hasWindow) menu.push_back(command("Edit Workspaces\u2026", Kind::editWorkspaces));

    menu.push_back(MenuItem::separator());
    menu.push_back({.title = "Backups", .submenu = backupsMenu(snapshot, calendar)});
    menu.push_back(command("Export Workspaces\u2026", Kind::exportWorkspaces, !snapshot.profiles.empty()));
    menu.push_back(command("Import Workspaces\u2026", Kind::importWorkspaces, !snapshot.isDegraded));

    menu.push_back(MenuItem::separator());
    auto ownDock = command("Use Corvane\u2019s Own Dock", Kind::toggleOwnDock);
    ownDock.isChecked = snapshot.settings.usesOwnDock;
    menu.push_back(std::move(ownDock));
    menu.push_back({.title = "Widgets", .submenu = widgetsMenu(snapshot)});
    auto login = command("Start at Login", Kind::toggleLaunchAtLogin);
    login.isChecked = snapshot.settings.launchAtLogin;
    menu.push_back(std::move(login));
    if (snapshot.hasWindow) {
        auto settings = command("Settings\u2026", Kind::showSettings);
        settings.keyEquivalent = MenuKey{",", HotkeyModifiers{HotkeyModifiers::command}};
        menu.push_back(std::move(settings));
    }
    if (auto line = focusAccessLine(snapshot)) menu.push_back(std::move(*line));

    menu.push_back(MenuItem::separator());
    auto quit = command("Quit Corvane", Kind::quit);
    quit.keyEquivalent = MenuKey{"Q", HotkeyModifiers{HotkeyModifiers::command}};
    menu.push_back(std::move(quit));
    return menu;
}

MenuSnapshot MenuModel::snapshot(AppState& state) {
    MenuSnapshot snapshot{.profiles = state.profiles(),
                          .activeProfileId = state.activeProfileId(),
                          .lastError = state.lastError(),
                          .settings = state.settings(),
                          .widgets = state.widgetStore().file().widgets,
                          .isDegraded = state.isDegraded(),
                          .focusAccess = state.focusAccess()};
    snapshot.hotkeys = HotkeyRegistry::build(snapshot.profiles, wantedHotkeys(snapshot.settings, snapshot.widgets)).bindings;
    try {
        snapshot.backups = state.workspaceBackups().list();
        snapshot.hasDockBackup = state.dockBackups().latestBackup().has_value();
    } catch (const std::exception&) {
        // An unreadable backups folder offers nothing to restore; taking a backup still reports why.
    }
    return snapshot;
}

} // namespace corvane
