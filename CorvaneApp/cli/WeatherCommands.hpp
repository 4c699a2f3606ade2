#pragma once

namespace CLI {
class App;
}

namespace corvane {

struct ToolContext;

/// weather.
void addWeatherCommands(CLI::App& app, ToolContext& context);

} // namespace corvane
