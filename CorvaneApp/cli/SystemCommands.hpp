#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// apps, desktops, permissions and version: what the system around Corvane offers it.
void addSystemCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
