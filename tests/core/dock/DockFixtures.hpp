#pragma once

#include "CorvaneCore/dock/DockTiles.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace corvane::testing {

inline std::string fixtureText(const std::string& name) {
    std::ifstream stream(std::string(CORVANE_TEST_DATA) + "/dock/" + name, std::ios::binary);
    std::ostringstream contents;
    contents << stream.rdbuf();
    return contents.str();
}

/// The sample Dock's root dictionary and its two tile arrays.
inline PlistDictionary sampleDockRoot() {
    auto value = parsePropertyList(fixtureText("com.apple.dock.plist"));
    if (!value || !value->dictionary()) throw std::runtime_error("sample Dock plist does not parse");
    return *value->dictionary();
}

inline DockTiles sampleDockTiles() {
    auto root = sampleDockRoot();
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
