#include "CorvaneApp/menu/MenuActions.hpp"

#include "CorvaneApp/state/AppState.hpp"

namespace corvane {

void MenuActions::perform(AppState& state, const MenuAction& action, const MenuPanels& panels,
                          const Calendar& calendar) {
    using Kind = MenuAction::Kind;
    switch (action.kind) {
    case Kind::switchWorkspace:
        if (action.target) state.switchTo(*action.target);
        return;
    case Kind::nextWorkspace:
        return state.cycleWorkspace(+1);
    case Kind::previousWorkspace:
        return state.cycleWorkspace(-1);
    case Kind::captureDock:
        return state.captureCurrentDock();
    case Kind::undoLastChange:
        return state.undoLastChange();
    case Kind::newWorkspace:
        if (!panels.askNewWorkspace) return state.newProfile();
        if (auto answer = panels.askNewWorkspace()) state.createWorkspace(answer->name, answer->fromDock);
        return;
    case Kind::editWorkspaces:
        return state.showWorkspaces();
    case Kind::takeBackup:
        state.backUpWorkspaces(WorkspaceBackup::Reason::manual);
        state.perform([&] { state.dockBackups().snapshot(); });
        return;
    case Kind::restoreBackup:
        if (action.backup && panels.confirmRestore &&
            panels.confirmRestore(MenuModel::backupTitle(*action.backup, calendar)))
            state.restoreWorkspaces(*action.backup);
        return;
    case Kind::exportWorkspaces:
        if (!panels.chooseExportFile) return;
        if (auto file = panels.chooseExportFile(std::string(exportFileName)))
            state.exportProfiles(*file);
        return;
    case Kind::importWorkspaces:
        if (!panels.chooseImportFile) return;
        if (auto file = panels.chooseImportFile()) state.importProfiles(*file);
        return;
    case Kind::toggleOwnDock:
        return state.changeSettings([](AppSettings& settings) { settings.usesOwnDock = !settings.usesOwnDock; });
    case Kind::toggleLaunchAtLogin:
        return state.changeSettings([](AppSettings& settings) { settings.launchAtLogin = !settings.launchAtLogin; });
    case Kind::editWidget:
        if (action.target) state.handleEditWidgetRequest(*action.target);
        return;
    case Kind::showWidgetGallery:
        if (state.callbacks.onShowPage) state.callbacks.onShowPage("widgets");
        return;
    case Kind::showSettings:
        return state.showSettings();
    case Kind::allowFocusAccess:
        return state.requestFocusAccess();
    case Kind::openFocusSettings:
        if (panels.openPrivacySettings) panels.openPrivacySettings("Privacy_Focus");
        return;
    case Kind::quit:
        if (panels.terminate) panels.terminate();
        return;
    }
}

} // namespace corvane
