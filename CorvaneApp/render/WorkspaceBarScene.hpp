#pragma once

#include "CorvaneApp/render/BarScene.hpp"
#include "CorvaneCore/bar/DockAppearance.hpp"
#include "CorvaneCore/bar/WorkspaceDockLayout.hpp"
#include "CorvaneCore/widgets/WidgetsFile.hpp"
#include "CorvaneCore/workspace/Profile.hpp"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

/// An application's picture by its bundle's file-system path; none draws the placeholder.
using BarIconSource = std::function<std::shared_ptr<const BarImage>(const std::string& appPath)>;

/// Everything the bar's tiles are drawn from besides the layout itself.
struct BarTileSources {
    /// The widgets that the layout's widget and stack tiles stand for.
    const WidgetsFile& widgets;
    /// Which fixed tiles show, and whether unpinned running applications do.
    const DockStyle& style;
    /// The user's Downloads folder: a documents item naming it is drawn as the Downloads tile.
    std::string downloads;
    /// Whether any of the user's trash folders holds something.
    bool trashIsFull = false;
    /// None draws every application as its placeholder.
    BarIconSource icons;
    /// The label of the app's own tile.
    std::string ownName = "Corvane";
    /// What a widget's tile shows now; none draws the card's own stand-in text.
    std::function<std::optional<std::string>(const Uuid& widget)> captions = {};
};

/// What a drawn tile stands for: an entry of the layout's application section or of its
/// documents, or neither (the separator, the Trash).
struct BarTileOrigin {
    enum class Section { apps, others, none };
    Section section = Section::none;
    std::size_t index = 0;

    bool operator==(const BarTileOrigin&) const = default;
};

/// The tiles of a layout as the bar draws them: the application section, then behind a
/// separator the documents (Downloads where the workspace keeps it) and the Trash, as the style
/// asks. Pure apart from what `icons` does.
/// `origins`, when given, receives what each tile stands for, tile by tile.
std::vector<BarTile> workspaceBarTiles(const WorkspaceDockLayout& layout, const BarTileSources& sources,
                                       std::vector<BarTileOrigin>* origins = nullptr);

/// The widget that holds each slot, as the layout wants it.
std::map<int, Uuid> slotOwners(const WidgetsFile& widgets);

/// A scene of these tiles in the style's look at the bar's appearance (the style applied to the
/// macOS Dock's, and fitted to the screen); the indicator takes the active workspace's colour
/// when the style says so.
BarScene makeBarScene(std::vector<BarTile> tiles, const DockStyle& style, const DockAppearance& appearance,
                      const Profile* activeWorkspace);

} // namespace corvane
