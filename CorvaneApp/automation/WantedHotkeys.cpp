#include "CorvaneApp/automation/WantedHotkeys.hpp"

namespace corvane {

HotkeyRegistry::Wanted wantedHotkeys(const AppSettings& settings, const std::vector<DockWidget>& widgets) {
    HotkeyRegistry::Wanted wanted;
    if (settings.numberedWorkspaceHotkeys) wanted.numbered = settings.workspaceHotkeyModifiers;
    wanted.focusDock = settings.focusDockHotkey;
    wanted.nextWorkspace = settings.nextWorkspaceHotkey;
    wanted.previousWorkspace = settings.previousWorkspaceHotkey;
    for (const auto& widget : widgets)
        if (auto picker = widget.colourPickerSettings(); picker && picker->hotkey)
            wanted.colourPickers.emplace_back(widget.id, *picker->hotkey);
    return wanted;
}

} // namespace corvane
