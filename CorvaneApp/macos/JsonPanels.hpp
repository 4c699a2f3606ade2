#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace corvane::JsonPanels {

/// The system's save panel for a JSON file, suggesting `suggestedName`; none when cancelled.
std::optional<std::filesystem::path> save(const std::string& suggestedName);
/// The system's open panel for one JSON file; none when cancelled.
std::optional<std::filesystem::path> open();

/// Brings Corvane in front before it shows a panel or an alert: a menu-bar application is not
/// active while its menu is closed, and its panels would open behind the front application.
void comeForward();

} // namespace corvane::JsonPanels
