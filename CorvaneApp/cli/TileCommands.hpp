#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// tiles: a workspace's tiles, and adding, removing and moving them.
void addTileCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
