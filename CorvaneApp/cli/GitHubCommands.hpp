#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// github.
void addGitHubCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
