#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// preview: a picture of the own Dock bar as a workspace would show it; icon: one application's
/// icon as the bar draws it.
void addPreviewCommand(CLI::App& app, ToolContext& context);

} // namespace corvane
