#include "CorvaneApp/render/WorkspaceBarScene.hpp"

#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/support/Text.hpp"
#include "CorvaneCore/widgets/WidgetAddress.hpp"

namespace corvane {

namespace {

constexpr std::string_view finderBundleIdentifier = "com.apple.finder";

std::string nameFromPath(std::string_view urlString) {
    auto name = text::lastPathComponent(DockURLString::path(urlString));
    if (name.size() > 4 && text::lowercased(name.substr(name.size() - 4)) == ".app") name.resize(name.size() - 4);
    return name;
}

BarTile appTile(const AppEntry& entry) {
    BarTile tile;
    tile.label = entry.displayName ? *entry.displayName : nameFromPath(entry.path);
    return tile;
}

BarTile widgetTile(const WidgetAddress& address, const WidgetsFile& widgets) {
    BarTile tile{.kind = BarTile::Kind::widget, .label = "Widget"};
    if (const auto* widget = widgets.widget(address)) {
        tile.label = widget->name.empty() ? std::string(widget->kind.name()) : widget->name;
        tile.widgetKind = widget->kind.which();
        tile.span = widget->span;
    }
    return tile;
}

bool isDownloadsFolder(const FileEntry& entry) {
    return entry.isDirectory && text::lastPathComponent(DockURLString::path(entry.path)) == "Downloads";
}

BarTile otherTile(const DockItem& item) {
    if (item.url()) return {.kind = BarTile::Kind::link, .label = item.displayName()};
    const auto& entry = *item.file();
    if (isDownloadsFolder(entry)) return {.kind = BarTile::Kind::downloads, .label = entry.resolvedName()};
    if (!entry.isDirectory) return {.kind = BarTile::Kind::file, .label = nameFromPath(entry.path)};
    BarTile tile{.kind = BarTile::Kind::folder, .label = entry.resolvedName()};
    if (entry.badgeColorHex) {
        tile.badgeColorHex = entry.badgeColorHex;
        tile.badgeText = entry.badgeLetter();
    }
    return tile;
}

} // namespace

std::vector<BarTile> workspaceBarTiles(const Profile* workspace, const WidgetsFile& widgets, const DockStyle& style) {
    std::vector<BarTile> tiles;
    tiles.push_back({.kind = BarTile::Kind::app, .label = "Finder", .isRunning = true});
    std::vector<BarTile> right;
    bool hasDownloads = false;
    if (workspace) {
        for (const auto& item : workspace->items) {
            if (const auto* variant = item.spacer()) {
                tiles.push_back({.kind = BarTile::Kind::spacer, .spacer = *variant});
            } else if (const auto* entry = item.app()) {
                if (auto address = WidgetAddress::fromBundleIdentifier(entry->bundleIdentifier))
                    tiles.push_back(widgetTile(*address, widgets));
                else if (entry->bundleIdentifier != finderBundleIdentifier)
                    tiles.push_back(appTile(*entry));
            }
        }
        for (const auto& item : workspace->others) {
            if (!item.file() && !item.url()) continue;
            right.push_back(otherTile(item));
            hasDownloads = hasDownloads || right.back().kind == BarTile::Kind::downloads;
        }
    }
    if (style.showsDownloads && !hasDownloads) right.push_back({.kind = BarTile::Kind::downloads, .label = "Downloads"});
    if (style.showsTrash) right.push_back({.kind = BarTile::Kind::trash, .label = "Trash"});
    if (!right.empty()) {
        tiles.push_back({.kind = BarTile::Kind::separator});
        tiles.insert(tiles.end(), right.begin(), right.end());
    }
    return tiles;
}

BarScene makeBarScene(std::vector<BarTile> tiles, const DockStyle& style, const DockAppearance& appearance,
                      const Profile* activeWorkspace) {
    return {.tiles = std::move(tiles),
            .style = style,
            .theme = style.theme(),
            .metrics = appearance.metrics(),
            .showsProcessIndicators = appearance.showsProcessIndicators,
            .indicatorHex = style.indicatorHex(activeWorkspace)};
}

} // namespace corvane
