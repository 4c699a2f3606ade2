#include "CorvaneCore/dock/DockPlistWriter.hpp"

#include "CorvaneCore/dock/DockTileFacts.hpp"
#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"
#include "CorvaneCore/support/Text.hpp"

namespace corvane {

namespace K = DockTileKey;

namespace {

std::optional<PlistDictionary> parsedTile(const std::optional<Bytes>& tile) {
    if (!tile) return std::nullopt;
    auto value = parsePropertyList(*tile);
    if (!value || !value->dictionary()) return std::nullopt;
    auto dictionary = std::move(*value->dictionary());
    if (auto guid = dictionary.find(K::guid); guid != dictionary.end()) dictionary.erase(guid);
    return dictionary;
}

// The tile's data dictionary, created when the starting tile has none.
PlistDictionary& tileData(PlistDictionary& tile) {
    auto& data = tile[std::string(K::tileData)];
    if (!data.dictionary()) data = PlistDictionary{};
    return *data.dictionary();
}

PlistDictionary urlDictionary(std::string text) {
    return PlistDictionary{{std::string(K::urlString), std::move(text)},
                           {std::string(K::urlStringType), DockURLString::urlStringType}};
}

std::string withoutExtension(std::string name) {
    auto dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0) name.erase(dot);
    return name;
}

void set(PlistDictionary& dictionary, std::string_view key, PlistValue value) {
    dictionary.insert_or_assign(std::string(key), std::move(value));
}

// A starting tile from the Dock already points at the path (that is how it was chosen), and its
// file-data may hold more than our URL would (an alias record, the Dock's own URL spelling) or
// be absent beside a bookmark: it stays as the Dock wrote it. Only a new tile gets our URL.
void setFileData(PlistDictionary& data, bool fromOriginal, const std::string& path, bool isDirectory) {
    if (fromOriginal) return;
    set(data, K::fileData, urlDictionary(DockURLString::fileURLString(path, isDirectory)));
}

PlistDictionary encodeApp(const AppEntry& app) {
    auto tile = DockPlistWriter::originalTile(app.tile, app.path);
    const bool fromOriginal = !tile.empty();
    auto& data = tileData(tile);
    // Applications are bundles, so their URL is a directory's.
    setFileData(data, fromOriginal, app.path, true);
    set(data, K::fileLabel, app.displayName ? *app.displayName : withoutExtension(text::lastPathComponent(app.path)));
    if (app.bundleIdentifier) set(data, K::bundleIdentifier, *app.bundleIdentifier);
    set(tile, K::tileType, K::fileTile);
    return tile;
}

PlistDictionary encodeFile(const FileEntry& file) {
    auto tile = DockPlistWriter::originalTile(file.tile, file.path);
    const bool fromOriginal = !tile.empty();
    auto& data = tileData(tile);
    setFileData(data, fromOriginal, file.path, file.isDirectory);
    set(data, K::fileLabel, file.resolvedName());
    if (file.isDirectory) {
        // A new folder shows as a stack sorted by date added, the Dock's own default.
        const std::pair<std::string_view, int> defaults[] = {
            {K::fileType, 2}, {K::arrangement, 1}, {K::displayAs, 0}, {K::showAs, 0}};
        for (auto [key, fallback] : defaults) data.try_emplace(std::string(key), fallback);
        set(tile, K::tileType, K::directoryTile);
    } else {
        set(tile, K::tileType, K::fileTile);
    }
    return tile;
}

PlistDictionary encodeURL(const URLEntry& link) {
    PlistDictionary tile;
    if (auto original = parsedTile(link.tile)) {
        auto stored = stringAt(*original, {K::tileData, K::url, K::urlString});
        if (stored && *stored == link.url) tile = std::move(*original);
    }
    const bool fromOriginal = !tile.empty();
    auto& data = tileData(tile);
    // The stored link is this one; its dictionary stays as the Dock wrote it.
    if (!fromOriginal) set(data, K::url, urlDictionary(link.url));
    if (link.displayName) set(data, K::label, *link.displayName);
    set(tile, K::tileType, K::urlTile);
    return tile;
}

} // namespace

PlistDictionary DockPlistWriter::originalTile(const std::optional<Bytes>& tile, std::string_view path) {
    auto original = parsedTile(tile);
    if (!original) return {};
    auto stored = DockTileFacts::filePath(*original);
    if (!stored || *stored != DockURLString::normalize(path)) return {};
    return std::move(*original);
}

PlistDictionary DockPlistWriter::encodeItem(const DockItem& item) {
    if (auto app = item.app()) return encodeApp(*app);
    if (auto file = item.file()) return encodeFile(*file);
    if (auto link = item.url()) return encodeURL(*link);
    return PlistDictionary{{std::string(K::tileType), std::string(rawValue(*item.spacer()))},
                           {std::string(K::tileData), PlistDictionary{}}};
}

DockTiles DockPlistWriter::encode(const DockSnapshot& snapshot) {
    DockTiles tiles;
    for (const auto& item : snapshot.apps) tiles.apps.push_back(encodeItem(item));
    for (const auto& item : snapshot.others) tiles.others.push_back(encodeItem(item));
    return tiles;
}

void DockPlistWriter::write(const DockSnapshot& snapshot) const { backend_.writeTiles(encode(snapshot)); }

void DockPlistWriter::writeTiles(DockTiles tiles) const {
    for (auto* section : {&tiles.apps, &tiles.others})
        for (auto& tile : *section) tile.erase(std::string(K::guid));
    backend_.writeTiles(tiles);
}

} // namespace corvane
