#pragma once

#include "CorvaneCore/dock/PlistValue.hpp"

#include <string_view>
#include <vector>

namespace corvane {

/// The Dock's two tile arrays, in Dock order: "persistent-apps" and "persistent-others".
struct DockTiles {
    std::vector<PlistDictionary> apps;
    std::vector<PlistDictionary> others;

    bool operator==(const DockTiles&) const = default;
};

/// The preference keys and tile dictionary keys the Dock uses.
namespace DockTileKey {
inline constexpr std::string_view persistentApps = "persistent-apps";
inline constexpr std::string_view persistentOthers = "persistent-others";

inline constexpr std::string_view tileType = "tile-type";
inline constexpr std::string_view tileData = "tile-data";
inline constexpr std::string_view guid = "GUID";
inline constexpr std::string_view fileData = "file-data";
inline constexpr std::string_view urlString = "_CFURLString";
inline constexpr std::string_view urlStringType = "_CFURLStringType";
inline constexpr std::string_view aliasData = "_CFURLAliasData";
inline constexpr std::string_view book = "book";
inline constexpr std::string_view fileLabel = "file-label";
inline constexpr std::string_view bundleIdentifier = "bundle-identifier";
inline constexpr std::string_view fileType = "file-type";
inline constexpr std::string_view arrangement = "arrangement";
inline constexpr std::string_view displayAs = "displayas";
inline constexpr std::string_view showAs = "showas";
inline constexpr std::string_view url = "url";
inline constexpr std::string_view label = "label";

inline constexpr std::string_view fileTile = "file-tile";
inline constexpr std::string_view directoryTile = "directory-tile";
inline constexpr std::string_view urlTile = "url-tile";
} // namespace DockTileKey

} // namespace corvane
