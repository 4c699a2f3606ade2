#pragma once

// A widget shows in a workspace as a placeholder application among its items, whose bundle
// identifier carries the widget's address. These functions put such placeholders in, take them
// out and keep them, and the workspace's widget stacks, in step with the widgets file.

#include "CorvaneCore/widgets/DockWidget.hpp"
#include "CorvaneCore/widgets/WidgetsFile.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvane::WidgetPlacement {

/// The placeholder for `widget`: the helper application at `helperPath` under the slot's
/// bundle identifier when the widget has a slot, else under the widget's own.
AppEntry entry(const DockWidget& widget, const std::string& helperPath);

/// Whether some placeholder among the workspace's items stands for `widget`.
bool contains(const DockWidget& widget, const Profile& profile);

/// The applications that the shown widgets stand in for (the music players of a music widget).
std::set<std::string> replacedApps(const Profile& profile, const std::vector<DockWidget>& widgets);

/// Shows the widget at the end of the items unless it is there already; hides it by removing
/// every placeholder of it and its stack memberships.
Profile setting(const DockWidget& widget, bool shown, const Profile& profile, const std::string& helperPath);

/// Keeps the stack members `keeping` accepts; stacks left with fewer than two members go.
Profile pruningStacks(const Profile& profile, const std::function<bool(const Uuid&)>& keeping);

/// Makes each stack hold widgets of one width: the most common one, the earliest on a tie.
/// Members whose widget is unknown stay.
Profile pruningMismatchedWidths(const Profile& profile, const std::vector<DockWidget>& widgets);

/// `target` with the stacks of `source`, reduced to the widgets that `target` shows.
Profile keepingStacks(const Profile& source, const Profile& target, const std::vector<DockWidget>& widgets);

/// Brings the placeholders and stacks in line with the widgets file: placeholders of known
/// widgets are refreshed in place, those of entries this build cannot read are kept as they
/// are, and those of widgets that no longer exist go. Missing widgets are not added.
Profile syncing(const Profile& profile, const std::vector<DockWidget>& widgets,
                const std::vector<UnrecognizedWidget>& unrecognized,
                const std::function<std::string(std::optional<int> slot)>& helperPath);

} // namespace corvane::WidgetPlacement
