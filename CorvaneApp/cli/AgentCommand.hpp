#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// agent: the application's state in the foreground, until SIGINT or SIGTERM.
void addAgentCommand(CLI::App& app, ToolContext& context);

} // namespace corvane
