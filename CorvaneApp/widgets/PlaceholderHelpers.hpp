#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::PlaceholderHelpers {

/// The folder of the data folder that holds the placeholder applications.
inline constexpr std::string_view folderName = "Helpers";
/// The one placeholder of widgets without a slot: the own Dock bar draws them, so the macOS
/// Dock never needs to tell them apart.
inline constexpr std::string_view sharedHelperName = "Corvane Widget.app";

/// Where the placeholder application of a widget with `slot` lives ("Corvane Slot n.app"), or
/// the shared one for a widget without a slot.
std::string path(const std::filesystem::path& dataDirectory, std::optional<int> slot);

} // namespace corvane::PlaceholderHelpers
