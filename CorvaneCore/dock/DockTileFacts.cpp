#include "CorvaneCore/dock/DockTileFacts.hpp"

#include "CorvaneCore/dock/DockBookmark.hpp"
#include "CorvaneCore/dock/DockURLString.hpp"

namespace corvane::DockTileFacts {

namespace K = DockTileKey;

namespace {

const Bytes* bytesAt(const PlistDictionary& tile, std::initializer_list<std::string_view> keys) {
    auto value = valueAt(tile, keys);
    return value ? std::get_if<Bytes>(&value->storage) : nullptr;
}

std::string identity(const PlistDictionary& tile, std::string_view section) {
    std::string key(section);
    key += ':';
    if (auto type = stringAt(tile, {K::tileType})) key += *type;
    key += ':';
    if (auto link = stringAt(tile, {K::tileData, K::url, K::urlString})) return key + "url:" + *link;
    if (auto path = filePath(tile)) return key + "path:" + *path;
    return key + "label:" + label(tile).value_or("");
}

} // namespace

std::optional<std::string> filePath(const PlistDictionary& tile) {
    if (auto text = stringAt(tile, {K::tileData, K::fileData, K::urlString})) return DockURLString::path(*text);
    for (auto bookmark : {bytesAt(tile, {K::tileData, K::book}), bytesAt(tile, {K::tileData, K::fileData, K::aliasData})})
        if (bookmark)
            if (auto path = DockBookmark::path(*bookmark)) return DockURLString::normalize(*path);
    return std::nullopt;
}

std::optional<std::string> label(const PlistDictionary& tile) {
    for (auto key : {K::fileLabel, K::label})
        if (auto text = stringAt(tile, {K::tileData, key}); text && !text->empty()) return *text;
    return std::nullopt;
}

std::string place(const PlistDictionary& tile, std::string_view section, std::size_t index) {
    auto text = std::string(section) + " tile " + std::to_string(index + 1);
    if (auto name = label(tile)) text += " \"" + *name + "\"";
    return text;
}

std::vector<std::string> identities(const DockTiles& tiles) {
    std::vector<std::string> keys;
    keys.reserve(tiles.apps.size() + tiles.others.size());
    for (const auto& tile : tiles.apps) keys.push_back(identity(tile, appsSection));
    for (const auto& tile : tiles.others) keys.push_back(identity(tile, othersSection));
    return keys;
}

} // namespace corvane::DockTileFacts
