#pragma once

#include "CorvaneApp/preferences/AppPreferences.hpp"
#include "CorvaneCore/automation/WorkspaceHotkeys.hpp"
#include "CorvaneCore/widgets/DockWidget.hpp"

#include <vector>

namespace corvane {

/// The hotkeys the settings and the colour-picker widgets ask for, before precedence drops
/// any of them.
HotkeyRegistry::Wanted wantedHotkeys(const AppSettings& settings, const std::vector<DockWidget>& widgets);

} // namespace corvane
