#pragma once

#include <string>

namespace CLI {
class App;
}

namespace corvane {

struct DockWidget;
struct ToolContext;

/// preview: a picture of the own Dock bar as a workspace would show it; icon: one application's
/// icon as the bar draws it.
void addPreviewCommand(CLI::App& app, ToolContext& context);

/// One widget's tile as the bar draws it, `size` pixels square, with what its live model reads
/// now (or why it cannot), as PNG bytes.
std::string widgetTilePNG(ToolContext& context, const DockWidget& widget, int size);

} // namespace corvane
