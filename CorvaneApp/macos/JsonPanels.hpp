#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace corvane::JsonPanels {

/// The system's save panel for a JSON file, suggesting `suggestedName`; none when cancelled.
std::optional<std::filesystem::path> save(const std::string& suggestedName);
/// The system's open panel for one JSON file; none when cancelled.
std::optional<std::filesystem::path> open();

} // namespace corvane::JsonPanels
