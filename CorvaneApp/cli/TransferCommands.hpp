#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// export and import.
void addTransferCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
