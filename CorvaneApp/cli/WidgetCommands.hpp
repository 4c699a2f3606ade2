#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// widgets (list, add, remove, show, hide, stack), water, colour, colours.
void addWidgetCommands(CLI::App& app, ToolContext& context);

/// water and water add; colour and colours. Registered by `addWidgetCommands`.
void addWaterCommands(CLI::App& app, ToolContext& context);
void addColourCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
