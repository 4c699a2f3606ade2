#include "CorvaneApp/render/WorkspaceBarScene.hpp"

#include "CorvaneCore/bar/DownloadsTile.hpp"
#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/support/Text.hpp"

#include <iterator>

namespace corvane {

namespace {

std::string bundleName(std::string_view path) {
    auto name = text::lastPathComponent(path);
    if (name.size() > 4 && text::lowercased(name.substr(name.size() - 4)) == ".app") name.resize(name.size() - 4);
    return name;
}

class TileMaker {
public:
    explicit TileMaker(const BarTileSources& sources) : sources_(sources) {}

    BarTile app(const DockTileModel& model, const DockTileModel::App& app) const {
        BarTile tile{.isRunning = app.running.has_value()};
        std::string path;
        if (app.entry) {
            path = DockURLString::path(app.entry->path);
            tile.label = app.entry->displayName ? *app.entry->displayName : bundleName(path);
        } else if (model.id == WorkspaceDockLayout::ownTileID) {
            tile.label = sources_.ownName;
        }
        if (app.running) {
            if (path.empty() && app.running->path) path = DockURLString::path(*app.running->path);
            if (tile.label.empty()) tile.label = app.running->name;
        }
        if (!path.empty() && sources_.icons) tile.image = sources_.icons(path);
        return tile;
    }

    BarTile widget(const DockTileModel::Widget& widget) const {
        BarTile tile{.kind = BarTile::Kind::widget, .label = "Widget"};
        if (const auto* record = sources_.widgets.widget(widget.address)) {
            tile.label = record->name.empty() ? std::string(record->kind.name()) : record->name;
            tile.widgetKind = record->kind.which();
            tile.span = record->span;
            if (sources_.captions) tile.caption = sources_.captions(record->id);
        }
        return tile;
    }

    // A stack shows its first member's card; the others open from it.
    BarTile stack(const DockTileModel::Stack& stack) const {
        for (const auto& member : stack.members)
            if (const auto* front = member.widget()) return widget(*front);
        return {.kind = BarTile::Kind::widget, .label = "Widget"};
    }

    std::optional<BarTile> document(const DockTileModel& model) const {
        if (const auto* url = model.url()) return BarTile{.kind = BarTile::Kind::link, .label = DockItem(*url).displayName()};
        const auto* entry = model.file();
        if (!entry) return std::nullopt;
        if (DownloadsTile::isDownloads(entry->path, sources_.downloads)) {
            if (!sources_.style.showsDownloads) return std::nullopt;
            return BarTile{.kind = BarTile::Kind::downloads, .label = entry->displayName.value_or("Downloads")};
        }
        if (!entry->isDirectory)
            return BarTile{.kind = BarTile::Kind::file, .label = bundleName(DockURLString::path(entry->path))};
        BarTile tile{.kind = BarTile::Kind::folder, .label = entry->resolvedName()};
        if (entry->badgeColorHex) {
            tile.badgeColorHex = entry->badgeColorHex;
            tile.badgeText = entry->badgeLetter();
        }
        return tile;
    }

private:
    const BarTileSources& sources_;
};

} // namespace

std::vector<BarTile> workspaceBarTiles(const WorkspaceDockLayout& layout, const BarTileSources& sources,
                                       std::vector<BarTileOrigin>* origins) {
    using Section = BarTileOrigin::Section;
    TileMaker make(sources);
    std::vector<BarTile> tiles;
    std::vector<BarTileOrigin> from;
    tiles.reserve(layout.apps.size() + layout.others.size() + 2);
    auto add = [&](BarTile tile, BarTileOrigin origin) {
        tiles.push_back(std::move(tile));
        from.push_back(origin);
    };
    for (std::size_t i = 0; i < layout.apps.size(); ++i) {
        const auto& model = layout.apps[i];
        // The own tile is the app's, not a running application the user could hide.
        bool unpinned = i >= layout.runningStart && model.id != WorkspaceDockLayout::ownTileID;
        if (unpinned && !sources.style.showsRunningApps) continue;
        BarTileOrigin origin{Section::apps, i};
        if (const auto* app = model.app())
            add(make.app(model, *app), origin);
        else if (const auto* widget = model.widget())
            add(make.widget(*widget), origin);
        else if (const auto* stack = model.stack())
            add(make.stack(*stack), origin);
        else if (const auto* spacer = model.spacer())
            add({.kind = BarTile::Kind::spacer, .spacer = *spacer}, origin);
    }

    std::vector<std::pair<BarTile, BarTileOrigin>> right;
    for (std::size_t i = 0; i < layout.others.size(); ++i)
        if (auto tile = make.document(layout.others[i])) right.emplace_back(std::move(*tile), BarTileOrigin{Section::others, i});
    if (sources.style.showsTrash)
        right.emplace_back(BarTile{.kind = BarTile::Kind::trash, .label = "Trash", .isFull = sources.trashIsFull},
                           BarTileOrigin{});
    if (!right.empty()) {
        add({.kind = BarTile::Kind::separator}, {});
        for (auto& [tile, origin] : right) add(std::move(tile), origin);
    }
    if (origins) *origins = std::move(from);
    return tiles;
}

std::map<int, Uuid> slotOwners(const WidgetsFile& widgets) {
    std::map<int, Uuid> owners;
    // The first widget in file order holds a slot, as `WidgetsFile::widget` finds it.
    for (const auto& widget : widgets.widgets)
        if (widget.slot) owners.emplace(*widget.slot, widget.id);
    return owners;
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
