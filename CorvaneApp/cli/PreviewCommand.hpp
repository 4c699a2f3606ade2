#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// preview: a picture of the own Dock bar as a workspace would show it.
void addPreviewCommand(CLI::App& app, ToolContext& context);

} // namespace corvane
