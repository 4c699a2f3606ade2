#include "platform/posix/PlistFileBackend.hpp"

#include "CorvaneCore/dock/DockError.hpp"

namespace corvane {

namespace {

std::vector<PlistDictionary> tileArray(const PlistDictionary& root, std::string_view key,
                                       const std::filesystem::path& url) {
    auto value = root.find(key);
    if (value == root.end()) return {};
    auto array = value->second.array();
    auto malformed = [&] { return DockError::plistMalformed(url.string(), std::string(key) + " is not an array of dicts"); };
    if (!array) throw malformed();
    std::vector<PlistDictionary> tiles;
    tiles.reserve(array->size());
    for (const auto& tile : *array) {
        if (!tile.dictionary()) throw malformed();
        tiles.push_back(*tile.dictionary());
    }
    return tiles;
}

PlistArray asArray(const std::vector<PlistDictionary>& tiles) { return PlistArray(tiles.begin(), tiles.end()); }

} // namespace

DockTiles tilesFromPreferences(const PlistDictionary& root, const std::filesystem::path& url) {
    return DockTiles{tileArray(root, DockTileKey::persistentApps, url), tileArray(root, DockTileKey::persistentOthers, url)};
}

DockTiles PlistFileBackend::readTiles() {
    const PlistDictionary* root = nullptr;
    try {
        root = file_.read();
    } catch (const PlistFileError& error) {
        if (error.kind == PlistFileError::Kind::unreadable) throw DockError::plistReadFailed(url_.string(), error.what());
        throw DockError::plistMalformed(url_.string(), error.what());
    }
    if (!root) throw DockError::plistNotFound(url_.string());
    return tilesFromPreferences(*root, url_);
}

void PlistFileBackend::writeTiles(const DockTiles& tiles) {
    try {
        const auto* current = file_.read();
        auto root = current ? *current : PlistDictionary{};
        root.insert_or_assign(std::string(DockTileKey::persistentApps), asArray(tiles.apps));
        root.insert_or_assign(std::string(DockTileKey::persistentOthers), asArray(tiles.others));
        file_.write(std::move(root));
    } catch (const PlistFileError& error) {
        // A file we cannot read back is not overwritten: its other keys would be lost.
        throw DockError::plistWriteFailed(url_.string(), error.what());
    }
}

} // namespace corvane
