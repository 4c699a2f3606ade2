#pragma once

#include "CorvaneApp/render/BarScene.hpp"
#include "CorvaneCore/bar/DockAppearance.hpp"
#include "CorvaneCore/widgets/WidgetsFile.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <vector>

namespace corvane {

/// The tiles a workspace shows on the bar: the Finder, its applications, spacers and widgets,
/// then behind a separator its files, folders and links, Downloads and the Trash as the style
/// asks. Without a workspace only the fixed tiles show. Running applications are not known
/// here, except the Finder, which always runs.
std::vector<BarTile> workspaceBarTiles(const Profile* workspace, const WidgetsFile& widgets, const DockStyle& style);

/// A scene of these tiles in the style's look at the bar's appearance (the style applied to the
/// macOS Dock's, and fitted to the screen); the indicator takes the active workspace's colour
/// when the style says so.
BarScene makeBarScene(std::vector<BarTile> tiles, const DockStyle& style, const DockAppearance& appearance,
                      const Profile* activeWorkspace);

} // namespace corvane
