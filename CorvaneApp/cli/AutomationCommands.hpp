#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// next, previous, hotkeys, prefs, focus, desktop.
void addAutomationCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
