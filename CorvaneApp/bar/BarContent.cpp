#include "CorvaneApp/bar/BarContent.hpp"

#include "CorvaneCore/bar/DockFit.hpp"

#include <algorithm>

namespace corvane {

BarScene fittedScene(BarScene scene, const DockStyle& style, DockAppearance appearance, const Profile* active,
                     double length) {
    double preferred = scene.metrics.iconSize;
    for (int round = 0; round < 4; ++round) {
        double current = scene.metrics.iconSize;
        BarLayout layout(scene);
        double available = std::max(length - 2 * layout.growthRoom(), 1.0);
        double size = DockFit::iconSize(current, preferred, layout.barLength(), available);
        if (size >= current) break;
        appearance = appearance.fitted(size);
        scene = makeBarScene(std::move(scene.tiles), style, appearance, active);
    }
    return scene;
}

BarWindowController::Content barContent(const Profile* active, const WidgetsFile& widgets, const DockStyle& style,
                                        const BarContentSources& sources) {
    BarWindowController::Content content;
    content.layout = WorkspaceDockLayout({.active = active,
                                          .running = sources.running,
                                          .ownership = sources.ownership,
                                          .addsLauncher = style.showsLauncher,
                                          .slotOwners = slotOwners(widgets)});
    if (active) content.workspace = *active;
    auto tiles = workspaceBarTiles(content.layout,
                                   {.widgets = widgets,
                                    .style = style,
                                    .downloads = sources.downloads,
                                    .trashIsFull = sources.trashIsFull,
                                    .icons = sources.icons},
                                   &content.origins);
    if (sources.captions)
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            const auto& origin = content.origins[i];
            if (origin.section != BarTileOrigin::Section::apps) continue;
            const auto* widget = content.layout.apps[origin.index].widget();
            const auto* id = widget ? widget->address.widgetID() : nullptr;
            if (!id) continue;
            if (auto caption = sources.captions(*id)) tiles[i].caption = std::move(caption);
        }
    auto appearance = style.applied(sources.appearance);
    content.scene = makeBarScene(std::move(tiles), style, appearance, active);
    if (sources.screenLength > 0)
        content.scene = fittedScene(std::move(content.scene), style, appearance, active, sources.screenLength);
    content.screenLength = sources.screenLength;
    return content;
}

} // namespace corvane
