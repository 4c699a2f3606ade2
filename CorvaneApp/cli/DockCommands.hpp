#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// dock, diff, switch, apply, capture, undo, backups.
void addDockCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
