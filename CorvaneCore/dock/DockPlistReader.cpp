#include "CorvaneCore/dock/DockPlistReader.hpp"

#include "CorvaneCore/dock/DockError.hpp"
#include "CorvaneCore/dock/DockTileFacts.hpp"
#include "CorvaneCore/dock/DockURLString.hpp"
#include "CorvaneCore/dock/PropertyListCoding.hpp"

namespace corvane {

namespace K = DockTileKey;

namespace {

// One tile being decoded, and how to say what is wrong with it.
struct TileContext {
    const PlistDictionary& tile;
    std::string_view section;
    std::size_t index;
    const std::filesystem::path& url;
    DockPlistReader::Detail detail;

    DockError malformed(std::string_view fault) const {
        return DockError::plistMalformed(url.string(),
                                         DockTileFacts::place(tile, section, index) + " " + std::string(fault));
    }
};

std::optional<std::string> optionalText(const PlistDictionary& tile, std::string_view key) {
    if (auto text = stringAt(tile, {K::tileData, key})) return *text;
    return std::nullopt;
}

std::optional<Bytes> originalTile(const TileContext& context) {
    if (context.detail == DockPlistReader::Detail::layout) return std::nullopt;
    return binaryPropertyList(context.tile);
}

void requireTileData(const TileContext& context) {
    auto data = context.tile.find(K::tileData);
    if (data == context.tile.end()) throw context.malformed("has no tile-data");
    if (!data->second.dictionary()) throw context.malformed("has a tile-data that is not a dictionary");
}

// A tile may carry only a bookmark (the Dock writes some that way), which still says where it
// points; refusing it would refuse the whole Dock.
std::string filePath(const TileContext& context) {
    requireTileData(context);
    if (auto path = DockTileFacts::filePath(context.tile)) return *path;
    bool hasBookmark = valueAt(context.tile, {K::tileData, K::book}) ||
                       valueAt(context.tile, {K::tileData, K::fileData, K::aliasData});
    throw context.malformed(hasBookmark
                                ? "has no tile-data.file-data._CFURLString and its bookmark holds no path"
                                : "has no tile-data.file-data._CFURLString and no bookmark");
}

AppEntry decodeApp(const TileContext& context) {
    AppEntry entry;
    entry.path = filePath(context);
    entry.displayName = optionalText(context.tile, K::fileLabel);
    entry.bundleIdentifier = optionalText(context.tile, K::bundleIdentifier);
    entry.tile = originalTile(context);
    return entry;
}

FileEntry decodeFile(const TileContext& context, bool isDirectory) {
    FileEntry entry;
    entry.path = filePath(context);
    entry.displayName = optionalText(context.tile, K::fileLabel);
    entry.isDirectory = isDirectory;
    entry.tile = originalTile(context);
    return entry;
}

URLEntry decodeURL(const TileContext& context) {
    requireTileData(context);
    auto link = stringAt(context.tile, {K::tileData, K::url, K::urlString});
    if (!link) throw context.malformed("has no tile-data.url._CFURLString");
    return URLEntry{*link, optionalText(context.tile, K::label), originalTile(context)};
}

} // namespace

DockItem DockPlistReader::decodeItem(const PlistDictionary& tile, Section section, std::size_t index,
                                     const std::filesystem::path& url, Detail detail) {
    const TileContext context{tile, section == Section::apps ? DockTileFacts::appsSection : DockTileFacts::othersSection,
                              index, url, detail};
    auto type = stringAt(tile, {K::tileType});
    if (!type) throw context.malformed("has no tile-type");
    if (*type == K::fileTile)
        return section == Section::apps ? DockItem(decodeApp(context)) : DockItem(decodeFile(context, false));
    if (*type == K::directoryTile) return decodeFile(context, true);
    if (*type == K::urlTile) return decodeURL(context);
    if (auto spacer = spacerVariantFromRaw(*type)) return *spacer;
    throw DockError::unsupportedItemType(*type);
}

DockSnapshot DockPlistReader::read(Detail detail) const {
    auto tiles = backend_.readTiles();
    auto url = backend_.url();
    DockSnapshot snapshot;
    for (std::size_t i = 0; i < tiles.apps.size(); ++i)
        snapshot.apps.push_back(decodeItem(tiles.apps[i], Section::apps, i, url, detail));
    for (std::size_t i = 0; i < tiles.others.size(); ++i)
        snapshot.others.push_back(decodeItem(tiles.others[i], Section::others, i, url, detail));
    snapshot.capturedAt = clock_.now();
    return snapshot;
}

} // namespace corvane
