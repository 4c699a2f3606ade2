#pragma once

#include "CorvaneApp/bar/BarWindowController.hpp"
#include "CorvaneCore/automation/WorkspaceOwnership.hpp"
#include "CorvaneCore/bar/DockAppearance.hpp"
#include "CorvaneCore/widgets/WidgetsFile.hpp"

#include <functional>
#include <optional>
#include <span>
#include <string>

namespace corvane {

/// What the bar shows besides the workspace, its widgets and its style.
struct BarContentSources {
    /// The running applications, in the order the system reports them.
    std::span<const RunningApp> running;
    /// Which workspaces opened each running application; none shows no unpinned application.
    const WorkspaceOwnership* ownership = nullptr;
    /// The user's Downloads folder, and whether any trash folder holds something.
    std::string downloads;
    bool trashIsFull = false;
    BarIconSource icons;
    /// The macOS Dock's own look, which the style adjusts.
    DockAppearance appearance = DockAppearance::systemDefault();
    /// The screen's length along the bar: icons shrink until the bar fits. Zero leaves them.
    double screenLength = 0;
    /// What a live widget's tile shows now; none keeps the tile's own text.
    std::function<std::optional<std::string>(const Uuid& widget)> captions = {};
};

/// The bar's content for a workspace (none when no workspace is active), fitted to the screen.
BarWindowController::Content barContent(const Profile* active, const WidgetsFile& widgets, const DockStyle& style,
                                        const BarContentSources& sources);

/// Shrinks the icons until the bar fits `length` with room at both ends to grow into, as the bar
/// does on a narrow screen. Spacing and padding round to whole points, so the bar is not quite
/// proportional to its icons and a second look may shrink them a little more.
BarScene fittedScene(BarScene scene, const DockStyle& style, DockAppearance appearance, const Profile* active,
                     double length);

} // namespace corvane
