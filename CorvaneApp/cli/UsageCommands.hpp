#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// usage, usage connect, usage disconnect, usage status.
void addUsageCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
