#pragma once

#include "CorvaneCore/dock/DockTiles.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace corvane::testing {

/// The two tile arrays of a Dock preferences file.
inline DockTiles readDockFile(const std::filesystem::path& file) {
    auto value = parsePropertyList(readText(file));
    if (!value || !value->dictionary()) throw std::runtime_error(file.string() + " does not parse");
    auto root = *value->dictionary();
    DockTiles tiles;
    for (const auto& tile : *root["persistent-apps"].array()) tiles.apps.push_back(*tile.dictionary());
    for (const auto& tile : *root["persistent-others"].array()) tiles.others.push_back(*tile.dictionary());
    return tiles;
}

/// A Dock preferences file holding just `tiles`.
inline void writeDockFile(const std::filesystem::path& file, const DockTiles& tiles) {
    writeText(file, xmlPropertyList(PlistDictionary{{"persistent-apps", PlistArray(tiles.apps.begin(), tiles.apps.end())},
                                                    {"persistent-others", PlistArray(tiles.others.begin(), tiles.others.end())}}));
}

/// The two tile arrays of a Dock preferences file under the test data's "dock" folder.
inline DockTiles dockTiles(const std::string& name) { return readDockFile(std::string(CORVANE_TEST_DATA) + "/dock/" + name); }

/// The two tile arrays of the sample Dock.
inline DockTiles sampleDockTiles() { return dockTiles("com.apple.dock.plist"); }

/// Docks published in dotfiles repositories, as their owners' Macs wrote them.
inline const std::vector<std::string> realDocks = {"epicodus-dot-files.plist", "benfried-dotfiles.plist",
                                                   "johnstegeman-dotfiles.plist", "surminus-dotfiles.plist",
                                                   "voodooGQ-dotfiles.plist"};
inline DockTiles realDockTiles(const std::string& name) { return dockTiles("real/" + name); }

/// Both sections with every tile's "GUID" removed: what putting tiles back must give.
inline DockTiles withoutGUIDs(DockTiles tiles) {
    for (auto* section : {&tiles.apps, &tiles.others})
        for (auto& tile : *section) tile.erase("GUID");
    return tiles;
}

/// A Dock holding the tiles this system cannot decode, beside one it can: a folder known only by
/// its bookmark, a tile without tile-data and one of a type it does not know.
inline DockTiles undecodableDockTiles() {
    auto downloads = realDockTiles("voodooGQ-dotfiles.plist").others.at(0);
    downloads["tile-data"].dictionary()->erase("file-data");
    auto tiles = sampleDockTiles();
    tiles.apps.push_back(PlistDictionary{{"GUID", 7}, {"tile-type", "file-tile"}});
    tiles.apps.push_back(PlistDictionary{
        {"GUID", 8}, {"tile-type", "widget-tile"}, {"tile-data", PlistDictionary{{"file-label", "Weather"}}}});
    tiles.others.push_back(downloads);
    return tiles;
}

inline PlistDictionary without(PlistDictionary dictionary, const std::string& key) {
    dictionary.erase(key);
    return dictionary;
}

} // namespace corvane::testing
