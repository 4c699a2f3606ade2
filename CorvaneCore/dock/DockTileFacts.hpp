#pragma once

#include "CorvaneCore/dock/DockTiles.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What can be learnt from a raw tile without decoding it into an item: enough to name it in a
/// message and to check that a restored Dock shows the tiles it was given.
namespace DockTileFacts {

/// "apps" or "others", as messages name the sections.
inline constexpr std::string_view appsSection = "apps";
inline constexpr std::string_view othersSection = "others";

/// The path a file or folder tile points at: its URL string, else the path its bookmark holds.
std::optional<std::string> filePath(const PlistDictionary& tile);
/// The label the Dock shows ("file-label", or "label" for links); none when absent or empty.
std::optional<std::string> label(const PlistDictionary& tile);
/// Where a tile sits, for messages: the section, its 1-based position and its label, as in
/// `others tile 2 "Downloads"`.
std::string place(const PlistDictionary& tile, std::string_view section, std::size_t index);
/// One key per tile, in Dock order: the section, the tile type, and the path or URL when the
/// tile has one, else its label. Keys of different tiles differ wherever a person would see a
/// different Dock.
std::vector<std::string> identities(const DockTiles& tiles);

} // namespace DockTileFacts

} // namespace corvane
