#pragma once

#include "CorvaneApp/menu/MenuModel.hpp"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace corvane {

/// A new workspace as the person named it.
struct NewWorkspaceAnswer {
    std::string name;
    /// Start with the tiles the macOS Dock shows now, rather than empty.
    bool fromDock = true;
};

/// What a menu action asks of the person at the Mac: the system's open and save panels and a
/// confirmation. Each answer may be none, which cancels the action.
struct MenuPanels {
    /// The export file; the panel suggests `suggestedName` and allows only JSON.
    std::function<std::optional<std::filesystem::path>(const std::string& suggestedName)> chooseExportFile;
    std::function<std::optional<std::filesystem::path>()> chooseImportFile;
    /// Whether to put the backup `title` back over the current workspaces and widgets.
    std::function<bool(const std::string& title)> confirmRestore;
    std::function<std::optional<NewWorkspaceAnswer>()> askNewWorkspace;
    /// Opens a privacy pane of System Settings ("Privacy_Focus").
    std::function<void(const std::string& pane)> openPrivacySettings;
    /// Ends the application; its terminate handler takes the quit backup.
    std::function<void()> terminate;
};

namespace MenuActions {

/// The file name the export panel suggests.
inline constexpr std::string_view exportFileName = "Corvane Workspaces.json";

/// Carries out a menu action on the state. Failures end up in the state's `lastError`, which the
/// next menu shows; a cancelled panel changes nothing.
void perform(AppState& state, const MenuAction& action, const MenuPanels& panels, const Calendar& calendar);

} // namespace MenuActions

} // namespace corvane
