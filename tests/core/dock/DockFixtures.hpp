#pragma once

#include "CorvaneCore/dock/DockTiles.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "fakes/TemporaryDirectory.hpp"

#include <stdexcept>
#include <string>

namespace corvane::testing {

/// The two tile arrays of the sample Dock.
inline DockTiles sampleDockTiles() {
    auto value = parsePropertyList(readText(std::string(CORVANE_TEST_DATA) + "/dock/com.apple.dock.plist"));
    if (!value || !value->dictionary()) throw std::runtime_error("sample Dock plist does not parse");
    auto root = *value->dictionary();
    DockTiles tiles;
    for (const auto& tile : *root["persistent-apps"].array()) tiles.apps.push_back(*tile.dictionary());
    for (const auto& tile : *root["persistent-others"].array()) tiles.others.push_back(*tile.dictionary());
    return tiles;
}

inline PlistDictionary without(PlistDictionary dictionary, const std::string& key) {
    dictionary.erase(key);
    return dictionary;
}

} // namespace corvane::testing
