#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// list, show, new, rename, delete, edit, activate.
void addWorkspaceCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
