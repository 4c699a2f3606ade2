#pragma once

#include "CorvaneCore/widgets/WidgetsFile.hpp"
#include "CorvaneCore/workspace/Profile.hpp"
#include "CorvaneWidgetsUI/live/LiveWidget.hpp"

#include <vector>

namespace corvane {

struct ToolContext;

/// Readers of the connected kinds: each reads at once, as the tool's own weather, github, usage
/// and clipboard commands do. A host that keeps widgets running calls them on a queue of their
/// own, so they may run at the same time as each other; the clipboard history is opened again
/// only when its file changed. `context` must outlive them.
void addConnectedReaders(LiveWidgetPorts& ports, ToolContext& context);

/// The widgets some workspace shows, each once: workspaces in file order, a workspace's widgets
/// in the order of its items.
std::vector<DockWidget> placedWidgets(const WidgetsFile& file, const ProfilesFile& profiles);

struct LiveWidgetRow {
    DockWidget widget;
    WidgetReading reading;
};

/// What each widget's tile shows now, from the same live models the bar keeps, with the tool's
/// real sources. Kinds that measure between readings (activity, network, the pet) get a second
/// reading a quarter of a second after the first.
std::vector<LiveWidgetRow> readWidgetsNow(ToolContext& context, const std::vector<DockWidget>& widgets);

} // namespace corvane
