#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// themes, icons (packs, resolve, use) and stack.
void addLooksCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
