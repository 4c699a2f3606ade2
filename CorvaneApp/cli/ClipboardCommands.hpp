#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// clipboard list, clear and forget: the stored clipboard history.
void addClipboardCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
